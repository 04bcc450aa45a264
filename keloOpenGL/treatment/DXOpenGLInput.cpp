// Pointer, wheel and keys.

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "keloOpenGL/treatment/WorldTurn.h"

#include <algorithm>

namespace kelo {
namespace {

/// A mouth open by less than this (degrees) is meant to be closed.
constexpr float snapAngle = 22.0f;
constexpr double snapDuration = 0.25;
constexpr double snapDelayAfterScroll = 0.5;
constexpr float scrollDegreesPerLine = 2.0f;
constexpr float keyStepAngle = 45.0f;
/// Between closed and open, as the arrow keys see it: the same dead zone as the jaws have.
constexpr float closedAngle = 10.0f;
constexpr float quarterPi = 0.7853982f;

} // namespace

void DXOpenGL::rotateMouseDown(const Event &event)
{
    _dragOrigin = convertPoint_fromView(event.locationInWindow, nullptr);
    _rotating = true;
}

void DXOpenGL::rotateMouseDragged(const Event &event)
{
    const Point point = convertPoint_fromView(event.locationInWindow, nullptr);
    const float degreesPerPoint =
        180.0f / static_cast<float>(std::min(cameraSize.width, cameraSize.height));
    rotateByDegrees(degreesPerPoint * static_cast<float>(point.x - _dragOrigin.x));
    setMouthOpenAngle(mouthOpenAngle() -
                      degreesPerPoint * static_cast<float>(point.y - _dragOrigin.y));
    _dragOrigin = point;
}

void DXOpenGL::rotateMouseUp(const Event &)
{
    snapMouthClosedIfNeeded();
    _rotating = false;
}

// The other modes' drags are rotate drags only while one of their presses began one.

void DXOpenGL::colorMouseDragged(const Event &event)
{
    if (_rotating) rotateMouseDragged(event);
}

void DXOpenGL::colorMouseUp(const Event &event)
{
    if (_rotating) rotateMouseUp(event);
}

void DXOpenGL::elasticsMouseDragged(const Event &event)
{
    if (_rotating) rotateMouseDragged(event);
}

void DXOpenGL::elasticsMouseUp(const Event &event)
{
    if (_rotating) rotateMouseUp(event);
}

void DXOpenGL::snapMouthClosedIfNeeded()
{
    if (mouthOpenAngle() > -snapAngle && mouthOpenAngle() < snapAngle)
        setTargetMouthOpenAngle_duration(0.0f, snapDuration);
}

void DXOpenGL::snapMouthClosedTimerExpired()
{
    verticalScrollSnapMouthClosedTimer.reset();
    snapMouthClosedIfNeeded();
}

void DXOpenGL::scrollWheel(const Event &event)
{
    // Written as a negated comparison, so that a delta that is not a number counts as a turn.
    if (!(event.deltaX == 0.0))
        rotateByDegrees(-scrollDegreesPerLine * static_cast<float>(event.deltaX));
    if (event.deltaY == 0.0) return;
    if (verticalScrollSnapMouthClosedTimer) verticalScrollSnapMouthClosedTimer->invalidate();
    verticalScrollSnapMouthClosedTimer = RunLoop::main().scheduledTimer(
        snapDelayAfterScroll, false, [this](Timer &) { snapMouthClosedTimerExpired(); });
    setMouthOpenAngle(mouthOpenAngle() - scrollDegreesPerLine * static_cast<float>(event.deltaY));
    setNeedsDisplay(true);
}

void DXOpenGL::turnTargetByAngle(float angle)
{
    const Quaternion turned =
        Quaternion_rotated(targetWorldQuaternion(), Vector3{0.0f, 0.0f, 1.0f}, angle);
    setTargetWorldQuaternion(clampQuaternionToFront180Degrees(turned));
}

void DXOpenGL::keyDown(const Event &event)
{
    if (event.characters.empty()) {
        HVOGLSmoothView::keyDown(event);
        return;
    }
    const float angle = mouthOpenAngle();
    switch (event.characters.front()) {
    case FunctionKey::UpArrow:
        if (angle > closedAngle)
            setTargetMouthOpenAngle(0.0f);
        else if (angle > -keyStepAngle)
            setTargetMouthOpenAngle(-keyStepAngle);
        break;
    case FunctionKey::DownArrow:
        if (angle < -closedAngle)
            setTargetMouthOpenAngle(0.0f);
        else if (angle < keyStepAngle)
            setTargetMouthOpenAngle(keyStepAngle);
        break;
    case FunctionKey::LeftArrow:
        turnTargetByAngle(-quarterPi);
        break;
    case FunctionKey::RightArrow:
        turnTargetByAngle(quarterPi);
        break;
    case u'0': {
        const Rotation home = defaultOrientation();
        setTargetWorldRotationAngle_axis(home[0], home[1], home[2], home[3]);
        setTargetMouthOpenAngle(0.0f);
        break;
    }
    default:
        HVOGLSmoothView::keyDown(event);
        break;
    }
}

} // namespace kelo
