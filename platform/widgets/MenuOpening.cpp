#include "platform/widgets/MenuOpening.h"

#include "platform/widgets/ContextMenuStyle.h"
#include "platform/widgets/MenuPlacement.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QStyleHints>

namespace kelo {
namespace {

Rect rectFromQt(const QRect &rect)
{
    return {{static_cast<double>(rect.x()), static_cast<double>(rect.y())},
            {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

QRect rectToQt(const Rect &rect)
{
    return QRectF(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height).toRect();
}

} // namespace

MenuOpening::MenuOpening(QMenu &menu, const QPoint &pointer, const QRect &area)
    : menu_(&menu),
      pointer_(pointer),
      area_(area),
      pressed_(QGuiApplication::mouseButtons()),
      held_(pressed_),
      clickMayGoOn_(pressed_ != Qt::NoButton)
{
    sinceThePress_.start();
    QList<QMenu *> menus = menu.findChildren<QMenu *>();
    menus.append(&menu);
    for (QMenu *one : menus) {
        one->installEventFilter(this);
        connect(one, &QMenu::aboutToShow, this, [this, one] { limitHeight(*one); });
    }
}

QPoint MenuOpening::menuPosition() const
{
    return placeOf(*menu_).topLeft();
}

QRect MenuOpening::placeOf(const QMenu &menu) const
{
    const QSize size = menu.sizeHint();
    const Size wanted{static_cast<double>(size.width()), static_cast<double>(size.height())};
    const Rect area = rectFromQt(area_);
    const bool fromRightToLeft = menu.isRightToLeft();
    const auto *parent = qobject_cast<QMenu *>(menu.parentWidget());
    if (&menu == menu_ || !parent)
        return rectToQt(
            placeOfMenu({static_cast<double>(pointer_.x()), static_cast<double>(pointer_.y())},
                        wanted, area, fromRightToLeft));
    QRect row = parent->actionGeometry(menu.menuAction());
    row.moveTopLeft(parent->mapToGlobal(row.topLeft()));
    return rectToQt(placeOfSubmenu(rectFromQt(row), wanted, area, fromRightToLeft));
}

void MenuOpening::limitHeight(QMenu &menu) const
{
    auto *style = dynamic_cast<ContextMenuStyle *>(menu.style());
    const QScreen *screen = menu.screen();
    if (!style || !screen) return;
    const int height = placeOf(menu).height();
    // Menus scroll where the screen less the style's margins is too low for them.
    const bool isTooHigh = height < menu.sizeHint().height();
    style->setScreenMargin(isTooHigh ? (screen->geometry().height() - height + 1) / 2 : 0);
}

bool MenuOpening::pressIsMeantForTheView(const QMouseEvent &press)
{
    const bool isSameButton = (pressed_ & press.button()) != 0;
    if (isSameButton) pressHasEnded_ = true;
    const int sinceThePress = static_cast<int>(sinceThePress_.elapsed());
    const int distance = (press.globalPosition().toPoint() - pointer_).manhattanLength();
    // Qt counts clicks by window and knows nothing of a first one in the view, where the distance
    // of a double click is measured more strictly than a hand that wobbles keeps to it.
    const bool isSoon = press.type() == QEvent::MouseButtonDblClick ||
                        sinceThePress <= QGuiApplication::styleHints()->mouseDoubleClickInterval();
    const bool goesOn = clickMayGoOn_ && isSameButton && isSoon &&
                        distance <= QGuiApplication::styleHints()->startDragDistance();
    if (goesOn)
        held_ |= press.button();
    else
        clickMayGoOn_ = false;
    return goesOn;
}

bool MenuOpening::releaseIsMeantForTheView(const QMouseEvent &release)
{
    if (!(held_ & release.button())) return false;
    held_ &= ~Qt::MouseButtons(release.button());
    pressHasEnded_ = true;
    return true;
}

bool MenuOpening::moveIsMeantForTheView(const QMouseEvent &move)
{
    // Less than was held: the release went elsewhere.
    if ((held_ & move.buttons()) != held_) pressHasEnded_ = true;
    held_ &= move.buttons();
    return held_ != Qt::NoButton;
}

bool MenuOpening::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        // Qt's own place may have the pointer over a row at the edges of the screen.
        if (auto *menu = qobject_cast<QMenu *>(watched)) menu->setGeometry(placeOf(*menu));
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return pressIsMeantForTheView(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return releaseIsMeantForTheView(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return moveIsMeantForTheView(*static_cast<QMouseEvent *>(event));
    default:
        return false;
    }
}

} // namespace kelo
