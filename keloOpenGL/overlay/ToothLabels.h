#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"

#include <map>
#include <string>
#include <vector>

namespace kelo {

/// A short text for each tooth that has one, by the tooth's key.
using ToothLabels = std::map<std::string, std::string>;

/// Where the label of a tooth belongs, and how well that side of the tooth can be seen.
struct ToothLabelSpot
{
    Point position;      ///< the label's middle, in overlay coordinates (see OverlayLayout)
    double facing = 0.0; ///< 1: the tooth's outer side faces the viewer; -1: it is turned away
};

/// Labels of teeth turned away further than this are not drawn: other teeth stand before them.
inline constexpr double leastFacing = -0.2;

/// The spot at the gum end of a tooth, in the middle of its width and depth.
///
/// `tooth` is the tooth's box and `arch` that of all teeth of its jaw, in millimetres: x to the
/// patient's left, y to the back, z up. The tooth's outer side is the one away from the middle of
/// the arch's rear end. `toEye` moves these coordinates to those of the viewer, who looks along -z;
/// `projection` keeps parallels.
KELO_EXPORT ToothLabelSpot toothLabelSpot(const Extents &tooth, const Extents &arch, bool isUpper,
                                          const Matrix &toEye, const Matrix &projection,
                                          double aspect);

/// A label as large as it is drawn.
struct ToothLabelBox
{
    Rect rect;
    double facing = 0.0;
};

/// The labels that can be read, as their places in the list, ascending: of labels that overlap the
/// one that faces the viewer best, and none that is turned away.
KELO_EXPORT std::vector<std::size_t> legibleToothLabels(const std::vector<ToothLabelBox> &boxes);

} // namespace kelo
