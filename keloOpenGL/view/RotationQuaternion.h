#pragma once

#include "base/Angles.h"
#include "geometry/Quaternion.h"

#include <array>

namespace kelo {

/// The quaternion of a rotation as views store it: the angle in degrees, then the axis x, y, z.
///
/// A rotation without an axis, as the identity is when a quaternion is taken apart, turns nothing;
/// so does glRotate draw it.
inline Quaternion quaternionOfRotation(const std::array<float, 4> &rotation)
{
    const Vector3 axis{rotation[1], rotation[2], rotation[3]};
    if (axis.x == 0.0f && axis.y == 0.0f && axis.z == 0.0f) return {0.0f, 0.0f, 0.0f, 1.0f};
    return Quaternion_fromAxisAngle(axis, radiansOfDegrees(rotation[0]));
}

} // namespace kelo
