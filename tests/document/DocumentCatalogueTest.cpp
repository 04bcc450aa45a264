#include "document/DocumentCatalogue.h"

#include "keloModel/QKTypeManager.h"
#include "platform/settings/ResourceBundle.h"
#include "tests/document/DocumentFixture.h"

#include <QTemporaryDir>

#include <fstream>

namespace kelo {
namespace {

/// Leaves the type manager as other tests expect it: empty.
class DocumentCatalogue : public test::DocumentFixture
{
protected:
    ~DocumentCatalogue() override
    {
        QKTypeManager::typeManager().removeAllInstances();
        ResourceBundle::setSearchFolder("");
    }

    static Catalogue oneOfEach()
    {
        Catalogue catalogue;
        catalogue.bracketColorTypes.push_back(std::make_shared<BracketColorType>());
        catalogue.bracketColorTypes.front()->typeID = 5;
        catalogue.elasticsSizeTypes.push_back(std::make_shared<ElasticsSizeType>());
        catalogue.elasticsSizeTypes.front()->typeID = 6;
        catalogue.elasticsConfigTypes.push_back(std::make_shared<ElasticsConfigType>());
        catalogue.elasticsConfigTypes.front()->typeID = 7;
        return catalogue;
    }
};

TEST_F(DocumentCatalogue, setInOneCallIsOfferedAndFoundByMenus)
{
    const Catalogue catalogue = oneOfEach();
    setCatalogue(*document, catalogue);
    EXPECT_EQ(document->availableBracketColorTypes(),
              (DXDocumentModel::BracketColorTypes{{5, catalogue.bracketColorTypes.front()}}));
    EXPECT_EQ(document->availableElasticsSizeTypes(),
              (DXDocumentModel::ElasticsSizeTypes{{6, catalogue.elasticsSizeTypes.front()}}));
    EXPECT_EQ(document->availableElasticsConfigTypes(), catalogue.elasticsConfigTypes);
    EXPECT_EQ(QKTypeManager::typeManager().instanceForID_ofType(6, "ElasticsSizeType"),
              catalogue.elasticsSizeTypes.front());
}

TEST_F(DocumentCatalogue, offeredOnlyLeavesTheTypeManagerAlone)
{
    offerCatalogue(*document, oneOfEach());
    EXPECT_EQ(document->availableElasticsSizeTypes().size(), 1u);
    EXPECT_FALSE(QKTypeManager::typeManager().instanceForID_ofType(6, "ElasticsSizeType"));
}

TEST_F(DocumentCatalogue, ofTheLibraryHasAllThreeLists)
{
    const CatalogueReading reading = standardCatalogue();
    ASSERT_TRUE(reading.catalogue) << reading.problems.front();
    EXPECT_FALSE(reading.catalogue->bracketColorTypes.empty());
    EXPECT_FALSE(reading.catalogue->elasticsSizeTypes.empty());
    EXPECT_FALSE(reading.catalogue->elasticsConfigTypes.empty());
}

TEST_F(DocumentCatalogue, ofTheLibraryThatIsMissingOrDamagedIsTold)
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    std::ofstream(path + "/bundle-identifier") << "keloOpenGL\n";
    ResourceBundle::setSearchFolder(path);
    const CatalogueReading missing = standardCatalogue();
    EXPECT_FALSE(missing.catalogue);
    EXPECT_EQ(missing.problems,
              std::vector<std::string>{"The resources of the library could not be found."});

    std::ofstream(path + "/catalogue.json") << "{\"bracketColorTypes\": []}";
    const CatalogueReading damaged = standardCatalogue();
    EXPECT_FALSE(damaged.catalogue);
    ASSERT_FALSE(damaged.problems.empty());
    EXPECT_EQ(damaged.problems.front().rfind(path + "/catalogue.json: ", 0), 0u)
        << damaged.problems.front();
}

} // namespace
} // namespace kelo
