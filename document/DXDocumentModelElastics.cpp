#include "document/DXDocumentModel.h"

#include "base/TellDelegate.h"
#include "document/ModelLookup.h"

#include <algorithm>
#include <set>

namespace kelo {

void DXDocumentModel::setElasticModels(const ElasticModels &elastics)
{
    ElasticModels kept;
    std::copy_if(elastics.begin(), elastics.end(), std::back_inserter(kept),
                 [](const std::shared_ptr<ElasticModel> &elastic) { return elastic != nullptr; });
    const auto keepAlive = weak_from_this().lock();
    change([&] { _elasticModels = std::move(kept); });
}

void DXDocumentModel::setElasticModelElements(const std::vector<ElasticModelElement> &elements)
{
    ElasticModels elastics;
    for (const ElasticModelElement &element : elements) {
        if (const auto *elastic = std::get_if<std::shared_ptr<ElasticModel>>(&element)) {
            if (*elastic) elastics.push_back(*elastic);
        } else if (const auto *dictionary = std::get_if<ElasticModelDictionary>(&element)) {
            elastics.push_back(
                ElasticModel::elasticModelWithElasticsConfigType_elasticsSizeType_bracketSequence(
                    dictionary->elasticsConfigType, dictionary->elasticsSizeType,
                    dictionary->bracketSequence.value_or(std::vector<std::string>())));
        }
    }
    const auto keepAlive = weak_from_this().lock();
    change([&] { _elasticModels = std::move(elastics); });
}

bool DXDocumentModel::isPlaced(const std::shared_ptr<ElasticModel> &elastic) const
{
    return elastic &&
           std::find(_elasticModels.begin(), _elasticModels.end(), elastic) != _elasticModels.end();
}

void DXDocumentModel::placeElasticModel(const std::shared_ptr<ElasticModel> &givenElastic)
{
    const auto keepAlive = weak_from_this().lock();
    // A reference of its own, here and below: the given one may be in the list that changes.
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!elastic) return;
    change([&] { _elasticModels.push_back(elastic); });
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::elasticModelPlaced, elastic);
}

void DXDocumentModel::removeElasticModel(const std::shared_ptr<ElasticModel> &givenElastic)
{
    const auto keepAlive = weak_from_this().lock();
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!isPlaced(elastic)) return;
    change([&] { std::erase(_elasticModels, elastic); });
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::elasticModelRemoved, elastic);
}

void DXDocumentModel::elasticModel_setElasticsSizeType(
    const std::shared_ptr<ElasticModel> &givenElastic,
    const std::shared_ptr<ElasticsSizeType> &sizeType)
{
    const auto keepAlive = weak_from_this().lock();
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!isPlaced(elastic)) return;
    change([&] { elastic->setElasticsSizeType(sizeType); });
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::elasticModelColorDidChange,
                 elastic);
}

void DXDocumentModel::elasticModel_setElasticsConfigType(
    const std::shared_ptr<ElasticModel> &givenElastic,
    const std::shared_ptr<ElasticsConfigType> &configType)
{
    const auto keepAlive = weak_from_this().lock();
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!isPlaced(elastic)) return;
    change([&] { elastic->setElasticsConfigType(configType); });
}

std::shared_ptr<ElasticModel> DXDocumentModel::elasticModelForUniqueID(std::uint32_t uniqueID) const
{
    for (const auto &elastic : _elasticModels) {
        if (elastic && elastic->uniqueID() == uniqueID) return elastic;
    }
    return nullptr;
}

bool DXDocumentModel::isHiddenUnderKey(const std::string &key) const
{
    const auto button = modelUnderKey(_buttonModels, key);
    return isHiddenPrimary(modelUnderKey(_toothModels, key)) ||
           isHiddenPrimary(modelUnderKey(_bracketModels, key)) || isHiddenPrimary(button) ||
           isHiddenSecondary(button);
}

void DXDocumentModel::refactorElasticModels(const std::string &givenKey)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    if (!isHiddenUnderKey(key)) return;

    const ElasticModels before = _elasticModels;
    ElasticModels after = before;
    bool changed = false;
    for (const auto &elastic : before) {
        if (!elastic) continue;
        std::vector<std::string> members;
        std::set<int> teeth;
        for (const std::string &member : elastic->bracketSequence()) {
            if (member == key) continue;
            members.push_back(member);
            // A bracket and the button on the same tooth count once, wherever the button's letter
            // is in a chart of the host's own.
            const int tooth = integerValueOfNameKey(toothKeyOfNameKey(member));
            if (tooth >= 0) teeth.insert(tooth);
        }
        if (members.size() == elastic->bracketSequence().size()) continue;
        changed = true;
        if (teeth.size() > 1)
            elastic->setBracketSequence(std::move(members));
        else
            std::erase(after, elastic);
    }
    if (!changed) return;
    setElasticModels(after);
    tellDelegate(teller(), delegate_,
                 &DXDocumentModelDelegate::elasticModelsRefactoredAroundBrackets,
                 std::vector<std::string>{key});
}

} // namespace kelo
