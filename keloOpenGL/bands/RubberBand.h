#pragma once

#include "base/Export.h"
#include "geometry/Matrix.h"
#include "geometry/Vector.h"
#include "keloOpenGL/bands/RubberBandTables.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelo {

// The shape of an elastic band: which points it goes around, and the tube that is drawn. Pure
// functions in single precision, for any thread once bracketHookPositions exists.
//
// A band is described by the keys of the hooks that it goes over, in its order. It goes round each
// hook on the outer side, and between two hooks it is led through the anchors that the tables name
// for that pair and that mouth opening. Nodes form a ring, also when the band is drawn open.

/// One point that the band goes around.
struct RubberBandNode
{
    std::string_view name; ///< the hook's key; empty for an anchor. Refers to the caller's key.
    Vector3 position;      ///< after the jaw's transform
    Vector3 direction;     ///< after the rotation part of the jaw's transform
    double radius = 0.0;   ///< the hook's; for an anchor rubberBandAnchorRadius
    /// Directions of length 1 from the position: where the band comes to the node, where it is
    /// furthest out, and where it leaves.
    Vector3 entryOffset;
    Vector3 apexOffset;
    Vector3 exitOffset;
};

/// With half the band's thickness this leaves 1/32: the band passes almost through an anchor.
inline constexpr double rubberBandAnchorRadius = -0.46875;

/// Interleaved as the vertex buffer has it.
struct RubberBandVertex
{
    Vector3 position;
    Vector3 normal;
};
static_assert(sizeof(RubberBandVertex) == 24);

/// Per node: three cross-sections (entry, apex, exit) of four vertices each, and the quadrilaterals
/// that join each section to the next.
inline constexpr std::size_t rubberBandVerticesPerNode = 12;
inline constexpr std::size_t rubberBandIndicesPerNode = 48;

/// The table for a mouth opening in radians, of either direction: closed below 5 degrees, partly
/// open below 20, else open.
KELO_EXPORT std::span<const AnchorSequence> anchorSequencesForMouthOpenAngle(double angleInRadians);

/// Replaces `nodes` by those of the band, with their offsets. Nothing is allocated once `nodes` has
/// the room. A closed band comes back from its last key to its first, an open one ends at the last.
/// Returns null, or the first key that has no hook; `nodes` is then of no use.
KELO_EXPORT const std::string *
calculateRubberBandNodes(std::span<const std::string> keys, bool closeLoop,
                         const Matrix &upperMouthTransform, const Matrix &lowerMouthTransform,
                         double mouthOpenAngleInRadians, std::vector<RubberBandNode> &nodes);

/// The path's points of a node: entry, apex and exit, each at the distance radius + 0.5 from its
/// position (0.5 is half the band's thickness, so that its inner edge touches the hook).
struct RubberBandPoints
{
    Vector3 entry, apex, exit;
};
KELO_EXPORT RubberBandPoints rubberBandPoints(const RubberBandNode &node);

/// Writes rubberBandVerticesPerNode vertices a node; `vertices` is only written, front to back.
/// At least one node.
KELO_EXPORT void writeRubberBandVertices(std::span<const RubberBandNode> nodes,
                                         RubberBandVertex *vertices);
/// Writes rubberBandIndicesPerNode indices a node: quadrilaterals, the last ones closing the ring.
KELO_EXPORT void writeRubberBandIndices(std::size_t nodeCount, std::uint32_t *indices);

/// How many of those indices are drawn: an open band ends at the entry of its last node.
KELO_EXPORT std::size_t rubberBandIndexCount(std::size_t nodeCount, bool closeLoop);

} // namespace kelo
