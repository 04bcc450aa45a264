#pragma once

#include "viewer/text/ToothNotation.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>

namespace viewer {

/// The colours of windows and dialogs.
enum class Theme { AsDesktop, Light, Dark };

/// What the user chose once for all windows, kept in the settings of the desktop. Each is read anew
/// when it is asked for; whoever shows one listens to changed(). Main thread only.
class Preferences : public QObject
{
    Q_OBJECT

public:
    static Preferences &preferences();

    /// Of everything that names a tooth.
    ToothNotation notation() const;
    void setNotation(ToothNotation notation);

    /// Whether the teeth have their numbers beside them in the view; at first they have not.
    bool showsToothNumbers() const;
    void setShowsToothNumbers(bool shows);

    Theme theme() const;
    void setTheme(Theme theme);

    /// The treatment files opened last, the last one first, ten at most; only those that are there.
    QStringList recentFiles() const;
    void addRecentFile(const QString &path);
    void clearRecentFiles();

    /// The place and size of the window that was closed last; empty before the first.
    QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray &geometry);

signals:
    /// Not sent for the geometry.
    void changed();

private:
    Preferences() = default;
    void set(const QString &key, const QVariant &value);
};

} // namespace viewer
