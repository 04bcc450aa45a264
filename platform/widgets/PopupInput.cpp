#include "platform/widgets/PopupInput.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace kelo {
namespace {

void passMouse(const QMouseEvent &event, const QWidget &popup)
{
    const QPointF position = popup.mapFromGlobal(event.globalPosition());
    QMouseEvent passed(event.type(), position, event.globalPosition(), event.button(),
                       event.buttons(), event.modifiers(), event.pointingDevice());
    passed.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(popup.windowHandle(), &passed);
}

void passWheel(const QWheelEvent &event, const QWidget &popup)
{
    const QPointF position = popup.mapFromGlobal(event.globalPosition());
    QWheelEvent passed(position, event.globalPosition(), event.pixelDelta(), event.angleDelta(),
                       event.buttons(), event.modifiers(), event.phase(), event.inverted(),
                       event.source(), event.pointingDevice());
    passed.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(popup.windowHandle(), &passed);
}

} // namespace

bool passToOpenPopup(QEvent &event, const QWindow &window)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) return false;
    const QWidget *popup = QApplication::activePopupWidget();
    if (!popup || !popup->windowHandle() || popup->windowHandle() == &window) return false;
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        passMouse(static_cast<QMouseEvent &>(event), *popup);
        return true;
    case QEvent::Wheel:
        passWheel(static_cast<QWheelEvent &>(event), *popup);
        return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        QCoreApplication::sendEvent(popup->windowHandle(), &event);
        return true;
    default:
        return false;
    }
}

} // namespace kelo
