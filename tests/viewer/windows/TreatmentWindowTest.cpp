// Treatments in their windows, on a display.

#include "tests/support/Compositor.h"
#include "tests/viewer/support/TreatmentWindowFixture.h"
#include "viewer/settings/Preferences.h"
#include "viewer/windows/DateBar.h"

#include <QAbstractButton>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

using namespace viewer;
using namespace viewer::test;

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

TEST_F(TreatmentWindows, aWindowThatWasLeftOpenOvernightGoesOnWithTheNewDaysNote)
{
    TreatmentDocument &document = open();
    OpenedTreatment &treatment = *document.treatment();
    const QDate yesterday = treatment.today();
    treatment.document()->toggleVisibilityOfBracket("8");
    EXPECT_FALSE(treatment.todayIsOver());
    treatment.store()->setClock([yesterday] {
        return yesterday.addDays(1).startOfDay().addSecs(8 * 3600).toMSecsSinceEpoch();
    });
    EXPECT_TRUE(treatment.todayIsOver());
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(&windowOf(document), &activation);
    ASSERT_TRUE(waitUntil([&] { return treatment.today() == yesterday.addDays(1); }));
    EXPECT_EQ(treatment.session().date(), yesterday.addDays(1));
    EXPECT_TRUE(document.mainWindow()->view().displayedDateIsToday());
    EXPECT_FALSE(bracketIsPlaced(document, "8")) << "it begins as the last note stands";
    EXPECT_EQ(windowOf(document).findChild<DateBar *>()->dates(),
              (std::vector<QDate>{yesterday, yesterday.addDays(1)}));
    EXPECT_FALSE(treatment.todayIsOver());
    // The change of the day before is in its note, not in the new one's.
    EXPECT_EQ(treatment.changes().value().back().noteDate, yesterday);
}

TEST_F(TreatmentWindows, theDayOfAFileCountsInScriptsAndTheDayOfTheUserInAWindow)
{
    commandLine.file = writeFile("other.json");
    commandLine.database.clear();
    {
        const TreatmentDocument &document = open();
        EXPECT_EQ(document.treatment()->today(), QDate::currentDate());
        EXPECT_EQ(document.treatment()->session().date(), QDate::currentDate());
        EXPECT_TRUE(document.mainWindow()->view().displayedDateIsToday());
        EXPECT_EQ(windowOf(document).findChild<DateBar *>()->dates(),
                  (std::vector<QDate>{QDate(2020, 3, 4), QDate::currentDate()}));
        EXPECT_TRUE(bracketIsPlaced(document, "8")) << "it begins as the last note stands";
        EXPECT_FALSE(document.treatment()->hasUnsavedChanges());
        EXPECT_TRUE(document.mainWindow()->close());
        waitForClosed();
    }
    commandLine.script = folder.filePath("some.script"); // read by the program, not by its windows
    EXPECT_EQ(open().treatment()->today(), QDate(2020, 3, 4));
}

