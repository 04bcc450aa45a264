#pragma once

#include "base/Export.h"
#include "platform/time/RunLoop.h"

namespace kelo {

/// A run loop whose clock stands still until it is told to advance. For tests, replays of
/// interaction scripts, and headless runs.
class KELO_EXPORT VirtualRunLoop : public RunLoop
{
public:
    /// Both clocks start at `startTime`.
    explicit VirtualRunLoop(double startTime = 0.0) : now_(startTime) {}

    double currentTime() const override { return now_ - setBack_; }
    double steadyTime() const override { return now_; }

    /// How many passes are made at one instant, see advance.
    static constexpr int passesPerInstant = 1000;

    /// Lets `seconds` (at least 0, otherwise an AssertionFailure) pass: goes to each due time in
    /// order, fires what is due there (what that schedules within the span included), and ends
    /// exactly `seconds` later. Several timers due at one time fire in the order in which they were
    /// scheduled. advance(0) fires what is due now.
    ///
    /// What a callback schedules for the instant at which it runs comes in another pass at the same
    /// instant. A chain that never ends, such as a one-shot timer of interval 0 that schedules
    /// itself anew, cannot hold the clock: after passesPerInstant passes the clock goes to the next
    /// later due time, or to the end of the span, and the chain goes on there (in the next call, if
    /// the span has ended).
    ///
    /// A callback may advance the clock itself, or destroy the loop.
    void advance(double seconds);

    /// Sets the current time without firing anything. Forwards, time has passed, as on a machine
    /// that was busy elsewhere: what has become due meanwhile fires in the next advance, repeating
    /// timers once. Backwards, the user has set the clock: the steady time stays, and with it what
    /// every timer has still to wait.
    void setTime(double time);

private:
    double now_;           ///< steady
    double setBack_ = 0.0; ///< by how much the current time was set back, all in all
};

} // namespace kelo
