#include "viewer/treatment/DocumentState.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace viewer {
namespace {

using Document = kelo::DXDocumentModel;
using Colors = kelo::NameKeyDictionary<std::optional<long>>;

/// The keys that are to become visible, or hidden, as the state has it.
std::vector<std::string> keysToToggle(const Document::Visibilities &present,
                                      const Document::Visibilities &wanted, bool toVisible)
{
    std::vector<std::string> keys;
    for (const auto &[key, visible] : wanted) {
        const auto found = present.find(key);
        if (found != present.end() && found->second != visible && visible == toVisible)
            keys.push_back(key);
    }
    return keys;
}

void applyColors(Document &document, const Colors &wanted)
{
    const Colors present = kelo::savedStateOf(document).bracketColorTypeIDs;
    for (const auto &[key, typeID] : present) {
        if (!wanted.contains(key))
            document.bracket_setColorWithBracketColorTypeID(key, std::nullopt);
    }
    for (const auto &[key, typeID] : wanted) {
        const auto found = present.find(key);
        if (found == present.end() || found->second != typeID)
            document.bracket_setColorWithBracketColorTypeID(key, typeID);
    }
}

/// Elastics that only have another size are recoloured; from the first one that differs in more,
/// all are taken away and placed anew, so that their order is the state's.
void applyElastics(Document &document, const std::vector<kelo::SavedElastic> &wanted,
                   const ConfigurationsSeen &configurations)
{
    std::size_t same = 0;
    while (same < wanted.size() && same < document.elasticModels().size()) {
        const auto elastic = document.elasticModels()[same];
        kelo::SavedElastic recolored = kelo::savedElasticOf(*elastic);
        const auto sizeTypeID =
            std::exchange(recolored.elasticsSizeTypeID, wanted[same].elasticsSizeTypeID);
        if (recolored != wanted[same]) break;
        if (sizeTypeID != wanted[same].elasticsSizeTypeID)
            document.elasticModel_setElasticsSizeType(elastic,
                                                      kelo::sizeTypeOf(document, wanted[same]));
        ++same;
    }
    while (document.elasticModels().size() > same) {
        const auto last = document.elasticModels().back();
        document.removeElasticModel(last);
    }
    for (std::size_t i = same; i < wanted.size(); ++i) {
        const auto elastic = kelo::elasticOf(document, wanted[i]);
        elastic->setElasticsConfigType(configurations.typeOf(document, wanted[i]));
        document.placeElasticModel(elastic);
    }
}

} // namespace

bool isSameConfiguration(const std::shared_ptr<kelo::ElasticsConfigType> &one,
                         const std::shared_ptr<kelo::ElasticsConfigType> &other)
{
    return one && other ? one->typeID == other->typeID : !one && !other;
}

void applyState(Document &document, const kelo::SavedState &state,
                const ConfigurationsSeen &configurations)
{
    // Hiding shortens elastics, so that those come last.
    for (const bool toVisible : {true, false}) {
        for (const auto &key :
             keysToToggle(document.toothVisibilities(), state.toothVisibilities, toVisible))
            document.toggleVisibilityOfTooth(key);
        for (const auto &key :
             keysToToggle(document.bracketVisibilities(), state.bracketVisibilities, toVisible))
            document.toggleVisibilityOfBracket(key);
        for (const auto &key :
             keysToToggle(document.buttonVisibilities(), state.buttonVisibilities, toVisible))
            document.toggleVisibilityOfButton(key);
    }
    applyColors(document, state.bracketColorTypeIDs);
    applyElastics(document, state.elastics, configurations);
}

} // namespace viewer
