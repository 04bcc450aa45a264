#include "platform/widgets/AlertBox.h"

#include "platform/presenters/Alert.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>

namespace kelo {

void runModalAlertBox(const Alert &alert)
{
    // On the heap: the window that it is in front of, and which owns it, may be destroyed
    // while the box waits.
    const QPointer<QMessageBox> box = new QMessageBox(QApplication::activeWindow());
    box->setIcon(QMessageBox::Warning);
    // Plain: texts carry names of patients and files, which may look like markup.
    box->setTextFormat(Qt::PlainText);
    box->setText(QString::fromStdString(alert.messageText));
    const std::string gap = alert.informativeText.empty() || alert.detailText.empty() ? "" : "\n\n";
    box->setInformativeText(QString::fromStdString(alert.informativeText + gap + alert.detailText));
    // The context of the desktop's own buttons: "OK" is in the user's language.
    box->addButton(QCoreApplication::translate("QPlatformTheme", alert.buttonTitle.c_str()),
                   QMessageBox::AcceptRole);
    box->exec();
    delete box;
}

} // namespace kelo
