#pragma once

#include "base/Export.h"

#include <optional>

namespace kelo {

// How the mouth opens and closes by itself or by a key. Angles are the view's mouth opening angles,
// in degrees; upwards is negative. Pure functions.

/// A mouth that is open by less than this (either way) is meant to be closed.
inline constexpr float mouthSnapAngle = 22.0f;

/// Whether a mouth that is left at this angle closes.
KELO_EXPORT bool mouthSnapsClosed(float angle);

/// Where one step takes the mouth: from open to closed, from closed to open the other way. Nothing
/// for a mouth that is as far as steps go, or that has no angle.
KELO_EXPORT std::optional<float> mouthAngleOneStepUp(float angle);
KELO_EXPORT std::optional<float> mouthAngleOneStepDown(float angle);

} // namespace kelo
