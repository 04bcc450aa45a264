#include "keloOpenGL/view/HVOGLBasicView.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QCursor>

#include <string>
#include <vector>

using namespace kelo;
using kelo::test::ViewFixture;

namespace {

using Calls = std::vector<std::string>;

/// Notes the per-button operations; the base forms still run.
class RecordingMouseView : public HVOGLMouseView
{
public:
    RecordingMouseView() : HVOGLMouseView(Rect{{0, 0}, {200, 100}}) {}

    void leftMouseDown(const Event &e) override
    {
        note("leftDown"), HVOGLMouseView::leftMouseDown(e);
    }
    void leftMouseDragged(const Event &) override { note("leftDragged"); }
    void leftMouseUp(const Event &e) override { note("leftUp"), HVOGLMouseView::leftMouseUp(e); }
    void rightMouseDown(const Event &) override { note("rightDown"); }
    void rightMouseDragged(const Event &) override { note("rightDragged"); }
    void rightMouseUp(const Event &e) override { note("rightUp"), HVOGLMouseView::rightMouseUp(e); }
    void otherMouseDown(const Event &) override { note("otherDown"); }
    void otherMouseDragged(const Event &) override { note("otherDragged"); }
    void otherMouseUp(const Event &e) override { note("otherUp"), HVOGLMouseView::otherMouseUp(e); }
    void mouseModeStress() override { note("stress"); }
    long rightMouseMode() const override { return rightMode; }
    long otherMouseMode() const override { return otherMode; }
    long mouseModeForDeviceIndependentBits(std::uint32_t bits) const override
    {
        lastBits = bits;
        return modeForBits;
    }
    QCursor cursorForMouseMode(long mode) const override
    {
        return mode == crossMode ? QCursor(Qt::CrossCursor)
                                 : HVOGLMouseView::cursorForMouseMode(mode);
    }
    void mouseEntered(const Event &) override { note("entered"); }
    void mouseExited(const Event &) override { note("exited"); }
    void mouseMoved(const Event &) override { note("moved"); }

    void note(const std::string &call) { calls.push_back(call); }
    Calls calls;
    long rightMode = -1;
    long otherMode = -1;
    long modeForBits = 9;
    long crossMode = -1;
    mutable std::uint32_t lastBits = 0;
};

/// Notes which handler an operation reaches.
class RecordingBasicView : public HVOGLBasicView
{
public:
    RecordingBasicView() : HVOGLBasicView(Rect{{0, 0}, {200, 100}}) {}

    void rotateMouseDown(const Event &) override { calls.push_back("rotateDown"); }
    void rotateMouseDragged(const Event &) override { calls.push_back("rotateDragged"); }
    void rotateMouseUp(const Event &) override { calls.push_back("rotateUp"); }
    void colorMouseDown(const Event &) override { calls.push_back("colorDown"); }
    void colorMouseDragged(const Event &) override { calls.push_back("colorDragged"); }
    void colorMouseUp(const Event &) override { calls.push_back("colorUp"); }
    void elasticsMouseDown(const Event &) override { calls.push_back("elasticsDown"); }
    void elasticsMouseDragged(const Event &) override { calls.push_back("elasticsDragged"); }
    void elasticsMouseUp(const Event &) override { calls.push_back("elasticsUp"); }
    Calls calls;
};

class MouseView : public ViewFixture
{
protected:
    static Event flags(std::uint32_t bits)
    {
        return eventAt(EventType::FlagsChanged, 10, 10, bits);
    }
    std::shared_ptr<RecordingMouseView> view = makeView<RecordingMouseView>();
    Event down = eventAt(EventType::LeftMouseDown, 10, 10);
    Event drag = eventAt(EventType::LeftMouseDragged, 20, 10);
    Event up = eventAt(EventType::LeftMouseUp, 20, 10);
};

class BasicMouseView : public ViewFixture
{
protected:
    std::shared_ptr<RecordingBasicView> view = makeView<RecordingBasicView>();
    Event event = eventAt(EventType::LeftMouseDown, 10, 10);
};

std::unique_ptr<Menu> modeMenu(const std::string &title)
{
    auto menu = std::make_unique<Menu>(title);
    for (const long tag : {2L, 5L, 6L}) {
        const auto item = menu->addItemWithTitle_actionName_action("mode", "mouseModeAction:", {});
        item->tag = tag;
        item->enabled = false;
    }
    return menu;
}

} // namespace

