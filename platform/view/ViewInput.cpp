#include "platform/view/ViewInput.h"

#include "platform/presenters/DesktopPresenters.h"
#include "platform/time/RunLoop.h"
#include "platform/view/OpenGLViewPrivate.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelo {
namespace {

/// Seconds that the pointer rests before it is told what it points at, as desktops have it.
constexpr double toolTipDelay = 0.7;

constexpr std::uint32_t heldKeysMask =
    ModifierFlag::Shift | ModifierFlag::Control | ModifierFlag::Option | ModifierFlag::Command;

enum class Press { Down, Dragged, Up };

EventType mouseEventType(Qt::MouseButton button, Press phase)
{
    const auto choose = [phase](EventType down, EventType dragged, EventType up) {
        return phase == Press::Down ? down : phase == Press::Dragged ? dragged : up;
    };
    switch (button) {
    case Qt::LeftButton:
        return choose(EventType::LeftMouseDown, EventType::LeftMouseDragged,
                      EventType::LeftMouseUp);
    case Qt::RightButton:
        return choose(EventType::RightMouseDown, EventType::RightMouseDragged,
                      EventType::RightMouseUp);
    default:
        return choose(EventType::OtherMouseDown, EventType::OtherMouseDragged,
                      EventType::OtherMouseUp);
    }
}

/// The flag of a modifier key, or 0 for other keys.
std::uint32_t flagOfKey(int key)
{
    switch (key) {
    case Qt::Key_Shift:
        return ModifierFlag::Shift;
    case Qt::Key_Control:
        return ModifierFlag::Control;
    case Qt::Key_Alt:
        return ModifierFlag::Option;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return ModifierFlag::Command;
    default:
        return 0;
    }
}

} // namespace

ViewInput::~ViewInput()
{
    forgetToolTip();
}

void ViewInput::forgetView()
{
    forgetToolTip();
    view_ = nullptr;
}

void ViewInput::forgetToolTip()
{
    if (toolTipTimer_) toolTipTimer_->invalidate();
    toolTipTimer_.reset();
    if (!toolTip_.empty()) desktopPresenters().hideToolTip();
    toolTip_.clear();
}

void ViewInput::pointerRestsSoon()
{
    const std::string text =
        view_->toolTipAtPoint(view_->convertPoint_fromView(lastLocation_, nullptr));
    if (text == toolTip_) return;
    forgetToolTip();
    if (text.empty()) return;
    toolTip_ = text;
    toolTipTimer_ = RunLoop::main().scheduledTimer(
        toolTipDelay, false, [this](Timer &) { desktopPresenters().showToolTip(toolTip_); });
}

Point ViewInput::windowLocation(const QPointF &position) const
{
    return view_->flippedWindowPoint({position.x(), position.y()});
}

Event ViewInput::makeEvent(EventType type, std::uint32_t flags) const
{
    Event event;
    event.type = type;
    event.locationInWindow = lastLocation_;
    event.modifierFlags = flags | (capsLock_ ? ModifierFlag::CapsLock : 0);
    event.timestamp = RunLoop::main().currentTime();
    return event;
}

void ViewInput::send(const Event &event)
{
    if (view_) OpenGLView::Private::of(*view_).events.send(event);
}

void ViewInput::deliverPendingMove()
{
    if (const auto move = std::exchange(pendingMove_, std::nullopt)) send(*move);
}

void ViewInput::changeFlags(std::uint32_t flags)
{
    heldFlags_ = flags & heldKeysMask;
    send(makeEvent(EventType::FlagsChanged, heldFlags_));
}

std::uint32_t ViewInput::flagsWithModifiers(Qt::KeyboardModifiers modifiers) const
{
    return (modifierFlagsFromQt(static_cast<int>(modifiers)) & heldKeysMask) |
           (capsLock_ ? ModifierFlag::CapsLock : 0);
}

