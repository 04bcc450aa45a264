#pragma once

#include "keloOpenGL/treatment/DXOpenGLDelegate.h"
#include "viewer/PageSettings.h"
#include "viewer/UndoHistory.h"

#include <QMainWindow>

#include <memory>

class QAction;
class QMenu;

namespace kelo {
class DXOpenGL;
} // namespace kelo

namespace viewer {

class DateBar;
class OpenedTreatment;
struct PrintRequest;

/// The viewer's window: the treatment view, and the commands that it has so far.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The view takes `viewSize` points; the window is as much larger as it needs to be.
    explicit MainWindow(const QSize &viewSize);
    ~MainWindow() override;

    kelo::DXOpenGL &view() { return *view_; }
    /// Shows a treatment, and what the user should know about its opening.
    void showTreatment(std::shared_ptr<OpenedTreatment> treatment);

protected:
    /// Stores what the document has not reported yet. Where that fails the user is asked whether to
    /// close all the same.
    void closeEvent(QCloseEvent *event) override;

private:
    void makeMenus();
    void makeEditMenu();
    void makeStandardViewRows(QMenu &menu);
    void makeScenePartRows(QMenu &menu);
    /// The notation is remembered, and stands on every page that is printed from then on.
    void makeNotationMenu(QMenu &menu);
    PageSettings pageSettings() const;
    void askForName(const std::shared_ptr<kelo::ElasticModel> &elastic);
    void showDate(const QDate &date);
    void approve(bool isApproved);
    /// Another note is shown, or may be changed now, or not any more.
    void noteWasChosen();
    void showChanges();
    /// What the user did becomes a step that can be undone, once the event has done its work.
    bool eventFilter(QObject *object, QEvent *event) override;
    void savePicture();
    /// Shows the page of a print request as it will be printed, with the printer's settings.
    void preview(const PrintRequest &request);
    void savePage();
    void exportTreatment();
    /// False when the file could not be written.
    bool saveTreatment();
    /// Asks what is to become of changes that the treatment's file does not have; false to go on
    /// working.
    bool mayCloseFile();
    /// Stores what is outstanding, and asks where that fails; false to go on working.
    bool mayCloseStore();
    void tell(const QString &sentence);
    /// The view's own full screen, without menus; Escape or a double click leads back.
    void toggleFullScreen();

    kelo::DXOpenGLDelegate delegate_;
    UndoHistory history_;
    DateBar *dates_ = nullptr;
    QAction *save_ = nullptr; ///< of the treatment's file
    std::shared_ptr<OpenedTreatment> treatment_;
    std::shared_ptr<kelo::DXOpenGL> view_;
};

} // namespace viewer
