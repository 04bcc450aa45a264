#include "keloOpenGL/windows/SheetController.h"

#include <QWidget>
#include <QWindow>

namespace kelo {

void SheetController::startDialog(QObject *)
{
    QWidget *const sheet = window();
    if (!sheet) return;
    sheet->setWindowFlags(Qt::Sheet);
    sheet->setWindowModality(Qt::WindowModal);
    // Attached by the native windows alone: a widget's parent would own the sheet.
    sheet->winId();
    if (mainWindow_) {
        mainWindow_->winId();
        sheet->windowHandle()->setTransientParent(mainWindow_->windowHandle());
    }
    sheet->show();
}

void SheetController::doneDialog(QObject *)
{
    if (!isWindowLoaded()) return; // never begun
    QWidget *const sheet = window();
    // A field takes its text over when it loses the keyboard.
    if (QWidget *edited = sheet->focusWidget()) edited->clearFocus();
    sheet->hide();
    if (QWindow *native = sheet->windowHandle()) native->setTransientParent(nullptr);
}

} // namespace kelo
