#pragma once

#include "base/Angles.h"
#include "geometry/Quaternion.h"

#include <array>

namespace kelo {

/// A rotation as views store it: the angle in degrees, then the axis x, y, z, of any length.
using AngleAndAxis = std::array<float, 4>;

/// In single precision, as all rotations are stored. The axis stays as it is, not normalised.
inline AngleAndAxis angleAndAxis(double angleInDegrees, double x, double y, double z)
{
    return {static_cast<float>(angleInDegrees), static_cast<float>(x), static_cast<float>(y),
            static_cast<float>(z)};
}

/// The quaternion of a rotation.
///
/// A rotation without an axis, as the identity is when a quaternion is taken apart, turns nothing;
/// so does glRotate draw it.
inline Quaternion quaternionOfRotation(const AngleAndAxis &rotation)
{
    const Vector3 axis{rotation[1], rotation[2], rotation[3]};
    if (axis.x == 0.0f && axis.y == 0.0f && axis.z == 0.0f) return {0.0f, 0.0f, 0.0f, 1.0f};
    return Quaternion_fromAxisAngle(axis, radiansOfDegrees(rotation[0]));
}

/// The rotation of a quaternion, the other way round.
inline AngleAndAxis rotationOfQuaternion(const Quaternion &quaternion)
{
    Vector3 axis{};
    float angle = 0.0f;
    Quaternion_toAxisAngle(quaternion, &axis, &angle);
    return {angle * degreesPerRadian, axis.x, axis.y, axis.z};
}

} // namespace kelo
