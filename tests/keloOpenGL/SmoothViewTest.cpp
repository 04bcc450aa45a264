#include "base/Assertion.h"
#include "keloOpenGL/view/HVOGLSmoothView.h"
#include "platform/time/QtRunLoop.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <cmath>
#include <functional>
#include <limits>

using namespace kelo;
using kelo::test::ViewFixture;

namespace {

constexpr double tick = 0.01666666753590107;

class SlowView : public HVOGLSmoothView
{
public:
    SlowView() : HVOGLSmoothView(Rect{{0, 0}, {200, 100}}) {}
    using HVOGLSmoothView::setLastRenderingTime;
};

class SmoothView : public ViewFixture
{
protected:
    /// The smoothstep curve as it is defined, on the progress of `ticks` ticks.
    static double eased(int ticks, double duration)
    {
        const double p = ticks * tick / duration;
        return 3 * p * p - 2 * p * p * p;
    }

    void advanceTicks(int count)
    {
        // A little more than the tick, since repeated sums of it round.
        clock->advance(count * tick + (counted == 0 ? 1e-6 : 0.0));
        counted += count;
    }

    std::shared_ptr<SlowView> view = makeView<SlowView>();
    int counted = 0;
};

} // namespace

TEST_F(SmoothView, requestingThePresentOrientationCentreOrAngleStartsNothing)
{
    view->setTargetWorldRotationAngle_axis(90.0, -1.0, 0.0, 0.0);
    view->setTargetWorldCenterData(view->worldCenterData());
    view->setTargetMouthOpenAngle(0.0f);
    EXPECT_FALSE(view->isAnimatingWorldRotation());
    EXPECT_FALSE(view->isAnimatingWorldCenter());
    EXPECT_FALSE(view->isAnimatingMouthOpenAngle());
    EXPECT_FALSE(view->animationTimerIsRunning());
}

TEST_F(SmoothView, theMouthOpensAlongTheSmoothstepCurveAndLandsOnItsTarget)
{
    view->setTargetMouthOpenAngle(40.0f);
    advanceTicks(10);
    EXPECT_NEAR(view->mouthOpenAngle(), 40.0 * eased(10, 0.75), 1e-3);
    advanceTicks(20);
    EXPECT_NEAR(view->mouthOpenAngle(), 40.0 * eased(30, 0.75), 1e-3);
    advanceTicks(20);
    EXPECT_EQ(view->mouthOpenAngle(), 40.0f);
    EXPECT_FALSE(view->isAnimatingMouthOpenAngle());
    EXPECT_TRUE(view->animationTimerIsRunning());
}

TEST_F(SmoothView, everyStepOfEveryTransitionAsksForARedraw)
{
    struct Row
    {
        const char *name;
        std::function<void()> start;
        std::function<bool()> isRunning;
    };
    const Row rows[] = {
        {"rotation", [&] { view->setTargetWorldRotationAngle_axis(60.0, 0.0, 0.0, 1.0); },
         [&] { return view->isAnimatingWorldRotation(); }},
        {"centre",
         [&] {
             view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
         },
         [&] { return view->isAnimatingWorldCenter(); }},
        {"mouth", [&] { view->setTargetMouthOpenAngle(30.0f); },
         [&] { return view->isAnimatingMouthOpenAngle(); }},
    };
    for (const Row &row : rows) {
        row.start();
        int steps = 0;
        while (row.isRunning()) {
            view->setNeedsDisplay(false);
            advanceTicks(1);
            ASSERT_TRUE(view->needsDisplay()) << row.name << ", step " << steps;
            ++steps;
        }
        EXPECT_GE(steps, 45) << row.name;
        view->setNeedsDisplay(false);
        advanceTicks(1);
        EXPECT_FALSE(view->needsDisplay()) << row.name << " is over";
    }
}

TEST_F(SmoothView, theRenderingTimeCountsForEveryStep)
{
    view->setLastRenderingTime(0.05);
    view->setTargetMouthOpenAngle(40.0f);
    view->setTargetWorldCenterData(packed(Vector3{10.0f, 0.0f, 0.0f}));
    view->setTargetWorldRotationAngle_axis(60.0, 0.0, 0.0, 1.0);
    advanceTicks(3);
    // Three ticks and three times the rendering time: 0.2 of 0.75 seconds.
    const double p = (3 * tick + 3 * 0.05) / 0.75;
    const double weight = 3 * p * p - 2 * p * p * p;
    EXPECT_NEAR(view->mouthOpenAngle(), 40.0 * weight, 1e-3);
    EXPECT_NEAR(view->worldCenter().x, 10.0 * weight, 1e-4);
    advanceTicks(9);
    EXPECT_FALSE(view->isAnimatingWorldRotation());
}

