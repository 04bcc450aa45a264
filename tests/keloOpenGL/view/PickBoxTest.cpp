#include "keloOpenGL/view/PickBox.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace kelo;

constexpr std::array<int, 4> viewport{0, 0, 100, 80};

Matrix identity()
{
    Matrix matrix;
    Matrix_loadIdentity(&matrix);
    return matrix;
}

/// World units are pixels of the viewport.
Matrix pixelProjection()
{
    return Matrix_ortho(identity(), 0.0f, 100.0f, 0.0f, 80.0f, -100.0f, 100.0f);
}

PickBox pickBoxAt(int column, int row)
{
    return PickBox(column, row, viewport, pixelProjection(), identity());
}

Extents box(double xMin, double xMax, double yMin, double yMax, double zMin = 0.0,
            double zMax = 0.0)
{
    MutableExtents extents;
    extents.absorb(xMin, yMin, zMin);
    extents.absorb(xMax, yMax, zMax);
    return Extents(extents);
}

/// x 20 to 30 covers the columns 20 to 29, y 40 to 50 the rows 40 to 49.
const Extents tenPixels = box(20.0, 30.0, 40.0, 50.0);

} // namespace

TEST(PickBox, aBoxIsSeenInEveryPixelThatItCovers)
{
    for (int column = 20; column < 30; ++column) {
        for (int row = 40; row < 50; ++row)
            EXPECT_TRUE(pickBoxAt(column, row).mayShow(tenPixels, 0.0, identity()));
    }
}

TEST(PickBox, aBoxCountsInTheNeighboursOfItsPixelsButNoFurther)
{
    EXPECT_TRUE(pickBoxAt(19, 45).mayShow(tenPixels, 0.0, identity()));
    EXPECT_TRUE(pickBoxAt(30, 45).mayShow(tenPixels, 0.0, identity()));
    EXPECT_TRUE(pickBoxAt(25, 39).mayShow(tenPixels, 0.0, identity()));
    EXPECT_TRUE(pickBoxAt(25, 50).mayShow(tenPixels, 0.0, identity()));
    EXPECT_FALSE(pickBoxAt(18, 45).mayShow(tenPixels, 0.0, identity()));
    EXPECT_FALSE(pickBoxAt(31, 45).mayShow(tenPixels, 0.0, identity()));
    EXPECT_FALSE(pickBoxAt(25, 38).mayShow(tenPixels, 0.0, identity()));
    EXPECT_FALSE(pickBoxAt(25, 51).mayShow(tenPixels, 0.0, identity()));
}

TEST(PickBox, theMarginGrowsTheBoxOnEverySideInItsOwnUnits)
{
    // Half a unit of the box is five pixels here.
    Matrix tenTimes = identity();
    Matrix_scale(&tenTimes, 10.0f, 10.0f, 10.0f);
    const Extents small = box(2.0, 3.0, 4.0, 5.0);
    EXPECT_FALSE(pickBoxAt(15, 45).mayShow(small, 0.0, tenTimes));
    EXPECT_TRUE(pickBoxAt(15, 45).mayShow(small, 0.5, tenTimes));
    EXPECT_TRUE(pickBoxAt(34, 45).mayShow(small, 0.5, tenTimes));
    EXPECT_TRUE(pickBoxAt(25, 35).mayShow(small, 0.5, tenTimes));
    EXPECT_TRUE(pickBoxAt(25, 54).mayShow(small, 0.5, tenTimes));
    EXPECT_FALSE(pickBoxAt(12, 45).mayShow(small, 0.5, tenTimes));
    EXPECT_FALSE(pickBoxAt(37, 45).mayShow(small, 0.5, tenTimes));
}

TEST(PickBox, theTransformMovesTheBoxBeforeTheModelViewDoes)
{
    Matrix doubled = identity();
    Matrix_scale(&doubled, 2.0f, 2.0f, 2.0f);
    Matrix tenToTheRight = identity();
    Matrix_translate(&tenToTheRight, 10.0f, 0.0f, 0.0f);
    // x 1 to 2 moved by 10 and then doubled is 22 to 24; the other way round it would be 12 to 14.
    const Extents small = box(1.0, 2.0, 10.0, 11.0);
    const PickBox at23(23, 21, viewport, pixelProjection(), doubled);
    const PickBox at13(13, 21, viewport, pixelProjection(), doubled);
    EXPECT_TRUE(at23.mayShow(small, 0.0, tenToTheRight));
    EXPECT_FALSE(at13.mayShow(small, 0.0, tenToTheRight));
}

TEST(PickBox, aBoxTurnedByFortyFiveDegreesReachesAsFarAsItsDiagonal)
{
    Matrix turned = identity();
    Matrix_translate(&turned, 50.0f, 40.0f, 0.0f);
    Matrix_rotate(&turned, Vector3{0.0f, 0.0f, 1.0f}, 0.78539816f);
    const Extents square = box(-10.0, 10.0, -10.0, 10.0);
    // 10 * sqrt(2) = 14.14 from the middle of the window to either side.
    EXPECT_TRUE(pickBoxAt(64, 40).mayShow(square, 0.0, turned));
    EXPECT_TRUE(pickBoxAt(36, 40).mayShow(square, 0.0, turned));
    EXPECT_FALSE(pickBoxAt(66, 40).mayShow(square, 0.0, turned));
    EXPECT_FALSE(pickBoxAt(33, 40).mayShow(square, 0.0, turned));
}

