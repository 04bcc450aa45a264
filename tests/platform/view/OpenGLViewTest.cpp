#include "platform/view/OpenGLView.h"

#include "platform/time/NotificationCenter.h"
#include "tests/support/DrawingView.h"
#include "tests/support/GLTest.h"
#include "tests/support/WindowTest.h"

#include <QKeyEvent>
#include <QStyleHints>
#include <QWheelEvent>

namespace kelo {
namespace {

using test::DrawingView;

class OpenGLViewWithoutDisplay : public testing::Test
{
protected:
    std::shared_ptr<DrawingView> view = makeView<DrawingView>(Rect{{5, 7}, {200, 100}});
};

TEST_F(OpenGLViewWithoutDisplay, theAutomaticSurfaceOfTheOffscreenPlatformIsSurfaceless)
{
    EXPECT_EQ(OpenGLView::surfaceKind(), SurfaceKind::Surfaceless);
    OpenGLView::setSurfaceKind(SurfaceKind::Window);
    EXPECT_EQ(OpenGLView::surfaceKind(), SurfaceKind::Window);
    OpenGLView::setSurfaceKind(SurfaceKind::Automatic);
}

TEST_F(OpenGLViewWithoutDisplay, askingAboutAViewMakesNoSurface)
{
    const test::TestSurface windows(SurfaceKind::Window);
    DrawingView made(Rect{{0, 0}, {200, 100}});
    const OpenGLView &asked = made;
    EXPECT_EQ(asked.backingScaleFactor(), 1.0) << "the offscreen platform's screen";
    EXPECT_EQ(asked.deviceSize(), (PixelSize{200, 100}));
    EXPECT_EQ(asked.convertSizeToBacking({3, 4}), (Size{3, 4}));
    EXPECT_EQ(asked.convertPointToBacking({3, 4}), (Point{3, 4}));
    EXPECT_EQ(asked.flippedWindowPoint({0, 100}), (Point{0, 0}));
    EXPECT_FALSE(asked.isExposed());
    EXPECT_FALSE(asked.isInFullScreenMode());
    EXPECT_FALSE(asked.hasOpenGLContext());
    EXPECT_EQ(asked.window(), nullptr);
    made.setFrameSize({300, 100});
    made.setSurfacelessScaleFactor(2.0);
    made.setNeedsDisplay(true);
    made.display();
    EXPECT_EQ(made.frames, 0) << "a window that is not there shows nothing";
    EXPECT_TRUE(QGuiApplication::allWindows().isEmpty());

    // So the kind can still be chosen.
    const test::TestSurface buffers(SurfaceKind::Surfaceless);
    EXPECT_TRUE(asked.isExposed());
    EXPECT_EQ(asked.deviceSize(), (PixelSize{600, 200}));
    EXPECT_EQ(made.window(), nullptr);
    EXPECT_EQ(made.grabImage().size(), QSize(600, 200));
    EXPECT_TRUE(QGuiApplication::allWindows().isEmpty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(OpenGLViewWithoutDisplay, aViewKeepsTheSurfaceThatItHas)
{
    view->openGLContext();
    const test::TestSurface windows(SurfaceKind::Window);
    EXPECT_TRUE(view->isExposed());
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_EQ(view->grabImage().size(), QSize(200, 100));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OpenGLViewWithoutDisplay, aNewScaleCallsReshapeBeforeThereIsASurfaceToo)
{
    view->setSurfacelessScaleFactor(1.5);
    EXPECT_EQ(view->reshapes, 1);
    view->setSurfacelessScaleFactor(1.5);
    EXPECT_EQ(view->reshapes, 1);
    EXPECT_EQ(view->deviceSize(), (PixelSize{300, 150}));
}

TEST_F(OpenGLViewWithoutDisplay, theBoundsStartAtTheOriginWithTheFramesSize)
{
    EXPECT_EQ(view->bounds(), (Rect{{0, 0}, {200, 100}}));
    EXPECT_EQ(view->frame().origin, (Point{5, 7}));
}

TEST_F(OpenGLViewWithoutDisplay, aWindowPointIsTheViewsPointUnlessItIsFlipped)
{
    EXPECT_EQ(view->convertPoint_fromView({3, 1}, nullptr), (Point{3, 1}));
    view->flipped = true;
    // The lowest row has y = 1 in the window, so it is row 99 of 100 from the top.
    EXPECT_EQ(view->convertPoint_fromView({3, 1}, nullptr), (Point{3, 99}));
    EXPECT_EQ(view->convertPoint_fromView({3, 100}, nullptr), (Point{3, 0}));
    EXPECT_EQ(view->convertPoint_fromView({3, 4}, view.get()), (Point{3, 4}));
}

TEST_F(OpenGLViewWithoutDisplay, aNewSizeCallsReshapeAsksForARedrawAndPostsIfWanted)
{
    int posts = 0;
    NotificationCenter::defaultCenter().addObserver(
        &posts, [&](const Notification &) { ++posts; }, "viewFrameDidChangeNotification",
        static_cast<OpenGLView *>(view.get()));
    view->setFrameSize({210, 100});
    EXPECT_EQ(view->reshapes, 1);
    EXPECT_EQ(posts, 0);
    EXPECT_TRUE(view->needsDisplay());
    view->postsFrameChangedNotifications = true;
    view->setFrameSize({220, 100});
    EXPECT_EQ(posts, 1);
    NotificationCenter::defaultCenter().removeObserver(&posts);
}

TEST_F(OpenGLViewWithoutDisplay, theSameSizeAgainChangesNothing)
{
    view->setFrameSize({200, 100});
    EXPECT_EQ(view->reshapes, 0);
    EXPECT_FALSE(view->needsDisplay());
}

TEST_F(OpenGLViewWithoutDisplay, aNewScaleCallsReshapeWithTheSameSizeInPoints)
{
    EXPECT_EQ(view->deviceSize(), (PixelSize{200, 100}));
    view->setSurfacelessScaleFactor(1.5);
    EXPECT_EQ(view->reshapes, 1);
    EXPECT_EQ(view->backingScaleFactor(), 1.5);
    EXPECT_EQ(view->bounds().size, (Size{200, 100}));
    EXPECT_EQ(view->deviceSize(), (PixelSize{300, 150}));
    EXPECT_EQ(view->convertPointToBacking({3, 5}), (Point{4.5, 7.5}));
    EXPECT_EQ(view->convertSizeToBacking({1, 1}), (Size{2, 2}));
}

/// A view in a container on the offscreen platform, where the container paints and forwards.
class OpenGLViewInAWidget : public OpenGLViewWithoutDisplay
{
protected:
    OpenGLViewInAWidget()
    {
        container.reset(view->createContainer());
        container->resize(200, 100);
        container->show();
        container->activateWindow();
        EXPECT_TRUE(test::waitUntil([this] { return container->isActiveWindow(); }));
        // The application remembers the modifiers of another test's events.
        mouse(QEvent::MouseMove, {1, 1}, Qt::NoButton, {});
        view->events.clear();
    }
    void mouse(QEvent::Type type, const QPointF &position, Qt::MouseButton button,
               Qt::MouseButtons held, Qt::KeyboardModifiers modifiers = {}, quint64 time = 0)
    {
        QMouseEvent event(type, position, position, position, button, held, modifiers);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(container.get(), &event);
    }
    void press(const QPointF &position, quint64 time, Qt::MouseButton button = Qt::LeftButton)
    {
        mouse(QEvent::MouseButtonPress, position, button, button, {}, time);
        mouse(QEvent::MouseButtonRelease, position, button, {}, {}, time + 10);
    }
    void key(QEvent::Type type, int code, Qt::KeyboardModifiers modifiers = {},
             const QString &text = {}, bool repeats = false)
    {
        QKeyEvent event(type, code, modifiers, text, repeats);
        QCoreApplication::sendEvent(container.get(), &event);
    }
    std::vector<int> clickCountsOfPresses() const
    {
        std::vector<int> counts;
        for (const Event &event : view->events) {
            if (event.type == EventType::LeftMouseDown || event.type == EventType::RightMouseDown)
                counts.push_back(event.clickCount);
        }
        return counts;
    }

    std::unique_ptr<QWidget> container;
};

TEST_F(OpenGLViewInAWidget, theWidgetShowsTheViewsPictureAndGivesItItsSize)
{
    container->resize(120, 80);
    EXPECT_EQ(view->bounds().size, (Size{120, 80}));
    const QImage image = container->grab().toImage();
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(119, 0), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(60, 79), qRgb(255, 0, 0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OpenGLViewInAWidget, aRedrawThatIsAskedForIsPainted)
{
    const int before = view->frames;
    view->setNeedsDisplay(true);
    EXPECT_TRUE(test::waitUntil([&] { return view->frames > before && !view->needsDisplay(); }));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OpenGLViewInAWidget, theWidgetMayOutliveTheViewAndTheViewTheWidget)
{
    auto other = makeView<DrawingView>(Rect{{0, 0}, {20, 20}});
    std::unique_ptr<QWidget> widget(other->createContainer());
    other.reset();
    widget->grab();
    container.reset();
    view->display();
    EXPECT_NO_GL_ERROR();
}

TEST_F(OpenGLViewInAWidget, pressesInTheSamePlaceAndSoonAreCounted)
{
    for (quint64 i = 0; i < 3; ++i)
        press({10, 10}, 1000 + i * 100);
    EXPECT_EQ(clickCountsOfPresses(), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(view->events.back().type, EventType::LeftMouseUp);
    EXPECT_EQ(view->events.back().clickCount, 3);
}

TEST_F(OpenGLViewInAWidget, aLatePressADistantOneAndAnotherButtonBeginToCountAnew)
{
    const auto interval =
        static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    press({10, 10}, 1000);
    press({10, 10}, 1001 + interval);
    press({60, 10}, 1002 + interval);
    press({60, 10}, 1003 + interval, Qt::RightButton);
    EXPECT_EQ(clickCountsOfPresses(), (std::vector<int>{1, 1, 1, 1}));
}

TEST_F(OpenGLViewInAWidget, qtsOwnDoubleClickIsAtLeastTheSecondPress)
{
    mouse(QEvent::MouseButtonDblClick, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    EXPECT_EQ(clickCountsOfPresses(), std::vector<int>{2});
}

TEST_F(OpenGLViewInAWidget, aPressWithControlStaysALeftPressWithTheFlag)
{
    mouse(QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier);
    // The view did not know of the key yet.
    ASSERT_EQ(view->eventTypes(),
              (std::vector<EventType>{EventType::FlagsChanged, EventType::LeftMouseDown}));
    EXPECT_EQ(view->events[0].modifierFlags, ModifierFlag::Control);
    EXPECT_EQ(view->events[1].modifierFlags, ModifierFlag::Control);
}

TEST_F(OpenGLViewInAWidget, modifierKeysAreChangesOfFlagsWhateverTheirOwnEventSays)
{
    // Some platforms count the key's own flag into its event, others do not.
    for (const Qt::KeyboardModifiers own :
         {Qt::KeyboardModifiers(Qt::AltModifier), Qt::KeyboardModifiers()}) {
        view->events.clear();
        key(QEvent::KeyPress, Qt::Key_Alt, own);
        key(QEvent::KeyRelease, Qt::Key_Alt, own);
        ASSERT_EQ(view->eventTypes(),
                  (std::vector<EventType>{EventType::FlagsChanged, EventType::FlagsChanged}));
        EXPECT_EQ(view->events[0].modifierFlags, ModifierFlag::Option);
        EXPECT_EQ(view->events[1].modifierFlags, 0u);
    }
}

TEST_F(OpenGLViewInAWidget, capsLockIsAFlagThatItsKeyTurnsOnAndOff)
{
    key(QEvent::KeyPress, Qt::Key_CapsLock);
    EXPECT_EQ(view->currentModifierFlags(), ModifierFlag::CapsLock);
    key(QEvent::KeyRelease, Qt::Key_CapsLock);
    key(QEvent::KeyPress, Qt::Key_CapsLock);
    EXPECT_EQ(view->currentModifierFlags(), 0u);
}

TEST_F(OpenGLViewInAWidget, keysArriveWithTheirCharacters)
{
    key(QEvent::KeyPress, Qt::Key_A, {}, "a");
    key(QEvent::KeyPress, Qt::Key_A, {}, "a", true);
    key(QEvent::KeyRelease, Qt::Key_A, {}, "a", true);
    key(QEvent::KeyRelease, Qt::Key_A, {}, "a");
    // A repeating key goes up once.
    EXPECT_EQ(view->eventTypes(),
              (std::vector<EventType>{EventType::KeyDown, EventType::KeyDown, EventType::KeyUp}));
    EXPECT_EQ(view->events[0].characters, u"a");
    view->events.clear();
    key(QEvent::KeyPress, Qt::Key_Left);
    ASSERT_EQ(view->events.size(), 1u);
    EXPECT_EQ(view->events[0].characters, std::u16string(1, FunctionKey::LeftArrow));
}

TEST_F(OpenGLViewInAWidget, theWheelScrollsInLines)
{
    QWheelEvent wheel({10, 20}, {10, 20}, {}, {0, 240}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(container.get(), &wheel);
    ASSERT_EQ(view->eventTypes(), std::vector<EventType>{EventType::ScrollWheel});
    EXPECT_EQ(view->events[0].deltaY, 2.0);
    EXPECT_EQ(view->events[0].locationInWindow, (Point{10, 80}));
}

TEST_F(OpenGLViewInAWidget, aReleaseThatWentElsewhereIsMadeUpForAtTheNextMove)
{
    mouse(QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    view->setNeedsDisplay(false);
    view->acceptsMouseMovedEvents = true;
    mouse(QEvent::MouseMove, {30, 10}, Qt::NoButton, {});
    EXPECT_EQ(view->eventTypes(),
              (std::vector<EventType>{EventType::LeftMouseDown, EventType::LeftMouseUp,
                                      EventType::MouseMoved}));
    EXPECT_EQ(view->events[1].locationInWindow, (Point{10, 90}));
    // And a release without a press is none.
    mouse(QEvent::MouseButtonRelease, {30, 10}, Qt::LeftButton, {});
    EXPECT_EQ(view->events.size(), 3u);
}

} // namespace
} // namespace kelo
