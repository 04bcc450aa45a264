#pragma once

#include "models/DXGLightweightModel.h"

#include <memory>
#include <vector>

namespace kelo::test {

/// A triangle in the plane z = 0, facing up: corners (0, 0), (1, 0), (0, 1).
inline std::shared_ptr<DXGLightweightModel> triangleModel()
{
    const std::vector<OBJVertex> vertices{{{0.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 1.0f}},
                                          {{1.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 1.0f}},
                                          {{0.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f}}};
    const std::vector<std::uint32_t> indexes{0, 1, 2};
    return std::make_shared<DXGLightweightModel>(vertices.data(), vertices.size(), indexes.data(),
                                                 indexes.size());
}

/// A rectangle in the plane z = 0, facing up, from (left, bottom) to (right, top).
inline std::shared_ptr<DXGLightweightModel> rectangleModel(float left, float bottom, float right,
                                                           float top)
{
    const std::vector<OBJVertex> vertices{{{left, bottom, 0.0f}, {0.0f, 0.0f, 1.0f}},
                                          {{right, bottom, 0.0f}, {0.0f, 0.0f, 1.0f}},
                                          {{right, top, 0.0f}, {0.0f, 0.0f, 1.0f}},
                                          {{left, top, 0.0f}, {0.0f, 0.0f, 1.0f}}};
    const std::vector<std::uint32_t> indexes{0, 1, 2, 0, 2, 3};
    return std::make_shared<DXGLightweightModel>(vertices.data(), vertices.size(), indexes.data(),
                                                 indexes.size());
}

} // namespace kelo::test
