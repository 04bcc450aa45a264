#pragma once

#include "tools/meshgen/Vec.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelo::banddepth {

using meshgen::Vec3;

/// A closed surface of triangles, wound outwards, that tells how deep a point lies inside it. Built
/// once in n log n, then read from any number of threads.
class ClosedMesh
{
public:
    /// Three corners a triangle, each an index of `positions`. Throws std::invalid_argument for a
    /// corner beyond the positions and for corners that are no multiple of three. That the surface
    /// is closed and wound outwards is the caller's word.
    ClosedMesh(const std::vector<Vec3> &positions, const std::vector<std::uint32_t> &corners);

    /// Whether the surface winds round the point: the triangles that a ray from there leaves
    /// through, less those that it enters by, are more than none. Where shells of one mesh overlap,
    /// a point inside either is inside.
    bool contains(const Vec3 &point) const;

    /// To the nearest point of the surface, in the positions' unit, never negative; infinity for a
    /// mesh without triangles.
    double distanceTo(const Vec3 &point) const;

    /// How deep the point lies inside: its distance from the surface, 0 outside.
    double depthOf(const Vec3 &point) const { return contains(point) ? distanceTo(point) : 0.0; }

    std::size_t triangleCount() const { return _triangles.size(); }

private:
    struct Triangle
    {
        Vec3 a, b, c;
    };
    struct Box
    {
        Vec3 low, high;
    };
    /// Either two halves, of which the first comes right behind, or a few triangles.
    struct Node
    {
        Box box;
        std::uint32_t first = 0; ///< the first triangle, or the second half's node
        std::uint32_t count = 0; ///< triangles; 0 for a node with halves
    };

    static Box boxOf(const Triangle *begin, const Triangle *end);
    static double squaredDistance(const Box &box, const Vec3 &point);
    static bool isHit(const Box &box, const Vec3 &origin, const Vec3 &direction);
    static double squaredDistance(const Triangle &triangle, const Vec3 &point);
    static int crossing(const Triangle &triangle, const Vec3 &origin, const Vec3 &direction);

    void build(std::size_t first, std::size_t count);
    int windingAlong(const Vec3 &origin, const Vec3 &direction) const;
    void searchNearest(std::size_t node, const Vec3 &point, double &bestSquared) const;

    std::vector<Triangle> _triangles;
    std::vector<Node> _nodes;
};

} // namespace kelo::banddepth
