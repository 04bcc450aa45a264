#pragma once

#include "base/Export.h"
#include "document/DXDocumentModel.h"
#include "keloOpenGL/bands/BandRenderer.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class ElasticModel;
struct ElasticsSizeType;

// Elastics as bands. Nothing here draws.

/// The colour of a size type; nothing for null, or for a type whose colour is none.
KELO_EXPORT std::optional<Color> colorOfSize(const ElasticsSizeType *size);

/// The elastic at this place in the document's list, which comes back to its first member. In a
/// picking pass the place is its number. Refers to the elastic.
KELO_EXPORT DrawnBand placedBand(const ElasticModel &elastic, std::uint32_t index, bool isPicking);

/// One that is being strung, open between its newest and its first member; nothing before it has
/// two of them. Refers to the members. It cannot be picked.
KELO_EXPORT std::optional<DrawnBand>
strungBand(const std::optional<std::vector<std::string>> &members, const ElasticsSizeType *size);

/// The document's elastics that have at least one of these keys, in placing order.
KELO_EXPORT DXDocumentModel::ElasticModels elasticsOver(const DXDocumentModel &document,
                                                        const std::vector<std::string> &keys);

} // namespace kelo
