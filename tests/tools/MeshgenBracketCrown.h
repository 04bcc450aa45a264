#pragma once

#include "tools/meshgen/Arrangement.h"
#include "tools/meshgen/Mesh.h"

#include <cmath>
#include <cstdint>
#include <fstream>
#include <numbers>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace kelo::meshgen::test {

inline bool isMolar(int number)
{
    return number <= 3 || number == 14 || number == 15 || number == 18 || number == 19 ||
           number >= 30;
}

inline std::vector<int> toothNumbers()
{
    std::vector<int> numbers;
    for (int number = 2; number <= 31; ++number) {
        if (number != 16 && number != 17) numbers.push_back(number);
    }
    return numbers;
}

inline std::string bracketKey(int number)
{
    return std::to_string(number);
}

inline std::string buttonKey(int number)
{
    return std::to_string(number) + "l";
}

/// A crown of the plainest form, an ellipsoid, under a tooth's bracket hook: bodies are tested on
/// it apart from the shapes of real teeth.
struct Crown
{
    ToothPlacement placement;
    Mesh mesh;
};

inline Mesh ellipsoid(const Vec3 &center, const Vec3 &a, const Vec3 &b, const Vec3 &c)
{
    constexpr std::uint32_t rows = 24;
    constexpr std::uint32_t columns = 36;
    Mesh mesh;
    mesh.positions.push_back(center + c);
    for (std::uint32_t i = 1; i < rows; ++i) {
        const double theta = std::numbers::pi * i / rows;
        for (std::uint32_t j = 0; j < columns; ++j) {
            const double phi = 2.0 * std::numbers::pi * j / columns;
            mesh.positions.push_back(center + a * (std::sin(theta) * std::cos(phi)) +
                                     b * (std::sin(theta) * std::sin(phi)) + c * std::cos(theta));
        }
    }
    const auto last = static_cast<std::uint32_t>(mesh.positions.size());
    mesh.positions.push_back(center - c);
    const auto at = [](std::uint32_t i, std::uint32_t j) { return 1 + i * columns + j % columns; };
    for (std::uint32_t j = 0; j < columns; ++j) {
        mesh.triangles.push_back({0, at(0, j), at(0, j + 1)});
        for (std::uint32_t i = 0; i + 2 < rows; ++i) {
            mesh.triangles.push_back({at(i, j), at(i + 1, j), at(i + 1, j + 1)});
            mesh.triangles.push_back({at(i, j), at(i + 1, j + 1), at(i, j + 1)});
        }
        mesh.triangles.push_back({last, at(rows - 2, j + 1), at(rows - 2, j)});
    }
    if (dot(cross(a, b), c) < 0.0) {
        for (auto &t : mesh.triangles)
            std::swap(t[1], t[2]);
    }
    computeSmoothNormals(mesh, 180.0);
    return mesh;
}

/// The crown that carries the bracket hook `hook` and, on its other side, the button neck `neck`.
inline Crown crownUnder(int number, const Hook &hook, const Hook &neck)
{
    Crown crown;
    ToothPlacement &placement = crown.placement;
    const bool molar = isMolar(number);
    placement.number = number;
    placement.upper = number <= 16;
    placement.occlusalDirection = {0.0, 0.0, placement.upper ? -1.0 : 1.0};
    placement.labialNormal =
        normalized(rejected(hook.position - neck.position, placement.occlusalDirection));
    placement.mesialDirection = cross(placement.labialNormal, placement.occlusalDirection);
    const bool right = hook.position.x < 0.0;
    const Vec3 towardsMidline = right ? Vec3{1.0, -1.0, 0.0} : Vec3{-1.0, -1.0, 0.0};
    if (dot(placement.mesialDirection, towardsMidline) < 0.0) {
        placement.mesialDirection = -placement.mesialDirection;
    }
    placement.facialAxisPoint = hook.position + placement.occlusalDirection * 2.5 -
                                placement.labialNormal * (molar ? 2.0 : 1.4);
    const double depth =
        dot(placement.facialAxisPoint - neck.position, placement.labialNormal) - 1.5;
    crown.mesh =
        ellipsoid(placement.facialAxisPoint - placement.labialNormal * (0.5 * depth),
                  placement.mesialDirection * (molar ? 5.0 : 3.6),
                  placement.labialNormal * (0.5 * depth), placement.occlusalDirection * 5.0);
    return crown;
}

} // namespace kelo::meshgen::test
