#include "platform/time/VirtualRunLoop.h"

#include "base/Assertion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

using namespace kelo;

namespace {

constexpr auto defaultMode = static_cast<RunLoopModes>(RunLoopMode::Default);

class RunLoopTest : public testing::Test
{
protected:
    Timer::Callback note(const std::string &name)
    {
        return [this, name](Timer &) { fired.push_back(name); };
    }
    Timer::Callback noteTime()
    {
        return [this](Timer &) { times.push_back(loop.currentTime()); };
    }

    VirtualRunLoop loop{100.0};
    std::vector<std::string> fired;
    std::vector<double> times;
};

} // namespace

TEST_F(RunLoopTest, timersFireInTheOrderOfTheirDueTime)
{
    loop.scheduledTimer(3.0, false, note("late"));
    loop.scheduledTimer(1.0, false, note("early"));
    loop.scheduledTimer(2.0, false, note("middle"));
    loop.advance(3.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"early", "middle", "late"}));
}

TEST_F(RunLoopTest, timersDueAtOneTimeFireInTheOrderOfScheduling)
{
    loop.scheduledTimer(1.0, false, note("first"));
    loop.scheduledTimer(1.0, false, note("second"));
    loop.scheduledTimer(1.0, false, note("third"));
    loop.advance(1.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"first", "second", "third"}));
}

TEST_F(RunLoopTest, aTimerFiresAtItsDueTimeAndNotBefore)
{
    loop.scheduledTimer(2.0, false, noteTime());
    loop.advance(1.9375);
    EXPECT_TRUE(times.empty());
    loop.advance(1.0);
    EXPECT_EQ(times, (std::vector<double>{102.0}));
    EXPECT_EQ(loop.currentTime(), 102.9375);
}

TEST_F(RunLoopTest, aRepeatingTimerFiresEveryIntervalExactly)
{
    loop.scheduledTimer(0.25, true, noteTime());
    loop.advance(1.0);
    EXPECT_EQ(times, (std::vector<double>{100.25, 100.5, 100.75, 101.0}));
}

TEST_F(RunLoopTest, aRepeatingTimerAlreadyKnowsItsNextFiringInsideTheCallback)
{
    double next = 0.0;
    loop.scheduledTimer(0.5, true, [&](Timer &timer) { next = timer.fireTime(); });
    loop.advance(0.5);
    EXPECT_EQ(next, 101.0);
}

TEST_F(RunLoopTest, aLateRepeatingTimerLeavesOutWhatItMissedAndKeepsItsPhase)
{
    const auto timer = loop.scheduledTimer(1.0, true, noteTime());
    loop.setTime(103.5);
    loop.advance(0.0);
    EXPECT_EQ(times, (std::vector<double>{103.5}));
    EXPECT_EQ(timer->fireTime(), 104.0);
    loop.advance(1.5);
    EXPECT_EQ(times, (std::vector<double>{103.5, 104.0, 105.0}));
}

TEST_F(RunLoopTest, aClockSetBackLeavesTheSteadyOneAndTheTimers)
{
    loop.scheduledTimer(1.0, false, note("fired"));
    loop.advance(0.5);
    loop.setTime(40.0);
    EXPECT_EQ(loop.currentTime(), 40.0);
    EXPECT_EQ(loop.steadyTime(), 100.5);
    loop.advance(0.25);
    EXPECT_TRUE(fired.empty());
    EXPECT_EQ(loop.currentTime(), 40.25);
    EXPECT_EQ(loop.steadyTime(), 100.75);
    loop.advance(0.25);
    EXPECT_EQ(fired.size(), 1u);
    loop.setTime(50.0);
    EXPECT_EQ(loop.currentTime(), 50.0);
    EXPECT_EQ(loop.steadyTime(), 110.5) << "forwards, the time has passed";
}

TEST_F(RunLoopTest, aNegativeIntervalCountsAsZero)
{
    const auto timer = loop.scheduledTimer(-5.0, false, note("fired"));
    EXPECT_EQ(timer->timeInterval(), 0.0);
    EXPECT_EQ(timer->fireTime(), 100.0);
    loop.advance(0.0);
    EXPECT_EQ(fired.size(), 1u);
}

TEST_F(RunLoopTest, anIntervalThatIsNotANumberIsAProgrammingError)
{
    try {
        loop.scheduledTimer(std::nan(""), false, {});
        FAIL() << "no failure";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(), "a timer's interval must be a number");
    }
}

