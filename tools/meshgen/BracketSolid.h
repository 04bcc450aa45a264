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

/// A solid with a passage through it: `outside` and `passage` are the rings of its outer and inner
/// surface from one end to the other, all with the same number of points. The first and the last
/// point of either outline stand side by side, so that the strip between both pairs is free. The
/// ends between the surfaces are triangulated as the flat outlines of the end rings.
Mesh solidWithPassage(const std::vector<Ring> &outside, const std::vector<Ring> &passage,
                      const std::vector<Vec2> &outsideOutline,
                      const std::vector<Vec2> &passageOutline);

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

/// Whether the sections of a rod through the stations would run into each other, as they do where
/// it bends within less than its own radius.
bool bendsTooSharply(const std::vector<RodStation> &stations);

/// A straight round stem from `from` to `to`, where it ends in half a ball of `toRadius` round
/// `to`: the joint to a rod that goes on from there in another direction.
Mesh stemWithJoint(const Vec3 &from, double fromRadius, const Vec3 &to, double toRadius, int sides);

/// Six times the volume that the mesh's faces enclose; negative when they are wound inwards.
double sixfoldVolume(const Mesh &mesh);

/// Turns every face over if the mesh is wound inwards.
void orientOutward(Mesh &mesh);

} // namespace kelo::meshgen
