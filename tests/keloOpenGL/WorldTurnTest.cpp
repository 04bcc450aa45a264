#include "keloOpenGL/view/WorldTurn.h"

#include "geometry/Vector.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kelo;

namespace {

Quaternion frontView()
{
    return Quaternion_fromAxisAngle(Vector3{-1.0f, 0.0f, 0.0f}, 1.5707964f);
}

void expectQuaternion(const Quaternion &actual, float x, float y, float z, float w)
{
    EXPECT_FLOAT_EQ(actual.x, x);
    EXPECT_FLOAT_EQ(actual.y, y);
    EXPECT_FLOAT_EQ(actual.z, z);
    EXPECT_FLOAT_EQ(actual.w, w);
}

/// Where a turned world shows the front of the arches, (0, -1, 0).
Vector3 frontDirection(const std::array<float, 4> &rotation)
{
    return Quaternion_multiplyVector3(
        Quaternion_fromAxisAngle(Vector3{rotation[1], rotation[2], rotation[3]},
                                 rotation[0] * 3.1415927f / 180.0f),
        Vector3{0.0f, -1.0f, 0.0f});
}

} // namespace

TEST(WorldTurn, aViewOfTheFrontIsLeftAsItIs)
{
    const Quaternion front = frontView();
    ASSERT_GE(Quaternion_multiplyVector3(front, Vector3{0, -1, 0}).z, 0.0f);
    expectQuaternion(clampQuaternionToFront180Degrees(front), front.x, front.y, front.z, front.w);
}

TEST(WorldTurn, aTurnPastProfileSnapsToTheNearerProfile)
{
    const Quaternion left = Quaternion_rotated(frontView(), Vector3{0, 0, 1}, 2.0f);
    const Vector3 leftFront = Quaternion_multiplyVector3(left, Vector3{0, -1, 0});
    ASSERT_LT(leftFront.z, 0.0f);
    ASSERT_GT(leftFront.x, 0.0f);
    expectQuaternion(clampQuaternionToFront180Degrees(left), -0.5f, 0.5f, 0.5f, 0.5f);

    const Quaternion right = Quaternion_rotated(frontView(), Vector3{0, 0, 1}, -2.0f);
    const Vector3 rightFront = Quaternion_multiplyVector3(right, Vector3{0, -1, 0});
    ASSERT_LT(rightFront.z, 0.0f);
    ASSERT_LT(rightFront.x, 0.0f);
    expectQuaternion(clampQuaternionToFront180Degrees(right), -0.5f, -0.5f, -0.5f, 0.5f);
}

TEST(WorldTurn, theProfileItselfIsLeftAsItIs)
{
    // A quarter turn about z shows the front of the arches at x = 1, z exactly 0.
    const float half = std::sqrt(0.5f);
    const Quaternion profile{0.0f, 0.0f, half, half};
    ASSERT_EQ(Quaternion_multiplyVector3(profile, Vector3{0, -1, 0}).z, 0.0f);
    expectQuaternion(clampQuaternionToFront180Degrees(profile), 0.0f, 0.0f, half, half);
}

TEST(WorldTurn, aViewExactlyFromBehindSnapsToTheSecondProfile)
{
    // A quarter turn about x that takes the front to -z.
    const float half = std::sqrt(0.5f);
    const Quaternion back{half, 0.0f, 0.0f, half};
    const Vector3 front = Quaternion_multiplyVector3(back, Vector3{0, -1, 0});
    ASSERT_LT(front.z, 0.0f);
    ASSERT_EQ(front.x, 0.0f);
    expectQuaternion(clampQuaternionToFront180Degrees(back), -0.5f, 0.5f, 0.5f, 0.5f);
}

TEST(WorldTurn, bothProfilesShowTheArchesExactlySideOn)
{
    for (const Quaternion profile :
         {Quaternion{-0.5f, -0.5f, -0.5f, 0.5f}, Quaternion{-0.5f, 0.5f, 0.5f, 0.5f}}) {
        const Vector3 front = Quaternion_multiplyVector3(profile, Vector3{0, -1, 0});
        EXPECT_NEAR(front.z, 0.0f, 1e-6f);
        EXPECT_NEAR(std::abs(front.x), 1.0f, 1e-6f);
    }
}

TEST(WorldTurn, aTurnBy30DegreesTurnsTheFrontBy30Degrees)
{
    const auto turned = worldRotationTurnedByDegrees({90.0f, -1.0f, 0.0f, 0.0f}, 30.0f);
    const Vector3 front = frontDirection(turned);
    EXPECT_NEAR(std::abs(front.x), std::sin(30.0 * 3.14159265 / 180.0), 1e-5);
    EXPECT_NEAR(front.y, 0.0, 1e-5);
    EXPECT_NEAR(front.z, std::cos(30.0 * 3.14159265 / 180.0), 1e-5);
}

TEST(WorldTurn, turningThereAndBackEndsWhereItBegan)
{
    auto rotation = worldRotationTurnedByDegrees({90.0f, -1.0f, 0.0f, 0.0f}, 40.0f);
    rotation = worldRotationTurnedByDegrees(rotation, -40.0f);
    EXPECT_NEAR(rotation[0], 90.0f, 1e-3f);
    EXPECT_NEAR(rotation[1], -1.0f, 1e-5f);
    EXPECT_NEAR(rotation[2], 0.0f, 1e-5f);
    EXPECT_NEAR(rotation[3], 0.0f, 1e-5f);
}

TEST(WorldTurn, noTurnEverShowsTheBackOfTheArches)
{
    std::array<float, 4> rotation{90.0f, -1.0f, 0.0f, 0.0f};
    for (int step = 0; step < 200; ++step) {
        rotation = worldRotationTurnedByDegrees(rotation, step < 120 ? 7.0f : -13.0f);
        EXPECT_GE(frontDirection(rotation).z, -1e-4f) << "step " << step;
    }
}

TEST(WorldTurn, anOrientationWithoutAnAxisIsTurnedLikeTheIdentity)
{
    const auto turned = worldRotationTurnedByDegrees({0.0f, 0.0f, 0.0f, 0.0f}, 30.0f);
    EXPECT_NEAR(turned[0], 30.0f, 1e-4f);
    EXPECT_NEAR(turned[3], 1.0f, 1e-6f);
    EXPECT_EQ(turned, worldRotationTurnedByDegrees({0.0f, 0.0f, 0.0f, 1.0f}, 30.0f));
}
