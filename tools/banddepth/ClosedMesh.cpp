#include "tools/banddepth/ClosedMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace kelo::banddepth {
namespace {

/// Triangles of a node that is not halved any further: testing a few costs less than another box.
constexpr std::size_t leafSize = 4;

/// Halving at the median makes a tree of at most 2^32 triangles no deeper than this.
constexpr std::size_t deepestStack = 64;

Vec3 lowerOf(const Vec3 &a, const Vec3 &b)
{
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}

Vec3 upperOf(const Vec3 &a, const Vec3 &b)
{
    return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

double squaredLength(const Vec3 &a)
{
    return dot(a, a);
}

/// To the stretch from `a` to `b`.
double squaredDistanceFromEdge(const Vec3 &a, const Vec3 &b, const Vec3 &point)
{
    const Vec3 along = b - a;
    const double squared = squaredLength(along);
    const double t = squared > 0.0 ? std::clamp(dot(point - a, along) / squared, 0.0, 1.0) : 0.0;
    return squaredLength(point - (a + along * t));
}

/// Narrows the stretch of a ray in which one coordinate lies between two planes.
void narrow(double low, double high, double origin, double direction, double &from, double &to)
{
    const double t0 = (low - origin) / direction, t1 = (high - origin) / direction;
    from = std::max(from, std::min(t0, t1));
    to = std::min(to, std::max(t0, t1));
}

/// No two numbers of them are in a simple proportion, so that a ray does not run along a face or
/// through an edge of a mesh whose coordinates are round numbers.
constexpr std::array<Vec3, 3> rays{Vec3{0.5390873, 0.6180339, 0.5721683},
                                   Vec3{-0.7320508, 0.4142135, 0.5411961},
                                   Vec3{0.3141592, -0.5671432, -0.7613941}};

} // namespace

ClosedMesh::ClosedMesh(const std::vector<Vec3> &positions,
                       const std::vector<std::uint32_t> &corners)
{
    if (corners.size() % 3 != 0) throw std::invalid_argument("a triangle has three corners");
    const auto at = [&positions](std::uint32_t corner) {
        if (corner >= positions.size())
            throw std::invalid_argument("a corner lies beyond the positions");
        return positions[corner];
    };
    _triangles.reserve(corners.size() / 3);
    for (std::size_t i = 0; i < corners.size(); i += 3)
        _triangles.push_back({at(corners[i]), at(corners[i + 1]), at(corners[i + 2])});
    if (!_triangles.empty()) build(0, _triangles.size());
}

bool ClosedMesh::contains(const Vec3 &point) const
{
    if (_nodes.empty() || squaredDistance(_nodes[0].box, point) > 0.0) return false;
    // A ray that meets an edge may count a crossing twice or not at all; two that agree are right.
    const bool first = windingAlong(point, rays[0]) > 0;
    const bool second = windingAlong(point, rays[1]) > 0;
    return first == second ? first : windingAlong(point, rays[2]) > 0;
}

double ClosedMesh::distanceTo(const Vec3 &point) const
{
    double bestSquared = std::numeric_limits<double>::infinity();
    if (!_nodes.empty()) searchNearest(0, point, bestSquared);
    return std::sqrt(bestSquared);
}

ClosedMesh::Box ClosedMesh::boxOf(const Triangle *begin, const Triangle *end)
{
    Box box{begin->a, begin->a};
    for (const Triangle *triangle = begin; triangle != end; ++triangle) {
        for (const Vec3 &corner : {triangle->a, triangle->b, triangle->c}) {
            box.low = lowerOf(box.low, corner);
            box.high = upperOf(box.high, corner);
        }
    }
    return box;
}

double ClosedMesh::squaredDistance(const Box &box, const Vec3 &point)
{
    return squaredLength(point - lowerOf(upperOf(point, box.low), box.high));
}

bool ClosedMesh::isHit(const Box &box, const Vec3 &origin, const Vec3 &direction)
{
    double from = 0.0, to = std::numeric_limits<double>::infinity();
    narrow(box.low.x, box.high.x, origin.x, direction.x, from, to);
    narrow(box.low.y, box.high.y, origin.y, direction.y, from, to);
    narrow(box.low.z, box.high.z, origin.z, direction.z, from, to);
    return from <= to;
}

double ClosedMesh::squaredDistance(const Triangle &triangle, const Vec3 &point)
{
    const auto &[a, b, c] = triangle;
    const Vec3 normal = cross(b - a, c - a);
    const double squared = squaredLength(normal);
    // Above the triangle, the foot on its plane is nearest; otherwise a point of its edges.
    const auto isWithin = [&](const Vec3 &from, const Vec3 &to) {
        return dot(cross(to - from, point - from), normal) >= 0.0;
    };
    if (squared > 0.0 && isWithin(a, b) && isWithin(b, c) && isWithin(c, a)) {
        const double height = dot(point - a, normal);
        return height * height / squared;
    }
    return std::min({squaredDistanceFromEdge(a, b, point), squaredDistanceFromEdge(b, c, point),
                     squaredDistanceFromEdge(c, a, point)});
}

/// 1 where the ray leaves through the triangle, -1 where it enters, 0 where it misses. The signed
/// volumes of the tetrahedra of the ray and each edge tell on which side of the edges it passes.
int ClosedMesh::crossing(const Triangle &triangle, const Vec3 &origin, const Vec3 &direction)
{
    const Vec3 a = triangle.a - origin, b = triangle.b - origin, c = triangle.c - origin;
    const double ab = dot(direction, cross(a, b)), bc = dot(direction, cross(b, c)),
                 ca = dot(direction, cross(c, a));
    const bool leaves = ab > 0.0 && bc > 0.0 && ca > 0.0;
    const bool enters = ab < 0.0 && bc < 0.0 && ca < 0.0;
    if (!leaves && !enters) return 0;
    // The triangle must lie ahead: its plane's volume has the sign of the three.
    const double volume = dot(a, cross(b, c));
    if (leaves) return volume > 0.0 ? 1 : 0;
    return volume < 0.0 ? -1 : 0;
}

void ClosedMesh::build(std::size_t first, std::size_t count)
{
    Triangle *const begin = _triangles.data() + first;
    const std::size_t index = _nodes.size();
    _nodes.push_back({boxOf(begin, begin + count), static_cast<std::uint32_t>(first),
                      static_cast<std::uint32_t>(count)});
    if (count <= leafSize) return;

    const Vec3 size = _nodes[index].box.high - _nodes[index].box.low;
    const auto coordinate = size.x >= size.y && size.x >= size.z ? &Vec3::x
                            : size.y >= size.z                   ? &Vec3::y
                                                                 : &Vec3::z;
    const auto centre = [coordinate](const Triangle &triangle) {
        return triangle.a.*coordinate + triangle.b.*coordinate + triangle.c.*coordinate;
    };
    const std::size_t half = count / 2;
    std::nth_element(begin, begin + half, begin + count,
                     [&centre](const Triangle &one, const Triangle &other) {
                         return centre(one) < centre(other);
                     });
    build(first, half);
    _nodes[index].first = static_cast<std::uint32_t>(_nodes.size());
    _nodes[index].count = 0;
    build(first + half, count - half);
}

int ClosedMesh::windingAlong(const Vec3 &origin, const Vec3 &direction) const
{
    int winding = 0;
    std::array<std::size_t, deepestStack> stack;
    std::size_t height = 0;
    stack[height++] = 0;
    while (height != 0) {
        const std::size_t index = stack[--height];
        const Node &node = _nodes[index];
        if (!isHit(node.box, origin, direction)) continue;
        if (node.count == 0) {
            stack[height++] = node.first;
            stack[height++] = index + 1;
            continue;
        }
        for (std::size_t i = node.first; i < node.first + node.count; ++i)
            winding += crossing(_triangles[i], origin, direction);
    }
    return winding;
}

void ClosedMesh::searchNearest(std::size_t index, const Vec3 &point, double &bestSquared) const
{
    const Node &node = _nodes[index];
    if (node.count != 0) {
        for (std::size_t i = node.first; i < node.first + node.count; ++i)
            bestSquared = std::min(bestSquared, squaredDistance(_triangles[i], point));
        return;
    }
    std::size_t nearer = index + 1, farther = node.first;
    double nearerSquared = squaredDistance(_nodes[nearer].box, point);
    double fartherSquared = squaredDistance(_nodes[farther].box, point);
    if (fartherSquared < nearerSquared) {
        std::swap(nearer, farther);
        std::swap(nearerSquared, fartherSquared);
    }
    if (nearerSquared < bestSquared) searchNearest(nearer, point, bestSquared);
    if (fartherSquared < bestSquared) searchNearest(farther, point, bestSquared);
}

} // namespace kelo::banddepth
