#pragma once

#include "base/Export.h"
#include "keloModel/NameKey.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace kelo {

class Timer;

/// Changes that wait until they have rested, the latest of each key, and the timer that waits with
/// them: the main run loop's.
class KELO_EXPORT UpdateAccumulation
{
public:
    /// `rested` is called when nothing was noted for restingTime, and may take what waits.
    explicit UpdateAccumulation(std::function<void(Timer &)> rested) : rested_(std::move(rested)) {}
    /// What still waits is lost.
    ~UpdateAccumulation();
    UpdateAccumulation(const UpdateAccumulation &) = delete;
    UpdateAccumulation &operator=(const UpdateAccumulation &) = delete;

    /// Notes a change in one of the dictionaries below, and starts the waiting anew. Returns the
    /// value.
    template<class Value>
    Value note(NameKeyDictionary<Value> &updates, const std::string &key, Value value)
    {
        updates.insert_or_assign(key, value);
        restart();
        return value;
    }
    /// Calls `rested` now if the timer is waiting.
    void flush();
    /// To be called by `rested`: the timer has fired.
    void timerHasFired() { timer_.reset(); }

    bool hasBracketUpdates() const
    {
        return !bracketVisibilities.empty() || !bracketColorTypeIDs.empty();
    }
    bool hasButtonUpdates() const { return !buttonVisibilities.empty(); }

    NameKeyDictionary<long> bracketColorTypeIDs;
    NameKeyDictionary<bool> bracketVisibilities;
    NameKeyDictionary<bool> buttonVisibilities;
    double restingTime = 3.0; ///< in seconds; counts from the next note on

private:
    void restart();

    std::function<void(Timer &)> rested_;
    std::weak_ptr<Timer> timer_; ///< the run loop holds it
};

} // namespace kelo