TEST_F(SmoothView, theTimerKeepsTickingAtRestUntilTheViewGoes)
{
    view->setTargetMouthOpenAngle(40.0f);
    clock->advance(60.0);
    EXPECT_FALSE(view->isAnimatingMouthOpenAngle());
    EXPECT_TRUE(view->animationTimerIsRunning());
    EXPECT_FALSE(view->animationTimerStopsAtRest());
}

TEST_F(SmoothView, aHostCanHaveTheTimerStopAtRest)
{
    view->setAnimationTimerStopsAtRest(true);
    view->setTargetMouthOpenAngle_duration(40.0f, 0.25);
    view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    advanceTicks(20);
    EXPECT_FALSE(view->isAnimatingMouthOpenAngle());
    EXPECT_TRUE(view->animationTimerIsRunning()) << "the centre still moves";
    advanceTicks(26);
    EXPECT_EQ(view->worldCenter().z, 3.0f);
    EXPECT_FALSE(view->animationTimerIsRunning());
}

TEST_F(SmoothView, aTransitionFromRestIsTheSameWithAndWithoutTicks)
{
    for (const bool stops : {false, true}) {
        view = makeView<SlowView>();
        counted = 0;
        view->setAnimationTimerStopsAtRest(stops);
        view->setTargetMouthOpenAngle(10.0f);
        advanceTicks(600);
        ASSERT_EQ(view->animationTimerIsRunning(), !stops);
        view->setTargetMouthOpenAngle(40.0f);
        EXPECT_TRUE(view->animationTimerIsRunning());
        advanceTicks(1);
        EXPECT_NEAR(view->mouthOpenAngle(), 10.0 + 30.0 * eased(1, 0.75), 1e-3) << stops;
        advanceTicks(19);
        EXPECT_NEAR(view->mouthOpenAngle(), 10.0 + 30.0 * eased(20, 0.75), 1e-3) << stops;
        advanceTicks(26);
        EXPECT_EQ(view->mouthOpenAngle(), 40.0f);
    }
}

TEST_F(SmoothView, aMouthTransitionTakesTheDurationThatIsGiven)
{
    view->setTargetMouthOpenAngle_duration(40.0f, 0.25);
    advanceTicks(5);
    EXPECT_NEAR(view->mouthOpenAngle(), 40.0 * eased(5, 0.25), 1e-3);
    advanceTicks(11);
    EXPECT_EQ(view->mouthOpenAngle(), 40.0f);
}

TEST_F(SmoothView, aTransitionAfterALongIdleTimeStartsAtItsBeginning)
{
    clock->advance(3600.0);
    view->setTargetMouthOpenAngle(40.0f);
    advanceTicks(1);
    EXPECT_NEAR(view->mouthOpenAngle(), 40.0 * eased(1, 0.75), 1e-3);
}

TEST_F(SmoothView, aMouthTargetOf70DegreesAnimatesTo70)
{
    view->setTargetMouthOpenAngle(70.0f);
    clock->advance(1.0);
    EXPECT_EQ(view->mouthOpenAngle(), 70.0f);
}

TEST_F(SmoothView, onlySetMouthOpenAngleClamps)
{
    view->setTargetMouthOpenAngle(-60.0f);
    clock->advance(1.0);
    EXPECT_EQ(view->mouthOpenAngle(), -60.0f);
    view->setMouthOpenAngle(70.0f);
    EXPECT_EQ(view->mouthOpenAngle(), 55.0f);
    view->setMouthOpenAngle(-70.0f);
    EXPECT_EQ(view->mouthOpenAngle(), -55.0f);
}

TEST_F(SmoothView, aDurationOfZeroEndsWithTheFirstTick)
{
    view->setTargetMouthOpenAngle_duration(20.0f, 0.0);
    advanceTicks(1);
    EXPECT_EQ(view->mouthOpenAngle(), 20.0f);
    EXPECT_FALSE(view->isAnimatingMouthOpenAngle());
}

