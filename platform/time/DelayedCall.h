#pragma once

#include "platform/time/RunLoop.h"

#include <functional>
#include <memory>
#include <utility>

namespace kelo {

/// One call that the main run loop makes after a while, unless it is withdrawn before. It ends with
/// this object.
class DelayedCall
{
public:
    DelayedCall() = default;
    ~DelayedCall() { withdraw(); }
    DelayedCall(const DelayedCall &) = delete;
    DelayedCall &operator=(const DelayedCall &) = delete;

    /// Withdraws the call that is pending. 0 seconds, and anything below, means the next pass of
    /// the loop. The call may schedule another, and may end this object.
    void schedule(double seconds, std::function<void()> call)
    {
        withdraw();
        const auto make = [this, call = std::move(call)](Timer &) {
            timer_.reset();
            call();
        };
        timer_ = RunLoop::main().scheduledTimer(seconds, false, make);
    }
    void withdraw()
    {
        if (const auto timer = timer_.lock()) timer->invalidate();
        timer_.reset();
    }
    /// From schedule until the call begins, it is withdrawn, or its run loop ends.
    bool isPending() const { return !timer_.expired(); }

private:
    std::weak_ptr<Timer> timer_; ///< the run loop holds it
};

} // namespace kelo
