#include "keloOpenGL/editing/ElasticPlacement.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kelo;

namespace {

using Sequence = std::vector<std::string>;

ElasticPlacement begunOn(const std::string &name)
{
    return {{name}};
}

PlacementStep click(ElasticPlacement &placement, const std::string &name)
{
    const PlacementStep step = placement.stepForClickOn(name);
    placement.take(step, name);
    return step;
}

TEST(ElasticPlacement, aMemberThatIsNeitherFirstNorLastIsAdded)
{
    auto placement = begunOn("A");
    EXPECT_EQ(click(placement, "B"), PlacementStep::Add);
    EXPECT_EQ(placement.sequence, (Sequence{"A", "B"}));
}

TEST(ElasticPlacement, aSecondClickOnTheNewestTakesItBack)
{
    auto placement = begunOn("A");
    click(placement, "B");
    click(placement, "C");
    EXPECT_EQ(click(placement, "C"), PlacementStep::TakeBack);
    EXPECT_EQ(placement.sequence, (Sequence{"A", "B"}));
    EXPECT_EQ(placement.stepForClickOn("A"), PlacementStep::Close);
}

TEST(ElasticPlacement, theFirstMemberClosesTheBand)
{
    auto placement = begunOn("A");
    EXPECT_EQ(placement.stepForClickOn("A"), PlacementStep::Close) << "with nothing else added";
    click(placement, "B");
    EXPECT_EQ(click(placement, "A"), PlacementStep::Close);
    EXPECT_EQ(placement.sequence, (Sequence{"A", "B"}));
}

TEST(ElasticPlacement, afterTakingBackToTheFirstAnotherClickOnItCloses)
{
    auto placement = begunOn("A");
    click(placement, "B");
    click(placement, "B");
    EXPECT_EQ(placement.sequence, Sequence{"A"});
    EXPECT_EQ(placement.stepForClickOn("A"), PlacementStep::Close);
    EXPECT_EQ(placement.stepForClickOn("B"), PlacementStep::Add);
}

TEST(ElasticPlacement, aMemberMayBePassedAgainLaterButNeverTwiceInARow)
{
    auto placement = begunOn("A");
    for (const char *name : {"B", "C", "B"})
        EXPECT_EQ(click(placement, name), PlacementStep::Add);
    EXPECT_EQ(placement.sequence, (Sequence{"A", "B", "C", "B"}));
    EXPECT_EQ(click(placement, "B"), PlacementStep::TakeBack);
    EXPECT_EQ(placement.sequence, (Sequence{"A", "B", "C"}));
}

TEST(ElasticPlacement, noClicksLeaveTheBandEmptyOrWithTheSameMemberTwiceInARow)
{
    // Every row of seven clicks on four members that does not close the band.
    constexpr int rows = 3 * 3 * 3 * 3 * 3 * 3 * 3;
    const std::string others[] = {"B", "C", "D"};
    for (int row = 0; row < rows; ++row) {
        auto placement = begunOn("A");
        for (int rest = row, count = 0; count < 7; rest /= 3, ++count) {
            ASSERT_NE(click(placement, others[rest % 3]), PlacementStep::Close);
            ASSERT_FALSE(placement.sequence.empty()) << row;
            ASSERT_EQ(placement.sequence.front(), "A") << row;
            ASSERT_EQ(std::adjacent_find(placement.sequence.begin(), placement.sequence.end()),
                      placement.sequence.end())
                << row;
        }
    }
}

} // namespace