TEST_F(SmoothView, anotherTargetRestartsFromThePresentValue)
{
    view->setTargetMouthOpenAngle(40.0f);
    advanceTicks(20);
    const double reached = 40.0 * eased(20, 0.75);
    ASSERT_NEAR(view->mouthOpenAngle(), reached, 1e-3);
    view->setTargetMouthOpenAngle(-10.0f);
    advanceTicks(10);
    const double weight = eased(10, 0.75);
    EXPECT_NEAR(view->mouthOpenAngle(), reached * (1 - weight) - 10.0 * weight, 1e-3);
}

TEST_F(SmoothView, anotherOrientationRestartsFromTheOneReached)
{
    view->setWorldRotationAngle_axis(20.0, 0.0, 0.0, 1.0);
    view->setTargetWorldRotationAngle_axis(110.0, 0.0, 0.0, 1.0);
    advanceTicks(20);
    const double reached = 20.0 + 90.0 * eased(20, 0.75);
    ASSERT_NEAR(view->worldRotation()[0], reached, 1e-2);
    view->setTargetWorldRotationAngle_axis(30.0, 0.0, 0.0, 1.0);
    EXPECT_NEAR(view->worldRotation()[0], reached, 1e-2) << "no jump";
    advanceTicks(10);
    const double weight = eased(10, 0.75);
    EXPECT_NEAR(view->worldRotation()[0], reached * (1 - weight) + 30.0 * weight, 2e-2);
    advanceTicks(45);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{30.0f, 0.0f, 0.0f, 1.0f}));
}

TEST_F(SmoothView, aDifferentCentreRestartsFromTheOneReachedWithProgressZero)
{
    view->setTargetWorldCenterData(packed(Vector3{10.0f, 20.0f, -30.0f}));
    advanceTicks(20);
    const double reached = 10.0 * eased(20, 0.75);
    ASSERT_NEAR(view->worldCenter().x, reached, 1e-4);
    view->setTargetWorldCenterData(packed(Vector3{-4.0f, 0.0f, 0.0f}));
    EXPECT_NEAR(view->worldCenter().x, reached, 1e-4) << "no jump";
    advanceTicks(10);
    const double weight = eased(10, 0.75);
    EXPECT_NEAR(view->worldCenter().x, reached * (1 - weight) - 4.0 * weight, 1e-4);
    advanceTicks(45);
    EXPECT_EQ(view->worldCenterData(), packed(Vector3{-4.0f, 0.0f, 0.0f}));
}

TEST_F(SmoothView, requestingTheRunningCentreAgainDoesNotRestart)
{
    const PackedData center = packed(Vector3{10.0f, 20.0f, -30.0f});
    view->setTargetWorldCenterData(center);
    advanceTicks(20);
    view->setTargetWorldCenterData(center);
    advanceTicks(10);
    EXPECT_NEAR(view->worldCenter().x, 10.0 * eased(30, 0.75), 1e-4);
}

TEST_F(SmoothView, aTargetThatNoFloatHasIsTheSameWhenAskedForAgain)
{
    view->setTargetWorldRotationAngle_axis(60.1, 0.1, 0.2, 0.97);
    advanceTicks(44);
    view->setTargetWorldRotationAngle_axis(60.1, 0.1, 0.2, 0.97);
    advanceTicks(2);
    EXPECT_FALSE(view->isAnimatingWorldRotation());
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{60.1f, 0.1f, 0.2f, 0.97f}));
}

TEST_F(SmoothView, requestingTheRunningTargetAgainDoesNotRestart)
{
    view->setTargetMouthOpenAngle(40.0f);
    view->setTargetWorldRotationAngle_axis(60.0, 0.0, 0.0, 1.0);
    advanceTicks(20);
    view->setTargetMouthOpenAngle(40.0f);
    view->setTargetWorldRotationAngle_axis(60.0, 0.0, 0.0, 1.0);
    advanceTicks(10);
    EXPECT_NEAR(view->mouthOpenAngle(), 40.0 * eased(30, 0.75), 1e-3);
    advanceTicks(16);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{60.0f, 0.0f, 0.0f, 1.0f}));
}

TEST_F(SmoothView, aRotationFollowsTheSingleAxisPathAndLandsExactlyOnItsTarget)
{
    view->setWorldRotationAngle_axis(20.0, 0.0, 0.0, 1.0);
    view->setTargetWorldRotationAngle_axis(110.0, 0.0, 0.0, 1.0);
    advanceTicks(15);
    // Both about one axis: the path stays about it, eased over 90 degrees.
    EXPECT_NEAR(view->worldRotation()[0], 20.0 + 90.0 * eased(15, 0.75), 1e-2);
    EXPECT_NEAR(view->worldRotation()[3], 1.0f, 1e-5f);
    advanceTicks(40);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{110.0f, 0.0f, 0.0f, 1.0f}));
}

