#include "platform/time/RunLoop.h"
#include "tests/support/GLTest.h"
#include "tests/support/WindowTest.h"

#include "platform/gl.h"

#include <QOpenGLContext>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace kelo {
namespace {

using test::displayIsSettled;
using test::DrawingView;
using test::letPass;
using test::screenshotOf;
using test::waitUntil;
using test::xdotool;

const QRgb blue = qRgb(0, 0, 255);
const QRgb green = qRgb(0, 255, 0);
const QRgb red = qRgb(255, 0, 0);

class ViewWindow : public test::WindowTest
{
protected:
    /// DrawingView's picture must reach every edge of the image, with the green and the red bar of
    /// a quarter each (the pixel at the border may be rounded either way).
    static void expectThePicture(const QImage &image)
    {
        ASSERT_FALSE(image.isNull());
        const int width = image.width();
        const int height = image.height();
        EXPECT_EQ(image.pixel(width - 1, 0), blue);
        EXPECT_EQ(image.pixel(0, 0), green);
        EXPECT_EQ(image.pixel(0, height - 1), red);
        EXPECT_EQ(image.pixel(width - 1, height - 1), red);
        EXPECT_EQ(image.pixel(width / 4 - 2, 0), green);
        EXPECT_EQ(image.pixel(width / 4 + 2, 0), blue);
        EXPECT_EQ(image.pixel(width - 1, height - height / 4 + 2), red);
        EXPECT_EQ(image.pixel(width - 1, height - height / 4 - 2), blue);
    }
    /// Whether the corners of the screen's picture of the view are as DrawingView draws them.
    bool isOnScreen() const
    {
        const QImage shown = screenshotOf(*view->window());
        return !shown.isNull() && shown.pixel(shown.width() - 1, 0) == blue &&
               shown.pixel(shown.width() - 1, shown.height() - 1) == red;
    }
};

TEST_F(ViewWindow, theAutomaticSurfaceIsAWindowWhereThereIsADisplay)
{
    OpenGLView::setSurfaceKind(SurfaceKind::Automatic);
    EXPECT_EQ(OpenGLView::surfaceKind(), SurfaceKind::Window);
}

TEST_F(ViewWindow, theContextHasTheFixedFunctionCallsOfOpenGL21)
{
    showView();
    ASSERT_TRUE(view->openGLContext().makeCurrentContext());
    EXPECT_GE(epoxy_gl_version(), 21);
    GLint depth = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depth);
    EXPECT_GE(depth, 24);
    GLboolean doubleBuffer = GL_FALSE;
    glGetBooleanv(GL_DOUBLEBUFFER, &doubleBuffer);
    EXPECT_TRUE(doubleBuffer);
    glMatrixMode(GL_PROJECTION);
    glBegin(GL_TRIANGLES);
    glEnd();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, theContainerGivesTheViewItsSize)
{
    showView({320, 240});
    EXPECT_EQ(view->bounds().size, (Size{320, 240}));
    EXPECT_GE(view->reshapes, 1);
    top->resize(400, 300);
    EXPECT_TRUE(waitUntil([this] { return view->bounds().size == Size{400, 300}; }));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, thePictureReachesEveryDevicePixelOnTheScreen)
{
    // Away from the edges: a top-level window's own rounding may cut off the last row of a child.
    showView({321, 243}, 20);
    const double scale = view->backingScaleFactor();
    if (const char *expected = std::getenv("KELO_EXPECTED_SCALE")) {
        EXPECT_DOUBLE_EQ(scale, std::atof(expected));
    }
    const PixelSize size = view->deviceSize();
    EXPECT_EQ(size.width, std::lround(321 * scale));
    EXPECT_EQ(size.height, std::lround(243 * scale));
    EXPECT_EQ(view->convertSizeToBacking(view->bounds().size),
              (Size{double(size.width), double(size.height)}));

    const QImage grabbed = view->grabImage();
    EXPECT_EQ(grabbed.size(), QSize(size.width, size.height));
    expectThePicture(grabbed);

    view->display();
    EXPECT_TRUE(waitUntil([&] {
        const QImage shown = screenshotOf(*view->window());
        return shown.pixel(shown.width() - 1, 0) == blue;
    }));
    const QImage shown = screenshotOf(*view->window());
    EXPECT_EQ(shown.size(), QSize(size.width, size.height));
    expectThePicture(shown);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aViewThatFillsTheScreenHasExactlyTheScreensPixels)
{
    showView({321, 243});
    ASSERT_TRUE(view->enterFullScreenMode());
    // The screen's own size, which no rounding of points has passed through.
    ASSERT_TRUE(waitUntil([this] { return view->deviceSize() == PixelSize{1280, 1024}; }));
    ASSERT_TRUE(waitUntil([this] { return view->isExposed() && !view->needsDisplay(); }));
    const QImage grabbed = view->grabImage();
    EXPECT_EQ(grabbed.size(), QSize(1280, 1024));
    expectThePicture(grabbed);
    view->display();
    ASSERT_TRUE(waitUntil([this] { return isOnScreen(); }));
    expectThePicture(screenshotOf(*view->window()));
    EXPECT_NO_GL_ERROR();
}

