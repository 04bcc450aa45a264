// Modes, pointer, wheel and keys.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "base/TellDelegate.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "keloOpenGL/overlay/OverlayTools.h"
#include "keloOpenGL/view/WorldTurn.h"

#include <QCursor>

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

bool holdsControl(const Event &event)
{
    return (event.modifierFlags & ModifierFlag::Control) != 0;
}

} // namespace

void DXOpenGL::setMouseMode(long mode)
{
    if (mode != mouseMode()) {
        if (mouseMode() == elasticsMode && state_->bracketSequence) {
            if (!survives([this] { endElasticPlacement(); })) return;
        } else if (mouseMode() == colorMode && repeatActionTimerIsRunning()) {
            forgetRepeatActionTimer();
            restorePermanentMouseMode();
        }
    }
    HVOGLSmoothView::setMouseMode(mode);
    setNeedsDisplay(true);
}

void DXOpenGL::restorePermanentMouseMode()
{
    const bool isRepeating =
        mouseModeIsTemporary() && mouseModeIsBracketColor() && repeatActionTimerIsRunning();
    if (!isRepeating) HVOGLSmoothView::restorePermanentMouseMode();
}

QCursor DXOpenGL::cursorForMouseMode(long mode) const
{
    switch (mode) {
    case colorMode:
        return QCursor(Qt::PointingHandCursor);
    case elasticsMode:
        return QCursor(Qt::CrossCursor);
    default:
        return defaultCursor();
    }
}

void DXOpenGL::enterColorModeForControl()
{
    if (mouseModeIsElastics() && !state_->bracketSequence) setTemporaryMouseMode(colorMode);
}

void DXOpenGL::flagsChanged(const Event &event)
{
    if (holdsControl(event))
        enterColorModeForControl();
    else
        restorePermanentMouseMode();
    synchronizeCursorWithMouseMode(event);
}

Point DXOpenGL::toolPointForEvent(const Event &event) const
{
    return overlayPoint(convertPoint_fromView(event.locationInWindow, nullptr), bounds().size);
}

std::string DXOpenGL::toolTipAtPoint(const Point &pointInView) const
{
    const OverlayTool *tool = toolAt(overlayPoint(pointInView, bounds().size));
    return tool ? translated(tool->toolTip) : std::string();
}

void DXOpenGL::leftMouseDown(const Event &event)
{
    const Point point = toolPointForEvent(event);
    if (holdsControl(event))
        enterColorModeForControl();
    else if (mouseModeIsTemporary() && mouseModeIsBracketColor())
        restorePermanentMouseMode();

    const OverlayTool *tool = toolAt(point);
    if (!tool) {
        HVOGLSmoothView::leftMouseDown(event);
        return;
    }
    if (tool->mouseMode) {
        setMouseMode(*tool->mouseMode);
        return;
    }
    state_->_printButtonDown = true;
    state_->_printButtonTracking = true;
    setNeedsDisplay(true);
}

void DXOpenGL::leftMouseDragged(const Event &event)
{
    if (!state_->_printButtonTracking) {
        HVOGLSmoothView::leftMouseDragged(event);
        return;
    }
    state_->_printButtonDown = printButtonRect().contains(toolPointForEvent(event));
    setNeedsDisplay(true);
}

void DXOpenGL::leftMouseUp(const Event &event)
{
    HVOGLSmoothView::leftMouseUp(event);
    if (state_->_printButtonTracking) {
        if (state_->_printButtonDown && !survives([this] { submitPrintRequest(); })) return;
        state_->_printButtonDown = false;
        state_->_printButtonTracking = false;
        setNeedsDisplay(true);
    } else if (event.clickCount == 2 && state_->delegate &&
               state_->delegate->toggleFullScreenMode) {
        if (tellDelegate(teller(), state_->delegate, &DXOpenGLDelegate::toggleFullScreenMode,
                         *this))
            setNeedsDisplay(true);
    }
}

void DXOpenGL::rightMouseUp(const Event &event)
{
    HVOGLSmoothView::rightMouseUp(event);
    // The mode in which the press began to turn the jaws may have gone meanwhile, with the date.
    if (state_->_rotating) rotateMouseUp(event);
}

void DXOpenGL::mouseCaptureLost()
{
    // The release that follows was not made by the clinician, who therefore asked for nothing.
    state_->_printButtonDown = false;
    HVOGLSmoothView::mouseCaptureLost();
}

// While both buttons are held, the drag is the one's that began it: the other's press, moves and
// release neither turn the jaws nor end the drag.

bool DXOpenGL::belongsToAnotherButton(const Event &event) const
{
    const auto button = mouseButtonOf(event.type);
    return state_->_rotating && button && state_->rotatingButton &&
           button != state_->rotatingButton;
}

