// What an operation of the view does where it is more than a line or two.

#include "platform/gl.h"

#include "platform/view/OpenGLViewPrivate.h"

#include "platform/time/NotificationCenter.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>

#include <utility>

namespace kelo {
namespace {

std::unique_ptr<ViewSurface> makeSurface(OpenGLView &view)
{
    switch (OpenGLView::surfaceKind()) {
    case SurfaceKind::Window:
        return makeWindowSurface(view);
    case SurfaceKind::Undrawn:
        return makeUndrawnSurface(view);
    default:
        return makeSurfacelessSurface(view);
    }
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

OpenGLView::Private::Private(OpenGLView &owner)
    : view(owner), pointer(owner, lifeToken), events(owner, pointer, lifeToken)
{}

ViewSurface &OpenGLView::Private::madeSurface()
{
    if (!surface) surface = makeSurface(view);
    return *surface;
}

bool OpenGLView::Private::noteSize(bool newSize)
{
    const PixelSize pixels = view.deviceSize();
    const bool newPixels = std::exchange(knownDeviceSize, pixels) != pixels;
    return newSize || newPixels;
}

void OpenGLView::Private::frameDidResize(const Size &size)
{
    const bool newSize = size != view.frame_.size;
    view.frame_.size = size;
    if (newSize && surface) surface->viewDidResize();
    if (!noteSize(newSize)) return;
    const std::weak_ptr<int> life = lifeToken;
    OpenGLView &resized = view;
    resized.reshape();
    if (newSize && resized.postsFrameChangedNotifications && !life.expired())
        NotificationCenter::defaultCenter().postNotificationName(viewFrameDidChangeNotification,
                                                                 &resized);
    if (!life.expired()) resized.setNeedsDisplay(true);
}

void OpenGLView::Private::drawFrame()
{
    const std::weak_ptr<int> life = lifeToken;
    madeSurface().willDisplay();
    if (life.expired() || !view.openGLContext().makeCurrentContext()) return;
    // Before the drawing, which may ask for the next frame.
    view.needsDisplay_ = false;
    view.drawRect(view.bounds());
    if (!life.expired() && surface) surface->didDisplay();
}

QImage OpenGLView::Private::drawnPicture()
{
    const PixelSize size = view.deviceSize();
    OpenGLContext &context = view.openGLContext();
    if (size.width <= 0 || size.height <= 0 || !context.makeCurrentContext()) return {};
    const bool neededDisplay = view.needsDisplay_;
    {
        const OpenGLContext::FlushSuppression nothingIsShown(context);
        view.drawRect(view.bounds());
    }
    view.needsDisplay_ = view.needsDisplay_ || neededDisplay;
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

double OpenGLView::Private::expectedScaleFactor() const
{
    if (surfaceKind() == SurfaceKind::Surfaceless) return view.surfacelessScale_;
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

} // namespace kelo
