#include "viewer/store/ElasticAttributes.h"

#include "viewer/store/ElasticMerge.h"

#include <QJsonArray>

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace viewer;
using kelo::SavedElastic;

TEST(ElasticAttributes, haveNamesAndColumnsOfTheirOwn)
{
    std::set<std::string> names, columns;
    for (const ElasticAttribute &attribute : elasticAttributes()) {
        EXPECT_TRUE(names.insert(attribute.name).second) << attribute.name;
        EXPECT_TRUE(columns.insert(attribute.column).second) << attribute.column;
    }
    EXPECT_EQ(elasticColumns(), "config_type_id, size_type_id");
}

TEST(ElasticAttributes, areWrittenAsNumbersAndNullWhereThereIsNone)
{
    const QJsonObject written = elasticAsJSON({7, std::nullopt, {"6", "28l"}});
    EXPECT_EQ(written, (QJsonObject{{"elasticsConfigTypeID", 7},
                                    {"elasticsSizeTypeID", QJsonValue::Null},
                                    {"bracketSequence", QJsonArray{"6", "28l"}}}));
}

TEST(ElasticAttributes, takeTheValuesThatTheCatalogueHas)
{
    kelo::Catalogue catalogue;
    catalogue.elasticsSizeTypes.push_back(std::make_shared<kelo::ElasticsSizeType>());
    catalogue.elasticsSizeTypes.front()->typeID = 6;
    catalogue.elasticsConfigTypes.push_back(std::make_shared<kelo::ElasticsConfigType>());
    catalogue.elasticsConfigTypes.front()->typeID = 7;
    const auto &attributes = elasticAttributes();
    ASSERT_EQ(attributes.size(), 2u);
    EXPECT_EQ(attributes[0].valuesIn(catalogue), std::set<long>{7});
    EXPECT_EQ(attributes[1].valuesIn(catalogue), std::set<long>{6});
}

TEST(ElasticAttributes, thatTwoProgramsChangeAreBothKept)
{
    const SavedElastic before{1, 1, {"6", "28"}};
    for (const ElasticAttribute &mine : elasticAttributes()) {
        for (const ElasticAttribute &theirs : elasticAttributes()) {
            if (mine.value == theirs.value) continue;
            SavedElastic changedByMe = before, changedByThem = before, both = before;
            changedByMe.*mine.value = both.*mine.value = 2;
            changedByThem.*theirs.value = both.*theirs.value = 3;
            EXPECT_EQ(mergedElastics({before}, {changedByMe}, {changedByThem}),
                      std::vector<SavedElastic>{both})
                << mine.name << " and " << theirs.name;
        }
    }
}

} // namespace
