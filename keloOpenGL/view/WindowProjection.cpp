#include "keloOpenGL/view/WindowProjection.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace kelo {
namespace {

/// Pixels counted round the box: OpenGL lets a rasteriser round window positions.
constexpr double pixelMargin = 1.0;
/// What single precision may lose on the way from the mesh to the window, as a part of the largest
/// intermediate value: some thirty roundings of 2^-24 each, taken twice.
constexpr double roundingPart = 4e-6;
/// Far outside every window, and far from where whole numbers end.
constexpr double furthestPixel = 1e6;

/// Points stay points: the last row of the matrix is 0, 0, 0, 1.
bool isAffine(const Matrix &matrix)
{
    return matrix.m[3] == 0.0f && matrix.m[7] == 0.0f && matrix.m[11] == 0.0f &&
           matrix.m[15] == 1.0f;
}

/// One box axis as its middle and half its size.
struct BoxAxis
{
    BoxAxis(double min, double max, double margin)
        : middle((min + max) * 0.5), half(std::abs(max - min) * 0.5 + margin)
    {}
    double middle;
    double half;
};

int pixelAt(double coordinate)
{
    return static_cast<int>(std::floor(std::clamp(coordinate, -furthestPixel, furthestPixel)));
}

} // namespace

PixelRect united(const PixelRect &a, const PixelRect &b)
{
    if (a.width <= 0 || a.height <= 0) return b;
    if (b.width <= 0 || b.height <= 0) return a;
    const int column = std::min(a.column, b.column);
    const int row = std::min(a.row, b.row);
    return {column, row, std::max(a.column + a.width, b.column + b.width) - column,
            std::max(a.row + a.height, b.row + b.height) - row};
}

WindowProjection::WindowProjection(const std::array<int, 4> &viewport, const Matrix &projection,
                                   const Matrix &modelView)
    : keepsParallels_(isAffine(projection) && isAffine(modelView))
{
    for (std::size_t axis = 0; axis < 2; ++axis) {
        const double halfSize = viewport[axis + 2] * 0.5;
        for (std::size_t c = 0; c < 4; ++c) {
            for (std::size_t k = 0; k < 4; ++k) {
                const double term =
                    halfSize * projection.m[k * 4 + axis] * double{modelView.m[c * 4 + k]};
                toWindow_[axis][c] += term;
                magnitude_[axis][c] += std::abs(term);
            }
        }
        const double middle = viewport[axis] + halfSize;
        toWindow_[axis][3] += middle;
        magnitude_[axis][3] += std::abs(middle);
    }
}

std::optional<std::array<WindowProjection::Span, 2>>
WindowProjection::spansOf(const Extents &box, double margin, const Matrix &transform) const
{
    if (!keepsParallels_ || !isAffine(transform)) return std::nullopt;
    const BoxAxis axes[3] = {{box.xMin(), box.xMax(), margin},
                             {box.yMin(), box.yMax(), margin},
                             {box.zMin(), box.zMax(), margin}};
    std::array<Span, 2> spans;
    for (std::size_t axis = 0; axis < 2; ++axis) {
        double position = 0.0;
        double reach = pixelMargin;
        double magnitude = 0.0;
        for (std::size_t c = 0; c < 4; ++c) {
            double factor = 0.0;
            double factorMagnitude = 0.0;
            for (std::size_t k = 0; k < 4; ++k) {
                factor += toWindow_[axis][k] * transform.m[c * 4 + k];
                factorMagnitude += magnitude_[axis][k] * std::abs(transform.m[c * 4 + k]);
            }
            const double middle = c < 3 ? axes[c].middle : 1.0;
            const double half = c < 3 ? axes[c].half : 0.0;
            position += factor * middle;
            reach += std::abs(factor) * half;
            magnitude += factorMagnitude * (std::abs(middle) + half);
        }
        spans[axis] = {position, reach + roundingPart * magnitude};
    }
    return spans;
}

std::optional<PixelRect> WindowProjection::pixelsOf(const Extents &box, double margin,
                                                    const Matrix &transform) const
{
    const auto spans = spansOf(box, margin, transform);
    if (!spans) return std::nullopt;
    const auto &[x, y] = *spans;
    if (!std::isfinite(x.middle + x.reach + y.middle + y.reach)) return std::nullopt;
    const int column = pixelAt(x.middle - x.reach);
    const int row = pixelAt(y.middle - y.reach);
    return PixelRect{column, row, pixelAt(x.middle + x.reach) + 1 - column,
                     pixelAt(y.middle + y.reach) + 1 - row};
}

} // namespace kelo
