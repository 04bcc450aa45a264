// A window with a view in which every press opens a menu too high for the window, for a test that
// is another program: this one is on Wayland, where no program moves the pointer. Tells on standard
// output what happens, a line each.

#include "platform/presenters/Menu.h"
#include "platform/time/RunLoop.h"
#include "platform/widgets/WidgetPresenters.h"
#include "tests/support/DrawingView.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include <cstdio>
#include <memory>
#include <string>

using namespace kelo;

namespace {

void say(const std::string &line)
{
    std::puts(line.c_str());
    std::fflush(stdout);
}

std::string text(const QPoint &point)
{
    return std::to_string(point.x()) + ' ' + std::to_string(point.y());
}

/// Tells of every release of a button, whoever gets it.
class ReleaseWatch : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched->isWindowType() && event->spontaneous() &&
            event->type() == QEvent::MouseButtonRelease)
            say("released");
        return false;
    }
};

std::shared_ptr<Menu> makeMenu(const std::string &title)
{
    auto menu = std::make_shared<Menu>(title);
    for (int row = 0; row < 40; ++row)
        menu->addItemWithTitle_actionName_action(
            title + ' ' + std::to_string(row),
            "choose:", [](MenuItem &item) { say("chosen " + item.title); });
    return menu;
}

void tellEvent(const Event &event, const OpenGLView &view)
{
    const Point place = view.flippedWindowPoint(event.locationInWindow);
    switch (event.type) {
    case EventType::MouseMoved:
        say("at " + text(QPointF(place.x, place.y).toPoint()));
        break;
    case EventType::LeftMouseDown:
        say("press " + text(QPointF(place.x, place.y).toPoint()));
        break;
    case EventType::LeftMouseDragged:
        say("drag");
        break;
    case EventType::KeyDown:
        say("key");
        break;
    default:
        break;
    }
}

} // namespace

int main(int argc, char **argv)
{
    useWidgetPresenters();
    QApplication application(argc, argv);
    OpenGLView::setSurfaceKind(SurfaceKind::Window);
    const auto view = std::make_shared<test::DrawingView>(Rect{{0.0, 0.0}, {500.0, 350.0}});
    view->acceptsMouseMovedEvents = true;
    const auto menu = makeMenu("row");
    menu->items().at(1)->submenu = makeMenu("inner row");
    QWidget top;
    auto *layout = new QVBoxLayout(&top);
    layout->setContentsMargins({});
    QWidget *container = view->createContainer(&top);
    layout->addWidget(container);
    top.resize(500, 400);

    view->onEvent = [&](const Event &event) {
        tellEvent(event, *view);
        if (event.type != EventType::LeftMouseDown) return;
        ContextMenuPresenter::popUpNativeMenu(menu, event, *view);
        say("closed");
    };
    // A menu is open as soon as the compositor shows it.
    const QWidget *shown = nullptr;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        const QWidget *popup = QApplication::activePopupWidget();
        const bool isShown = popup && popup->windowHandle() && popup->windowHandle()->isExposed();
        if (isShown && popup != shown) {
            const QPoint corner = container->mapFromGlobal(popup->geometry().topLeft());
            const QPoint end = container->mapFromGlobal(popup->geometry().bottomRight());
            say("menu " + text(corner) + ' ' + text(end));
        }
        shown = isShown ? popup : nullptr;
    });
    poll.start(5);
    ReleaseWatch watch;
    application.installEventFilter(&watch);
    top.show();
    return application.exec();
}