void DXOpenGL::rotateMouseDown(const Event &event)
{
    if (belongsToAnotherButton(event)) return;
    state_->rotatingButton = mouseButtonOf(event.type);
    state_->_dragOrigin = convertPoint_fromView(event.locationInWindow, nullptr);
    state_->_rotating = true;
}

void DXOpenGL::rotateMouseDragged(const Event &event)
{
    if (belongsToAnotherButton(event)) return;
    const Point point = convertPoint_fromView(event.locationInWindow, nullptr);
    // Before the first drawing the camera has no size yet; a view without area cannot be dragged
    // in.
    const Size size = cameraSize.height > 0.0 ? cameraSize : bounds().size;
    const auto shorterSide = static_cast<float>(std::min(size.width, size.height));
    const float degreesPerPoint = shorterSide > 0.0f ? 180.0f / shorterSide : 0.0f;
    rotateByDegrees(degreesPerPoint * static_cast<float>(point.x - state_->_dragOrigin.x));
    setMouthOpenAngle(mouthOpenAngle() -
                      degreesPerPoint * static_cast<float>(point.y - state_->_dragOrigin.y));
    state_->_dragOrigin = point;
}

void DXOpenGL::rotateMouseUp(const Event &event)
{
    if (belongsToAnotherButton(event)) return;
    snapMouthClosedIfNeeded();
    state_->_rotating = false;
}

// The other modes' drags are rotate drags only while one of their presses began one. A press that
// opens a menu begins none: the menu is there with the press, and how the pointer goes on until the
// release neither turns the jaws behind it nor chooses in it.

void DXOpenGL::colorMouseDragged(const Event &event)
{
    if (state_->_rotating) rotateMouseDragged(event);
}

void DXOpenGL::colorMouseUp(const Event &event)
{
    if (state_->_rotating) rotateMouseUp(event);
}

void DXOpenGL::elasticsMouseDragged(const Event &event)
{
    if (state_->_rotating) rotateMouseDragged(event);
}

void DXOpenGL::elasticsMouseUp(const Event &event)
{
    if (state_->_rotating) rotateMouseUp(event);
}

void DXOpenGL::snapMouthClosedIfNeeded()
{
    if (mouthOpenAngle() > -snapAngle && mouthOpenAngle() < snapAngle)
        setTargetMouthOpenAngle_duration(0.0f, snapDuration);
}

void DXOpenGL::snapMouthClosedTimerExpired()
{
    state_->verticalScrollSnapMouthClosedTimer.reset();
    snapMouthClosedIfNeeded();
}

void DXOpenGL::scrollWheel(const Event &event)
{
    // Written as a negated comparison, so that a delta that is not a number counts as a turn.
    if (!(event.deltaX == 0.0))
        rotateByDegrees(-scrollDegreesPerLine * static_cast<float>(event.deltaX));
    if (event.deltaY == 0.0) return;
    if (state_->verticalScrollSnapMouthClosedTimer)
        state_->verticalScrollSnapMouthClosedTimer->invalidate();
    state_->verticalScrollSnapMouthClosedTimer = RunLoop::main().scheduledTimer(
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

void DXOpenGL::escapePressed()
{
    if (state_->bracketSequence) {
        if (survives([this] { endElasticPlacement(); })) setNeedsDisplay(true);
    } else if (isInFullScreenMode()) {
        if (state_->delegate && state_->delegate->toggleFullScreenMode)
            tellDelegate(teller(), state_->delegate, &DXOpenGLDelegate::toggleFullScreenMode,
                         *this);
        else
            exitFullScreenModeWithOptions();
    }
}

void DXOpenGL::openMenuAtPointer(const Event &keyEvent)
{
    if (!pointerIsOverView()) return; // the key's place is where the pointer left
    // A press there would string, or is still going on.
    if (state_->bracketSequence || state_->_rotating) return;
    Event press = keyEvent;
    press.type = EventType::RightMouseDown;
    press.clickCount = 1;
    const auto openMenu = [&] {
        if (mouseModeIsElastics())
            elasticsMouseDown(press);
        else if (mouseModeIsBracketColor() && !repeatActionTimerIsRunning())
            colorMouseDown(press);
    };
    // On nothing a press begins a drag, a key does not.
    if (survives(openMenu)) state_->_rotating = false;
}

void DXOpenGL::exitFullScreenModeWithOptions()
{
    HVOGLSmoothView::exitFullScreenModeWithOptions();
    setNeedsDisplay(true);
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
    case FunctionKey::Escape:
        escapePressed();
        break;
    case FunctionKey::Menu:
        openMenuAtPointer(event);
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
