#pragma once

#include "base/Export.h"
#include "document/ElasticModel.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kelo {

/// Elastics in placing order.
using ElasticList = std::vector<std::shared_ptr<ElasticModel>>;

/// Elastics as they are, dictionaries made into elastics; anything else is dropped.
KELO_EXPORT ElasticList elasticsFromElements(const std::vector<ElasticModelElement> &elements);

/// The same list without nulls.
KELO_EXPORT ElasticList withoutNulls(const ElasticList &elastics);

/// Whether the list has this very elastic; never for null.
KELO_EXPORT bool contains(const ElasticList &elastics,
                          const std::shared_ptr<ElasticModel> &elastic);

/// The first one with this identifier, or null.
KELO_EXPORT std::shared_ptr<ElasticModel> elasticForUniqueID(const ElasticList &elastics,
                                                             std::uint32_t uniqueID);

/// Removes the key from every elastic. One that is left on a single tooth (a bracket and the button
/// on one tooth count once) is removed from the list and keeps its sequence; the others keep their
/// order. Returns whether any elastic had the key.
KELO_EXPORT bool removeKey(ElasticList &elastics, const std::string &key);

} // namespace kelo
