#include "platform/view/OpenGLView.h"
#include "platform/view/OpenGLViewPrivate.h"

#include "base/Assertion.h"
#include "base/TellDelegate.h"
#include "platform/presenters/DesktopPresenters.h"

#include <QGuiApplication>
#include <QImage>

#include <utility>

namespace kelo {
namespace {

SurfaceKind &chosenSurfaceKind()
{
    static SurfaceKind kind = SurfaceKind::Automatic;
    return kind;
}

/// The kind for a program that chose none.
SurfaceKind kindOfPlatform()
{
    if (!OpenGLView::cursorsAreAvailable()) return SurfaceKind::Surfaceless;
    const QString platform = QGuiApplication::platformName();
    const bool withoutDisplay =
        platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
    return withoutDisplay ? SurfaceKind::Surfaceless : SurfaceKind::Window;
}

} // namespace

OpenGLView::OpenGLView(const Rect &frame, const PixelFormat &pixelFormat)
    : frame_(frame), pixelFormat_(pixelFormat), d(std::make_unique<Private>(*this))
{
    d->knownDeviceSize = deviceSize();
}

OpenGLView::~OpenGLView()
{
    d->lifeToken.reset();
    if (d->surface) d->surface->setHost(nullptr);
    // The surface's own end may cause events; they find a view without a surface.
    const std::unique_ptr<ViewSurface> surface = std::move(d->surface);
}

std::weak_ptr<const void> OpenGLView::life() const
{
    return d->lifeToken;
}

Teller OpenGLView::teller() const
{
    return {weak_from_this(), life()};
}

void OpenGLView::awakeFromNib() {}

void OpenGLView::setSurfaceKind(SurfaceKind kind)
{
    chosenSurfaceKind() = kind;
}

SurfaceKind OpenGLView::surfaceKind()
{
    const SurfaceKind chosen = chosenSurfaceKind();
    return chosen != SurfaceKind::Automatic ? chosen : kindOfPlatform();
}

void OpenGLView::setFrameSize(const Size &size)
{
    const Size possible = d->surface ? d->surface->possibleSize(size) : size;
    if (d->surface && d->surface->host()) d->surface->host()->resizeForView(possible);
    d->frameDidResize(possible);
}

Point OpenGLView::convertPoint_fromView(const Point &point, const OpenGLView *view) const
{
    if (view == this) return point;
    // Each view fills its window, so another view's point is a window point once its y counts up.
    Point inWindow = point;
    if (view && view->isFlipped()) inWindow.y = view->frame_.size.height - point.y;
    return {inWindow.x, isFlipped() ? frame_.size.height - inWindow.y : inWindow.y};
}

Point OpenGLView::flippedWindowPoint(const Point &point) const
{
    // By the number of pixels that there are, which at fractional scales is not always the height
    // times the scale.
    const double lowestRow = (deviceSize().height - 1) / backingScaleFactor();
    return {point.x, 1.0 + lowestRow - point.y};
}

double OpenGLView::backingScaleFactor() const
{
    return d->surface ? d->surface->scaleFactor() : d->expectedScaleFactor();
}

void OpenGLView::setSurfacelessScaleFactor(double scale)
{
    assertThat(scale > 0.0, "a scale factor is positive");
    surfacelessScale_ = scale;
    if (d->surface) d->surface->viewDidResize();
    d->frameDidResize(frame_.size);
}

Size OpenGLView::convertSizeToBacking(const Size &size) const
{
    const PixelSize pixels =
        size == frame_.size ? deviceSize() : pixelSizeOf(size, backingScaleFactor());
    return {static_cast<double>(pixels.width), static_cast<double>(pixels.height)};
}

Point OpenGLView::convertPointToBacking(const Point &point) const
{
    const double scale = backingScaleFactor();
    return {point.x * scale, point.y * scale};
}

PixelSize OpenGLView::deviceSize() const
{
    return d->surface ? d->surface->deviceSize() : pixelSizeOf(frame_.size, backingScaleFactor());
}

OpenGLContext &OpenGLView::openGLContext()
{
    return *sharedOpenGLContext();
}

std::shared_ptr<OpenGLContext> OpenGLView::sharedOpenGLContext()
{
    return d->madeSurface().context();
}

bool OpenGLView::hasOpenGLContext() const
{
    return d->surface && d->surface->hasContext();
}

void OpenGLView::setNeedsDisplay(bool needsDisplay)
{
    needsDisplay_ = needsDisplay;
    if (needsDisplay) ++redrawRequestCount_;
    // A view without a surface is drawn when it gets one that shows.
    if (needsDisplay && d->surface) d->surface->requestRedraw();
}

void OpenGLView::display()
{
    if (isExposed()) d->drawFrame();
}

void OpenGLView::displayIfNeeded()
{
    if (needsDisplay_) display();
}

bool OpenGLView::isExposed() const
{
    return d->surface ? d->surface->isExposed() : surfaceKind() == SurfaceKind::Surfaceless;
}

void OpenGLView::drawRect(const Rect &) {}
void OpenGLView::reshape() {}
void OpenGLView::contextWasLost() {}

QImage OpenGLView::grabImage()
{
    return d->drawnPicture();
}

void OpenGLView::loseContext()
{
    if (!hasOpenGLContext()) return;
    d->surface->destroyContext();
    contextWasLost();
    setNeedsDisplay(true);
}

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

void OpenGLView::sendEvent(const Event &event)
{
    d->events.send(event);
}

void OpenGLView::mouseCaptureLost()
{
    d->events.releaseHeldButtons();
}

void OpenGLView::lendInput(const std::function<bool()> &loop, const std::function<void()> &act)
{
    d->events.lendInput([this] { return d->madeSurface().input(); }, loop, act);
}

std::uint32_t OpenGLView::currentModifierFlags() const
{
    return d->events.modifierFlags();
}

bool OpenGLView::pointerIsOverView() const
{
    return d->pointer.isOverView();
}

int OpenGLView::addTrackingRect(const Rect &rect, bool assumeInside)
{
    return d->pointer.addTrackingRect(rect, assumeInside);
}

void OpenGLView::removeTrackingRect(int tag)
{
    d->pointer.removeTrackingRect(tag);
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
    d->pointer.discardCursorRects();
    if (!cursorsAreAvailable()) return;
    resetCursorRects();
    d->pointer.updateCursor(true);
}

void OpenGLView::resetCursorRects() {}

void OpenGLView::addCursorRect(const Rect &rect, const QCursor &cursor)
{
    d->pointer.addCursorRect(rect, cursor);
}

void OpenGLView::viewDidMoveToWindow() {}

bool OpenGLView::isInFullScreenMode() const
{
    return d->surface && d->surface->isFullScreen();
}

bool OpenGLView::enterFullScreenMode()
{
    return isInFullScreenMode() || d->madeSurface().enterFullScreen();
}

void OpenGLView::exitFullScreenModeWithOptions()
{
    if (isInFullScreenMode()) d->surface->exitFullScreen();
}

QWidget *OpenGLView::createContainer(QWidget *parent)
{
    return desktopPresenters().container(*this, d->madeSurface(), parent);
}

QWindow *OpenGLView::window()
{
    return d->madeSurface().window();
}

QWindow *OpenGLView::window() const
{
    return d->surface ? d->surface->window() : nullptr;
}

} // namespace kelo
