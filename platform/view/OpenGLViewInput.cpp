#include "platform/view/OpenGLViewPrivate.h"
#include "platform/view/ViewInput.h"

#include <QCursor>
#include <QGuiApplication>

#include <algorithm>

namespace kelo {
namespace {

enum class Phase { None, Down, Dragged, Up };

Phase phaseOf(EventType type)
{
    switch (type) {
    case EventType::LeftMouseDown:
    case EventType::RightMouseDown:
    case EventType::OtherMouseDown:
        return Phase::Down;
    case EventType::LeftMouseDragged:
    case EventType::RightMouseDragged:
    case EventType::OtherMouseDragged:
        return Phase::Dragged;
    case EventType::LeftMouseUp:
    case EventType::RightMouseUp:
    case EventType::OtherMouseUp:
        return Phase::Up;
    default:
        return Phase::None;
    }
}

EventType upTypeOf(EventType downType)
{
    switch (downType) {
    case EventType::RightMouseDown:
        return EventType::RightMouseUp;
    case EventType::OtherMouseDown:
        return EventType::OtherMouseUp;
    default:
        return EventType::LeftMouseUp;
    }
}

} // namespace

void OpenGLView::mouseDown(const Event &) {}
void OpenGLView::mouseDragged(const Event &) {}
void OpenGLView::mouseUp(const Event &) {}
void OpenGLView::rightMouseDown(const Event &) {}
void OpenGLView::rightMouseDragged(const Event &) {}
void OpenGLView::rightMouseUp(const Event &) {}
void OpenGLView::otherMouseDown(const Event &) {}
void OpenGLView::otherMouseDragged(const Event &) {}
void OpenGLView::otherMouseUp(const Event &) {}
void OpenGLView::mouseMoved(const Event &) {}
void OpenGLView::mouseEntered(const Event &) {}
void OpenGLView::mouseExited(const Event &) {}
void OpenGLView::scrollWheel(const Event &) {}
void OpenGLView::flagsChanged(const Event &) {}
void OpenGLView::keyDown(const Event &) {}
void OpenGLView::keyUp(const Event &) {}

void OpenGLView::mouseCaptureLost()
{
    const std::weak_ptr<int> life = d->lifeToken;
    // Handlers may press again; only what was held at the beginning is released.
    const std::vector<Event> held = d->presses;
    for (const Event &press : held) {
        Event up = d->lastMouseEvent;
        up.type = upTypeOf(press.type);
        up.clickCount = 0;
        up.modifierFlags = modifierFlags_;
        up.timestamp = RunLoop::main().currentTime();
        sendEvent(up);
        if (life.expired()) return;
    }
}

void OpenGLView::lendInput(const std::function<bool()> &loop, const std::function<void()> &act)
{
    const std::weak_ptr<int> life = d->lifeToken;
    // Asked for anew each time: the view may go to another window meanwhile.
    if (ViewInput *input = surface().input()) input->setLent(true);
    const bool haveBeenReleased = loop();
    if (life.expired()) return;
    if (ViewInput *input = surface().input()) {
        if (haveBeenReleased)
            input->captureLost();
        else
            input->buttonsCameBack(QGuiApplication::mouseButtons());
        if (life.expired()) return;
        modifierFlags_ = input->flagsWithModifiers(QGuiApplication::queryKeyboardModifiers());
    }
    act();
    if (life.expired()) return;
    if (ViewInput *input = surface().input()) {
        input->setLent(false);
        input->noteModifiers(QGuiApplication::queryKeyboardModifiers());
    }
}

void OpenGLView::sendEvent(const Event &event)
{
    const std::weak_ptr<int> life = d->lifeToken;
    const Phase phase = phaseOf(event.type);
    modifierFlags_ = event.modifierFlags;
    if (phase != Phase::None || event.type == EventType::MouseMoved) {
        d->lastMouseEvent = event;
        movePointer(event.locationInWindow, event);
        if (life.expired()) return;
    }
    if (phase == Phase::Down) {
        d->presses.push_back(event);
        holdTrackingMode();
    }
    dispatch(event);
    if (life.expired()) return;
    if (phase == Phase::Up)
        std::erase_if(d->presses,
                      [&event](const Event &press) { return upTypeOf(press.type) == event.type; });
    releaseTrackingMode();
}

void OpenGLView::holdTrackingMode()
{
    if (!d->trackingMode) d->trackingMode.emplace(RunLoop::main(), RunLoopMode::EventTracking);
}

void OpenGLView::releaseTrackingMode()
{
    if (d->presses.empty()) d->trackingMode.reset();
}

void OpenGLView::dispatch(const Event &event)
{
    switch (event.type) {
    case EventType::LeftMouseDown:
        mouseDown(event);
        break;
    case EventType::LeftMouseDragged:
        mouseDragged(event);
        break;
    case EventType::LeftMouseUp:
        mouseUp(event);
        break;
    case EventType::RightMouseDown:
        rightMouseDown(event);
        break;
    case EventType::RightMouseDragged:
        rightMouseDragged(event);
        break;
    case EventType::RightMouseUp:
        rightMouseUp(event);
        break;
    case EventType::OtherMouseDown:
        otherMouseDown(event);
        break;
    case EventType::OtherMouseDragged:
        otherMouseDragged(event);
        break;
    case EventType::OtherMouseUp:
        otherMouseUp(event);
        break;
    case EventType::MouseMoved:
        if (acceptsMouseMovedEvents) mouseMoved(event);
        break;
    case EventType::MouseEntered:
        mouseEntered(event);
        break;
    case EventType::MouseExited:
        mouseExited(event);
        break;
    case EventType::ScrollWheel:
        scrollWheel(event);
        break;
    case EventType::FlagsChanged:
        flagsChanged(event);
        break;
    case EventType::KeyDown:
        keyDown(event);
        break;
    case EventType::KeyUp:
        keyUp(event);
        break;
    }
}

void OpenGLView::movePointer(const std::optional<Point> &locationInWindow, const Event &cause)
{
    const std::weak_ptr<int> life = d->lifeToken;
    d->pointerInWindow = locationInWindow;
    std::vector<int> changed;
    for (const Private::TrackingRect &tracking : d->trackingRects) {
        const bool inside =
            locationInWindow &&
            tracking.rect.contains(convertPoint_fromView(*locationInWindow, nullptr));
        if (inside != tracking.isInside) changed.push_back(tracking.tag);
    }
    for (int tag : changed) {
        // Handlers may add and remove rectangles.
        const auto found = std::find_if(
            d->trackingRects.begin(), d->trackingRects.end(),
            [tag](const Private::TrackingRect &tracking) { return tracking.tag == tag; });
        if (found == d->trackingRects.end()) continue;
        found->isInside = !found->isInside;
        Event crossing = cause;
        crossing.type = found->isInside ? EventType::MouseEntered : EventType::MouseExited;
        crossing.clickCount = 0;
        dispatch(crossing);
        if (life.expired()) return;
    }
    updateCursor(false);
}

bool OpenGLView::pointerIsOverView() const
{
    return d->pointerInWindow.has_value();
}

int OpenGLView::addTrackingRect(const Rect &rect, bool assumeInside)
{
    d->trackingRects.push_back({++d->lastTrackingTag, rect, assumeInside});
    return d->lastTrackingTag;
}

void OpenGLView::removeTrackingRect(int tag)
{
    std::erase_if(d->trackingRects,
                  [tag](const Private::TrackingRect &tracking) { return tracking.tag == tag; });
}

bool OpenGLView::cursorsAreAvailable()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

void OpenGLView::setCursor(const QCursor &cursor)
{
    d->cursor = cursor;
    if (d->surface) d->surface->showCursor(cursor);
}

QCursor OpenGLView::cursor() const
{
    return d->cursor ? *d->cursor : QCursor(Qt::ArrowCursor);
}

void OpenGLView::invalidateCursorRects()
{
    d->cursorRects.clear();
    if (!cursorsAreAvailable()) return;
    resetCursorRects();
    updateCursor(true);
}

void OpenGLView::resetCursorRects() {}

void OpenGLView::addCursorRect(const Rect &rect, const QCursor &cursor)
{
    d->cursorRects.push_back({rect, cursor});
}

void OpenGLView::updateCursor(bool evenIfInTheSameRect)
{
    if (!d->pointerInWindow || !cursorsAreAvailable()) {
        d->cursorRectOfPointer.reset();
        return;
    }
    const Point point = convertPoint_fromView(*d->pointerInWindow, nullptr);
    const auto found = std::find_if(
        d->cursorRects.begin(), d->cursorRects.end(),
        [&point](const Private::CursorRect &candidate) { return candidate.rect.contains(point); });
    std::optional<std::size_t> index;
    if (found != d->cursorRects.end())
        index = static_cast<std::size_t>(found - d->cursorRects.begin());
    if (index == d->cursorRectOfPointer && !(evenIfInTheSameRect && index)) return;
    d->cursorRectOfPointer = index;
    setCursor(index ? found->cursor : QCursor(Qt::ArrowCursor));
}

void OpenGLView::viewDidMoveToWindow() {}

} // namespace kelo
