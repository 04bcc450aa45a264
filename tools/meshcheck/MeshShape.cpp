#include "tools/meshcheck/MeshShape.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <numeric>
#include <tuple>
#include <unordered_map>

namespace kelo {
namespace {

/// Sets that grow together (union by halving paths).
class DisjointSets
{
public:
    explicit DisjointSets(std::size_t count) : _parents(count)
    {
        std::iota(_parents.begin(), _parents.end(), std::size_t(0));
    }
    std::size_t find(std::size_t element)
    {
        while (_parents[element] != element)
            element = _parents[element] = _parents[_parents[element]];
        return element;
    }
    /// The smaller representative stays, so that a set is known by its first element.
    void unite(std::size_t a, std::size_t b)
    {
        a = find(a);
        b = find(b);
        _parents[std::max(a, b)] = std::min(a, b);
    }

private:
    std::vector<std::size_t> _parents;
};

/// The side of one face: from corner to corner, known by its lower and higher end.
struct Side
{
    std::uint32_t low, high;
    bool upwards; ///< runs from low to high
    std::size_t face;

    bool sameEdge(const Side &other) const { return low == other.low && high == other.high; }
};

std::string number(std::size_t value)
{
    return std::to_string(value);
}

class ShapeCheck
{
public:
    explicit ShapeCheck(const MeshShape &shape)
        : _shape(shape),
          _welded(weldedPositions(shape)),
          _surfaces(shape.faces.size()),
          _closed(shape.faces.size(), true)
    {
        collectSides();
        checkEdges();
        checkHoles();
        checkWinding();
    }

    ShapeProblems problems;

private:
    void report(std::size_t face, std::string reason)
    {
        problems.add(_shape.faces[face].line, std::move(reason));
    }

    std::size_t endOfFace(std::size_t face) const
    {
        return face + 1 < _shape.faces.size() ? _shape.faces[face + 1].firstCorner
                                              : _shape.corners.size();
    }

    /// The face's corners after welding, without repetitions in a row.
    std::vector<std::uint32_t> outline(std::size_t face) const
    {
        std::vector<std::uint32_t> corners;
        for (std::size_t c = _shape.faces[face].firstCorner; c < endOfFace(face); ++c) {
            const std::uint32_t corner = _welded[_shape.corners[c]];
            if (corners.empty() || corners.back() != corner) corners.push_back(corner);
        }
        while (corners.size() > 1 && corners.back() == corners.front())
            corners.pop_back();
        return corners;
    }

    void collectSides()
    {
        for (std::size_t face = 0; face < _shape.faces.size(); ++face) {
            const std::vector<std::uint32_t> corners = outline(face);
            if (corners.size() < 3) {
                report(face, "corners of the face coincide: it has no area");
                continue;
            }
            for (std::size_t i = 0; i < corners.size(); ++i) {
                const std::uint32_t from = corners[i], to = corners[(i + 1) % corners.size()];
                _sides.push_back({std::min(from, to), std::max(from, to), from < to, face});
            }
        }
        std::sort(_sides.begin(), _sides.end(), [](const Side &a, const Side &b) {
            return std::tie(a.low, a.high, a.face, a.upwards) <
                   std::tie(b.low, b.high, b.face, b.upwards);
        });
    }

    void checkEdges()
    {
        for (std::size_t begin = 0, end; begin < _sides.size(); begin = end) {
            end = begin + 1;
            while (end < _sides.size() && _sides[end].sameEdge(_sides[begin])) {
                _surfaces.unite(_sides[end].face, _sides[begin].face);
                ++end;
            }
            if (end - begin == 1)
                _open.push_back(begin);
            else if (end - begin > 2)
                reportCrowdedEdge(begin, end);
            else if (_sides[begin].upwards == _sides[begin + 1].upwards)
                reportOpposedFaces(_sides[begin].face, _sides[begin + 1].face);
            if (end - begin != 2 || _sides[begin].upwards == _sides[begin + 1].upwards)
                _closed[_sides[begin].face] = false;
        }
    }

    void reportCrowdedEdge(std::size_t begin, std::size_t end)
    {
        std::string lines;
        for (std::size_t side = begin; side < end; ++side) {
            if (side - begin == 4) {
                lines += ", ...";
                break;
            }
            lines += (side == begin ? "" : ", ") + number(_shape.faces[_sides[side].face].line);
        }
        report(_sides[begin].face, "non-manifold edge: " + number(end - begin) +
                                       " faces share it (lines " + lines + ")");
    }

    void reportOpposedFaces(std::size_t earlier, std::size_t later)
    {
        report(later, "inconsistent winding: the face is wound against its neighbour on line " +
                          number(_shape.faces[earlier].line));
    }

