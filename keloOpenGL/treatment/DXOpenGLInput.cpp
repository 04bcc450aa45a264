// Modes, pointer, wheel and keys.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "keloOpenGL/overlay/OverlayTools.h"
#include "keloOpenGL/view/MouthSteps.h"
#include "keloOpenGL/view/WorldTurn.h"

#include <QCursor>

#include <string>

namespace kelo {
namespace {

constexpr double snapDuration = 0.25;
constexpr double snapDelayAfterScroll = 0.5;
constexpr float scrollDegreesPerLine = 2.0f;
constexpr float quarterPi = 0.7853982f;

bool holdsControl(const Event &event)
{
    return (event.modifierFlags & ModifierFlag::Control) != 0;
}

/// What a press is for in this mode; null for nothing.
auto pressHandler(long mode) -> void (DXOpenGL::*)(const Event &)
{
    switch (mode) {
    case DXOpenGL::elasticsMode:
        return &DXOpenGL::elasticsMouseDown;
    case DXOpenGL::colorMode:
        return &DXOpenGL::colorMouseDown;
    case DXOpenGL::rotateMode:
        return &DXOpenGL::rotateMouseDown;
    default:
        return nullptr;
    }
}

/// The press that the menu key stands for.
Event pressOfMenuKey(const Event &keyEvent)
{
    Event press = keyEvent;
    press.type = EventType::RightMouseDown;
    press.clickCount = 1;
    return press;
}

} // namespace

// Modes.

void DXOpenGL::setMouseMode(long mode)
{
    if (mode != mouseMode() && !survives([this] { leaveMouseMode(); })) return;
    HVOGLSmoothView::setMouseMode(mode);
    setNeedsDisplay(true);
}

void DXOpenGL::leaveMouseMode()
{
    if (mouseModeIsElastics() && state_->elastics.isStringing()) endElasticPlacement();
    if (!mouseModeIsBracketColor() || !repeatActionTimerIsRunning()) return;
    state_->repeatPeriod.end.withdraw();
    restorePermanentMouseMode();
}

void DXOpenGL::restorePermanentMouseMode()
{
    const bool isRepeating =
        mouseModeIsTemporary() && mouseModeIsBracketColor() && repeatActionTimerIsRunning();
    if (!isRepeating) HVOGLSmoothView::restorePermanentMouseMode();
}

QCursor DXOpenGL::cursorForMouseMode(long mode) const
{
    if (mode == colorMode) return QCursor(Qt::PointingHandCursor);
    return mode == elasticsMode ? QCursor(Qt::CrossCursor) : defaultCursor();
}

void DXOpenGL::enterColorModeForControl()
{
    if (mouseModeIsElastics() && !state_->elastics.isStringing()) setTemporaryMouseMode(colorMode);
}

void DXOpenGL::flagsChanged(const Event &event)
{
    if (holdsControl(event))
        enterColorModeForControl();
    else
        restorePermanentMouseMode();
    synchronizeCursorWithMouseMode(event);
}

void DXOpenGL::followControlKey(const Event &event)
{
    if (holdsControl(event))
        enterColorModeForControl();
    else if (mouseModeIsTemporary() && mouseModeIsBracketColor())
        restorePermanentMouseMode();
}

// Tools of the overlay.

Size DXOpenGL::pressedSize() const
{
    return cameraSize().height > 0.0 ? cameraSize() : bounds().size;
}

Point DXOpenGL::pointInView(const Event &event) const
{
    return convertPoint_fromView(event.locationInWindow, nullptr);
}

Point DXOpenGL::toolPointForEvent(const Event &event) const
{
    return overlayPoint(pointInView(event), bounds().size);
}

std::string DXOpenGL::toolTipAtPoint(const Point &pointInView) const
{
    const OverlayTool *tool = toolAt(overlayPoint(pointInView, bounds().size));
    return tool ? translated(tool->toolTip) : std::string();
}

void DXOpenGL::pressTool(const OverlayTool &tool)
{
    if (!tool.mouseMode) state_->printButton.begin();
    setNeedsDisplay(true);
    if (tool.mouseMode) setMouseMode(*tool.mouseMode);
}

void DXOpenGL::releasePrintButton()
{
    if (state_->printButton.isDown() && !survives([this] { submitPrintRequest(); })) return;
    state_->printButton.end();
    setNeedsDisplay(true);
}

// The left button. A press goes to its mode's handler from here, without the base class between:
// every pick is asked for this way.

void DXOpenGL::leftMouseDown(const Event &event)
{
    followControlKey(event);
    if (const OverlayTool *tool = toolAt(toolPointForEvent(event)))
        pressTool(*tool);
    else
        pressInMouseMode(event);
}

void DXOpenGL::pressInMouseMode(const Event &event)
{
    const auto handler = pressHandler(mouseMode());
    if (handler) (this->*handler)(event);
}

void DXOpenGL::leftMouseDragged(const Event &event)
{
    if (!state_->printButton.isTracked()) HVOGLSmoothView::leftMouseDragged(event);
    if (!state_->printButton.isTracked()) return;
    state_->printButton.moveTo(printButtonRect().contains(toolPointForEvent(event)));
    setNeedsDisplay(true);
}

void DXOpenGL::leftMouseUp(const Event &event)
{
    HVOGLSmoothView::leftMouseUp(event);
    if (state_->printButton.isTracked())
        releasePrintButton();
    else if (event.clickCount == 2 && hostTogglesFullScreen() && toggleHostsFullScreen())
        setNeedsDisplay(true);
}

bool DXOpenGL::hostTogglesFullScreen() const
{
    return state_->delegate && state_->delegate->toggleFullScreenMode;
}

bool DXOpenGL::toggleHostsFullScreen()
{
    return tell(&DXOpenGLDelegate::toggleFullScreenMode, *this);
}

void DXOpenGL::rightMouseUp(const Event &event)
{
    HVOGLSmoothView::rightMouseUp(event);
    // The mode in which the press began to turn the jaws may have gone meanwhile, with the date.
    if (isRotating()) rotateMouseUp(event);
}

void DXOpenGL::mouseCaptureLost()
{
    // The release that follows was not made by the clinician, who therefore asked for nothing.
    state_->printButton.giveUp();
    HVOGLSmoothView::mouseCaptureLost();
}

// Presses on teeth, brackets, buttons and elastics.

void DXOpenGL::colorMouseDown(const Event &event)
{
    state_->events.currentEventToothName = toothNameAtPoint(backingPointForEvent(event));
    if (state_->events.currentEventToothName)
        pressTooth(*state_->events.currentEventToothName, event);
    else
        rotateMouseDown(event);
}

void DXOpenGL::pressTooth(std::string name, const Event &event)
{
    if (repeatActionTimerIsRunning())
        repeatLastActionOn(name);
    else
        displayBracketMenuForEvent(event);
}

DXOpenGL::Name DXOpenGL::toothNameAtPoint(const Point &backingPoint)
{
    bool isLingualButton = false;
    const Name name =
        bracketNameAtPoint_includeTeeth_isLingualButton(backingPoint, true, &isLingualButton);
    return isLingualButton ? TreatmentNote::toothNameForButtonName(*name) : name;
}

void DXOpenGL::elasticsMouseDown(const Event &event)
{
    const ElasticHit hit = elasticHitAtPoint(backingPointForEvent(event));
    const ElasticPress press = state_->elastics.press(hit);
    noteElasticPress(hit, press);
    carryOut(press, hit, event);
}

void DXOpenGL::noteElasticPress(const ElasticHit &hit, ElasticPress press)
{
    if (!isOnPlacedElastic(press)) state_->events.currentEventToothName = hit.member;
    if (press == ElasticPress::OpenElasticMenu)
        state_->events.currentEventElasticIndex = *hit.elasticIndex;
    if (press == ElasticPress::OpenMemberMenu)
        state_->events.currentEventElasticIndex = noElasticIndex;
}

void DXOpenGL::carryOut(ElasticPress press, const ElasticHit &hit, const Event &event)
{
    if (opensMenu(press)) displayElasticMenuForEvent(event);
    if (press == ElasticPress::TurnJaws) rotateMouseDown(event);
    if (press == ElasticPress::GoOn) goOnWithElasticAt(*hit.member);
}

// Rotate drags. The other modes' drags are rotate drags only while one of their presses began one.
// A press that opens a menu begins none: the menu is there with the press, and how the pointer goes
// on until the release neither turns the jaws behind it nor chooses in it.

bool DXOpenGL::isRotating() const
{
    return state_->drag.isGoingOn();
}

void DXOpenGL::rotateMouseDown(const Event &event)
{
    state_->drag.begin(pointInView(event), mouseButtonOf(event.type));
}

void DXOpenGL::rotateMouseDragged(const Event &event)
{
    const auto turn =
        state_->drag.moveTo(pointInView(event), mouseButtonOf(event.type), pressedSize());
    if (!turn) return;
    rotateByDegrees(turn->across);
    setMouthOpenAngle(mouthOpenAngle() - turn->up);
}

void DXOpenGL::rotateMouseUp(const Event &event)
{
    if (state_->drag.end(mouseButtonOf(event.type))) snapMouthClosedIfNeeded();
}

void DXOpenGL::colorMouseDragged(const Event &event)
{
    if (isRotating()) rotateMouseDragged(event);
}

void DXOpenGL::colorMouseUp(const Event &event)
{
    if (isRotating()) rotateMouseUp(event);
}

void DXOpenGL::elasticsMouseDragged(const Event &event)
{
    if (isRotating()) rotateMouseDragged(event);
}

void DXOpenGL::elasticsMouseUp(const Event &event)
{
    if (isRotating()) rotateMouseUp(event);
}

void DXOpenGL::snapMouthClosedIfNeeded()
{
    if (mouthSnapsClosed(mouthOpenAngle())) setTargetMouthOpenAngle_duration(0.0f, snapDuration);
}

void DXOpenGL::scrollWheel(const Event &event)
{
    // Written as negated comparisons, so that a delta that is not a number counts as a turn.
    if (!(event.deltaX == 0.0))
        rotateByDegrees(-scrollDegreesPerLine * static_cast<float>(event.deltaX));
    if (!(event.deltaY == 0.0)) scrollMouth(event.deltaY);
}

void DXOpenGL::scrollMouth(double lines)
{
    state_->mouthSnap.schedule(snapDelayAfterScroll, [this] { snapMouthClosedIfNeeded(); });
    setMouthOpenAngle(mouthOpenAngle() - scrollDegreesPerLine * static_cast<float>(lines));
    setNeedsDisplay(true);
}

// Keys.

const DXOpenGL::KeyCommand DXOpenGL::keyCommands[] = {
    {FunctionKey::UpArrow, &DXOpenGL::stepMouthUp},
    {FunctionKey::DownArrow, &DXOpenGL::stepMouthDown},
    {FunctionKey::LeftArrow, &DXOpenGL::turnLeft},
    {FunctionKey::RightArrow, &DXOpenGL::turnRight},
    {FunctionKey::Escape, &DXOpenGL::escapePressed},
    {FunctionKey::Menu, &DXOpenGL::openMenuAtPointer},
    {u'0', &DXOpenGL::goHome},
};

void DXOpenGL::keyDown(const Event &event)
{
    for (const KeyCommand &command : keyCommands) {
        if (event.characters.starts_with(command.key)) return (this->*command.run)(event);
    }
    HVOGLSmoothView::keyDown(event);
}

void DXOpenGL::stepMouthUp(const Event &)
{
    if (const auto angle = mouthAngleOneStepUp(mouthOpenAngle())) setTargetMouthOpenAngle(*angle);
}

void DXOpenGL::stepMouthDown(const Event &)
{
    if (const auto angle = mouthAngleOneStepDown(mouthOpenAngle())) setTargetMouthOpenAngle(*angle);
}

void DXOpenGL::turnLeft(const Event &)
{
    turnTargetByAngle(-quarterPi);
}

void DXOpenGL::turnRight(const Event &)
{
    turnTargetByAngle(quarterPi);
}

void DXOpenGL::turnTargetByAngle(float angle)
{
    const Quaternion turned =
        Quaternion_rotated(targetWorldQuaternion(), Vector3{0.0f, 0.0f, 1.0f}, angle);
    setTargetWorldQuaternion(clampQuaternionToFront180Degrees(turned));
}

void DXOpenGL::goHome(const Event &)
{
    const Rotation home = defaultOrientation();
    setTargetWorldRotationAngle_axis(home[0], home[1], home[2], home[3]);
    setTargetMouthOpenAngle(0.0f);
}

void DXOpenGL::escapePressed(const Event &)
{
    if (state_->elastics.isStringing()) {
        if (survives([this] { endElasticPlacement(); })) setNeedsDisplay(true);
    } else if (isInFullScreenMode()) {
        leaveFullScreen();
    }
}

void DXOpenGL::leaveFullScreen()
{
    if (hostTogglesFullScreen())
        toggleHostsFullScreen();
    else
        exitFullScreenModeWithOptions();
}

void DXOpenGL::exitFullScreenModeWithOptions()
{
    HVOGLSmoothView::exitFullScreenModeWithOptions();
    setNeedsDisplay(true);
}

void DXOpenGL::openMenuAtPointer(const Event &event)
{
    if (!pointerIsOverView()) return; // the key's place is where the pointer left
    // A press there would string, or is still going on.
    if (state_->elastics.isStringing() || isRotating()) return;
    // On nothing a press begins a drag, a key does not.
    if (survives([&] { openMenuForPress(pressOfMenuKey(event)); })) state_->drag.cancel();
}

void DXOpenGL::openMenuForPress(const Event &press)
{
    if (mouseModeIsElastics())
        elasticsMouseDown(press);
    else if (mouseModeIsBracketColor() && !repeatActionTimerIsRunning())
        colorMouseDown(press);
}

} // namespace kelo
