#pragma once

#include "platform/time/RunLoop.h"
#include "platform/view/Event.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelo {

class OpenGLView;
class ViewInput;
class ViewPointer;

/// Hands a view its events: each to the operation that its type names, with the run loop in the
/// event-tracking mode while a button is held. OpenGLView's header says what the operations
/// promise.
class ViewEvents
{
public:
    /// `life` expires with the view, which handlers may end.
    ViewEvents(OpenGLView &view, ViewPointer &pointer, std::weak_ptr<const void> life);

    /// Modifier bits as the last event left them.
    std::uint32_t modifierFlags() const { return modifierFlags_; }

    /// OpenGLView::sendEvent.
    void send(const Event &event);
    /// Reports that the pointer came to a place of the view, or left it (nullopt).
    void movePointer(const std::optional<Point> &locationInWindow, const Event &cause);
    /// Sends the matching up event for each held button.
    void releaseHeldButtons();
    /// OpenGLView::lendInput. `input` is asked each time: the view may go to another window
    /// meanwhile.
    void lendInput(const std::function<ViewInput *()> &input, const std::function<bool()> &loop,
                   const std::function<void()> &act);

private:
    void dispatch(const Event &event);
    /// Brings `input` up to date after an event loop that it knew nothing of.
    void takeInputBack(ViewInput &input, bool haveBeenReleased);

    OpenGLView &view_;
    ViewPointer &pointer_;
    std::weak_ptr<const void> life_;
    /// Held buttons in the order of their presses, each with the press that began it.
    std::vector<Event> presses_;
    Event lastMouseEvent_;
    std::uint32_t modifierFlags_ = 0;
    std::optional<RunLoop::ModeScope> trackingMode_;
};

} // namespace kelo
