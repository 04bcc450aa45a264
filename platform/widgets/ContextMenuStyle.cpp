#include "platform/widgets/ContextMenuStyle.h"

#include <QApplication>
#include <QStyleOptionMenuItem>

#include <algorithm>

namespace kelo {
namespace {

/// Points; as wide as styles make the column of their check marks in menus without images.
constexpr int checkColumnWidth = 24;

/// The row's ground: for the active row the highlight, over the whole width, and the check mark of
/// a checked one where the style has it in menus without images.
QStyleOptionMenuItem groundOfRow(const QStyleOptionMenuItem &row)
{
    QStyleOptionMenuItem ground = row;
    ground.menuItemType = QStyleOptionMenuItem::Normal;
    ground.text.clear();
    ground.icon = {};
    ground.maxIconWidth = 0;
    return ground;
}

/// What stands on the ground. Not drawn as active, which would draw a second, shorter highlight.
QStyleOptionMenuItem contentOfRow(const QStyleOptionMenuItem &row)
{
    QStyleOptionMenuItem content = row;
    content.checkType = QStyleOptionMenuItem::NotCheckable;
    content.checked = false;
    content.menuHasCheckableItems = false;
    if (!(row.state & QStyle::State_Selected)) return content;
    content.state &= ~QStyle::State_Selected;
    if (!(row.state & QStyle::State_Enabled)) return content;
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
        content.palette.setBrush(role, row.palette.highlightedText());
    // Some styles fill the ground of every row.
    for (const auto role : {QPalette::Button, QPalette::Window, QPalette::Base})
        content.palette.setBrush(role, row.palette.highlight());
    return content;
}

} // namespace

ContextMenuStyle::ContextMenuStyle(int imageSide, bool hasCheckColumn)
    // A style of the same kind: one proxy may not take the application's own.
    : QProxyStyle(QApplication::style()->name()),
      imageSide_(imageSide),
      hasCheckColumn_(hasCheckColumn)
{}

int ContextMenuStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_Menu_Scrollable: // the alternative is a second column, as wide as the first
        return 1;
    case SH_Menu_FillScreenWithScroll: // a menu that scrolls stays in its place
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

int ContextMenuStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const
{
    const int own = QProxyStyle::pixelMetric(metric, option, widget);
    if (metric == PM_MenuDesktopFrameWidth) return std::max(own, screenMargin_);
    return metric == PM_SmallIconSize ? std::max(own, imageSide_) : own;
}

QSize ContextMenuStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &contentsSize, const QWidget *widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contentsSize, widget);
    if (type == CT_MenuItem && hasCheckColumn_) size.rwidth() += checkColumnWidth;
    return size;
}

void ContextMenuStyle::drawControl(ControlElement element, const QStyleOption *option,
                                   QPainter *painter, const QWidget *widget) const
{
    const auto *row = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (element != CE_MenuItem || !hasCheckColumn_ || !row ||
        row->menuItemType == QStyleOptionMenuItem::Separator) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    const QStyleOptionMenuItem ground = groundOfRow(*row);
    QProxyStyle::drawControl(element, &ground, painter, widget);
    QStyleOptionMenuItem content = contentOfRow(*row);
    content.rect =
        visualRect(row->direction, row->rect, row->rect.adjusted(checkColumnWidth, 0, 0, 0));
    QProxyStyle::drawControl(element, &content, painter, widget);
}

} // namespace kelo
