#pragma once

#include "base/Export.h"
#include "geometry/Vector.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kelo {

// Where elastics are hooked on, and round what they are led from one jaw to the other. Millimetres,
// in the model space of the jaw that a hook or an anchor moves with, before the jaw's transform.

/// The post of a bracket or lingual button that a band goes around.
struct bracketHookInfo
{
    Vector3 position;  ///< its middle
    Vector3 direction; ///< its axis, of length 1
    double radius;
};

/// A point beside the teeth that a band is led through.
struct BandAnchor
{
    Vector3 position;
    Vector3 direction; ///< of length 1
    bool isUpperJaw;   ///< which jaw it moves with
};

/// The anchors between two hooks, in the order from the first to the second.
struct AnchorSequence
{
    std::string_view from;
    std::string_view to;
    std::int64_t firstAnchor;  ///< an index of `anchors`
    std::int64_t secondAnchor; ///< another, or -1
};

/// 56 hooks: the brackets "2" to "15" and "18" to "31", and the buttons "2l" to "15l" and "18l" to
/// "31l". Made on first use, main thread only, and kept.
KELO_EXPORT const std::unordered_map<std::string_view, bracketHookInfo> &bracketHookPositions();

/// Whether what stands under this key moves with the upper jaw: "2" to "15" and "2l" to "15l".
KELO_EXPORT bool isUpperToothName(std::string_view key);

/// The 103 anchors.
KELO_EXPORT std::span<const BandAnchor> anchors();

/// By how far the mouth is open; records are searched from the first.
KELO_EXPORT std::span<const AnchorSequence> anchorSequences0(); ///< closed, 90 records
KELO_EXPORT std::span<const AnchorSequence> anchorSequences1(); ///< partly open, 64 records
KELO_EXPORT std::span<const AnchorSequence> anchorSequences2(); ///< open, 66 records

} // namespace kelo
