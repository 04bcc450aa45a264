#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kelo {

/// The faces of a mesh as polygons, with the lines that they come from.
struct MeshShape
{
    struct Face
    {
        std::size_t firstCorner = 0; ///< in `corners`; the next face's first is this one's end
        std::size_t line = 0;
    };

    std::vector<std::array<float, 3>> positions;
    std::vector<std::uint32_t> corners; ///< indexes into `positions`
    std::vector<Face> faces;
};

/// Something about the shape and the line of the face that shows it.
struct ShapeProblem
{
    std::size_t line = 0;
    std::string reason;
};

/// What is wrong with the shape, see `checkMeshText`. All positions are finite and all corners in
/// range.
std::vector<ShapeProblem> shapeProblems(const MeshShape &shape);

} // namespace kelo
