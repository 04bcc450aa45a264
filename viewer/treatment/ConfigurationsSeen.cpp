#include "viewer/treatment/ConfigurationsSeen.h"

#include <algorithm>

namespace viewer {

void ConfigurationsSeen::remember(const kelo::DXDocumentModel &document)
{
    for (const auto &elastic : document.elasticModels()) {
        if (const auto &type = elastic->elasticsConfigType()) types_[type->typeID] = type;
    }
}

std::shared_ptr<kelo::ElasticsConfigType>
ConfigurationsSeen::typeOf(const kelo::DXDocumentModel &document,
                           const kelo::SavedElastic &saved) const
{
    const auto type = kelo::configTypeOf(document, saved);
    const auto &offered = document.availableElasticsConfigTypes();
    if (!type || std::find(offered.begin(), offered.end(), type) != offered.end()) return type;
    const auto seen = types_.find(type->typeID);
    return seen == types_.end() ? type : seen->second;
}

} // namespace viewer
