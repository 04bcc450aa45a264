// How documents, their windows and what these show come to an end.

#include "platform/time/NotificationCenter.h"
#include "tests/keloOpenGL/windows/WindowsFixture.h"

#include <QCloseEvent>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace {

using namespace kelo;
using kelo::test::Windows;

/// A window that counts how often it is asked to close, and may refuse.
class Asked : public QWidget
{
public:
    bool refuses = false;
    int count = 0;
    std::function<void()> whenAsked;

private:
    void closeEvent(QCloseEvent *event) override
    {
        ++count;
        if (whenAsked) whenAsked();
        event->setAccepted(!refuses);
    }
};

/// Counts the closings that pass through it.
class CloseFilter : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Close) ++count;
        return QObject::eventFilter(object, event);
    }
};

class Closing : public Windows
{
protected:
    Closing()
    {
        QObject::connect(&document, &Document::closed, [this] { ++closedCount; });
    }
    WindowController &addController(std::unique_ptr<QWidget> window)
    {
        auto controller = std::make_unique<WindowController>();
        controller->setWindow(std::move(window));
        return document.addWindowController(std::move(controller));
    }
    Asked &addAsked()
    {
        auto window = std::make_unique<Asked>();
        Asked &added = *window;
        addController(std::move(window)).showWindow();
        return added;
    }

    int closedCount = 0;
};

TEST_F(Closing, aDocumentStaysOpenWhileOneOfItsWindowsRefuses)
{
    Asked &willing = addAsked();
    Asked &refusing = addAsked();
    Asked &later = addAsked();
    refusing.refuses = true;
    EXPECT_FALSE(document.close());
    EXPECT_FALSE(document.isClosed());
    EXPECT_EQ(closedCount, 0);
    EXPECT_FALSE(willing.isVisible());
    EXPECT_TRUE(refusing.isVisible());
    EXPECT_TRUE(later.isVisible());
    EXPECT_EQ(later.count, 0);

    refusing.refuses = false;
    EXPECT_TRUE(document.close());
    EXPECT_TRUE(document.isClosed());
    EXPECT_EQ(closedCount, 1);
    EXPECT_FALSE(later.isVisible());
    EXPECT_EQ(willing.count, 1) << "it has closed already";
}

TEST_F(Closing, aRefusingWindowThatIsHiddenKeepsNothingOpen)
{
    Asked &refusing = addAsked();
    refusing.refuses = true;
    refusing.hide();
    EXPECT_TRUE(document.close());
    EXPECT_EQ(closedCount, 1);
}

TEST_F(Closing, aMainWindowStaysOpenWhileAnotherWindowOfItsDocumentRefuses)
{
    SolidWindowController &main = mainWindow();
    Asked &refusing = addAsked();
    refusing.refuses = true;
    EXPECT_FALSE(main.close());
    EXPECT_TRUE(main.window()->isVisible());
    EXPECT_FALSE(document.isClosed());
    // It is as it was: its view still follows the document.
    DXDocument another;
    main.setDocument(&another);
    EXPECT_EQ(main.view()->documentModel(), another.model());
    main.setDocument(&document);

    refusing.refuses = false;
    EXPECT_TRUE(main.close());
    EXPECT_FALSE(refusing.isVisible());
    EXPECT_EQ(closedCount, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Closing, everyWindowIsAskedOnce)
{
    Asked &main = addAsked();
    document.windowControllers().front()->setShouldCloseDocument(true);
    Asked &panel = addAsked();
    main.close();
    EXPECT_EQ(main.count, 1);
    EXPECT_EQ(panel.count, 1);
    EXPECT_EQ(closedCount, 1);
    EXPECT_TRUE(document.close());
    EXPECT_EQ(main.count, 1);
    EXPECT_EQ(closedCount, 1);
}

TEST_F(Closing, everyWindowIsAskedOnceWhenTheDocumentBeginsIt)
{
    Asked &main = addAsked();
    document.windowControllers().front()->setShouldCloseDocument(true);
    Asked &panel = addAsked();
    EXPECT_TRUE(document.close());
    EXPECT_EQ(main.count, 1);
    EXPECT_EQ(panel.count, 1);
    EXPECT_EQ(closedCount, 1);
}

TEST_F(Closing, windowsThatAreAddedMeanwhileCloseToo)
{
    Asked &first = addAsked();
    std::vector<Asked *> added;
    first.whenAsked = [&] {
        // So many that the document's list moves to another place.
        for (int i = 0; i < 50; ++i)
            added.push_back(&addAsked());
    };
    EXPECT_TRUE(document.close());
    ASSERT_EQ(added.size(), 50u);
    for (const Asked *window : added)
        EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(closedCount, 1);
}

TEST_F(Closing, aWindowThatIsAskedAlreadyHasNotClosed)
{
    Asked &asked = addAsked();
    bool closedInside = true;
    asked.whenAsked = [&] { closedInside = document.close(); };
    asked.refuses = true;
    EXPECT_FALSE(document.windowControllers().front()->close());
    EXPECT_FALSE(closedInside);
    EXPECT_EQ(asked.count, 1);
    EXPECT_FALSE(document.isClosed());
}

TEST_F(Closing, aHostsEventFilterHearsOfEveryClosing)
{
    auto window = std::make_unique<Asked>();
    Asked &asked = *window;
    WindowController &controller = addController(std::move(window));
    CloseFilter host;
    controller.window()->installEventFilter(&host);
    controller.showWindow();
    asked.refuses = true;
    EXPECT_FALSE(controller.close());
    EXPECT_EQ(host.count, 1);
    EXPECT_FALSE(controller.close());
    EXPECT_EQ(host.count, 2);
    asked.refuses = false;
    EXPECT_TRUE(controller.close());
    EXPECT_EQ(host.count, 3);
    EXPECT_EQ(asked.count, 3);
}

// Views that outlive their windows

TEST_F(Closing, aViewKeptAfterItsWindowClosedStillRedraws)
{
    const auto filled = kelo::test::boxDocument();
    SolidWindowController &controller = mainWindow();
    const auto view = controller.view();
    view->setDocumentModel(filled);
    controller.close();
    ASSERT_TRUE(document.isClosed());
    view->display();
    view->setNeedsDisplay(false);
    filled->toggleVisibilityOfBracket("8");
    EXPECT_TRUE(view->needsDisplay());
    // And follows its own frame.
    view->acceptsMouseMovedEvents = false;
    view->setFrameSize({view->bounds().size.width + 10.0, 300.0});
    EXPECT_TRUE(view->acceptsMouseMovedEvents);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Closing, whatIsObservedInTheViewsNameEndsWithItsWindow)
{
    SolidWindowController &controller = mainWindow();
    const auto view = controller.view();
    int told = 0;
    NotificationCenter::defaultCenter().addObserver(
        view.get(), [&told](const Notification &) { ++told; }, "hostsNotification");
    NotificationCenter::defaultCenter().postNotificationName("hostsNotification");
    EXPECT_EQ(told, 1);
    controller.close();
    NotificationCenter::defaultCenter().postNotificationName("hostsNotification");
    EXPECT_EQ(told, 1);
    EXPECT_NO_GL_ERROR();
}

} // namespace