TEST_F(RunLoopTest, aOneShotTimerIsInvalidInsideItsCallback)
{
    bool valid = true;
    loop.scheduledTimer(1.0, false, [&](Timer &timer) { valid = timer.isValid(); });
    loop.advance(1.0);
    EXPECT_FALSE(valid);
}

TEST_F(RunLoopTest, anInvalidatedTimerDoesNotFire)
{
    const auto timer = loop.scheduledTimer(1.0, true, note("fired"));
    timer->invalidate();
    timer->invalidate();
    EXPECT_FALSE(timer->isValid());
    loop.advance(5.0);
    EXPECT_TRUE(fired.empty());
}

TEST_F(RunLoopTest, aTimerMayInvalidateItselfInItsCallback)
{
    loop.scheduledTimer(1.0, true, [this](Timer &timer) {
        fired.push_back("fired");
        if (fired.size() == 2) timer.invalidate();
    });
    loop.advance(10.0);
    EXPECT_EQ(fired.size(), 2u);
}

TEST_F(RunLoopTest, aTimerInvalidatedByAnotherDueAtTheSameTimeDoesNotFire)
{
    std::shared_ptr<Timer> second;
    loop.scheduledTimer(1.0, false, [&](Timer &) { second->invalidate(); });
    second = loop.scheduledTimer(1.0, false, note("second"));
    loop.advance(2.0);
    EXPECT_TRUE(fired.empty());
}

TEST_F(RunLoopTest, invalidatingATimerLetsGoOfItsCallback)
{
    auto captured = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = captured;
    const auto timer = loop.scheduledTimer(1.0, true, [captured](Timer &) {});
    captured.reset();
    ASSERT_FALSE(watched.expired());
    timer->invalidate();
    EXPECT_TRUE(watched.expired());
}

TEST_F(RunLoopTest, theLoopKeepsAScheduledTimerAliveUntilItHasFired)
{
    const std::weak_ptr<Timer> timer = loop.scheduledTimer(1.0, false, note("fired"));
    EXPECT_FALSE(timer.expired());
    loop.advance(1.0);
    EXPECT_EQ(fired.size(), 1u);
    EXPECT_TRUE(timer.expired());
}

TEST_F(RunLoopTest, aCallbackMayDropTheLastReferenceToItsTimerAndItsOwner)
{
    struct Owner
    {
        std::shared_ptr<Timer> timer;
    };
    auto owner = std::make_shared<Owner>();
    const std::weak_ptr<Owner> watched = owner;
    owner->timer = std::make_shared<Timer>(1.0, true, [&](Timer &timer) {
        timer.invalidate();
        owner.reset();
        fired.push_back("fired");
    });
    // Fired by hand, so that no loop holds the timer.
    owner->timer->fire();
    EXPECT_EQ(fired.size(), 1u);
    EXPECT_TRUE(watched.expired());
}

TEST_F(RunLoopTest, firingAOneShotTimerByHandUsesItUp)
{
    const auto timer = loop.scheduledTimer(1.0, false, note("fired"));
    timer->fire();
    EXPECT_FALSE(timer->isValid());
    timer->fire();
    loop.advance(2.0);
    EXPECT_EQ(fired.size(), 1u);
}

TEST_F(RunLoopTest, firingARepeatingTimerByHandKeepsItsSchedule)
{
    const auto timer = loop.scheduledTimer(1.0, true, noteTime());
    loop.advance(0.5);
    timer->fire();
    EXPECT_EQ(timer->fireTime(), 101.0);
    loop.advance(0.5);
    EXPECT_EQ(times, (std::vector<double>{100.5, 101.0}));
}

TEST_F(RunLoopTest, aTimerDoesNotFireASecondTimeFromInsideItsCallback)
{
    int depth = 0;
    int deepest = 0;
    const auto timer = loop.scheduledTimer(1.0, true, [&](Timer &self) {
        deepest = std::max(deepest, ++depth);
        if (loop.currentTime() < 102.0) {
            self.fire();
            loop.advance(3.0); // as the event loop of an alert does
        }
        --depth;
    });
    loop.scheduledTimer(2.0, false, note("other"));
    loop.advance(1.0);
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(fired, (std::vector<std::string>{"other"})) << "others go on meanwhile";
    loop.advance(1.0);
    EXPECT_TRUE(timer->isValid());
}

