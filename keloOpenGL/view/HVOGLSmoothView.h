#pragma once

#include "base/Export.h"
#include "geometry/Quaternion.h"
#include "keloOpenGL/view/HVOGLBasicView.h"

#include <memory>
#include <optional>
#include <string>

namespace kelo {

/// Turns target requests into smooth transitions: world rotation, world centre and mouth opening,
/// any of which may run at the same time. Each starts and ends with zero speed (smoothstep), lands
/// exactly on its target, and starts over from the value reached when a new target is requested.
///
/// Rotation follows the single-axis path from start to target. Zoom is not animated.
///
/// The animation timer starts with the first transition and runs until the view goes, at rest too:
/// subclasses that extend animationForTimer count on its ticks. A host that wants none at rest, 60
/// of which a second keep the processor awake, says so with setAnimationTimerStopsAtRest.
class KELO_EXPORT HVOGLSmoothView : public HVOGLBasicView
{
public:
    explicit HVOGLSmoothView(const Rect &frame);
    ~HVOGLSmoothView() override;

    /// Requesting the present orientation, or the target of the running transition, does nothing;
    /// numbers are compared as the floats that they are stored as, so that a request can be made
    /// again with the same doubles.
    void setTargetWorldRotationAngle_axis(double angleInDegrees, double x, double y,
                                          double z) override;
    void setTargetWorldQuaternion(const Quaternion &quaternion);
    /// The quaternion of the running transition's target, or of the present orientation.
    Quaternion targetWorldQuaternion() const;

    /// 12 bytes, or an assertion fails. Jumps at once where rendering is too slow to animate, or
    /// where a coordinate is not finite.
    void setTargetWorldCenterData(const PackedData &centerData) override;
    /// The centre that the last centre transition ends at.
    PackedData activeWorldCenterData() const;

    /// Over 0.75 seconds. Unlike setMouthOpenAngle, targets are not limited to 55 degrees.
    void setTargetMouthOpenAngle(float angleInDegrees);
    void setTargetMouthOpenAngle_duration(float angleInDegrees, double seconds);

    /// Whether the animation timer stops with the tick that ends the last transition, until the
    /// next one starts it again; false at first. Transitions are the same either way: each step is
    /// the time since the tick before, the first one after a rest the time since the request.
    bool animationTimerStopsAtRest() const;
    void setAnimationTimerStopsAtRest(bool stops);

    void animationForTimer(Timer &timer) override;
    void updateWorldRotationForTimeDelta(double seconds);
    void updateWorldCenterForTimeDelta(double seconds);
    void updateMouthOpenAngleForTimeDelta(double seconds);

    bool isAnimatingWorldRotation() const;
    bool isAnimatingWorldCenter() const;
    bool isAnimatingMouthOpenAngle() const;

    /// A name that a host may keep with the view; "XY" until one is set.
    void setHomeOrientation(std::optional<std::string> name);
    const std::string &homeOrientation();

private:
    void startAnimationTimerIfNeeded();
    double timeDelta() const;
    bool isActiveWorldCenter(const PackedData &centerData) const;
    bool startWorldCenterTransition(const Vector3 &target);

    struct Transitions;
    std::unique_ptr<Transitions> transitions_;
};

} // namespace kelo
