#pragma once

#include "tools/meshcheck/MeshShape.h"

#include <vector>

namespace kelo {

/// What a picture of the mesh would suffer from although it loads and is closed: faces without
/// area, faces that cross another face of the same surface, faces that are folded flat onto their
/// neighbour, and normals more than 60 degrees off their face. See `checkMeshText`. All positions
/// and normals are finite and all corners in range. One problem a face at most of each kind.
std::vector<ShapeProblem> surfaceProblems(const MeshShape &shape);

} // namespace kelo
