#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <array>

namespace viewer {

/// The names that scripts and states have for the parts of the scene, in the order of ScenePart.
inline constexpr std::array<const char *, kelo::scenePartCount> scenePartNames{
    "upper-arch", "lower-arch", "gums", "brackets", "buttons", "elastics"};

} // namespace viewer
