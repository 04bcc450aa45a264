#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
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

/// The problems of a shape; of very many the first that were found, so that a mesh that is wrong
/// everywhere takes no memory for a list that nobody reads.
class ShapeProblems
{
public:
    void add(std::size_t line, std::string reason)
    {
        if (listed.size() < maximum)
            listed.push_back({line, std::move(reason)});
        else
            ++unlistedCount;
    }

    std::vector<ShapeProblem> listed;
    std::size_t unlistedCount = 0;

private:
    static constexpr std::size_t maximum = 10'000;
};

/// For every position the first one at exactly the same place, which represents all of them.
std::vector<std::uint32_t> weldedPositions(const MeshShape &shape);

/// What is wrong with the shape, see `checkMeshText`. All positions are finite and all corners in
/// range.
ShapeProblems shapeProblems(const MeshShape &shape);

} // namespace kelo
