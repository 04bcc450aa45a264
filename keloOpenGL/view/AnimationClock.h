#pragma once

#include "base/Export.h"
#include "platform/time/RunLoop.h"

#include <memory>

namespace kelo {

/// The timer that drives a view's animations, and the time between its ticks. All on the main run
/// loop.
class KELO_EXPORT AnimationClock
{
public:
    AnimationClock() = default;
    /// Stops the timer.
    ~AnimationClock();
    AnimationClock(const AnimationClock &) = delete;
    AnimationClock &operator=(const AnimationClock &) = delete;

    /// Calls `tick` 60 times a second until stop, while a mouse button is held too. Starting again
    /// replaces the timer.
    void start(Timer::Callback tick);
    void stop();
    bool isRunning() const { return timer_ != nullptr; }

    /// Notes that the animation has come to the present moment.
    void noteTick();
    /// That moment, as absolute time.
    double tickTime() const { return tickTime_; }
    /// Seconds since then, by a clock that is never set: never negative.
    double timeSinceTick() const;

    /// From here on elapsedTime counts.
    void noteStart();
    /// Seconds, by a clock that is never set.
    double elapsedTime() const;

private:
    std::shared_ptr<Timer> timer_;
    double startTime_ = 0.0; ///< steady
    double tickTime_ = 0.0;  ///< absolute
    double steadyTickTime_ = 0.0;
};

} // namespace kelo
