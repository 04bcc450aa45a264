#pragma once

#include "base/Export.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace kelo {

class RunLoop;

/// The modes in which a run loop can be; a timer fires only in the modes that it was added in.
enum class RunLoopMode : std::uint32_t {
    Default = 1,       ///< nothing special is going on
    EventTracking = 2, ///< a mouse button is held, or a menu is open
    ModalPanel = 4,    ///< an alert or a sheet waits for an answer
};

/// A set of modes; modes combine with |.
using RunLoopModes = std::uint32_t;
constexpr RunLoopModes operator|(RunLoopMode a, RunLoopMode b)
{
    return static_cast<RunLoopModes>(a) | static_cast<RunLoopModes>(b);
}

/// A one-shot or repeating call on a run loop. The run loop keeps a scheduled timer alive until it
/// has fired for the last time or is invalidated; whoever schedules one may keep a reference, to
/// invalidate it early. A repeating timer whose interval is below 0.1 ms repeats every 0.1 ms.
/// A timer whose callback is running does not fire a second time from inside it (as from the event
/// loop of an alert that the callback shows); its turn comes when the callback has returned.
class KELO_EXPORT Timer : public std::enable_shared_from_this<Timer>
{
public:
    using Callback = std::function<void(Timer &)>;

    /// A negative interval counts as 0, which means the next pass of the loop.
    Timer(double intervalInSeconds, bool repeats, Callback callback);
    ~Timer();
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;

    double timeInterval() const;
    bool repeats() const;
    /// False once the timer was invalidated, or was one-shot and has begun to fire, or its run loop
    /// has ended.
    bool isValid() const;
    /// The time at which it fires next, on the run loop's steady clock.
    double fireTime() const;
    /// It will not fire again, and lets go of its callback. Harmless when called twice, or from
    /// inside the callback.
    void invalidate();
    /// Fires now: a one-shot timer is invalid from then on, a repeating one keeps its schedule.
    /// Does nothing when invalid, or when its callback is running.
    void fire();

    /// When and on which run loop it fires; only run loops know more of it.
    struct Schedule;
    Schedule &schedule() const { return *schedule_; }

private:
    std::unique_ptr<Schedule> schedule_;
};

/// Timers and the clocks that everything asks: currentTime for "now", steadyTime for how long
/// something takes. There is one main run loop: a QtRunLoop in an application, a VirtualRunLoop in
/// tests, replays and headless runs.
///
/// A callback may do anything: schedule, invalidate, let a nested event loop run, or replace and
/// destroy the loop. A loop that ends invalidates its timers and drops its tasks.
/// Main thread only.
class KELO_EXPORT RunLoop
{
public:
    virtual ~RunLoop();
    RunLoop(const RunLoop &) = delete;
    RunLoop &operator=(const RunLoop &) = delete;

    /// The main run loop; a QtRunLoop is made on first use if none was set.
    static RunLoop &main();
    /// Replaces the main run loop and returns the one before it (nullptr when there was none).
    /// Timers and tasks stay with the loop that they were given to.
    static std::unique_ptr<RunLoop> setMain(std::unique_ptr<RunLoop> loop);

    /// Seconds of absolute time (since 1970 on a real clock; any origin on a virtual one). May jump
    /// either way, as when the user sets the clock.
    virtual double currentTime() const = 0;
    /// Seconds on a clock that only runs forwards and is never set; any origin. Timers and
    /// animations go by it.
    virtual double steadyTime() const = 0;

    /// Makes a timer and adds it in the default mode. A negative interval counts as 0, which means
    /// the next pass of the loop.
    std::shared_ptr<Timer> scheduledTimer(double intervalInSeconds, bool repeats,
                                          Timer::Callback callback);
    /// Adds a timer in the given modes; it first fires one interval from now. Adding it once more
    /// adds the modes and leaves the schedule as it is. An invalid timer is not added. A timer that
    /// waits on another loop is an AssertionFailure.
    void addTimer(const std::shared_ptr<Timer> &timer, RunLoopModes modes);
    void addTimer(const std::shared_ptr<Timer> &timer, RunLoopMode mode)
    {
        addTimer(timer, static_cast<RunLoopModes>(mode));
    }

    /// Runs `task` on the next pass of the loop, in any mode.
    void performSoon(std::function<void()> task);
    /// Runs `task` on the next pass on which no timer and no other task is due, in any mode.
    void performWhenIdle(std::function<void()> task);

    /// The mode of the innermost ModeScope that still lives, or Default.
    RunLoopMode currentMode() const;

    /// Holds the loop in a mode for as long as it lives; nests. Scopes may end in any order: the
    /// youngest that is left decides. May outlive the loop.
    class ModeScope
    {
    public:
        ModeScope(RunLoop &loop, RunLoopMode mode);
        ~ModeScope();
        ModeScope(const ModeScope &) = delete;
        ModeScope &operator=(const ModeScope &) = delete;

    private:
        RunLoop &loop_;
        std::weak_ptr<void> loopLife_;
    };

protected:
    RunLoop();

    /// Expires when the loop ends. Whoever calls fireDue asks it before touching the loop again.
    std::weak_ptr<void> life() const { return life_; }
    /// Tells the implementation that the next due time may have changed. Called before each
    /// callback too, so that a nested event loop goes on with the timers that are left.
    virtual void scheduleChanged() {}
    /// The earliest due time of a timer that may fire in the present mode, or infinity; a waiting
    /// task counts as due at once (minus infinity).
    double nextDueTime() const;
    /// The earliest due time that is later than `time`, of timers alone.
    double nextDueTimeAfter(double time) const;
    /// Fires, in the order of due time and then of scheduling, what is due at `time` (steady, as
    /// all times here) in the present
    /// mode, and then runs the waiting tasks; what is scheduled meanwhile waits for the next call.
    /// A repeating timer goes on one interval after its due time; one that is more than an interval
    /// late leaves out the firings that it missed and keeps its phase.
    /// Returns whether anything ran.
    bool fireDue(double time);

private:
    struct Task
    {
        std::uint64_t order;
        std::function<void()> run;
    };
    struct Mode
    {
        const ModeScope *scope;
        RunLoopMode mode;
    };
    bool mayFire(const Timer &timer) const;
    std::vector<std::shared_ptr<Timer>> dueTimers(double time) const;
    void fireTimer(Timer &timer, double time);
    bool runTasks(std::deque<Task> &tasks, std::uint64_t limit);
    void remove(const Timer &timer);

    std::vector<std::shared_ptr<Timer>> timers_;
    std::deque<Task> tasks_;
    std::deque<Task> idleTasks_;
    std::vector<Mode> modes_;
    std::uint64_t nextOrder_ = 0;
    std::shared_ptr<void> life_;
};

} // namespace kelo
