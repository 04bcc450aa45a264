#pragma once

#include "base/Export.h"
#include "keloModel/QKType.h"

#include <array>
#include <optional>

namespace kelo {

/// Stands for a bracket without colour wherever a colour type is reported or stored; no catalogue
/// may have it.
inline constexpr long noBracketColorTypeID = 4999;

/// A colour that a bracket may take.
struct KELO_EXPORT BracketColorType : QKType
{
    /// Red, green, blue, alpha, each 0 to 1; may be absent.
    std::optional<std::array<double, 4>> bracketColor;
};

} // namespace kelo
