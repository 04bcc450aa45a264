#pragma once

#include "geometry/Quaternion.h"

#include <array>

namespace kelo {

/// How the world is turned about its own vertical axis while the front of the arches stays towards
/// the viewer. Pure functions in single precision.

/// `quaternion` if the arches' front (0, -1, 0) does not turn away from the viewer; otherwise the
/// nearer of the two side-on limits, (-0.5, -0.5, -0.5, 0.5) or (-0.5, 0.5, 0.5, 0.5).
Quaternion clampQuaternionToFront180Degrees(const Quaternion &quaternion);

/// A world rotation (angle in degrees, then the axis) turned by `degrees` about the axis (0, 0, 1)
/// of the scene and clamped to the front half. A rotation about the axis (0, 0, 0) is none,
/// whatever its angle.
std::array<float, 4> worldRotationTurnedByDegrees(const std::array<float, 4> &worldRotation,
                                                  float degrees);

} // namespace kelo
