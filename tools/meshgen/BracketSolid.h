#pragma once

#include "tools/meshgen/Mesh.h"

#include <vector>

namespace kelo::meshgen {

/// A point of a flat outline.
struct Vec2
{
    double x = 0.0;
    double y = 0.0;
};

/// Closed solids put together from rings of points, shared by brackets, tubes and buttons. Every
/// result is closed and wound outwards; it has no normals yet. All rings of a solid have the same
/// number of points, in the same order round the solid.
using Ring = std::vector<Vec3>;

/// The indices of the triangles that fill a simple polygon (either sense, not necessarily convex),
/// found by cutting off ears.
std::vector<std::array<std::uint32_t, 3>> triangulatePolygon(const std::vector<Vec2> &polygon);

/// Joins each ring to the next and closes the first and the last with a cap, triangulated as the
/// flat outline `capOutline` (as many points as a ring).
Mesh solidFromRings(const std::vector<Ring> &rings, const std::vector<Vec2> &capOutline);

/// Joins each ring to the next and closes the first and the last with a fan round one point each.
Mesh solidFromRings(const std::vector<Ring> &rings, const Vec3 &firstPole, const Vec3 &lastPole);

/// Joins each ring to the next and the last to the first: a solid with a passage through it.
Mesh passageFromRings(const std::vector<Ring> &rings);

/// One station of a round rod: the middle of its section and the radius there.
struct RodStation
{
    Vec3 center;
    double radius = 0.0;
    Vec3 direction; ///< unit vector across the section, along the rod
};

/// A round rod through the stations with `sides` corners in each section, every corner at exactly
/// the station's radius; ends rounded off by one point each, which stands off by `firstPole` and
/// `lastPole` from the first and last station's middle along their directions (the first is
/// usually negative). The sections do not twist against each other.
Mesh rodThrough(const std::vector<RodStation> &stations, int sides, double firstPole,
                double lastPole);

/// Six times the volume that the mesh's faces enclose; negative when they are wound inwards.
double sixfoldVolume(const Mesh &mesh);

/// Turns every face over if the mesh is wound inwards.
void orientOutward(Mesh &mesh);

} // namespace kelo::meshgen
