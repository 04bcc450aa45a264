// Quaternions in single precision, as plain values and free functions.
//
// The vector part comes first, the scalar part w last. Products are Hamilton products with the
// receiver on the left, so that, as with matrices, `Quaternion_multiply(&q, r)` rotates by r first
// and by what q was afterwards.
//
// Naming: a plain verb (`Quaternion_multiply`) takes a pointer and changes that quaternion; the
// participle (`Quaternion_multiplied`) takes the value and returns the changed copy. Both give the
// same bits. Angles are radians. Pointers must not be null unless said otherwise. Nothing here
// allocates, throws or keeps state.
#pragma once

#include "base/Export.h"
#include "geometry/Matrix.h"
#include "geometry/Vector.h"

#include <cmath>
#include <type_traits>

namespace kelo {

/// Not initialised by its declaration alone; the identity is (0, 0, 0, 1).
struct Quaternion
{
    float x, y, z, w;
};

static_assert(sizeof(Quaternion) == 4 * sizeof(float) && std::is_standard_layout_v<Quaternion> &&
              std::is_trivially_copyable_v<Quaternion>);

// Making and taking apart

KELO_EXPORT void Quaternion_loadIdentity(Quaternion *q);

[[nodiscard]] constexpr Quaternion Quaternion_init(float x, float y, float z, float w)
{
    return {x, y, z, w};
}

/// The rotation by angleInRadians, counter-clockwise seen against the axis, which may have any
/// length greater than 0: (axis / |axis| * sin(angle / 2), cos(angle / 2)). For an axis whose
/// length is not greater than 0 the result is (NaN, NaN, NaN, 1), the NaNs being the quiet NaN of
/// the bit pattern 0x7FC00000, whatever the angle: a missing axis is to show, not to pass for a
/// rotation by 0.
[[nodiscard]] KELO_EXPORT Quaternion Quaternion_fromAxisAngle(Vector3 axis, float angleInRadians);

/// The axis (unit length) and the angle, 0 ... 2 pi, of q, which need not be a unit quaternion.
/// Either pointer may be null. Where the rotation is too small to have an axis (sine of half the
/// angle under 0.0005), axis is the vector part of the normalised quaternion as it is: (0, 0, 0)
/// for the identity.
KELO_EXPORT void Quaternion_toAxisAngle(Quaternion q, Vector3 *axis, float *angleInRadians);

/// The rotation matrix of a unit quaternion. q is not normalised first; another length distorts.
[[nodiscard]] KELO_EXPORT Matrix Quaternion_toMatrix(Quaternion q);

// Arithmetic

/// Divides the four components by the length. A length of 0 is not checked and yields NaNs.
inline void Quaternion_normalize(Quaternion *q);
[[nodiscard]] inline Quaternion Quaternion_normalized(Quaternion q);

inline void Quaternion_multiply(Quaternion *q, Quaternion r);
[[nodiscard]] inline Quaternion Quaternion_multiplied(Quaternion q, Quaternion r);

/// q times Quaternion_fromAxisAngle(axis, angleInRadians).
KELO_EXPORT void Quaternion_rotate(Quaternion *q, Vector3 axis, float angleInRadians);
[[nodiscard]] KELO_EXPORT Quaternion Quaternion_rotated(Quaternion q, Vector3 axis,
                                                        float angleInRadians);

/// The inverse (-x, -y, -z, w) / (x^2 + y^2 + z^2 + w^2); of a zero quaternion, NaNs.
KELO_EXPORT void Quaternion_invert(Quaternion *q);
[[nodiscard]] KELO_EXPORT Quaternion Quaternion_inverted(Quaternion q);

/// Spherical linear interpolation from left (t = 0) to right (t = 1), both of unit length; the
/// result has unit length. With the dot product d and a = acos |d| the weights are
///   left: sin((1 - t) a) / sin a, negated where d < 0;  right: sin(t a) / sin a.
/// So where d is negative the path starts at -left, which is the same rotation, and ends at right.
/// Where 1 - |d| is not greater than 0.01 the two lie so close that the weights 1 - t and t serve;
/// they take no sign, so two quaternions almost opposite (d near -1) are led through the middle and
/// not along the short way.
[[nodiscard]] inline Quaternion Quaternion_slerp(Quaternion left, Quaternion right, float t);

// Rotating vectors

/// The vector part of q (v, 0) q^-1, with q^-1 as Quaternion_invert gives it, so that a q of
/// another length than 1 still rotates without scaling.
[[nodiscard]] KELO_EXPORT Vector3 Quaternion_multiplyVector3(Quaternion q, Vector3 v);
/// x, y, z as above; w is passed through.
[[nodiscard]] KELO_EXPORT Vector4 Quaternion_multiplyVector4(Quaternion q, Vector4 v);

// Inline for speed: handed to a compiled function, a quaternion travels in two halves, and putting
// it together again costs more than the arithmetic.

inline void Quaternion_normalize(Quaternion *q)
{
    const float length = std::sqrt(q->x * q->x + q->y * q->y + q->z * q->z + q->w * q->w);
    *q = {q->x / length, q->y / length, q->z / length, q->w / length};
}

inline Quaternion Quaternion_normalized(Quaternion q)
{
    Quaternion_normalize(&q);
    return q;
}

inline void Quaternion_multiply(Quaternion *q, Quaternion r)
{
    const float x = q->x, y = q->y, z = q->z, w = q->w;
    *q = {w * r.x + x * r.w + y * r.z - z * r.y, w * r.y - x * r.z + y * r.w + z * r.x,
          w * r.z + x * r.y - y * r.x + z * r.w, w * r.w - x * r.x - y * r.y - z * r.z};
}

inline Quaternion Quaternion_multiplied(Quaternion q, Quaternion r)
{
    Quaternion_multiply(&q, r);
    return q;
}

inline Quaternion Quaternion_slerp(Quaternion left, Quaternion right, float t)
{
    const float dot = left.x * right.x + left.y * right.y + left.z * right.z + left.w * right.w;
    const float cosine = std::abs(dot);
    float leftWeight = 1.0f - t;
    float rightWeight = t;
    // Under an angle of about 8 degrees the sines are close to their arguments, and the linear
    // weights serve. The bound is the single-precision 0.01, compared in double precision, where 1
    // - cosine is exact.
    if (1.0 - static_cast<double>(cosine) > static_cast<double>(0.01f)) {
        // Both weights would be divided by sin(angle), which is positive here: the normalisation
        // below takes any common factor out again, so it is not computed.
        const float angle = std::acos(cosine);
        leftWeight = std::sin((1.0f - t) * angle);
        rightWeight = std::sin(t * angle);
        if (dot < 0.0f) leftWeight = -leftWeight;
    }
    return Quaternion_normalized(
        {left.x * leftWeight + right.x * rightWeight, left.y * leftWeight + right.y * rightWeight,
         left.z * leftWeight + right.z * rightWeight, left.w * leftWeight + right.w * rightWeight});
}

} // namespace kelo
