#include "tools/meshcheck/MeshSurface.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numeric>
#include <string>
#include <utility>

namespace kelo {
namespace {

using Point = std::array<double, 3>;

/// A face whose height is less than this part of its longest side has no area to speak of: its
/// normal is a matter of rounding.
constexpr double leastHeight = 1e-4;

/// Beyond 60 degrees light falls on the face from behind its own shading.
constexpr double leastNormalCosine = 0.5;

/// Within a degree of lying on top of each other.
constexpr double foldedCosine = -0.99985;

Point difference(const Point &a, const Point &b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Point crossProduct(const Point &a, const Point &b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dotProduct(const Point &a, const Point &b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

double lengthOf(const Point &a)
{
    return std::sqrt(dotProduct(a, a));
}

/// Six times the volume of the tetrahedron abcd: positive when d lies below the plane in which a,
/// b, c run counter-clockwise seen from above.
double orientation(const Point &a, const Point &b, const Point &c, const Point &d)
{
    return dotProduct(difference(a, d), crossProduct(difference(b, d), difference(c, d)));
}

struct Triangle
{
    std::array<std::uint32_t, 3> corners; ///< welded
    std::array<Point, 3> points;
    Point low, high;
    std::size_t face = 0;
    std::size_t surface = 0;
};

/// Whether the way from `p` to `q` passes through the inside of the triangle. What only touches an
/// edge or a corner, or lies in the plane, does not.
bool passesThrough(const Point &p, const Point &q, const Triangle &t)
{
    const auto &[a, b, c] = t.points;
    const double above = orientation(a, b, c, p);
    const double below = orientation(a, b, c, q);
    if (!(above * below < 0.0)) return false;
    const double ab = orientation(p, q, a, b);
    const double bc = orientation(p, q, b, c);
    const double ca = orientation(p, q, c, a);
    return (ab > 0.0 && bc > 0.0 && ca > 0.0) || (ab < 0.0 && bc < 0.0 && ca < 0.0);
}

/// Whether an edge of `a` that does not end on a corner of `b` passes through `b`.
bool hasEdgeThrough(const Triangle &a, const Triangle &b)
{
    for (std::size_t k = 0; k < 3; ++k) {
        const std::size_t next = (k + 1) % 3;
        const auto isShared = [&b](std::uint32_t corner) {
            return std::find(b.corners.begin(), b.corners.end(), corner) != b.corners.end();
        };
        if (isShared(a.corners[k]) || isShared(a.corners[next])) continue;
        if (passesThrough(a.points[k], a.points[next], b)) return true;
    }
    return false;
}

class SurfaceCheck
{
public:
    SurfaceCheck(const MeshShape &meshShape, std::size_t mostComparedPairs)
        : _shape(meshShape), _mostPairs(mostComparedPairs), _welded(weldedPositions(meshShape))
    {
        collect();
        checkArea();
        checkNormals();
        joinSurfaces();
        checkCrossings();
        std::stable_sort(
            problems.listed.begin(), problems.listed.end(),
            [](const ShapeProblem &a, const ShapeProblem &b) { return a.line < b.line; });
    }

    ShapeProblems problems;

private:
    void report(const Triangle &triangle, std::string reason)
    {
        problems.add(_shape.faces[triangle.face].line, std::move(reason));
    }

    Point pointAt(std::size_t corner) const
    {
        const auto &position = _shape.positions[_shape.corners[corner]];
        return {position[0], position[1], position[2]};
    }

    /// Polygons count as the fans of triangles that the reader makes of them.
    void collect()
    {
        for (std::size_t face = 0; face < _shape.faces.size(); ++face) {
            const std::size_t first = _shape.faces[face].firstCorner;
            const std::size_t end = face + 1 < _shape.faces.size()
                                        ? _shape.faces[face + 1].firstCorner
                                        : _shape.corners.size();
            for (std::size_t c = first + 1; c + 1 < end; ++c) {
                Triangle t;
                const std::array<std::size_t, 3> corners{first, c, c + 1};
                for (std::size_t k = 0; k < 3; ++k) {
                    t.corners[k] = _welded[_shape.corners[corners[k]]];
                    t.points[k] = pointAt(corners[k]);
                }
                t.low = t.high = t.points[0];
                for (const Point &p : t.points)
                    for (std::size_t axis = 0; axis < 3; ++axis) {
                        t.low[axis] = std::min(t.low[axis], p[axis]);
                        t.high[axis] = std::max(t.high[axis], p[axis]);
                    }
                t.face = face;
                _triangles.push_back(t);
                _cornersOf.push_back(corners);
            }
        }
    }

    static Point faceVector(const Triangle &t)
    {
        return crossProduct(difference(t.points[1], t.points[0]),
                            difference(t.points[2], t.points[0]));
    }

    static bool hasArea(const Triangle &t)
    {
        double longest = 0.0;
        for (std::size_t k = 0; k < 3; ++k)
            longest = std::max(longest, lengthOf(difference(t.points[(k + 1) % 3], t.points[k])));
        return lengthOf(faceVector(t)) > leastHeight * longest * longest;
    }

    void checkArea()
    {
        for (const Triangle &t : _triangles)
            if (!hasArea(t)) report(t, "the face has no area: it is a needle or a line");
    }

    void checkNormals()
    {
        for (std::size_t i = 0; i < _triangles.size(); ++i) {
            const Triangle &t = _triangles[i];
            if (!hasArea(t)) continue;
            const Point face = faceVector(t);
            double least = 1.0;
            for (const std::size_t corner : _cornersOf[i]) {
                const std::size_t number = _shape.normalOf[corner];
                if (number == 0) continue; // the reader makes this normal from the faces
                const auto &given = _shape.normals[number - 1];
                const Point normal{given[0], given[1], given[2]};
                const double size = lengthOf(normal);
                least = std::min(
                    least, size > 0.0 ? dotProduct(face, normal) / (lengthOf(face) * size) : -1.0);
            }
            if (least >= leastNormalCosine) continue;
            char text[64];
            std::snprintf(text, sizeof text, "a normal stands %.0f degrees off the face",
                          std::acos(std::max(least, -1.0)) * 57.29577951308232);
            report(t, text);
        }
    }

    /// Triangles with a common edge are one surface. A body that only runs into another one, as a
    /// hook does into a bracket, is a surface of its own.
    void joinSurfaces()
    {
        std::vector<std::size_t> parents(_triangles.size());
        std::iota(parents.begin(), parents.end(), std::size_t(0));
        const auto find = [&parents](std::size_t element) {
            while (parents[element] != element)
                element = parents[element] = parents[parents[element]];
            return element;
        };
        std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> firstAt;
        for (std::size_t i = 0; i < _triangles.size(); ++i) {
            const auto &corners = _triangles[i].corners;
            for (std::size_t k = 0; k < 3; ++k) {
                const auto edge = std::minmax(corners[k], corners[(k + 1) % 3]);
                const auto [entry, isNew] = firstAt.try_emplace(edge, i);
                if (isNew) continue;
                parents[find(i)] = find(entry->second);
                checkFold(_triangles[i], _triangles[entry->second]);
            }
        }
        for (std::size_t i = 0; i < _triangles.size(); ++i)
            _triangles[i].surface = find(i);
    }

    void checkFold(const Triangle &later, const Triangle &earlier)
    {
        if (!hasArea(later) || !hasArea(earlier)) return;
        const Point a = faceVector(later);
        const Point b = faceVector(earlier);
        if (dotProduct(a, b) < foldedCosine * lengthOf(a) * lengthOf(b))
            report(later, "the face is folded flat onto its neighbour on line " +
                              std::to_string(_shape.faces[earlier.face].line));
    }

    /// Sweeps along the x axis: only triangles that are under the sweep at the same time are
    /// compared.
    void checkCrossings()
    {
        std::vector<std::size_t> order(_triangles.size());
        std::iota(order.begin(), order.end(), std::size_t(0));
        std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
            return _triangles[a].low[0] < _triangles[b].low[0];
        });
        std::vector<std::size_t> crossed(_shape.faces.size(), SIZE_MAX);
        std::size_t pairCount = 0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            const Triangle &a = _triangles[order[i]];
            for (std::size_t j = i + 1; j < order.size(); ++j) {
                const Triangle &b = _triangles[order[j]];
                if (b.low[0] > a.high[0]) break;
                if (++pairCount > _mostPairs) {
                    problems.add(0, "too many faces lie over one another: not all crossings were "
                                    "looked for");
                    i = order.size();
                    break;
                }
                if (a.surface != b.surface || a.face == b.face || isApart(a, b, 1) ||
                    isApart(a, b, 2))
                    continue;
                if (!hasEdgeThrough(a, b) && !hasEdgeThrough(b, a)) continue;
                const std::size_t later = std::max(a.face, b.face);
                crossed[later] = std::min(crossed[later], std::min(a.face, b.face));
            }
        }
        for (std::size_t face = 0; face < crossed.size(); ++face)
            if (crossed[face] != SIZE_MAX)
                problems.add(_shape.faces[face].line,
                             "the face crosses the face on line " +
                                 std::to_string(_shape.faces[crossed[face]].line));
    }

    static bool isApart(const Triangle &a, const Triangle &b, std::size_t axis)
    {
        return a.low[axis] > b.high[axis] || b.low[axis] > a.high[axis];
    }

    const MeshShape &_shape;
    std::size_t _mostPairs;
    std::vector<std::uint32_t> _welded;
    std::vector<Triangle> _triangles;
    std::vector<std::array<std::size_t, 3>> _cornersOf; ///< in `corners`, of every triangle
};

} // namespace

ShapeProblems surfaceProblems(const MeshShape &shape, std::size_t mostComparedPairs)
{
    return SurfaceCheck(shape, mostComparedPairs).problems;
}

} // namespace kelo
