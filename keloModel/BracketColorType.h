#pragma once

#include "keloModel/QKType.h"
#include "keloOpenGL/Export.h"

#include <array>
#include <optional>

namespace kelo {

/// A colour that a bracket may take.
struct KELO_EXPORT BracketColorType : QKType
{
    /// Red, green, blue, alpha, each 0 to 1; may be absent.
    std::optional<std::array<double, 4>> bracketColor;
};

} // namespace kelo
