#pragma once

#include "base/Export.h"
#include "keloModel/QKType.h"

#include <array>
#include <optional>

namespace kelo {

/// A size and force of elastics, with the colour that its bands are drawn in.
struct KELO_EXPORT ElasticsSizeType : QKType
{
    /// Red, green, blue, alpha, each 0 to 1; may be absent.
    std::optional<std::array<double, 4>> elasticsColor;
};

} // namespace kelo
