// Documents and their windows.

#include "base/Assertion.h"
#include "keloOpenGL/windows/OptionPanelController.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/NotificationQueue.h"
#include "tests/keloOpenGL/windows/WindowsFixture.h"
#include "tests/support/LogGuard.h"
#include "tests/support/WithoutPrivileges.h"

#include <QCloseEvent>
#include <QFile>
#include <QWidget>

namespace {

using namespace kelo;
using kelo::test::interfaceFile;
using kelo::test::Windows;

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

TEST_F(Windows, anInterfaceFileThatMayNotBeReadIsNamedWithTheReason)
{
    write("Closed", interfaceFile("Own"));
    const QString path = folder.filePath("Closed.ui");
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOther | QFile::ExeOther |
                                                         QFile::ReadOwner | QFile::WriteOwner |
                                                         QFile::ExeOwner));
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    const std::string told = kelo::test::resultWithoutPrivileges([] {
        try {
            loadInterfaceFile("Closed");
        } catch (const InterfaceFileProblem &problem) {
            return std::string(problem.what());
        }
        return std::string("nothing was thrown");
    });
    EXPECT_EQ(told, path.toStdString() + ": could not be read: Permission denied");
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
    clock->advance(0.1);
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

TEST_F(Windows, aClosedMainWindowHearsNothingAndFollowsNoDocument)
{
    SolidWindowController &controller = mainWindow();
    clock->advance(0.1);
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
    clock->advance(0.1);
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

TEST_F(Windows, theControllersContentIsTheDocumentWhileItIsOpen)
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

} // namespace

#include "WindowControllersTest.moc"
