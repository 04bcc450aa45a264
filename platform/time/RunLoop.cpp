#include "platform/time/RunLoop.h"

#include "base/Assertion.h"
#include "platform/time/QtRunLoop.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kelo {
namespace {

// Without a floor a repeating timer of interval 0 would be due for ever, and neither a virtual
// clock nor the event loop would get past it.
constexpr double shortestRepeatInterval = 0.0001;

constexpr double infinity = std::numeric_limits<double>::infinity();

// Never destroyed: at exit the application object is gone, and callbacks that die then may still
// ask for the main loop.
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

Timer::Timer(double intervalInSeconds, bool repeats, Callback callback)
    : interval_(std::max(intervalInSeconds, repeats ? shortestRepeatInterval : 0.0)),
      repeats_(repeats),
      callback_(std::make_shared<const Callback>(std::move(callback)))
{
    assertThat(!std::isnan(intervalInSeconds), "a timer's interval must be a number");
}

void Timer::invalidate()
{
    const auto self = weak_from_this().lock();
    // The callback may own things whose end comes back here, so it goes last.
    const auto callback = std::exchange(callback_, nullptr);
    valid_ = false;
    if (RunLoop *loop = std::exchange(loop_, nullptr)) loop->remove(*this);
}

void Timer::fire()
{
    if (!valid_ || firing_) return;
    const auto self = weak_from_this().lock();
    const auto callback = callback_;
    if (!repeats_) invalidate();
    const FlagScope firing(firing_);
    if (*callback) (*callback)(*this);
    firing_ = false;
    // It was left out while the callback ran; a loop that went to sleep meanwhile must hear of it.
    if (loop_) loop_->scheduleChanged();
}

RunLoop::RunLoop() : life_(std::make_shared<char>()) {}

RunLoop::~RunLoop()
{
    life_.reset();
    // What dies with the callbacks may ask this loop for something; it finds it empty.
    const auto timers = std::exchange(timers_, {});
    for (const auto &timer : timers)
        timer->loop_ = nullptr;
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
    if (!timer->valid_) return;
    assertThat(!timer->loop_ || timer->loop_ == this, "a timer waits on one run loop only");
    timer->modes_ |= modes;
    if (!timer->loop_) {
        timer->loop_ = this;
        timer->order_ = nextOrder_++;
        timer->fireTime_ = steadyTime() + timer->interval_;
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
    return timer.valid_ && !timer.firing_ && timer.loop_ == this &&
           (timer.modes_ & static_cast<RunLoopModes>(currentMode())) != 0;
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
        if (mayFire(*timer) && timer->fireTime_ > time) next = std::min(next, timer->fireTime_);
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
        if (mayFire(*timer) && timer->fireTime_ <= time) fireTimer(*timer, time);
    }
    if (!alive.expired()) runTasks(tasks_, limit);
    return true;
}

std::vector<std::shared_ptr<Timer>> RunLoop::dueTimers(double time) const
{
    std::vector<std::shared_ptr<Timer>> due;
    for (const auto &timer : timers_)
        if (mayFire(*timer) && timer->fireTime_ <= time) due.push_back(timer);
    std::sort(due.begin(), due.end(), [](const auto &a, const auto &b) {
        return std::pair(a->fireTime_, a->order_) < std::pair(b->fireTime_, b->order_);
    });
    return due;
}

void RunLoop::fireTimer(Timer &timer, double time)
{
    if (timer.repeats_) {
        timer.fireTime_ += timer.interval_;
        if (timer.fireTime_ <= time) {
            const double missed = std::floor((time - timer.fireTime_) / timer.interval_);
            timer.fireTime_ += (missed + 1.0) * timer.interval_;
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
