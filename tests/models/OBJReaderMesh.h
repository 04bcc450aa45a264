#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <numbers>
#include <stdexcept>
#include <string>

namespace kelo::test {

/// A closed torus as OBJ text: `v`, `vn` and `f a//b` lines, all normals used by one vertex each,
/// so that the reader splits nothing. 1000 by 500 is a million triangles.
struct TorusMesh
{
    unsigned segments = 1000; ///< round the axis
    unsigned sides = 500;     ///< round the tube

    std::size_t vertexCount() const { return std::size_t(segments) * sides; }
    std::size_t triangleCount() const { return 2 * vertexCount(); }

    /// Position (0 to 2) and normal (3 to 5) of the vertex at segment `i`, side `j`.
    void vertex(unsigned i, unsigned j, double (&out)[6]) const
    {
        const double around = 2 * std::numbers::pi * i / segments;
        const double tube = 2 * std::numbers::pi * j / sides;
        const double normal[3] = {std::cos(tube) * std::cos(around),
                                  std::cos(tube) * std::sin(around), std::sin(tube)};
        const double centre[3] = {40 * std::cos(around), 40 * std::sin(around), 0};
        for (int axis = 0; axis < 3; ++axis) {
            out[axis] = centre[axis] + 12.5 * normal[axis];
            out[axis + 3] = normal[axis];
        }
    }

    std::string text() const
    {
        std::string text = "# torus\n";
        text.reserve(80 * triangleCount());
        char line[160];
        double values[6];
        const auto forEachVertex = [&](auto &&action) {
            for (unsigned i = 0; i < segments; ++i)
                for (unsigned j = 0; j < sides; ++j)
                    action(i, j);
        };
        const auto append = [&](const char *kind, const double *v) {
            text.append(line, std::size_t(std::snprintf(line, sizeof line, "%s %.6f %.6f %.6f\n",
                                                        kind, v[0], v[1], v[2])));
        };
        forEachVertex([&](unsigned i, unsigned j) {
            vertex(i, j, values);
            append("v", values);
        });
        forEachVertex([&](unsigned i, unsigned j) {
            vertex(i, j, values);
            append("vn", values + 3);
        });
        const auto appendFace = [&](std::size_t a, std::size_t b, std::size_t c) {
            text.append(
                line, std::size_t(std::snprintf(line, sizeof line, "f %zu//%zu %zu//%zu %zu//%zu\n",
                                                a, a, b, b, c, c)));
        };
        forEachVertex([&](unsigned i, unsigned j) {
            const std::size_t nextI = (i + 1) % segments, nextJ = (j + 1) % sides;
            const std::size_t a = std::size_t(i) * sides + j + 1, b = nextI * sides + j + 1,
                              c = nextI * sides + nextJ + 1, d = std::size_t(i) * sides + nextJ + 1;
            appendFace(a, b, c);
            appendFace(a, c, d);
        });
        return text;
    }
};

/// A file with the given contents in the folder for temporary files; removed at the end.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::string &contents)
    {
        path = std::filesystem::temp_directory_path() / "objXXXXXX";
        const int descriptor = ::mkstemp(path.data());
        if (descriptor < 0) throw std::runtime_error("no temporary file");
        std::FILE *file = ::fdopen(descriptor, "wb");
        const bool written =
            std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
        if (std::fclose(file) != 0 || !written)
            throw std::runtime_error("temporary file not written");
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
    ~TemporaryFile() { std::remove(path.c_str()); }

    std::string path;
};

} // namespace kelo::test