void ViewInput::noteModifiers(Qt::KeyboardModifiers modifiers)
{
    const std::uint32_t flags = modifierFlagsFromQt(static_cast<int>(modifiers)) & heldKeysMask;
    if (flags != heldFlags_ && !isLent_) changeFlags(flags);
}

int ViewInput::countClick(const QMouseEvent &event, const Point &location)
{
    const QStyleHints &hints = *QGuiApplication::styleHints();
    // Events that programs make up carry no time of their own.
    const double time = event.timestamp() != 0 ? static_cast<double>(event.timestamp()) / 1000.0
                                               : RunLoop::main().currentTime();
    const double elapsed = time - lastClick_.time;
    const double distance = std::max(std::abs(location.x - lastClick_.location.x),
                                     std::abs(location.y - lastClick_.location.y));
    const bool continues = lastClick_.count > 0 && event.button() == lastClick_.button &&
                           elapsed >= 0.0 && elapsed * 1000.0 <= hints.mouseDoubleClickInterval() &&
                           distance <= hints.mouseDoubleClickDistance();
    int count = continues ? lastClick_.count + 1 : 1;
    if (event.type() == QEvent::MouseButtonDblClick) count = std::max(count, 2);
    lastClick_ = {event.button(), location, time, count};
    return count;
}

void ViewInput::mousePressed(const QMouseEvent &event)
{
    forgetToolTip();
    deliverPendingMove();
    // A press of a held button: its release went elsewhere, as to a menu that has closed since.
    if (std::find(heldButtons_.begin(), heldButtons_.end(), event.button()) != heldButtons_.end())
        captureLost();
    if (!view_) return;
    lastLocation_ = windowLocation(event.position());
    noteModifiers(event.modifiers());
    if (!view_) return;
    heldButtons_.push_back(event.button());
    Event press = makeEvent(mouseEventType(event.button(), Press::Down), heldFlags_);
    press.clickCount = countClick(event, lastLocation_);
    send(press);
}

void ViewInput::mouseReleased(const QMouseEvent &event)
{
    deliverPendingMove();
    if (!view_) return;
    lastLocation_ = windowLocation(event.position());
    noteModifiers(event.modifiers());
    // A release whose press went elsewhere, or was given up.
    if (std::erase(heldButtons_, event.button()) == 0 || !view_) return;
    Event release = makeEvent(mouseEventType(event.button(), Press::Up), heldFlags_);
    release.clickCount = event.button() == lastClick_.button ? lastClick_.count : 1;
    send(release);
}

void ViewInput::mouseMoved(const QMouseEvent &event)
{
    if (!view_) return;
    buttonsCameBack(event.buttons());
    if (!view_) return;
    const std::uint32_t flags =
        modifierFlagsFromQt(static_cast<int>(event.modifiers())) & heldKeysMask;
    if (flags != heldFlags_) {
        deliverPendingMove();
        if (!view_) return;
    }
    lastLocation_ = windowLocation(event.position());
    noteModifiers(event.modifiers());
    if (!view_) return;
    const bool dragging = !heldButtons_.empty();
    if (!dragging) pointerRestsSoon();
    Event move = makeEvent(dragging ? mouseEventType(heldButtons_.front(), Press::Dragged)
                                    : EventType::MouseMoved,
                           heldFlags_);
    if (dragging) move.clickCount = lastClick_.count;
    pendingMove_ = move;
    if (!view_->needsDisplay() || !view_->isExposed()) deliverPendingMove();
}

void ViewInput::wheelTurned(const QWheelEvent &event)
{
    forgetToolTip();
    deliverPendingMove();
    if (!view_) return;
    lastLocation_ = windowLocation(event.position());
    noteModifiers(event.modifiers());
    if (!view_) return;
    Event scroll = makeEvent(EventType::ScrollWheel, heldFlags_);
    const Point delta = scrollDeltaInLines(event);
    scroll.deltaX = delta.x;
    scroll.deltaY = delta.y;
    send(scroll);
}

