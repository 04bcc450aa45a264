#include "viewer/treatment/DocumentState.h"

#include <algorithm>

namespace viewer {
namespace {

using Document = kelo::DXDocumentModel;

ElasticState stateOf(const kelo::ElasticModel &elastic)
{
    return {elastic.elasticsConfigType(), elastic.elasticsSizeType(), elastic.bracketSequence()};
}

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

void applyColors(Document &document, const Document::ColorTypeIDs &wanted)
{
    const Document::ColorTypeIDs present = document.bracketColorsTypeIDs();
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

/// The configuration as the document offers it now, under whatever name.
std::shared_ptr<kelo::ElasticsConfigType>
presentType(const Document &document, const std::shared_ptr<kelo::ElasticsConfigType> &configType)
{
    const auto &offered = document.availableElasticsConfigTypes();
    const auto found = std::find_if(offered.begin(), offered.end(), [&](const auto &type) {
        return isSameConfiguration(type, configType);
    });
    return found == offered.end() ? configType : *found;
}

/// Elastics that only have another size are recoloured; from the first one that differs in more,
/// all are taken away and placed anew, so that their order is the state's.
void applyElastics(Document &document, const std::vector<ElasticState> &wanted)
{
    std::size_t same = 0;
    while (same < wanted.size() && same < document.elasticModels().size()) {
        const auto elastic = document.elasticModels()[same];
        if (elastic->bracketSequence() != wanted[same].bracketSequence ||
            !isSameConfiguration(elastic->elasticsConfigType(), wanted[same].configType))
            break;
        if (elastic->elasticsSizeType() != wanted[same].sizeType)
            document.elasticModel_setElasticsSizeType(elastic, wanted[same].sizeType);
        ++same;
    }
    while (document.elasticModels().size() > same) {
        const auto last = document.elasticModels().back();
        document.removeElasticModel(last);
    }
    for (std::size_t i = same; i < wanted.size(); ++i)
        document.placeElasticModel(
            std::make_shared<kelo::ElasticModel>(presentType(document, wanted[i].configType),
                                                 wanted[i].sizeType, wanted[i].bracketSequence));
}

} // namespace

bool isSameConfiguration(const std::shared_ptr<kelo::ElasticsConfigType> &one,
                         const std::shared_ptr<kelo::ElasticsConfigType> &other)
{
    return one && other ? one->typeID == other->typeID : !one && !other;
}

bool ElasticState::operator==(const ElasticState &other) const
{
    return isSameConfiguration(configType, other.configType) && sizeType == other.sizeType &&
           bracketSequence == other.bracketSequence;
}

DocumentState stateOf(const Document &document)
{
    DocumentState state{document.toothVisibilities(),
                        document.bracketVisibilities(),
                        document.buttonVisibilities(),
                        document.bracketColorsTypeIDs(),
                        {}};
    for (const auto &elastic : document.elasticModels())
        state.elastics.push_back(stateOf(*elastic));
    return state;
}

void applyState(Document &document, const DocumentState &state)
{
    // Hiding shortens elastics, so that those come last.
    for (const bool toVisible : {true, false}) {
        for (const auto &key : keysToToggle(document.toothVisibilities(), state.teeth, toVisible))
            document.toggleVisibilityOfTooth(key);
        for (const auto &key :
             keysToToggle(document.bracketVisibilities(), state.brackets, toVisible))
            document.toggleVisibilityOfBracket(key);
        for (const auto &key :
             keysToToggle(document.buttonVisibilities(), state.buttons, toVisible))
            document.toggleVisibilityOfButton(key);
    }
    applyColors(document, state.bracketColors);
    applyElastics(document, state.elastics);
}

} // namespace viewer
