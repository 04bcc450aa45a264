#pragma once

namespace kelo {

/// What of the scene can be left out of the picture, so that the rest can be looked at.
enum class ScenePart {
    UpperArch, ///< gum, teeth, brackets and buttons of the upper jaw, and the elastics at them
    LowerArch,
    Gums,
    Brackets,
    Buttons,
    Elastics
};

/// As many as there are.
inline constexpr int scenePartCount = 6;

} // namespace kelo
