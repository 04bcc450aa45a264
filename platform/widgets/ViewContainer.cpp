#include "platform/widgets/ViewContainer.h"

#include "base/Assertion.h"
#include "platform/view/OpenGLViewPrivate.h"

#include <QApplication>
#include <QEnterEvent>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <cmath>

namespace kelo {

ViewContainer::ViewContainer(OpenGLView &view, ViewSurface &surface, QWidget *parent)
    : QWidget(parent), view_(&view)
{
    setFocusPolicy(Qt::StrongFocus);
    resize(sizeHint());
    const bool moves = surface.host() != nullptr;
    surface.setHost(this);
    if (surface.window()) {
        takeWindow();
    } else {
        input_ = std::make_unique<ViewInput>(view);
        setMouseTracking(true);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setCursor(view.cursor());
        if (moves)
            OpenGLView::Private::of(view).frameDidResize(
                {static_cast<double>(width()), static_cast<double>(height())});
    }
    view.viewDidMoveToWindow();
}

ViewContainer::~ViewContainer()
{
    if (!view_) return;
    ViewSurface &surface = OpenGLView::Private::of(*view_).madeSurface();
    if (!surface.isFullScreen()) giveUpWindow();
    OpenGLView &view = *view_;
    surface.setHost(nullptr);
    view.viewDidMoveToWindow();
}

QSize ViewContainer::sizeHint() const
{
    if (!view_) return QWidget::sizeHint();
    const Size size = view_->frame().size;
    return {static_cast<int>(std::lround(size.width)), static_cast<int>(std::lround(size.height))};
}

void ViewContainer::giveUpWindow()
{
    QWindow *window = view_ ? view_->window() : nullptr;
    if (!window || !inner_) return;
    // Qt deletes the window that a container holds together with it, so it is taken out first; its
    // native side, which hangs on the container's, is made anew where the window goes.
    window->hide();
    window->destroy();
    window->setParent(nullptr);
    window->setFlag(Qt::WindowDoesNotAcceptFocus, false);
    delete inner_;
}

void ViewContainer::takeWindow()
{
    // The keyboard is this widget's. The display's focus in a window inside of another one would be
    // a matter of who asks last, with the window manager, which knows nothing of it.
    view_->window()->setFlag(Qt::WindowDoesNotAcceptFocus);
    inner_ = QWidget::createWindowContainer(view_->window(), this);
    inner_->setFocusPolicy(Qt::NoFocus);
    inner_->setGeometry(rect());
    inner_->show();
}

void ViewContainer::forgetView()
{
    if (view_ && !OpenGLView::Private::of(*view_).madeSurface().isFullScreen()) giveUpWindow();
    view_ = nullptr;
    if (input_) input_->forgetView();
    unsetCursor();
    update();
}

void ViewContainer::repaintView()
{
    update();
}

void ViewContainer::showCursor(const QCursor &cursor)
{
    setCursor(cursor);
}

void ViewContainer::takeKeyboard()
{
    setFocus(Qt::MouseFocusReason);
    if (!isActiveWindow()) window()->activateWindow();
}

void ViewContainer::passOn(QEvent &event)
{
    // A view that fills the screen hears for itself. This may be the end of the view, and of this.
    if (inner_ && view_ && !view_->isInFullScreenMode())
        QCoreApplication::sendEvent(view_->window(), &event);
}

void ViewContainer::resizeForView(const Size &size)
{
    resize(static_cast<int>(std::lround(size.width)), static_cast<int>(std::lround(size.height)));
}

bool ViewContainer::event(QEvent *event)
{
    if (input_ && event->type() == QEvent::Enter)
        input_->pointerEntered(static_cast<QEnterEvent *>(event)->position(),
                               QGuiApplication::keyboardModifiers());
    else if (input_ && event->type() == QEvent::Leave && !input_->buttonIsHeld())
        input_->pointerLeft();
    return QWidget::event(event);
}

void ViewContainer::resizeEvent(QResizeEvent *)
{
    if (inner_)
        inner_->setGeometry(rect());
    else if (view_ && input_)
        OpenGLView::Private::of(*view_).frameDidResize(
            {static_cast<double>(width()), static_cast<double>(height())});
}

void ViewContainer::paintEvent(QPaintEvent *)
{
    if (inner_) return;
    QPainter painter(this);
    if (!view_ || !input_) {
        painter.fillRect(rect(), palette().window());
        return;
    }
    input_->deliverPendingMove();
    if (!view_) return;
    view_->setNeedsDisplay(false);
    try {
        painter.drawImage(rect(), view_->grabImage());
    } catch (const OpenGLUnavailable &problem) {
        painter.fillRect(rect(), palette().window());
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         QString::fromUtf8(problem.what()));
    }
}

void ViewContainer::mousePressEvent(QMouseEvent *event)
{
    if (input_) input_->mousePressed(*event);
}

void ViewContainer::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void ViewContainer::mouseMoveEvent(QMouseEvent *event)
{
    if (input_) input_->mouseMoved(*event);
}

void ViewContainer::mouseReleaseEvent(QMouseEvent *event)
{
    if (input_) input_->mouseReleased(*event);
}

void ViewContainer::wheelEvent(QWheelEvent *event)
{
    if (input_) input_->wheelTurned(*event);
}

void ViewContainer::keyPressEvent(QKeyEvent *event)
{
    if (input_)
        input_->keyPressed(*event);
    else
        passOn(*event);
}

void ViewContainer::keyReleaseEvent(QKeyEvent *event)
{
    if (input_)
        input_->keyReleased(*event);
    else
        passOn(*event);
}

void ViewContainer::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    if (input_)
        input_->focusGained(QGuiApplication::keyboardModifiers());
    else
        passOn(*event);
}

void ViewContainer::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    if (!input_) {
        passOn(*event);
        return;
    }
    if (event->reason() == Qt::PopupFocusReason) return;
    input_->captureLost();
    input_->focusLost();
}

void ViewContainer::hideEvent(QHideEvent *)
{
    if (input_) input_->captureLost();
}

QWidget *makeViewContainer(OpenGLView &view, ViewSurface &surface, QWidget *parent)
{
    assertThat(qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr,
               "a container for a view needs a QApplication");
    return new ViewContainer(view, surface, parent);
}

} // namespace kelo
