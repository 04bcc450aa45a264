#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "keloOpenGL/view/WindowProjection.h"

#include <array>

namespace kelo {

/// Some pixels of a window, a single one for a pick, and the way from the world to the window:
/// tells which boxes of the scene cannot be seen in those pixels, so that they need not be drawn to
/// know their colours.
///
/// The answer errs on the safe side only: the pixels count with their neighbours all round, and
/// with what single-precision transforms may be wrong by. Under matrices that do not keep parallels
/// (a perspective), or that hold no numbers, every box counts as seen.
class KELO_EXPORT PickBox
{
public:
    PickBox(const PixelRect &pixels, const WindowProjection &projection);
    /// A single pixel. Its column and row count from the lower left pixel of the drawable, from 0;
    /// the viewport is x, y, width and height, in pixels, of the same drawable. Points of the world
    /// go through modelView, then projection, then the viewport, as OpenGL sends them.
    PickBox(int column, int row, const std::array<int, 4> &viewport, const Matrix &projection,
            const Matrix &modelView);

    /// False only where nothing inside the box, grown by margin on every side and then moved by
    /// transform, can colour one of the pixels. An empty box is one of size 0 at the origin.
    bool mayShow(const Extents &box, double margin, const Matrix &transform) const;

private:
    WindowProjection projection_;
    /// From the middle of the first pixel to the middle of the last, along x and along y.
    std::array<WindowProjection::Span, 2> middles_;
};

} // namespace kelo
