#include "platform/view/ViewEvents.h"

#include "platform/view/OpenGLView.h"
#include "platform/view/ViewInput.h"
#include "platform/view/ViewPointer.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <utility>

namespace kelo {
namespace {

enum class Phase { None, Down, Dragged, Up };

/// What becomes of an event of one type.
struct EventRow
{
    EventType type;
    Phase phase;
    void (OpenGLView::*handler)(const Event &);
};

constexpr std::array eventRows = {
    EventRow{EventType::LeftMouseDown, Phase::Down, &OpenGLView::mouseDown},
    EventRow{EventType::LeftMouseDragged, Phase::Dragged, &OpenGLView::mouseDragged},
    EventRow{EventType::LeftMouseUp, Phase::Up, &OpenGLView::mouseUp},
    EventRow{EventType::RightMouseDown, Phase::Down, &OpenGLView::rightMouseDown},
    EventRow{EventType::RightMouseDragged, Phase::Dragged, &OpenGLView::rightMouseDragged},
    EventRow{EventType::RightMouseUp, Phase::Up, &OpenGLView::rightMouseUp},
    EventRow{EventType::OtherMouseDown, Phase::Down, &OpenGLView::otherMouseDown},
    EventRow{EventType::OtherMouseDragged, Phase::Dragged, &OpenGLView::otherMouseDragged},
    EventRow{EventType::OtherMouseUp, Phase::Up, &OpenGLView::otherMouseUp},
    EventRow{EventType::MouseMoved, Phase::None, &OpenGLView::mouseMoved},
    EventRow{EventType::MouseEntered, Phase::None, &OpenGLView::mouseEntered},
    EventRow{EventType::MouseExited, Phase::None, &OpenGLView::mouseExited},
    EventRow{EventType::ScrollWheel, Phase::None, &OpenGLView::scrollWheel},
    EventRow{EventType::FlagsChanged, Phase::None, &OpenGLView::flagsChanged},
    EventRow{EventType::KeyDown, Phase::None, &OpenGLView::keyDown},
    EventRow{EventType::KeyUp, Phase::None, &OpenGLView::keyUp},
};

const EventRow &rowOf(EventType type)
{
    return *std::find_if(eventRows.begin(), eventRows.end(),
                         [type](const EventRow &row) { return row.type == type; });
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

ViewEvents::ViewEvents(OpenGLView &view, ViewPointer &pointer, std::weak_ptr<const void> life)
    : view_(view), pointer_(pointer), life_(std::move(life))
{}

void ViewEvents::dispatch(const Event &event)
{
    if (event.type == EventType::MouseMoved && !view_.acceptsMouseMovedEvents) return;
    (view_.*rowOf(event.type).handler)(event);
}

void ViewEvents::movePointer(const std::optional<Point> &locationInWindow, const Event &cause)
{
    pointer_.move(locationInWindow, cause, [this](const Event &crossing) { dispatch(crossing); });
}

void ViewEvents::send(const Event &event)
{
    const std::weak_ptr<const void> life = life_;
    const Phase phase = rowOf(event.type).phase;
    modifierFlags_ = event.modifierFlags;
    if (phase != Phase::None || event.type == EventType::MouseMoved) {
        lastMouseEvent_ = event;
        movePointer(event.locationInWindow, event);
        if (life.expired()) return;
    }
    if (phase == Phase::Down) {
        presses_.push_back(event);
        if (!trackingMode_) trackingMode_.emplace(RunLoop::main(), RunLoopMode::EventTracking);
    }
    dispatch(event);
    if (life.expired()) return;
    if (phase == Phase::Up)
        std::erase_if(presses_,
                      [&event](const Event &press) { return upTypeOf(press.type) == event.type; });
    if (presses_.empty()) trackingMode_.reset();
}

void ViewEvents::releaseHeldButtons()
{
    const std::weak_ptr<const void> life = life_;
    // Handlers may press again; only what was held at the beginning is released.
    const std::vector<Event> held = presses_;
    for (const Event &press : held) {
        Event up = lastMouseEvent_;
        up.type = upTypeOf(press.type);
        up.clickCount = 0;
        up.modifierFlags = modifierFlags_;
        up.timestamp = RunLoop::main().currentTime();
        view_.sendEvent(up);
        if (life.expired()) return;
    }
}

void ViewEvents::takeInputBack(ViewInput &input, bool haveBeenReleased)
{
    const std::weak_ptr<const void> life = life_;
    if (haveBeenReleased)
        input.captureLost();
    else
        input.buttonsCameBack(QGuiApplication::mouseButtons());
    if (life.expired()) return;
    modifierFlags_ = input.flagsWithModifiers(QGuiApplication::queryKeyboardModifiers());
}

void ViewEvents::lendInput(const std::function<ViewInput *()> &input,
                           const std::function<bool()> &loop, const std::function<void()> &act)
{
    const std::weak_ptr<const void> life = life_;
    if (ViewInput *lent = input()) lent->setLent(true);
    const bool haveBeenReleased = loop();
    if (life.expired()) return;
    if (ViewInput *lent = input()) takeInputBack(*lent, haveBeenReleased);
    if (life.expired()) return;
    act();
    if (life.expired()) return;
    if (ViewInput *lent = input()) {
        lent->setLent(false);
        lent->noteModifiers(QGuiApplication::queryKeyboardModifiers());
    }
}

} // namespace kelo
