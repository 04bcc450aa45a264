#include "keloOpenGL/view/AnimationClock.h"

#include "platform/time/VirtualRunLoop.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using namespace kelo;

namespace {

class AnimationClocks : public testing::Test
{
protected:
    AnimationClocks()
    {
        auto virtualLoop = std::make_unique<VirtualRunLoop>(1000.0);
        loop = virtualLoop.get();
        previousLoop = RunLoop::setMain(std::move(virtualLoop));
    }
    ~AnimationClocks() override { RunLoop::setMain(std::move(previousLoop)); }

    void startCounting()
    {
        clock->start([this](Timer &) { ++ticks; });
    }

    VirtualRunLoop *loop = nullptr;
    std::unique_ptr<AnimationClock> clock = std::make_unique<AnimationClock>();
    int ticks = 0;

private:
    std::unique_ptr<RunLoop> previousLoop;
};

} // namespace

TEST_F(AnimationClocks, tickSixtyTimesASecondUntilTheyAreStopped)
{
    EXPECT_FALSE(clock->isRunning());
    startCounting();
    EXPECT_TRUE(clock->isRunning());
    loop->advance(0.99);
    EXPECT_EQ(ticks, 59);
    clock->stop();
    EXPECT_FALSE(clock->isRunning());
    loop->advance(1.0);
    EXPECT_EQ(ticks, 59);
}

TEST_F(AnimationClocks, haveOneTimerHoweverOftenTheyAreStarted)
{
    startCounting();
    startCounting();
    loop->advance(0.05);
    EXPECT_EQ(ticks, 2);
}

TEST_F(AnimationClocks, tickWhileAMouseButtonIsHeld)
{
    startCounting();
    const RunLoop::ModeScope tracking(*loop, RunLoopMode::EventTracking);
    loop->advance(0.05);
    EXPECT_EQ(ticks, 2);
}

TEST_F(AnimationClocks, mayBeStoppedByTheirOwnTick)
{
    clock->start([this](Timer &) {
        ++ticks;
        clock->stop();
    });
    loop->advance(1.0);
    EXPECT_EQ(ticks, 1);
}

TEST_F(AnimationClocks, doNotOutliveThemselves)
{
    startCounting();
    clock.reset();
    loop->advance(1.0);
    EXPECT_EQ(ticks, 0);
}

TEST_F(AnimationClocks, measureByAClockThatNobodySets)
{
    clock->noteStart();
    clock->noteTick();
    EXPECT_EQ(clock->tickTime(), 1000.0);
    loop->advance(2.5);
    loop->setTime(900.0);
    EXPECT_EQ(clock->timeSinceTick(), 2.5);
    EXPECT_EQ(clock->elapsedTime(), 2.5);
    EXPECT_EQ(clock->tickTime(), 1000.0) << "as it was noted";
    clock->noteTick();
    EXPECT_EQ(clock->tickTime(), 900.0);
    EXPECT_EQ(clock->timeSinceTick(), 0.0);
    EXPECT_EQ(clock->elapsedTime(), 2.5);
}

TEST_F(AnimationClocks, neverMeasureLessThanNothing)
{
    loop->advance(50.0);
    clock->noteTick();
    const auto old = RunLoop::setMain(std::make_unique<VirtualRunLoop>(1000.0));
    EXPECT_EQ(clock->timeSinceTick(), 0.0) << "the new loop's clock begins earlier";
}
