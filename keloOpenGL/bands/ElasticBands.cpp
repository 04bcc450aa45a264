#include "keloOpenGL/bands/ElasticBands.h"

#include "document/ElasticModel.h"

#include <algorithm>

namespace kelo {

std::optional<Color> colorOfSize(const ElasticsSizeType *size)
{
    return size ? Color::fromComponents(size->elasticsColor) : std::nullopt;
}

DrawnBand placedBand(const ElasticModel &elastic, std::uint32_t index, bool isPicking)
{
    return {elastic.bracketSequence(), true, colorOfSize(elastic.elasticsSizeType().get()),
            isPicking ? std::optional(index) : std::nullopt};
}

std::optional<DrawnBand> strungBand(const std::optional<std::vector<std::string>> &members,
                                    const ElasticsSizeType *size)
{
    if (!members || members->size() < 2) return std::nullopt;
    return DrawnBand{*members, false, colorOfSize(size), std::nullopt};
}

DXDocumentModel::ElasticModels elasticsOver(const DXDocumentModel &document,
                                            const std::vector<std::string> &keys)
{
    DXDocumentModel::ElasticModels found;
    const auto isGiven = [&keys](const std::string &key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    };
    for (const auto &elastic : document.elasticModels()) {
        const auto &members = elastic->bracketSequence();
        if (std::any_of(members.begin(), members.end(), isGiven)) found.push_back(elastic);
    }
    return found;
}

} // namespace kelo
