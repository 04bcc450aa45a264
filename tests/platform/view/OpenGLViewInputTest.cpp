#include "platform/view/OpenGLView.h"

#include "platform/time/RunLoop.h"
#include "tests/support/DrawingView.h"

#include <gtest/gtest.h>

#include <QCursor>

namespace kelo {
namespace {

using test::DrawingView;

Event at(EventType type, double x, double y, std::uint32_t flags = 0)
{
    Event event;
    event.type = type;
    event.locationInWindow = {x, y};
    event.modifierFlags = flags;
    event.clickCount = 1;
    return event;
}

class OpenGLViewEvents : public testing::Test
{
protected:
    DrawingView view{Rect{{0, 0}, {100, 100}}};
};

TEST_F(OpenGLViewEvents, eachTypeReachesItsOwnOperation)
{
    view.acceptsMouseMovedEvents = true;
    const std::vector<EventType> all{
        EventType::LeftMouseDown,  EventType::LeftMouseDragged,  EventType::LeftMouseUp,
        EventType::RightMouseDown, EventType::RightMouseDragged, EventType::RightMouseUp,
        EventType::OtherMouseDown, EventType::OtherMouseDragged, EventType::OtherMouseUp,
        EventType::MouseMoved,     EventType::MouseEntered,      EventType::MouseExited,
        EventType::ScrollWheel,    EventType::FlagsChanged,      EventType::KeyDown,
        EventType::KeyUp};
    for (EventType type : all)
        view.sendEvent(at(type, 10, 10));
    EXPECT_EQ(view.eventTypes(), all);
}

TEST_F(OpenGLViewEvents, movesWithoutAButtonAreDeliveredOnlyWhereAccepted)
{
    view.sendEvent(at(EventType::MouseMoved, 10, 10));
    EXPECT_TRUE(view.events.empty());
    view.acceptsMouseMovedEvents = true;
    view.sendEvent(at(EventType::MouseMoved, 11, 10));
    EXPECT_EQ(view.events.size(), 1u);
}

TEST_F(OpenGLViewEvents, theRunLoopTracksEventsWhileAButtonIsHeld)
{
    RunLoop &loop = RunLoop::main();
    std::vector<RunLoopMode> modes;
    view.onEvent = [&](const Event &) { modes.push_back(loop.currentMode()); };
    view.sendEvent(at(EventType::LeftMouseDown, 10, 10));
    EXPECT_EQ(loop.currentMode(), RunLoopMode::EventTracking);
    view.sendEvent(at(EventType::RightMouseDown, 10, 10));
    view.sendEvent(at(EventType::LeftMouseUp, 10, 10));
    EXPECT_EQ(loop.currentMode(), RunLoopMode::EventTracking);
    view.sendEvent(at(EventType::RightMouseUp, 10, 10));
    EXPECT_EQ(loop.currentMode(), RunLoopMode::Default);
    EXPECT_EQ(modes, std::vector<RunLoopMode>(4, RunLoopMode::EventTracking));
}

TEST_F(OpenGLViewEvents, aViewThatEndsWithAButtonHeldEndsTheTracking)
{
    {
        DrawingView other(Rect{{0, 0}, {10, 10}});
        other.sendEvent(at(EventType::LeftMouseDown, 1, 1));
        EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::EventTracking);
    }
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
}

TEST_F(OpenGLViewEvents, aReleaseWhileAnAlertIsUpLeavesTheAlertsModeInForce)
{
    RunLoop &loop = RunLoop::main();
    view.sendEvent(at(EventType::LeftMouseDown, 10, 10));
    {
        const RunLoop::ModeScope alert(loop, RunLoopMode::ModalPanel);
        view.sendEvent(at(EventType::LeftMouseUp, 10, 10));
        EXPECT_EQ(loop.currentMode(), RunLoopMode::ModalPanel);
    }
    EXPECT_EQ(loop.currentMode(), RunLoopMode::Default);
}

TEST_F(OpenGLViewEvents, aLostMouseReleasesEveryHeldButtonAtTheLastPlace)
{
    view.sendEvent(at(EventType::LeftMouseDown, 10, 10));
    view.sendEvent(at(EventType::OtherMouseDown, 20, 20));
    view.sendEvent(at(EventType::LeftMouseDragged, 30, 40, ModifierFlag::Shift));
    view.events.clear();
    view.mouseCaptureLost();
    ASSERT_EQ(view.eventTypes(),
              (std::vector<EventType>{EventType::LeftMouseUp, EventType::OtherMouseUp}));
    for (const Event &event : view.events) {
        EXPECT_EQ(event.locationInWindow, (Point{30, 40}));
        EXPECT_EQ(event.modifierFlags, ModifierFlag::Shift);
        EXPECT_EQ(event.clickCount, 0) << "nobody clicked";
    }
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
    view.mouseCaptureLost();
    EXPECT_EQ(view.events.size(), 2u);
}

TEST_F(OpenGLViewEvents, theModifierFlagsAreThoseOfTheLastEvent)
{
    view.sendEvent(at(EventType::FlagsChanged, 0, 0, ModifierFlag::Option));
    EXPECT_EQ(view.currentModifierFlags(), ModifierFlag::Option);
    view.sendEvent(at(EventType::KeyUp, 0, 0));
    EXPECT_EQ(view.currentModifierFlags(), 0u);
}

TEST_F(OpenGLViewEvents, enteringAndLeavingATrackingRectangleIsTold)
{
    const int tag = view.addTrackingRect({{20, 20}, {30, 30}}, false);
    EXPECT_NE(tag, 0);
    view.sendEvent(at(EventType::MouseMoved, 10, 10));
    EXPECT_TRUE(view.events.empty());
    view.sendEvent(at(EventType::MouseMoved, 20, 20));
    view.sendEvent(at(EventType::MouseMoved, 30, 30));
    view.sendEvent(at(EventType::MouseMoved, 50, 30));
    EXPECT_EQ(view.eventTypes(),
              (std::vector<EventType>{EventType::MouseEntered, EventType::MouseExited}));
    view.removeTrackingRect(tag);
    view.sendEvent(at(EventType::MouseMoved, 30, 30));
    EXPECT_EQ(view.events.size(), 2u);
}

TEST_F(OpenGLViewEvents, aTrackingRectangleAssumedInsideTellsTheLeavingFirst)
{
    view.addTrackingRect({{20, 20}, {30, 30}}, true);
    view.sendEvent(at(EventType::MouseMoved, 30, 30));
    EXPECT_TRUE(view.events.empty());
    view.sendEvent(at(EventType::MouseMoved, 10, 10));
    EXPECT_EQ(view.eventTypes(), std::vector<EventType>{EventType::MouseExited});
}

TEST_F(OpenGLViewEvents, trackingRectanglesAreInTheViewsCoordinates)
{
    view.flipped = true;
    view.addTrackingRect({{0, 0}, {100, 10}}, false);
    view.sendEvent(at(EventType::MouseMoved, 50, 95));
    EXPECT_EQ(view.eventTypes(), std::vector<EventType>{EventType::MouseEntered});
}

TEST_F(OpenGLViewEvents, aHandlerMayReplaceTheTrackingRectangle)
{
    int tag = view.addTrackingRect({{0, 0}, {50, 50}}, false);
    view.onEvent = [&](const Event &) {
        view.removeTrackingRect(tag);
        tag = view.addTrackingRect({{0, 0}, {50, 50}}, true);
    };
    view.sendEvent(at(EventType::MouseMoved, 10, 10));
    EXPECT_EQ(view.eventTypes(), std::vector<EventType>{EventType::MouseEntered});
}

TEST_F(OpenGLViewEvents, theCursorIsThatOfTheRectangleThatThePointerGoesInto)
{
    view.cursorRectMaker = [this] {
        view.addCursorRect({{0, 0}, {50, 100}}, QCursor(Qt::CrossCursor));
    };
    view.invalidateCursorRects();
    view.sendEvent(at(EventType::MouseMoved, 10, 10));
    EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
    // One that is set by hand stays until the pointer changes rectangles.
    view.setCursor(QCursor(Qt::WaitCursor));
    view.sendEvent(at(EventType::MouseMoved, 12, 10));
    EXPECT_EQ(view.cursor().shape(), Qt::WaitCursor);
    view.sendEvent(at(EventType::MouseMoved, 60, 10));
    EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(OpenGLViewEvents, newCursorRectanglesTakeEffectUnderARestingPointer)
{
    view.sendEvent(at(EventType::MouseMoved, 10, 10));
    view.cursorRectMaker = [this] {
        view.addCursorRect(view.bounds(), QCursor(Qt::PointingHandCursor));
    };
    view.invalidateCursorRects();
    EXPECT_EQ(view.cursor().shape(), Qt::PointingHandCursor);
}

} // namespace
} // namespace kelo
