#include "keloModel/Catalogue.h"
#include "keloModel/QKTypeManager.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>

#include <cmath>
#include <set>

using namespace kelo;

namespace {

/// A catalogue of one record a kind, each replaced where a test names it.
QByteArray text(const QByteArray &colors, const QByteArray &sizes, const QByteArray &configs)
{
    return "{\"bracketColorTypes\": [" + colors + "], \"elasticsSizeTypes\": [" + sizes +
           "], \"elasticsConfigTypes\": [" + configs + "]}";
}

const QByteArray color = R"({"typeID": 4, "typeLabel": "Light blue", "displayOrder": 10,
                             "bracketColor": [0.53, 0.81, 0.98, 1.0]})";
const QByteArray size = R"({"typeID": 3, "typeLabel": "1/4\" 3.5 oz", "displayOrder": 3,
                            "elasticsColor": [0.9, 0.4, 0.1, 1.0]})";
const QByteArray config = R"({"typeID": 1, "typeLabel": "Class II right", "displayOrder": 1,
                              "elasticsSizeTypeID": 3, "bracketSequence": "6,30"})";

QByteArray defaultCatalogueText()
{
    QFile file(QStringLiteral(KELO_CATALOGUE_FILE));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(CatalogueJSON, aCatalogueIsReadRecordByRecord)
{
    const CatalogueReading reading = catalogueFromJSON(text(color, size, config));
    ASSERT_TRUE(reading.catalogue) << reading.problems.front();
    const auto blue = reading.catalogue->bracketColorType(4);
    ASSERT_TRUE(blue);
    EXPECT_EQ(blue->typeLabel, "Light blue");
    EXPECT_EQ(blue->displayOrder, 10);
    EXPECT_EQ(blue->bracketColor, (std::array{0.53, 0.81, 0.98, 1.0}));
    EXPECT_EQ(reading.catalogue->elasticsSizeType(3)->typeLabel, "1/4\" 3.5 oz");
    const auto classII = reading.catalogue->elasticsConfigType(1);
    EXPECT_EQ(classII->elasticsSizeTypeID, 3);
    EXPECT_EQ(classII->bracketSequence, "6,30");
    EXPECT_TRUE(classII->hasAssociatedSequence());
    EXPECT_FALSE(reading.catalogue->bracketColorType(5));
}

TEST(CatalogueJSON, aConfigurationWithAnEmptySequenceHasNoAssociatedSequence)
{
    const CatalogueReading reading = catalogueFromJSON(
        text(color, size, R"({"typeID": 1, "typeLabel": "Free", "bracketSequence": ""})"));
    ASSERT_TRUE(reading.catalogue);
    EXPECT_FALSE(reading.catalogue->elasticsConfigType(1)->hasAssociatedSequence());
    EXPECT_EQ(reading.catalogue->elasticsConfigType(1)->elasticsSizeTypeID, 0);
}

struct CatalogueProblem
{
    const char *name;
    QByteArray text;
    const char *problem;
};
const CatalogueProblem catalogueProblems[] = {
    {"no list", R"({"bracketColorTypes": [], "elasticsSizeTypes": []})",
     "elasticsConfigTypes: the list is missing"},
    {"a list that is none", R"({"bracketColorTypes": 1, "elasticsSizeTypes": [],
                                    "elasticsConfigTypes": []})",
     "bracketColorTypes: must be a list"},
    {"not an object", "[]", "must be an object"},
    {"broken text", "{\n\n  \"bracketColorTypes\": [,]\n}", "line 3: illegal value"},
    {"a record that is none", text("7", size, config), "bracketColorTypes[0]: must be an object"},
    {"no identifier", text(R"({"typeLabel": "x", "bracketColor": [0, 0, 0, 1]})", size, config),
     "bracketColorTypes[0].typeID: the identifier is missing"},
    {"an identifier of the wrong type",
     text(R"({"typeID": "4", "typeLabel": "x", "bracketColor": [0, 0, 0, 1]})", size, config),
     "bracketColorTypes[0].typeID: must be a whole number above 0"},
    {"an identifier with a fraction",
     text(R"({"typeID": 4.5, "typeLabel": "x", "bracketColor": [0, 0, 0, 1]})", size, config),
     "bracketColorTypes[0].typeID: must be a whole number above 0"},
    {"a duplicate identifier", text(color + "," + color, size, config),
     "bracketColorTypes[1].typeID: 4 stands at bracketColorTypes[0] already"},
    {"the identifier of no colour",
     text(R"({"typeID": 4999, "typeLabel": "x", "bracketColor": [0, 0, 0, 1]})", size, config),
     "bracketColorTypes[0].typeID: 4999 stands for a bracket without colour"},
    {"an empty label",
     text(R"({"typeID": 4, "typeLabel": " ", "bracketColor": [0, 0, 0, 1]})", size, config),
     "bracketColorTypes[0].typeLabel: must be a text that is not empty"},
    {"a colour of three",
     text(R"({"typeID": 4, "typeLabel": "x", "bracketColor": [0, 0, 0]})", size, config),
     "bracketColorTypes[0].bracketColor: must be four numbers from 0 to 1: red, green, blue, "
     "alpha"},
    {"a colour beyond 1",
     text(color, R"({"typeID": 3, "typeLabel": "x", "elasticsColor": [0, 0, 255, 1]})", config),
     "elasticsSizeTypes[0].elasticsColor: must be four numbers from 0 to 1: red, green, blue, "
     "alpha"},
    {"a display order of the wrong type",
     text(R"({"typeID": 4, "typeLabel": "x", "displayOrder": "1", "bracketColor": [0,0,0,1]})",
          size, config),
     "bracketColorTypes[0].displayOrder: must be a whole number"},
    {"a misspelt member",
     text(R"({"typeID": 4, "typeLabel": "x", "bracketColour": 1, "bracketColor": [0,0,0,1]})", size,
          config),
     "bracketColorTypes[0].bracketColour: there is no such member"},
    {"an unknown key",
     text(color, size, R"({"typeID": 1, "typeLabel": "x", "bracketSequence": "6,40"})"),
     "elasticsConfigTypes[0].bracketSequence: '40' is no tooth or button"},
    {"a key with a blank",
     text(color, size, R"({"typeID": 1, "typeLabel": "x", "bracketSequence": "6, 30"})"),
     "elasticsConfigTypes[0].bracketSequence: ' 30' is no tooth or button"},
    {"a comma too many",
     text(color, size, R"({"typeID": 1, "typeLabel": "x", "bracketSequence": "6,30,"})"),
     "elasticsConfigTypes[0].bracketSequence: '' is no tooth or button"},
    {"a band of one",
     text(color, size, R"({"typeID": 1, "typeLabel": "x", "bracketSequence": "6"})"),
     "elasticsConfigTypes[0].bracketSequence: a band needs two brackets or buttons"},
    {"a size that is none",
     text(color, size,
          R"({"typeID": 1, "typeLabel": "x", "elasticsSizeTypeID": 9, "bracketSequence": ""})"),
     "elasticsConfigTypes[0].elasticsSizeTypeID: 9 is the identifier of no size"},
};