TEST_F(SmoothView, aRotationToTheSameOrientationInOtherNumbersStays)
{
    view->setWorldRotationAngle_axis(0.0, 0.0, 0.0, 1.0);
    view->setTargetWorldRotationAngle_axis(0.0, 1.0, 0.0, 0.0);
    EXPECT_TRUE(view->isAnimatingWorldRotation());
    advanceTicks(10);
    // The identity has the angle 0 or a whole turn; its axis is any.
    EXPECT_NEAR(std::cos(view->worldRotation()[0] * 0.0174532925), 1.0, 1e-6);
    for (const float number : view->worldRotation())
        EXPECT_TRUE(std::isfinite(number));
    advanceTicks(40);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{0.0f, 1.0f, 0.0f, 0.0f}));
}

TEST_F(SmoothView, anOrientationWithoutAnAxisStartsAsTheIdentity)
{
    view->setWorldRotationAngle_axis(0.0, 0.0, 0.0, 0.0);
    view->setTargetWorldRotationAngle_axis(80.0, 0.0, 0.0, 1.0);
    advanceTicks(10);
    EXPECT_NEAR(view->worldRotation()[0], 80.0 * eased(10, 0.75), 0.1);
    EXPECT_NEAR(view->worldRotation()[3], 1.0, 1e-5);
}

TEST_F(SmoothView, theTargetIsTheTransitionsOrElseThePresentOne)
{
    view->setWorldRotationAngle_axis(0.0, 0.0, 0.0, 1.0);
    EXPECT_NEAR(view->targetWorldQuaternion().w, 1.0f, 1e-6f);
    view->setTargetWorldQuaternion(Quaternion_fromAxisAngle(Vector3{0, 0, 1}, 1.0f));
    EXPECT_NEAR(view->targetWorldQuaternion().z, std::sin(0.5), 1e-6);
    EXPECT_NEAR(view->targetWorldQuaternion().w, std::cos(0.5), 1e-6);
    EXPECT_EQ(view->worldRotation()[0], 0.0f);
}

TEST_F(SmoothView, aCentreTransitionMovesTheRotationCentreToo)
{
    view->setTargetWorldCenterData(packed(Vector3{10.0f, 20.0f, -30.0f}));
    advanceTicks(15);
    const double weight = eased(15, 0.75);
    EXPECT_NEAR(view->worldCenter().x, 10.0 * weight, 1e-4);
    EXPECT_NEAR(view->rotationCenter().z, -30.0 * weight, 1e-4);
    advanceTicks(40);
    EXPECT_EQ(view->worldCenterData(), packed(Vector3{10.0f, 20.0f, -30.0f}));
    EXPECT_EQ(view->activeWorldCenterData(), view->worldCenterData());
}

TEST_F(SmoothView, aCentreTargetWithACoordinateThatIsNotFiniteIsAppliedAtOnce)
{
    const float infinity = std::numeric_limits<float>::infinity();
    view->setTargetWorldCenterData(packed(Vector3{1.0f, infinity, 0.0f}));
    EXPECT_FALSE(view->isAnimatingWorldCenter());
    EXPECT_EQ(view->worldCenter().y, infinity);
    // From there on every transition begins at a coordinate that is not finite.
    view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_FALSE(view->isAnimatingWorldCenter());
    EXPECT_EQ(view->worldCenter().y, 2.0f);
}

TEST_F(SmoothView, aCentreTargetThatIsNotANumberIsAppliedAtOnce)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const Vector3 &center :
         {Vector3{nan, 0.0f, 0.0f}, Vector3{0.0f, nan, 0.0f}, Vector3{0.0f, 0.0f, nan}}) {
        view->setWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
        view->setTargetWorldCenterData(packed(center));
        EXPECT_FALSE(view->isAnimatingWorldCenter());
        EXPECT_EQ(view->worldCenterData(), packed(center));
    }
}

TEST_F(SmoothView, theTimerStartsEvenWhereTheCentreThenJumps)
{
    view->setLastRenderingTime(0.076);
    view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_FALSE(view->isAnimatingWorldCenter());
    EXPECT_TRUE(view->animationTimerIsRunning());
}

