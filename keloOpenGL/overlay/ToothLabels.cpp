#include "keloOpenGL/overlay/ToothLabels.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kelo {
namespace {

bool overlap(const Rect &a, const Rect &b)
{
    return a.origin.x < b.origin.x + b.size.width && b.origin.x < a.origin.x + a.size.width &&
           a.origin.y < b.origin.y + b.size.height && b.origin.y < a.origin.y + a.size.height;
}

} // namespace

ToothLabelSpot toothLabelSpot(const Extents &tooth, const Extents &arch, bool isUpper,
                              const Matrix &toEye, const Matrix &projection, double aspect)
{
    const auto middleX = static_cast<float>((tooth.xMin() + tooth.xMax()) * 0.5);
    const auto middleY = static_cast<float>((tooth.yMin() + tooth.yMax()) * 0.5);
    const auto gumEnd = static_cast<float>(isUpper ? tooth.zMax() : tooth.zMin());
    const Vector3 inClip = Matrix_multiplyVector3(
        projection, Matrix_multiplyVector3(toEye, Vector3{middleX, middleY, gumEnd}));

    const Vector3 outward{middleX - static_cast<float>((arch.xMin() + arch.xMax()) * 0.5),
                          middleY - static_cast<float>(arch.yMax()), 0.0f};
    const Vector3 seen = Matrix_multiplyVector3_rotationOnly(toEye, outward);
    const double length = std::hypot(double{seen.x}, double{seen.y}, double{seen.z});
    return {{double{inClip.x} * aspect, inClip.y}, length > 0.0 ? seen.z / length : 0.0};
}

std::vector<std::size_t> legibleToothLabels(const std::vector<ToothLabelBox> &boxes)
{
    std::vector<std::size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&boxes](std::size_t a, std::size_t b) {
        return boxes[a].facing > boxes[b].facing;
    });
    std::vector<std::size_t> legible;
    for (const std::size_t candidate : order) {
        if (!(boxes[candidate].facing >= leastFacing)) continue;
        const bool isFree = std::none_of(legible.begin(), legible.end(), [&](std::size_t other) {
            return overlap(boxes[candidate].rect, boxes[other].rect);
        });
        if (isFree) legible.push_back(candidate);
    }
    std::sort(legible.begin(), legible.end());
    return legible;
}

} // namespace kelo
