#pragma once

#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "keloOpenGL/Export.h"

#include <array>

namespace kelo {

/// One pixel of a window, and the way from the world to the window: tells which boxes of the scene
/// cannot be seen in that pixel, so that they need not be drawn to know its colour.
///
/// The answer errs on the safe side only: the pixel counts with its neighbours all round, and with
/// what single-precision transforms may be wrong by. Under matrices that do not keep parallels
/// (a perspective), or that hold no numbers, every box counts as seen.
class KELO_EXPORT PickBox
{
public:
    /// The pixel's column and row count from the lower left pixel of the drawable, from 0; the
    /// viewport is x, y, width and height, in pixels, of the same drawable. Points of the world go
    /// through modelView, then projection, then the viewport, as OpenGL sends them.
    PickBox(int column, int row, const std::array<int, 4> &viewport, const Matrix &projection,
            const Matrix &modelView);

    /// False only where nothing inside the box, grown by margin on every side and then moved by
    /// transform, can colour the pixel. An empty box is one of size 0 at the origin.
    bool mayShow(const Extents &box, double margin, const Matrix &transform) const;

private:
    /// Row x and row y of the matrix from the world to the window, in pixels.
    std::array<std::array<double, 4>, 2> toWindow_{};
    /// The sums of the magnitudes that went into the elements above: what rounding goes by.
    std::array<std::array<double, 4>, 2> magnitude_{};
    std::array<double, 2> pixelCenter_{};
    bool keepsParallels_ = false;
};

} // namespace kelo
