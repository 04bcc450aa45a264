// Treatments in their windows, on a display.

#include "viewer/TreatmentWindow.h"

#include "tests/support/GLTest.h"
#include "tests/support/WindowTest.h"
#include "tests/viewer/PreferencesFixture.h"
#include "viewer/DateBar.h"
#include "viewer/InterfaceFiles.h"
#include "viewer/OpenTreatments.h"
#include "viewer/OpenedTreatment.h"
#include "viewer/Preferences.h"
#include "viewer/ToothChart.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

using namespace viewer;
using kelo::test::letPass;
using kelo::test::waitUntil;

class TreatmentWindows : public testing::Test
{
protected:
    TreatmentWindows()
    {
        kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Window);
        addViewerInterfaceFiles();
        commandLine.database = folder.filePath("treatments.sqlite");
        commandLine.size = {400.0, 300.0};
        commandLine.isSizeGiven = true;
    }
    ~TreatmentWindows() override
    {
        all.reset();
        kelo::removeInterfaceFileFolders();
        kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Automatic);
    }

    TreatmentDocument &open()
    {
        all = std::make_unique<OpenTreatments>(commandLine);
        TreatmentDocument &document = all->openFirst();
        waitUntil([&] { return document.mainWindow()->view().isExposed(); });
        return document;
    }
    static QMainWindow &windowOf(const TreatmentDocument &document)
    {
        return *qobject_cast<QMainWindow *>(document.windowControllers().front()->window());
    }
    static QAction *action(const TreatmentDocument &document, const QString &text)
    {
        for (QAction *one : windowOf(document).findChildren<QAction *>()) {
            if (QString(one->text()).remove('&') == text) return one;
        }
        // Rows of the window's menus are children of what made them.
        for (QAction *menu : windowOf(document).menuBar()->actions()) {
            for (QAction *one : menu->menu()->actions()) {
                if (QString(one->text()).remove('&') == text) return one;
                if (!one->menu()) continue;
                for (QAction *inner : one->menu()->actions()) {
                    if (QString(inner->text()).remove('&') == text) return inner;
                }
            }
        }
        return nullptr;
    }
    static bool bracketIsPlaced(const TreatmentDocument &document, const char *key)
    {
        return document.treatment()->document()->bracketVisibilities().at(key);
    }
    /// A treatment file with one coloured bracket.
    QString writeFile(const QString &name)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"format": "treatment", "version": 1,
            "patient": {"name": "Other Patient", "id": "O-2"}, "currentDate": "2026-03-04",
            "notes": [{"date": "2026-03-04", "bracketVisibilities": {"8": true},
                       "bracketColorTypeIDs": {"8": 5}}]})");
        return file.fileName();
    }
    /// Presses a button of the next message box, and remembers what the box said.
    void answerNextBox(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, &receiver, [this, button] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box) {
                answerNextBox(button);
                return;
            }
            said = box->text();
            box->button(button)->click();
        });
    }
    void waitForClosed()
    {
        EXPECT_TRUE(waitUntil([this] { return all->documents().empty(); }));
    }

    viewer::test::PreferencesOfTheTest settings;
    QTemporaryDir folder;
    CommandLine commandLine;
    std::unique_ptr<OpenTreatments> all;
    QObject receiver;
    QString said;
};