TEST_F(MouseView, aPressADragAndAReleaseGoToTheLeftOperations)
{
    view->mouseDown(down);
    EXPECT_TRUE(view->mouseIsDown());
    view->mouseDragged(drag);
    view->mouseUp(up);
    EXPECT_FALSE(view->mouseIsDown());
    EXPECT_EQ(view->calls, (Calls{"leftDown", "leftDragged", "leftUp"}));
}

TEST_F(MouseView, aModeCanRoutePlainPressesToTheRightOrTheOtherOperations)
{
    view->rightMode = 7;
    view->otherMode = 8;
    view->setMouseMode(7);
    view->mouseDown(down);
    view->mouseDragged(drag);
    view->mouseUp(up);
    view->setMouseMode(8);
    view->mouseDown(down);
    view->mouseDragged(drag);
    view->mouseUp(up);
    EXPECT_EQ(view->calls, (Calls{"rightDown", "rightDragged", "rightUp", "otherDown",
                                  "otherDragged", "otherUp"}));
}

TEST_F(MouseView, modesAreComparedAs32BitSignedValues)
{
    view->rightMode = -1;
    view->setMouseMode(0xFFFFFFFFL); // as 32 signed bits: -1
    view->mouseDown(down);
    EXPECT_EQ(view->calls, (Calls{"rightDown"}));
}

TEST_F(MouseView, aPressWhileDisabledIsIgnoredWithItsDragAndRelease)
{
    view->setEnabled(false);
    view->mouseDown(down);
    view->mouseDragged(drag);
    view->mouseUp(up);
    EXPECT_EQ(view->calls, Calls{});
    EXPECT_FALSE(view->mouseIsDown());
}

TEST_F(MouseView, pressesStraightToTheRightOperationPassNoEnabledCheck)
{
    view->setEnabled(false);
    view->rightMouseDown(down);
    EXPECT_EQ(view->calls, (Calls{"rightDown"}));
}

TEST_F(MouseView, otherAndDeliveredPressesPassNoEnabledCheckEither)
{
    view->setEnabled(false);
    view->otherMouseDown(down);
    EXPECT_EQ(view->calls, (Calls{"otherDown"}));
    view->calls.clear();
    for (const EventType type : {EventType::OtherMouseDown, EventType::OtherMouseUp,
                                 EventType::RightMouseDown, EventType::RightMouseUp})
        view->sendEvent(eventAt(type, 10, 10));
    EXPECT_EQ(view->calls, (Calls{"entered", "otherDown", "otherUp", "rightDown", "rightUp"}));
}

TEST_F(MouseView, modifiersChangedDuringADragApplyAtItsRelease)
{
    view->setMouseMode(HVOGLBasicView::rotateMode);
    view->mouseDown(down);
    view->flagsChanged(flags(ModifierFlag::Option));
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::rotateMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());

    Event released = up;
    released.modifierFlags = ModifierFlag::Option;
    view->mouseUp(released);
    EXPECT_EQ(view->mouseMode(), 9);
    EXPECT_TRUE(view->mouseModeIsTemporary());
}

TEST_F(MouseView, anotherButtonsReleaseLeavesThePressGoingOn)
{
    view->mouseDown(eventAt(EventType::LeftMouseDown, 10, 10));
    Event otherRelease = eventAt(EventType::RightMouseUp, 10, 10, ModifierFlag::Option);
    view->rightMouseUp(otherRelease);
    EXPECT_TRUE(view->mouseIsDown());
    EXPECT_FALSE(view->mouseModeIsTemporary()) << "modes never change during a drag";
    otherRelease.type = EventType::OtherMouseUp;
    view->otherMouseUp(otherRelease);
    EXPECT_TRUE(view->mouseIsDown());
    view->calls.clear();
    view->mouseDragged(eventAt(EventType::LeftMouseDragged, 20, 10));
    view->mouseUp(eventAt(EventType::LeftMouseUp, 20, 10));
    EXPECT_EQ(view->calls, (Calls{"leftDragged", "leftUp"}));
    EXPECT_FALSE(view->mouseIsDown());
}

TEST_F(MouseView, twoTemporaryModesInARowKeepTheFirstSavedPermanentMode)
{
    view->setMouseMode(HVOGLBasicView::rotateMode);
    view->setTemporaryMouseMode(HVOGLBasicView::colorMode);
    view->setTemporaryMouseMode(HVOGLBasicView::elasticsMode);
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::elasticsMode);
    EXPECT_EQ(view->permanentMouseMode(), HVOGLBasicView::rotateMode);
    view->restorePermanentMouseMode();
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::rotateMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
}