TEST_F(TreatmentWindows, aConfigurationThatIsPlacedAlreadyIsAskedForBeforeItIsStacked)
{
    TreatmentDocument &document = open();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    const auto &elastics = document.treatment()->document()->elasticModels();
    const auto before = elastics.size();
    kelo::MenuItem row;
    row.representedObject = elastics.front()->elasticsConfigType(); // of the sample's Class II band
    answerNextBox(QMessageBox::No);
    view.placeSelectedElasticsConfigType(row);
    EXPECT_EQ(said,
              "An elastic runs over 6 \u2013 30 already. Place Class II right on top of it as "
              "a second one?");
    EXPECT_EQ(elastics.size(), before);
    answerNextBox(QMessageBox::Yes);
    view.placeSelectedElasticsConfigType(row);
    EXPECT_EQ(elastics.size(), before + 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, theFirstWindowIsNoLargerThanTheScreenHasRoomFor)
{
    commandLine.isSizeGiven = false;
    commandLine.size = {4000.0, 3000.0};
    const TreatmentDocument &document = open();
    const QRect screen = windowOf(document).screen()->availableGeometry();
    // The window manager reports the frame.
    ASSERT_TRUE(waitUntil([&] {
        return windowOf(document).frameGeometry().top() != windowOf(document).geometry().top();
    }));
    const QSize frame = windowOf(document).frameGeometry().size();
    EXPECT_LE(frame.width(), screen.width());
    EXPECT_LE(frame.height(), screen.height());
    EXPECT_GE(frame.width(), screen.width() - 16) << "but no smaller than it must be";
    EXPECT_GE(frame.height(), screen.height() - 40);
}

TEST_F(TreatmentWindows, aSizeThatIsAskedForIsMadeOnASmallerScreenToo)
{
    commandLine.size = {1500.0, 1200.0};
    const TreatmentDocument &document = open();
    EXPECT_EQ(windowOf(document).width(), 1500);
    EXPECT_GE(windowOf(document).height(), 1200);
}

TEST_F(TreatmentWindows, theWindowOpensOnTheJawsFromSideToSideHoweverNarrowItIs)
{
    commandLine.size = {300.0, 600.0};
    kelo::DXOpenGL &view = open().mainWindow()->view();
    const auto scene = view.extents();
    ASSERT_TRUE(waitUntil([&] {
        const kelo::WindowLimits shown = view.windowLimits();
        return shown.xMin < scene->xMin() && shown.xMax > scene->xMax();
    }));
    view.setZoomData(kelo::DXOpenGL::zoomDataWithXMin_xMax_yMin_yMax(-1.0, 1.0, -1.0, 1.0));
    action(*all->documents().front(), "Zoom to Fit")->trigger();
    EXPECT_LT(view.windowLimits().xMin, scene->xMin());
    EXPECT_GT(view.windowLimits().xMax, scene->xMax());
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, earlierAndLaterNotesCanBeGoneToWhereThereAreSome)
{
    const TreatmentDocument &sample = open(); // today's note only
    EXPECT_FALSE(action(sample, "Earlier Note")->isEnabled());
    EXPECT_FALSE(action(sample, "Later Note")->isEnabled());
    all->openFile(writeFile("other.json"), nullptr); // a note of an earlier day, and today's
    const TreatmentDocument &other = *all->documents().back();
    EXPECT_TRUE(action(other, "Earlier Note")->isEnabled());
    EXPECT_FALSE(action(other, "Later Note")->isEnabled());
    action(other, "Earlier Note")->trigger();
    EXPECT_FALSE(action(other, "Earlier Note")->isEnabled());
    EXPECT_TRUE(action(other, "Later Note")->isEnabled());
}

TEST_F(TreatmentWindows, aClickInFullScreenIsNoKeyOfTheMenus)
{
    TreatmentDocument &document = open();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    view.enterFullScreenMode();
    ASSERT_TRUE(waitUntil([&view] { return view.isInFullScreenMode() && view.isExposed(); }));
    QWindow *const window = view.window();
    const auto send = [window](QEvent::Type type, Qt::MouseButtons held) {
        // In the corner, where there is only background.
        QMouseEvent event(type, QPointF(2, 2), window->mapToGlobal(QPointF(2, 2)), Qt::LeftButton,
                          held, Qt::ControlModifier);
        QCoreApplication::sendEvent(window, &event);
    };
    view.setMouseMode(kelo::DXOpenGL::rotateMode);
    send(QEvent::MouseButtonPress, Qt::LeftButton);
    EXPECT_TRUE(view.mouseIsDown());
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    EXPECT_FALSE(view.mouseIsDown());
    send(QEvent::MouseButtonDblClick, Qt::LeftButton); // comes beside a second press
    ASSERT_TRUE(
        waitUntil([&] { return action(document, "Undo Remove bracket from 8") != nullptr; }));

    // Whatever a press holds where a key press has its key, it is ignored: here the key that
    // would take the step back.
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}) {
        QKeyEvent press(type, Qt::Key_Z, Qt::ControlModifier);
        QObject &filter = *document.mainWindow();
        EXPECT_FALSE(filter.eventFilter(window, &press));
    }
    EXPECT_TRUE(displayIsSettled());
    EXPECT_FALSE(bracketIsPlaced(document, "8"));
    EXPECT_TRUE(view.isInFullScreenMode());
    view.exitFullScreenModeWithOptions();
    ASSERT_TRUE(waitUntil([&view] { return view.isExposed(); }));
    view.openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, aWindowWhereNothingMovesHasNoAnimationTicks)
{
    TreatmentDocument &document = open();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    view.setTargetMouthOpenAngle_duration(20.0f, 0.05);
    EXPECT_TRUE(view.animationTimerIsRunning());
    EXPECT_TRUE(waitUntil([&view] { return !view.animationTimerIsRunning(); }));
    EXPECT_EQ(view.mouthOpenAngle(), 20.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, theMenusKeysWorkInFullScreenToo)
{
    TreatmentDocument &document = open();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    const auto isFull = [&view] { return view.isInFullScreenMode() && view.isExposed(); };
    kelo::test::xdotool({"key", "F11"});
    ASSERT_TRUE(waitUntil(isFull));
    EXPECT_TRUE(displayIsSettled());
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    ASSERT_TRUE(
        waitUntil([&] { return action(document, "Undo Remove bracket from 8") != nullptr; }));
    kelo::test::xdotool({"key", "ctrl+z"});
    EXPECT_TRUE(waitUntil([&] { return bracketIsPlaced(document, "8"); }));
    EXPECT_TRUE(view.isInFullScreenMode());
    kelo::test::xdotool({"key", "F2"}); // a panel would be behind the view
    EXPECT_TRUE(waitUntil([&] {
        const auto *chart = document.existingWindowControllerForWindowNibName("ToothChart");
        return chart && !view.isInFullScreenMode();
    }));
    ASSERT_TRUE(waitUntil([] { return QApplication::activeWindow() != nullptr; }));
    EXPECT_TRUE(displayIsSettled()); // the window or its panel, as the window manager likes
    kelo::test::xdotool({"key", "F11"});
    ASSERT_TRUE(waitUntil(isFull));
    EXPECT_TRUE(displayIsSettled());
    kelo::test::xdotool({"key", "F11"});
    EXPECT_TRUE(waitUntil([&view] { return !view.isInFullScreenMode(); }));
    view.openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
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
    QAction *undo = action(document, "Undo Remove bracket from 8");
    ASSERT_TRUE(waitUntil([&] { return undo = action(document, "Undo Remove bracket from 8"); }));
    undo->trigger();
    EXPECT_TRUE(bracketIsPlaced(document, "8"));
    QAction *redo = action(document, "Redo Remove bracket from 8");
    ASSERT_NE(redo, nullptr);
    redo->trigger();
    EXPECT_FALSE(bracketIsPlaced(document, "8"));
}

TEST_F(TreatmentWindows, aBracketThatLosesItsColourIsLikeTheOthersAtOnce)
{
    TreatmentDocument &document = open();
    kelo::DXDocumentModel &model = *document.treatment()->document();
    const auto materialOf = [&model](const char *key) {
        return model.bracketModels().at(key)->material();
    };
    model.bracket_setColorWithBracketColorTypeID("8", 5);
    QCoreApplication::sendPostedEvents();
    ASSERT_NE(materialOf("8"), materialOf("9"));
    model.bracket_setColorWithBracketColorTypeID("8", std::nullopt);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(materialOf("8"), materialOf("9"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(TreatmentWindows, whatAMenuUndoesAndRedoesIsSeenUnderACompositor)
{
    const kelo::test::Compositor compositor;
    ASSERT_TRUE(compositor.isRunning());
    TreatmentDocument &document = open();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    const auto &model = document.treatment()->document();
    const auto isUpToDate = [&view] {
        return kelo::test::screenshotOf(*view.window()).convertToFormat(QImage::Format_RGB32) ==
               view.grabImage().convertToFormat(QImage::Format_RGB32);
    };
    ASSERT_TRUE(waitUntil([&] { return windowOf(document).isActiveWindow() && isUpToDate(); }));
    const QImage without = view.grabImage();
    model->placeElasticModel(std::make_shared<kelo::ElasticModel>(
        nullptr, model->availableElasticsSizeTypes().begin()->second,
        std::vector<std::string>{"6", "27"}));
    EXPECT_TRUE(waitUntil(isUpToDate)) << "placed";
    const QImage with = view.grabImage();
    ASSERT_NE(with, without);
    QMenu *edit = action(document, "Edit")->menu();
    ASSERT_TRUE(waitUntil([&] { return edit->actions().at(0)->text().contains("Place elastic"); }));

    // The menu lies over the view: what is below it gets no event when it closes.
    const auto chooseRow = [&](const char *mnemonic) {
        kelo::test::xdotool({"key", "alt+e"});
        ASSERT_TRUE(waitUntil([&] { return edit->isVisible(); }));
        kelo::test::xdotool({"key", mnemonic});
        ASSERT_TRUE(waitUntil([&] { return !edit->isVisible(); }));
    };
    const std::size_t count = model->elasticModels().size();
    chooseRow("u");
    EXPECT_TRUE(waitUntil([&] { return model->elasticModels().size() == count - 1; }));
    EXPECT_TRUE(waitUntil(isUpToDate)) << "undone";
    EXPECT_EQ(view.grabImage(), without);
    chooseRow("r");
    EXPECT_TRUE(waitUntil([&] { return model->elasticModels().size() == count; }));
    EXPECT_TRUE(waitUntil(isUpToDate)) << "redone";
    EXPECT_EQ(view.grabImage(), with);
    EXPECT_NO_GL_ERROR();
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

TEST_F(TreatmentWindows, aHundredMovesToAnotherWindowKeepThePicture)
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
        letPass(2); // each time another part of the change has come
        view.exitFullScreenModeWithOptions();
        ASSERT_TRUE(waitUntil([&] {
            return view.isExposed() && view.bounds().size.width == 400.0;
        })) << i;
    }
    EXPECT_EQ(view.grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

} // namespace
