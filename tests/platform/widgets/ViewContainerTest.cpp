#include "platform/time/RunLoop.h"
#include "tests/support/GLTest.h"
#include "tests/support/WindowTest.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>

namespace kelo {
namespace {

using test::displayIsSettled;
using test::DrawingView;
using test::screenshotOf;
using test::waitUntil;
using test::xdotool;

class ViewContainer : public test::WindowTest
{
protected:
    /// Whether keys go to this widget: it has the focus, and its window the display's.
    bool hasKeyboard(const QWidget *widget) const
    {
        return widget->hasFocus() && QGuiApplication::focusWindow() == top->windowHandle();
    }
};

TEST_F(ViewContainer, theViewMayEndFirst)
{
    showView();
    view->display();
    EXPECT_NO_GL_ERROR();
    const QPointer<QWindow> window = view->window();
    view.reset();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(OpenGLContext::currentContext(), nullptr);
    top->resize(200, 200);
    EXPECT_TRUE(displayIsSettled());
    top.reset();
    EXPECT_TRUE(displayIsSettled());
}

TEST_F(ViewContainer, theContainerMayEndFirst)
{
    showView();
    const QPointer<QWindow> window = view->window();
    top.reset();
    EXPECT_TRUE(displayIsSettled());
    ASSERT_FALSE(window.isNull());
    EXPECT_EQ(view->window(), window.data());
    EXPECT_FALSE(view->isExposed());
    EXPECT_EQ(view->grabImage().pixel(0, 0), qRgb(0, 255, 0));
    EXPECT_NO_GL_ERROR();

    QMainWindow other;
    other.setCentralWidget(view->createContainer());
    other.resize(200, 150);
    other.show();
    const int before = view->frames;
    EXPECT_TRUE(waitUntil([&] { return view->isExposed() && view->frames > before; }));
    EXPECT_EQ(view->window(), window.data());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, theViewMayEndInsideItsOwnEvent)
{
    showView();
    const QPointer<QWindow> window = view->window();
    view->onEvent = [this](const Event &) { view.reset(); };
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), QPointF(5, 5),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &press);
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
    EXPECT_TRUE(waitUntil([&] { return window.isNull(); }));
}

