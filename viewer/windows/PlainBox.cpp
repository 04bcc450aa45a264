#include "viewer/windows/PlainBox.h"

#include "viewer/text/ShownText.h"

namespace viewer {

QString boxText(const QString &message)
{
    QStringList lines = terminalText(message).split(QLatin1Char('\n'));
    for (QString &line : lines)
        line = shortened(line, mostBoxLineCharacters);
    return lines.join(QLatin1Char('\n'));
}

void setPlainText(QMessageBox &box, const QString &message, const QString &advice)
{
    // By default a box takes text for markup that begins like it.
    box.setTextFormat(Qt::PlainText);
    box.setText(boxText(message));
    if (!advice.isEmpty()) box.setInformativeText(advice); // always a text of ours
}

void warn(QWidget *over, const QString &title, const QString &message, const QString &advice)
{
    QMessageBox box(QMessageBox::Warning, title, QString(), QMessageBox::Ok, over);
    setPlainText(box, message, advice);
    box.exec();
}

QMessageBox::StandardButton ask(QMessageBox::Icon icon, QWidget *over, const QString &title,
                                const QString &question, QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton usual)
{
    QMessageBox box(icon, title, QString(), buttons, over);
    box.setDefaultButton(usual);
    setPlainText(box, question);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

} // namespace viewer
