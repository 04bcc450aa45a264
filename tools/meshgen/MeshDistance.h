#pragma once

#include "tools/meshgen/Mesh.h"

#include <cstdint>
#include <vector>

namespace kelo::meshgen {

/// Answers how far points are from a closed mesh, quickly for many points: the triangles lie in a
/// tree of boxes.
class MeshDistance
{
public:
    /// Keeps a copy of what it needs of `mesh`, which has at least one triangle and is closed.
    explicit MeshDistance(const Mesh &mesh);

    /// The distance from `point` to the nearest place of the surface; negative inside.
    double signedDistance(const Vec3 &point) const;
    /// The distance from `point` to the nearest place of the surface, but no more than `limit`.
    double distanceWithin(const Vec3 &point, double limit) const;
    /// Whether a ray from `point` leaves through an odd number of faces.
    bool isInside(const Vec3 &point) const;
    /// Whether `point` is at most `margin` away from the box round the whole mesh.
    bool isNear(const Vec3 &point, double margin) const;

private:
    struct Box
    {
        Vec3 low{1e30, 1e30, 1e30};
        Vec3 high{-1e30, -1e30, -1e30};
    };
    struct Node
    {
        Box box;
        std::uint32_t first = 0; ///< of a leaf: its first triangle; else its first child
        std::uint32_t count = 0; ///< of a leaf: its triangles; 0 for a node with two children
    };
    struct Face
    {
        Vec3 a, b, c;
    };

    void build(std::uint32_t node, std::uint32_t first, std::uint32_t count);
    void nearest(std::uint32_t node, const Vec3 &point, double &squaredLimit) const;
    std::size_t crossings(std::uint32_t node, const Vec3 &point) const;
    static double squaredDistance(const Box &box, const Vec3 &point);

    std::vector<Face> faces;
    std::vector<Node> nodes;
};

/// The point of triangle abc that is nearest to `p`.
Vec3 nearestOnTriangle(const Vec3 &p, const Vec3 &a, const Vec3 &b, const Vec3 &c);

} // namespace kelo::meshgen
