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
    std::vector<std::array<float, 3>> normals;
    std::vector<std::uint32_t> normalOf; ///< of every corner: 1 for the first normal, 0 for none
    std::vector<Face> faces;
};

/// Something about the shape and the line of the face that shows it.
struct ShapeProblem
{
    std::size_t line = 0;
    std::string reason;
};

/// For every position the first one at exactly the same place, which stands for all of them.
std::vector<std::uint32_t> weldedPositions(const MeshShape &shape);

/// What is wrong with the shape, see `checkMeshText`. All positions are finite and all corners in
/// range.
std::vector<ShapeProblem> shapeProblems(const MeshShape &shape);

} // namespace kelo
