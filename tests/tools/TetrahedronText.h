#pragma once

// The smallest closed mesh, as text.

#include <string>

namespace kelo {

/// A closed tetrahedron, wound outwards: volume 1/6.
inline const std::string positions = "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\n";
inline const std::string tetrahedron = positions + "f 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n";

} // namespace kelo
