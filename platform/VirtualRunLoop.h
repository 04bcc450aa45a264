#pragma once

#include "platform/RunLoop.h"

namespace kelo {

/// A run loop whose clock stands still until it is told to advance. For tests, replays of
/// interaction scripts, and headless runs.
class VirtualRunLoop : public RunLoop
{
public:
    explicit VirtualRunLoop(double startTime = 0.0) : now_(startTime) {}

    double currentTime() const override { return now_; }

    /// Lets `seconds` (at least 0) pass: goes to each due time in order, fires what is due there
    /// (what that schedules within the span included), and ends exactly `seconds` later.
    /// Several timers due at one time fire in the order in which they were scheduled.
    void advance(double seconds);

    /// Sets the clock without firing anything, as after a machine slept.
    void setTime(double time) { now_ = time; }

private:
    double now_;
};

} // namespace kelo
