#include "viewer/store/ElasticAttributes.h"

#include <QJsonArray>
#include <QString>

namespace viewer {
namespace {

std::set<long> configurationsIn(const kelo::Catalogue &catalogue)
{
    std::set<long> typeIDs;
    for (const auto &type : catalogue.elasticsConfigTypes)
        typeIDs.insert(type->typeID);
    return typeIDs;
}

std::set<long> sizesIn(const kelo::Catalogue &catalogue)
{
    std::set<long> typeIDs;
    for (const auto &type : catalogue.elasticsSizeTypes)
        typeIDs.insert(type->typeID);
    return typeIDs;
}

} // namespace

const std::vector<ElasticAttribute> &elasticAttributes()
{
    using kelo::SavedElastic;
    static const std::vector<ElasticAttribute> all{
        {&SavedElastic::elasticsConfigTypeID, "elasticsConfigTypeID", "config_type_id",
         configurationsIn, "is the identifier of no configuration"},
        {&SavedElastic::elasticsSizeTypeID, "elasticsSizeTypeID", "size_type_id", sizesIn,
         "is the identifier of no size"},
    };
    return all;
}

std::string elasticColumns()
{
    std::string columns;
    for (const ElasticAttribute &attribute : elasticAttributes())
        columns += (columns.empty() ? "" : ", ") + std::string(attribute.column);
    return columns;
}

QJsonObject elasticAsJSON(const kelo::SavedElastic &elastic)
{
    QJsonObject object;
    for (const ElasticAttribute &attribute : elasticAttributes()) {
        const std::optional<long> value = elastic.*attribute.value;
        object[QLatin1String(attribute.name)] =
            value ? QJsonValue(static_cast<qint64>(*value)) : QJsonValue(QJsonValue::Null);
    }
    QJsonArray sequence;
    for (const std::string &key : elastic.bracketSequence)
        sequence.append(QString::fromStdString(key));
    object[QLatin1String("bracketSequence")] = sequence;
    return object;
}

} // namespace viewer
