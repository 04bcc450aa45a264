#pragma once

#include <string>

namespace kelo {

/// The identifier of the library's own resource bundle: meshes, images and interface files.
/// For ResourceBundle::bundleWithIdentifier.
extern const std::string keloOpenGLBundleKey;

} // namespace kelo
