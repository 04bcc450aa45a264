#pragma once

#include "keloOpenGL/treatment/DXOpenGLDelegate.h"
#include "viewer/settings/PageSettings.h"
#include "viewer/treatment/DocumentChanges.h"
#include "viewer/treatment/UndoHistory.h"
#include "viewer/view/SceneMaterials.h"

#include <QDate>
#include <QList>
#include <QObject>
#include <QSize>

#include <memory>

class QAction;
class QKeyEvent;
class QMainWindow;
class QMenu;
class QToolBar;

namespace kelo {
class DXOpenGL;
struct ElasticsConfigType;
struct Size;
} // namespace kelo

namespace viewer {

class DateBar;
class OpenedTreatment;
class OpenTreatments;
class TreatmentDocument;
struct PrintRequest;

/// Where a further window goes that is as large as the first one: a step to the right and below for
/// each window that is open, and where that runs off the screen, as many from its upper left.
QPoint placeBeside(const QRect &first, const QRect &screen, int openWindowCount);

/// How large a window may be on a screen whose usable part is this large: its frame, which is not
/// known before the window is shown, needs room too.
QSize sizeWithinFrame(const QSize &screen);

/// What the viewer makes of a treatment's main window: its menus, the bar of dates below the view,
/// undo, option panels and sheets, and the questions before it closes.
class TreatmentWindow : public QObject
{
    Q_OBJECT

public:
    /// Neither the document, which has this one, nor the window nor `all` are owned.
    /// The treatment page is printed with `page` unless the user chooses otherwise.
    TreatmentWindow(TreatmentDocument &document, QMainWindow &window,
                    std::shared_ptr<kelo::DXOpenGL> view, OpenTreatments &all,
                    const PageSettings &page = {});
    ~TreatmentWindow() override;

    kelo::DXOpenGL &view() { return *view_; }
    const std::shared_ptr<kelo::DXOpenGL> &sharedView() const { return view_; }
    /// Makes the window as large as it must be for a view of this size, in points.
    void resizeView(const kelo::Size &size);
    /// The same, but no larger than the screen has room for.
    void resizeViewWithinScreen(const kelo::Size &size);
    /// Where the user left the last window; a second window a little further down. False when no
    /// window was left yet.
    bool restorePlace(int openWindowCount);
    /// What the user should know about the opening of the treatment.
    void tellAboutOpening();
    /// As its user would; false when the window stays.
    bool close();

private:
    bool eventFilter(QObject *object, QEvent *event) override;
    /// The keys of the menus, which only windows with menus have by themselves.
    bool actOnKeyInFullScreen(const QKeyEvent &key);
    QSize sizeForView(const kelo::Size &size) const;
    void applyMaterials();
    /// Stores what the document has not reported yet; where that fails the user is asked. False to
    /// go on working.
    bool mayClose();
    bool mayCloseFile();
    bool mayCloseStore();
    void preferencesChanged();
    PageSettings pageSettings() const;
    void tell(const QString &sentence, const QString &advice = {});

    /// @name Menus
    /// @{
    void makeMenus();
    void makeFileMenu();
    void makeEditMenu();
    void makeTreatmentMenu();
    void makeViewMenu();
    void makePanelsMenu();
    void makeHelpMenu();
    void makeStandardViewRows(QMenu &menu);
    void makeScenePartRows(QMenu &menu);
    void makeToothNumberRows(QMenu &menu);
    void makeThemeRows(QMenu &menu);
    void fillRecentFiles(QMenu &menu);
    /// @}

    /// @name Commands
    /// @{
    void openFile();
    void importFile();
    void choosePatient();
    bool saveTreatment();
    void exportTreatment();
    void savePicture();
    void preview(const PrintRequest &request);
    void savePage();
    void showChanges();
    void showDate(const QDate &date);
    /// A window that was left open overnight.
    void goOnToPresentDay();
    /// To the note that many steps later, or earlier for a negative number.
    void stepDate(int steps);
    void approve(bool isApproved);
    void noteWasChosen();
    /// The note that is shown may be open for changes now, or no longer.
    void noteMayHaveClosed();
    void askForName(const std::shared_ptr<kelo::ElasticModel> &elastic);
    /// Whether the user wants a second band where this one's members have a band already.
    bool mayPlaceAgain(const kelo::ElasticsConfigType &configuration);
    void nameElastic(const std::shared_ptr<kelo::ElasticModel> &elastic, const QString &name);
    void showMaterials();
    void showToothChart();
    /// Gives a panel the keys of the window's menus, and keys to close it by.
    void shareKeys(kelo::WindowController &panel);
    void showKeys();
    void toggleFullScreen();
    /// @}

    TreatmentDocument &document_;
    QMainWindow &window_;
    std::shared_ptr<kelo::DXOpenGL> view_;
    OpenTreatments &all_;
    std::shared_ptr<OpenedTreatment> treatment_;
    kelo::DXOpenGLDelegate delegate_;
    SceneMaterials materials_;
    UndoHistory history_;
    PageSettings page_; ///< as the program was started with them
    QToolBar *dateBar_; ///< around the dates
    DateBar *dates_;
    QList<QAction *> inFrontOfWindow_; ///< what they show is in front of the window
    QAction *closeWindow_ = nullptr;
    QAction *earlier_ = nullptr;
    QAction *later_ = nullptr;
    QAction *approved_ = nullptr;
    bool mayEdit_ = false;
    DocumentChanges changes_; ///< last: it calls for the others
};

} // namespace viewer
