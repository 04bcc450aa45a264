#pragma once

#include "base/Export.h"
#include "platform/view/OpenGLView.h"

#include <cstdint>
#include <optional>

namespace kelo {

/// A view with numbered mouse modes: keeps the mode in force, lets held modifier keys switch to a
/// temporary one, and routes every press, drag and release to an operation per button, which
/// subclasses fill in.
class KELO_EXPORT HVOGLMouseView : public OpenGLView
{
public:
    explicit HVOGLMouseView(const Rect &frame, const PixelFormat &pixelFormat = {});
    ~HVOGLMouseView() override;

    /// Sets up the tracking rectangle, follows the view's own frame, and enables presses.
    void awakeFromNib() override;

    /// @name Modes
    /// @{
    long mouseMode() const { return mouseMode_; }
    /// Stores the mode and has the cursor rectangles made anew.
    virtual void setMouseMode(long mode);
    bool mouseModeIsTemporary() const { return mouseModeIsTemporary_; }
    long permanentMouseMode() const { return permanentMouseMode_; }
    /// Puts a mode in force until restorePermanentMouseMode. Of several temporary modes in a row
    /// the first remembers the permanent one.
    void setTemporaryMouseMode(long mode);
    virtual void restorePermanentMouseMode();
    /// Confirms the present mode, as a mode button does; confirming one that is confirmed already
    /// is a mouseModeStress.
    void mouseModeAction();
    long mouseModeButton() const { return mouseModeButton_; }
    /// Hook: the present mode was confirmed a second time.
    virtual void mouseModeStress() {}
    /// Hooks: the modes in which a plain press is routed to the right or the other button's
    /// operations. -1: none.
    virtual long rightMouseMode() const { return -1; }
    virtual long otherMouseMode() const { return -1; }
    /// Hook: the mode that a set of held modifier bits asks for.
    virtual long mouseModeForDeviceIndependentBits(std::uint32_t bits) const;
    /// @}

    /// @name Cursor
    /// Asked for and shown only where cursors are available.
    /// @{
    virtual QCursor defaultCursor() const;
    /// Hook: the cursor of a mode; the default cursor for every one.
    virtual QCursor cursorForMouseMode(long mode) const;
    /// Sets the present mode's cursor if the event lies in the view.
    void synchronizeCursorWithMouseMode(const Event &event);
    void setUpTrackingRect();
    void resetCursorRects() override;
    void viewDidMoveToWindow() override;
    /// @}

    /// While false, presses that come through mouseDown are ignored, and with them the drags and
    /// the release that follow.
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }
    /// From a press that came through mouseDown until the same button's release.
    bool mouseIsDown() const { return mouseIsDown_; }

    /// @name Events
    /// @{
    void flagsChanged(const Event &event) override;
    void mouseDown(const Event &event) override;
    void mouseDragged(const Event &event) override;
    void mouseUp(const Event &event) override;

    virtual void leftMouseDown(const Event &event);
    virtual void leftMouseDragged(const Event &event);
    /// The three releases end the press and let modifier keys take effect that changed meanwhile.
    /// The release of another button than the one that was pressed leaves the press going on.
    virtual void leftMouseUp(const Event &event);
    void rightMouseDown(const Event &event) override;
    void rightMouseDragged(const Event &event) override;
    void rightMouseUp(const Event &event) override;
    void otherMouseDown(const Event &event) override;
    void otherMouseDragged(const Event &event) override;
    void otherMouseUp(const Event &event) override;
    /// @}

protected:
    /// The observer of what the view hears for itself as long as it lives. Whoever observes in the
    /// view's name, for as long as a window shows it for example, does so with the view's address,
    /// and may remove all of that with NotificationCenter::removeObserver.
    const void *ownObserver() const { return &ownObserver_; }

private:
    using Handler = void (HVOGLMouseView::*)(const Event &);
    /// The one of three operations that the present mode routes a press to.
    Handler routed(Handler left, Handler right, Handler other) const;
    void takeModeOfBits(std::uint32_t bits);
    void followOwnFrame();
    void frameDidChange();
    void showModesCursor();
    void endPress(const Event &event);

    long mouseMode_ = 0;
    bool mouseModeIsTemporary_ = false;
    long permanentMouseMode_ = 0;
    long mouseModeButton_ = 0;
    bool mouseIsDown_ = false;
    std::optional<MouseButton> pressedButton_; ///< of the press that is going on
    int trackingRectTag_ = 0;
    bool enabled_ = true;
    char ownObserver_ = 0; ///< only its address is used
};

} // namespace kelo
