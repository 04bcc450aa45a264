#include "keloOpenGL/windows/SheetController.h"

#include <QWidget>
#include <QWindow>

namespace kelo {
namespace {

/// A sheet with a native window.
void makeSheet(QWidget &window)
{
    window.setWindowFlags(Qt::Sheet);
    window.setWindowModality(Qt::WindowModal);
    window.winId();
}

/// By the native windows alone: a widget's parent would own the sheet.
void attach(QWidget &sheet, QWidget &mainWindow)
{
    mainWindow.winId();
    sheet.windowHandle()->setTransientParent(mainWindow.windowHandle());
}

} // namespace

void SheetController::startDialog(QObject *)
{
    QWidget *const sheet = window();
    if (!sheet) return;
    makeSheet(*sheet);
    if (mainWindow_) attach(*sheet, *mainWindow_);
    sheet->show();
}

void SheetController::doneDialog(QObject *)
{
    if (!isWindowLoaded()) return; // never begun
    QWidget *const sheet = window();
    // A field commits its text when it loses the keyboard focus.
    if (QWidget *edited = sheet->focusWidget()) edited->clearFocus();
    sheet->hide();
    if (QWindow *native = sheet->windowHandle()) native->setTransientParent(nullptr);
}

} // namespace kelo
