#include "document/ElasticList.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

using Keys = std::vector<std::string>;

std::shared_ptr<ElasticModel> elasticOver(const Keys &keys)
{
    return std::make_shared<ElasticModel>(nullptr, nullptr, keys);
}

TEST(ElasticLists, areMadeFromElasticsAndDictionariesOnly)
{
    const auto elastic = elasticOver({"6", "28"});
    const auto size = std::make_shared<ElasticsSizeType>();
    const ElasticList list = elasticsFromElements(
        {elastic, std::string("a text"), ElasticModelDictionary{nullptr, size, Keys{"8", "25"}},
         std::monostate(), std::shared_ptr<ElasticModel>(), ElasticModelDictionary()});
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0], elastic);
    EXPECT_EQ(list[1]->elasticsSizeType(), size);
    EXPECT_EQ(list[1]->bracketSequence(), (Keys{"8", "25"}));
    EXPECT_EQ(list[2]->bracketSequence(), Keys());
}

TEST(ElasticLists, findAnElasticItselfAndByItsIdentifier)
{
    const auto first = elasticOver({"6", "28"}), equal = elasticOver({"6", "28"});
    const ElasticList list{nullptr, first};
    EXPECT_TRUE(contains(list, first));
    EXPECT_FALSE(contains(list, equal));
    EXPECT_FALSE(contains(list, nullptr));
    EXPECT_EQ(elasticForUniqueID(list, first->uniqueID()), first);
    EXPECT_EQ(elasticForUniqueID(list, equal->uniqueID()), nullptr);
    EXPECT_EQ(withoutNulls(list), ElasticList{first});
}

TEST(ElasticLists, loseAKeyInEveryElastic)
{
    const auto three = elasticOver({"6", "8", "28"}), other = elasticOver({"11", "22"});
    const auto two = elasticOver({"8", "25"}), twice = elasticOver({"8", "6", "8", "27"});
    ElasticList list{three, other, two, twice};
    EXPECT_TRUE(removeKey(list, "8"));
    EXPECT_EQ(list, (ElasticList{three, other, twice}));
    EXPECT_EQ(three->bracketSequence(), (Keys{"6", "28"}));
    EXPECT_EQ(twice->bracketSequence(), (Keys{"6", "27"}));
    EXPECT_EQ(two->bracketSequence(), (Keys{"8", "25"})) << "what is removed stays as it was";
    EXPECT_FALSE(removeKey(list, "8"));
}

TEST(ElasticLists, loseAnElasticThatIsLeftOnOneTooth)
{
    ElasticList list{elasticOver({"8", "8l", "25"})};
    EXPECT_TRUE(removeKey(list, "25"));
    EXPECT_EQ(list, ElasticList());
}

TEST(ElasticLists, loseAKeyInAnElasticThatIsPlacedTwice)
{
    const auto elastic = elasticOver({"6", "8", "28"});
    ElasticList list{elastic, elastic};
    EXPECT_TRUE(removeKey(list, "8"));
    EXPECT_EQ(list, (ElasticList{elastic, elastic}));
    EXPECT_TRUE(removeKey(list, "6"));
    EXPECT_EQ(list, ElasticList());
}

} // namespace
} // namespace kelo
