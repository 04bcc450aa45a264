// Vectors of two, three and four single-precision components, as plain values and free functions.
//
// Every function is named by its type and its operation (`Vector3_normalize`). All arithmetic is
// done in single precision. Nothing here allocates, throws or keeps state, so every function may be
// called from any thread. Infinities and NaNs go through the arithmetic as IEEE 754 has it.
//
// The operations, the same for all three types:
//
//   _init(x, y, ...)             the vector of these components
//   _magnitude(v)                its length, the square root of the sum of the squared components
//   _magnitudeSquared(v)         the sum of the squared components
//   _dot(left, right)            the dot product
//   _add(left, right)            component-wise left + right
//   _subtract(left, right)       component-wise left - right
//   _multiplyScalar(v, scalar)   every component times scalar
//   _divideScalar(v, scalar)     every component divided by scalar; no check for 0
//   _interpolate(left, right, t) left * (1 - t) + right * t; t is not limited to 0 ... 1
//   _reflect(v, unitNormal)      2 * (v . unitNormal) * unitNormal - v: v mirrored at the normal's
//   line,
//                                not at the plane across it. unitNormal has the length 1; it is not
//                                normalised here.
//   _normalize(&v)               Makes the length of v 1 and returns true. Where the length is not
//                                greater than 0 (a zero vector, squares that underflow to 0, a
//                                NaN), leaves v as it is and returns false.
//   _normalized(v)               The normalised copy; v itself where _normalize would return false.
//   _scaleTo(&v, magnitude)      _normalize, then every component times magnitude. Returns what
//                                _normalize returns; a v that it refuses is left as it is. A
//                                negative magnitude turns the vector round.
//   _scaledTo(v, magnitude)      the copy form of _scaleTo
//
// Pointers must not be null.
#pragma once

#include <cmath>
#include <type_traits>