TEST(CatalogueJSON, everyProblemIsNamedWithItsPlaceAndNothingIsTaken)
{
    for (const CatalogueProblem &row : catalogueProblems) {
        const CatalogueReading reading = catalogueFromJSON(row.text);
        EXPECT_FALSE(reading.catalogue) << row.name;
        ASSERT_EQ(reading.problems.size(), 1u) << row.name;
        EXPECT_EQ(reading.problems.front(), row.problem) << row.name;
    }
}

TEST(CatalogueJSON, allProblemsAreNamedAtOnce)
{
    const CatalogueReading reading = catalogueFromJSON(
        text(R"({"typeID": 0, "typeLabel": "", "bracketColor": 1})", size, config));
    EXPECT_EQ(reading.problems.size(), 3u);
}

TEST(CatalogueJSON, aListThatIsLeftOutIsTheDefaultOne)
{
    const auto defaults = catalogueFromJSON(text(color, size, config)).catalogue;
    ASSERT_TRUE(defaults);
    const CatalogueReading reading =
        catalogueFromJSON(QByteArray(R"({"bracketColorTypes": []})"), &*defaults);
    ASSERT_TRUE(reading.catalogue);
    EXPECT_TRUE(reading.catalogue->bracketColorTypes.empty());
    EXPECT_TRUE(reading.catalogue->elasticsSizeType(3));
    EXPECT_TRUE(reading.catalogue->elasticsConfigType(1));
}

TEST(CatalogueJSON, whatIsWrittenReadsBackAsTheSame)
{
    const auto first = catalogueFromJSON(defaultCatalogueText()).catalogue;
    ASSERT_TRUE(first);
    const QByteArray written = catalogueAsJSON(*first);
    const auto second = catalogueFromJSON(written).catalogue;
    ASSERT_TRUE(second);
    EXPECT_EQ(catalogueAsJSON(*second), written);
    ASSERT_EQ(second->elasticsSizeTypes.size(), first->elasticsSizeTypes.size());
    for (std::size_t i = 0; i < first->elasticsSizeTypes.size(); ++i)
        EXPECT_EQ(second->elasticsSizeTypes[i]->elasticsColor,
                  first->elasticsSizeTypes[i]->elasticsColor);
}

