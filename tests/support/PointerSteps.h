#pragma once

#include "tests/support/WindowTest.h"

#include <QMenu>
#include <QMouseEvent>
#include <QTimer>

#include <functional>
#include <vector>

namespace kelo::test {

/// Counts the releases of buttons of the whole program, whoever gets them, and follows its pointer.
class ButtonWatch : public QObject
{
public:
    ButtonWatch() { qApp->installEventFilter(this); }
    int releases = 0;
    QPoint lastMove; ///< on the screen

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // Widgets get theirs a second time, from their windows.
        if (!event->spontaneous() || !watched->isWindowType()) return false;
        if (event->type() == QEvent::MouseButtonRelease) ++releases;
        if (event->type() == QEvent::MouseMove)
            lastMove = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
        return false;
    }
};

/// The menu that is open on the screen, or null.
inline QMenu *openMenu()
{
    auto *native = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    return native && native->windowHandle()->isExposed() ? native : nullptr;
}

/// Moves the real pointer.
inline void movePointer(const QPoint &pointOnScreen)
{
    xdotool({"mousemove", QString::number(pointOnScreen.x()), QString::number(pointOnScreen.y())});
}

/// Something to do as soon as something holds.
struct Step
{
    std::function<bool()> when;
    std::function<void()> act;
};

inline bool atOnce()
{
    return true;
}

/// Goes through the steps one after the other, inside of the event loops of menus too, and on until
/// `isOver`. Whether all steps came; if not, what menus are open after 20 seconds are closed.
inline bool goThrough(const std::vector<Step> &steps, const std::function<bool()> &isOver)
{
    std::size_t next = 0;
    bool isActing = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (isActing || next >= steps.size() || !steps[next].when()) return;
        isActing = true;
        steps[next++].act();
        isActing = false;
    });
    timer.start(2);
    QTimer::singleShot(20000, &timer, [&] { // the end of patience
        next = steps.size() + 1;
        while (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
    });
    waitUntil([&] { return next >= steps.size() && isOver(); }, 25000);
    return next == steps.size();
}

} // namespace kelo::test
