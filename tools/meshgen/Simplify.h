#pragma once

#include "tools/meshgen/Mesh.h"

#include <cstddef>

namespace kelo::meshgen {

/// Moves every vertex by the fraction `weight` (0 to 1) towards the mean of its neighbours,
/// `rounds` times: takes the last stiffness out of crests and small folds out of narrow places. The
/// normals are not touched.
void relax(Mesh &mesh, int rounds, double weight);

/// A mesh of at most about `triangleCount` triangles with the same surface, made by collapsing
/// edges of `mesh`. The vertices that stay keep their places and normals, unused ones stay in the
/// list (optimizeOrder() drops them). A closed mesh stays closed. Throws std::runtime_error when
/// that cannot be had.
Mesh simplified(const Mesh &mesh, std::size_t triangleCount);

} // namespace kelo::meshgen