TEST_F(MouseView, restoringWithoutATemporaryModeKeepsTheMode)
{
    view->setMouseMode(HVOGLBasicView::colorMode);
    view->restorePermanentMouseMode();
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::colorMode);
}

TEST_F(MouseView, restoringShowsTheCursorOfThePresentMode)
{
    view->crossMode = 5;
    view->setMouseMode(HVOGLBasicView::colorMode);
    view->setCursor(QCursor(Qt::WaitCursor));
    view->restorePermanentMouseMode();
    EXPECT_EQ(view->cursor().shape(), Qt::CrossCursor) << "no mode was temporary";
    view->setTemporaryMouseMode(HVOGLBasicView::rotateMode);
    view->setCursor(QCursor(Qt::WaitCursor));
    view->restorePermanentMouseMode();
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::colorMode);
    EXPECT_EQ(view->cursor().shape(), Qt::CrossCursor);
}

TEST_F(MouseView, thePointersComingAndGoingIsTracked)
{
    view->sendEvent(eventAt(EventType::MouseMoved, 10, 10));
    EXPECT_EQ(view->calls, (Calls{"entered"}));
    view->sendEvent(eventAt(EventType::MouseMoved, 199, 98));
    EXPECT_EQ(view->calls, (Calls{"entered"})) << "the whole view is one rectangle";
    view->sendEvent(eventAt(EventType::MouseMoved, 230, 10));
    EXPECT_EQ(view->calls, (Calls{"entered", "exited"}));
}

TEST_F(MouseView, theTrackedRectangleAndMouseMovesFollowTheFrame)
{
    EXPECT_TRUE(view->postsFrameChangedNotifications);
    EXPECT_FALSE(view->acceptsMouseMovedEvents);
    view->setFrameSize({400, 100});
    EXPECT_TRUE(view->acceptsMouseMovedEvents);
    view->sendEvent(eventAt(EventType::MouseMoved, 350, 10));
    EXPECT_EQ(view->calls, (Calls{"entered", "moved"}));
    view->sendEvent(eventAt(EventType::MouseMoved, 450, 10));
    EXPECT_EQ(view->calls, (Calls{"entered", "moved", "exited", "moved"}));
}

TEST_F(MouseView, aViewInANewWindowTracksThePointerAnew)
{
    view->sendEvent(eventAt(EventType::MouseMoved, 10, 10));
    view->calls.clear();
    view->viewDidMoveToWindow();
    view->sendEvent(eventAt(EventType::MouseMoved, 11, 10));
    EXPECT_EQ(view->calls, (Calls{"entered"})) << "nobody knows where the pointer is there";
}

TEST_F(MouseView, shiftControlAndCommandNeverAskForATemporaryMode)
{
    for (const std::uint32_t bits :
         {ModifierFlag::Shift, ModifierFlag::Control, ModifierFlag::Command, 0xFFFFu}) {
        view->flagsChanged(flags(bits));
        EXPECT_FALSE(view->mouseModeIsTemporary()) << bits;
    }
}

TEST_F(MouseView, theHookIsHandedTheBitsThatTheMaskKeeps)
{
    // Caps Lock, Option, keypad, help and function survive; Shift, Control and Command do not.
    view->flagsChanged(flags(0x01FFFFFF));
    EXPECT_EQ(view->lastBits, 0x01E90000u);
    EXPECT_TRUE(view->mouseModeIsTemporary());
}

TEST_F(MouseView, confirmingAModeTwiceIsAStress)
{
    view->setMouseMode(HVOGLBasicView::colorMode);
    view->mouseModeAction();
    EXPECT_EQ(view->mouseModeButton(), 5);
    EXPECT_EQ(view->calls, Calls{});
    view->mouseModeAction();
    EXPECT_EQ(view->calls, (Calls{"stress"}));
}

TEST_F(MouseView, everyModeHasTheArrowCursor)
{
    for (const long mode : {0L, 2L, 5L, 6L})
        EXPECT_EQ(view->cursorForMouseMode(mode).shape(), Qt::ArrowCursor);
}

TEST_F(BasicMouseView, theFirstModeIsRotate)
{
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::rotateMode);
}

