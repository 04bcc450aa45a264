#include "keloOpenGL/view/HVOGLSmoothView.h"

#include "base/Assertion.h"
#include "keloOpenGL/view/Transition.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace kelo {
namespace {

constexpr double transitionDuration = 0.75;
/// Slower than this a frame, a moving centre is worse than a jump.
constexpr double slowRenderingTime = 0.075;

bool isFinite(const Vector3 &vector)
{
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

} // namespace

struct HVOGLSmoothView::Transitions
{
    Transition<Rotation> worldRotation;
    Transition<Vector3> worldCenter;
    Transition<float> mouthOpenAngle;
    bool timerStopsAtRest = false;
    std::optional<std::string> homeOrientation;

    bool areAtRest() const
    {
        return !worldRotation.isRunning() && !worldCenter.isRunning() &&
               !mouthOpenAngle.isRunning();
    }
};

HVOGLSmoothView::HVOGLSmoothView(const Rect &frame)
    : HVOGLBasicView(frame), transitions_(std::make_unique<Transitions>())
{}

HVOGLSmoothView::~HVOGLSmoothView() = default;

void HVOGLSmoothView::startAnimationTimerIfNeeded()
{
    if (animationTimerIsRunning()) return;
    // No tick has kept the time while no timer ran; without this the first step would count all of
    // that and land on the target at once.
    noteAnimationTime();
    startAnimationTimer();
}

void HVOGLSmoothView::setTargetWorldRotationAngle_axis(double angleInDegrees, double x, double y,
                                                       double z)
{
    const Rotation target = angleAndAxis(angleInDegrees, x, y, z);
    if (transitions_->worldRotation.isHeadingFor(target) || target == worldRotation()) return;
    startAnimationTimerIfNeeded();
    transitions_->worldRotation.start(worldRotation(), target, transitionDuration);
    setNeedsDisplay(true);
}

void HVOGLSmoothView::setTargetWorldQuaternion(const Quaternion &quaternion)
{
    Vector3 axis{};
    float angle = 0.0f;
    Quaternion_toAxisAngle(quaternion, &axis, &angle);
    const double degrees = static_cast<double>(angle * 180.0f) / std::numbers::pi;
    setTargetWorldRotationAngle_axis(degrees, axis.x, axis.y, axis.z);
}

Quaternion HVOGLSmoothView::targetWorldQuaternion() const
{
    const Transition<Rotation> &transition = transitions_->worldRotation;
    return quaternionOfRotation(transition.isRunning() ? transition.target() : worldRotation());
}

void HVOGLSmoothView::updateWorldRotationForTimeDelta(double seconds)
{
    if (!isAnimatingWorldRotation()) return;
    const Rotation reached = transitions_->worldRotation.advance(seconds);
    setWorldRotationAngle_axis(reached[0], reached[1], reached[2], reached[3]);
}

bool HVOGLSmoothView::isActiveWorldCenter(const PackedData &centerData) const
{
    return isAnimatingWorldCenter() && centerData == activeWorldCenterData();
}

void HVOGLSmoothView::setTargetWorldCenterData(const PackedData &centerData)
{
    assertThat(centerData.size() == sizeof(Vector3), "world-centre data must be 12 bytes");
    if (centerData == worldCenterData() || isActiveWorldCenter(centerData)) return;
    startAnimationTimerIfNeeded();
    if (!startWorldCenterTransition(unpacked<Vector3>(centerData))) setWorldCenterData(centerData);
}

bool HVOGLSmoothView::startWorldCenterTransition(const Vector3 &target)
{
    if (lastRenderingTime() > slowRenderingTime) return false;
    transitions_->worldCenter.setEnds(worldCenter(), target);
    if (!isFinite(worldCenter()) || !isFinite(target)) return false;
    transitions_->worldCenter.start(transitionDuration);
    return true;
}

PackedData HVOGLSmoothView::activeWorldCenterData() const
{
    return packed(transitions_->worldCenter.target());
}

void HVOGLSmoothView::updateWorldCenterForTimeDelta(double seconds)
{
    if (!isAnimatingWorldCenter()) return;
    setWorldCenterData(packed(transitions_->worldCenter.advance(seconds)));
    setNeedsDisplay(true);
}

void HVOGLSmoothView::setTargetMouthOpenAngle(float angleInDegrees)
{
    setTargetMouthOpenAngle_duration(angleInDegrees, transitionDuration);
}

void HVOGLSmoothView::setTargetMouthOpenAngle_duration(float angleInDegrees, double seconds)
{
    Transition<float> &transition = transitions_->mouthOpenAngle;
    if (transition.isHeadingFor(angleInDegrees) || mouthOpenAngle() == angleInDegrees) return;
    transition.start(mouthOpenAngle(), angleInDegrees, seconds);
    startAnimationTimerIfNeeded();
}

void HVOGLSmoothView::updateMouthOpenAngleForTimeDelta(double seconds)
{
    if (!isAnimatingMouthOpenAngle()) return;
    setUnlimitedMouthOpenAngle(transitions_->mouthOpenAngle.advance(seconds));
}

double HVOGLSmoothView::timeDelta() const
{
    // Not from the absolute time of the last tick: a clock that is set back would make the step
    // negative and throw the jaws open, one that is set ahead would end the transition at once.
    return timeSinceAnimation() + lastRenderingTime();
}

void HVOGLSmoothView::animationForTimer(Timer &timer)
{
    // Computed afresh before each step, since a step takes time of its own.
    updateWorldRotationForTimeDelta(timeDelta());
    updateWorldCenterForTimeDelta(timeDelta());
    updateMouthOpenAngleForTimeDelta(timeDelta());
    HVOGLBasicView::animationForTimer(timer);
    if (animationTimerStopsAtRest() && transitions_->areAtRest()) stopAnimationTimer();
}

bool HVOGLSmoothView::animationTimerStopsAtRest() const
{
    return transitions_->timerStopsAtRest;
}

void HVOGLSmoothView::setAnimationTimerStopsAtRest(bool stops)
{
    transitions_->timerStopsAtRest = stops;
}

bool HVOGLSmoothView::isAnimatingWorldRotation() const
{
    return transitions_->worldRotation.isRunning();
}

bool HVOGLSmoothView::isAnimatingWorldCenter() const
{
    return transitions_->worldCenter.isRunning();
}

bool HVOGLSmoothView::isAnimatingMouthOpenAngle() const
{
    return transitions_->mouthOpenAngle.isRunning();
}

void HVOGLSmoothView::setHomeOrientation(std::optional<std::string> name)
{
    transitions_->homeOrientation = std::move(name);
}

const std::string &HVOGLSmoothView::homeOrientation()
{
    std::optional<std::string> &name = transitions_->homeOrientation;
    if (!name) name = "XY";
    return *name;
}

} // namespace kelo
