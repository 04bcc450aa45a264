#include "document/UpdateAccumulation.h"

#include "tests/document/DocumentFixture.h"
#include "tests/support/TestClock.h"

namespace kelo {
namespace {

using test::TestClock;

class UpdateAccumulationTest : public testing::Test
{
protected:
    TestClock clock;
    int restedCount = 0;
    UpdateAccumulation updates{[this](Timer &) {
        updates.timerHasFired();
        ++restedCount;
    }};
};

TEST_F(UpdateAccumulationTest, theLatestChangeOfEachKeyWaits)
{
    EXPECT_TRUE(updates.note(updates.bracketVisibilities, "8", true));
    EXPECT_FALSE(updates.note(updates.bracketVisibilities, "8", false));
    EXPECT_EQ(updates.note(updates.bracketColorTypeIDs, "9", 5L), 5L);
    EXPECT_EQ(updates.bracketVisibilities, (NameKeyDictionary<bool>{{"8", false}}));
    EXPECT_EQ(updates.bracketColorTypeIDs, (NameKeyDictionary<long>{{"9", 5}}));
}

TEST_F(UpdateAccumulationTest, bracketsAndButtonsAreTold)
{
    EXPECT_FALSE(updates.hasBracketUpdates());
    updates.note(updates.buttonVisibilities, "8l", true);
    EXPECT_TRUE(updates.hasButtonUpdates());
    EXPECT_FALSE(updates.hasBracketUpdates());
    updates.note(updates.bracketColorTypeIDs, "8", 1L);
    EXPECT_TRUE(updates.hasBracketUpdates());
    updates.bracketColorTypeIDs.clear();
    updates.note(updates.bracketVisibilities, "8", true);
    EXPECT_TRUE(updates.hasBracketUpdates());
}

TEST_F(UpdateAccumulationTest, everyChangeStartsTheWaitingAnew)
{
    updates.note(updates.bracketVisibilities, "8", true);
    clock->advance(2.9);
    updates.note(updates.bracketVisibilities, "9", true);
    clock->advance(2.9);
    EXPECT_EQ(restedCount, 0);
    clock->advance(0.2);
    EXPECT_EQ(restedCount, 1);
    clock->advance(10.0);
    EXPECT_EQ(restedCount, 1);
}

TEST_F(UpdateAccumulationTest, theRestingTimeCountsFromTheNextChangeOn)
{
    updates.restingTime = 1.0;
    updates.note(updates.bracketVisibilities, "8", true);
    updates.restingTime = 5.0;
    clock->advance(1.1);
    EXPECT_EQ(restedCount, 1);
}

TEST_F(UpdateAccumulationTest, flushingCallsOnceAndOnlyWhereSomethingWaits)
{
    updates.flush();
    EXPECT_EQ(restedCount, 0);
    updates.note(updates.bracketVisibilities, "8", true);
    updates.flush();
    updates.flush();
    EXPECT_EQ(restedCount, 1);
    clock->advance(10.0);
    EXPECT_EQ(restedCount, 1);
}

TEST(UpdateAccumulationsEnd, callsNobody)
{
    const TestClock clock;
    int restedCount = 0;
    {
        UpdateAccumulation updates([&](Timer &) { ++restedCount; });
        updates.note(updates.buttonVisibilities, "8l", true);
    }
    clock->advance(10.0);
    EXPECT_EQ(restedCount, 0);
}

} // namespace
} // namespace kelo
