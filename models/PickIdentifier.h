#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace kelo {

/// What the colour of a pixel in a pick pass identifies, as 24 bits: red, green, blue from the
/// highest byte down. 0 is the background; a mesh's unique identifier lies below
/// `firstElasticPickIdentifier`; an elastic is that plus its place in the document's list.
inline constexpr std::uint32_t firstElasticPickIdentifier = 0x800000;

/// What a point without a pixel reads as: an elastic far beyond any list, which nobody finds.
inline constexpr std::uint32_t noPixelPickIdentifier = 0xABCDEF;

/// The identifier of the elastic at this place in the list. A band is painted with the low byte of
/// its place, so of more than 256 elastics the 257th reads as the first.
constexpr std::uint32_t pickIdentifierOfElastic(std::size_t index)
{
    return firstElasticPickIdentifier + static_cast<std::uint32_t>(index % 256);
}

/// The place in the list that an identifier names, whether or not the list is that long; nothing
/// for a mesh or the background.
constexpr std::optional<std::uint32_t> elasticIndexOfPickIdentifier(std::uint32_t identifier)
{
    if ((identifier & firstElasticPickIdentifier) == 0) return std::nullopt;
    return identifier & (firstElasticPickIdentifier - 1);
}

/// Whether a mesh with this unique identifier can be told apart in a pick pass.
constexpr bool canBePicked(std::uint64_t uniqueID)
{
    return uniqueID != 0 && uniqueID < firstElasticPickIdentifier;
}

} // namespace kelo
