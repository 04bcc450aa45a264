#include "platform/time/RunLoop.h"
#include "platform/view/OpenGLView.h"
#include "platform/widgets/ContextMenuStyle.h"
#include "platform/widgets/MenuOpening.h"
#include "platform/widgets/NativeMenu.h"

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QScreen>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <cmath>

Q_DECLARE_METATYPE(std::shared_ptr<kelo::MenuItem>)

namespace kelo {
namespace {

QString nativeTitle(const MenuItem &item)
{
    constexpr char16_t emSpace = 0x2003;
    QString title = QString::fromStdString(item.shownTitle.empty() ? item.title : item.shownTitle);
    // A single ampersand would underline the next letter.
    title.replace(QLatin1Char('&'), QLatin1String("&&"));
    return QString(2 * std::max(item.indentationLevel, 0), QChar(emSpace)) + title;
}

/// The side of the square, in points, that holds each of the menu's images; 0 without any.
int imageSideOf(const Menu &menu)
{
    double side = 0.0;
    for (const auto &item : menu.items()) {
        if (!item->image) continue;
        const QSizeF size = item->image->deviceIndependentSize();
        side = std::max({side, size.width(), size.height()});
    }
    return static_cast<int>(std::ceil(side));
}

/// An icon that fills the square, with the image at its own size in the middle. Icons that are
/// smaller would be drawn as large as the square where they have the pixels for it.
QIcon nativeIcon(const QImage &image, int side)
{
    const double scale = image.devicePixelRatio();
    const QSize pixels = (QSizeF(side, side) * scale).toSize();
    QImage square(pixels, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    // By whole points, so that it stays sharp with one pixel a point.
    const QSizeF rest = QSizeF(side, side) - image.deviceIndependentSize();
    const QPointF corner = QPointF(std::floor(rest.width() / 2), std::floor(rest.height() / 2));
    QPainter(&square).drawImage(QRectF(corner * scale, image.size()), image);
    square.setDevicePixelRatio(scale);
    return QIcon(QPixmap::fromImage(square));
}

/// Gives a native menu a style that shows the images of the menu as they are.
void setStyleForImages(QMenu &nativeMenu, const Menu &menu, int imageSide)
{
    const bool hasCheckedImage =
        std::any_of(menu.items().begin(), menu.items().end(), [](const auto &item) {
            return item->image && item->state != MenuItemState::Off;
        });
    auto *style = new ContextMenuStyle(imageSide, hasCheckedImage);
    style->setParent(&nativeMenu); // menus do not own their styles
    nativeMenu.setStyle(style);
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
    const Point position = view.flippedWindowPoint(event.locationInWindow);
    return window->mapToGlobal(QPointF(position.x, position.y).toPoint());
}

/// What the menus of a window stay inside of: the screen, as far as no panel of the desktop takes
/// it. On Wayland a program does not know where its windows are, and not every compositor keeps
/// menus on the screen; but what is inside of the window is where its user sees it.
QRect areaForMenus(const QWindow *topLevel, const QPoint &pointer)
{
    // Windows smaller than this (points) have menus that reach out of them: a list of two or three
    // rows that scrolls is worse than one that may end off the screen.
    constexpr QSize smallest(480, 360);
    if (topLevel && QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return {topLevel->mapToGlobal(QPoint()), topLevel->size().expandedTo(smallest)};
    const QScreen *screen = QGuiApplication::screenAt(pointer);
    if (!screen) screen = topLevel ? topLevel->screen() : QGuiApplication::primaryScreen();
    const bool fillsScreen = topLevel && topLevel->windowStates().testFlag(Qt::WindowFullScreen);
    return fillsScreen ? screen->geometry() : screen->availableGeometry();
}

/// Takes a closed menu off the screen, because what was chosen may take a while, and paints what it
/// covered: the window system keeps no picture of that. Its request to paint may still be on its
/// way when sync returns, as another thread reads what the window system sends; so the widgets are
/// painted unasked.
void showWhatWasCovered(const QPointer<QWidget> &owner)
{
    QGuiApplication::sync();
    if (!owner) return;
    owner->repaint();
    QGuiApplication::sync();
}

} // namespace

void fillNativeMenu(QMenu &nativeMenu, const Menu &menu)
{
    const int imageSide = imageSideOf(menu);
    setStyleForImages(nativeMenu, menu, imageSide);
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
            action->setIcon(nativeIcon(*item->image, imageSide));
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
    QWindow *topLevel = topLevelWindowOf(view);
    const QPointer<QWidget> owner = widgetOfWindow(topLevel);
    // On the heap: its owner may be destroyed while the menu is open.
    const QPointer<QMenu> nativeMenu = new QMenu(owner);
    fillNativeMenu(*nativeMenu, *menu);
    if (topLevel && !owner) {
        // Not the view's own window: a menu in front of a child window gets no keyboard.
        nativeMenu->winId();
        nativeMenu->windowHandle()->setTransientParent(topLevel);
    }
    std::shared_ptr<MenuItem> chosen;
    const auto showMenu = [&] {
        const RunLoop::ModeScope tracking(RunLoop::main(), RunLoopMode::EventTracking);
        const QPoint pointer = screenLocation(event, view);
        const MenuOpening opening(*nativeMenu, pointer, areaForMenus(topLevel, pointer));
        chosen = itemOfAction(nativeMenu->exec(opening.menuPosition()));
        delete nativeMenu;
        showWhatWasCovered(owner);
        return opening.pressHasEnded();
    };
    // The delegate and the actions are the view's affair as a rule, and end with it.
    view.lendInput(showMenu, [&] { menu->close(chosen); });
}

} // namespace kelo
