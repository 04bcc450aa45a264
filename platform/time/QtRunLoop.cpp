#include "platform/time/QtRunLoop.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace kelo {
namespace {

/// The longest wait that is asked of Qt at once (an hour); the loop then looks again.
constexpr double longestWait = 3600.0;

template<class Clock>
double secondsOf()
{
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

} // namespace

QtRunLoop::QtRunLoop()
    : QtRunLoop({secondsOf<std::chrono::system_clock>, secondsOf<std::chrono::steady_clock>})
{}

QtRunLoop::QtRunLoop(Clocks clocks) : clocks_(std::move(clocks))
{
    wakeUpTimer_.setSingleShot(true);
    wakeUpTimer_.setTimerType(Qt::PreciseTimer);
    connect(&wakeUpTimer_, &QTimer::timeout, this, [this] { wakeUp(); });
}

double QtRunLoop::currentTime() const
{
    return clocks_.wall();
}

double QtRunLoop::steadyTime() const
{
    return clocks_.steady();
}

void QtRunLoop::scheduleChanged()
{
    // Without an application object Qt has no event loop to put the timer on, and warns.
    if (!QCoreApplication::instance()) return;
    const double next = nextDueTime();
    if (std::isinf(next) && next > 0.0) {
        wakeUpTimer_.stop();
        return;
    }
    // Rounded up: a timer must be due when the loop wakes up for it.
    const double wait = std::clamp(next - steadyTime(), 0.0, longestWait);
    wakeUpTimer_.start(static_cast<int>(std::ceil(wait * 1000.0)));
}

void QtRunLoop::wakeUp()
{
    const auto alive = life();
    fireDue(steadyTime());
    if (!alive.expired()) scheduleChanged();
}

} // namespace kelo
