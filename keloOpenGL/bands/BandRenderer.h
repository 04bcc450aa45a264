#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "keloOpenGL/bands/RubberBand.h"
#include "keloOpenGL/view/StreamBuffer.h"
#include "models/Color.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kelo {

/// How the jaws stand that bands are hooked on.
struct BandJaws
{
    Matrix upperTransform;
    Matrix lowerTransform;
    double mouthOpenAngleInRadians = 0.0; ///< either direction; chooses the anchors
};

/// A band to be drawn. Refers to its keys.
struct DrawnBand
{
    std::span<const std::string> keys; ///< of the hooks that it goes over, in its order
    bool closesLoop = true;            ///< comes back to its first hook
    std::optional<Color> color;        ///< of its material; white for none
    /// There in a picking pass: the band has the flat colour red 128, green 0, blue the low byte of
    /// this number instead of a material.
    std::optional<std::uint32_t> pickID;
};

/// Draws bands into the current context: their shape is RubberBand.h's, in the space of the scene.
/// Nothing is allocated once there is room for the longest band. Its buffer lives with the context.
class KELO_EXPORT BandRenderer
{
public:
    /// Whether a box, grown by a margin on every side, may be seen in what is being drawn.
    using MayShow = std::function<bool(const Extents &box, double margin)>;

    /// Nothing for a band that cannot be seen. A key without a hook is told on standard error, and
    /// nothing is drawn:
    ///     Hook position for bracket "KEY" not defined; cannot draw elastics (check ...)
    /// The buffer for indices is filled anew; others may use it in between.
    void draw(const DrawnBand &band, const BandJaws &jaws, const MayShow &mayShow,
              StreamBuffer &indices);

private:
    bool fillBuffers(const StreamBuffer &indices) const;

    std::vector<RubberBandNode> nodes_; ///< scratch, kept for its room
    StreamBuffer vertices_{StreamBuffer::Kind::Vertices};
};

} // namespace kelo
