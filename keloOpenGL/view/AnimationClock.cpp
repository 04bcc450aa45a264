#include "keloOpenGL/view/AnimationClock.h"

#include <algorithm>
#include <utility>

namespace kelo {
namespace {

/// 1/60 as a single-precision value, which the frame clock has always been set to.
constexpr double animationInterval = 0.01666666753590107;

} // namespace

AnimationClock::~AnimationClock()
{
    stop();
}

void AnimationClock::start(Timer::Callback tick)
{
    stop();
    timer_ = std::make_shared<Timer>(animationInterval, true, std::move(tick));
    // The event-tracking mode too, so that a transition goes on while the mouse is held.
    RunLoop::main().addTimer(timer_, RunLoopMode::Default | RunLoopMode::EventTracking);
}

void AnimationClock::stop()
{
    if (timer_) timer_->invalidate();
    timer_.reset();
}

void AnimationClock::noteTick()
{
    tickTime_ = RunLoop::main().currentTime();
    steadyTickTime_ = RunLoop::main().steadyTime();
}

double AnimationClock::timeSinceTick() const
{
    // A main run loop that was replaced meanwhile counts from an origin of its own.
    return std::max(RunLoop::main().steadyTime() - steadyTickTime_, 0.0);
}

void AnimationClock::noteStart()
{
    startTime_ = RunLoop::main().steadyTime();
}

double AnimationClock::elapsedTime() const
{
    return RunLoop::main().steadyTime() - startTime_;
}

} // namespace kelo
