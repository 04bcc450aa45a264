#include "keloOpenGL/view/Camera.h"

#include <cmath>

namespace kelo {
namespace {

constexpr double depthInRadii = 100.0;

bool hasRoom(double min, double max)
{
    return std::isfinite(min) && std::isfinite(max) && min != max;
}

/// min and max, brought closer together (or apart) about their centre.
void scaleRange(double &min, double &max, double factor)
{
    const double halfSize = (max - min) * factor * 0.5;
    const double center = (min + max) * 0.5;
    min = center - halfSize;
    max = center + halfSize;
}

} // namespace

void Camera::fitDepth(double sceneRadius)
{
    const double depth = sceneRadius * depthInRadii;
    zMin_ = rotationCenter_.z - depth;
    zMax_ = rotationCenter_.z + depth;
}

void Camera::fitWindow(const Size &viewSize)
{
    windowLimits_ = HVFindGoodWindow(viewSize.width, viewSize.height, zoomBox_);
}

bool Camera::hasVolume() const
{
    return hasRoom(windowLimits_.xMin, windowLimits_.xMax) &&
           hasRoom(windowLimits_.yMin, windowLimits_.yMax) && hasRoom(zMin_, zMax_);
}

Vector3 centerOfExtents(const Extents &extents)
{
    const auto center = [](double min, double max) { return static_cast<float>(min + max) * 0.5f; };
    return {center(extents.xMin(), extents.xMax()), center(extents.yMin(), extents.yMax()),
            center(extents.zMin(), extents.zMax())};
}

WindowLimits zoomBoxAbout(const Vector3 &center, double radius, double scaleFactor)
{
    WindowLimits box{center.x - radius, center.x + radius, center.y - radius, center.y + radius};
    if (scaleFactor != 1.0) {
        scaleRange(box.xMin, box.xMax, scaleFactor);
        scaleRange(box.yMin, box.yMax, scaleFactor);
    }
    return box;
}

} // namespace kelo
