#include "keloOpenGL/treatment/DXOpenGL.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QCursor>

#include <cmath>
#include <limits>

using namespace kelo;
using kelo::test::ViewFixture;

namespace {

class DXOpenGLInput : public ViewFixture
{
protected:
    DXOpenGLInput() { view->display(); }

    void drag(double fromX, double fromY, double toX, double toY)
    {
        view->sendEvent(eventAt(EventType::LeftMouseDown, fromX, fromY));
        view->sendEvent(eventAt(EventType::LeftMouseDragged, toX, toY));
    }
    void release(double x, double y) { view->sendEvent(eventAt(EventType::LeftMouseUp, x, y)); }

    Event scroll(double deltaX, double deltaY)
    {
        Event event = eventAt(EventType::ScrollWheel, 10, 10);
        event.deltaX = deltaX;
        event.deltaY = deltaY;
        return event;
    }

    /// The view's turn from the front, in degrees, positive with the patient's left to the front.
    double turn() const
    {
        const auto &r = view->worldRotation();
        const Quaternion q =
            Quaternion_fromAxisAngle(Vector3{r[1], r[2], r[3]}, r[0] * 3.1415927f / 180.0f);
        const Vector3 front = Quaternion_multiplyVector3(q, Vector3{0, -1, 0});
        return std::atan2(front.x, front.z) * 180.0 / 3.14159265358979;
    }

    /// 400 by 200 points: 180 / 200 = 0.9 degrees a point.
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0, 0}, {400, 200}});
};

} // namespace

