#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"

#include <array>
#include <optional>

namespace kelo {

/// Whole pixels of a window: the column and the row of the lower left one, counted from 0, and how
/// many there are in each direction.
struct PixelRect
{
    int column = 0;
    int row = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect &) const = default;
};

/// The smallest rectangle that holds both; one without pixels adds nothing.
KELO_EXPORT PixelRect united(const PixelRect &a, const PixelRect &b);

/// The way from the world to a window: tells where in the window a box of the world can be seen.
/// The answer errs on the safe side only: the box is grown by a pixel all round, and by what
/// single-precision transforms may be wrong by.
class KELO_EXPORT WindowProjection
{
public:
    /// The viewport is x, y, width and height in pixels. Points of the world go through modelView,
    /// then projection, then the viewport, as OpenGL sends them.
    WindowProjection(const std::array<int, 4> &viewport, const Matrix &projection,
                     const Matrix &modelView);

    /// What lies at most `reach` from `middle`, along one axis of the window, in pixels.
    struct Span
    {
        double middle = 0.0;
        double reach = 0.0;
    };
    /// Where the box, grown by margin on every side and then moved by transform, can be seen, along
    /// x and along y. Nothing where this is not known: under matrices that do not keep parallels (a
    /// perspective). An empty box is one of size 0 at the origin.
    std::optional<std::array<Span, 2>> spansOf(const Extents &box, double margin,
                                               const Matrix &transform) const;
    /// The same as pixels, in and out of the viewport. Nothing too where the matrices hold no
    /// numbers.
    std::optional<PixelRect> pixelsOf(const Extents &box, double margin,
                                      const Matrix &transform) const;

private:
    /// Row x and row y of the matrix from the world to the window, in pixels.
    std::array<std::array<double, 4>, 2> toWindow_{};
    /// The sums of the magnitudes that went into the elements above: what rounding goes by.
    std::array<std::array<double, 4>, 2> magnitude_{};
    bool keepsParallels_ = false;
};

} // namespace kelo
