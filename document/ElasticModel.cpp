#include "document/ElasticModel.h"

#include "keloModel/QKTypeManager.h"

#include <utility>

namespace kelo {
namespace {

std::uint32_t &counter()
{
    static std::uint32_t next = 0;
    return next;
}

/// The pieces between the separators, empty ones included: an empty string has one empty piece.
std::vector<std::string> components(const std::string &text, char separator)
{
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         end = text.find(separator, start)) {
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    pieces.push_back(text.substr(start));
    return pieces;
}

} // namespace

ElasticModel::ElasticModel(std::shared_ptr<ElasticsConfigType> elasticsConfigType,
                           std::shared_ptr<ElasticsSizeType> elasticsSizeType,
                           std::vector<std::string> bracketSequence)
    : _uniqueID(counter()++),
      _elasticsConfigType(std::move(elasticsConfigType)),
      _elasticsSizeType(std::move(elasticsSizeType)),
      _bracketSequence(std::move(bracketSequence))
{}

std::shared_ptr<ElasticModel> ElasticModel::elasticModelWithElasticsConfigType(
    const std::shared_ptr<ElasticsConfigType> &elasticsConfigType)
{
    if (!elasticsConfigType)
        return std::make_shared<ElasticModel>(nullptr, nullptr, std::vector<std::string>());
    const auto sizeType = std::dynamic_pointer_cast<ElasticsSizeType>(
        QKTypeManager::typeManager().instanceForID_ofType(elasticsConfigType->elasticsSizeTypeID,
                                                          "ElasticsSizeType"));
    return std::make_shared<ElasticModel>(elasticsConfigType, sizeType,
                                          components(elasticsConfigType->bracketSequence, ','));
}

std::shared_ptr<ElasticModel>
ElasticModel::elasticModelWithElasticsConfigType_elasticsSizeType_bracketSequence(
    std::shared_ptr<ElasticsConfigType> elasticsConfigType,
    std::shared_ptr<ElasticsSizeType> elasticsSizeType, std::vector<std::string> bracketSequence)
{
    return std::make_shared<ElasticModel>(std::move(elasticsConfigType),
                                          std::move(elasticsSizeType), std::move(bracketSequence));
}

std::uint32_t ElasticModel::nextUniqueID()
{
    return counter();
}

void ElasticModel::setElasticsConfigType(std::shared_ptr<ElasticsConfigType> elasticsConfigType)
{
    _elasticsConfigType = std::move(elasticsConfigType);
}

void ElasticModel::setElasticsSizeType(std::shared_ptr<ElasticsSizeType> elasticsSizeType)
{
    _elasticsSizeType = std::move(elasticsSizeType);
}

void ElasticModel::setBracketSequence(std::vector<std::string> bracketSequence)
{
    _bracketSequence = std::move(bracketSequence);
}

} // namespace kelo
