#pragma once

#include "tools/meshgen/Mesh.h"

#include <cstddef>
#include <vector>

namespace kelo::meshgen {

/// Moves every vertex by the fraction `weight` (0 to 1) towards the mean of its neighbours,
/// `rounds` times: takes the last stiffness out of crests and small folds out of narrow places. The
/// normals are not touched.
void relax(Mesh &mesh, int rounds, double weight);

/// Relaxes the surroundings of every place where the normal of a point stands more than `degrees`
/// off one of the faces round it, until there are none or for 100 rounds, and gives the mesh smooth
/// normals.
void relaxFolds(Mesh &mesh, double degrees);

/// A mesh of at most `triangleCount` triangles with nearly the same surface, made by drawing
/// vertices of `mesh` (which has its normals) into neighbours where that changes the surface and
/// its shading least. The vertices that stay keep their places and normals, unused ones stay in the
/// list (optimizeOrder() drops them). A closed mesh stays closed, no triangle is folded over and
/// none becomes a sliver; where these rules allow no more, more triangles are left.
///
/// `importance`, one value for every vertex or none at all, says how much a change there counts:
/// what is never seen (0.05, say) gives its triangles to what is looked at (1).
Mesh simplified(const Mesh &mesh, std::size_t triangleCount,
                const std::vector<double> &importance = {});

} // namespace kelo::meshgen
