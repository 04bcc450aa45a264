#pragma once

#include <algorithm>
#include <cmath>

namespace kelo::meshgen {

/// 0 up to `from`, 1 beyond `to`, and between them a cubic without a kink at either end.
inline double smoothstep(double from, double to, double x)
{
    const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

/// A point or direction in double precision, in millimetres where it is a point.
struct Vec3
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr Vec3 &operator+=(const Vec3 &other)
    {
        x += other.x;
        y += other.y;
        z += other.z;
        return *this;
    }
    constexpr Vec3 &operator-=(const Vec3 &other)
    {
        x -= other.x;
        y -= other.y;
        z -= other.z;
        return *this;
    }
    constexpr Vec3 &operator*=(double factor)
    {
        x *= factor;
        y *= factor;
        z *= factor;
        return *this;
    }
    constexpr bool operator==(const Vec3 &) const = default;
};

constexpr Vec3 operator+(Vec3 a, const Vec3 &b)
{
    return a += b;
}
constexpr Vec3 operator-(Vec3 a, const Vec3 &b)
{
    return a -= b;
}
constexpr Vec3 operator-(const Vec3 &a)
{
    return {-a.x, -a.y, -a.z};
}
constexpr Vec3 operator*(Vec3 a, double factor)
{
    return a *= factor;
}
constexpr Vec3 operator*(double factor, Vec3 a)
{
    return a *= factor;
}
constexpr Vec3 operator/(const Vec3 &a, double divisor)
{
    return {a.x / divisor, a.y / divisor, a.z / divisor};
}

constexpr double dot(const Vec3 &a, const Vec3 &b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr Vec3 cross(const Vec3 &a, const Vec3 &b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vec3 &a)
{
    return std::sqrt(dot(a, a));
}
inline double distance(const Vec3 &a, const Vec3 &b)
{
    return length(a - b);
}

/// The unit vector along `a`; a vector without a direction (length 0) gives (0, 0, 1).
inline Vec3 normalized(const Vec3 &a)
{
    const double size = length(a);
    return size > 0.0 ? a / size : Vec3{0.0, 0.0, 1.0};
}

/// The part of `a` that is perpendicular to the unit vector `unitNormal`.
constexpr Vec3 rejected(const Vec3 &a, const Vec3 &unitNormal)
{
    return a - dot(a, unitNormal) * unitNormal;
}

/// `a` turned about the unit vector `unitAxis` by `angle` (radians, right-handed), after Rodrigues.
inline Vec3 rotated(const Vec3 &a, const Vec3 &unitAxis, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return a * c + cross(unitAxis, a) * s + unitAxis * (dot(unitAxis, a) * (1.0 - c));
}

} // namespace kelo::meshgen
