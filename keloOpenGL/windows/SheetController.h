#pragma once

#include "base/Export.h"
#include "platform/widgets/WindowController.h"

#include <QPointer>
#include <QWidget>

namespace kelo {

/// Runs its window as a sheet: a dialog that blocks one window and no other.
class KELO_EXPORT SheetController : public WindowController
{
    Q_OBJECT

public:
    using WindowController::WindowController;

    /// The window that the sheet is attached to; not owned.
    QWidget *mainWindow() const { return mainWindow_; }
    void setMainWindow(QWidget *window) { mainWindow_ = window; }

    /// Begins the sheet and returns.
    void startDialog(QObject *sender = nullptr);
    /// Commits what is being edited in the sheet, and ends it. Does nothing before startDialog.
    void doneDialog(QObject *sender = nullptr);

private:
    QPointer<QWidget> mainWindow_;
};

} // namespace kelo