TEST_F(BasicMouseView, everyButtonReachesTheHandlerOfTheMode)
{
    struct Row
    {
        long mode;
        Calls left;
        Calls right;
    };
    const std::vector<Row> rows = {
        {6,
         {"elasticsDown", "elasticsDragged", "elasticsUp"},
         {"colorDown", "colorDragged", "colorUp"}},
        {5, {"colorDown", "colorDragged", "colorUp"}, {"colorDown", "colorDragged", "colorUp"}},
        {2, {"rotateDown", "rotateDragged", "rotateUp"}, {}},
        {3, {}, {}},
    };
    for (const Row &row : rows) {
        view->setMouseMode(row.mode);
        view->calls.clear();
        view->mouseDown(event);
        view->mouseDragged(event);
        view->mouseUp(event);
        EXPECT_EQ(view->calls, row.left) << "left, mode " << row.mode;
        EXPECT_FALSE(view->mouseIsDown());
        view->calls.clear();
        view->rightMouseDown(event);
        view->rightMouseDragged(event);
        view->rightMouseUp(event);
        EXPECT_EQ(view->calls, row.right) << "right, mode " << row.mode;
        view->calls.clear();
        view->otherMouseDown(event);
        view->otherMouseDragged(event);
        view->otherMouseUp(event);
        EXPECT_EQ(view->calls, Calls{}) << "other, mode " << row.mode;
    }
}

TEST_F(BasicMouseView, theControlFlagAloneNamesTheColourMode)
{
    EXPECT_EQ(view->mouseModeForDeviceIndependentBits(262144), 5);
    EXPECT_EQ(view->mouseModeForDeviceIndependentBits(262144 | ModifierFlag::Option), 2);
    EXPECT_EQ(view->mouseModeForDeviceIndependentBits(0), 2);
}

TEST_F(BasicMouseView, optionMakesThePresentModeTemporaryAndControlDoesNothing)
{
    view->setMouseMode(HVOGLBasicView::elasticsMode);
    view->flagsChanged(eventAt(EventType::FlagsChanged, 1, 1, ModifierFlag::Option));
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::elasticsMode);
    EXPECT_TRUE(view->mouseModeIsTemporary());
    view->flagsChanged(eventAt(EventType::FlagsChanged, 1, 1, ModifierFlag::Control));
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
}

TEST_F(BasicMouseView, theModeMenusCheckMarksFollowTheModeTemporaryOnesToo)
{
    const auto menu = modeMenu("Mode");
    view->setMouseMode(HVOGLBasicView::rotateMode);
    view->setTemporaryMouseMode(HVOGLBasicView::colorMode);
    view->menuNeedsUpdate(*menu);
    for (const long tag : {2L, 5L, 6L}) {
        EXPECT_TRUE(menu->itemWithTag(tag)->enabled) << tag;
        EXPECT_EQ(menu->itemWithTag(tag)->state, tag == 5 ? MenuItemState::On : MenuItemState::Off)
            << tag;
    }
}

TEST_F(BasicMouseView, aMenuWithAnotherTitleIsLeftUntouched)
{
    const auto menu = modeMenu("Modes");
    view->menuNeedsUpdate(*menu);
    for (const long tag : {2L, 5L, 6L}) {
        EXPECT_FALSE(menu->itemWithTag(tag)->enabled);
        EXPECT_EQ(menu->itemWithTag(tag)->state, MenuItemState::Off);
    }
}

TEST_F(BasicMouseView, aMenuRowSetsTheModeOfItsTag)
{
    MenuItem row;
    row.tag = 6;
    view->mouseModeAction(row);
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::elasticsMode);
}

TEST_F(BasicMouseView, confirmingAModeWithoutAMenuRowTakesTheBaseForm)
{
    view->setMouseMode(HVOGLBasicView::colorMode);
    view->mouseModeAction();
    EXPECT_EQ(view->mouseModeButton(), 5);
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::colorMode);
}

TEST_F(BasicMouseView, pointsAreConvertedToRowsCountedFromTheBottomPixel)
{
    // The bottom row of pixels has the window ordinate 1, the top one the height.
    EXPECT_EQ(view->convertPoint_fromView({7.0, 1.0}, nullptr), (Point{7.0, 0.0}));
    EXPECT_EQ(view->convertPoint_fromView({7.0, 100.0}, nullptr), (Point{7.0, 99.0}));
}