TEST_F(SmoothView, renderingTooSlowToAnimateMakesTheCentreJump)
{
    view->setLastRenderingTime(0.076);
    view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_FALSE(view->isAnimatingWorldCenter());
    EXPECT_EQ(view->worldCenter().x, 1.0f);
    view->setLastRenderingTime(0.075);
    view->setTargetWorldCenterData(packed(Vector3{4.0f, 2.0f, 3.0f}));
    EXPECT_TRUE(view->isAnimatingWorldCenter());
}

TEST_F(SmoothView, aCentreBufferOfOtherThan12BytesTriggersTheAssertion)
{
    EXPECT_THROW(view->setTargetWorldCenterData(PackedData(13)), AssertionFailure);
}

TEST_F(SmoothView, aLongPauseBetweenTicksFinishesARotationAndACentreInOneStep)
{
    view->setTargetWorldRotationAngle_axis(60.0, 0.0, 0.0, 1.0);
    view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    advanceTicks(2);
    clock->setTime(clock->currentTime() + 0.8);
    clock->advance(tick);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{60.0f, 0.0f, 0.0f, 1.0f}));
    EXPECT_EQ(view->worldCenter().z, 3.0f);
}

TEST_F(SmoothView, aClockThatIsSetBackDuringATransitionChangesNothing)
{
    view->setTargetMouthOpenAngle(40.0f);
    view->setTargetWorldRotationAngle_axis(60.0, 0.0, 0.0, 1.0);
    advanceTicks(10);
    const float angle = view->mouthOpenAngle();
    ASSERT_GT(angle, 0.0f);
    clock->setTime(clock->currentTime() - 5.0);
    float before = angle;
    for (int i = 0; i < 60; ++i) {
        advanceTicks(1);
        EXPECT_GE(view->mouthOpenAngle(), before) << "never a step back";
        EXPECT_LE(view->mouthOpenAngle(), 40.0f);
        before = view->mouthOpenAngle();
    }
    EXPECT_EQ(view->mouthOpenAngle(), 40.0f);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{60.0f, 0.0f, 0.0f, 1.0f}));
}

TEST_F(SmoothView, aTransitionTakesItsTimeWhileTheClockIsSet)
{
    double wall = 1.0e9;
    double steady = 5.0;
    const kelo::test::MainRunLoop otherClocks(std::make_unique<QtRunLoop>(
        QtRunLoop::Clocks{[&] { return wall; }, [&] { return steady; }}));
    view->setTargetMouthOpenAngle(40.0f);
    const auto timer = std::make_shared<Timer>(1.0, true, [](Timer &) {});
    const auto tickAfter = [&](double seconds) {
        steady += seconds;
        view->animationForTimer(*timer);
        return view->mouthOpenAngle();
    };
    EXPECT_EQ(tickAfter(0.375), 20.0f) << "half of the time, and half of the way";
    wall -= 5.0;
    EXPECT_EQ(tickAfter(0.0), 20.0f);
    wall += 3600.0;
    EXPECT_EQ(tickAfter(0.0), 20.0f);
    EXPECT_LT(tickAfter(0.37), 40.0f);
    EXPECT_EQ(tickAfter(0.01), 40.0f);
    view->stopAnimationTimer();
}

TEST_F(SmoothView, threeTransitionsRunAtTheSameTime)
{
    view->setTargetWorldRotationAngle_axis(60.0, 0.0, 0.0, 1.0);
    view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    view->setTargetMouthOpenAngle(30.0f);
    advanceTicks(10);
    EXPECT_TRUE(view->isAnimatingWorldRotation());
    EXPECT_TRUE(view->isAnimatingWorldCenter());
    EXPECT_TRUE(view->isAnimatingMouthOpenAngle());
    clock->advance(1.0);
    EXPECT_EQ(view->worldRotation()[0], 60.0f);
    EXPECT_EQ(view->worldCenter().x, 1.0f);
    EXPECT_EQ(view->mouthOpenAngle(), 30.0f);
}

TEST_F(SmoothView, theHomeOrientationIsXYUntilItIsSet)
{
    EXPECT_EQ(view->homeOrientation(), "XY");
    view->setHomeOrientation("front");
    EXPECT_EQ(view->homeOrientation(), "front");
    view->setHomeOrientation(std::nullopt);
    EXPECT_EQ(view->homeOrientation(), "XY");
}
