#include "geometry/Quaternion.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace kelo {

namespace {

float squaredLengthOf(Quaternion q)
{
    return q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
}

} // namespace

void Quaternion_loadIdentity(Quaternion *q)
{
    *q = {0.0f, 0.0f, 0.0f, 1.0f};
}

Quaternion Quaternion_fromAxisAngle(Vector3 axis, float angleInRadians)
{
    if (!Vector3_normalize(&axis)) {
        const float quietNaN = std::bit_cast<float>(std::uint32_t{0x7FC00000});
        return {quietNaN, quietNaN, quietNaN, 1.0f};
    }
    const float sine = std::sin(angleInRadians / 2.0f);
    const float cosine = std::cos(angleInRadians / 2.0f);
    return {axis.x * sine, axis.y * sine, axis.z * sine, cosine};
}

void Quaternion_toAxisAngle(Quaternion q, Vector3 *axis, float *angleInRadians)
{
    const float length = std::sqrt(squaredLengthOf(q));
    const float cosine = q.w / length;
    if (axis) {
        // Just under 1 the squared cosine goes in steps of 6e-8, so the sine's first values are 0,
        // 0.00024, 0.00035, 0.00042: below 0.0005 it is noise, and dividing by it would make the
        // noise an axis.
        float sine = std::sqrt(1.0f - cosine * cosine);
        if (std::abs(sine) < 0.0005f) sine = 1.0f;
        *axis = {q.x / length / sine, q.y / length / sine, q.z / length / sine};
    }
    if (angleInRadians) *angleInRadians = 2.0f * std::acos(cosine);
}

Matrix Quaternion_toMatrix(Quaternion q)
{
    const float x = q.x, y = q.y, z = q.z, w = q.w;
    return {{1.0f - 2.0f * (y * y + z * z), 2.0f * (x * y + z * w), 2.0f * (x * z - y * w), 0.0f,
             2.0f * (x * y - z * w), 1.0f - 2.0f * (x * x + z * z), 2.0f * (y * z + x * w), 0.0f,
             2.0f * (x * z + y * w), 2.0f * (y * z - x * w), 1.0f - 2.0f * (x * x + y * y), 0.0f,
             0.0f, 0.0f, 0.0f, 1.0f}};
}

void Quaternion_rotate(Quaternion *q, Vector3 axis, float angleInRadians)
{
    Quaternion_multiply(q, Quaternion_fromAxisAngle(axis, angleInRadians));
}

Quaternion Quaternion_rotated(Quaternion q, Vector3 axis, float angleInRadians)
{
    Quaternion_rotate(&q, axis, angleInRadians);
    return q;
}

void Quaternion_invert(Quaternion *q)
{
    const float squaredLength = squaredLengthOf(*q);
    *q = {-q->x / squaredLength, -q->y / squaredLength, -q->z / squaredLength,
          q->w / squaredLength};
}

Quaternion Quaternion_inverted(Quaternion q)
{
    Quaternion_invert(&q);
    return q;
}

Vector3 Quaternion_multiplyVector3(Quaternion q, Vector3 v)
{
    const Quaternion turned = Quaternion_multiplied(Quaternion_multiplied(q, {v.x, v.y, v.z, 0.0f}),
                                                    Quaternion_inverted(q));
    return {turned.x, turned.y, turned.z};
}

Vector4 Quaternion_multiplyVector4(Quaternion q, Vector4 v)
{
    const Vector3 turned = Quaternion_multiplyVector3(q, {v.x, v.y, v.z});
    return {turned.x, turned.y, turned.z, v.w};
}

} // namespace kelo
