#include "platform/time/VirtualRunLoop.h"

#include "base/Assertion.h"

#include <algorithm>

namespace kelo {

void VirtualRunLoop::setTime(double time)
{
    const double change = time - currentTime();
    if (change >= 0.0)
        now_ += change;
    else
        setBack_ -= change;
}

void VirtualRunLoop::advance(double seconds)
{
    assertThat(seconds >= 0.0, "time does not run backwards");
    const auto alive = life();
    const double end = now_ + seconds;
    double instant = now_;
    int passes = 0;
    for (;;) {
        const bool exhausted = passes >= passesPerInstant && now_ == instant;
        const double next = exhausted ? nextDueTimeAfter(now_) : nextDueTime();
        // A chain that has used up its passes before the end of the span goes on at the end.
        if (next > end && (!exhausted || now_ >= end)) break;
        now_ = std::max(now_, std::min(next, end));
        if (now_ != instant) {
            instant = now_;
            passes = 0;
        }
        ++passes;
        fireDue(now_);
        if (alive.expired()) return;
    }
    now_ = std::max(now_, end);
}

} // namespace kelo
