#pragma once

#include "tests/support/DrawingView.h"
#include "tests/support/SettledDisplay.h"
#include "tests/support/TestSurface.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include <memory>

namespace kelo::test {

/// What the screen really shows of a window, in device pixels.
inline QImage screenshotOf(const QWindow &window)
{
    return window.screen()->grabWindow(window.winId()).toImage();
}

/// Moves the real pointer and presses real keys and buttons.
inline bool xdotool(const QStringList &arguments)
{
    return QProcess::execute(QStringLiteral("xdotool"), arguments) == 0;
}

/// A view in a native window, in a container in a top-level widget that is shown and exposed.
class WindowTest : public testing::Test
{
protected:
    void showView(const QSize &size = {320, 240}, int margin = 0)
    {
        view = std::make_shared<DrawingView>(Rect{{0, 0}, {100, 80}});
        top = std::make_unique<QWidget>();
        auto *layout = new QVBoxLayout(top.get());
        layout->setContentsMargins(margin, margin, margin, margin);
        container = view->createContainer(top.get());
        layout->addWidget(container);
        top->resize(size.grownBy(layout->contentsMargins()));
        top->show();
        ASSERT_TRUE(waitUntil([this] { return view->isExposed() && view->frames > 0; }));
        // What a test before pressed or left under the pointer is not this one's.
        xdotool({"keyup", "Control_L", "mouseup", "1", "mousemove", "1270", "1010"});
        ASSERT_TRUE(waitUntil([this] { return top->isActiveWindow(); }));
        // The window manager may still move and size the window.
        ASSERT_TRUE(displayIsSettled());
        ASSERT_TRUE(waitUntil([this] { return !view->needsDisplay(); }));
        view->events.clear();
    }

    /// Whether keys go to the view.
    bool viewHasKeyboard() const
    {
        return container->hasFocus() && QGuiApplication::focusWindow() == top->windowHandle();
    }

    /// Sends a mouse event to the view's window, with the position counted from the top left.
    void mouse(QEvent::Type type, const QPointF &position, Qt::MouseButton button,
               Qt::MouseButtons held, Qt::KeyboardModifiers modifiers = {},
               quint64 timestampInMilliseconds = 0)
    {
        QWindow *window = view->window();
        QMouseEvent event(type, position, position, window->mapToGlobal(position), button, held,
                          modifiers);
        event.setTimestamp(timestampInMilliseconds);
        QCoreApplication::sendEvent(window, &event);
    }

    TestSurface surface{SurfaceKind::Window};
    std::shared_ptr<DrawingView> view;
    std::unique_ptr<QWidget> top;
    QWidget *container = nullptr;
};

} // namespace kelo::test
