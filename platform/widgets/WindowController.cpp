#include "platform/widgets/WindowController.h"

#include "platform/widgets/Document.h"
#include "platform/widgets/InterfaceFile.h"
#include "platform/widgets/WidgetPresenters.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace kelo {

WindowController::WindowController(std::string windowNibName)
    : windowNibName_(std::move(windowNibName))
{
    useWidgetPresenters();
}

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
    hasClosed_ = false;
    shown->setWindowState(shown->windowState() & ~Qt::WindowMinimized);
    shown->show();
    shown->raise();
    shown->activateWindow();
}

bool WindowController::close()
{
    if (!window_ || closing_ == Closing::Agreed) return true;
    if (closing_ == Closing::Asked) return false;
    if (hasClosed_ && !window_->isVisible()) return true;
    // A window that is hidden already keeps nothing open.
    return window_->close() || !window_->isVisible();
}

void WindowController::windowWillClose(QWidget *)
{
    if (shouldCloseDocument_ && document_) document_->close();
}

bool WindowController::eventFilter(QObject *object, QEvent *event)
{
    if (object != window_.get() || event->type() != QEvent::Close)
        return QObject::eventFilter(object, event);
    if (closing_ != Closing::No) { // asked again by what its closing set off
        event->setAccepted(closing_ == Closing::Agreed);
        return true;
    }
    const QPointer<WindowController> self(this);
    closing_ = Closing::Asked;
    // The window is asked first: it may refuse, and then stays as it is. Past the filters, which
    // stay where they are: one that is installed anew comes before the host's and hides the event
    // from them.
    event->accept();
    object->event(event);
    if (self && event->isAccepted() && shouldCloseDocument_ && document_)
        event->setAccepted(document_->closeOtherWindows(*this));
    if (self && event->isAccepted()) {
        closing_ = Closing::Agreed;
        hasClosed_ = true;
        windowWillClose(window_.get());
    }
    if (self) closing_ = Closing::No;
    return true;
}

} // namespace kelo
