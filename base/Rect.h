#pragma once

namespace kelo {

/// A place in points (the desktop's logical pixels), in double precision.
struct Point
{
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const Point &, const Point &) = default;
};

/// An extent in points.
struct Size
{
    double width = 0.0;
    double height = 0.0;
    friend bool operator==(const Size &, const Size &) = default;
};

/// A rectangle in points. Whether y counts up or down is said where a rectangle is used.
struct Rect
{
    Point origin;
    Size size;
    friend bool operator==(const Rect &, const Rect &) = default;

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
    friend bool operator==(const PixelSize &, const PixelSize &) = default;
};

} // namespace kelo
