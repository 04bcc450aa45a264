#include "document/DocumentCatalogue.h"

#include "document/DXDocumentModel.h"
#include "keloModel/QKTypeManager.h"
#include "models/BundleKey.h"
#include "platform/settings/ResourceBundle.h"

#include <QByteArray>
#include <QFile>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {
namespace {

template<class Type>
std::map<long, std::shared_ptr<Type>> byTypeID(const std::vector<std::shared_ptr<Type>> &records)
{
    std::map<long, std::shared_ptr<Type>> dictionary;
    for (const auto &record : records)
        dictionary[record->typeID] = record;
    return dictionary;
}

} // namespace

CatalogueReading standardCatalogue()
{
    const auto bundle = ResourceBundle::bundleWithIdentifier(keloOpenGLBundleKey);
    const auto path = bundle ? bundle->pathForResource_ofType("catalogue", "json") : std::nullopt;
    QFile file(QFile::decodeName(path.value_or("").c_str()));
    if (!path || !file.open(QIODevice::ReadOnly))
        return {std::nullopt, {"The resources of the library could not be found."}};
    CatalogueReading reading = catalogueFromJSON(file.readAll());
    for (std::string &problem : reading.problems)
        problem = *path + ": " + problem;
    return reading;
}

void setCatalogue(DXDocumentModel &document, const Catalogue &catalogue)
{
    offerCatalogue(document, catalogue);
    catalogue.fill(QKTypeManager::typeManager());
}

void offerCatalogue(DXDocumentModel &document, const Catalogue &catalogue)
{
    document.setAvailableBracketColorTypes(byTypeID(catalogue.bracketColorTypes));
    document.setAvailableElasticsSizeTypes(byTypeID(catalogue.elasticsSizeTypes));
    document.setAvailableElasticsConfigTypes(catalogue.elasticsConfigTypes);
}

} // namespace kelo
