#include "keloOpenGL/view/HVFindGoodWindow.h"

namespace kelo {
namespace {

struct Range
{
    double min;
    double max;
};

/// The range about the same centre, `factor` times as long.
Range widened(double min, double max, double factor)
{
    double half = factor * (max - min) * 0.5;
    if (half == 0.0)
        half = 1.0; // a range of no extent would make a projection that cannot be inverted
    const double center = (min + max) * 0.5;
    return {center - half, center + half};
}

} // namespace

WindowLimits HVFindGoodWindow(double width, double height, const WindowLimits &zoomBox)
{
    const double dx = zoomBox.xMax - zoomBox.xMin;
    const double dy = zoomBox.yMax - zoomBox.yMin;
    const double ax = dx != 0.0 ? width / dx : 1.0;
    const double ay = dy != 0.0 ? height / dy : 1.0;

    WindowLimits window = zoomBox;
    if (ax > ay) {
        const Range x = widened(zoomBox.xMin, zoomBox.xMax, ax / ay);
        window.xMin = x.min;
        window.xMax = x.max;
    } else {
        const Range y = widened(zoomBox.yMin, zoomBox.yMax, ay / ax);
        window.yMin = y.min;
        window.yMax = y.max;
    }
    return window;
}

} // namespace kelo
