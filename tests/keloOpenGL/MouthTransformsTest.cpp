#include "keloOpenGL/view/MouthTransforms.h"

#include "geometry/Vector.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kelo;

namespace {

constexpr double pi = 3.14159265358979323846;

struct Place
{
    double y;
    double z;
};

/// The hinge by its own formula in double precision: shift up by half the depth times the sine,
/// then turn about the line y = h' (h' = 0.625 of the y range behind the origin).
Place turned(Place place, double effective, double jawAngle, double yRange, double zRange)
{
    const double hinge = 0.625 * yRange;
    const double y = place.y - hinge;
    const double z = place.z;
    return {hinge + y * std::cos(jawAngle) - z * std::sin(jawAngle),
            y * std::sin(jawAngle) + z * std::cos(jawAngle) + 0.5 * zRange * std::sin(effective)};
}

MutableExtents scene()
{
    MutableExtents extents;
    extents.absorb(-30.0, -20.0, -12.0);
    extents.absorb(30.0, 28.0, 12.0);
    return extents;
}

void expectMoves(const Matrix &transform, double effective, double jawAngle)
{
    for (const Vector3 point : {Vector3{5, -20, -5}, Vector3{-3, 10, 4}, Vector3{0, 0, 0}}) {
        const Vector3 moved = Matrix_multiplyVector3(transform, point);
        const Place expected = turned({point.y, point.z}, effective, jawAngle, 48.0, 24.0);
        EXPECT_NEAR(moved.x, point.x, 1e-5);
        EXPECT_NEAR(moved.y, expected.y, 1e-4);
        EXPECT_NEAR(moved.z, expected.z, 1e-4);
    }
}

void expectIdentity(const Matrix &transform)
{
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(transform.m[i], i % 5 == 0 ? 1.0f : 0.0f, 1e-6f) << "element " << i;
}

} // namespace

TEST(MouthTransforms, theFirstTenDegreesOfEitherDirectionLeaveTheJawsClosed)
{
    for (const float angle : {0.0f, 8.0f, -8.0f, 10.0f, -10.0f})
        EXPECT_EQ(effectiveMouthOpenAngle(angle), 0.0f) << angle;
}

TEST(MouthTransforms, beyondTheDeadZoneTheAngleCountsFromItsEdge)
{
    EXPECT_NEAR(effectiveMouthOpenAngle(40.0f), 30.0 * pi / 180.0, 1e-6);
    EXPECT_NEAR(effectiveMouthOpenAngle(-55.0f), -45.0 * pi / 180.0, 1e-6);
}

TEST(MouthTransforms, anAngleOf8OrMinus8DegreesLeavesBothJawsAtIdentity)
{
    for (const float angle : {8.0f, -8.0f}) {
        expectIdentity(upperMouthTransform(effectiveMouthOpenAngle(angle), scene()));
        expectIdentity(lowerMouthTransform(effectiveMouthOpenAngle(angle), scene()));
    }
}

TEST(MouthTransforms, aPositiveAngleTurnsTheLowerJawAndTheUpperByOneEighth)
{
    const double a = 30.0 * pi / 180.0;
    const auto effective = static_cast<float>(a);
    expectMoves(lowerMouthTransform(effective, scene()), a, a);
    expectMoves(upperMouthTransform(effective, scene()), a, 0.125 * a);
}

TEST(MouthTransforms, aNegativeAngleTurnsTheUpperJawAndTheLowerByOneEighth)
{
    const double a = -25.0 * pi / 180.0;
    const auto effective = static_cast<float>(a);
    expectMoves(upperMouthTransform(effective, scene()), a, a);
    expectMoves(lowerMouthTransform(effective, scene()), a, 0.125 * a);
}
