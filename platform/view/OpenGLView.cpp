#include "platform/gl.h"

#include "platform/view/OpenGLView.h"
#include "platform/view/OpenGLViewPrivate.h"

#include "base/Assertion.h"
#include "base/TellDelegate.h"
#include "platform/presenters/DesktopPresenters.h"
#include "platform/time/NotificationCenter.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelo {
namespace {

SurfaceKind &chosenSurfaceKind()
{
    static SurfaceKind kind = SurfaceKind::Automatic;
    return kind;
}

/// Pixel-pack state for reading whole rows of bytes; puts back what was before.
class PackState
{
public:
    PackState()
    {
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        glPixelStorei(GL_PACK_SKIP_ROWS, 0);
        glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
        glPixelStorei(GL_PACK_SWAP_BYTES, GL_FALSE);
        glGetIntegerv(GL_READ_BUFFER, &readBuffer_);
        // The buffer that was drawn into: the back one of a window, the only one of a pixel buffer.
        GLint drawBuffer = GL_BACK;
        glGetIntegerv(GL_DRAW_BUFFER, &drawBuffer);
        glReadBuffer(static_cast<GLenum>(drawBuffer));
    }
    ~PackState()
    {
        glReadBuffer(static_cast<GLenum>(readBuffer_));
        glPopClientAttrib();
    }
    PackState(const PackState &) = delete;
    PackState &operator=(const PackState &) = delete;

private:
    GLint readBuffer_ = GL_BACK;
};

} // namespace

OpenGLView::OpenGLView(const Rect &frame, const PixelFormat &pixelFormat)
    : frame_(frame), pixelFormat_(pixelFormat), d(std::make_unique<Private>())
{
    d->knownDeviceSize = deviceSize();
}

OpenGLView::~OpenGLView()
{
    d->lifeToken.reset();
    if (d->surface) {
        d->surface->setHost(nullptr);
        // The surface's own end may cause events; they find a view without a surface.
        const std::unique_ptr<ViewSurface> surface = std::move(d->surface);
    }
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
    if (chosenSurfaceKind() != SurfaceKind::Automatic) return chosenSurfaceKind();
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return SurfaceKind::Surfaceless;
    const QString platform = QGuiApplication::platformName();
    const bool withoutDisplay =
        platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
    return withoutDisplay ? SurfaceKind::Surfaceless : SurfaceKind::Window;
}

ViewSurface &OpenGLView::surface()
{
    if (!d->surface) {
        const SurfaceKind kind = surfaceKind();
        d->surface = kind == SurfaceKind::Window    ? makeWindowSurface(*this)
                     : kind == SurfaceKind::Undrawn ? makeUndrawnSurface(*this)
                                                    : makeSurfacelessSurface(*this);
    }
    return *d->surface;
}

void OpenGLView::setFrameSize(const Size &size)
{
    const Size possible = d->surface ? d->surface->possibleSize(size) : size;
    if (d->surface && d->surface->host()) d->surface->host()->resizeForView(possible);
    frameDidResize(possible);
}

void OpenGLView::frameDidResize(const Size &size)
{
    const bool newSize = size != frame_.size;
    frame_.size = size;
    if (newSize && d->surface) d->surface->viewDidResize();
    const PixelSize pixels = deviceSize();
    const bool newPixels = std::exchange(d->knownDeviceSize, pixels) != pixels;
    if (!newSize && !newPixels) return;
    const std::weak_ptr<int> life = d->lifeToken;
    reshape();
    if (newSize && postsFrameChangedNotifications && !life.expired())
        NotificationCenter::defaultCenter().postNotificationName(viewFrameDidChangeNotification,
                                                                 this);
    if (!life.expired()) setNeedsDisplay(true);
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
    if (d->surface) return d->surface->scaleFactor();
    if (surfaceKind() == SurfaceKind::Surfaceless) return surfacelessScale_;
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

void OpenGLView::setSurfacelessScaleFactor(double scale)
{
    assertThat(scale > 0.0, "a scale factor is positive");
    surfacelessScale_ = scale;
    if (d->surface) d->surface->viewDidResize();
    frameDidResize(frame_.size);
}

Size OpenGLView::convertSizeToBacking(const Size &size) const
{
    const PixelSize pixels = size == frame_.size ? deviceSize() : pixelSize(size);
    return {static_cast<double>(pixels.width), static_cast<double>(pixels.height)};
}

Point OpenGLView::convertPointToBacking(const Point &point) const
{
    const double scale = backingScaleFactor();
    return {point.x * scale, point.y * scale};
}

PixelSize OpenGLView::pixelSize(const Size &size) const
{
    const double scale = backingScaleFactor();
    return {static_cast<int>(std::lround(size.width * scale)),
            static_cast<int>(std::lround(size.height * scale))};
}

PixelSize OpenGLView::deviceSize() const
{
    return d->surface ? d->surface->deviceSize() : pixelSize(frame_.size);
}

OpenGLContext &OpenGLView::openGLContext()
{
    return *surface().context();
}

std::shared_ptr<OpenGLContext> OpenGLView::sharedOpenGLContext()
{
    return surface().context();
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
    if (!isExposed()) return;
    const std::weak_ptr<int> life = d->lifeToken;
    surface().willDisplay();
    if (life.expired()) return;
    if (!openGLContext().makeCurrentContext()) return;
    // Before the drawing, which may ask for the next frame.
    needsDisplay_ = false;
    drawRect(bounds());
    if (!life.expired() && d->surface) d->surface->didDisplay();
}

void OpenGLView::displayIfNeeded()
{
    if (needsDisplay_) display();
}

bool OpenGLView::isExposed() const
{
    if (d->surface) return d->surface->isExposed();
    return surfaceKind() == SurfaceKind::Surfaceless;
}

void OpenGLView::drawRect(const Rect &) {}

void OpenGLView::reshape() {}

void OpenGLView::contextWasLost() {}

QImage OpenGLView::grabImage()
{
    const PixelSize size = deviceSize();
    OpenGLContext &context = openGLContext();
    if (size.width <= 0 || size.height <= 0 || !context.makeCurrentContext()) return {};
    const bool neededDisplay = needsDisplay_;
    {
        const OpenGLContext::FlushSuppression nothingIsShown(context);
        drawRect(bounds());
    }
    needsDisplay_ = needsDisplay_ || neededDisplay;
    if (!context.makeCurrentContext()) return {};
    QImage upsideDown(size.width, size.height, QImage::Format_RGBX8888);
    if (upsideDown.isNull()) return {};
    {
        const PackState packState;
        glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE, upsideDown.bits());
    }
    // The bottom row came first, and with whatever alpha the drawing left.
    return upsideDown.mirrored().convertToFormat(QImage::Format_RGB888);
}

void OpenGLView::loseContext()
{
    if (!hasOpenGLContext()) return;
    d->surface->destroyContext();
    contextWasLost();
    setNeedsDisplay(true);
}

bool OpenGLView::isInFullScreenMode() const
{
    return d->surface && d->surface->isFullScreen();
}

bool OpenGLView::enterFullScreenMode()
{
    return isInFullScreenMode() || surface().enterFullScreen();
}

void OpenGLView::exitFullScreenModeWithOptions()
{
    if (isInFullScreenMode()) surface().exitFullScreen();
}

QWidget *OpenGLView::createContainer(QWidget *parent)
{
    return desktopPresenters().container(*this, surface(), parent);
}

QWindow *OpenGLView::window()
{
    return surface().window();
}

QWindow *OpenGLView::window() const
{
    return d->surface ? d->surface->window() : nullptr;
}

} // namespace kelo
