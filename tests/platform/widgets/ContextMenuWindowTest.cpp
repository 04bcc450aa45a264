#include "platform/presenters/Menu.h"
#include "platform/time/RunLoop.h"
#include "platform/view/OpenGLView.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestSurface.h"
#include "tests/support/WindowTest.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QWidget>
#include <QWindow>

#include <memory>

using namespace kelo;
using kelo::test::screenshotOf;
using kelo::test::waitUntil;

namespace {

/// A view in a window of a real display.
class ContextMenuWindowTest : public testing::Test
{
protected:
    ContextMenuWindowTest()
    {
        view = std::make_unique<OpenGLView>(Rect{{0.0, 0.0}, {200.0, 150.0}});
        host = std::make_unique<QWidget>();
        host->resize(300, 250);
        container = view->createContainer(host.get());
        container->setGeometry(40, 30, 200, 150);
        host->show();
        EXPECT_TRUE(waitUntil([this] { return view->isExposed(); }));
        menu->addItemWithTitle_actionName_action("row", "choose:", [](MenuItem &) {});
    }

    kelo::test::TestSurface surface{SurfaceKind::Window};
    kelo::test::MainRunLoop realClock{nullptr};
    std::unique_ptr<OpenGLView> view;
    std::unique_ptr<QWidget> host;
    QWidget *container = nullptr;
    std::shared_ptr<Menu> menu = std::make_shared<Menu>("menu");
};

class NotingDelegate : public MenuDelegate
{
public:
    void menuDidClose(Menu &) override { ++closings; }
    int closings = 0;
};

} // namespace

TEST_F(ContextMenuWindowTest, theMenuOpensAtTheEventInFrontOfTheTopLevelWindow)
{
    // 11 rows of pixels from the view's lower edge up, which is y = 139 from the upper one.
    Event event;
    event.locationInWindow = {25.0, 11.0};
    QPoint position;
    const QWindow *transientParent = nullptr;
    RunLoop::main().performSoon([&] {
        auto *native = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(native, nullptr);
        position = native->pos();
        transientParent = native->windowHandle()->transientParent();
        native->close();
    });
    // Asked before: the window manager may still move the window.
    // To the right of the event's pixel and below.
    const QPoint expected = container->mapToGlobal(QPoint(26, 140));
    ContextMenuPresenter::popUpNativeMenu(menu, event, *view);
    EXPECT_EQ(position, expected);
    EXPECT_EQ(transientParent, host->windowHandle());
}

TEST_F(ContextMenuWindowTest, aMenuIsOffTheScreenBeforeWhatWasChosenBegins)
{
    // The menu opens at the view's lower left corner and covers what is below the view.
    QPalette red;
    red.setColor(QPalette::Window, Qt::red);
    host->setPalette(red);
    const auto belowTheView = [this] {
        return screenshotOf(*host->windowHandle()).copy(42, 185, 20, 20);
    };
    QImage painted(20, 20, QImage::Format_RGB32);
    painted.fill(Qt::red);
    const auto isPainted = [&] {
        return belowTheView().convertToFormat(QImage::Format_RGB32) == painted;
    };
    ASSERT_TRUE(waitUntil(isPainted));
    bool coveredByTheMenu = false;
    bool paintedInTheAction = false;
    menu->items().front()->action = [&](MenuItem &) { paintedInTheAction = isPainted(); };
    RunLoop::main().performSoon([&] {
        auto *native = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(native, nullptr);
        coveredByTheMenu = waitUntil([&] { return !isPainted(); });
        native->setActiveAction(native->actions().front());
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(native, &press);
    });
    ContextMenuPresenter::popUpNativeMenu(menu, {}, *view);
    EXPECT_TRUE(coveredByTheMenu);
    EXPECT_TRUE(paintedInTheAction) << "what the menu covered";
}

TEST_F(ContextMenuWindowTest, aViewThatEndsWhileItsMenuIsOpenIsNotToldOfTheClosing)
{
    NotingDelegate delegate;
    menu->delegate = &delegate;
    RunLoop::main().performSoon([&] {
        view.reset();
        QApplication::activePopupWidget()->close();
    });
    ContextMenuPresenter::popUpNativeMenu(menu, {}, *view);
    EXPECT_EQ(delegate.closings, 0);
}

TEST_F(ContextMenuWindowTest, theHostMayEndWhileTheMenuIsOpen)
{
    NotingDelegate delegate;
    menu->delegate = &delegate;
    RunLoop::main().performSoon([&] { host.reset(); });
    ContextMenuPresenter::popUpNativeMenu(menu, {}, *view);
    EXPECT_EQ(delegate.closings, 1) << "the view is still there";
}
