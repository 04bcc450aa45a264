#include "models/BundleKey.h"

#include "platform/settings/ResourceBundle.h"

namespace kelo {

const std::string keloOpenGLBundleKey = libraryBundleIdentifier;

} // namespace kelo
