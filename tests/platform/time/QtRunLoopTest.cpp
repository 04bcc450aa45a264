#include "platform/time/QtRunLoop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <memory>
#include <vector>

using namespace kelo;

namespace {

/// Lets Qt's event loop run until `isDone` or ten seconds have passed.
template<class Condition>
bool runUntil(Condition &&isDone)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!isDone() && std::chrono::steady_clock::now() < deadline)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return isDone();
}

double systemTime()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace

TEST(QtRunLoop, itsClockIsTheSystemsSecondsSince1970)
{
    const QtRunLoop loop;
    const double before = systemTime();
    const double now = loop.currentTime();
    EXPECT_GE(now, before);
    EXPECT_LE(now, systemTime());
}

TEST(QtRunLoop, aTimerFiresThroughQtsEventLoopAndNeverEarly)
{
    QtRunLoop loop;
    const double start = loop.currentTime();
    double firedAt = 0.0;
    loop.scheduledTimer(0.02, false, [&](Timer &) { firedAt = loop.currentTime(); });
    ASSERT_TRUE(runUntil([&] { return firedAt > 0.0; }));
    EXPECT_GE(firedAt, start + 0.02);
}

TEST(QtRunLoop, aRepeatingTimerKeepsItsPhase)
{
    QtRunLoop loop;
    std::vector<double> phases;
    double first = 0.0;
    const auto timer = loop.scheduledTimer(0.005, true, [&](Timer &self) {
        if (phases.empty()) first = self.fireTime();
        phases.push_back((self.fireTime() - first) / 0.005);
    });
    ASSERT_TRUE(runUntil([&] { return phases.size() >= 5; }));
    for (const double phase : phases)
        EXPECT_NEAR(phase, std::round(phase), 1e-3) << "not a whole number of intervals";
}

TEST(QtRunLoop, tasksAndIdleTasksRunWithoutAnyTimer)
{
    QtRunLoop loop;
    std::vector<int> ran;
    loop.performWhenIdle([&] { ran.push_back(2); });
    loop.performSoon([&] { ran.push_back(1); });
    EXPECT_TRUE(ran.empty());
    ASSERT_TRUE(runUntil([&] { return ran.size() == 2; }));
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
}

TEST(QtRunLoop, otherTimersGoOnInANestedEventLoopOfACallback)
{
    QtRunLoop loop;
    bool otherFired = false;
    bool nestedLoopEnded = false;
    loop.scheduledTimer(0.0, false, [&](Timer &) {
        loop.scheduledTimer(0.005, false, [&](Timer &) { otherFired = true; });
        nestedLoopEnded = runUntil([&] { return otherFired; });
    });
    ASSERT_TRUE(runUntil([&] { return nestedLoopEnded; }));
    EXPECT_TRUE(otherFired);
}

TEST(QtRunLoop, aTimerThatFiredIntoANestedEventLoopFiresAgainAfterIt)
{
    QtRunLoop loop;
    int count = 0;
    const auto timer = loop.scheduledTimer(0.002, true, [&](Timer &) {
        if (++count > 1) return;
        QEventLoop nested;
        QTimer::singleShot(20, &nested, &QEventLoop::quit); // ten times the timer's interval
        nested.exec();
        EXPECT_EQ(count, 1) << "fired inside its own callback";
    });
    EXPECT_TRUE(runUntil([&] { return count >= 3; }));
}

TEST(QtRunLoop, aTimerOfAnotherModeWaitsWithoutKeepingTheLoopBusy)
{
    QtRunLoop loop;
    bool fired = false;
    bool ended = false;
    {
        const RunLoop::ModeScope tracking(loop, RunLoopMode::EventTracking);
        loop.scheduledTimer(0.0, false, [&](Timer &) { fired = true; });
        QTimer::singleShot(20, [&] { ended = true; }); // the timer is due at once
        ASSERT_TRUE(runUntil([&] { return ended; }));
        EXPECT_FALSE(fired);
    }
    EXPECT_TRUE(runUntil([&] { return fired; })) << "the end of the mode wakes the loop";
}

TEST(QtRunLoop, timersKeepTheirRemainingTimeWhenTheClockIsSet)
{
    double wall = 1000.0;
    double steady = 5.0;
    QtRunLoop loop({[&] { return wall; }, [&] { return steady; }});
    bool waiting = false;
    const auto timer = loop.scheduledTimer(3.0, false, [](Timer &) {});
    loop.performSoon([&] { waiting = true; });
    wall += 3601.0; // an hour ahead, and one second passed
    steady += 1.0;
    ASSERT_TRUE(runUntil([&] { return waiting; }));
    EXPECT_TRUE(timer->isValid()) << "two of its three seconds are left";
    EXPECT_EQ(timer->fireTime(), 5.0 + 3.0);
    wall += 2.0;
    steady += 2.0;
    loop.performSoon([] {});
    EXPECT_TRUE(runUntil([&] { return !timer->isValid(); }));
}

TEST(QtRunLoop, aTimerThatIsAddedAfterTheClockWasSetBackHoldsNoOtherOneUp)
{
    const auto steady = [] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    };
    double wall = 1000.0;
    QtRunLoop loop({[&] { return wall; }, steady});
    bool fired = false;
    loop.scheduledTimer(0.02, false, [&](Timer &) { fired = true; });
    wall -= 3600.0;
    const auto later = loop.scheduledTimer(3600.0, false, [](Timer &) {});
    const double start = steady();
    ASSERT_TRUE(runUntil([&] { return fired; }));
    EXPECT_LT(steady() - start, 5.0) << "not an hour, nor when the later one fires";
    later->invalidate();
}

TEST(QtRunLoop, itsSteadyClockIsTheOneThatNobodySets)
{
    const QtRunLoop loop({[] { return 1000.0; }, [] { return 5.0; }});
    EXPECT_EQ(loop.currentTime(), 1000.0);
    EXPECT_EQ(loop.steadyTime(), 5.0);
    const QtRunLoop real;
    const double before = real.steadyTime();
    EXPECT_GE(real.steadyTime(), before);
}

TEST(QtRunLoop, aCallbackMayDestroyTheLoop)
{
    auto loop = std::make_unique<QtRunLoop>();
    loop->performSoon([&] { loop.reset(); });
    EXPECT_TRUE(runUntil([&] { return loop == nullptr; }));
}

TEST(QtRunLoop, theMainLoopOfAnApplicationIsOneOfThese)
{
    EXPECT_NE(dynamic_cast<QtRunLoop *>(&RunLoop::main()), nullptr);
}
