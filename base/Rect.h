#pragma once

#include <cmath>

namespace kelo {

/// A place in points (the desktop's logical pixels), in double precision.
struct Point
{
    double x = 0.0;
    double y = 0.0;
    bool operator==(const Point &) const = default;
};

/// An extent in points.
struct Size
{
    double width = 0.0;
    double height = 0.0;
    bool operator==(const Size &) const = default;
};

/// A rectangle in points. Whether y counts up or down is said where a rectangle is used.
struct Rect
{
    Point origin;
    Size size;
    bool operator==(const Rect &) const = default;

    /// True for points inside; the right and the far edge are outside, so that neighbouring
    /// rectangles share no point.
    bool contains(const Point &point) const
    {
        return point.x >= origin.x && point.x < origin.x + size.width && point.y >= origin.y &&
               point.y < origin.y + size.height;
    }
};

/// An extent in device pixels.
struct PixelSize
{
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize &) const = default;
};

/// An extent in points as device pixels, at `scale` pixels a point: whole numbers, rounded once.
inline PixelSize pixelSizeOf(const Size &size, double scale)
{
    return {static_cast<int>(std::lround(size.width * scale)),
            static_cast<int>(std::lround(size.height * scale))};
}

} // namespace kelo
