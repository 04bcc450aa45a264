#include "keloOpenGL/view/HVOGLMouseView.h"

#include "platform/time/NotificationCenter.h"
#include "platform/widgets/WidgetPresenters.h"

#include <QCursor>

namespace kelo {
namespace {

/// The modifier bits that ask for a temporary mode: Caps Lock, Option, numeric pad, help and
/// function. Shift, Control, Command and the device-dependent low half are left out on purpose.
constexpr std::uint32_t modeModifierMask = 0xFFE90000;

} // namespace

HVOGLMouseView::HVOGLMouseView(const Rect &frame, const PixelFormat &pixelFormat)
    : OpenGLView(frame, pixelFormat)
{
    useWidgetPresenters();
}

HVOGLMouseView::~HVOGLMouseView()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    NotificationCenter::defaultCenter().removeObserver(ownObserver());
    if (trackingRectTag_ != 0) removeTrackingRect(trackingRectTag_);
}

void HVOGLMouseView::awakeFromNib()
{
    OpenGLView::awakeFromNib();
    followOwnFrame();
    setUpTrackingRect();
    invalidateCursorRects();
    setEnabled(true);
}

void HVOGLMouseView::followOwnFrame()
{
    NotificationCenter::defaultCenter().addObserver(
        ownObserver(), [this](const Notification &) { frameDidChange(); },
        viewFrameDidChangeNotification, static_cast<OpenGLView *>(this));
    postsFrameChangedNotifications = true;
}

void HVOGLMouseView::setMouseMode(long mode)
{
    mouseMode_ = mode;
    invalidateCursorRects();
}

void HVOGLMouseView::setTemporaryMouseMode(long mode)
{
    if (!mouseModeIsTemporary_) permanentMouseMode_ = mouseMode_;
    mouseModeIsTemporary_ = true;
    setMouseMode(mode);
}

void HVOGLMouseView::restorePermanentMouseMode()
{
    if (mouseModeIsTemporary_) setMouseMode(permanentMouseMode_);
    mouseModeIsTemporary_ = false;
    showModesCursor();
}

void HVOGLMouseView::mouseModeAction()
{
    if (mouseMode_ == mouseModeButton_) mouseModeStress();
    mouseModeButton_ = mouseMode_;
}

long HVOGLMouseView::mouseModeForDeviceIndependentBits(std::uint32_t) const
{
    return 0;
}

QCursor HVOGLMouseView::defaultCursor() const
{
    return QCursor(Qt::ArrowCursor);
}

QCursor HVOGLMouseView::cursorForMouseMode(long) const
{
    return defaultCursor();
}

void HVOGLMouseView::synchronizeCursorWithMouseMode(const Event &event)
{
    if (bounds().contains(convertPoint_fromView(event.locationInWindow, nullptr)))
        showModesCursor();
}

void HVOGLMouseView::showModesCursor()
{
    if (cursorsAreAvailable()) setCursor(cursorForMouseMode(mouseMode_));
}

void HVOGLMouseView::setUpTrackingRect()
{
    if (trackingRectTag_ != 0) removeTrackingRect(trackingRectTag_);
    trackingRectTag_ = addTrackingRect(bounds(), false);
}

void HVOGLMouseView::resetCursorRects()
{
    OpenGLView::resetCursorRects();
    addCursorRect(bounds(), cursorForMouseMode(mouseMode_));
}

void HVOGLMouseView::viewDidMoveToWindow()
{
    OpenGLView::viewDidMoveToWindow();
    setUpTrackingRect();
}

void HVOGLMouseView::frameDidChange()
{
    setUpTrackingRect();
    acceptsMouseMovedEvents = true;
}

void HVOGLMouseView::flagsChanged(const Event &event)
{
    if (mouseIsDown_) return;
    takeModeOfBits(event.modifierFlags & modeModifierMask);
    synchronizeCursorWithMouseMode(event);
}

void HVOGLMouseView::takeModeOfBits(std::uint32_t bits)
{
    if (bits != 0)
        setTemporaryMouseMode(mouseModeForDeviceIndependentBits(bits));
    else
        restorePermanentMouseMode();
}

HVOGLMouseView::Handler HVOGLMouseView::routed(Handler left, Handler right, Handler other) const
{
    const auto mode = static_cast<std::int32_t>(mouseMode_);
    if (mode == static_cast<std::int32_t>(rightMouseMode())) return right;
    return mode == static_cast<std::int32_t>(otherMouseMode()) ? other : left;
}

void HVOGLMouseView::mouseDown(const Event &event)
{
    using View = HVOGLMouseView;
    if (!enabled_) return;
    mouseIsDown_ = true;
    pressedButton_ = mouseButtonOf(event.type);
    (this->*routed(&View::leftMouseDown, &View::rightMouseDown, &View::otherMouseDown))(event);
}

void HVOGLMouseView::mouseDragged(const Event &event)
{
    using View = HVOGLMouseView;
    if (!mouseIsDown_) return;
    (this->*routed(&View::leftMouseDragged, &View::rightMouseDragged, &View::otherMouseDragged))(
        event);
}

void HVOGLMouseView::mouseUp(const Event &event)
{
    using View = HVOGLMouseView;
    if (!mouseIsDown_) return;
    (this->*routed(&View::leftMouseUp, &View::rightMouseUp, &View::otherMouseUp))(event);
}

void HVOGLMouseView::endPress(const Event &event)
{
    // By the event's button, not by the operation: a mode may route a press to another button's.
    const auto released = mouseButtonOf(event.type);
    if (mouseIsDown_ && released && pressedButton_ && released != pressedButton_) return;
    mouseIsDown_ = false;
    flagsChanged(event);
}

void HVOGLMouseView::leftMouseDown(const Event &) {}
void HVOGLMouseView::leftMouseDragged(const Event &) {}
void HVOGLMouseView::leftMouseUp(const Event &event)
{
    endPress(event);
}
void HVOGLMouseView::rightMouseDown(const Event &) {}
void HVOGLMouseView::rightMouseDragged(const Event &) {}
void HVOGLMouseView::rightMouseUp(const Event &event)
{
    endPress(event);
}
void HVOGLMouseView::otherMouseDown(const Event &) {}
void HVOGLMouseView::otherMouseDragged(const Event &) {}
void HVOGLMouseView::otherMouseUp(const Event &event)
{
    endPress(event);
}

} // namespace kelo
