#pragma once

#include "base/Export.h"

namespace kelo {

/// The limits of an orthographic projection, in world units.
struct WindowLimits
{
    double xMin = 0.0;
    double xMax = 0.0;
    double yMin = 0.0;
    double yMax = 0.0;
    bool operator==(const WindowLimits &) const = default;
};

/// Widens a zoom box to the proportions of a view, so that the box is wholly visible and centred,
/// with spare room on one axis only.
///
/// `width` and `height` are the view's size (any unit, both the same). An axis of the box without
/// extent counts as one view unit per world unit; a half-size that comes out as exactly 0 becomes
/// 1. When both axes fit equally well the y limits are computed, the x limits kept.
KELO_EXPORT WindowLimits HVFindGoodWindow(double width, double height, const WindowLimits &zoomBox);

} // namespace kelo
