#include "keloOpenGL/view/HVOGLSmoothView.h"

#include "base/Assertion.h"
#include "keloOpenGL/view/RotationQuaternion.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace kelo {
namespace {

constexpr double transitionDuration = 0.75;
/// Slower than this a frame, a moving centre is worse than a jump.
constexpr double slowRenderingTime = 0.075;

/// The smoothstep curve, which starts and ends with zero speed.
double eased(double progress)
{
    return (3.0 - 2.0 * progress) * progress * progress;
}

HVOGLBasicView::Rotation rotationOfQuaternion(const Quaternion &quaternion)
{
    Vector3 axis{};
    float angle = 0.0f;
    Quaternion_toAxisAngle(quaternion, &axis, &angle);
    return {angle * degreesPerRadian, axis.x, axis.y, axis.z};
}

bool isFinite(const Vector3 &vector)
{
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

} // namespace

HVOGLSmoothView::HVOGLSmoothView(const Rect &frame) : HVOGLBasicView(frame) {}

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
    const Rotation requested{static_cast<float>(angleInDegrees), static_cast<float>(x),
                             static_cast<float>(y), static_cast<float>(z)};
    if (_animatingWorldRotation && requested == _targetWorldRotation) return;
    if (requested == _worldRotation) return;
    startAnimationTimerIfNeeded();
    _targetWorldRotation = requested;
    _initialWorldQuaternion = quaternionOfRotation(_worldRotation);
    const Quaternion target = quaternionOfRotation(_targetWorldRotation);
    const Quaternion eigen =
        Quaternion_multiplied(Quaternion_inverted(_initialWorldQuaternion), target);
    _worldEigenRotation = rotationOfQuaternion(eigen);
    _worldEigenRotationFullAngle = _worldEigenRotation[0];
    _worldEigenRotationParameter = 0.0;
    _animatingWorldRotation = true;
    setNeedsDisplay(true);
}

void HVOGLSmoothView::setTargetWorldQuaternion(const Quaternion &quaternion)
{
    Vector3 axis{};
    float angle = 0.0f;
    Quaternion_toAxisAngle(quaternion, &axis, &angle);
    setTargetWorldRotationAngle_axis(static_cast<double>(angle * 180.0f) / std::numbers::pi, axis.x,
                                     axis.y, axis.z);
}

Quaternion HVOGLSmoothView::targetWorldQuaternion() const
{
    return quaternionOfRotation(_animatingWorldRotation ? _targetWorldRotation : _worldRotation);
}

void HVOGLSmoothView::updateWorldRotationForTimeDelta(double seconds)
{
    if (!_animatingWorldRotation) return;
    _worldEigenRotationParameter += seconds / transitionDuration;
    if (_worldEigenRotationParameter >= 1.0) {
        _animatingWorldRotation = false;
        _worldRotation = _targetWorldRotation;
    } else {
        _worldEigenRotation[0] =
            static_cast<float>(eased(_worldEigenRotationParameter) * _worldEigenRotationFullAngle);
        _worldRotation = rotationOfQuaternion(Quaternion_multiplied(
            _initialWorldQuaternion, quaternionOfRotation(_worldEigenRotation)));
    }
    setNeedsDisplay(true);
}

void HVOGLSmoothView::setTargetWorldCenterData(const PackedData &centerData)
{
    assertThat(centerData.size() == sizeof(Vector3), "world-centre data must be 12 bytes");
    if (centerData == worldCenterData()) return;
    if (_animatingWorldCenter && centerData == activeWorldCenterData()) return;
    startAnimationTimerIfNeeded();
    if (_lastRenderingTime > slowRenderingTime) {
        setWorldCenterData(centerData);
        return;
    }
    _worldCenterInitial = _worldCenter;
    _worldCenterFinal = unpacked<Vector3>(centerData);
    if (!isFinite(_worldCenterInitial) || !isFinite(_worldCenterFinal)) {
        setWorldCenterData(centerData);
        return;
    }
    _worldCenterParameter = 0.0;
    _animatingWorldCenter = true;
}

