#include "platform/time/DelayedCall.h"

#include "platform/time/VirtualRunLoop.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

using namespace kelo;

class DelayedCallTest : public testing::Test
{
protected:
    DelayedCallTest()
    {
        auto virtualLoop = std::make_unique<VirtualRunLoop>();
        loop = virtualLoop.get();
        previousLoop = RunLoop::setMain(std::move(virtualLoop));
    }
    ~DelayedCallTest() override
    {
        if (previousLoop) RunLoop::setMain(std::move(previousLoop));
    }
    std::function<void()> count()
    {
        return [this] { ++calls; };
    }

    VirtualRunLoop *loop = nullptr;
    std::unique_ptr<RunLoop> previousLoop;
    int calls = 0;
};

TEST_F(DelayedCallTest, itIsMadeOnceAfterItsTime)
{
    DelayedCall call;
    EXPECT_FALSE(call.isPending());
    call.schedule(2.0, count());
    loop->advance(1.9);
    EXPECT_TRUE(call.isPending());
    EXPECT_EQ(calls, 0);
    loop->advance(10.0);
    EXPECT_FALSE(call.isPending());
    EXPECT_EQ(calls, 1);
}

TEST_F(DelayedCallTest, aNewOneWithdrawsTheOneThatIsPending)
{
    DelayedCall call;
    call.schedule(2.0, count());
    loop->advance(1.0);
    call.schedule(2.0, count());
    loop->advance(1.5);
    EXPECT_EQ(calls, 0);
    loop->advance(10.0);
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
    loop->advance(10.0);
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
    loop->advance(1.5);
    EXPECT_TRUE(call.isPending());
    loop->advance(10.0);
    EXPECT_EQ(calls, 1);
}

TEST_F(DelayedCallTest, itMayEndItsObject)
{
    auto call = std::make_unique<DelayedCall>();
    call->schedule(1.0, [&] {
        call.reset();
        ++calls;
    });
    loop->advance(10.0);
    EXPECT_EQ(calls, 1);
}

} // namespace