TEST_F(ViewContainer, theContainerMayEndWhileTheViewFillsTheScreen)
{
    showView();
    ASSERT_TRUE(view->enterFullScreenMode());
    ASSERT_TRUE(waitUntil([this] { return view->isExposed(); }));
    top.reset();
    EXPECT_TRUE(displayIsSettled());
    view->display();
    EXPECT_NO_GL_ERROR();
    view->exitFullScreenModeWithOptions();
    EXPECT_FALSE(view->isInFullScreenMode());
    EXPECT_TRUE(displayIsSettled());
    EXPECT_FALSE(view->isExposed());
    EXPECT_EQ(view->grabImage().pixel(0, 0), qRgb(0, 255, 0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, theViewMayEndWhileItFillsTheScreen)
{
    showView();
    ASSERT_TRUE(view->enterFullScreenMode());
    ASSERT_TRUE(waitUntil([this] { return view->isExposed(); }));
    const QPointer<QWindow> window = view->window();
    view.reset();
    EXPECT_TRUE(window.isNull());
    EXPECT_TRUE(displayIsSettled());
}

TEST_F(ViewContainer, aSecondContainerTakesTheViewOver)
{
    showView();
    const OpenGLContext *context = &view->openGLContext();
    QWidget second;
    QVBoxLayout layout(&second);
    layout.addWidget(view->createContainer(&second));
    second.resize(210, 160);
    second.show();
    ASSERT_TRUE(waitUntil([this] { return view->isExposed() && view->bounds().size.width < 210; }));
    top.reset();
    EXPECT_TRUE(displayIsSettled());
    const int before = view->frames;
    view->display();
    EXPECT_EQ(view->frames, before + 1);
    EXPECT_EQ(&view->openGLContext(), context);
    EXPECT_EQ(view->contextLosses, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, theContainerMayMoveToAnotherTopLevelWindow)
{
    showView();
    const OpenGLContext *context = &view->openGLContext();
    QMainWindow other;
    other.resize(260, 200);
    other.setCentralWidget(container);
    other.show();
    ASSERT_TRUE(waitUntil([&] {
        return view->isExposed() && view->bounds().size.width == other.centralWidget()->width();
    }));
    view->display();
    EXPECT_TRUE(
        waitUntil([this] { return screenshotOf(*view->window()).pixel(0, 0) == qRgb(0, 255, 0); }));
    EXPECT_EQ(&view->openGLContext(), context);
    EXPECT_EQ(view->contextLosses, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, theViewIsToldWhenItsWindowChanges)
{
    showView();
    const int before = view->windowMoves;
    EXPECT_GE(before, 1);
    ASSERT_TRUE(view->enterFullScreenMode());
    EXPECT_EQ(view->windowMoves, before + 1);
    view->exitFullScreenModeWithOptions();
    EXPECT_EQ(view->windowMoves, before + 2);
    top.reset();
    EXPECT_EQ(view->windowMoves, before + 3);
}

TEST_F(ViewContainer, theContainerAsksForTheViewsSize)
{
    DrawingView sized(Rect{{0, 0}, {123, 45}});
    const std::unique_ptr<QWidget> widget(sized.createContainer());
    EXPECT_EQ(widget->sizeHint(), QSize(123, 45));
}

TEST_F(ViewContainer, theTabKeyGoesThroughTheViewInBothDirections)
{
    showView();
    auto *before = new QLineEdit(top.get());
    auto *after = new QLineEdit(top.get());
    auto *layout = static_cast<QVBoxLayout *>(top->layout());
    layout->insertWidget(0, before);
    layout->addWidget(after);
    QWidget::setTabOrder(before, container);
    QWidget::setTabOrder(container, after);
    before->show();
    after->show();
    before->setFocus();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(before); }));
    // The first window that is shown has given the keyboard to its first widget, the view.
    const int timesBefore = view->timesFirstResponder;
    EXPECT_EQ(view->timesResigned, timesBefore);

    ASSERT_TRUE(xdotool({"key", "Tab"}));
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    EXPECT_EQ(view->timesFirstResponder, timesBefore + 1);
    ASSERT_TRUE(xdotool({"key", "Tab"}));
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(after); }));
    EXPECT_EQ(view->timesResigned, timesBefore + 1);
    ASSERT_TRUE(xdotool({"key", "x"}));
    EXPECT_TRUE(waitUntil([&] { return after->text() == "x"; }));
    ASSERT_TRUE(xdotool({"key", "shift+Tab"}));
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    ASSERT_TRUE(xdotool({"key", "shift+Tab"}));
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(before); }));
    view->openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, aClickOnAnotherWidgetTakesTheKeyboardFromTheView)
{
    showView();
    auto *edit = new QLineEdit(top.get());
    top->layout()->addWidget(edit);
    edit->show();
    EXPECT_TRUE(displayIsSettled());
    const auto click = [](const QPoint &global) {
        return xdotool(
            {"mousemove", QString::number(global.x()), QString::number(global.y()), "click", "1"});
    };
    ASSERT_TRUE(click(view->window()->mapToGlobal(QPoint(20, 20))));
    EXPECT_TRUE(displayIsSettled());
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    ASSERT_TRUE(click(edit->mapToGlobal(QPoint(10, 5))));
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(edit); }));
    ASSERT_TRUE(xdotool({"key", "y"}));
    EXPECT_TRUE(waitUntil([&] { return edit->text() == "y"; }));
    view->openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, theKeyboardComesBackToTheViewWithItsWindow)
{
    showView();
    container->setFocus();
    EXPECT_TRUE(displayIsSettled());
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    QWidget other;
    other.resize(100, 100);
    other.show();
    other.activateWindow();
    // The window manager gives a new window the keyboard of its own accord.
    EXPECT_TRUE(displayIsSettled());
    ASSERT_TRUE(waitUntil([&] { return other.isActiveWindow(); }));
    top->activateWindow();
    EXPECT_TRUE(waitUntil([this] { return viewHasKeyboard(); }))
        << "the keyboard is with "
        << (other.isActiveWindow()  ? "the other window"
            : top->isActiveWindow() ? "the top-level window"
                                    : "nobody");
    view->openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, aWindowThatOpensAfterThisOneKeepsTheKeyboard)
{
    showView();
    container->setFocus();
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    for (int round = 0; round < 10; ++round) {
        // As when a dialog of this window closes, and what was chosen in it opens a window.
        QWidget dialog(top.get(), Qt::Dialog);
        dialog.resize(80, 60);
        dialog.show();
        ASSERT_TRUE(waitUntil([&] { return dialog.isActiveWindow(); }));
        dialog.close();
        QWidget other;
        QLineEdit edit(&other);
        other.resize(100, 100);
        other.show();
        edit.setFocus();
        other.activateWindow();
        ASSERT_TRUE(waitUntil([&] { return other.isActiveWindow(); })) << "round " << round;
        EXPECT_TRUE(displayIsSettled());
        ASSERT_TRUE(xdotool({"key", "z"}));
        ASSERT_TRUE(waitUntil([&] { return edit.text() == "z"; })) << "round " << round;
    }
    view->openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, theViewHearsOfTheKeyboardOnceInFullScreenAndBack)
{
    showView();
    container->setFocus();
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    const auto hasIt = [this] { return view->timesFirstResponder == view->timesResigned + 1; };
    ASSERT_TRUE(hasIt());
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(view->enterFullScreenMode());
        ASSERT_TRUE(waitUntil([this] { return QGuiApplication::focusWindow() == view->window(); }));
        EXPECT_TRUE(displayIsSettled());
        EXPECT_TRUE(hasIt()) << "round " << round;
        view->events.clear();
        ASSERT_TRUE(xdotool({"key", "b"}));
        EXPECT_TRUE(waitUntil([this] {
            return !view->events.empty() && view->events.back().type == EventType::KeyUp;
        })) << "round "
            << round;
        view->exitFullScreenModeWithOptions();
        ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); })) << "round " << round;
        EXPECT_TRUE(displayIsSettled());
        EXPECT_TRUE(hasIt()) << "round " << round;
        view->events.clear();
        ASSERT_TRUE(xdotool({"key", "c"}));
        EXPECT_TRUE(waitUntil([this] {
            return !view->events.empty() && view->events.back().type == EventType::KeyUp;
        })) << "round "
            << round;
    }
    view->openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewContainer, theViewMayEndAtAKeyThatIsPassedOn)
{
    showView();
    container->setFocus();
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    view->onEvent = [this](const Event &event) {
        if (event.type == EventType::KeyDown) view.reset();
    };
    ASSERT_TRUE(xdotool({"key", "d"}));
    EXPECT_TRUE(waitUntil([this] { return view == nullptr; }));
    EXPECT_TRUE(displayIsSettled());
}

} // namespace
} // namespace kelo