TEST(CatalogueJSON, aRecordWithoutColourIsWrittenAndReadAsOne)
{
    Catalogue catalogue;
    catalogue.bracketColorTypes.push_back(std::make_shared<BracketColorType>());
    catalogue.bracketColorTypes[0]->typeID = 4;
    catalogue.bracketColorTypes[0]->typeLabel = "Clear";
    catalogue.elasticsSizeTypes.push_back(std::make_shared<ElasticsSizeType>());
    catalogue.elasticsSizeTypes[0]->typeID = 3;
    catalogue.elasticsSizeTypes[0]->typeLabel = "Any";
    const CatalogueReading reading = catalogueFromJSON(catalogueAsJSON(catalogue));
    ASSERT_TRUE(reading.catalogue) << reading.problems.front();
    EXPECT_EQ(reading.catalogue->bracketColorType(4)->bracketColor, std::nullopt);
    EXPECT_EQ(reading.catalogue->elasticsSizeType(3)->elasticsColor, std::nullopt);
    EXPECT_EQ(catalogueAsJSON(*reading.catalogue), catalogueAsJSON(catalogue));
}

TEST(CatalogueJSON, nullIsTakenForEveryMemberThatMayBeLeftOut)
{
    const CatalogueReading reading = catalogueFromJSON(
        text(color, size, R"({"typeID": 1, "typeLabel": "Free", "displayOrder": null, "name": null,
                              "elasticsSizeTypeID": null, "bracketSequence": null})"));
    ASSERT_TRUE(reading.catalogue) << reading.problems.front();
    const auto free = reading.catalogue->elasticsConfigType(1);
    EXPECT_EQ(free->displayOrder, 0);
    EXPECT_EQ(free->name, "");
    EXPECT_EQ(free->elasticsSizeTypeID, 0);
    EXPECT_EQ(free->bracketSequence, "");
}

TEST(CatalogueJSON, theDefaultCatalogueOffers29ColoursAnd6SizesIn4Forces)
{
    const CatalogueReading reading = catalogueFromJSON(defaultCatalogueText());
    ASSERT_TRUE(reading.catalogue) << reading.problems.front();
    const Catalogue &catalogue = *reading.catalogue;
    EXPECT_EQ(catalogue.bracketColorTypes.size(), 29u);
    EXPECT_EQ(catalogue.elasticsSizeTypes.size(), 24u);
    // Thirteen configurations, eleven of them on both sides.
    EXPECT_EQ(catalogue.elasticsConfigTypes.size(), 24u);
    std::set<std::string> labels;
    for (const auto &type : catalogue.elasticsSizeTypes)
        labels.insert(type->typeLabel);
    EXPECT_EQ(labels.size(), 24u);
    EXPECT_EQ(labels.count("1/4\" 3.5 oz"), 1u);
}

TEST(CatalogueJSON, noTwoDefaultSizesAreDrawnInTheSameColour)
{
    const auto catalogue = catalogueFromJSON(defaultCatalogueText()).catalogue;
    ASSERT_TRUE(catalogue);
    for (const auto &first : catalogue->elasticsSizeTypes) {
        for (const auto &second : catalogue->elasticsSizeTypes) {
            if (first == second) continue;
            double squared = 0.0;
            for (std::size_t i = 0; i < 3; ++i) {
                const double difference = (*first->elasticsColor)[i] - (*second->elasticsColor)[i];
                squared += difference * difference;
            }
            // A tenth of the colour cube's side: told apart side by side on a screen.
            EXPECT_GT(std::sqrt(squared), 0.1) << first->typeLabel << " and " << second->typeLabel;
        }
    }
}

TEST(CatalogueJSON, aCatalogueFillsTheTypeManager)
{
    const auto catalogue = catalogueFromJSON(text(color, size, config)).catalogue;
    ASSERT_TRUE(catalogue);
    QKTypeManager manager;
    manager.addInstance_ofType(std::make_shared<ElasticsSizeType>(), "ElasticsSizeType");
    catalogue->fill(manager);
    EXPECT_EQ(manager.instancesOfType("ElasticsSizeType").size(), 1u);
    EXPECT_EQ(manager.instanceForID_ofType(3, "ElasticsSizeType"), catalogue->elasticsSizeType(3));
    EXPECT_EQ(manager.instanceForID_ofType(4, "BracketColorType"), catalogue->bracketColorType(4));
    EXPECT_EQ(manager.instanceForID_ofType(1, "ElasticsConfigType"),
              catalogue->elasticsConfigType(1));
}