TEST_F(RunLoopTest, aTimerFiresOnlyInTheModesThatItWasAddedIn)
{
    const auto both = std::make_shared<Timer>(1.0, true, note("both"));
    loop.addTimer(both, RunLoopMode::Default | RunLoopMode::EventTracking);
    loop.scheduledTimer(1.0, true, note("default only"));
    {
        const RunLoop::ModeScope tracking(loop, RunLoopMode::EventTracking);
        loop.advance(1.0);
        EXPECT_EQ(fired, (std::vector<std::string>{"both"}));
    }
    fired.clear();
    loop.advance(0.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"default only"})) << "late, but not lost";
}

TEST_F(RunLoopTest, aModeEndsWithItsScopeAndScopesMayEndInAnyOrder)
{
    EXPECT_EQ(loop.currentMode(), RunLoopMode::Default);
    auto tracking = std::make_unique<RunLoop::ModeScope>(loop, RunLoopMode::EventTracking);
    auto modal = std::make_unique<RunLoop::ModeScope>(loop, RunLoopMode::ModalPanel);
    EXPECT_EQ(loop.currentMode(), RunLoopMode::ModalPanel);
    tracking.reset();
    EXPECT_EQ(loop.currentMode(), RunLoopMode::ModalPanel);
    modal.reset();
    EXPECT_EQ(loop.currentMode(), RunLoopMode::Default);
}

TEST_F(RunLoopTest, aModeScopeMayOutliveItsLoop)
{
    auto ended = std::make_unique<VirtualRunLoop>();
    auto scope = std::make_unique<RunLoop::ModeScope>(*ended, RunLoopMode::ModalPanel);
    ended.reset();
    scope.reset();
    EXPECT_EQ(loop.currentMode(), RunLoopMode::Default);
}

TEST_F(RunLoopTest, addingATimerOnceMoreAddsTheModesAndKeepsTheSchedule)
{
    const auto timer = loop.scheduledTimer(1.0, false, noteTime());
    loop.advance(0.5);
    loop.addTimer(timer, RunLoopMode::EventTracking);
    const RunLoop::ModeScope tracking(loop, RunLoopMode::EventTracking);
    loop.advance(2.0);
    EXPECT_EQ(times, (std::vector<double>{101.0}));
}

TEST_F(RunLoopTest, anInvalidTimerIsNotAdded)
{
    const auto timer = std::make_shared<Timer>(1.0, false, note("fired"));
    timer->invalidate();
    loop.addTimer(timer, defaultMode);
    loop.advance(2.0);
    EXPECT_TRUE(fired.empty());
    EXPECT_EQ(timer.use_count(), 1);
}

TEST_F(RunLoopTest, aTimerThatWaitsOnAnotherLoopIsAProgrammingError)
{
    VirtualRunLoop other;
    const auto timer = other.scheduledTimer(1.0, false, {});
    try {
        loop.addTimer(timer, defaultMode);
        FAIL() << "no failure";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(), "a timer waits on one run loop only");
    }
}

TEST_F(RunLoopTest, whatACallbackSchedulesInsideTheSpanFiresInIt)
{
    loop.scheduledTimer(1.0, false,
                        [this](Timer &) { loop.scheduledTimer(0.5, false, noteTime()); });
    loop.advance(2.0);
    EXPECT_EQ(times, (std::vector<double>{101.5}));
}

TEST_F(RunLoopTest, whatACallbackSchedulesForNowFiresAfterEverythingThatWasDue)
{
    loop.scheduledTimer(1.0, false,
                        [this](Timer &) { loop.scheduledTimer(0.0, false, note("new")); });
    loop.scheduledTimer(1.0, false, note("old"));
    loop.advance(1.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"old", "new"}));
}

TEST_F(RunLoopTest, anEndlessChainAtOneInstantDoesNotHoldTheClock)
{
    int links = 0;
    std::function<void(Timer &)> chain = [&](Timer &) {
        ++links;
        loop.scheduledTimer(0.0, false, chain);
    };
    loop.scheduledTimer(0.0, false, chain);
    loop.scheduledTimer(0.5, false, noteTime());
    loop.advance(1.0);
    EXPECT_EQ(times, (std::vector<double>{100.5}));
    EXPECT_EQ(loop.currentTime(), 101.0);
    // At the start, at the other timer's due time and at the end of the span.
    EXPECT_EQ(links, 3 * VirtualRunLoop::passesPerInstant);
}