class AtScale : public testing::TestWithParam<const char *>
{};

TEST_P(AtScale, thePictureReachesEveryDevicePixel)
{
    // The scale is fixed when an application starts, so one is started for each.
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", GetParam());
    environment.insert("KELO_EXPECTED_SCALE", GetParam());
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=ViewWindow.thePictureReachesEveryDevicePixelOnTheScreen:"
                 "ViewWindow.aViewThatFillsTheScreenHasExactlyTheScreensPixels:"
                 "ViewWindow.theLocationOfAnEventIsInPointsFromTheBottomLeft"});
    ASSERT_TRUE(child.waitForFinished(60000));
    const QByteArray output = child.readAll();
    EXPECT_EQ(child.exitCode(), 0) << output.constData();
    EXPECT_TRUE(output.contains("[  PASSED  ] 3 tests")) << output.constData();
}

INSTANTIATE_TEST_SUITE_P(ViewWindow, AtScale, testing::Values("1.25", "1.5", "2"));

TEST_F(ViewWindow, manyAskingsForARedrawMakeOneFrame)
{
    showView();
    ASSERT_TRUE(waitUntil([this] { return !view->needsDisplay(); }));
    const int before = view->frames;
    for (int i = 0; i < 50; ++i)
        view->setNeedsDisplay(true);
    EXPECT_EQ(view->frames, before);
    ASSERT_TRUE(waitUntil([this] { return !view->needsDisplay(); }));
    letPass(50); // a second frame would come within 5 ms
    EXPECT_EQ(view->frames, before + 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, displayDrawsBeforeItReturns)
{
    showView();
    const int before = view->frames;
    view->display();
    EXPECT_EQ(view->frames, before + 1);
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, nothingIsDrawnWhileHiddenAndOneFrameWhenShownAgain)
{
    showView();
    top->hide();
    ASSERT_TRUE(waitUntil([this] { return !view->isExposed(); }));
    const int before = view->frames;
    view->setNeedsDisplay(true);
    view->display();
    letPass(50); // a frame would come within 5 ms
    EXPECT_EQ(view->frames, before);
    EXPECT_TRUE(view->needsDisplay());
    top->show();
    EXPECT_TRUE(waitUntil([&] { return view->frames > before && !view->needsDisplay(); }));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, anImageCanBeGrabbedWhileHiddenAndBeforeTheWindowWasEverShown)
{
    view = std::make_shared<DrawingView>(Rect{{0, 0}, {64, 48}});
    expectThePicture(view->grabImage());
    EXPECT_FALSE(view->isExposed());
    showView();
    top->hide();
    ASSERT_TRUE(waitUntil([this] { return !view->isExposed(); }));
    expectThePicture(view->grabImage());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, fullScreenAndBackKeepsTheContextAndItsNames)
{
    showView();
    ASSERT_TRUE(view->openGLContext().makeCurrentContext());
    const OpenGLContext *context = &view->openGLContext();
    const QWindow *window = view->window();
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    const unsigned char pixel[] = {10, 20, 30, 255};
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    const Size home = view->bounds().size;

    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(view->enterFullScreenMode());
        EXPECT_TRUE(view->isInFullScreenMode());
        const QSize screen = view->window()->screen()->size();
        ASSERT_TRUE(waitUntil([&] {
            return view->isExposed() &&
                   view->bounds().size == Size{double(screen.width()), double(screen.height())};
        })) << "round "
            << round;
        view->display();
        expectThePicture(view->grabImage());

        view->exitFullScreenModeWithOptions();
        EXPECT_FALSE(view->isInFullScreenMode());
        ASSERT_TRUE(waitUntil([&] { return view->isExposed() && view->bounds().size == home; }))
            << "round " << round;
        view->display();
        ASSERT_TRUE(waitUntil([this] { return isOnScreen(); }));
        expectThePicture(screenshotOf(*view->window()));
    }

    EXPECT_EQ(&view->openGLContext(), context);
    EXPECT_EQ(view->window(), window);
    EXPECT_EQ(view->contextLosses, 0);
    ASSERT_TRUE(view->openGLContext().makeCurrentContext());
    ASSERT_TRUE(glIsTexture(texture));
    glBindTexture(GL_TEXTURE_2D, texture);
    unsigned char back[4] = {};
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, back);
    EXPECT_EQ(back[0], 10);
    EXPECT_EQ(back[2], 30);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, closingTheFullScreenBringsTheViewHome)
{
    showView();
    ASSERT_TRUE(view->enterFullScreenMode());
    ASSERT_TRUE(waitUntil([this] { return view->isExposed(); }));
    view->window()->close();
    EXPECT_FALSE(view->isInFullScreenMode());
    EXPECT_TRUE(waitUntil([this] { return view->isExposed(); }));
    view->display();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aThousandFramesLeaveNoError)
{
    showView();
    view->openGLContext().setSwapInterval(0);
    const int before = view->frames;
    for (int i = 0; i < 1000; ++i) {
        view->display();
        ASSERT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "frame " << i;
    }
    EXPECT_EQ(view->frames, before + 1000);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, theSwapIntervalCanBeChangedWhileTheWindowLives)
{
    showView();
    OpenGLContext &context = view->openGLContext();
    EXPECT_EQ(context.swapInterval(), 1);
    context.setSwapInterval(0);
    view->display();
    EXPECT_EQ(context.swapInterval(), 0);
    context.setSwapInterval(1);
    view->display();
    EXPECT_EQ(context.swapInterval(), 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aLostContextIsReplacedByTheNextFrame)
{
    showView();
    view->loseContext();
    EXPECT_EQ(view->contextLosses, 1);
    EXPECT_TRUE(waitUntil([this] { return view->hasOpenGLContext() && !view->needsDisplay(); }));
    expectThePicture(view->grabImage());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aWindowAndAViewWithoutDisplayDrawInTurns)
{
    showView();
    DrawingView window2(Rect{{0, 0}, {50, 40}});
    window2.openGLContext();
    OpenGLView::setSurfaceKind(SurfaceKind::Surfaceless);
    DrawingView buffer(Rect{{0, 0}, {64, 48}});
    for (int i = 0; i < 20; ++i) {
        buffer.display();
        ASSERT_TRUE(buffer.openGLContext().isCurrent());
        EXPECT_NO_GL_ERROR();
        view->display();
        ASSERT_TRUE(view->openGLContext().isCurrent());
        EXPECT_FALSE(buffer.openGLContext().isCurrent());
        EXPECT_NO_GL_ERROR();
    }
    expectThePicture(buffer.grabImage());
    expectThePicture(view->grabImage());
    expectThePicture(window2.grabImage());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aForeignContextThatWasMadeCurrentIsNoticed)
{
    showView();
    view->display();
    EXPECT_TRUE(view->openGLContext().isCurrent());
    QOpenGLContext foreign;
    foreign.setFormat(view->window()->requestedFormat());
    ASSERT_TRUE(foreign.create());
    ASSERT_TRUE(foreign.makeCurrent(view->window()));
    EXPECT_FALSE(view->openGLContext().isCurrent());
    EXPECT_EQ(OpenGLContext::currentContext(), nullptr);
    ASSERT_TRUE(view->openGLContext().makeCurrentContext());
    EXPECT_TRUE(view->openGLContext().isCurrent());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, theLocationOfAnEventIsInPointsFromTheBottomLeft)
{
    showView({320, 240});
    // The lowest row of device pixels has y = 1; with one pixel a point the topmost y = the height.
    const double scale = view->backingScaleFactor();
    const double pixel = 1.0 / scale;
    mouse(QEvent::MouseButtonPress, {10, 240 - pixel}, Qt::LeftButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, {319, 0}, Qt::LeftButton, {});
    ASSERT_GE(view->events.size(), 2u);
    EXPECT_EQ(view->events[0].locationInWindow.x, 10);
    EXPECT_NEAR(view->events[0].locationInWindow.y, 1, 1e-9);
    EXPECT_EQ(view->events[1].locationInWindow.x, 319);
    EXPECT_NEAR(view->events[1].locationInWindow.y, 241 - pixel, 1e-9);
    EXPECT_EQ(view->convertPoint_fromView({10, 1}, nullptr), (Point{10, 1}));
    view->flipped = true;
    EXPECT_EQ(view->convertPoint_fromView({10, 1}, nullptr), (Point{10, 239}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aRealDoubleClickIsTwoPressesAndTwoReleases)
{
    showView();
    const QPoint global = view->window()->mapToGlobal(QPoint(100, 60));
    ASSERT_TRUE(xdotool({"mousemove", QString::number(global.x()), QString::number(global.y()),
                         "click", "--repeat", "2", "--delay", "60", "1"}));
    std::vector<EventType> types;
    std::vector<int> counts;
    const auto collect = [&] {
        types.clear();
        counts.clear();
        for (const Event &event : view->events) {
            if (event.type != EventType::LeftMouseDown && event.type != EventType::LeftMouseUp)
                continue;
            types.push_back(event.type);
            counts.push_back(event.clickCount);
        }
        return types.size() >= 4;
    };
    ASSERT_TRUE(waitUntil(collect));
    EXPECT_TRUE(displayIsSettled());
    collect();
    EXPECT_EQ(types, (std::vector<EventType>{EventType::LeftMouseDown, EventType::LeftMouseUp,
                                             EventType::LeftMouseDown, EventType::LeftMouseUp}));
    EXPECT_EQ(counts, (std::vector<int>{1, 1, 2, 2}));
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aRealClickArrivesOnceAndGivesTheViewTheKeyboard)
{
    showView();
    const QPoint global = view->window()->mapToGlobal(QPoint(100, 60));
    ASSERT_TRUE(xdotool(
        {"mousemove", QString::number(global.x()), QString::number(global.y()), "click", "1"}));
    ASSERT_TRUE(waitUntil([this] {
        return std::count_if(view->events.begin(), view->events.end(), [](const Event &event) {
                   return event.type == EventType::LeftMouseUp;
               }) == 1;
    }));
    EXPECT_TRUE(displayIsSettled());
    std::vector<Event> clicks;
    for (const Event &event : view->events) {
        if (event.type == EventType::LeftMouseDown || event.type == EventType::LeftMouseUp)
            clicks.push_back(event);
    }
    ASSERT_EQ(clicks.size(), 2u);
    EXPECT_EQ(clicks[0].type, EventType::LeftMouseDown);
    EXPECT_EQ(clicks[0].clickCount, 1);
    EXPECT_EQ(clicks[0].locationInWindow, (Point{100, view->bounds().size.height - 60}));
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    // The window manager may give the keyboard to the top-level window in between.
    EXPECT_TRUE(displayIsSettled());
    EXPECT_TRUE(viewHasKeyboard());
    EXPECT_EQ(view->timesFirstResponder, view->timesResigned + 1);

    view->events.clear();
    ASSERT_TRUE(xdotool({"key", "a"}));
    ASSERT_TRUE(waitUntil(
        [this] { return !view->events.empty() && view->events.back().type == EventType::KeyUp; }));
    EXPECT_EQ(view->events.front().type, EventType::KeyDown);
    EXPECT_EQ(view->events.front().characters, u"a");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aRealModifierKeyIsToldAsAChangeOfFlags)
{
    showView();
    container->setFocus();
    // Asking for the focus that it has already keeps it.
    container->setFocus();
    EXPECT_TRUE(displayIsSettled());
    ASSERT_TRUE(waitUntil([this] { return viewHasKeyboard(); }));
    view->events.clear();
    ASSERT_TRUE(xdotool({"keydown", "Control_L"}));
    ASSERT_TRUE(waitUntil([this] { return !view->events.empty(); }));
    EXPECT_EQ(view->events.back().type, EventType::FlagsChanged);
    EXPECT_EQ(view->events.back().modifierFlags, ModifierFlag::Control);
    EXPECT_EQ(view->currentModifierFlags(), ModifierFlag::Control);
    ASSERT_TRUE(xdotool({"keyup", "Control_L"}));
    ASSERT_TRUE(waitUntil([this] { return view->events.back().modifierFlags == 0; }));
    EXPECT_EQ(view->events.back().type, EventType::FlagsChanged);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aRealDragGoesOnOutsideTheWindow)
{
    showView();
    const QPoint inside = view->window()->mapToGlobal(QPoint(10, 10));
    const QPoint outside = view->window()->mapToGlobal(QPoint(-15, 30));
    ASSERT_TRUE(xdotool(
        {"mousemove", QString::number(inside.x()), QString::number(inside.y()), "mousedown", "1"}));
    ASSERT_TRUE(waitUntil([this] {
        return !view->events.empty() && view->events.back().type == EventType::LeftMouseDown;
    }));
    ASSERT_TRUE(xdotool({"mousemove", QString::number(outside.x()), QString::number(outside.y())}));
    ASSERT_TRUE(waitUntil([this] {
        return view->events.back().type == EventType::LeftMouseDragged &&
               view->events.back().locationInWindow.x == -15;
    }));
    ASSERT_TRUE(xdotool({"mouseup", "1"}));
    ASSERT_TRUE(waitUntil([this] { return view->events.back().type == EventType::LeftMouseUp; }));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, theWindowTakesTheCursorOfTheRectangleUnderThePointer)
{
    showView();
    view->cursorRectMaker = [this] {
        view->addCursorRect({{0, 0}, {50, 50}}, QCursor(Qt::CrossCursor));
    };
    view->invalidateCursorRects();
    mouse(QEvent::MouseMove, {10, 230}, Qt::NoButton, {});
    EXPECT_EQ(view->window()->cursor().shape(), Qt::CrossCursor);
    mouse(QEvent::MouseMove, {200, 230}, Qt::NoButton, {});
    EXPECT_EQ(view->window()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, movesBetweenTwoFramesBecomeTheLastOneBeforeTheFrame)
{
    showView();
    mouse(QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    view->events.clear();
    ASSERT_TRUE(waitUntil([this] { return !view->needsDisplay(); }));
    view->setNeedsDisplay(true);
    const int before = view->frames;
    for (int x = 20; x < 60; x += 10)
        mouse(QEvent::MouseMove, {double(x), 10}, Qt::NoButton, Qt::LeftButton);
    EXPECT_TRUE(view->events.empty());
    view->onEvent = [&](const Event &) { EXPECT_EQ(view->frames, before); };
    ASSERT_TRUE(waitUntil([&] { return view->frames > before; }));
    ASSERT_EQ(view->events.size(), 1u);
    EXPECT_EQ(view->events[0].type, EventType::LeftMouseDragged);
    EXPECT_EQ(view->events[0].locationInWindow.x, 50);
    view->onEvent = nullptr;
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, aMoveThatWaitsIsDeliveredBeforeTheReleaseAndBeforeDisplay)
{
    showView();
    mouse(QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    view->setNeedsDisplay(true);
    mouse(QEvent::MouseMove, {20, 10}, Qt::NoButton, Qt::LeftButton);
    view->events.clear();
    mouse(QEvent::MouseButtonRelease, {30, 10}, Qt::LeftButton, {});
    EXPECT_EQ(view->eventTypes(),
              (std::vector<EventType>{EventType::LeftMouseDragged, EventType::LeftMouseUp}));
    mouse(QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    view->setNeedsDisplay(true);
    mouse(QEvent::MouseMove, {20, 10}, Qt::NoButton, Qt::LeftButton);
    view->events.clear();
    view->display();
    EXPECT_EQ(view->eventTypes(), std::vector<EventType>{EventType::LeftMouseDragged});
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewWindow, hidingTheWindowReleasesTheHeldButton)
{
    showView();
    mouse(QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    view->events.clear();
    top->hide();
    ASSERT_TRUE(waitUntil([this] { return !view->events.empty(); }));
    EXPECT_EQ(view->events[0].type, EventType::LeftMouseUp);
    EXPECT_EQ(view->events[0].locationInWindow, (Point{10, view->bounds().size.height - 10}));
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
    EXPECT_NO_GL_ERROR();
}

} // namespace
} // namespace kelo
