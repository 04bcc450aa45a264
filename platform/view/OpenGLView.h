#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "platform/view/Event.h"
#include "platform/view/OpenGLContext.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QCursor;
class QImage;
class QWidget;
class QWindow;

namespace kelo {

class ViewSurface;
struct Teller;

/// Where views draw. A view creates its surface when it first needs one: for its context
/// (openGLContext, display, grabImage), its window (window, createContainer, enterFullScreenMode)
/// or an event loop inside an event (lendInput). Operations that only query the view create none.
enum class SurfaceKind {
    Automatic,   ///< Surfaceless without a graphical application or display, else Window
    Window,      ///< a native window with a context of its own
    Surfaceless, ///< a pixel buffer without any display server (EGL)
    Undrawn,     ///< none: the view computes and never draws; needs no OpenGL
};

/// Posted with the view as object when its frame changed, if it postsFrameChangedNotifications.
inline constexpr char viewFrameDidChangeNotification[] = "viewFrameDidChangeNotification";

/// A view that draws with OpenGL and takes input: the base of the view classes.
///
/// On a display the view is a native window of its own (true double buffering, a context that
/// outlives re-parenting and full screen), which a host embeds with createContainer; without a
/// display it draws into a pixel buffer. Drawing and event code is the same in both.
///
/// Coordinates: bounds() starts at (0, 0) and is in points. isFlipped() says which way y counts in
/// the view; events carry window locations with y counting up. One function, deviceSize(), gives
/// the size in device pixels; viewport, picking and read-back all use it, and the backing scale is
/// queried every time, since a window can move to another screen.
///
/// Redraws are requested with setNeedsDisplay and coalesced; nothing is drawn while the window is
/// not exposed. Main thread only.
///
/// Hold it in a shared_ptr, as makeView does: then it stays alive while it calls a host, whatever
/// the host releases.
class KELO_EXPORT OpenGLView : public std::enable_shared_from_this<OpenGLView>
{
public:
    explicit OpenGLView(const Rect &frame, const PixelFormat &pixelFormat = {});
    virtual ~OpenGLView();
    OpenGLView(const OpenGLView &) = delete;
    OpenGLView &operator=(const OpenGLView &) = delete;

    /// What a view is put together from; only the platform's own sources know more of it.
    struct Private;

    /// Completes a new view; makeView calls it. Overriders call their base first.
    virtual void awakeFromNib();

    /// @name Where views draw
    /// @{
    static void setSurfaceKind(SurfaceKind kind); ///< for views that have no surface yet
    static SurfaceKind surfaceKind();             ///< never Automatic: what a view would get now
    /// @}

    /// @name Geometry
    /// @{
    Rect frame() const { return frame_; }
    Rect bounds() const { return {{0.0, 0.0}, frame_.size}; }
    /// Resizes the view (and its window, where it has one) and calls reshape.
    void setFrameSize(const Size &size);
    virtual bool isFlipped() const { return false; }
    virtual bool isOpaque() const { return false; }
    /// Converts a point from another view, or from the window when `view` is null, into this one's
    /// coordinates: with a flipped view y is counted from the top edge.
    virtual Point convertPoint_fromView(const Point &point, const OpenGLView *view) const;
    /// Counts a window point's y from the other edge: turns a position as windowing systems give it
    /// (from the top left corner) into a location as events carry it (Event::locationInWindow), and
    /// back. The lowest row of device pixels, not of points, has the location 1.
    Point flippedWindowPoint(const Point &point) const;
    /// Device pixels per point of the screen that the view is on, or the scale set for surfaceless
    /// drawing. Before a view has its window, the main screen's, on which the window will open.
    double backingScaleFactor() const;
    /// The scale of a view without display (default 1); calls reshape. A window's scale is its
    /// screen's and stays.
    void setSurfacelessScaleFactor(double scale);
    double surfacelessScaleFactor() const { return surfacelessScale_; }
    bool wantsBestResolutionOpenGLSurface() const { return wantsBestResolution_; }
    void setWantsBestResolutionOpenGLSurface(bool wants) { wantsBestResolution_ = wants; }
    /// A size in points as device pixels, whole numbers, rounded once; of the bounds' size it is
    /// deviceSize().
    Size convertSizeToBacking(const Size &size) const;
    /// A point of the view as device pixels (not rounded).
    Point convertPointToBacking(const Point &point) const;
    PixelSize deviceSize() const;
    /// @}