PackedData HVOGLSmoothView::activeWorldCenterData() const
{
    return packed(_worldCenterFinal);
}

void HVOGLSmoothView::updateWorldCenterForTimeDelta(double seconds)
{
    if (!_animatingWorldCenter) return;
    _worldCenterParameter += seconds / transitionDuration;
    if (_worldCenterParameter >= 1.0) {
        _animatingWorldCenter = false;
        setWorldCenterData(activeWorldCenterData());
    } else {
        const double weight = eased(_worldCenterParameter);
        const auto between = [weight](float initial, float final) {
            return static_cast<float>(initial * (1.0 - weight) + final * weight);
        };
        setWorldCenterData(packed(Vector3{between(_worldCenterInitial.x, _worldCenterFinal.x),
                                          between(_worldCenterInitial.y, _worldCenterFinal.y),
                                          between(_worldCenterInitial.z, _worldCenterFinal.z)}));
    }
    setNeedsDisplay(true);
}

void HVOGLSmoothView::setTargetMouthOpenAngle(float angleInDegrees)
{
    setTargetMouthOpenAngle_duration(angleInDegrees, transitionDuration);
}

void HVOGLSmoothView::setTargetMouthOpenAngle_duration(float angleInDegrees, double seconds)
{
    if (_animatingMouthOpenAngle && _targetMouthOpenAngle == angleInDegrees) return;
    if (_mouthOpenAngle == angleInDegrees) return;
    _initialMouthOpenAngle = _mouthOpenAngle;
    _targetMouthOpenAngle = angleInDegrees;
    _mouthOpenAngleParameter = 0.0;
    _animatingMouthOpenAngle = true;
    _mouthOpenAnimationDuration = seconds;
    startAnimationTimerIfNeeded();
}

void HVOGLSmoothView::updateMouthOpenAngleForTimeDelta(double seconds)
{
    if (!_animatingMouthOpenAngle) return;
    _mouthOpenAngleParameter += seconds / _mouthOpenAnimationDuration;
    // Written so that a duration of 0 (an infinite or undefined progress) ends the transition too.
    if (!(_mouthOpenAngleParameter < 1.0)) {
        _animatingMouthOpenAngle = false;
        _mouthOpenAngle = _targetMouthOpenAngle;
    } else {
        const double weight = eased(_mouthOpenAngleParameter);
        _mouthOpenAngle = static_cast<float>(_initialMouthOpenAngle * (1.0 - weight) +
                                             _targetMouthOpenAngle * weight);
    }
    setNeedsDisplay(true);
}

double HVOGLSmoothView::timeDelta() const
{
    // Not from `time`: a clock that is set back would make the step negative and throw the jaws
    // open, one that is set ahead would end the transition at once.
    return timeSinceAnimation() + _lastRenderingTime;
}

void HVOGLSmoothView::animationForTimer(Timer &timer)
{
    // Computed afresh before each step, since a step takes time of its own.
    updateWorldRotationForTimeDelta(timeDelta());
    updateWorldCenterForTimeDelta(timeDelta());
    updateMouthOpenAngleForTimeDelta(timeDelta());
    HVOGLBasicView::animationForTimer(timer);
    if (animationTimerStopsAtRest_ && isAtRest()) stopAnimationTimer();
}

bool HVOGLSmoothView::isAtRest() const
{
    return !_animatingWorldRotation && !_animatingWorldCenter && !_animatingMouthOpenAngle;
}

void HVOGLSmoothView::setHomeOrientation(std::optional<std::string> name)
{
    _homeOrientation = std::move(name);
}

const std::string &HVOGLSmoothView::homeOrientation()
{
    if (!_homeOrientation) _homeOrientation = "XY";
    return *_homeOrientation;
}

} // namespace kelo
