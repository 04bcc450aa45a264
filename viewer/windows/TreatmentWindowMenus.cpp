// The menus of a treatment's window.

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/settings/Preferences.h"
#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/view/StandardView.h"
#include "viewer/view/ZoomToFit.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QImage>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

#include <utility>

namespace viewer {

void TreatmentWindow::makeMenus()
{
    makeFileMenu();
    makeEditMenu();
    makeTreatmentMenu();
    makeViewMenu();
    makePanelsMenu();
    makeHelpMenu();
}

void TreatmentWindow::makeFileMenu()
{
    QMenu *file = window_.menuBar()->addMenu(tr("&File"));
    file->addAction(tr("Pa&tients…"), this, &TreatmentWindow::choosePatient)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    file->addAction(tr("&Open File…"), this, &TreatmentWindow::openFile)
        ->setShortcut(QKeySequence::Open);
    QMenu *recent = file->addMenu(tr("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, [this, recent] { fillRecentFiles(*recent); });
    file->addAction(tr("&Import File…"), this, &TreatmentWindow::importFile);
    file->addSeparator();
    QAction *save = file->addAction(tr("&Save Treatment"), this, &TreatmentWindow::saveTreatment);
    save->setShortcut(QKeySequence::Save);
    save->setEnabled(!treatment_->file().isEmpty());
    file->addAction(tr("&Export Treatment…"), this, &TreatmentWindow::exportTreatment);
    file->addAction(tr("Save Pict&ure…"), this, &TreatmentWindow::savePicture);
    file->addSeparator();
    file->addAction(tr("&Print…"), this, [this] { view_->submitPrintRequest(); })
        ->setShortcut(QKeySequence::Print);
    file->addAction(tr("Save Page as P&DF…"), this, &TreatmentWindow::savePage);
    file->addSeparator();
    closeWindow_ = file->addAction(tr("&Close Window"), this, &TreatmentWindow::close);
    closeWindow_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    file->addAction(tr("&Quit"), this, [this] { all_.closeAll(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void TreatmentWindow::fillRecentFiles(QMenu &menu)
{
    menu.clear();
    const QStringList files = Preferences::preferences().recentFiles();
    for (const QString &path : files) {
        QAction *action = menu.addAction(
            QFileInfo(path).fileName().replace(QLatin1Char('&'), QStringLiteral("&&")), this,
            [this, path] { all_.openFile(path, &window_); });
        action->setToolTip(path);
    }
    menu.setToolTipsVisible(true);
    menu.addSeparator();
    QAction *clear = menu.addAction(tr("&Clear List"), this,
                                    [] { Preferences::preferences().clearRecentFiles(); });
    clear->setEnabled(!files.isEmpty());
}

void TreatmentWindow::makeEditMenu()
{
    QMenu *edit = window_.menuBar()->addMenu(tr("&Edit"));
    QAction *undo = history_.offered().createUndoAction(this, tr("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    edit->addAction(undo);
    QAction *redo = history_.offered().createRedoAction(this, tr("&Redo"));
    redo->setShortcut(QKeySequence::Redo);
    edit->addAction(redo);
    edit->addSeparator();
    QAction *copy = edit->addAction(tr("&Copy Picture"), this, [this] {
        QGuiApplication::clipboard()->setImage(view_->grabImage());
    });
    copy->setShortcut(QKeySequence::Copy);
}

void TreatmentWindow::makeTreatmentMenu()
{
    QMenu *treatment = window_.menuBar()->addMenu(tr("&Treatment"));
    earlier_ = treatment->addAction(tr("&Earlier Note"), this, [this] { stepDate(-1); });
    earlier_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp));
    later_ = treatment->addAction(tr("&Later Note"), this, [this] { stepDate(1); });
    later_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown));
    treatment->addAction(tr("&Today's Note"), this, [this] { showDate(treatment_->today()); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
    treatment->addSeparator();
    approved_ = treatment->addAction(tr("&Approved"));
    approved_->setCheckable(true);
    connect(approved_, &QAction::triggered, this, &TreatmentWindow::approve);
    treatment->addSeparator();
    treatment->addAction(tr("C&hanges…"), this, &TreatmentWindow::showChanges)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
}

void TreatmentWindow::makeViewMenu()
{
    QMenu *viewMenu = window_.menuBar()->addMenu(tr("&View"));
    viewMenu->addAction(tr("&Zoom to Fit"), this, [this] { zoomToFit(*view_); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
    viewMenu->addAction(tr("&Full Screen"), this, &TreatmentWindow::toggleFullScreen)
        ->setShortcut(QKeySequence(Qt::Key_F11));
    viewMenu->addSeparator();
    makeStandardViewRows(*viewMenu);
    viewMenu->addSeparator();
    makeScenePartRows(*viewMenu->addMenu(tr("Sho&w")));
    makeToothNumberRows(*viewMenu->addMenu(tr("&Tooth Numbers")));
    makeThemeRows(*viewMenu->addMenu(tr("&Colours of Windows")));
}

void TreatmentWindow::makeStandardViewRows(QMenu &menu)
{
    int key = Qt::Key_1;
    for (const StandardView standardView : standardViews) {
        QAction *action = menu.addAction(titleOfStandardView(standardView), this,
                                         [=, this] { showStandardView(*view_, standardView); });
        action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key++)));
    }
}

void TreatmentWindow::makeScenePartRows(QMenu &menu)
{
    const std::pair<kelo::ScenePart, QString> titles[] = {
        {kelo::ScenePart::UpperArch, tr("&Upper Arch")},
        {kelo::ScenePart::LowerArch, tr("&Lower Arch")},
        {kelo::ScenePart::Gums, tr("&Gums")},
        {kelo::ScenePart::Brackets, tr("&Brackets")},
        {kelo::ScenePart::Buttons, tr("Lingual Bu&ttons")},
        {kelo::ScenePart::Elastics, tr("&Elastics")},
    };
    for (const auto &[part, title] : titles) {
        QAction *action = menu.addAction(title);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this,
                [this, part = part](bool shows) { view_->setShowsScenePart(part, shows); });
        // Standard views show and leave out arches too.
        connect(&menu, &QMenu::aboutToShow, action,
                [this, action, part = part] { action->setChecked(view_->showsScenePart(part)); });
    }
}

void TreatmentWindow::makeToothNumberRows(QMenu &menu)
{
    Preferences &preferences = Preferences::preferences();
    QAction *shown = menu.addAction(tr("&Beside the Teeth"));
    shown->setCheckable(true);
    shown->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    connect(shown, &QAction::triggered, &preferences, &Preferences::setShowsToothNumbers);
    menu.addSeparator();
    auto *group = new QActionGroup(&menu);
    const std::pair<ToothNotation, QString> titles[] = {
        {ToothNotation::Universal, tr("&Universal")},
        {ToothNotation::FDI, tr("&FDI")},
        {ToothNotation::Palmer, tr("&Palmer")},
    };
    for (const auto &[notation, title] : titles) {
        QAction *action = menu.addAction(title, &preferences, [&preferences, notation = notation] {
            preferences.setNotation(notation);
        });
        action->setCheckable(true);
        group->addAction(action);
        connect(&menu, &QMenu::aboutToShow, action, [action, &preferences, notation = notation] {
            action->setChecked(notation == preferences.notation());
        });
    }
    const auto check = [shown, &preferences] {
        shown->setChecked(preferences.showsToothNumbers());
    };
    check();
    connect(&preferences, &Preferences::changed, shown, check);
}

void TreatmentWindow::makeThemeRows(QMenu &menu)
{
    Preferences &preferences = Preferences::preferences();
    auto *group = new QActionGroup(&menu);
    const std::pair<Theme, QString> titles[] = {
        {Theme::AsDesktop, tr("As the &Desktop Has Them")},
        {Theme::Light, tr("&Light")},
        {Theme::Dark, tr("Da&rk")},
    };
    for (const auto &[theme, title] : titles) {
        QAction *action = menu.addAction(
            title, &preferences, [&preferences, theme = theme] { preferences.setTheme(theme); });
        action->setCheckable(true);
        group->addAction(action);
        connect(&menu, &QMenu::aboutToShow, action, [action, &preferences, theme = theme] {
            action->setChecked(theme == preferences.theme());
        });
    }
}

void TreatmentWindow::makePanelsMenu()
{
    QMenu *panels = window_.menuBar()->addMenu(tr("&Panels"));
    QAction *chart = panels->addAction(tr("&Tooth Chart"), this, &TreatmentWindow::showToothChart);
    chart->setShortcut(QKeySequence(Qt::Key_F2));
    QAction *materials = panels->addAction(tr("&Materials"), this, &TreatmentWindow::showMaterials);
    materials->setShortcut(QKeySequence(Qt::Key_F3));
    inFrontOfWindow_ = {chart, materials, closeWindow_};
    panels->addSeparator();
    panels->addAction(tr("&Close All Panels"), this, [] {
        kelo::NotificationCenter::defaultCenter().postNotification(
            {kelo::closeAllOptionPanelsNotification});
    });
}

void TreatmentWindow::makeHelpMenu()
{
    QMenu *help = window_.menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&Keys and Mouse…"), this, &TreatmentWindow::showKeys)
        ->setShortcut(QKeySequence::HelpContents);
    help->addAction(tr("&About"), this, [this] {
        QMessageBox::about(&window_, tr("Treatment viewer"),
                           tr("Treatment viewer %1\nOne patient's orthodontic treatment as an "
                              "interactive scene.")
                               .arg(QApplication::applicationVersion()));
    });
}

} // namespace viewer
