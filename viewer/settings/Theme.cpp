#include "viewer/settings/Theme.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

namespace viewer {
namespace {

struct Shades
{
    QColor window, base, alternate, text, dimmed, button, link, highlight, highlightedText;
};

QPalette paletteOf(const Shades &shades)
{
    QPalette palette(shades.button, shades.window);
    palette.setColor(QPalette::Base, shades.base);
    palette.setColor(QPalette::AlternateBase, shades.alternate);
    palette.setColor(QPalette::ToolTipBase, shades.base);
    palette.setColor(QPalette::ToolTipText, shades.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, shades.text);
    palette.setColor(QPalette::BrightText, Qt::red);
    palette.setColor(QPalette::PlaceholderText, shades.dimmed);
    palette.setColor(QPalette::Link, shades.link);
    palette.setColor(QPalette::Highlight, shades.highlight);
    palette.setColor(QPalette::HighlightedText, shades.highlightedText);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, shades.dimmed);
    return palette;
}

} // namespace

QPalette lightPalette()
{
    return paletteOf({QColor(0xF2F2F2), Qt::white, QColor(0xF6F8FA), QColor(0x1A1A1A),
                      QColor(0x767676), QColor(0xE6E6E6), QColor(0x0B57A4), QColor(0x1F6FB5),
                      Qt::white});
}

QPalette darkPalette()
{
    return paletteOf({QColor(0x2B2D30), QColor(0x1E1F22), QColor(0x26282B), QColor(0xE4E4E4),
                      QColor(0x8C8F94), QColor(0x3C3F43), QColor(0x7AB8F0), QColor(0x2F6FA8),
                      Qt::white});
}

void followThemePreference()
{
    const QPalette desktop = QApplication::palette();
    const QString desktopStyle = QApplication::style()->objectName();
    const auto follow = [desktop, desktopStyle] {
        const Theme theme = Preferences::preferences().theme();
        // Only this style draws everything from the palette.
        const QString style = theme == Theme::AsDesktop ? desktopStyle : QStringLiteral("fusion");
        if (QApplication::style()->objectName().compare(style, Qt::CaseInsensitive) != 0)
            QApplication::setStyle(QStyleFactory::create(style));
        QApplication::setPalette(theme == Theme::Light  ? lightPalette()
                                 : theme == Theme::Dark ? darkPalette()
                                                        : desktop);
    };
    follow();
    QObject::connect(&Preferences::preferences(), &Preferences::changed, qApp, follow);
}

} // namespace viewer
