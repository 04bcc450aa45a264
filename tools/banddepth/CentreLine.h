#pragma once

#include "geometry/Matrix.h"
#include "keloOpenGL/bands/RubberBand.h"
#include "tools/banddepth/ClosedMesh.h"

#include <span>
#include <vector>

namespace kelo::banddepth {

/// A point of a line, with the length of the line that it represents (half of the way to either
/// neighbour).
struct Sample
{
    Vec3 position;
    double length = 0.0;
};

/// The corners of the line through a closed band's middle: entry, apex and exit of every node.
std::vector<Vec3> centreLineCorners(std::span<const RubberBandNode> nodes);

/// Points of the line through the corners, at most `spacing` apart, every corner among them; the
/// lengths add up to the line's. A closed line returns to its first corner. Fewer than two corners
/// have no line: empty.
std::vector<Sample> sampledLine(std::span<const Vec3> corners, bool closed, double spacing);

/// The samples as seen from the model space of a jaw: sent back through its transform, a rotation
/// and a translation, which leaves lengths and depths as they are.
std::vector<Sample> inModelSpace(std::span<const Sample> samples, const Matrix &jawTransform);

/// How far a line runs inside a mesh.
struct Immersion
{
    double depth = 0.0;  ///< of the deepest sample; 0 for a line that stays outside
    double length = 0.0; ///< of the line's part inside
    Vec3 deepest;        ///< where it is deepest; without meaning for a line that stays outside
};

/// Between the samples a line is at most half their spacing deeper than at them.
Immersion immersionOf(std::span<const Sample> samples, const ClosedMesh &mesh);

} // namespace kelo::banddepth
