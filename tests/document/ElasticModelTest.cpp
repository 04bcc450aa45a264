#include "document/ElasticModel.h"

#include "keloModel/QKTypeManager.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kelo {
namespace {

using Keys = std::vector<std::string>;

std::shared_ptr<ElasticsConfigType> configuration(long sizeTypeID, const std::string &sequence)
{
    const auto made = std::make_shared<ElasticsConfigType>();
    made->elasticsSizeTypeID = sizeTypeID;
    made->bracketSequence = sequence;
    return made;
}

/// The death test's fresh process is where the process's counter is at its start.
TEST(ElasticModelDeathTest, theFirstElasticOfAProcessHasIdentifier0AndTheNext1)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            const ElasticModel first(nullptr, nullptr, {});
            const ElasticModel second(nullptr, nullptr, {});
            std::exit(first.uniqueID() == 0 && second.uniqueID() == 1 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ElasticModel, everyElasticTakesTheNextIdentifier)
{
    const std::uint32_t next = ElasticModel::nextUniqueID();
    const ElasticModel elastic(nullptr, nullptr, {});
    EXPECT_EQ(elastic.uniqueID(), next);
    EXPECT_EQ(ElasticModel::nextUniqueID(), next + 1);
}

TEST(ElasticModel, aConfigurationGivesItsSizeAndItsSequenceSplitAtTheCommas)
{
    const auto size = std::make_shared<ElasticsSizeType>();
    size->typeID = 3;
    QKTypeManager::typeManager().addInstance_ofType(size, "ElasticsSizeType");
    const auto named = configuration(3, "3l,30, 6");
    const auto elastic = ElasticModel::elasticModelWithElasticsConfigType(named);
    EXPECT_EQ(elastic->elasticsConfigType(), named);
    EXPECT_EQ(elastic->elasticsSizeType(), size);
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"3l", "30", " 6"})) << "nothing is trimmed";
    QKTypeManager::typeManager().removeAllInstances();
}

TEST(ElasticModel, aConfigurationOfAnUnknownSizeGivesNoSize)
{
    EXPECT_EQ(ElasticModel::elasticModelWithElasticsConfigType(configuration(77, "6,30"))
                  ->elasticsSizeType(),
              nullptr);
}

TEST(ElasticModel, aSequenceIsSplitAtEveryComma)
{
    const auto members = [](const std::string &sequence) {
        return ElasticModel::elasticModelWithElasticsConfigType(configuration(0, sequence))
            ->bracketSequence();
    };
    EXPECT_EQ(members("8"), (Keys{"8"}));
    EXPECT_EQ(members("8,"), (Keys{"8", ""}));
    EXPECT_EQ(members(",8,,9"), (Keys{"", "8", "", "9"}));
    EXPECT_EQ(members(""), (Keys{""}));
}

TEST(ElasticModel, noConfigurationGivesAnElasticWithoutSizeAndMembers)
{
    const auto elastic = ElasticModel::elasticModelWithElasticsConfigType(nullptr);
    ASSERT_TRUE(elastic);
    EXPECT_EQ(elastic->elasticsConfigType(), nullptr);
    EXPECT_EQ(elastic->elasticsSizeType(), nullptr);
    EXPECT_TRUE(elastic->bracketSequence().empty());
}

TEST(ElasticModel, theSettersReplaceWhatTheElasticHolds)
{
    Keys sequence{"8", "9"};
    const auto elastic =
        ElasticModel::elasticModelWithElasticsConfigType_elasticsSizeType_bracketSequence(
            nullptr, nullptr, sequence);
    sequence.clear();
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "9"})) << "a copy of its own";
    const auto named = configuration(1, "6,30");
    const auto size = std::make_shared<ElasticsSizeType>();
    elastic->setElasticsConfigType(named);
    elastic->setElasticsSizeType(size);
    elastic->setBracketSequence({"10"});
    EXPECT_EQ(elastic->elasticsConfigType(), named);
    EXPECT_EQ(elastic->elasticsSizeType(), size);
    EXPECT_EQ(elastic->bracketSequence(), Keys{"10"});
}

} // namespace
} // namespace kelo
