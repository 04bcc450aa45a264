#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "keloOpenGL/view/KeptPicture.h"
#include "keloOpenGL/view/PickBox.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kelo {

/// Where frames may differ, and the way from the world to there.
struct FramePart
{
    PixelRect pixels;
    WindowProjection projection;
};

/// Frames that differ in one part of the picture only, as while one model is emphasised. The first
/// one is drawn whole and kept; each later one is the kept picture with only that part drawn anew.
/// Where anything asked for a redraw meanwhile (an event that was waiting, another change), the
/// next frame is drawn whole again. Works in the current context.
class KELO_EXPORT PartialFrames
{
public:
    /// Begins a frame before anything of it is drawn, and restricts the drawing where the rest is
    /// there already. `redrawRequests`: how many there have been so far. What must not be partial,
    /// such as a print, is drawn whole whatever was kept.
    void begin(std::uint64_t redrawRequests, bool mayBePartial);

    /// Ends it when everything is drawn. A whole frame asks for the part in which later ones may
    /// differ from it; nothing where that is not known, or where the frame is none to go on from.
    void end(const PixelSize &size,
             const std::function<std::optional<FramePart>()> &partOfLaterFrames);

    /// False only while a part is drawn, for a box that cannot be seen in it: one that was grown by
    /// margin on every side and then moved by transform.
    bool mayShow(const Extents &box, double margin, const Matrix &transform) const;

private:
    KeptPicture picture_;
    std::optional<PixelRect> part_; ///< there while the picture is kept
    std::optional<PickBox> partBox_;
    std::uint64_t redrawRequests_ = 0; ///< how many there had been when the kept frame began
    bool drawsPart_ = false;           ///< the frame that is being drawn
};

} // namespace kelo
