#include "platform/view/ViewWindow.h"

#include "platform/presenters/Alert.h"
#include "platform/presenters/DesktopPresenters.h"
#include "platform/time/RunLoop.h"
#include "platform/view/OpenGLViewPrivate.h"

#include <QEnterEvent>
#include <QExposeEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPlatformSurfaceEvent>

#include <string>

namespace kelo {
namespace {

QSurfaceFormat surfaceFormat(const PixelFormat &format)
{
    // Version 2.1 without a profile is what yields a legacy context everywhere: asking for 3.x in
    // the compatibility profile gives a forward-compatible one, without the fixed function.
    QSurfaceFormat result;
    result.setRenderableType(QSurfaceFormat::OpenGL);
    result.setVersion(2, 1);
    result.setProfile(QSurfaceFormat::NoProfile);
    result.setSwapBehavior(format.doubleBuffer ? QSurfaceFormat::DoubleBuffer
                                               : QSurfaceFormat::SingleBuffer);
    result.setDepthBufferSize(format.depthSize);
    result.setSamples(0);
    result.setSwapInterval(1);
    return result;
}

/// One sentence for the user, however many views there are.
void tellOnce(const std::string &sentence)
{
    static bool told = false;
    if (std::exchange(told, true)) return;
    RunLoop::main().performSoon([sentence] { AlertPresenter::runModal({sentence, {}}); });
}

} // namespace

ViewWindow::ViewWindow(OpenGLView &view) : view_(&view), input_(view)
{
    setSurfaceType(QSurface::OpenGLSurface);
    setFormat(surfaceFormat(view.pixelFormat()));
    connect(this, &QWindow::screenChanged, this, [this] {
        // Another screen may have another scale.
        if (view_) OpenGLView::Private::of(*view_).frameDidResize(view_->frame().size);
    });
}

void ViewWindow::detach()
{
    view_ = nullptr;
    input_.forgetView();
    if (eventDepth_ == 0)
        delete this;
    else
        hide();
}

bool ViewWindow::event(QEvent *event)
{
    if (event->type() == QEvent::DeferredDelete) return QWindow::event(event); // ends this object
    ++eventDepth_;
    const bool handled = handleEvent(event);
    --eventDepth_;
    // Posted from here rather than from detach: an inner event loop would act on it too early.
    if (!view_ && eventDepth_ == 0) deleteLater();
    return handled;
}

bool ViewWindow::handleEvent(QEvent *event)
{
    if (!view_) return QWindow::event(event);
    if (desktopPresenters().passToOpenMenu(*event, *this)) return true;
    switch (event->type()) {
    case QEvent::UpdateRequest:
        input_.deliverPendingMove();
        if (view_) draw();
        return true;
    case QEvent::Enter: {
        const QPointF position = static_cast<QEnterEvent *>(event)->position();
        input_.pointerEntered(position, QGuiApplication::queryKeyboardModifiers());
        return true;
    }
    case QEvent::Leave:
        // While a button is held the drag goes on outside.
        if (!input_.buttonIsHeld()) input_.pointerLeft();
        return true;
    case QEvent::PlatformSurface:
        if (static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType() ==
            QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
            nativeWindowWillGo();
        break;
    case QEvent::Close:
        // Closing a view that fills the screen brings it home.
        if (view_->isInFullScreenMode()) {
            event->ignore();
            view_->exitFullScreenModeWithOptions();
            return true;
        }
        break;
    default:
        break;
    }
    return QWindow::event(event);
}

void ViewWindow::nativeWindowWillGo()
{
    wasExposed_ = false;
    if (!view_->hasOpenGLContext()) return;
    OpenGLContext &context = view_->openGLContext();
    if (context.isCurrent()) OpenGLView::Private::of(*view_).madeSurface().releaseContext();
}

void ViewWindow::draw()
{
    if (cannotDraw_ || !isExposed()) return;
    try {
        view_->displayIfNeeded();
    } catch (const OpenGLUnavailable &problem) {
        cannotDraw_ = true;
        tellOnce(problem.what());
    }
}

void ViewWindow::exposeEvent(QExposeEvent *)
{
    if (!view_) return;
    const bool appeared = isExposed() && !wasExposed_;
    wasExposed_ = isExposed();
    if (!isExposed()) return;
    view_->setNeedsDisplay(true);
    // At once when the window appears, so that it never shows what lay in memory; damage after that
    // is drawn with the next frame.
    if (appeared) draw();
}

void ViewWindow::resizeEvent(QResizeEvent *)
{
    if (view_)
        OpenGLView::Private::of(*view_).frameDidResize(
            {static_cast<double>(width()), static_cast<double>(height())});
}

void ViewWindow::hideEvent(QHideEvent *)
{
    input_.captureLost();
    if (view_) input_.pointerLeft();
}

void ViewWindow::focusInEvent(QFocusEvent *)
{
    const Qt::KeyboardModifiers modifiers = QGuiApplication::queryKeyboardModifiers();
    if (std::exchange(focusIsPassing_, false))
        input_.noteModifiers(modifiers);
    else
        input_.focusGained(modifiers);
}

void ViewWindow::focusOutEvent(QFocusEvent *event)
{
    // A menu has the keyboard for as long as it is open.
    if (event->reason() == Qt::PopupFocusReason) {
        focusIsPassing_ = true;
        return;
    }
    focusIsPassing_ = false;
    input_.captureLost();
    input_.focusLost();
}

void ViewWindow::mousePressEvent(QMouseEvent *event)
{
    if (!view_) return;
    if (view_->acceptsFirstResponder()) {
        ViewHost *host = OpenGLView::Private::of(*view_).madeSurface().host();
        if (host && !view_->isInFullScreenMode())
            host->takeKeyboard();
        else if (QGuiApplication::focusWindow() != this)
            requestActivate();
    }
    input_.mousePressed(*event);
}

void ViewWindow::mouseDoubleClickEvent(QMouseEvent *)
{
    // To windows, unlike widgets, Qt sends this beside the second press, which was counted already.
}

void ViewWindow::mouseMoveEvent(QMouseEvent *event)
{
    input_.mouseMoved(*event);
}

void ViewWindow::mouseReleaseEvent(QMouseEvent *event)
{
    input_.mouseReleased(*event);
    // The leave that was passed over while the button was held.
    if (view_ && !input_.buttonIsHeld() && !QRectF(QPointF(), size()).contains(event->position()))
        input_.pointerLeft();
}

void ViewWindow::wheelEvent(QWheelEvent *event)
{
    input_.wheelTurned(*event);
}

void ViewWindow::keyPressEvent(QKeyEvent *event)
{
    input_.keyPressed(*event);
}

void ViewWindow::keyReleaseEvent(QKeyEvent *event)
{
    input_.keyReleased(*event);
}

} // namespace kelo
