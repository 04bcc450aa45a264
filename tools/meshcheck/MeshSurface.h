#pragma once

#include "tools/meshcheck/MeshShape.h"

#include <cstddef>

namespace kelo {

/// What a picture of the mesh would suffer from although it loads and is closed: faces without
/// area, faces that cross another face of the same surface, faces that are folded flat onto their
/// neighbour, and normals more than 60 degrees off their face. See `checkMeshText`. All positions
/// and normals are finite and all corners in range. One problem a face at most of each kind.
/// The search for crossings ends, with a problem of its own, when it has compared so many pairs of
/// faces that lie over the same x coordinate. 500 million take a few seconds; the largest mesh of a
/// patient, of 16,000 faces, has about 10 million.
ShapeProblems surfaceProblems(const MeshShape &shape, std::size_t mostComparedPairs = 500'000'000);

} // namespace kelo
