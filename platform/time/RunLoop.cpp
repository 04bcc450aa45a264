#include "platform/time/RunLoop.h"

#include "base/Assertion.h"
#include "platform/time/QtRunLoop.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kelo {
namespace {

/// Without a floor a repeating timer of interval 0 would be due for ever, and neither a virtual
/// clock nor the event loop would get past it.
constexpr double shortestRepeatInterval = 0.0001;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Never destroyed: at exit the application object is gone, and callbacks that die then may still
/// ask for the main loop.
std::unique_ptr<RunLoop> &mainSlot()
{
    static auto *slot = new std::unique_ptr<RunLoop>;
    return *slot;
}

class FlagScope
{
public:
    explicit FlagScope(bool &flag) : flag_(flag) { flag_ = true; }
    ~FlagScope() { flag_ = false; }
    FlagScope(const FlagScope &) = delete;
    FlagScope &operator=(const FlagScope &) = delete;

private:
    bool &flag_;
};

} // namespace

struct Timer::Schedule
{
    double interval;
    bool repeats;
    std::shared_ptr<const Callback> callback;
    bool isValid = true;
    bool isFiring = false;
    double fireTime = 0.0;
    RunLoopModes modes = 0;
    std::uint64_t order = 0;
    RunLoop *loop = nullptr; ///< the loop that the timer waits on
    /// The timer waits no longer. Empty for a timer that waits on no loop, as the next.
    std::function<void(const Timer &)> leaveLoop = {};
    /// The timer waits again.
    std::function<void()> rescheduleLoop = {};
};

Timer::Timer(double intervalInSeconds, bool repeats, Callback callback)
    : schedule_(std::make_unique<Schedule>(
          Schedule{std::max(intervalInSeconds, repeats ? shortestRepeatInterval : 0.0), repeats,
                   std::make_shared<const Callback>(std::move(callback))}))
{
    assertThat(!std::isnan(intervalInSeconds), "a timer's interval must be a number");
}

Timer::~Timer() = default;

double Timer::timeInterval() const
{
    return schedule_->interval;
}

bool Timer::repeats() const
{
    return schedule_->repeats;
}

bool Timer::isValid() const
{
    return schedule_->isValid;
}

double Timer::fireTime() const
{
    return schedule_->fireTime;
}

void Timer::invalidate()
{
    const auto self = weak_from_this().lock();
    // The callback may own things whose end comes back here, so it goes last.
    const auto callback = std::exchange(schedule_->callback, nullptr);
    schedule_->isValid = false;
    schedule_->loop = nullptr;
    schedule_->rescheduleLoop = nullptr;
    if (const auto leaveLoop = std::exchange(schedule_->leaveLoop, nullptr)) leaveLoop(*this);
}

void Timer::fire()
{
    if (!isValid() || schedule_->isFiring) return;
    const auto self = weak_from_this().lock();
    const auto callback = schedule_->callback;
    if (!repeats()) invalidate();
    const FlagScope firing(schedule_->isFiring);
    if (*callback) (*callback)(*this);
    schedule_->isFiring = false;
    // It was left out while the callback ran; a loop that went to sleep meanwhile must hear of it.
    if (const auto reschedule = schedule_->rescheduleLoop) reschedule();
}

RunLoop::RunLoop() : life_(std::make_shared<char>()) {}

RunLoop::~RunLoop()
{
    life_.reset();
    // What dies with the callbacks may ask this loop for something; it finds it empty.
    const auto timers = std::exchange(timers_, {});
    for (const auto &timer : timers) {
        timer->schedule().loop = nullptr;
        timer->schedule().leaveLoop = nullptr;
        timer->schedule().rescheduleLoop = nullptr;
    }
    for (const auto &timer : timers)
        timer->invalidate();
    const auto tasks = std::exchange(tasks_, {});
    const auto idleTasks = std::exchange(idleTasks_, {});
}

RunLoop &RunLoop::main()
{
    auto &slot = mainSlot();
    if (!slot) slot = std::make_unique<QtRunLoop>();
    return *slot;
}

std::unique_ptr<RunLoop> RunLoop::setMain(std::unique_ptr<RunLoop> loop)
{
    return std::exchange(mainSlot(), std::move(loop));
}

std::shared_ptr<Timer> RunLoop::scheduledTimer(double intervalInSeconds, bool repeats,
                                               Timer::Callback callback)
{
    auto timer = std::make_shared<Timer>(intervalInSeconds, repeats, std::move(callback));
    addTimer(timer, static_cast<RunLoopModes>(RunLoopMode::Default));
    return timer;
}

