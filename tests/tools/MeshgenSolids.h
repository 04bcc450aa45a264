#pragma once

#include "tools/meshgen/Mesh.h"

namespace kelo::meshgen::test {

/// A box between two corners, closed and wound outwards; it has no normals.
inline Mesh box(const Vec3 &low, const Vec3 &high)
{
    Mesh mesh;
    for (int i = 0; i < 8; ++i)
        mesh.positions.push_back(
            {i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z});
    mesh.triangles = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                      {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
    return mesh;
}

} // namespace kelo::meshgen::test
