#pragma once

#include <compare>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

/// A placed elastic as plain values, as a host stores it. A configuration or size that is not named
/// is absent.
struct SavedElastic
{
    std::optional<long> elasticsConfigTypeID;
    std::optional<long> elasticsSizeTypeID;
    std::vector<std::string> bracketSequence; ///< name keys, in the band's order
    bool operator==(const SavedElastic &) const = default;
    /// By their values, for ordered containers.
    auto operator<=>(const SavedElastic &) const = default;
};

} // namespace kelo
