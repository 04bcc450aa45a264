#include "platform/time/DelayedCall.h"

#include "tests/support/TestClock.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

using namespace kelo;

class DelayedCallTest : public testing::Test
{
protected:
    std::function<void()> count()
    {
        return [this] { ++calls; };
    }

    test::TestClock clock;
    int calls = 0;
};

TEST_F(DelayedCallTest, itIsMadeOnceAfterItsTime)
{
    DelayedCall call;
    EXPECT_FALSE(call.isPending());
    call.schedule(2.0, count());
    clock->advance(1.9);
    EXPECT_TRUE(call.isPending());
    EXPECT_EQ(calls, 0);
    clock->advance(10.0);
    EXPECT_FALSE(call.isPending());
    EXPECT_EQ(calls, 1);
}

TEST_F(DelayedCallTest, aNewOneWithdrawsTheOneThatIsPending)
{
    DelayedCall call;
    call.schedule(2.0, count());
    clock->advance(1.0);
    call.schedule(2.0, count());
    clock->advance(1.5);
    EXPECT_EQ(calls, 0);
    clock->advance(10.0);
    EXPECT_EQ(calls, 1);
}

TEST_F(DelayedCallTest, oneThatIsWithdrawnOrWhoseObjectEndsIsNotMade)
{
    DelayedCall withdrawn;
    withdrawn.schedule(1.0, count());
    withdrawn.withdraw();
    EXPECT_FALSE(withdrawn.isPending());
    {
        DelayedCall ended;
        ended.schedule(1.0, count());
    }
    clock->advance(10.0);
    EXPECT_EQ(calls, 0);
}

TEST_F(DelayedCallTest, itIsNotPendingWhileItIsMadeAndMayScheduleAnother)
{
    DelayedCall call;
    call.schedule(1.0, [&] {
        EXPECT_FALSE(call.isPending());
        call.schedule(1.0, count());
        EXPECT_TRUE(call.isPending());
    });
    clock->advance(1.5);
    EXPECT_TRUE(call.isPending());
    clock->advance(10.0);
    EXPECT_EQ(calls, 1);
}

TEST_F(DelayedCallTest, itMayEndItsObject)
{
    auto call = std::make_unique<DelayedCall>();
    call->schedule(1.0, [&] {
        call.reset();
        ++calls;
    });
    clock->advance(10.0);
    EXPECT_EQ(calls, 1);
}

} // namespace
