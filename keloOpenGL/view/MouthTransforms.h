#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"

namespace kelo {

/// How the two jaws turn when the mouth opens: pure functions of the mouth-open angle and of the
/// scene's extents.

/// The angle in radians that the jaws are turned by for a stored mouth-open angle in degrees. The
/// first 10 degrees of either direction are a dead zone in which the jaws stay closed.
KELO_EXPORT float effectiveMouthOpenAngle(float mouthOpenAngleInDegrees);

/// The transforms of the upper and the lower jaw for an effective angle in radians. Both turn in
/// the same sense about the same hinge line, which lies behind the arches; the jaw that the angle
/// does not mean follows by one eighth.
KELO_EXPORT Matrix upperMouthTransform(float effectiveAngleInRadians, const Extents &sceneExtents);
KELO_EXPORT Matrix lowerMouthTransform(float effectiveAngleInRadians, const Extents &sceneExtents);

} // namespace kelo
