#include "platform/gl.h"

#include "platform/view/WindowSurface.h"

#include "platform/view/NativeDrawable.h"

#include <QCursor>
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QScreen>

#include <cmath>

namespace kelo {

/// A context of Qt's for the view's window; the window may lose its native side and get a new one
/// while the context, and with it every name, lives on.
class WindowContext : public OpenGLContext
{
public:
    explicit WindowContext(QWindow &window)
        : window_(&window), context_(std::make_unique<QOpenGLContext>())
    {
        context_->setFormat(window.requestedFormat());
        context_->setScreen(window.screen());
        if (!context_->create())
            throw OpenGLUnavailable("The 3D view needs OpenGL 2.1 with the fixed-function "
                                    "pipeline, but this display offers no OpenGL.");
    }

    ~WindowContext() override { releaseNow(); }

    void setSwapInterval(int interval) override
    {
        swapInterval_ = interval;
        swapIntervalIsSet_ = false;
        if (isSurfaceCurrent()) applySwapInterval();
    }
    int swapInterval() const override { return swapInterval_; }

    void checkWhatCame()
    {
        if (!makeCurrentContext())
            throw OpenGLUnavailable("The 3D view needs OpenGL 2.1 with the fixed-function "
                                    "pipeline, but no context could be made for its window.");
        requireLegacyOpenGL();
    }

    void releaseNow()
    {
        if (context_ && QOpenGLContext::currentContext() == context_.get()) context_->doneCurrent();
    }

protected:
    bool makeSurfaceCurrent() override
    {
        if (!context_ || !window_) return false;
        if (!window_->handle()) window_->create();
        if (!context_->makeCurrent(window_)) return false;
        applySwapInterval();
        return true;
    }

    bool isSurfaceCurrent() const override
    {
        return context_ && window_ && window_->handle() &&
               QOpenGLContext::currentContext() == context_.get() && context_->surface() == window_;
    }

    void releaseSurface() override { releaseNow(); }

    void swapSurface() override
    {
        // What a hidden window would show is undefined, and Qt complains about it.
        if (isSurfaceCurrent() && window_->isExposed()) context_->swapBuffers(window_);
    }

private:
    void destroySurface() override
    {
        releaseNow();
        context_.reset();
    }

    void applySwapInterval()
    {
        // Qt has set the interval of the window's format, which is 1.
        if (!swapIntervalIsSet_ && swapInterval_ != 1)
            setSwapIntervalOfCurrentSurface(swapInterval_);
        else if (!swapIntervalIsSet_ && wasOtherThanOne_)
            setSwapIntervalOfCurrentSurface(1);
        wasOtherThanOne_ = swapInterval_ != 1;
        swapIntervalIsSet_ = true;
    }

    QPointer<QWindow> window_;
    std::unique_ptr<QOpenGLContext> context_;
    int swapInterval_ = 1;
    bool swapIntervalIsSet_ = true;
    bool wasOtherThanOne_ = false;
};

WindowSurface::WindowSurface(OpenGLView &view) : ViewSurface(view)
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        throw OpenGLUnavailable("The 3D view needs a graphical application to open its window in.");
    window_ = new ViewWindow(view);
    const Size size = possibleSize(view.frame().size);
    window_->resize(static_cast<int>(size.width), static_cast<int>(size.height));
}

WindowSurface::~WindowSurface()
{
    destroyContext();
    if (ViewWindow *window = window_.data()) window->detach();
}

double WindowSurface::scaleFactor() const
{
    return window_ ? window_->devicePixelRatio() : 1.0;
}

PixelSize WindowSurface::deviceSize() const
{
    // Qt makes the native window of an embedded view from its size in points. A top-level window
    // gets its pixels from the window manager, and at a fractional scale several numbers of pixels
    // give the same size in points.
    const double scale = scaleFactor();
    const QWindow *window = window_.data();
    if (window && window->handle() && !window->parent() && scale != std::floor(scale)) {
        if (const auto native = nativeSizeOfWindow(*window)) return *native;
    }
    return scaledViewSize();
}

bool WindowSurface::isExposed() const
{
    return window_ && window_->isExposed();
}

Size WindowSurface::possibleSize(const Size &size) const
{
    return {std::round(size.width), std::round(size.height)};
}

void WindowSurface::viewDidResize()
{
    const Size size = possibleSize(view().frame().size);
    const QSize wanted(static_cast<int>(size.width), static_cast<int>(size.height));
    ViewWindow *window = window_.data();
    if (window && !host() && !isFullScreen_ && window->size() != wanted) window->resize(wanted);
}

void WindowSurface::requestRedraw()
{
    // A window that is not exposed draws when it is.
    if (isExposed()) window_->requestUpdate();
}

void WindowSurface::willDisplay()
{
    if (window_) window_->input().deliverPendingMove();
}

void WindowSurface::showCursor(const QCursor &cursor)
{
    if (window_) window_->setCursor(cursor);
}

QWindow *WindowSurface::window() const
{
    return window_;
}

ViewInput *WindowSurface::input() const
{
    return window_ ? &window_->input() : nullptr;
}

bool WindowSurface::enterFullScreen()
{
    if (!window_) return false;
    QScreen *screen = window_->screen();
    wasVisible_ = !host() && window_->isVisible();
    geometryBefore_ = window_->geometry();
    if (host()) host()->giveUpWindow();
    isFullScreen_ = true;
    window_->setFlags(Qt::Window);
    window_->setScreen(screen);
    window_->setGeometry(screen->geometry());
    window_->showFullScreen();
    window_->requestActivate();
    view().viewDidMoveToWindow();
    return true;
}

void WindowSurface::exitFullScreen()
{
    isFullScreen_ = false;
    if (!window_) return;
    // The native window goes: one that was full screen keeps the window manager's idea of it when
    // it is put back into a widget. The context is not the window's and stays.
    window_->hide();
    window_->destroy();
    window_->setWindowStates(Qt::WindowNoState);
    if (host()) {
        host()->takeWindow();
    } else if (wasVisible_) {
        window_->setGeometry(geometryBefore_);
        window_->show();
    }
    view().viewDidMoveToWindow();
}

void WindowSurface::setHost(ViewHost *host)
{
    if (isFullScreen_ && host) exitFullScreen();
    ViewSurface::setHost(host);
}

void WindowSurface::releaseContext()
{
    if (const auto context = windowContext_.lock()) context->releaseNow();
}

std::shared_ptr<OpenGLContext> WindowSurface::makeContext()
{
    if (!window_) throw OpenGLUnavailable("The 3D view has lost its window.");
    auto context = std::make_shared<WindowContext>(*window_);
    context->checkWhatCame();
    windowContext_ = context;
    return context;
}

std::unique_ptr<ViewSurface> makeWindowSurface(OpenGLView &view)
{
    return std::make_unique<WindowSurface>(view);
}

} // namespace kelo
