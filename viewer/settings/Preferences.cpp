#include "viewer/settings/Preferences.h"

#include <QFileInfo>
#include <QSettings>
#include <QVariant>

#include <algorithm>

namespace viewer {
namespace {

const QString notationKey = QStringLiteral("toothNotation");
const QString toothNumbersKey = QStringLiteral("toothNumbers");
const QString themeKey = QStringLiteral("theme");
const QString recentFilesKey = QStringLiteral("recentFiles");
const QString geometryKey = QStringLiteral("windowGeometry");

/// As many as a menu shows without scrolling, and more than a morning's patients.
constexpr qsizetype recentFileCount = 10;

const QString lightTheme = QStringLiteral("light");
const QString darkTheme = QStringLiteral("dark");

} // namespace

Preferences &Preferences::preferences()
{
    static Preferences all;
    return all;
}

void Preferences::set(const QString &key, const QVariant &value)
{
    QSettings settings;
    if (settings.value(key) == value) return;
    settings.setValue(key, value);
    settings.sync();
    emit changed();
}

ToothNotation Preferences::notation() const
{
    const QString name = QSettings().value(notationKey).toString();
    return toothNotationFromName(name).value_or(ToothNotation::Universal);
}

void Preferences::setNotation(ToothNotation notation)
{
    set(notationKey, nameOfToothNotation(notation));
}

bool Preferences::showsToothNumbers() const
{
    return QSettings().value(toothNumbersKey, false).toBool();
}

void Preferences::setShowsToothNumbers(bool shows)
{
    set(toothNumbersKey, shows);
}

Theme Preferences::theme() const
{
    const QString name = QSettings().value(themeKey).toString();
    if (name == lightTheme) return Theme::Light;
    return name == darkTheme ? Theme::Dark : Theme::AsDesktop;
}

void Preferences::setTheme(Theme theme)
{
    set(themeKey, theme == Theme::Light  ? lightTheme
                  : theme == Theme::Dark ? darkTheme
                                         : QString());
}

QStringList Preferences::recentFiles() const
{
    QStringList files = QSettings().value(recentFilesKey).toStringList();
    files.removeIf([](const QString &path) { return !QFileInfo(path).isFile(); });
    return files;
}

void Preferences::addRecentFile(const QString &path)
{
    const QString whole = QFileInfo(path).absoluteFilePath();
    QStringList files = QSettings().value(recentFilesKey).toStringList();
    files.removeAll(whole);
    files.prepend(whole);
    set(recentFilesKey, QStringList(files.mid(0, recentFileCount)));
}

void Preferences::clearRecentFiles()
{
    set(recentFilesKey, QStringList());
}

QByteArray Preferences::windowGeometry() const
{
    return QSettings().value(geometryKey).toByteArray();
}

void Preferences::setWindowGeometry(const QByteArray &geometry)
{
    QSettings().setValue(geometryKey, geometry);
}

} // namespace viewer
