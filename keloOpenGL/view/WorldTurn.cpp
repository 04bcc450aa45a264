#include "keloOpenGL/view/WorldTurn.h"

#include "keloOpenGL/view/RotationQuaternion.h"

namespace kelo {

Quaternion clampQuaternionToFront180Degrees(const Quaternion &quaternion)
{
    const Vector3 front = Quaternion_multiplyVector3(quaternion, Vector3{0.0f, -1.0f, 0.0f});
    if (!(front.z < 0.0f)) return quaternion;
    if (front.x < 0.0f) return {-0.5f, -0.5f, -0.5f, 0.5f};
    return {-0.5f, 0.5f, 0.5f, 0.5f};
}

std::array<float, 4> worldRotationTurnedByDegrees(const std::array<float, 4> &worldRotation,
                                                  float degrees)
{
    const float step = radiansOfDegrees(degrees);
    const Vector3 vertical{0.0f, 0.0f, 1.0f};
    Quaternion turned = quaternionOfRotation(worldRotation);
    Quaternion_rotate(&turned, vertical, step);
    turned = clampQuaternionToFront180Degrees(turned);

    Vector3 axis = vertical;
    float angle = step;
    Quaternion_toAxisAngle(turned, &axis, &angle);
    return {180.0f * angle / pi, axis.x, axis.y, axis.z};
}

} // namespace kelo
