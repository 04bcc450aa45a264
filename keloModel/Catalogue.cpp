#include "keloModel/Catalogue.h"

#include "keloModel/QKTypeManager.h"

#include <algorithm>

namespace kelo {
namespace {

template<class Record>
std::shared_ptr<Record> recordWithID(const std::vector<std::shared_ptr<Record>> &records,
                                     long typeID)
{
    const auto found = std::find_if(records.begin(), records.end(), [typeID](const auto &record) {
        return record->typeID == typeID;
    });
    return found == records.end() ? nullptr : *found;
}

template<class Record>
void replaceInstances(QKTypeManager &manager, const std::string &typeName,
                      const std::vector<std::shared_ptr<Record>> &records)
{
    manager.removeInstancesOfType(typeName);
    for (const auto &record : records)
        manager.addInstance_ofType(record, typeName);
}

} // namespace

std::shared_ptr<BracketColorType> Catalogue::bracketColorType(long typeID) const
{
    return recordWithID(bracketColorTypes, typeID);
}

std::shared_ptr<ElasticsSizeType> Catalogue::elasticsSizeType(long typeID) const
{
    return recordWithID(elasticsSizeTypes, typeID);
}

std::shared_ptr<ElasticsConfigType> Catalogue::elasticsConfigType(long typeID) const
{
    return recordWithID(elasticsConfigTypes, typeID);
}

void Catalogue::fill(QKTypeManager &manager) const
{
    replaceInstances(manager, "BracketColorType", bracketColorTypes);
    replaceInstances(manager, "ElasticsSizeType", elasticsSizeTypes);
    replaceInstances(manager, "ElasticsConfigType", elasticsConfigTypes);
}

} // namespace kelo