void ViewInput::noteCapsLock(const QKeyEvent &event)
{
    // Qt's modifiers do not tell it; X11's own state, which is the one before the event, does.
    constexpr quint32 x11LockMask = 2;
    if (QGuiApplication::platformName() == QLatin1String("xcb") && event.spontaneous())
        capsLock_ = (event.nativeModifiers() & x11LockMask) != 0;
}

bool ViewInput::handleModifierKey(const QKeyEvent &event, bool pressed)
{
    if (event.key() == Qt::Key_CapsLock) {
        if (pressed && !event.isAutoRepeat()) {
            capsLock_ = !capsLock_;
            changeFlags(heldFlags_);
        }
        return true;
    }
    const std::uint32_t flag = flagOfKey(event.key());
    if (flag == 0) return event.key() == Qt::Key_AltGr;
    // Whether the modifiers of a modifier key's own event contain the key differs by platform.
    std::uint32_t flags = modifierFlagsFromQt(static_cast<int>(event.modifiers())) & heldKeysMask;
    flags = pressed ? flags | flag : flags & ~flag;
    if (flags != heldFlags_) changeFlags(flags);
    return true;
}

void ViewInput::sendKey(const QKeyEvent &event, EventType type)
{
    noteModifiers(event.modifiers());
    if (!view_) return;
    const std::uint32_t keyFlags =
        modifierFlagsFromQt(static_cast<int>(event.modifiers())) & ModifierFlag::NumericPad;
    Event key = makeEvent(type, heldFlags_ | keyFlags);
    key.characters = charactersFromQt(event.key(), event.text().toStdU16String());
    send(key);
}

void ViewInput::keyPressed(const QKeyEvent &event)
{
    forgetToolTip();
    deliverPendingMove();
    noteCapsLock(event);
    if (!handleModifierKey(event, true) && view_) sendKey(event, EventType::KeyDown);
}

void ViewInput::keyReleased(const QKeyEvent &event)
{
    // Qt tells a repeating key as releases and presses; only the last release is one.
    if (event.isAutoRepeat()) return;
    deliverPendingMove();
    if (!handleModifierKey(event, false) && view_) sendKey(event, EventType::KeyUp);
}

void ViewInput::pointerEntered(const QPointF &position, Qt::KeyboardModifiers modifiers)
{
    deliverPendingMove();
    if (!view_) return;
    lastLocation_ = windowLocation(position);
    noteModifiers(modifiers);
    if (view_)
        OpenGLView::Private::of(*view_).events.movePointer(
            lastLocation_, makeEvent(EventType::MouseEntered, heldFlags_));
}

void ViewInput::pointerLeft()
{
    forgetToolTip();
    deliverPendingMove();
    if (view_)
        OpenGLView::Private::of(*view_).events.movePointer(
            std::nullopt, makeEvent(EventType::MouseExited, heldFlags_));
}

void ViewInput::focusGained(Qt::KeyboardModifiers modifiers)
{
    deliverPendingMove();
    if (!view_) return;
    if (!std::exchange(hasFocus_, true)) view_->becomeFirstResponder();
    if (view_) noteModifiers(modifiers);
}

void ViewInput::focusLost()
{
    forgetToolTip();
    deliverPendingMove();
    // Keys that are released elsewhere would stay held for ever.
    if (view_) noteModifiers(Qt::NoModifier);
    if (std::exchange(hasFocus_, false) && view_) view_->resignFirstResponder();
}

void ViewInput::captureLost()
{
    deliverPendingMove();
    if (heldButtons_.empty()) return;
    heldButtons_.clear();
    if (view_) view_->mouseCaptureLost();
}

void ViewInput::buttonsCameBack(Qt::MouseButtons held)
{
    const bool allStillHeld = std::all_of(heldButtons_.begin(), heldButtons_.end(),
                                          [held](Qt::MouseButton button) { return held & button; });
    if (!allStillHeld) captureLost();
}

} // namespace kelo