namespace kelo {

struct Vector2
{
    float x, y;
};

struct Vector3
{
    float x, y, z;
};

struct Vector4
{
    float x, y, z, w;
};

/// OpenGL reads arrays of these as arrays of floats.
static_assert(sizeof(Vector2) == 2 * sizeof(float) && std::is_standard_layout_v<Vector2> &&
              std::is_trivially_copyable_v<Vector2>);
static_assert(sizeof(Vector3) == 3 * sizeof(float) && std::is_standard_layout_v<Vector3> &&
              std::is_trivially_copyable_v<Vector3>);
static_assert(sizeof(Vector4) == 4 * sizeof(float) && std::is_standard_layout_v<Vector4> &&
              std::is_trivially_copyable_v<Vector4>);

// Vector2

[[nodiscard]] constexpr Vector2 Vector2_init(float x, float y)
{
    return {x, y};
}

[[nodiscard]] constexpr float Vector2_dot(Vector2 left, Vector2 right)
{
    return left.x * right.x + left.y * right.y;
}

[[nodiscard]] constexpr float Vector2_magnitudeSquared(Vector2 v)
{
    return Vector2_dot(v, v);
}

[[nodiscard]] inline float Vector2_magnitude(Vector2 v)
{
    return std::sqrt(Vector2_magnitudeSquared(v));
}

[[nodiscard]] constexpr Vector2 Vector2_add(Vector2 left, Vector2 right)
{
    return {left.x + right.x, left.y + right.y};
}

[[nodiscard]] constexpr Vector2 Vector2_subtract(Vector2 left, Vector2 right)
{
    return {left.x - right.x, left.y - right.y};
}

[[nodiscard]] constexpr Vector2 Vector2_multiplyScalar(Vector2 v, float scalar)
{
    return {v.x * scalar, v.y * scalar};
}

[[nodiscard]] constexpr Vector2 Vector2_divideScalar(Vector2 v, float scalar)
{
    return {v.x / scalar, v.y / scalar};
}

[[nodiscard]] constexpr Vector2 Vector2_interpolate(Vector2 left, Vector2 right, float t)
{
    return Vector2_add(Vector2_multiplyScalar(left, 1.0f - t), Vector2_multiplyScalar(right, t));
}

[[nodiscard]] constexpr Vector2 Vector2_reflect(Vector2 v, Vector2 unitNormal)
{
    return Vector2_subtract(Vector2_multiplyScalar(unitNormal, 2.0f * Vector2_dot(v, unitNormal)),
                            v);
}

inline bool Vector2_normalize(Vector2 *v)
{
    const float magnitude = Vector2_magnitude(*v);
    if (!(magnitude > 0.0f)) return false;
    *v = Vector2_divideScalar(*v, magnitude);
    return true;
}

[[nodiscard]] inline Vector2 Vector2_normalized(Vector2 v)
{
    Vector2_normalize(&v);
    return v;
}

inline bool Vector2_scaleTo(Vector2 *v, float magnitude)
{
    if (!Vector2_normalize(v)) return false;
    *v = Vector2_multiplyScalar(*v, magnitude);
    return true;
}

[[nodiscard]] inline Vector2 Vector2_scaledTo(Vector2 v, float magnitude)
{
    Vector2_scaleTo(&v, magnitude);
    return v;
}

/// v turned counter-clockwise by angleInRadians.
[[nodiscard]] inline Vector2 Vector2_rotate(Vector2 v, float angleInRadians)
{
    const float sine = std::sin(angleInRadians);
    const float cosine = std::cos(angleInRadians);
    return {v.x * cosine - v.y * sine, v.x * sine + v.y * cosine};
}

/// left.x * right.y - left.y * right.x: the area of the parallelogram of the two, positive where
/// right lies counter-clockwise of left.
[[nodiscard]] constexpr float Vector2_cross(Vector2 left, Vector2 right)
{
    return left.x * right.y - left.y * right.x;
}

// Vector3

[[nodiscard]] constexpr Vector3 Vector3_init(float x, float y, float z)
{
    return {x, y, z};
}

[[nodiscard]] constexpr float Vector3_dot(Vector3 left, Vector3 right)
{
    return left.x * right.x + left.y * right.y + left.z * right.z;
}

[[nodiscard]] constexpr float Vector3_magnitudeSquared(Vector3 v)
{
    return Vector3_dot(v, v);
}

[[nodiscard]] inline float Vector3_magnitude(Vector3 v)
{
    return std::sqrt(Vector3_magnitudeSquared(v));
}

[[nodiscard]] constexpr Vector3 Vector3_add(Vector3 left, Vector3 right)
{
    return {left.x + right.x, left.y + right.y, left.z + right.z};
}

[[nodiscard]] constexpr Vector3 Vector3_subtract(Vector3 left, Vector3 right)
{
    return {left.x - right.x, left.y - right.y, left.z - right.z};
}

[[nodiscard]] constexpr Vector3 Vector3_multiplyScalar(Vector3 v, float scalar)
{
    return {v.x * scalar, v.y * scalar, v.z * scalar};
}

[[nodiscard]] constexpr Vector3 Vector3_divideScalar(Vector3 v, float scalar)
{
    return {v.x / scalar, v.y / scalar, v.z / scalar};
}

[[nodiscard]] constexpr Vector3 Vector3_interpolate(Vector3 left, Vector3 right, float t)
{
    return Vector3_add(Vector3_multiplyScalar(left, 1.0f - t), Vector3_multiplyScalar(right, t));
}

[[nodiscard]] constexpr Vector3 Vector3_reflect(Vector3 v, Vector3 unitNormal)
{
    return Vector3_subtract(Vector3_multiplyScalar(unitNormal, 2.0f * Vector3_dot(v, unitNormal)),
                            v);
}

inline bool Vector3_normalize(Vector3 *v)
{
    const float magnitude = Vector3_magnitude(*v);
    if (!(magnitude > 0.0f)) return false;
    *v = Vector3_divideScalar(*v, magnitude);
    return true;
}

[[nodiscard]] inline Vector3 Vector3_normalized(Vector3 v)
{
    Vector3_normalize(&v);
    return v;
}

inline bool Vector3_scaleTo(Vector3 *v, float magnitude)
{
    if (!Vector3_normalize(v)) return false;
    *v = Vector3_multiplyScalar(*v, magnitude);
    return true;
}

[[nodiscard]] inline Vector3 Vector3_scaledTo(Vector3 v, float magnitude)
{
    Vector3_scaleTo(&v, magnitude);
    return v;
}

/// The right-handed cross product: x cross y is z.
[[nodiscard]] constexpr Vector3 Vector3_cross(Vector3 left, Vector3 right)
{
    return {left.y * right.z - left.z * right.y, left.z * right.x - left.x * right.z,
            left.x * right.y - left.y * right.x};
}

// Vector4

[[nodiscard]] constexpr Vector4 Vector4_init(float x, float y, float z, float w)
{
    return {x, y, z, w};
}

[[nodiscard]] constexpr float Vector4_dot(Vector4 left, Vector4 right)
{
    return left.x * right.x + left.y * right.y + left.z * right.z + left.w * right.w;
}

[[nodiscard]] constexpr float Vector4_magnitudeSquared(Vector4 v)
{
    return Vector4_dot(v, v);
}

[[nodiscard]] inline float Vector4_magnitude(Vector4 v)
{
    return std::sqrt(Vector4_magnitudeSquared(v));
}

[[nodiscard]] constexpr Vector4 Vector4_add(Vector4 left, Vector4 right)
{
    return {left.x + right.x, left.y + right.y, left.z + right.z, left.w + right.w};
}

[[nodiscard]] constexpr Vector4 Vector4_subtract(Vector4 left, Vector4 right)
{
    return {left.x - right.x, left.y - right.y, left.z - right.z, left.w - right.w};
}

[[nodiscard]] constexpr Vector4 Vector4_multiplyScalar(Vector4 v, float scalar)
{
    return {v.x * scalar, v.y * scalar, v.z * scalar, v.w * scalar};
}

[[nodiscard]] constexpr Vector4 Vector4_divideScalar(Vector4 v, float scalar)
{
    return {v.x / scalar, v.y / scalar, v.z / scalar, v.w / scalar};
}

[[nodiscard]] constexpr Vector4 Vector4_interpolate(Vector4 left, Vector4 right, float t)
{
    return Vector4_add(Vector4_multiplyScalar(left, 1.0f - t), Vector4_multiplyScalar(right, t));
}

[[nodiscard]] constexpr Vector4 Vector4_reflect(Vector4 v, Vector4 unitNormal)
{
    return Vector4_subtract(Vector4_multiplyScalar(unitNormal, 2.0f * Vector4_dot(v, unitNormal)),
                            v);
}

inline bool Vector4_normalize(Vector4 *v)
{
    const float magnitude = Vector4_magnitude(*v);
    if (!(magnitude > 0.0f)) return false;
    *v = Vector4_divideScalar(*v, magnitude);
    return true;
}

[[nodiscard]] inline Vector4 Vector4_normalized(Vector4 v)
{
    Vector4_normalize(&v);
    return v;
}

inline bool Vector4_scaleTo(Vector4 *v, float magnitude)
{
    if (!Vector4_normalize(v)) return false;
    *v = Vector4_multiplyScalar(*v, magnitude);
    return true;
}

[[nodiscard]] inline Vector4 Vector4_scaledTo(Vector4 v, float magnitude)
{
    Vector4_scaleTo(&v, magnitude);
    return v;
}

} // namespace kelo