TEST_F(RunLoopTest, aTimerWithoutIntervalRepeatsEveryTenthOfAMillisecond)
{
    int count = 0;
    const auto timer = loop.scheduledTimer(0.0, true, [&](Timer &) { ++count; });
    EXPECT_EQ(timer->timeInterval(), 0.0001);
    loop.advance(0.00105);
    EXPECT_EQ(count, 10);
}

TEST_F(RunLoopTest, timeDoesNotRunBackwards)
{
    try {
        loop.advance(-0.001);
        FAIL() << "no failure";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(), "time does not run backwards");
    }
    EXPECT_THROW(loop.advance(std::nan("")), AssertionFailure);
    EXPECT_EQ(loop.currentTime(), 100.0);
}

TEST_F(RunLoopTest, aTaskRunsOnTheNextPassInAnyMode)
{
    const RunLoop::ModeScope modal(loop, RunLoopMode::ModalPanel);
    loop.performSoon([this] { fired.push_back("task"); });
    EXPECT_TRUE(fired.empty());
    loop.advance(0.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"task"}));
}

TEST_F(RunLoopTest, tasksRunInTheirOrderAfterTheTimersOfThePass)
{
    loop.performSoon([this] { fired.push_back("task 1"); });
    loop.performSoon([this] { fired.push_back("task 2"); });
    loop.scheduledTimer(0.0, false, note("timer"));
    loop.advance(0.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"timer", "task 1", "task 2"}));
}

TEST_F(RunLoopTest, whatATaskSchedulesWaitsForTheNextPass)
{
    loop.performSoon([this] {
        loop.performSoon([this] { fired.push_back("inner"); });
        loop.scheduledTimer(0.0, false, note("timer"));
    });
    loop.performSoon([this] { fired.push_back("outer"); });
    loop.advance(0.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"outer", "timer", "inner"}));
}

TEST_F(RunLoopTest, anIdleTaskWaitsUntilNothingElseIsDue)
{
    loop.performWhenIdle([this] { fired.push_back("idle"); });
    loop.performSoon([this] { loop.performSoon([this] { fired.push_back("second pass"); }); });
    loop.scheduledTimer(0.0, false, note("timer"));
    loop.advance(0.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"timer", "second pass", "idle"}));
}

TEST_F(RunLoopTest, anExceptionInATaskLosesNoOther)
{
    loop.performSoon([] { throw AssertionFailure("from a task"); });
    loop.performSoon([this] { fired.push_back("task"); });
    loop.scheduledTimer(1.0, false, note("timer"));
    EXPECT_THROW(loop.advance(0.0), AssertionFailure);
    loop.advance(1.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"task", "timer"}));
}

TEST_F(RunLoopTest, aLoopThatEndsInvalidatesItsTimersAndDropsItsTasks)
{
    auto ended = std::make_unique<VirtualRunLoop>();
    auto captured = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = captured;
    const auto timer = ended->scheduledTimer(1.0, true, [captured](Timer &) {});
    ended->performSoon([captured] {});
    captured.reset();
    ended.reset();
    EXPECT_FALSE(timer->isValid());
    EXPECT_TRUE(watched.expired());
    timer->invalidate();
    timer->fire();
}

TEST_F(RunLoopTest, aCallbackMayReplaceAndDestroyTheMainLoop)
{
    auto previous = RunLoop::setMain(std::make_unique<VirtualRunLoop>());
    auto &first = static_cast<VirtualRunLoop &>(RunLoop::main());
    std::shared_ptr<Timer> later;
    first.scheduledTimer(1.0, true, [&](Timer &) {
        RunLoop::setMain(std::make_unique<VirtualRunLoop>(50.0)).reset();
        fired.push_back("replaced");
    });
    later = first.scheduledTimer(1.0, false, note("later"));
    first.performSoon([] {});
    first.advance(5.0);
    EXPECT_EQ(fired, (std::vector<std::string>{"replaced"}));
    EXPECT_EQ(RunLoop::main().currentTime(), 50.0);
    EXPECT_FALSE(later->isValid());
    RunLoop::setMain(std::move(previous));
}

TEST_F(RunLoopTest, settingTheMainLoopGivesBackTheOneBefore)
{
    auto previous = RunLoop::setMain(std::make_unique<VirtualRunLoop>(7.0));
    const RunLoop *mine = &RunLoop::main();
    const auto back = RunLoop::setMain(std::move(previous));
    EXPECT_EQ(back.get(), mine);
}
