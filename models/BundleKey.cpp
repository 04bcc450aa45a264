#include "models/BundleKey.h"

#include "platform/ResourceBundle.h"

namespace kelo {

const std::string keloOpenGLBundleKey = libraryBundleIdentifier;

} // namespace kelo
