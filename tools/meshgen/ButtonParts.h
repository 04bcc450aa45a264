#pragma once

#include "tools/meshgen/BracketSurface.h"

namespace kelo::meshgen {

/// Where the lingual button with the neck `hook` is bonded: on the surface under the neck's axis,
/// or, where the axis runs into the biting surface, on the lingual surface below it.
SurfaceFrame buttonSeat(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook);

/// The direction along the button's neck that points off the tooth (the table's may point into it).
Vec3 buttonOutward(const ToothPlacement &placement, const Hook &hook);

} // namespace kelo::meshgen
