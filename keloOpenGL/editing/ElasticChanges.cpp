#include "keloOpenGL/editing/ElasticChanges.h"

#include "document/ElasticModel.h"
#include "document/ModelLookup.h"
#include "keloModel/BracketColorType.h"
#include "models/DXGLightweightModel.h"
#include "models/PickIdentifier.h"

#include <algorithm>

namespace kelo {
namespace {

std::vector<std::string> membersOf(const ElasticsConfigType &configuration)
{
    const std::string &sequence = configuration.bracketSequence;
    std::vector<std::string> members;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t comma = sequence.find(',', begin);
        members.push_back(sequence.substr(begin, comma - begin));
        if (comma == std::string::npos) return members;
        begin = comma + 1;
    }
}

} // namespace

bool isHiddenMember(const DXDocumentModel &document, const std::string &key)
{
    return isHidden(isButtonKey(key) ? document.buttonModels() : document.bracketModels(), key);
}

ElasticHit elasticHit(const DXDocumentModel *document, std::uint32_t identifier,
                      const std::optional<std::string> &name, bool isLingualButton)
{
    const auto index = elasticIndexOfPickIdentifier(identifier);
    ElasticHit hit{index, false, name, false};
    if (!document) return hit;
    hit.elasticExists = index && *index < document->elasticModels().size();
    const auto &models = isLingualButton ? document->buttonModels() : document->bracketModels();
    hit.memberIsShown = name && !isHidden(models, *name);
    return hit;
}

std::shared_ptr<ElasticModel> elasticAt(const DXDocumentModel &document, std::uint64_t index)
{
    const auto &elastics = document.elasticModels();
    return index < elastics.size() ? elastics[index] : nullptr;
}

std::shared_ptr<ElasticsSizeType> elasticsSizeType(const DXDocumentModel &document,
                                                   std::optional<long> typeID)
{
    const auto &sizes = document.availableElasticsSizeTypes();
    const auto size = sizes.find(typeID.value_or(0));
    return size == sizes.end() ? nullptr : size->second;
}

std::shared_ptr<ElasticModel> strungElastic(ElasticEditor &editor, const DXDocumentModel &document)
{
    const auto members = editor.beginPlacing(
        [&document](const std::string &member) { return isHiddenMember(document, member); });
    if (!members) return nullptr;
    return ElasticModel::elasticModelWithElasticsConfigType_elasticsSizeType_bracketSequence(
        nullptr, elasticsSizeType(document, editor.sizeTypeID()), *members);
}

std::vector<std::string> missingTeeth(const DXDocumentModel &document,
                                      const ElasticsConfigType &configuration)
{
    std::vector<std::string> missing;
    for (const std::string &member : membersOf(configuration)) {
        const std::string tooth = toothKeyOfNameKey(member);
        const bool isNew = std::find(missing.begin(), missing.end(), tooth) == missing.end();
        if (isNew && isHidden(document.toothModels(), tooth)) missing.push_back(tooth);
    }
    return missing;
}

bool isCovered(const DXDocumentModel &document, const ElasticsConfigType &configuration)
{
    const std::vector<std::string> members = membersOf(configuration);
    const auto &elastics = document.elasticModels();
    return std::any_of(elastics.begin(), elastics.end(), [&members](const auto &elastic) {
        return elastic->bracketSequence() == members;
    });
}

void placeConfiguration(DXDocumentModel &document,
                        const std::shared_ptr<ElasticsConfigType> &configuration)
{
    for (const std::string &member : membersOf(*configuration)) {
        if (!isHiddenMember(document, member)) continue;
        if (isButtonKey(member))
            document.toggleVisibilityOfButton(member);
        else
            document.bracket_makeVisibleAndSetColorWithBracketColorTypeID(member,
                                                                          noBracketColorTypeID);
    }
    document.placeElasticModel(ElasticModel::elasticModelWithElasticsConfigType(configuration));
}

void setSizeOfAllElastics(DXDocumentModel &document, const std::shared_ptr<ElasticsSizeType> &size)
{
    // A copy: the host may change the list while it is told of a change.
    const DXDocumentModel::ElasticModels elastics = document.elasticModels();
    for (const auto &elastic : elastics)
        document.elasticModel_setElasticsSizeType(elastic, size);
}

void removeAllElastics(DXDocumentModel &document)
{
    // A copy: those that a host places when it is told of a removal are not asked about, and would
    // be without end if they were removed too.
    const DXDocumentModel::ElasticModels elastics = document.elasticModels();
    for (const auto &elastic : elastics)
        document.removeElasticModel(elastic);
}

} // namespace kelo
