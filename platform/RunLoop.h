#pragma once

#include <cstdint>
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
/// invalidate it early.
class Timer
{
public:
    using Callback = std::function<void(Timer &)>;

    Timer(double intervalInSeconds, bool repeats, Callback callback);

    double timeInterval() const { return interval_; }
    bool repeats() const { return repeats_; }
    /// False once the timer was invalidated, or was one-shot and has begun to fire.
    bool isValid() const { return valid_; }
    /// The time at which it fires next, on the run loop's clock.
    double fireTime() const { return fireTime_; }
    /// It will not fire again. Harmless when called twice, or from inside the callback.
    void invalidate();
    /// Fires now: a one-shot timer is invalid from then on, a repeating one keeps its schedule.
    /// Does nothing when invalid.
    void fire();

private:
    friend class RunLoop;
    double interval_;
    bool repeats_;
    bool valid_ = true;
    double fireTime_ = 0.0;
    RunLoopModes modes_ = 0;
    std::uint64_t order_ = 0;
    Callback callback_;
};

/// Timers and the one clock that everything asks for "now". There is one main run loop: a
/// QtRunLoop in an application, a VirtualRunLoop in tests, replays and headless runs.
/// Main thread only.
class RunLoop
{
public:
    virtual ~RunLoop();

    /// The main run loop; a QtRunLoop is made on first use if none was set.
    static RunLoop &main();
    /// Replaces the main run loop and returns the one before it (nullptr when there was none).
    static std::unique_ptr<RunLoop> setMain(std::unique_ptr<RunLoop> loop);

    /// Seconds of absolute time (since 1970 on a real clock; any origin on a virtual one).
    virtual double currentTime() const = 0;

    /// Makes a timer and adds it in the default mode. A negative interval counts as 0, which means
    /// the next pass of the loop.
    std::shared_ptr<Timer> scheduledTimer(double intervalInSeconds, bool repeats,
                                          Timer::Callback callback);
    /// Adds a timer in the given modes; it first fires one interval from now.
    void addTimer(const std::shared_ptr<Timer> &timer, RunLoopModes modes);

    /// Runs `task` on the next pass of the loop, in any mode.
    void performSoon(std::function<void()> task);

    RunLoopMode currentMode() const { return mode_; }

    /// Holds the loop in a mode for as long as it lives; nests.
    class ModeScope
    {
    public:
        ModeScope(RunLoop &loop, RunLoopMode mode);
        ~ModeScope();
        ModeScope(const ModeScope &) = delete;
        ModeScope &operator=(const ModeScope &) = delete;

    private:
        RunLoop &loop_;
        RunLoopMode previous_;
    };

protected:
    RunLoop() = default;

    /// Tells the implementation that the next due time may have changed.
    virtual void scheduleChanged() {}
    /// The earliest due time of a timer that may fire in the present mode, or infinity; a waiting
    /// task counts as due at once.
    double nextDueTime() const;
    /// Fires, in the order of due time and then of scheduling, what is due at `time` in the present
    /// mode, and runs the waiting tasks; what is scheduled meanwhile waits for the next call.
    /// Returns whether anything ran.
    bool fireDue(double time);

private:
    friend class Timer;
    std::vector<std::shared_ptr<Timer>> timers_;
    std::vector<std::function<void()>> tasks_;
    std::uint64_t nextOrder_ = 0;
    RunLoopMode mode_ = RunLoopMode::Default;
};

} // namespace kelo
