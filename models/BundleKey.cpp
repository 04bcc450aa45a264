#include "models/BundleKey.h"

namespace kelo {

const std::string keloOpenGLBundleKey = "keloOpenGL";

} // namespace kelo