TEST_F(DXOpenGLInput, aDragAcrossTurnsTheJawsByTheShorterSidesScale)
{
    drag(100, 100, 150, 100);
    EXPECT_NEAR(turn(), 45.0, 1e-3);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDragBeforeTheFirstDrawingGoesByTheBounds)
{
    view = makeView<DXOpenGL>(Rect{{0, 0}, {400, 200}});
    drag(100, 100, 150, 100);
    EXPECT_NEAR(turn(), 45.0, 1e-3);
    view->display();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDragInAViewWithoutAreaTurnsNothing)
{
    view = makeView<DXOpenGL>(Rect{{0, 0}, {0, 0}});
    drag(1, 1, 5, 9);
    EXPECT_NEAR(turn(), 0.0, 1e-4);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    view->makeCurrentContextIfNeeded();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDragDownwardsOpensTheMouth)
{
    drag(100, 100, 100, 60);
    EXPECT_NEAR(view->mouthOpenAngle(), 36.0f, 1e-4f);
    EXPECT_NEAR(turn(), 0.0, 1e-4);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, everyDragCountsFromThePointOfTheOneBefore)
{
    drag(100, 100, 110, 90);
    view->sendEvent(eventAt(EventType::LeftMouseDragged, 120, 80));
    EXPECT_NEAR(turn(), 18.0, 1e-3);
    EXPECT_NEAR(view->mouthOpenAngle(), 18.0f, 1e-4f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aMouthWithin22DegreesSnapsShutInAQuarterOfASecond)
{
    drag(100, 100, 100, 80); // 18 degrees
    release(100, 80);
    EXPECT_TRUE(view->isAnimatingMouthOpenAngle());
    clock->advance(0.2);
    EXPECT_GT(view->mouthOpenAngle(), 0.0f);
    clock->advance(0.1);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, anotherButtonsPressAndReleaseDoNotEndADrag)
{
    for (const long mode : {2L, 5L, 6L}) {
        view = makeView<DXOpenGL>(Rect{{0, 0}, {400, 200}});
        view->display();
        view->setMouseMode(mode);
        drag(2, 100, 2, 83);
        ASSERT_NEAR(view->mouthOpenAngle(), 15.3f, 1e-4f) << mode;
        view->sendEvent(eventAt(EventType::RightMouseDown, 2, 83));
        view->sendEvent(eventAt(EventType::RightMouseUp, 2, 83));
        clock->advance(1.0);
        EXPECT_NEAR(view->mouthOpenAngle(), 15.3f, 1e-4f) << mode << ": it is still held open";
        EXPECT_TRUE(view->isRotating());
        EXPECT_TRUE(view->mouseIsDown());
        view->sendEvent(eventAt(EventType::LeftMouseDragged, 12, 83));
        EXPECT_NEAR(turn(), 9.0, 1e-3) << mode << ": the drag goes on";
        release(12, 83);
        clock->advance(1.0);
        EXPECT_EQ(view->mouthOpenAngle(), 0.0f) << mode << ": let go of, it shuts";
        EXPECT_FALSE(view->isRotating());
        EXPECT_FALSE(view->mouseIsDown());
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDragOfTheRightButtonIsNotTheLeftOnes)
{
    view->setMouseMode(DXOpenGL::elasticsMode);
    view->sendEvent(eventAt(EventType::RightMouseDown, 2, 100));
    view->sendEvent(eventAt(EventType::LeftMouseDown, 50, 100));
    view->sendEvent(eventAt(EventType::LeftMouseDragged, 90, 100));
    EXPECT_NEAR(turn(), 0.0, 1e-3);
    view->sendEvent(eventAt(EventType::RightMouseDragged, 2, 83));
    EXPECT_NEAR(view->mouthOpenAngle(), 15.3f, 1e-4f);
    release(90, 100);
    clock->advance(1.0);
    EXPECT_NEAR(view->mouthOpenAngle(), 15.3f, 1e-4f);
    EXPECT_TRUE(view->isRotating());
    view->sendEvent(eventAt(EventType::RightMouseUp, 2, 83));
    clock->advance(1.0);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    EXPECT_FALSE(view->isRotating());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aMouthLeftAt22DegreesOrMoreStaysOpen)
{
    view->setMouthOpenAngle(22.0f);
    view->snapMouthClosedIfNeeded();
    EXPECT_FALSE(view->isAnimatingMouthOpenAngle());
    view->setMouthOpenAngle(-22.0f);
    view->snapMouthClosedIfNeeded();
    EXPECT_FALSE(view->isAnimatingMouthOpenAngle());
    view->setMouthOpenAngle(-21.9f);
    view->snapMouthClosedIfNeeded();
    EXPECT_TRUE(view->isAnimatingMouthOpenAngle());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDragThatBeginsOnNothingTurnsTheJawsInTheOtherModesToo)
{
    for (const long mode : {5L, 6L}) {
        view->setMouseMode(mode);
        drag(2, 2, 12, 2);
        EXPECT_NEAR(turn(), 9.0, 1e-3);
        view->sendEvent(eventAt(EventType::LeftMouseDragged, 2, 2));
        release(2, 2);
        EXPECT_NEAR(turn(), 0.0, 1e-3);
        view->sendEvent(eventAt(EventType::LeftMouseDragged, 12, 2));
        EXPECT_NEAR(turn(), 0.0, 1e-3) << "the drag has ended with the release";
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDragWithoutAPressTurnsNothingInTheOtherModes)
{
    for (const long mode : {5L, 6L}) {
        view->setMouseMode(mode);
        view->sendEvent(eventAt(EventType::LeftMouseDragged, 150, 60));
        release(150, 60);
        EXPECT_NEAR(turn(), 0.0, 1e-4);
        EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aHorizontalScrollTurnsByTwoDegreesALineTheOtherWay)
{
    view->sendEvent(scroll(-3.0, 0.0));
    EXPECT_NEAR(turn(), 6.0, 1e-3);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aScrollTo15DegreesSnapsShutAfterHalfASecond)
{
    view->sendEvent(scroll(0.0, -7.5));
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 15.0f);
    clock->advance(0.49);
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 15.0f);
    clock->advance(0.3);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aVerticalScrollThatLeavesTheMouthAt30DegreesKeepsItOpen)
{
    view->sendEvent(scroll(0.0, -15.0));
    clock->advance(2.0);
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 30.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, theHalfSecondCountsFromTheLastScroll)
{
    view->sendEvent(scroll(0.0, -5.0));
    clock->advance(0.4);
    view->sendEvent(scroll(0.0, -1.0));
    clock->advance(0.4);
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 12.0f);
    clock->advance(0.4);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aHorizontalScrollStartsNoSnapping)
{
    view->setMouthOpenAngle(15.0f);
    view->sendEvent(scroll(-3.0, 0.0));
    clock->advance(2.0);
    EXPECT_EQ(view->mouthOpenAngle(), 15.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aScrollInBothDirectionsTurnsAndOpensAtOnce)
{
    view->sendEvent(scroll(-3.0, -15.0));
    EXPECT_NEAR(turn(), 6.0, 1e-3);
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 30.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, everyScrollAsksForARedrawAndNoneDoesNot)
{
    for (const auto &[deltaX, deltaY] : {std::pair{1.0, 0.0}, {0.0, 1.0}}) {
        view->setNeedsDisplay(false);
        view->sendEvent(scroll(deltaX, deltaY));
        EXPECT_TRUE(view->needsDisplay());
    }
    view->setNeedsDisplay(false);
    view->sendEvent(scroll(0.0, 0.0));
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDeltaThatIsNotANumberIsATurnAndZeroLeadsBack)
{
    view->setNeedsDisplay(false);
    view->sendEvent(scroll(std::numeric_limits<double>::quiet_NaN(), 0.0));
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_TRUE(std::isnan(view->worldRotation()[0]));
    view->display();
    view->sendEvent(keyEvent(u"0"));
    clock->advance(1.0);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{90.0f, -1.0f, 0.0f, 0.0f}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, theArrowKeysStepTheMouthBetweenClosedAndOpen)
{
    struct Row
    {
        float from;
        const char16_t *key;
        float to;
    };
    const Row rows[] = {
        {0.0f, u"\xF701", 45.0f},    {45.0f, u"\xF701", 45.0f}, {-10.0f, u"\xF701", 45.0f},
        {-10.5f, u"\xF701", 0.0f},   {-45.0f, u"\xF701", 0.0f}, {0.0f, u"\xF700", -45.0f},
        {10.0f, u"\xF700", -45.0f},  {10.5f, u"\xF700", 0.0f},  {45.0f, u"\xF700", 0.0f},
        {-45.0f, u"\xF700", -45.0f},
    };
    for (const Row &row : rows) {
        view->setMouthOpenAngle(row.from);
        view->sendEvent(keyEvent(row.key));
        clock->advance(1.0);
        EXPECT_EQ(view->mouthOpenAngle(), row.to) << "from " << row.from;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, theLeftAndRightArrowsTurnBy45DegreesUpToProfile)
{
    const auto press = [this](const char16_t *key) {
        view->sendEvent(keyEvent(key));
        clock->advance(1.0);
    };
    press(u"\xF703");
    EXPECT_NEAR(turn(), 45.0, 1e-2);
    press(u"\xF703");
    EXPECT_NEAR(turn(), 90.0, 1e-1);
    press(u"\xF703");
    EXPECT_NEAR(turn(), 90.0, 1e-1);
    press(u"\xF702");
    EXPECT_NEAR(turn(), 45.0, 1e-1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, theLeftArrowTurnsTheOtherWayFromTheFront)
{
    view->sendEvent(keyEvent(u"\xF702"));
    clock->advance(1.0);
    EXPECT_NEAR(turn(), -45.0, 1e-2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, theFirstOfSeveralCharactersDecides)
{
    view->sendEvent(keyEvent(u"x\xF701"));
    clock->advance(1.0);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    view->sendEvent(keyEvent(u"\xF701x"));
    clock->advance(1.0);
    EXPECT_EQ(view->mouthOpenAngle(), 45.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aModifierChangeShowsTheCursorOfTheModeWhereThePointerIs)
{
    const auto changeFlags = [this](std::uint32_t flags, double x) {
        view->setCursor(QCursor(Qt::WaitCursor));
        view->sendEvent(eventAt(EventType::FlagsChanged, x, 10, flags));
        return view->cursor().shape();
    };
    view->setMouseMode(DXOpenGL::elasticsMode);
    EXPECT_EQ(changeFlags(ModifierFlag::Control, 10), Qt::PointingHandCursor);
    EXPECT_EQ(changeFlags(0, 10), Qt::CrossCursor);
    view->setMouseMode(DXOpenGL::rotateMode);
    EXPECT_EQ(changeFlags(ModifierFlag::Control, 10), Qt::ArrowCursor);
    EXPECT_EQ(changeFlags(ModifierFlag::Control, 500), Qt::WaitCursor) << "outside the view";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aModeChangeShowsItsCursorUnderARestingPointer)
{
    view->sendEvent(eventAt(EventType::MouseMoved, 10, 10));
    for (const auto &[mode, shape] :
         {std::pair{6L, Qt::CrossCursor}, {5L, Qt::PointingHandCursor}, {2L, Qt::ArrowCursor}}) {
        view->setMouseMode(mode);
        EXPECT_EQ(view->cursor().shape(), shape) << mode;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, zeroGoesBackToTheFrontWithTheMouthClosed)
{
    view->rotateByDegrees(50.0f);
    view->setMouthOpenAngle(40.0f);
    view->sendEvent(keyEvent(u"0"));
    clock->advance(1.0);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{90.0f, -1.0f, 0.0f, 0.0f}));
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, otherKeysAndEmptyCharactersChangeNothing)
{
    view->setNeedsDisplay(false);
    view->sendEvent(keyEvent(u"x"));
    view->sendEvent(keyEvent(u""));
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aChangedMeshOfItsDocumentAsksForARedraw)
{
    const auto document = test::boxDocument();
    view->setDocumentModel(document);
    view->setNeedsDisplay(false);
    document->toothModels().at("8")->setHiddenPrimary(true);
    EXPECT_TRUE(view->needsDisplay());
    view->setNeedsDisplay(false);
    test::boxModel({0, 0, 0}, {1, 1, 1})->setHiddenPrimary(true);
    EXPECT_FALSE(view->needsDisplay()) << "a mesh that it does not show";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLInput, aDestroyedViewNeitherHearsOfMeshesNorOfItsTimers)
{
    const auto document = test::boxDocument();
    view->setDocumentModel(document);
    view->sendEvent(scroll(0.0, -5.0));
    const std::weak_ptr<DXOpenGL> gone = view;
    view.reset();
    EXPECT_TRUE(gone.expired());
    document->toothModels().at("8")->setHiddenPrimary(true);
    clock->advance(2.0);
}
