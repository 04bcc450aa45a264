#include "keloOpenGL/view/Transition.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace kelo;

namespace {

constexpr AngleAndAxis about(float degrees)
{
    return {degrees, 0.0f, 0.0f, 1.0f};
}

} // namespace

TEST(Easing, startsAndEndsWithZeroSpeedAndIsHalfwayAtHalfTime)
{
    EXPECT_EQ(eased(0.0), 0.0);
    EXPECT_EQ(eased(0.5), 0.5);
    EXPECT_EQ(eased(1.0), 1.0);
    constexpr double step = 1e-6;
    EXPECT_LT(eased(step) / step, 1e-5);
    EXPECT_LT((1.0 - eased(1.0 - step)) / step, 1e-5);
    // 3 p^2 - 2 p^3
    EXPECT_DOUBLE_EQ(eased(0.25), 0.15625);
}

TEST(Transition, aFreshOneRests)
{
    const Transition<float> transition;
    EXPECT_FALSE(transition.isRunning());
    EXPECT_FALSE(transition.isHeadingFor(0.0f));
    EXPECT_EQ(transition.target(), 0.0f);
}

TEST(Transition, followsTheCurveAndLandsExactlyOnItsTarget)
{
    Transition<float> transition;
    transition.start(10.0f, 40.1f, 2.0);
    EXPECT_TRUE(transition.isRunning());
    EXPECT_EQ(transition.advance(0.0), 10.0f);
    EXPECT_FLOAT_EQ(transition.advance(0.5), static_cast<float>(10.0 + 30.1 * eased(0.25)));
    EXPECT_FLOAT_EQ(transition.advance(1.0), static_cast<float>(10.0 + 30.1 * eased(0.75)));
    EXPECT_TRUE(transition.isRunning());
    EXPECT_EQ(transition.advance(0.5), 40.1f);
    EXPECT_FALSE(transition.isRunning());
}

TEST(Transition, aStepBeyondTheEndLandsOnTheTarget)
{
    Transition<float> transition;
    transition.start(10.0f, 40.0f, 2.0);
    EXPECT_EQ(transition.advance(100.0), 40.0f);
    EXPECT_FALSE(transition.isRunning());
    EXPECT_EQ(transition.advance(0.1), 40.0f) << "and stays there";
    EXPECT_FALSE(transition.isRunning());
}

TEST(Transition, aDurationOfZeroEndsWithTheFirstStep)
{
    for (const double seconds : {0.0, 0.1}) { // 0 of 0 is not a number, 0.1 of 0 is infinite
        Transition<float> transition;
        transition.start(10.0f, 40.0f, 0.0);
        EXPECT_TRUE(transition.isRunning());
        EXPECT_EQ(transition.advance(seconds), 40.0f);
        EXPECT_FALSE(transition.isRunning());
    }
}

TEST(Transition, aTimeThatIsNotANumberEndsIt)
{
    Transition<float> transition;
    transition.start(10.0f, 40.0f, 1.0);
    EXPECT_EQ(transition.advance(std::numeric_limits<double>::quiet_NaN()), 40.0f);
    EXPECT_FALSE(transition.isRunning());
}

TEST(Transition, headsForItsTargetOnlyWhileItRuns)
{
    Transition<float> transition;
    transition.start(10.0f, 40.0f, 1.0);
    EXPECT_TRUE(transition.isHeadingFor(40.0f));
    EXPECT_FALSE(transition.isHeadingFor(10.0f));
    transition.advance(1.0);
    EXPECT_FALSE(transition.isHeadingFor(40.0f));
    EXPECT_EQ(transition.target(), 40.0f);
}

TEST(Transition, startingAgainBeginsAtTheBeginning)
{
    Transition<float> transition;
    transition.start(10.0f, 40.0f, 1.0);
    const float reached = transition.advance(0.5);
    ASSERT_EQ(reached, 25.0f);
    transition.start(reached, -10.0f, 2.0);
    EXPECT_EQ(transition.advance(0.0), 25.0f);
    EXPECT_EQ(transition.advance(1.0), 7.5f);
}

TEST(Transition, newEndsAloneLeaveItsProgress)
{
    Transition<float> transition;
    transition.setEnds(1.0f, 2.0f);
    EXPECT_FALSE(transition.isRunning());
    EXPECT_EQ(transition.target(), 2.0f);
    transition.start(1.0);
    EXPECT_EQ(transition.advance(0.5), 1.5f);
    transition.setEnds(100.0f, 200.0f);
    EXPECT_EQ(transition.advance(0.0), 150.0f);
}

TEST(Transition, aPlaceGoesStraight)
{
    Transition<Vector3> transition;
    transition.start({0.0f, 10.0f, -20.0f}, {10.0f, 10.0f, 20.0f}, 1.0);
    const Vector3 reached = transition.advance(0.5);
    EXPECT_EQ(reached.x, 5.0f);
    EXPECT_EQ(reached.y, 10.0f);
    EXPECT_EQ(reached.z, 0.0f);
}

TEST(Transition, anOrientationTurnsAboutOneAxis)
{
    Transition<AngleAndAxis> transition;
    transition.start(about(20.0f), about(110.0f), 1.0);
    const AngleAndAxis reached = transition.advance(0.25);
    EXPECT_NEAR(reached[0], 20.0 + 90.0 * eased(0.25), 1e-2);
    EXPECT_NEAR(reached[3], 1.0f, 1e-5f);
    EXPECT_EQ(transition.advance(0.75), about(110.0f));
}

TEST(Transition, anOrientationTakesTheSinglePathBetweenTwoAxes)
{
    // From a quarter turn about x to one about y: all the way is 120 degrees about a diagonal.
    const AngleAndAxis start{90.0f, 1.0f, 0.0f, 0.0f};
    const AngleAndAxis target{90.0f, 0.0f, 1.0f, 0.0f};
    const Quaternion initial = quaternionOfRotation(start);
    const Quaternion halfway = quaternionOfRotation(valueBetween(start, target, 0.5));
    const Quaternion final = quaternionOfRotation(target);
    const auto dot = [](const Quaternion &a, const Quaternion &b) {
        return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
    };
    ASSERT_NEAR(dot(initial, final), 0.5f, 1e-5f);
    EXPECT_NEAR(dot(initial, halfway), std::cos(3.14159265 / 6.0), 1e-5);
    EXPECT_NEAR(dot(halfway, final), std::cos(3.14159265 / 6.0), 1e-5);
}

TEST(Transition, anOrientationWithoutAnAxisStartsAsTheIdentity)
{
    const AngleAndAxis reached = valueBetween(AngleAndAxis{}, about(80.0f), 0.5);
    EXPECT_NEAR(reached[0], 40.0f, 1e-3f);
    EXPECT_NEAR(reached[3], 1.0f, 1e-5f);
}

TEST(Rotations, aQuaternionAndItsRotationAreTheSameTurn)
{
    const AngleAndAxis rotation = angleAndAxis(70.0, 0.0, 0.6, 0.8);
    const AngleAndAxis back = rotationOfQuaternion(quaternionOfRotation(rotation));
    for (std::size_t i = 0; i < rotation.size(); ++i)
        EXPECT_NEAR(back[i], rotation[i], 1e-4f) << i;
}
