#pragma once

#include "tools/banddepth/ClosedMesh.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <stdlib.h>

namespace kelo::test {

using meshgen::Vec3;

/// Triangles, wound outwards, before they become a mesh.
struct Surface
{
    std::vector<Vec3> positions;
    std::vector<std::uint32_t> corners;

    void add(const Surface &other)
    {
        const auto offset = static_cast<std::uint32_t>(positions.size());
        positions.insert(positions.end(), other.positions.begin(), other.positions.end());
        for (const std::uint32_t corner : other.corners)
            corners.push_back(offset + corner);
    }

    Surface turnedInsideOut() const
    {
        Surface turned = *this;
        for (std::size_t i = 0; i < corners.size(); i += 3)
            std::swap(turned.corners[i], turned.corners[i + 1]);
        return turned;
    }

    banddepth::ClosedMesh mesh() const { return {positions, corners}; }

    std::string text() const
    {
        std::string text;
        for (const Vec3 &p : positions)
            text += "v " + std::to_string(p.x) + ' ' + std::to_string(p.y) + ' ' +
                    std::to_string(p.z) + '\n';
        for (std::size_t i = 0; i < corners.size(); i += 3)
            text += "f " + std::to_string(corners[i] + 1) + ' ' +
                    std::to_string(corners[i + 1] + 1) + ' ' + std::to_string(corners[i + 2] + 1) +
                    '\n';
        return text;
    }
};

/// Corner i has the upper x for bit 0 of i, the upper y for bit 1, the upper z for bit 2.
inline Surface box(const Vec3 &low, const Vec3 &high)
{
    Surface box;
    for (unsigned i = 0; i < 8; ++i)
        box.positions.push_back(
            {i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z});
    box.corners = {0, 2, 3, 0, 3, 1, 4, 5, 7, 4, 7, 6, 0, 1, 5, 0, 5, 4,
                   2, 6, 7, 2, 7, 3, 0, 4, 6, 0, 6, 2, 1, 3, 7, 1, 7, 5};
    return box;
}

inline Surface cubeAround(const Vec3 &middle, double halfSize)
{
    const Vec3 half{halfSize, halfSize, halfSize};
    return box(middle - half, middle + half);
}

inline Surface unitBox()
{
    return box({0, 0, 0}, {1, 1, 1});
}

/// An octahedron whose faces are divided into four, `divisions` times, each time moved out to the
/// sphere. Corners are not shared.
inline Surface sphere(const Vec3 &centre, double radius, int divisions)
{
    std::vector<Vec3> corners;
    for (const double x : {-1.0, 1.0})
        for (const double y : {-1.0, 1.0})
            for (const double z : {-1.0, 1.0}) {
                const bool isOdd = x * y * z < 0.0;
                corners.push_back({x, 0, 0});
                corners.push_back(isOdd ? Vec3{0, 0, z} : Vec3{0, y, 0});
                corners.push_back(isOdd ? Vec3{0, y, 0} : Vec3{0, 0, z});
            }
    for (int i = 0; i < divisions; ++i) {
        std::vector<Vec3> divided;
        for (std::size_t t = 0; t < corners.size(); t += 3) {
            const Vec3 a = corners[t], b = corners[t + 1], c = corners[t + 2];
            const auto middle = [](const Vec3 &p, const Vec3 &q) {
                return (p + q) / meshgen::length(p + q);
            };
            const Vec3 ab = middle(a, b), bc = middle(b, c), ca = middle(c, a);
            for (const Vec3 &corner : {a, ab, ca, ab, b, bc, ca, bc, c, ab, bc, ca})
                divided.push_back(corner);
        }
        corners = std::move(divided);
    }
    Surface sphere;
    for (const Vec3 &corner : corners) {
        sphere.corners.push_back(static_cast<std::uint32_t>(sphere.positions.size()));
        sphere.positions.push_back(centre + corner * radius);
    }
    return sphere;
}

/// A folder for files of one test; removed at the end with all in it.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        path = (std::filesystem::temp_directory_path() / "bandsXXXXXX").string();
        if (!::mkdtemp(path.data())) throw std::runtime_error("no temporary folder");
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }

    /// Writes a file and returns its path.
    std::string write(const std::string &name, const std::string &contents) const
    {
        const std::string file = path + '/' + name;
        std::ofstream(file, std::ios::binary) << contents;
        return file;
    }

    std::string path;
};

} // namespace kelo::test
