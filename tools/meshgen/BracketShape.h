#pragma once

#include "tools/meshgen/Arrangement.h"
#include "tools/meshgen/Mesh.h"

namespace kelo::meshgen {

/// The bracket of one tooth in jaw coordinates: a base that follows the crown's labial surface
/// round `placement.facialAxisPoint`, the slotted body on it and a hook whose post ends at `hook`.
/// `tooth` is the finished mesh of that tooth. The result is closed, has its normals and is wound
/// outwards.
Mesh makeBracket(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook);

} // namespace kelo::meshgen
