#include "document/DXDocumentModelParts.h"

#include "document/ModelVisibility.h"

#include <utility>
#include <vector>

namespace kelo {

void DXDocumentModel::setElasticModels(const ElasticModels &elastics)
{
    const auto keepAlive = weak_from_this().lock();
    ElasticModels kept = withoutNulls(elastics);
    change([&] { parts_->elastics = std::move(kept); });
}

void DXDocumentModel::setElasticModelElements(const std::vector<ElasticModelElement> &elements)
{
    setElasticModels(elasticsFromElements(elements));
}

void DXDocumentModel::placeElasticModel(const std::shared_ptr<ElasticModel> &givenElastic)
{
    const auto keepAlive = weak_from_this().lock();
    // A reference of its own, here and below: the given one may be in the list that changes.
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!elastic) return;
    change([&] { parts_->elastics.push_back(elastic); });
    tell(&DXDocumentModelDelegate::elasticModelPlaced, elastic);
}

void DXDocumentModel::removeElasticModel(const std::shared_ptr<ElasticModel> &givenElastic)
{
    const auto keepAlive = weak_from_this().lock();
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!contains(parts_->elastics, elastic)) return;
    change([&] { std::erase(parts_->elastics, elastic); });
    tell(&DXDocumentModelDelegate::elasticModelRemoved, elastic);
}

void DXDocumentModel::elasticModel_setElasticsSizeType(
    const std::shared_ptr<ElasticModel> &givenElastic,
    const std::shared_ptr<ElasticsSizeType> &sizeType)
{
    const auto keepAlive = weak_from_this().lock();
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!contains(parts_->elastics, elastic)) return;
    change([&] { elastic->setElasticsSizeType(sizeType); });
    tell(&DXDocumentModelDelegate::elasticModelColorDidChange, elastic);
}

void DXDocumentModel::elasticModel_setElasticsConfigType(
    const std::shared_ptr<ElasticModel> &givenElastic,
    const std::shared_ptr<ElasticsConfigType> &configType)
{
    const auto keepAlive = weak_from_this().lock();
    const std::shared_ptr<ElasticModel> elastic = givenElastic;
    if (!contains(parts_->elastics, elastic)) return;
    change([&] { elastic->setElasticsConfigType(configType); });
}

std::shared_ptr<ElasticModel> DXDocumentModel::elasticModelForUniqueID(std::uint32_t uniqueID) const
{
    return elasticForUniqueID(parts_->elastics, uniqueID);
}

void DXDocumentModel::refactorElasticModels(const std::string &key)
{
    if (isHiddenUnderKey(parts_->models, key)) removeFromElastics(key);
}

void DXDocumentModel::refactorElasticModelsAround(const std::vector<std::string> &keys)
{
    for (const std::string &key : keys)
        refactorElasticModels(key);
}

void DXDocumentModel::removeFromElastics(std::string key)
{
    const auto keepAlive = weak_from_this().lock();
    ElasticModels left = parts_->elastics;
    if (!removeKey(left, key)) return;
    setElasticModels(left);
    tell(&DXDocumentModelDelegate::elasticModelsRefactoredAroundBrackets, std::vector{key});
}

} // namespace kelo