    /// @name Drawing
    /// @{
    /// The view's context, created on first use. Throws OpenGLUnavailable where legacy OpenGL is
    /// not available.
    OpenGLContext &openGLContext();
    std::shared_ptr<OpenGLContext> sharedOpenGLContext();
    bool hasOpenGLContext() const;
    const PixelFormat &pixelFormat() const { return pixelFormat_; }
    /// Requests a redraw (or withdraws the request). Requests are coalesced.
    void setNeedsDisplay(bool needsDisplay);
    bool needsDisplay() const { return needsDisplay_; }
    /// Draws now, requested or not, if the view is exposed; returns when the frame is drawn and
    /// flushed.
    void display();
    /// Draws now if a redraw was requested.
    void displayIfNeeded();
    /// Whether drawing would be seen: an exposed window, or a surface without display. False for a
    /// view whose window has not been created yet.
    bool isExposed() const;
    /// The drawing itself, for subclasses. The context is not made current before.
    virtual void drawRect(const Rect &dirtyRect);
    /// Called after the view's size in points or pixels changed.
    virtual void reshape();
    /// What the view shows: draws a frame and reads it back, deviceSize() pixels, top row first,
    /// opaque. Works whether or not the view is exposed, and does not change what is on the screen.
    /// A null image when there is nothing to draw on. Throws OpenGLUnavailable.
    QImage grabImage();
    /// Discards the context, as the loss of a display does, and requests a redraw; the next drawing
    /// creates a new one.
    void loseContext();
    /// @}

    /// @name Input
    /// The handlers of events; the base only passes right and other presses on.
    /// @{
    virtual bool acceptsFirstResponder() const { return false; }
    virtual bool becomeFirstResponder() { return true; }
    virtual bool resignFirstResponder() { return true; }
    virtual void mouseDown(const Event &event);
    virtual void mouseDragged(const Event &event);
    virtual void mouseUp(const Event &event);
    virtual void rightMouseDown(const Event &event);
    virtual void rightMouseDragged(const Event &event);
    virtual void rightMouseUp(const Event &event);
    virtual void otherMouseDown(const Event &event);
    virtual void otherMouseDragged(const Event &event);
    virtual void otherMouseUp(const Event &event);
    virtual void mouseMoved(const Event &event);
    virtual void mouseEntered(const Event &event);
    virtual void mouseExited(const Event &event);
    virtual void scrollWheel(const Event &event);
    virtual void flagsChanged(const Event &event);
    virtual void keyDown(const Event &event);
    virtual void keyUp(const Event &event);
    /// Called when a held button will never be released here (the window was hidden or lost the
    /// mouse); the base sends the matching up event at the last known place, with a click count of
    /// 0, because nobody clicked.
    virtual void mouseCaptureLost();
    /// Hands an event to the operation that its type names, in the event-tracking mode of the run
    /// loop while a button is held. Windows and scripts both come through here.
    void sendEvent(const Event &event);
    /// For an event loop inside one of the operations above that takes over the input, as an open
    /// menu does. Runs `loop`, which returns whether a button that was held at the start was
    /// released in it, even if it is held again. Then ends a press whose button was released
    /// (mouseCaptureLost), calls `act` with currentModifierFlags() as the keys are held by then,
    /// and reports changed modifiers last (flagsChanged), so that what `act` does still belongs to
    /// the press that began it. If the view is destroyed in `loop`, nothing follows.
    void lendInput(const std::function<bool()> &loop, const std::function<void()> &act);
    /// Modifier bits as the last event left them.
    std::uint32_t currentModifierFlags() const;
    /// Whether the pointer is over the view, as far as its events show; while a button is held,
    /// also outside it.
    bool pointerIsOverView() const;
    /// Whether mouse moves without a button are delivered.
    bool acceptsMouseMovedEvents = false;
    /// @}

