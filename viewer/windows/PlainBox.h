#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

namespace viewer {

/// How many characters of a line a box shows; paths that people make are shorter.
inline constexpr qsizetype mostBoxLineCharacters = 1'000;

/// A message as a box takes it, line by line: characters that would steer its direction appear as
/// terminalText has them, and of a line that is too long the beginning, followed by "…".
QString boxText(const QString &message);

/// Gives a box its message, as boxText has it, and what can be done below it; empty for nothing.
/// Names and labels come from files: whatever they look like, they are shown as they stand.
void setPlainText(QMessageBox &box, const QString &message, const QString &advice = {});

/// Tells in a box over a window, and waits for its one button. Null for over no window.
void warn(QWidget *over, const QString &title, const QString &message, const QString &advice = {});

/// Asks in a box over a window, and waits for an answer: one of the buttons.
QMessageBox::StandardButton ask(QMessageBox::Icon icon, QWidget *over, const QString &title,
                                const QString &question, QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton usual);

} // namespace viewer