TEST(PickBox, depthOfTheBoxCountsWhenTheWorldIsTurned)
{
    Matrix fromTheFront = identity();
    Matrix_rotate(&fromTheFront, Vector3{-1.0f, 0.0f, 0.0f}, 1.57079633f);
    // The box's z is the window's y now.
    const PickBox high(25, 70, viewport, pixelProjection(), fromTheFront);
    EXPECT_TRUE(high.mayShow(box(20.0, 30.0, 0.0, 0.0, 65.0, 75.0), 0.0, identity()));
    EXPECT_FALSE(high.mayShow(box(20.0, 30.0, 65.0, 75.0, 0.0, 0.0), 0.0, identity()));
}

TEST(PickBox, theViewportMayBeginAnywhere)
{
    const std::array<int, 4> shifted{300, 200, 100, 80};
    const PickBox inside(325, 245, shifted, pixelProjection(), identity());
    const PickBox outside(25, 45, shifted, pixelProjection(), identity());
    EXPECT_TRUE(inside.mayShow(tenPixels, 0.0, identity()));
    EXPECT_FALSE(outside.mayShow(tenPixels, 0.0, identity()));
}

TEST(PickBox, anEmptyBoxIsAPointAtTheOrigin)
{
    EXPECT_TRUE(pickBoxAt(0, 0).mayShow(Extents(), 0.0, identity()));
    EXPECT_FALSE(pickBoxAt(50, 40).mayShow(Extents(), 0.0, identity()));
}

TEST(PickBox, underAPerspectiveEveryBoxCounts)
{
    const Matrix perspective = Matrix_perspective(identity(), 45.0f, 1.25f, 1.0f, 100.0f);
    const PickBox seen(0, 0, viewport, perspective, identity());
    EXPECT_TRUE(seen.mayShow(tenPixels, 0.0, identity()));
    EXPECT_TRUE(pickBoxAt(0, 0).mayShow(tenPixels, 0.0, perspective));
    EXPECT_FALSE(pickBoxAt(0, 0).mayShow(tenPixels, 0.0, identity()));
}

TEST(PickBox, whatIsNoNumberCountsAsSeen)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    Matrix broken = identity();
    broken.m[12] = std::numeric_limits<float>::quiet_NaN();
    broken.m[13] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(pickBoxAt(0, 0).mayShow(tenPixels, 0.0, broken));
    EXPECT_TRUE(pickBoxAt(0, 0).mayShow(box(nan, nan, nan, nan), 0.0, identity()));
    const PickBox throughNothing(0, 0, viewport, broken, identity());
    EXPECT_TRUE(throughNothing.mayShow(tenPixels, 0.0, identity()));
}

namespace {

/// A random turn about a random point, as single precision holds it.
Matrix randomMotion(std::mt19937 &random)
{
    std::uniform_real_distribution<float> place(-30.0f, 30.0f), part(-1.0f, 1.0f);
    Matrix motion = identity();
    Matrix_translate(&motion, 50.0f + place(random), 40.0f + place(random), place(random));
    Matrix_rotate(&motion, Vector3{part(random), part(random), 1.5f + part(random)},
                  3.0f * part(random));
    return motion;
}

} // namespace

TEST(PickBox, noPointOfARandomBoxIsEverMissedAndAFarBoxAlwaysIs)
{
    std::mt19937 random(20261121u);
    std::uniform_real_distribution<double> coordinate(-20.0, 20.0), part(0.0, 1.0);
    for (int round = 0; round < 20000; ++round) {
        const Matrix motion = randomMotion(random);
        const double low[3]{coordinate(random), coordinate(random), coordinate(random)};
        const double size[3]{part(random) * 9.0, part(random) * 9.0, part(random) * 9.0};
        const Extents extents =
            box(low[0], low[0] + size[0], low[1], low[1] + size[1], low[2], low[2] + size[2]);
        // A point of the box in the window, worked out on its own, and how far the corners go.
        double point[2]{}, lowest[2]{1e9, 1e9}, highest[2]{-1e9, -1e9};
        const double t[3]{part(random), part(random), part(random)};
        for (int axis = 0; axis < 2; ++axis) {
            const auto at = [&](double x, double y, double z) {
                return double{motion.m[axis]} * x + double{motion.m[4 + axis]} * y +
                       double{motion.m[8 + axis]} * z + double{motion.m[12 + axis]};
            };
            point[axis] =
                at(low[0] + t[0] * size[0], low[1] + t[1] * size[1], low[2] + t[2] * size[2]);
            for (int corner = 0; corner < 8; ++corner) {
                const double value =
                    at(low[0] + (corner & 1 ? size[0] : 0.0), low[1] + (corner & 2 ? size[1] : 0.0),
                       low[2] + (corner & 4 ? size[2] : 0.0));
                lowest[axis] = std::min(lowest[axis], value);
                highest[axis] = std::max(highest[axis], value);
            }
        }
        const int column = static_cast<int>(std::floor(point[0]));
        const int row = static_cast<int>(std::floor(point[1]));
        ASSERT_TRUE(pickBoxAt(column, row).mayShow(extents, 0.0, motion)) << round;
        const int far = static_cast<int>(std::ceil(highest[0])) + 2;
        const int below = static_cast<int>(std::floor(lowest[1])) - 3;
        ASSERT_FALSE(pickBoxAt(far, row).mayShow(extents, 0.0, motion)) << round;
        ASSERT_FALSE(pickBoxAt(column, below).mayShow(extents, 0.0, motion)) << round;
    }
}
