#include "keloOpenGL/treatment/WorldTurn.h"

namespace kelo {
namespace {

constexpr float pi = 3.1415927f;

} // namespace

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
    const float step = degrees * pi / 180.0f;
    const Vector3 vertical{0.0f, 0.0f, 1.0f};
    Quaternion turned{0.0f, 0.0f, 0.0f, 1.0f};
    // Without an axis, as the identity is when it is taken apart below, nothing is turned yet.
    if (worldRotation[1] != 0.0f || worldRotation[2] != 0.0f || worldRotation[3] != 0.0f)
        turned =
            Quaternion_fromAxisAngle(Vector3{worldRotation[1], worldRotation[2], worldRotation[3]},
                                     worldRotation[0] * pi / 180.0f);
    Quaternion_rotate(&turned, vertical, step);
    turned = clampQuaternionToFront180Degrees(turned);

    Vector3 axis = vertical;
    float angle = step;
    Quaternion_toAxisAngle(turned, &axis, &angle);
    return {180.0f * angle / pi, axis.x, axis.y, axis.z};
}

} // namespace kelo
