// Documents and their windows.

#include "keloOpenGL/windows/DXDocument.h"
#include "keloOpenGL/windows/OptionPanelController.h"
#include "keloOpenGL/windows/SheetController.h"
#include "keloOpenGL/windows/SolidWindowController.h"
#include "platform/Assertion.h"
#include "platform/NotificationCenter.h"
#include "platform/NotificationQueue.h"
#include "platform/widgets/InterfaceFile.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/LogGuard.h"
#include "tests/support/WindowTest.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

namespace {

using namespace kelo;

/// A window in an interface file: a widget of the class with this name, and what stands in it.
QByteArray interfaceFile(const char *name, const char *content = "")
{
    return QByteArray("<?xml version=\"1.0\"?>\n<ui version=\"4.0\"><class>") + name +
           "</class><widget class=\"QWidget\" name=\"" + name + "\">" + content +
           "</widget></ui>\n";
}

class Windows : public kelo::test::ViewFixture
{
protected:
    Windows() { addInterfaceFileFolder(folder.path().toStdString()); }
    ~Windows() override { removeInterfaceFileFolders(); }

    void write(const char *name, const QByteArray &text)
    {
        QFile file(folder.filePath(QString(name) + ".ui"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    SolidWindowController &mainWindow()
    {
        if (document.windowControllers().empty()) document.showWindows();
        return dynamic_cast<SolidWindowController &>(*document.windowControllers().front());
    }

    QTemporaryDir folder;
    DXDocument document;
};

// DXDocument

TEST_F(Windows, aDocumentHasAModelAtOnceAndItsMainWindowWhenItIsAskedFor)
{
    ASSERT_NE(document.model(), nullptr);
    EXPECT_TRUE(document.windowControllers().empty());
    document.makeWindowControllers();
    ASSERT_EQ(document.windowControllers().size(), 1u);
    const WindowController &controller = *document.windowControllers()[0];
    EXPECT_EQ(controller.windowNibName(), "SolidView");
    EXPECT_NE(dynamic_cast<const SolidWindowController *>(&controller), nullptr);
    EXPECT_TRUE(controller.shouldCloseDocument());
    EXPECT_EQ(controller.document(), &document);
}

class TellingDocument : public DXDocument
{
public:
    std::vector<WindowController *> told;
    void windowControllerDidLoadNib(WindowController &controller) override
    {
        told.push_back(&controller);
    }
};

TEST_F(Windows, theDocumentIsToldOfItsMainWindow)
{
    TellingDocument telling;
    telling.makeWindowControllers();
    EXPECT_EQ(telling.told, std::vector{telling.windowControllers()[0].get()});
}

TEST_F(Windows, closingTheMainWindowClosesTheDocument)
{
    int closedCount = 0;
    QObject::connect(&document, &Document::closed, [&closedCount] { ++closedCount; });
    WindowController &controller = mainWindow();
    EXPECT_TRUE(controller.window()->isVisible());
    controller.window()->close();
    EXPECT_TRUE(document.isClosed());
    EXPECT_FALSE(controller.window()->isVisible());
    EXPECT_EQ(closedCount, 1);
    document.close();
    EXPECT_EQ(closedCount, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, closingTheDocumentClosesAllOfItsWindows)
{
    write("Panel", interfaceFile("Panel"));
    mainWindow();
    WindowController &panel = document.showUniqueWindowWithNibName("Panel");
    document.close();
    EXPECT_FALSE(panel.window()->isVisible());
    EXPECT_FALSE(mainWindow().window()->isVisible());
}

TEST_F(Windows, askingTwiceForTheSameInterfaceFileShowsOneWindow)
{
    write("Panel", interfaceFile("Panel"));
    WindowController &first = document.showUniqueWindowWithNibName("Panel");
    EXPECT_TRUE(first.window()->isVisible());
    first.window()->hide();
    WindowController &second = document.showUniqueWindowWithNibName_controllerClass(
        "Panel", controllerClass<OptionPanelController>());
    EXPECT_EQ(&first, &second);
    EXPECT_TRUE(first.window()->isVisible());
    EXPECT_TRUE(kelo::test::waitUntil([&first] { return first.window()->isActiveWindow(); }))
        << "the key window";
    EXPECT_EQ(document.windowControllers().size(), 1u);
    EXPECT_EQ(document.existingWindowControllerForWindowNibName("Panel"), &first);
    EXPECT_EQ(document.existingWindowControllerForWindowNibName("Other"), nullptr);
}

TEST_F(Windows, aWindowIsMadeOfTheClassThatIsAskedFor)
{
    write("Panel", interfaceFile("Panel"));
    WindowController &controller = document.showUniqueWindowWithNibName_controllerClass(
        "Panel", controllerClass<OptionPanelController>());
    EXPECT_NE(dynamic_cast<OptionPanelController *>(&controller), nullptr);
    EXPECT_EQ(controller.document(), &document);
}

TEST_F(Windows, theFirstControllerOfAnInterfaceFileIsFound)
{
    WindowController &first =
        document.addWindowController(std::make_unique<WindowController>("Panel"));
    document.addWindowController(std::make_unique<WindowController>("Panel"));
    EXPECT_EQ(document.existingWindowControllerForWindowNibName("Panel"), &first);
}

TEST_F(Windows, aDocumentIsNeverSavedThroughSaveAndSaveAs)
{
    EXPECT_FALSE(document.respondsToSelector("saveDocument:"));
    EXPECT_FALSE(document.respondsToSelector("saveDocumentAs:"));
    EXPECT_TRUE(document.respondsToSelector("closeDocument:"));
    EXPECT_FALSE(document.respondsToSelector("flyDocument:"));
    const Document plain;
    EXPECT_TRUE(plain.respondsToSelector("saveDocument:"));
}

TEST_F(Windows, everyMenuRowOfADocumentIsValid)
{
    MenuItem row;
    row.actionName = "saveDocument:";
    EXPECT_TRUE(document.validateMenuItem(row));
    row.actionName = "anything:";
    EXPECT_TRUE(document.validateMenuItem(row));
}

// Interface files

TEST_F(Windows, theHostsInterfaceFileComesBeforeTheLibrarys)
{
    EXPECT_TRUE(interfaceFilePath("SolidView").ends_with("/keloOpenGL/SolidView.ui"));
    write("SolidView", interfaceFile("Own"));
    EXPECT_EQ(interfaceFilePath("SolidView"), folder.filePath("SolidView.ui").toStdString());
    EXPECT_EQ(mainWindow().window()->objectName(), "Own");
    EXPECT_EQ(mainWindow().view(), nullptr) << "it holds no view";
}

TEST_F(Windows, anInterfaceFileThatIsNotThereIsNamed)
{
    try {
        document.showUniqueWindowWithNibName("Nowhere");
        FAIL() << "nothing was thrown";
    } catch (const InterfaceFileProblem &problem) {
        EXPECT_STREQ(problem.what(), "The interface file \"Nowhere\" was not found");
    }
}

TEST_F(Windows, anInterfaceFileThatCannotBeReadIsNamedWithTheReason)
{
    write("Broken", "<ui version=\"4.0\"><widget>");
    kelo::test::expectQtWarning("Designer: An error has occurred while reading the UI file at line "
                                "1, column 26: Premature end of document.");
    try {
        loadInterfaceFile("Broken");
        FAIL() << "nothing was thrown";
    } catch (const InterfaceFileProblem &problem) {
        const std::string text = problem.what();
        EXPECT_TRUE(text.starts_with(folder.filePath("Broken.ui").toStdString() + ": ")) << text;
        EXPECT_GT(text.size(), folder.filePath("Broken.ui").size() + 10u) << text;
    }
}

// The main window

TEST_F(Windows, theViewShowsTheDocumentsModelWhileTheWindowIsOpen)
{
    SolidWindowController &controller = mainWindow();
    ASSERT_NE(controller.view(), nullptr);
    EXPECT_EQ(controller.view()->documentModel(), document.model());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, theSceneIsFittedOnceByACoalescedNotification)
{
    SolidWindowController controller("SolidView");
    int posted = 0;
    const void *about = nullptr;
    const int observer = 0;
    NotificationCenter::defaultCenter().addObserver(
        &observer,
        [&](const Notification &notification) {
            ++posted;
            about = notification.object;
        },
        "zoomToFitNotification");
    controller.window();
    EXPECT_EQ(posted, 0) << "as soon as possible is not at once";
    NotificationQueue::defaultQueue().enqueueNotification(
        {"zoomToFitNotification", controller.view().get()}, PostingStyle::Soon);
    loop->advance(0.1);
    EXPECT_EQ(posted, 1);
    EXPECT_EQ(about, controller.view().get());
    NotificationCenter::defaultCenter().removeObserver(&observer);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, theNotificationFitsTheScene)
{
    const auto filled = kelo::test::boxDocument();
    SolidWindowController &controller = mainWindow();
    controller.view()->setDocumentModel(filled);
    const WindowLimits fitted = controller.view()->zoomBox();
    controller.view()->setZoomData(
        DXOpenGL::zoomDataWithXMin_xMax_yMin_yMax(-500.0, 500.0, -400.0, 400.0));
    NotificationCenter::defaultCenter().postNotificationName("zoomToFitNotification",
                                                             controller.view().get());
    EXPECT_EQ(controller.view()->zoomBox().xMin, fitted.xMin);
    EXPECT_EQ(controller.view()->zoomBox().yMax, fitted.yMax);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, aClosedMainWindowNoLongerHearsNotificationsNorFollowsTheDocument)
{
    SolidWindowController &controller = mainWindow();
    loop->advance(0.1);
    const auto view = controller.view();
    controller.window()->close();
    view->setZoomData(DXOpenGL::zoomDataWithXMin_xMax_yMin_yMax(-500.0, 500.0, -400.0, 400.0));
    NotificationCenter::defaultCenter().postNotificationName("zoomToFitNotification", view.get());
    EXPECT_EQ(view->zoomBox().xMin, -500.0);
    DXDocument another;
    controller.setDocument(&another);
    EXPECT_EQ(view->documentModel(), document.model()) << "the last one stays";
    controller.setDocument(&document);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, theBindingsEndBeforeTheWindowsClosingClosesTheDocument)
{
    SolidWindowController &controller = mainWindow();
    const auto view = controller.view();
    DXDocument another;
    bool wasTold = false;
    QObject::connect(&document, &Document::closed, [&] {
        wasTold = true;
        controller.setDocument(&another);
        EXPECT_EQ(view->documentModel(), document.model());
        controller.setDocument(&document);
    });
    controller.window()->close();
    EXPECT_TRUE(wasTold);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, theQueuedFittingLeavesThatOfAnotherViewInTheQueue)
{
    std::vector<const void *> about;
    const int observer = 0;
    const int anotherView = 0;
    NotificationCenter::defaultCenter().addObserver(
        &observer, [&](const Notification &fitting) { about.push_back(fitting.object); },
        "zoomToFitNotification");
    NotificationQueue::defaultQueue().enqueueNotification({"zoomToFitNotification", &anotherView},
                                                          PostingStyle::Soon);
    const SolidWindowController &controller = mainWindow();
    loop->advance(0.1);
    EXPECT_EQ(about, (std::vector<const void *>{&anotherView, controller.view().get()}));
    NotificationCenter::defaultCenter().removeObserver(&observer);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, aWindowThatWasMadeAnIconIsShownAgain)
{
    WindowController controller;
    controller.setWindow(std::make_unique<QWidget>());
    controller.showWindow();
    controller.window()->showMinimized();
    controller.showWindow();
    EXPECT_FALSE(controller.window()->isMinimized());
}

TEST_F(Windows, anOpenMainWindowFollowsTheControllersDocument)
{
    SolidWindowController &controller = mainWindow();
    DXDocument another;
    controller.setDocument(&another);
    EXPECT_EQ(controller.view()->documentModel(), another.model());
    controller.setDocument(&document);
    EXPECT_EQ(controller.view()->documentModel(), document.model());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Windows, aForeignWindowThatClosesIsAnAssertionFailure)
{
    QWidget foreign;
    SolidWindowController &controller = mainWindow();
    EXPECT_THROW(controller.windowWillClose(&foreign), AssertionFailure);
    WindowControllerWithDocumentController plain;
    plain.setWindow(std::make_unique<QWidget>());
    EXPECT_THROW(plain.windowWillClose(&foreign), AssertionFailure);
    EXPECT_NO_GL_ERROR();
}

/// What an interface file may name "documentController".
class ObjectController : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QObject *content MEMBER content)

public:
    using QWidget::QWidget;
    QObject *content = nullptr;
};

TEST_F(Windows, theDocumentControllersContentIsTheDocumentWhileTheWindowIsOpen)
{
    registerInterfaceFileClass("ObjectController",
                               [](QWidget *parent) { return new ObjectController(parent); });
    write("Bound", interfaceFile("Bound", "<widget class=\"ObjectController\" "
                                          "name=\"documentController\"/>"));
    auto owned = std::make_unique<WindowControllerWithDocumentController>("Bound");
    auto &controller = static_cast<WindowControllerWithDocumentController &>(
        document.addWindowController(std::move(owned)));
    controller.showWindow();
    auto *content = qobject_cast<ObjectController *>(controller.documentController());
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(content->content, &document);

    controller.window()->close();
    DXDocument other;
    controller.setDocument(&other);
    EXPECT_EQ(content->content, &document) << "no longer bound";
    controller.setDocument(&document);
}

TEST_F(Windows, aBindingFollowsTheDocument)
{
    registerInterfaceFileClass("ObjectController",
                               [](QWidget *parent) { return new ObjectController(parent); });
    write("Bound", interfaceFile("Bound", "<widget class=\"ObjectController\" "
                                          "name=\"documentController\"/>"));
    WindowControllerWithDocumentController controller("Bound");
    controller.window();
    auto *content = qobject_cast<ObjectController *>(controller.documentController());
    EXPECT_EQ(content->content, nullptr);
    controller.setDocument(&document);
    EXPECT_EQ(content->content, &document);
    controller.setDocument(nullptr);
    EXPECT_EQ(content->content, nullptr);
}

TEST_F(Windows, anInterfaceFileWithoutADocumentControllerServesToo)
{
    write("Panel", interfaceFile("Panel"));
    WindowControllerWithDocumentController controller("Panel");
    controller.showWindow();
    EXPECT_EQ(controller.documentController(), nullptr);
    controller.window()->close();
}

TEST_F(Windows, aBindingNeedsPropertiesThatAreThere)
{
    QWidget widget;
    EXPECT_THROW(PropertyBinding(&widget, "noSuchProperty", &widget, "windowTitle"),
                 AssertionFailure);
    EXPECT_THROW(PropertyBinding(&widget, "windowTitle", &widget, "noSuchProperty"),
                 AssertionFailure);
    EXPECT_THROW(PropertyBinding(&widget, "isActiveWindow", &widget, "windowTitle"),
                 AssertionFailure);
}

/// A window that does not want to close.
class Refusing : public QWidget
{
    void closeEvent(QCloseEvent *event) override { event->ignore(); }
};

TEST_F(Windows, aWindowThatRefusesToCloseKeepsItsDocument)
{
    auto controller = std::make_unique<WindowController>();
    controller->setShouldCloseDocument(true);
    controller->setWindow(std::make_unique<Refusing>());
    WindowController &added = document.addWindowController(std::move(controller));
    added.showWindow();
    added.window()->close();
    EXPECT_TRUE(added.window()->isVisible());
    EXPECT_FALSE(document.isClosed());
}

// Option panels

constexpr Rect screen{{0.0, 0.0}, {1920.0, 1050.0}};
constexpr Size panelSize{200.0, 300.0};

TEST(OptionPanelPlace, itsUpperLeftCornerIsFivePointsBesideAndSixBelowTheMotherWindowsTop)
{
    const Point origin = optionPanelOrigin({{100.0, 200.0}, {800.0, 600.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 905.0);
    EXPECT_EQ(origin.y, 200.0 + 600.0 - 6.0 - 300.0);
}

TEST(OptionPanelPlace, aPlaceThatRunsOffTheRightMovesLeftByExactlyTheOverflow)
{
    const Point origin = optionPanelOrigin({{1000.0, 200.0}, {800.0, 600.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 1920.0 - 200.0);
    EXPECT_EQ(origin.y, 494.0);
}

TEST(OptionPanelPlace, aPlaceBelowTheScreensBottomIsRaisedToTheBottomEdge)
{
    const Point origin = optionPanelOrigin({{100.0, 40.0}, {800.0, 200.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 905.0);
    EXPECT_EQ(origin.y, 0.0);
}

TEST(OptionPanelPlace, bothCorrectionsCanApplyAtOnce)
{
    const Rect high{{10.0, 50.0}, {1000.0, 1000.0}};
    const Point origin = optionPanelOrigin({{900.0, 40.0}, {800.0, 200.0}}, panelSize, high);
    EXPECT_EQ(origin.x, 1010.0 - 200.0);
    EXPECT_EQ(origin.y, 50.0);
}

TEST(OptionPanelPlace, aPlaceThatJustFitsStays)
{
    const Point origin = optionPanelOrigin({{915.0, 106.0}, {800.0, 200.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 1720.0);
    EXPECT_EQ(origin.y, 0.0);
}

class OptionPanels : public Windows
{
protected:
    OptionPanels()
    {
        write("Panel", interfaceFile("Panel"));
        mother.setWindowTitle("A Patient");
        mother.setGeometry(40, 60, 200, 150);
        mother.show();
    }
    std::unique_ptr<OptionPanelController> shownPanel()
    {
        auto panel = std::make_unique<OptionPanelController>("Panel");
        panel->setMotherWindow(&mother);
        panel->showWindow();
        return panel;
    }
    static void closeAll()
    {
        NotificationCenter::defaultCenter().postNotificationName(
            "closeAllOptionPanelsNotification");
    }
    QWidget mother;
};

TEST_F(OptionPanels, aPanelHasTheMotherWindowsTitleAndStandsBesideIt)
{
    const auto panel = shownPanel();
    EXPECT_TRUE(panel->window()->isVisible());
    EXPECT_EQ(panel->window()->windowTitle(), "A Patient");
    const QRect frame = mother.frameGeometry();
    EXPECT_EQ(panel->window()->pos().x(), frame.x() + frame.width() + 5);
    EXPECT_EQ(panel->window()->pos().y(), frame.y() + 6);
}

TEST_F(OptionPanels, postingCloseAllClosesEveryPanelShownSince)
{
    const auto one = shownPanel();
    const auto other = shownPanel();
    closeAll();
    EXPECT_FALSE(one->window()->isVisible());
    EXPECT_FALSE(other->window()->isVisible());
    EXPECT_TRUE(mother.isVisible());
}

TEST_F(OptionPanels, aPanelThatHasClosedNoLongerReacts)
{
    const auto panel = shownPanel();
    panel->window()->close();
    // Shown by other means than the controller's.
    panel->window()->show();
    closeAll();
    EXPECT_TRUE(panel->window()->isVisible());
    panel->showWindow();
    closeAll();
    EXPECT_FALSE(panel->window()->isVisible());
}

TEST_F(OptionPanels, aPanelThatIsGoneIsNotTold)
{
    auto panel = shownPanel();
    const QPointer<QWidget> window = panel->window();
    panel.reset();
    EXPECT_TRUE(window.isNull());
    closeAll(); // would reach a window that is no more
    EXPECT_TRUE(window.isNull());
}

TEST_F(OptionPanels, anotherWindowsClosingLeavesThePanelListening)
{
    const auto panel = shownPanel();
    panel->windowWillClose(&mother);
    closeAll();
    EXPECT_FALSE(panel->window()->isVisible());
}

// Sheets

TEST_F(Windows, aSheetHoldsUpItsMainWindowUntilItIsDone)
{
    QWidget main;
    main.show();
    SheetController sheet;
    sheet.setWindow(std::make_unique<QWidget>());
    sheet.setMainWindow(&main);
    sheet.startDialog();
    EXPECT_TRUE(sheet.window()->isVisible());
    EXPECT_EQ(sheet.window()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet.window()->windowHandle()->transientParent(), main.windowHandle());
    sheet.doneDialog();
    EXPECT_FALSE(sheet.window()->isVisible());
    EXPECT_EQ(sheet.window()->windowHandle()->transientParent(), nullptr);
}

TEST_F(Windows, doneEndsTheEditing)
{
    QWidget main;
    main.show();
    auto window = std::make_unique<QWidget>();
    auto *line = new QLineEdit(window.get());
    SheetController sheet;
    sheet.setWindow(std::move(window));
    sheet.setMainWindow(&main);
    sheet.startDialog();
    line->setFocus();
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(line, &typed);
    bool hasEnded = false;
    QObject::connect(line, &QLineEdit::editingFinished, [&hasEnded] { hasEnded = true; });
    ASSERT_TRUE(kelo::test::waitUntil([line] { return line->hasFocus(); }));
    sheet.doneDialog();
    EXPECT_NE(sheet.window()->focusWidget(), line);
    EXPECT_TRUE(hasEnded);
}

TEST_F(Windows, aSheetThatHasNotBegunIsDoneWithoutEffect)
{
    SheetController notLoaded("Nowhere");
    notLoaded.doneDialog();
    EXPECT_FALSE(notLoaded.isWindowLoaded());
    SheetController notBegun;
    notBegun.setWindow(std::make_unique<QWidget>());
    notBegun.doneDialog();
    EXPECT_FALSE(notBegun.window()->isVisible());
}

TEST_F(Windows, aSheetOutlivesItsMainWindow)
{
    SheetController sheet;
    sheet.setWindow(std::make_unique<QWidget>());
    {
        QWidget main;
        main.show();
        sheet.setMainWindow(&main);
        sheet.startDialog();
    }
    EXPECT_EQ(sheet.mainWindow(), nullptr);
    sheet.doneDialog();
    EXPECT_FALSE(sheet.window()->isVisible());
}

} // namespace

#include "WindowControllersTest.moc"
