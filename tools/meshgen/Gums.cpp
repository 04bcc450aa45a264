#include "tools/meshgen/Gums.h"
namespace kelo::meshgen { Mesh makeGums(const std::vector<Tooth> &t, bool) { return t[0].ownMesh; } }
