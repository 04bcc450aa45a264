#pragma once

#include "tools/meshgen/Mesh.h"
#include "tools/meshgen/ToothAnatomy.h"

namespace kelo::meshgen {

/// The crown and the upper part of the root as one closed surface in the tooth's own coordinates:
/// x mesial, y labial, z occlusal, in millimetres; the origin lies on the crown's axis at the
/// height of the facial cervical line. The extents of the crown are exactly those of
/// `anatomy.dimensions`. Wound outwards for right-handed axes; normals are set.
Mesh makeTooth(const ToothAnatomy &anatomy);

/// The height of the cervical line (own z) at the fraction `x` (-1 distal to 1 mesial) of the half
/// width: it rises from the facial and lingual middle towards the contacts.
double cervicalLine(const ToothAnatomy &anatomy, double x);

} // namespace kelo::meshgen
