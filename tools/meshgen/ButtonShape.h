#pragma once

#include "tools/meshgen/Arrangement.h"
#include "tools/meshgen/Mesh.h"

namespace kelo::meshgen {

/// The lingual button of one tooth in jaw coordinates: a base on the crown's lingual surface, a
/// neck through `hook` (radius `hook.radius`) and a rounded cap. `tooth` is the finished mesh of
/// that tooth. The result is closed, has its normals and is wound outwards.
Mesh makeButton(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook);

} // namespace kelo::meshgen
