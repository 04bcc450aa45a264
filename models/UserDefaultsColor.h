#pragma once

#include "base/Export.h"
#include "models/Color.h"
#include "platform/settings/UserDefaults.h"

#include <optional>
#include <string>

namespace kelo {

/// Stores a colour as bytes under the key. `nullopt` removes what is stored there.
///
/// The bytes: the four letters RGBA, then red, green, blue and alpha as little-endian IEEE doubles,
/// 36 bytes in all.
KELO_EXPORT void UserDefaults_setColor_forKey(UserDefaults &defaults,
                                              const std::optional<Color> &color,
                                              const std::string &key);

/// The colour stored under the key; nothing when there is none, or when the bytes have another
/// length, other leading letters, or a component that is no finite number.
KELO_EXPORT std::optional<Color> UserDefaults_colorForKey(const UserDefaults &defaults,
                                                          const std::string &key);

} // namespace kelo
