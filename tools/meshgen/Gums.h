#pragma once

#include "tools/meshgen/Arrangement.h"
#include "tools/meshgen/Mesh.h"

#include <vector>

namespace kelo::meshgen {

/// The gum of one jaw as one closed surface in jaw coordinates. Its free margin follows the
/// cervical lines of that jaw's teeth about a millimetre coronally and dips into the crowns there,
/// papillae fill the spaces between neighbours, the outer side runs over the roots into the
/// vestibule. The upper gum has a palate, the lower is open for the tongue. Fine (about 60,000
/// triangles); normals are set.
///
/// `teeth` are the arranged teeth of both jaws.
Mesh makeGums(const std::vector<Tooth> &teeth, bool upper);

} // namespace kelo::meshgen
