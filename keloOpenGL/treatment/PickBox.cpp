#include "keloOpenGL/treatment/PickBox.h"

#include <cmath>
#include <cstddef>

namespace kelo {
namespace {

/// Pixels counted round the picked one: OpenGL lets a rasteriser round window positions.
constexpr double pixelMargin = 1.0;
/// What single precision may lose on the way from the mesh to the window, as a part of the largest
/// intermediate value: some thirty roundings of 2^-24 each, taken twice.
constexpr double roundingPart = 4e-6;

/// Points stay points: the last row of the matrix is 0, 0, 0, 1.
bool isAffine(const Matrix &matrix)
{
    return matrix.m[3] == 0.0f && matrix.m[7] == 0.0f && matrix.m[11] == 0.0f &&
           matrix.m[15] == 1.0f;
}

/// One box axis as its middle and half its size.
struct Span
{
    Span(double min, double max, double margin)
        : middle((min + max) * 0.5), half(std::abs(max - min) * 0.5 + margin)
    {}
    double middle;
    double half;
};

} // namespace

PickBox::PickBox(int column, int row, const std::array<int, 4> &viewport, const Matrix &projection,
                 const Matrix &modelView)
    : pixelCenter_{column + 0.5, row + 0.5},
      keepsParallels_(isAffine(projection) && isAffine(modelView))
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

bool PickBox::mayShow(const Extents &box, double margin, const Matrix &transform) const
{
    if (!keepsParallels_ || !isAffine(transform)) return true;
    const Span spans[3] = {{box.xMin(), box.xMax(), margin},
                           {box.yMin(), box.yMax(), margin},
                           {box.zMin(), box.zMax(), margin}};
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
            const double middle = c < 3 ? spans[c].middle : 1.0;
            const double half = c < 3 ? spans[c].half : 0.0;
            position += factor * middle;
            reach += std::abs(factor) * half;
            magnitude += factorMagnitude * (std::abs(middle) + half);
        }
        reach += roundingPart * magnitude;
        // Only a proven miss is one: a comparison with what is no number is false.
        if (std::abs(pixelCenter_[axis] - position) > reach) return false;
    }
    return true;
}

} // namespace kelo
