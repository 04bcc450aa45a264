#pragma once

#include "tools/lightbake/Mouth.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <utility>

namespace kelo::lightbake::test {

/// How far shapes reach from the middle, and the side of their squares, in millimetres.
inline constexpr int halfSide = 20;

/// A surface over the plane z = 0 whose heights are given, of squares of a millimetre, seen from
/// above or from below.
inline Part surface(Kind kind, bool isUpper, const std::function<double(double, double)> &height,
                    bool looksUp)
{
    Part part;
    part.kind = kind;
    part.isUpper = isUpper;
    part.toothNumber = kind == Kind::gum ? 0 : isUpper ? 8 : 25;
    const int side = 2 * halfSide + 1;
    const double sign = looksUp ? 1.0 : -1.0;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            const double x = column - halfSide, y = row - halfSide;
            const double slopeX = (height(x + 0.5, y) - height(x - 0.5, y)) * sign;
            const double slopeY = (height(x, y + 0.5) - height(x, y - 0.5)) * sign;
            const double size = std::sqrt(slopeX * slopeX + slopeY * slopeY + 1.0);
            part.vertices.push_back(
                {{float(x), float(y), float(height(x, y))},
                 {float(-slopeX / size), float(-slopeY / size), float(sign / size)}});
        }
    }
    const auto at = [&](int column, int row) {
        return static_cast<std::uint32_t>(row * side + column);
    };
    for (int row = 0; row + 1 < side; ++row) {
        for (int column = 0; column + 1 < side; ++column) {
            std::uint32_t corners[4]{at(column, row), at(column + 1, row), at(column + 1, row + 1),
                                     at(column, row + 1)};
            if (!looksUp) std::swap(corners[1], corners[3]);
            part.indexes.insert(part.indexes.end(), {corners[0], corners[1], corners[2], corners[0],
                                                     corners[2], corners[3]});
        }
    }
    return part;
}

/// A level square at this height.
inline Part plane(Kind kind, bool isUpper, double z, bool looksUp)
{
    return surface(
        kind, isUpper, [z](double, double) { return z; }, looksUp);
}

/// The vertex of a surface at whole millimetres.
inline std::size_t vertexAt(int x, int y)
{
    return static_cast<std::size_t>((y + halfSide) * (2 * halfSide + 1) + x + halfSide);
}

inline Mouth mouthOf(std::vector<Part> parts)
{
    Mouth mouth;
    MutableExtents extents;
    for (const Part &part : parts)
        for (const OBJVertex &vertex : part.vertices)
            extents.absorb(double(vertex.position[0]), double(vertex.position[1]),
                           double(vertex.position[2]));
    mouth.parts = std::move(parts);
    mouth.extents = extents;
    return mouth;
}

} // namespace kelo::lightbake::test
