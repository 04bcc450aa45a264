#include "keloOpenGL/view/PickBox.h"

#include <cmath>
#include <cstddef>

namespace kelo {

PickBox::PickBox(const PixelRect &pixels, const WindowProjection &projection)
    : projection_(projection),
      middles_{{{pixels.column + pixels.width * 0.5, (pixels.width - 1) * 0.5},
                {pixels.row + pixels.height * 0.5, (pixels.height - 1) * 0.5}}}
{}

PickBox::PickBox(int column, int row, const std::array<int, 4> &viewport, const Matrix &projection,
                 const Matrix &modelView)
    : PickBox({column, row, 1, 1}, WindowProjection(viewport, projection, modelView))
{}

bool PickBox::mayShow(const Extents &box, double margin, const Matrix &transform) const
{
    const auto spans = projection_.spansOf(box, margin, transform);
    if (!spans) return true;
    for (std::size_t axis = 0; axis < 2; ++axis) {
        const auto &[middle, reach] = (*spans)[axis];
        // Only a proven miss is one: a comparison with what is no number is false.
        if (std::abs(middles_[axis].middle - middle) > reach + middles_[axis].reach) return false;
    }
    return true;
}

} // namespace kelo
