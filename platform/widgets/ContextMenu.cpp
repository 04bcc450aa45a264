#include "platform/OpenGLView.h"
#include "platform/RunLoop.h"
#include "platform/widgets/NativeMenu.h"

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QMenu>
#include <QPixmap>
#include <QPointer>
#include <QVariant>
#include <QWindow>

#include <algorithm>

Q_DECLARE_METATYPE(std::shared_ptr<kelo::MenuItem>)

namespace kelo {
namespace {

QString nativeTitle(const MenuItem &item)
{
    constexpr char16_t emSpace = 0x2003;
    QString title = QString::fromStdString(item.title);
    // A single ampersand would underline the next letter.
    title.replace(QLatin1Char('&'), QLatin1String("&&"));
    return QString(2 * std::max(item.indentationLevel, 0), QChar(emSpace)) + title;
}

/// The top-level window that the view is in; null for a view without a window.
QWindow *topLevelWindowOf(const OpenGLView &view)
{
    QWindow *window = view.window();
    while (window && window->parent())
        window = window->parent();
    return window;
}

/// The widget whose native window this is, or null.
QWidget *widgetOfWindow(const QWindow *window)
{
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (window && widget->windowHandle() == window) return widget;
    return nullptr;
}

QPoint screenLocation(const Event &event, const OpenGLView &view)
{
    const QWindow *window = view.window();
    if (!window) return QCursor::pos();
    const double fromTop = view.bounds().size.height - event.locationInWindow.y;
    return window->mapToGlobal(QPointF(event.locationInWindow.x, fromTop).toPoint());
}

} // namespace

void fillNativeMenu(QMenu &nativeMenu, const Menu &menu)
{
    for (const auto &item : menu.items()) {
        if (item->separator) {
            nativeMenu.addSeparator();
            continue;
        }
        QAction *action = nativeMenu.addAction(nativeTitle(*item));
        action->setData(QVariant::fromValue(item));
        action->setEnabled(item->enabled);
        if (item->state != MenuItemState::Off) {
            action->setCheckable(true);
            action->setChecked(true);
        }
        if (item->image) {
            action->setIcon(QIcon(QPixmap::fromImage(*item->image)));
            action->setIconVisibleInMenu(true); // some desktops hide the icons of menus
        }
        if (item->submenu) {
            auto *nativeSubmenu = new QMenu(&nativeMenu);
            fillNativeMenu(*nativeSubmenu, *item->submenu);
            action->setMenu(nativeSubmenu);
        }
    }
}

std::shared_ptr<MenuItem> itemOfAction(const QAction *action)
{
    return action ? action->data().value<std::shared_ptr<MenuItem>>() : nullptr;
}

void popUpNativeContextMenu(const std::shared_ptr<Menu> &menu, const Event &event, OpenGLView &view)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        menu->close(nullptr);
        return;
    }
    const QPointer<QWindow> viewWindow = view.window();
    const bool hasWindow = !viewWindow.isNull();
    QWindow *topLevel = topLevelWindowOf(view);
    QWidget *owner = widgetOfWindow(topLevel);
    // On the heap: its owner may be destroyed while the menu is open.
    const QPointer<QMenu> nativeMenu = new QMenu(owner);
    fillNativeMenu(*nativeMenu, *menu);
    if (topLevel && !owner) {
        // Not the view's own window: a menu in front of a child window gets no keyboard.
        nativeMenu->winId();
        nativeMenu->windowHandle()->setTransientParent(topLevel);
    }
    std::shared_ptr<MenuItem> chosen;
    {
        const RunLoop::ModeScope tracking(RunLoop::main(), RunLoopMode::EventTracking);
        chosen = itemOfAction(nativeMenu->exec(screenLocation(event, view)));
    }
    delete nativeMenu;
    // The delegate and the actions are the view's affair as a rule, and end with it.
    if (hasWindow && !viewWindow) return;
    menu->close(chosen);
}

} // namespace kelo