TEST_F(TreatmentWindows, theMainWindowIsSolidViewWithMenusAndTheBarOfDates)
{
    const TreatmentDocument &document = open();
    EXPECT_EQ(document.windowControllers().front()->windowNibName(), "SolidView");
    EXPECT_EQ(windowOf(document).windowTitle(), "Sample Patient (S-1) - Treatment viewer");
    QStringList menus;
    for (const QAction *menu : windowOf(document).menuBar()->actions())
        menus << QString(menu->text()).remove('&');
    EXPECT_EQ(menus, QStringList({"File", "Edit", "Treatment", "View", "Panels", "Help"}));
    const auto *tabs = windowOf(document).findChild<DateBar *>()->findChild<QTabBar *>();
    EXPECT_TRUE(tabs->isVisible());
    EXPECT_GT(tabs->height(), 0);
    EXPECT_EQ(tabs->tabText(0), "Today");
    EXPECT_EQ(document.mainWindow()->view().bounds().size, (kelo::Size{400.0, 300.0}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, twoTreatmentsInTwoWindowsHaveStateOfTheirOwn)
{
    TreatmentDocument &first = open();
    all->openFile(writeFile("other.json"), nullptr);
    ASSERT_EQ(all->documents().size(), 2u);
    TreatmentDocument &second = *all->documents()[1];
    ASSERT_TRUE(waitUntil([&] { return second.mainWindow()->view().isExposed(); }));
    EXPECT_EQ(windowOf(second).windowTitle(), "Other Patient (O-2) - Treatment viewer");
    EXPECT_TRUE(bracketIsPlaced(first, "9"));
    EXPECT_FALSE(bracketIsPlaced(second, "9"));

    first.treatment()->document()->toggleVisibilityOfBracket("8");
    EXPECT_FALSE(bracketIsPlaced(first, "8"));
    EXPECT_TRUE(bracketIsPlaced(second, "8"));
    first.mainWindow()->view().setMouthOpenAngle(30.0f);
    first.mainWindow()->view().setMouseMode(kelo::DXOpenGL::colorMode);
    EXPECT_EQ(second.mainWindow()->view().mouthOpenAngle(), 0.0f);
    EXPECT_EQ(second.mainWindow()->view().mouseMode(), kelo::DXOpenGL::elasticsMode);
    for (TreatmentDocument *document : {&first, &second})
        EXPECT_TRUE(document->treatment()->document()->checkSanity().empty());

    // One closes, the other goes on.
    answerNextBox(QMessageBox::Discard);
    EXPECT_TRUE(first.mainWindow()->close());
    EXPECT_TRUE(waitUntil([&] { return all->documents().size() == 1; }));
    second.mainWindow()->view().display();
    EXPECT_TRUE(bracketIsPlaced(second, "8"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, eachWindowsPicturesAreThoseThatItHasAlone)
{
    TreatmentDocument &first = open();
    const QImage alone = first.mainWindow()->view().grabImage();
    all->openFile(writeFile("other.json"), nullptr);
    TreatmentDocument &second = *all->documents()[1];
    ASSERT_TRUE(waitUntil([&] { return second.mainWindow()->view().isExposed(); }));
    const QImage other = second.mainWindow()->view().grabImage();
    EXPECT_NE(other, alone);
    EXPECT_EQ(first.mainWindow()->view().grabImage(), alone);
    EXPECT_EQ(second.mainWindow()->view().grabImage(), other);
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, aTreatmentThatIsOpenIsNotOpenedTwice)
{
    open();
    const QString path = writeFile("other.json");
    all->openFile(path, nullptr);
    all->openFile(path, nullptr);
    EXPECT_EQ(all->documents().size(), 2u);
    all->openStored(all->documents()[0]->treatment()->treatmentID(), nullptr);
    EXPECT_EQ(all->documents().size(), 2u);
    EXPECT_EQ(Preferences::preferences().recentFiles(), QStringList(path));
}

TEST_F(TreatmentWindows, aTreatmentThatIsOpenedAgainComesToTheFrontWithoutItsClosedPanels)
{
    TreatmentDocument &document = open();
    action(document, "Tooth Chart")->trigger();
    action(document, "Close All Panels")->trigger();
    auto *panel = document.existingWindowControllerForWindowNibName("ToothChart");
    windowOf(document).showMinimized();
    all->openStored(document.treatment()->treatmentID(), nullptr);
    EXPECT_TRUE(windowOf(document).isVisible());
    EXPECT_FALSE(windowOf(document).isMinimized());
    EXPECT_FALSE(panel->window()->isVisible());
}

TEST_F(TreatmentWindows, quittingClosesTheWindowsBehindOneThatAsks)
{
    open();
    all->openFile(writeFile("changed.json"), nullptr);
    all->openFile(writeFile("last.json"), nullptr);
    ASSERT_EQ(all->documents().size(), 3u);
    all->documents()[1]->treatment()->document()->toggleVisibilityOfBracket("8");
    answerNextBox(QMessageBox::Save);
    EXPECT_TRUE(all->closeAll());
    EXPECT_EQ(said, "Save the changes to " + folder.filePath("changed.json") + "?");
    waitForClosed();
}

TEST_F(TreatmentWindows, stepsAreKeptBackWhileTheNoteIsApproved)
{
    TreatmentDocument &document = open();
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    action(document, "Approved")->trigger();
    QAction *const undo = action(document, "Undo");
    ASSERT_NE(undo, nullptr);
    EXPECT_FALSE(undo->isEnabled());
    action(document, "Approved")->trigger();
    EXPECT_EQ(undo->text(), "&Undo Remove bracket from 8");
    EXPECT_TRUE(undo->isEnabled());
    undo->trigger();
    EXPECT_TRUE(bracketIsPlaced(document, "8"));
}

TEST_F(TreatmentWindows, aFileThatCannotBeReadIsToldAndNothingOpens)
{
    const TreatmentDocument &document = open();
    answerNextBox(QMessageBox::Ok);
    all->openFile(folder.filePath("missing.json"), &windowOf(document));
    EXPECT_EQ(said,
              folder.filePath("missing.json") + ": could not be read: No such file or directory");
    EXPECT_EQ(all->documents().size(), 1u);
    EXPECT_TRUE(Preferences::preferences().recentFiles().isEmpty());
}

TEST_F(TreatmentWindows, anImportedFileIsATreatmentOfTheDatabase)
{
    open();
    const QString path = writeFile("other.json");
    all->importFile(path, nullptr);
    ASSERT_EQ(all->documents().size(), 2u);
    EXPECT_EQ(all->documents()[1]->treatment()->file(), QString());
    EXPECT_EQ(all->documents()[1]->treatment()->patientName(), "Other Patient");
    const auto stored = all->store().value()->allTreatments();
    ASSERT_EQ(stored.value().size(), 2u);
    EXPECT_EQ(stored.value()[1].patient.patient.identifier, "O-2");
    EXPECT_EQ(stored.value()[1].noteCount, 1);
}

TEST_F(TreatmentWindows, whatWasDoneIsThereWhenTheProgramStartsAgain)
{
    {
        TreatmentDocument &document = open();
        document.treatment()->document()->toggleVisibilityOfBracket("8");
        document.treatment()->document()->bracket_setColorWithBracketColorTypeID("9", 5);
        EXPECT_TRUE(all->closeAll());
        waitForClosed();
    }
    const TreatmentDocument &again = open();
    EXPECT_FALSE(bracketIsPlaced(again, "8"));
    EXPECT_EQ(again.treatment()->document()->bracketColorsTypeIDs().at("9"), 5);
}

TEST_F(TreatmentWindows, closingWhileAnElasticIsStrungPlacesAndStoresIt)
{
    {
        TreatmentDocument &document = open();
        kelo::DXOpenGL &view = document.mainWindow()->view();
        const auto size =
            document.treatment()->document()->availableElasticsSizeTypes().begin()->second;
        kelo::MenuItem row;
        row.representedObject = size;
        view.setLastClickedToothName("7");
        view.startElasticColorMenuItemSelected(row);
        kelo::Event click;
        click.type = kelo::EventType::LeftMouseDown;
        click.clickCount = 1;
        const auto identifier =
            document.treatment()->document()->bracketModels().at("10")->uniqueID();
        const auto pixels = view.pickIdentifiers();
        const auto found = std::find(pixels.begin(), pixels.end(), identifier);
        ASSERT_NE(found, pixels.end());
        const auto index = static_cast<int>(found - pixels.begin());
        const int width = view.deviceSize().width;
        click.locationInWindow = {double(index % width), double(index / width) + 1.0};
        view.sendEvent(click);
        ASSERT_EQ(view.bracketSequence(), (std::vector<std::string>{"7", "10"}));
        EXPECT_TRUE(document.mainWindow()->close());
        waitForClosed();
    }
    const TreatmentDocument &again = open();
    EXPECT_EQ(again.treatment()->document()->elasticModels().back()->bracketSequence(),
              (std::vector<std::string>{"7", "10"}));
}

TEST_F(TreatmentWindows, unsavedChangesOfAFileAreAskedForAndCancelKeepsTheWindow)
{
    commandLine.file = writeFile("other.json");
    commandLine.database.clear();
    TreatmentDocument &document = open();
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    answerNextBox(QMessageBox::Cancel);
    EXPECT_FALSE(document.mainWindow()->close());
    EXPECT_EQ(said, "Save the changes to " + commandLine.file + "?");
    EXPECT_TRUE(windowOf(document).isVisible());
    answerNextBox(QMessageBox::Save);
    EXPECT_TRUE(document.mainWindow()->close());
    waitForClosed();
    EXPECT_FALSE(bracketIsPlaced(open(), "8"));
}

TEST_F(TreatmentWindows, unsavedChangesAreAskedForOnce)
{
    commandLine.file = writeFile("other.json");
    commandLine.database.clear();
    TreatmentDocument &document = open();
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    int count = 0;
    QTimer answering;
    QObject::connect(&answering, &QTimer::timeout, [&count] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box) return;
        ++count;
        box->button(QMessageBox::Discard)->click();
    });
    answering.start(20);
    EXPECT_TRUE(document.mainWindow()->close());
    EXPECT_EQ(count, 1);
    waitForClosed();
    EXPECT_TRUE(bracketIsPlaced(open(), "8")) << "the change was given up";
}

TEST_F(TreatmentWindows, everyChangeCanBeUndoneAndRedoneByTheMenu)
{
    TreatmentDocument &document = open();
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    // Steps are noticed after what the user does.
    kelo::test::xdotool({"key", "F15"});
    QAction *undo = action(document, "Undo Remove bracket from 8");
    ASSERT_TRUE(waitUntil([&] { return undo = action(document, "Undo Remove bracket from 8"); }));
    undo->trigger();
    EXPECT_TRUE(bracketIsPlaced(document, "8"));
    QAction *redo = action(document, "Redo Remove bracket from 8");
    ASSERT_NE(redo, nullptr);
    redo->trigger();
    EXPECT_FALSE(bracketIsPlaced(document, "8"));
}

TEST_F(TreatmentWindows, toothNumbersAppearInEveryWindowAtOnceInTheChosenNotation)
{
    TreatmentDocument &first = open();
    all->openFile(writeFile("other.json"), nullptr);
    TreatmentDocument &second = *all->documents()[1];
    EXPECT_TRUE(first.mainWindow()->view().toothLabels().empty());
    action(first, "Beside the Teeth")->trigger();
    for (TreatmentDocument *document : {&first, &second}) {
        EXPECT_EQ(document->mainWindow()->view().toothLabels().size(), 28u);
        EXPECT_EQ(document->mainWindow()->view().toothLabels().at("8"), "8");
    }
    action(second, "FDI")->trigger();
    EXPECT_EQ(first.mainWindow()->view().toothLabels().at("8"), "11");
    EXPECT_TRUE(action(second, "Beside the Teeth")->isChecked());
    action(second, "Beside the Teeth")->trigger();
    EXPECT_TRUE(first.mainWindow()->view().toothLabels().empty());
}

TEST_F(TreatmentWindows, theToothChartChangesTheTreatmentAndOnlyLooksAtApprovedOnes)
{
    TreatmentDocument &document = open();
    action(document, "Tooth Chart")->trigger();
    auto *panel = document.existingWindowControllerForWindowNibName("ToothChart");
    ASSERT_NE(panel, nullptr);
    auto *chart = panel->window()->findChild<ToothChart *>();
    QToolButton *bracket = nullptr;
    for (auto *button : chart->findChildren<QToolButton *>()) {
        if (button->accessibleName() == "Bracket 8: no colour") bracket = button;
    }
    ASSERT_NE(bracket, nullptr);
    EXPECT_TRUE(bracket->isChecked());
    bracket->click();
    EXPECT_FALSE(bracketIsPlaced(document, "8"));
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: not placed");
    action(document, "Approved")->trigger();
    EXPECT_FALSE(bracket->isEnabled());
    action(document, "Approved")->trigger();
    EXPECT_TRUE(bracket->isEnabled());
    // It closes with the other panels, and with its document.
    action(document, "Materials")->trigger();
    auto *materials = document.existingWindowControllerForWindowNibName("Materials");
    EXPECT_TRUE(materials->window()->isVisible());
    action(document, "Close All Panels")->trigger();
    EXPECT_FALSE(panel->window()->isVisible());
    EXPECT_FALSE(materials->window()->isVisible());
    action(document, "Tooth Chart")->trigger();
    EXPECT_EQ(document.existingWindowControllerForWindowNibName("ToothChart"), panel);
    EXPECT_TRUE(document.mainWindow()->close());
    EXPECT_FALSE(panel->window()->isVisible());
    waitForClosed();
}

TEST_F(TreatmentWindows, aPanelsFrameStandsFivePointsBesideTheWindowsAndSixBelowItsTop)
{
    TreatmentDocument &document = open();
    // The frame is told by the window manager.
    ASSERT_TRUE(waitUntil([&] {
        return windowOf(document).frameGeometry().top() != windowOf(document).geometry().top();
    }));
    windowOf(document).move(50, 80);
    ASSERT_TRUE(waitUntil([&] { return windowOf(document).pos() == QPoint(50, 80); }));
    for (int showing = 1; showing <= 2; ++showing) {
        action(document, "Materials")->trigger();
        QWidget *const panel =
            document.existingWindowControllerForWindowNibName("Materials")->window();
        ASSERT_TRUE(waitUntil([panel] { return panel->frameGeometry() != panel->geometry(); }));
        letPass(0.2);
        const QRect mother = windowOf(document).frameGeometry();
        EXPECT_EQ(panel->frameGeometry().topLeft(), mother.topRight() + QPoint(6, 6))
            << "showing " << showing;
        panel->close();
    }
}

TEST_F(TreatmentWindows, aPanelHasTheKeysOfTheWindowsMenusAndEscapeClosesIt)
{
    TreatmentDocument &document = open();
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    action(document, "Tooth Chart")->trigger();
    QWidget *const panel =
        document.existingWindowControllerForWindowNibName("ToothChart")->window();
    ASSERT_TRUE(waitUntil([panel] { return panel->isActiveWindow(); }));
    kelo::test::xdotool({"key", "F15"}); // steps are noticed after what the user does
    ASSERT_TRUE(
        waitUntil([&] { return action(document, "Undo Remove bracket from 8") != nullptr; }));
    kelo::test::xdotool({"key", "ctrl+z"});
    EXPECT_TRUE(waitUntil([&] { return bracketIsPlaced(document, "8"); }));
    kelo::test::xdotool({"key", "F3"});
    ASSERT_TRUE(waitUntil(
        [&] { return document.existingWindowControllerForWindowNibName("Materials") != nullptr; }));
    QWidget *const materials =
        document.existingWindowControllerForWindowNibName("Materials")->window();
    ASSERT_TRUE(waitUntil([&] { return materials->isActiveWindow(); }));
    kelo::test::xdotool({"key", "Escape"});
    EXPECT_TRUE(waitUntil([&] { return !materials->isVisible(); }));
    EXPECT_TRUE(panel->isVisible());
    panel->activateWindow();
    ASSERT_TRUE(waitUntil([panel] { return panel->isActiveWindow(); }));
    kelo::test::xdotool({"key", "ctrl+w"});
    EXPECT_TRUE(waitUntil([&] { return !panel->isVisible(); }));
    EXPECT_FALSE(document.isClosed());
}

TEST_F(TreatmentWindows, namingAnElasticIsAStepThatTheDatabaseAndTheLogFollow)
{
    TreatmentDocument &document = open();
    OpenedTreatment &treatment = *document.treatment();
    const auto &elastics = treatment.document()->elasticModels();
    const auto label = [&](std::size_t index) {
        const auto type = elastics[index]->elasticsConfigType();
        return type ? type->typeLabel : std::string("none");
    };
    const auto nameIt = [&](std::size_t index, const QString &name) {
        document.mainWindow()
            ->view()
            .delegate()
            ->launchElasticsConfigAssociationSheetWithElasticModel_namingAction(elastics[index], 0);
        auto *sheet = document.existingWindowControllerForWindowNibName("ElasticName");
        sheet->window()->findChild<QLineEdit *>()->setText(name);
        qobject_cast<QDialog *>(sheet->window())->accept();
    };
    const auto storedNames = [&] {
        std::vector<std::string> names;
        for (const auto &type : all->store().value()->namedElastics().value())
            names.push_back(type.typeLabel);
        return names;
    };
    using Names = std::vector<std::string>;
    const std::string before = label(0);
    const auto offered = treatment.document()->availableElasticsConfigTypes().size();

    nameIt(2, " My box "); // has no name in the sample
    nameIt(0, "Our Class II");
    EXPECT_EQ(storedNames(), (Names{"Our Class II", "My box"}));
    QAction *const undo = action(document, "Undo Rename elastic 6 \u2013 30, Our Class II");
    ASSERT_NE(undo, nullptr);
    undo->trigger();
    EXPECT_EQ(label(0), before);
    EXPECT_EQ(storedNames(), (Names{before, "My box"}));
    EXPECT_EQ(undo->text(), "&Undo Name elastic 13 \u2013 14 \u2013 19 \u2013 20, My box");
    undo->trigger();
    EXPECT_EQ(label(2), "none");
    EXPECT_EQ(treatment.document()->availableElasticsConfigTypes().size(), offered);
    EXPECT_EQ(storedNames(), Names{before});
    QAction *const redo =
        action(document, "Redo Name elastic 13 \u2013 14 \u2013 19 \u2013 20, My box");
    ASSERT_NE(redo, nullptr);
    redo->trigger();
    redo->trigger();
    EXPECT_EQ(label(0), "Our Class II");
    EXPECT_EQ(label(2), "My box");
    EXPECT_EQ(storedNames(), (Names{"Our Class II", "My box"}));

    const auto changes = treatment.changes().value();
    ASSERT_GE(changes.size(), 6u);
    const auto &last = changes.back();
    EXPECT_EQ(last.what, "elastic renamed");
    EXPECT_EQ(last.key, "6,30");
    EXPECT_EQ(last.oldValue, QString::fromStdString(before));
    EXPECT_EQ(last.newValue, "Our Class II");
    const auto count = [&changes](const QString &what) {
        return std::count_if(changes.begin(), changes.end(),
                             [&what](const StoredChange &change) { return change.what == what; });
    };
    EXPECT_EQ(count("elastic renamed"), 3);
    EXPECT_EQ(count("elastic named"), 3);
    EXPECT_EQ(count("elastic placed"), 0);
    EXPECT_EQ(count("elastic removed"), 0);
}

TEST_F(TreatmentWindows, aFurtherWindowStaysOnTheScreen)
{
    const QRect screen(0, 24, 1600, 976);
    EXPECT_EQ(placeBeside({100, 100, 800, 600}, screen, 1), QPoint(132, 132));
    EXPECT_EQ(placeBeside({100, 100, 800, 600}, screen, 2), QPoint(164, 164));
    EXPECT_EQ(placeBeside({700, 300, 800, 600}, screen, 2), QPoint(764, 364));
    EXPECT_EQ(placeBeside({700, 390, 800, 600}, screen, 1), QPoint(32, 56)) << "too low";
    EXPECT_EQ(placeBeside({790, 100, 800, 600}, screen, 1), QPoint(32, 56)) << "too far right";
    EXPECT_EQ(placeBeside({0, 24, 1600, 976}, screen, 1), QPoint(0, 24)) << "as large as it";
}

TEST_F(TreatmentWindows, anotherSolidViewWithoutAMainWindowIsRefusedInASentence)
{
    QFile file(folder.filePath("SolidView.ui"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<ui version=\"4.0\"><class>SolidView</class>"
               "<widget class=\"QWidget\" name=\"SolidView\"/></ui>");
    file.close();
    kelo::addInterfaceFileFolder(folder.path().toStdString());
    try {
        open();
        FAIL() << "it was opened";
    } catch (const kelo::InterfaceFileProblem &problem) {
        EXPECT_EQ(problem.what(),
                  folder.filePath("SolidView.ui").toStdString() +
                      ": the viewer needs a main window with a treatment view named \"view\"");
    }
}

TEST_F(TreatmentWindows, theViewMovesToAnotherWindowAndBackAHundredTimesWithTheSamePicture)
{
    TreatmentDocument &document = open();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    auto *widget = windowOf(document).findChild<kelo::TreatmentView *>();
    QLayout *const home = widget->parentWidget()->layout();
    QWidget other;
    QVBoxLayout away(&other);
    other.resize(500, 350);
    other.show();
    const QImage before = view.grabImage();
    for (int i = 0; i < 100; ++i) {
        away.addWidget(widget);
        ASSERT_TRUE(waitUntil([&] { return view.isExposed() && view.bounds().size.width > 400.0; }))
            << i;
        home->addWidget(widget);
        ASSERT_TRUE(waitUntil([&] {
            return view.isExposed() && view.bounds().size == kelo::Size{400.0, 300.0};
        })) << i;
    }
    EXPECT_EQ(view.grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, theViewGoesThroughFullScreenAHundredTimesWithTheSamePicture)
{
    TreatmentDocument &document = open();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    const QImage before = view.grabImage();
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(view.enterFullScreenMode()) << i;
        letPass(2);
        view.exitFullScreenModeWithOptions();
        ASSERT_TRUE(waitUntil([&] {
            return view.isExposed() && view.bounds().size.width == 400.0;
        })) << i;
    }
    EXPECT_EQ(view.grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

} // namespace