void RunLoop::addTimer(const std::shared_ptr<Timer> &timer, RunLoopModes modes)
{
    if (!timer->isValid()) return;
    Timer::Schedule &schedule = timer->schedule();
    assertThat(!schedule.loop || schedule.loop == this, "a timer waits on one run loop only");
    schedule.modes |= modes;
    if (!schedule.loop) {
        schedule.loop = this;
        schedule.leaveLoop = [this](const Timer &gone) { remove(gone); };
        schedule.rescheduleLoop = [this] { scheduleChanged(); };
        schedule.order = nextOrder_++;
        schedule.fireTime = steadyTime() + schedule.interval;
        timers_.push_back(timer);
    }
    scheduleChanged();
}

void RunLoop::performSoon(std::function<void()> task)
{
    tasks_.push_back({nextOrder_++, std::move(task)});
    scheduleChanged();
}

void RunLoop::performWhenIdle(std::function<void()> task)
{
    idleTasks_.push_back({nextOrder_++, std::move(task)});
    scheduleChanged();
}

RunLoopMode RunLoop::currentMode() const
{
    return modes_.empty() ? RunLoopMode::Default : modes_.back().mode;
}

RunLoop::ModeScope::ModeScope(RunLoop &loop, RunLoopMode mode) : loop_(loop), loopLife_(loop.life_)
{
    loop_.modes_.push_back({this, mode});
    loop_.scheduleChanged();
}

RunLoop::ModeScope::~ModeScope()
{
    if (loopLife_.expired()) return;
    std::erase_if(loop_.modes_, [this](const Mode &mode) { return mode.scope == this; });
    loop_.scheduleChanged();
}

bool RunLoop::mayFire(const Timer &timer) const
{
    const Timer::Schedule &schedule = timer.schedule();
    return schedule.isValid && !schedule.isFiring && schedule.loop == this &&
           (schedule.modes & static_cast<RunLoopModes>(currentMode())) != 0;
}

double RunLoop::nextDueTime() const
{
    if (!tasks_.empty() || !idleTasks_.empty()) return -infinity;
    return nextDueTimeAfter(-infinity);
}

double RunLoop::nextDueTimeAfter(double time) const
{
    double next = infinity;
    for (const auto &timer : timers_)
        if (mayFire(*timer) && timer->fireTime() > time) next = std::min(next, timer->fireTime());
    return next;
}

bool RunLoop::fireDue(double time)
{
    const auto alive = life();
    // Order numbers grow, so they tell what was waiting before this pass from what it brings.
    const std::uint64_t limit = nextOrder_;
    const auto timers = dueTimers(time);
    if (timers.empty() && tasks_.empty()) return runTasks(idleTasks_, limit);
    for (const auto &timer : timers) {
        // The callbacks before may have ended the loop, invalidated the timer, changed the mode, or
        // let a nested pass fire it.
        if (alive.expired()) return true;
        if (mayFire(*timer) && timer->fireTime() <= time) fireTimer(*timer, time);
    }
    if (!alive.expired()) runTasks(tasks_, limit);
    return true;
}

std::vector<std::shared_ptr<Timer>> RunLoop::dueTimers(double time) const
{
    std::vector<std::shared_ptr<Timer>> due;
    for (const auto &timer : timers_)
        if (mayFire(*timer) && timer->fireTime() <= time) due.push_back(timer);
    std::sort(due.begin(), due.end(), [](const auto &a, const auto &b) {
        return std::pair(a->fireTime(), a->schedule().order) <
               std::pair(b->fireTime(), b->schedule().order);
    });
    return due;
}

void RunLoop::fireTimer(Timer &timer, double time)
{
    if (timer.repeats()) {
        Timer::Schedule &schedule = timer.schedule();
        schedule.fireTime += schedule.interval;
        if (schedule.fireTime <= time) {
            const double missed = std::floor((time - schedule.fireTime) / schedule.interval);
            schedule.fireTime += (missed + 1.0) * schedule.interval;
        }
        scheduleChanged();
    }
    timer.fire();
}

bool RunLoop::runTasks(std::deque<Task> &tasks, std::uint64_t limit)
{
    const auto alive = life();
    bool anythingRan = false;
    while (!alive.expired() && !tasks.empty() && tasks.front().order < limit) {
        const auto run = std::move(tasks.front().run);
        tasks.pop_front();
        anythingRan = true;
        scheduleChanged();
        if (run) run();
    }
    return anythingRan;
}

void RunLoop::remove(const Timer &timer)
{
    std::erase_if(timers_, [&timer](const auto &other) { return other.get() == &timer; });
    scheduleChanged();
}

} // namespace kelo
