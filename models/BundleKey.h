#pragma once

#include "base/Export.h"

#include <string>

namespace kelo {

/// The identifier of the library's own resource bundle: meshes, images and interface files.
/// For ResourceBundle::bundleWithIdentifier.
extern KELO_EXPORT const std::string keloOpenGLBundleKey;

} // namespace kelo