    /// Open edges that hang together are one hole.
    void checkHoles()
    {
        DisjointSets holes(_open.size());
        std::unordered_map<std::uint32_t, std::size_t> firstAt;
        for (std::size_t i = 0; i < _open.size(); ++i)
            for (const std::uint32_t corner : {_sides[_open[i]].low, _sides[_open[i]].high})
                holes.unite(i, firstAt.try_emplace(corner, i).first->second);
        std::vector<std::size_t> edgeCounts(_open.size()), faces(_open.size(), SIZE_MAX);
        for (std::size_t i = 0; i < _open.size(); ++i) {
            const std::size_t hole = holes.find(i);
            ++edgeCounts[hole];
            faces[hole] = std::min(faces[hole], _sides[_open[i]].face);
        }
        for (std::size_t i = 0; i < _open.size(); ++i)
            if (edgeCounts[i] != 0)
                report(faces[i], "hole: " + number(edgeCounts[i]) + " open edges");
    }

    /// Only of a closed surface the sign of the volume tells inside from outside.
    void checkWinding()
    {
        const std::size_t count = _shape.faces.size();
        std::vector<double> volumes(count);
        std::vector<std::size_t> faceCounts(count);
        std::vector<char> closed(count, true);
        for (std::size_t face = 0; face < count; ++face) {
            const std::size_t surface = _surfaces.find(face);
            if (!_closed[face]) closed[surface] = false;
            volumes[surface] += volumeUnder(face, surface);
            ++faceCounts[surface];
        }
        for (std::size_t surface = 0; surface < count; ++surface) {
            if (faceCounts[surface] == 0 || !closed[surface] || !(volumes[surface] < 0)) continue;
            char volume[32];
            std::snprintf(volume, sizeof volume, "%g", volumes[surface]);
            report(surface, "wrong winding: the closed surface of " + number(faceCounts[surface]) +
                                " faces encloses a negative volume (" + volume + ")");
        }
    }

    /// Six times less than the determinants of the face's triangles, seen from the first corner of
    /// its surface: near the surface the products lose fewer digits than far away.
    double volumeUnder(std::size_t face, std::size_t surface) const
    {
        const auto &origin = _shape.positions[_shape.corners[_shape.faces[surface].firstCorner]];
        const auto corner = [&](std::size_t c) {
            const auto &position = _shape.positions[_shape.corners[c]];
            std::array<double, 3> seen;
            for (std::size_t axis = 0; axis < 3; ++axis)
                seen[axis] = double(position[axis]) - double(origin[axis]);
            return seen;
        };
        const std::size_t first = _shape.faces[face].firstCorner;
        const auto a = corner(first);
        double sum = 0;
        for (std::size_t c = first + 1; c + 1 < endOfFace(face); ++c) {
            const auto b = corner(c), d = corner(c + 1);
            sum += a[0] * (b[1] * d[2] - b[2] * d[1]) + a[1] * (b[2] * d[0] - b[0] * d[2]) +
                   a[2] * (b[0] * d[1] - b[1] * d[0]);
        }
        return sum / 6;
    }

    const MeshShape &_shape;
    std::vector<std::uint32_t> _welded; ///< the position that represents each position
    std::vector<Side> _sides;           ///< sorted by edge
    std::vector<std::size_t> _open;     ///< sides without a neighbour
    DisjointSets _surfaces;             ///< faces that hang together by edges
    std::vector<char> _closed;          ///< false for a face with a faulty edge
};

} // namespace

std::vector<std::uint32_t> weldedPositions(const MeshShape &shape)
{
    struct Hash
    {
        std::size_t operator()(const std::array<float, 3> &position) const
        {
            std::uint64_t hash = 0;
            for (const float coordinate : position)
                hash = (hash ^ std::bit_cast<std::uint32_t>(coordinate)) * 0x9e3779b97f4a7c15u;
            return std::size_t(hash ^ (hash >> 32));
        }
    };
    std::unordered_map<std::array<float, 3>, std::uint32_t, Hash> first;
    first.reserve(shape.positions.size());
    std::vector<std::uint32_t> welded;
    welded.reserve(shape.positions.size());
    for (std::array<float, 3> position : shape.positions) {
        for (float &coordinate : position)
            coordinate += 0.0f; // -0 becomes 0
        const auto index = static_cast<std::uint32_t>(welded.size());
        welded.push_back(first.try_emplace(position, index).first->second);
    }
    return welded;
}

ShapeProblems shapeProblems(const MeshShape &shape)
{
    return ShapeCheck(shape).problems;
}

} // namespace kelo
