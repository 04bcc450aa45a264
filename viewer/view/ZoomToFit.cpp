#include "viewer/view/ZoomToFit.h"

#include "keloOpenGL/keloOpenGL.h"

#include <algorithm>

namespace viewer {
namespace {

/// What is shown beside the jaws, as a part of their width: room to see where they end.
constexpr double margin = 1.05;

} // namespace

void zoomToFit(kelo::DXOpenGL &view)
{
    view.zoomToFit();
    const auto scene = view.extents();
    // From the front the width lies across the window, from the side the depth.
    const double shownWidth = std::max(scene->xRange(), scene->yRange()) * margin;
    const kelo::WindowLimits box = view.zoomBox();
    const double missing = shownWidth - (box.xMax - box.xMin);
    if (missing <= 0.0) return;
    view.setZoomData(kelo::DXOpenGL::zoomDataWithXMin_xMax_yMin_yMax(
        box.xMin - missing / 2.0, box.xMax + missing / 2.0, box.yMin, box.yMax));
}

} // namespace viewer
