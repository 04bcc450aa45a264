#pragma once

#include "platform/time/RunLoop.h"
#include "platform/time/VirtualRunLoop.h"

#include <QCoreApplication>

#include <memory>
#include <utility>

namespace kelo::test {

/// Replaces the main run loop for as long as it lives; afterwards the one before is back. Make it
/// the first member of a fixture, so that whatever uses the loop is gone before the loop is.
class MainRunLoop
{
public:
    /// Null for a loop on the real clock, which RunLoop::main() makes when it is first asked.
    explicit MainRunLoop(std::unique_ptr<RunLoop> loop)
        : previous_(RunLoop::setMain(std::move(loop)))
    {}
    ~MainRunLoop()
    {
        // Without an application there must be a loop: the one that main() would make needs Qt.
        if (previous_ || QCoreApplication::instance()) RunLoop::setMain(std::move(previous_));
    }
    MainRunLoop(const MainRunLoop &) = delete;
    MainRunLoop &operator=(const MainRunLoop &) = delete;

private:
    std::unique_ptr<RunLoop> previous_;
};

/// The clock of a test. While it lives, the time of the whole program stops until the test
/// lets some pass:
///
///     TestClock clock;
///     view->setTargetMouthOpenAngle(40.0f);
///     clock->advance(1.0);
///
/// Timers, animations and delayed reports all go by it, so that a test proves what happens after
/// three seconds, or that nothing does, without waiting.
class TestClock
{
public:
    /// 1000 is no special time: a test must not depend on a clock that starts at 0.
    explicit TestClock(double startTime = 1000.0)
        : TestClock(std::make_unique<VirtualRunLoop>(startTime))
    {}

    VirtualRunLoop &operator*() const { return loop_; }
    VirtualRunLoop *operator->() const { return &loop_; }

private:
    explicit TestClock(std::unique_ptr<VirtualRunLoop> loop) : loop_(*loop), main_(std::move(loop))
    {}

    VirtualRunLoop &loop_;
    MainRunLoop main_;
};

} // namespace kelo::test
