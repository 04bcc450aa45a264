#pragma once

#include "platform/view/Event.h"

#include <Qt>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QKeyEvent;
class QMouseEvent;
class QPointF;
class QWheelEvent;

namespace kelo {

class OpenGLView;
class Timer;

/// Turns the input events of a window or widget that a view fills into the view's own, and keeps
/// what that needs: click counts, held buttons, known modifiers, the move that waits for the next
/// frame, and the tool tip that waits for the pointer to rest. Owned by whoever receives the Qt
/// events; the view may end at any event.
class ViewInput
{
public:
    explicit ViewInput(OpenGLView &view) : view_(&view) {}
    ~ViewInput();

    void forgetView();

    void mousePressed(const QMouseEvent &event);
    void mouseMoved(const QMouseEvent &event);
    void mouseReleased(const QMouseEvent &event);
    void wheelTurned(const QWheelEvent &event);
    void keyPressed(const QKeyEvent &event);
    void keyReleased(const QKeyEvent &event);
    void pointerEntered(const QPointF &position, Qt::KeyboardModifiers modifiers);
    void pointerLeft();
    /// The keyboard came, with these modifiers held, or went. The view is told when that is news.
    void focusGained(Qt::KeyboardModifiers modifiers);
    void focusLost();
    /// Held buttons will not be released here.
    void captureLost();
    /// While the input goes elsewhere, as to a menu, the modifiers stay as the view was told of
    /// them.
    void setLent(bool isLent) { isLent_ = isLent; }
    /// After a while in which releases went elsewhere: gives up the held buttons unless all of them
    /// still are.
    void buttonsCameBack(Qt::MouseButtons held);
    /// Event flags while these modifiers are held.
    std::uint32_t flagsWithModifiers(Qt::KeyboardModifiers modifiers) const;
    /// Tells the view of modifiers that changed where no key event said so.
    void noteModifiers(Qt::KeyboardModifiers modifiers);
    /// Moves between two frames are kept back and become one, the last. Delivers it.
    void deliverPendingMove();
    bool buttonIsHeld() const { return !heldButtons_.empty(); }

private:
    struct Click
    {
        Qt::MouseButton button = Qt::NoButton;
        Point location;
        double time = 0.0;
        int count = 0;
    };
    Point windowLocation(const QPointF &position) const;
    Event makeEvent(EventType type, std::uint32_t flags) const;
    void send(const Event &event);
    void changeFlags(std::uint32_t flags);
    void noteCapsLock(const QKeyEvent &event);
    bool handleModifierKey(const QKeyEvent &event, bool pressed);
    void sendKey(const QKeyEvent &event, EventType type);
    /// Follows the pointer: a tool tip of another place goes, and one of this place comes soon.
    void pointerRestsSoon();
    void forgetToolTip();
    int countClick(const QMouseEvent &event, const Point &location);

    OpenGLView *view_;
    std::vector<Qt::MouseButton> heldButtons_; ///< first pressed first
    std::optional<Event> pendingMove_;
    Click lastClick_;
    std::string toolTip_; ///< shown, or waiting for its time
    std::shared_ptr<Timer> toolTipTimer_;
    Point lastLocation_;
    std::uint32_t heldFlags_ = 0; ///< Shift, Control, Option, Command as the view knows them
    bool capsLock_ = false;
    bool isLent_ = false;
    bool hasFocus_ = false;
};

} // namespace kelo
