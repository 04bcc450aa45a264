#pragma once

#include "base/Export.h"
#include "geometry/Vector.h"
#include "keloOpenGL/view/RotationQuaternion.h"

namespace kelo {

/// The smoothstep curve on 0 to 1, which starts and ends with zero speed.
constexpr double eased(double progress)
{
    return (3.0 - 2.0 * progress) * progress * progress;
}

/// @name A value on its way
/// What is reached when `weight` (0 to 1) of the way from start to target is done. The sums are in
/// double precision, their results in single.
/// @{
KELO_EXPORT float valueBetween(float start, float target, double weight);
KELO_EXPORT Vector3 valueBetween(const Vector3 &start, const Vector3 &target, double weight);
/// Along the single rotation that takes the one orientation to the other, not a blend of angles.
KELO_EXPORT AngleAndAxis valueBetween(const AngleAndAxis &start, const AngleAndAxis &target,
                                      double weight);
/// @}

/// One value that goes somewhere in time: eased, and exactly on its target at the end. It is told
/// how much time has passed and asks no clock; who has the value stores what is reached.
///
/// Another kind of value needs a valueBetween of its own, no more.
template<class Value>
class Transition
{
public:
    bool isRunning() const { return isRunning_; }
    /// Where the last transition ends, or ended; all 0 before the first.
    const Value &target() const { return target_; }
    bool isHeadingFor(const Value &target) const { return isRunning_ && target_ == target; }

    /// Starts, over again while one is running. A duration of 0 ends it with the next step.
    void start(const Value &from, const Value &to, double seconds)
    {
        setEnds(from, to);
        start(seconds);
    }
    /// The ends alone; one that is running goes on between the new ones.
    void setEnds(const Value &from, const Value &to)
    {
        start_ = from;
        target_ = to;
    }
    /// Starts between the ends that are set.
    void start(double seconds)
    {
        duration_ = seconds;
        progress_ = 0.0;
        isRunning_ = true;
    }

    /// The value reached `seconds` later. At the end, and after it, that is the target.
    Value advance(double seconds)
    {
        progress_ += seconds / duration_;
        // Written so that a progress that is infinite or not a number ends the transition too.
        isRunning_ = isRunning_ && progress_ < 1.0;
        return isRunning_ ? valueBetween(start_, target_, eased(progress_)) : target_;
    }

private:
    bool isRunning_ = false;
    double progress_ = 0.0; ///< of the duration, 0 to 1
    double duration_ = 0.0;
    Value start_{};
    Value target_{};
};

} // namespace kelo
