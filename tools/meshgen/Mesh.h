#pragma once

#include "tools/meshgen/Vec.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kelo::meshgen {

/// A triangle mesh with one normal for every vertex. `normals` is as long as `positions` once
/// computeSmoothNormals() has run; before that it may be empty. Triangles are counter-clockwise
/// seen from outside, their indices 0-based. Two vertices at exactly the same position are one
/// point of the surface (the two sides of a crease).
struct Mesh
{
    std::vector<Vec3> positions;
    std::vector<Vec3> normals;
    std::vector<std::array<std::uint32_t, 3>> triangles;
};

/// Replaces the mesh's normals by unit vertex normals: the mean of the normals of the faces around
/// a point, each weighted by its area and by its angle at that point. A point where neighbouring
/// faces meet at more than `creaseAngleDegrees` gets one vertex for every smooth fan; 180 never
/// splits.
void computeSmoothNormals(Mesh &mesh, double creaseAngleDegrees);

/// Appends `other` to `mesh`; no vertices are merged.
void append(Mesh &mesh, const Mesh &other);

/// Brings triangles into an order that suits a renderer's vertex cache, then vertices into the
/// order of their first use. The surface stays the same; unused vertices are dropped.
void optimizeOrder(Mesh &mesh);

/// Writes the mesh as Wavefront OBJ (`v`, `vn`, `f a//a b//b c//c`), with the same bytes for the
/// same mesh whatever the locale. The file appears under its name only when it is complete. Returns
/// false and says why in `error` (which may be null) when it cannot be written.
bool writeOBJ(const std::string &path, const Mesh &mesh, std::string *error);

/// Where a ray meets a mesh.
struct RayHit
{
    double distance = 0.0;      ///< along the ray, in lengths of its direction; never negative
    Vec3 position;              ///< the point on the surface
    Vec3 normal;                ///< unit normal of the face
    std::uint32_t triangle = 0; ///< index into Mesh::triangles
};

/// The nearest hit of the ray from `origin` along `direction`, from either side of a face.
std::optional<RayHit> raycast(const Mesh &mesh, Vec3 origin, Vec3 direction);

/// What is wrong with a mesh, a sentence each: edges that do not belong to exactly two faces,
/// neighbours wound against each other, shells without positive volume, triangles without area,
/// normals that are missing or not of length 1.
/// Vertices whose written positions are the same count as one. Empty when all is well.
std::vector<std::string> meshDefects(const Mesh &mesh);

} // namespace kelo::meshgen