    /// @name Cursor and tracking
    /// @{
    /// Whether cursors can be made: not without a QGuiApplication, where creating one terminates
    /// the program. A view without one has no cursor and no cursor rectangles.
    static bool cursorsAreAvailable();
    /// Shows this cursor until the pointer goes into another cursor rectangle.
    void setCursor(const QCursor &cursor);
    /// The cursor that is shown now. Only where cursors are available.
    QCursor cursor() const;
    /// Discards the cursor rectangles and calls resetCursorRects for new ones; the one under the
    /// pointer takes effect at once.
    void invalidateCursorRects();
    /// Called only where cursors are available.
    virtual void resetCursorRects();
    /// Adds a rectangle (view coordinates) with a cursor of its own; of several that contain the
    /// pointer the first counts; outside all of them the arrow is shown.
    void addCursorRect(const Rect &rect, const QCursor &cursor);
    /// Adds a rectangle (view coordinates) whose entering and leaving is reported by mouseEntered
    /// and mouseExited; the tag is never 0.
    int addTrackingRect(const Rect &rect, bool assumeInside);
    void removeTrackingRect(int tag);
    /// The tool tip for this point of the view; empty for none.
    virtual std::string toolTipAtPoint(const Point &pointInView) const
    {
        (void)pointInView;
        return {};
    }
    /// Called when the view's window changed: it was embedded, taken out, or went full screen.
    virtual void viewDidMoveToWindow();
    /// Whether viewFrameDidChangeNotification is posted on a resize.
    bool postsFrameChangedNotifications = false;
    /// @}

    /// @name Full screen of the view itself
    /// @{
    virtual bool isInFullScreenMode() const;
    /// Takes the view out of its widget and gives it the whole screen; the context and its names
    /// survive. A view without a display stays as large as it is and only counts as in full screen.
    /// False (and nothing happens) for a view that has no window.
    virtual bool enterFullScreenMode();
    /// Returns the view to the widget that it came from.
    virtual void exitFullScreenModeWithOptions();
    /// @}

    /// @name For hosts
    /// @{
    /// Creates a widget that shows the view. The widget does not own the view; the view may be
    /// destroyed first (the widget is then empty) or last. A second call moves the view to the new
    /// widget. The widget of a view without a display paints what grabImage gives, so that it works
    /// on the offscreen platform too. Needs a QApplication, and for a view that is of none of the
    /// library's classes useWidgetPresenters.
    QWidget *createContainer(QWidget *parent = nullptr);
    /// The native window of the view, created on first use, or null without a display. Owned by the
    /// view.
    QWindow *window();
    /// The same, but creates none: null for a view whose window has not been created yet.
    QWindow *window() const;
    /// @}

protected:
    /// Expires when the view is destroyed. After calling out, to a host for example, check it
    /// before going on.
    std::weak_ptr<const void> life() const;
    /// The view as a caller of delegates; see base/TellDelegate.h.
    Teller teller() const;
    /// Counts the calls of setNeedsDisplay that requested a redraw: while it has not changed since
    /// a frame was drawn, no change to that frame was announced.
    std::uint64_t redrawRequestCount() const { return redrawRequestCount_; }
    /// Called after the context was destroyed, with the view still whole: forget the names that
    /// were created in it, and repeat in the next drawing what is done once per context. No context
    /// is current. Not called when the view itself is destroyed.
    virtual void contextWasLost();

private:
    Rect frame_;
    PixelFormat pixelFormat_;
    bool wantsBestResolution_ = true;
    bool needsDisplay_ = false;
    std::uint64_t redrawRequestCount_ = 0;
    double surfacelessScale_ = 1.0;
    std::unique_ptr<Private> d;
};

/// Creates a view of any class of the chain and completes it.
template<class View, class... Arguments>
std::shared_ptr<View> makeView(Arguments &&...arguments)
{
    auto view = std::make_shared<View>(std::forward<Arguments>(arguments)...);
    view->awakeFromNib();
    return view;
}

} // namespace kelo
