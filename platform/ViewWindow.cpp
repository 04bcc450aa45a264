#include "platform/ViewWindow.h"

#include "platform/Alert.h"
#include "platform/OpenGLViewPrivate.h"
#include "platform/RunLoop.h"

#include <QEnterEvent>
#include <QExposeEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPlatformSurfaceEvent>
#include <QTimer>

#include <string>

namespace kelo {
namespace {

/// How often, and how many milliseconds apart, the keyboard is asked for: a quarter of a second in
/// all, before anybody types.
constexpr int keyboardAttempts = 6;
constexpr int keyboardAttemptInterval = 50;

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
        if (view_) view_->frameDidResize(view_->frame().size);
    });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &ViewWindow::focusWindowDidChange);
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
    if (context.isCurrent()) view_->surface().releaseContext();
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
    if (view_) view_->frameDidResize({static_cast<double>(width()), static_cast<double>(height())});
}

void ViewWindow::hideEvent(QHideEvent *)
{
    input_.captureLost();
    if (view_) input_.pointerLeft();
}

bool ViewWindow::isWithin(const QWindow *ancestor) const
{
    return ancestor && ancestor->isAncestorOf(this);
}

void ViewWindow::focusInEvent(QFocusEvent *)
{
    keepsFocusForReturn_ = false;
    hasClaimToFocus_ = true;
    if (std::exchange(focusIsPassing_, false))
        input_.noteModifiers(QGuiApplication::queryKeyboardModifiers());
    else
        input_.focusGained(QGuiApplication::queryKeyboardModifiers());
}

void ViewWindow::focusOutEvent(QFocusEvent *event)
{
    // A menu has the keyboard for as long as it is open.
    if (event->reason() == Qt::PopupFocusReason) {
        focusIsPassing_ = true;
        return;
    }
    // The window manager answers the press that activates a top-level window by giving the keyboard
    // to that window, which takes nothing from a drag in here.
    const bool leftForOther = !isWithin(QGuiApplication::focusWindow());
    if (leftForOther) {
        input_.captureLost();
        keepsFocusForReturn_ = true;
    } else if (input_.buttonIsHeld()) {
        focusIsPassing_ = true;
        return;
    }
    input_.focusLost();
}

void ViewWindow::focusWindowDidChange(QWindow *focusWindow)
{
    // A window manager knows only top-level windows, and gives them the keyboard when they are
    // clicked or activated, sometimes once more a little later. Unless another widget has taken the
    // focus, it is still the view's.
    if (!view_ || !isWithin(focusWindow) || !view_->acceptsFirstResponder()) return;
    const ViewHost *host = view_->surface().host();
    const bool stays = hasClaimToFocus_ && !(host && host->anotherWidgetHasFocus());
    const bool returns = std::exchange(keepsFocusForReturn_, false);
    const bool isCertain = input_.buttonIsHeld() || (host && host->isFocusWidget());
    hasClaimToFocus_ = isCertain || stays || returns;
    if (isCertain)
        takeKeyboard(QGuiApplication::focusObject(), keyboardAttempts);
    else if (hasClaimToFocus_)
        // It may have been a click on another widget, which comes after the keyboard.
        takeKeyboardLater(QGuiApplication::focusObject(), keyboardAttempts);
}

void ViewWindow::takeKeyboardLater(const QObject *focusObject, int attempts)
{
    QTimer::singleShot(keyboardAttemptInterval, this, [this, focusObject, attempts] {
        const bool pressesElsewhere =
            QGuiApplication::mouseButtons() != Qt::NoButton && !input_.buttonIsHeld();
        if (QGuiApplication::focusObject() == focusObject && !pressesElsewhere)
            takeKeyboard(focusObject, attempts);
    });
}

void ViewWindow::takeKeyboard(const QObject *focusObject, int attempts)
{
    // An X server passes over a wish for the keyboard that seems older than the window manager's
    // last word, and only later events tell Qt the newer time. So it is repeated for a moment, but
    // not against a widget that has taken the focus meanwhile.
    const QWindow *focusWindow = QGuiApplication::focusWindow();
    if (!view_ || focusWindow == this || !isWithin(focusWindow)) return;
    requestActivate();
    if (attempts > 1) takeKeyboardLater(focusObject, attempts - 1);
}

void ViewWindow::mousePressEvent(QMouseEvent *event)
{
    if (!view_) return;
    if (view_->acceptsFirstResponder() && QGuiApplication::focusWindow() != this) requestActivate();
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
    const bool back = event->key() == Qt::Key_Backtab;
    const bool tab = back || event->key() == Qt::Key_Tab;
    if (tab && view_ && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        ViewHost *host = view_->surface().host();
        if (host && !view_->isInFullScreenMode() &&
            host->moveFocus(!back && !(event->modifiers() & Qt::ShiftModifier)))
            return;
    }
    input_.keyPressed(*event);
}

void ViewWindow::keyReleaseEvent(QKeyEvent *event)
{
    input_.keyReleased(*event);
}

} // namespace kelo
