#include "platform/widgets/WindowController.h"

#include "platform/widgets/Document.h"
#include "platform/widgets/InterfaceFile.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace kelo {

WindowController::WindowController(std::string windowNibName)
    : windowNibName_(std::move(windowNibName))
{}

WindowController::~WindowController()
{
    if (window_) window_->removeEventFilter(this);
}

QWidget *WindowController::window()
{
    if (!window_ && !windowNibName_.empty()) setWindow(loadInterfaceFile(windowNibName_));
    return window_.get();
}

void WindowController::setWindow(std::unique_ptr<QWidget> window)
{
    window_ = std::move(window);
    if (!window_) return;
    window_->installEventFilter(this);
    awakeFromNib();
}

void WindowController::setDocument(Document *document)
{
    if (document_ == document) return;
    document_ = document;
    emit documentChanged();
}

QObject *WindowController::documentObject() const
{
    return document_;
}

void WindowController::showWindow(QObject *)
{
    QWidget *const shown = window();
    if (!shown) return;
    shown->setWindowState(shown->windowState() & ~Qt::WindowMinimized);
    shown->show();
    shown->raise();
    shown->activateWindow();
}

void WindowController::close()
{
    if (window_) window_->close();
}

void WindowController::windowWillClose(QWidget *)
{
    if (shouldCloseDocument_ && document_) document_->close();
}

bool WindowController::eventFilter(QObject *object, QEvent *event)
{
    if (object != window_.get() || event->type() != QEvent::Close)
        return QObject::eventFilter(object, event);
    // The window is asked first: it may refuse, and then stays as it is.
    const QPointer<WindowController> self(this);
    window_->removeEventFilter(this);
    event->accept();
    object->event(event);
    if (!self) return true;
    window_->installEventFilter(this);
    if (event->isAccepted()) windowWillClose(window_.get());
    return true;
}

} // namespace kelo
