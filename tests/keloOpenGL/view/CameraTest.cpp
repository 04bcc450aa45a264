#include "keloOpenGL/view/Camera.h"

#include <gtest/gtest.h>

#include <limits>

using namespace kelo;

namespace {

void expectVector(const Vector3 &actual, float x, float y, float z)
{
    EXPECT_EQ(actual.x, x);
    EXPECT_EQ(actual.y, y);
    EXPECT_EQ(actual.z, z);
}

} // namespace

TEST(Camera, aFreshOneHasAUnitZoomBoxAndNoWindow)
{
    const Camera camera;
    EXPECT_EQ(camera.zoomBox(), (WindowLimits{-1, 1, -1, 1}));
    EXPECT_EQ(camera.zMin(), -1.0);
    EXPECT_EQ(camera.zMax(), 1.0);
    EXPECT_EQ(camera.windowLimits(), WindowLimits());
    EXPECT_FALSE(camera.hasArea());
    EXPECT_FALSE(camera.hasVolume());
}

TEST(Camera, theWindowIsTheZoomBoxInTheProportionsOfTheView)
{
    Camera camera;
    camera.setZoomBox({0, 10, 0, 10});
    EXPECT_EQ(camera.windowLimits(), WindowLimits()) << "not before it is fitted";
    camera.fitWindow({200, 100});
    EXPECT_EQ(camera.windowLimits(), (WindowLimits{-5, 15, 0, 10}));
    EXPECT_EQ(camera.zoomBox(), (WindowLimits{0, 10, 0, 10}));
    camera.fitWindow({100, 300});
    EXPECT_EQ(camera.windowLimits(), (WindowLimits{0, 10, -10, 20}));
    EXPECT_TRUE(camera.hasVolume());
    EXPECT_EQ(camera.size(), Size()) << "a window may be fitted to any size";
}

TEST(Camera, nearAndFarAreAHundredRadiiFromTheRotationCentre)
{
    Camera camera;
    camera.setWorldCenter({0.0f, 0.0f, 7.0f});
    camera.setRotationCenter({1.0f, 2.0f, 50.0f});
    camera.fitDepth(3.0);
    EXPECT_EQ(camera.zMin(), 50.0 - 300.0);
    EXPECT_EQ(camera.zMax(), 50.0 + 300.0);
    expectVector(camera.worldCenter(), 0.0f, 0.0f, 7.0f);
    expectVector(camera.rotationCenter(), 1.0f, 2.0f, 50.0f);
}

TEST(Camera, theAxisIsStoredAsItIs)
{
    Camera camera;
    camera.setWorldRotation(angleAndAxis(400.0, 3.0, 0.0, 4.0));
    EXPECT_EQ(camera.worldRotation(), (AngleAndAxis{400.0f, 3.0f, 0.0f, 4.0f}));
}

TEST(Camera, onlyAViewWithAreaCanBeDrawnIn)
{
    Camera camera;
    for (const Size &size : {Size{0, 100}, Size{100, 0}, Size{-1, 100}, Size{100, -1}}) {
        camera.setSize(size);
        EXPECT_FALSE(camera.hasArea()) << size.width << " by " << size.height;
    }
    camera.setSize({1, 1});
    EXPECT_TRUE(camera.hasArea());
}

TEST(Camera, limitsThatAreEqualOrNotFiniteHaveNoVolume)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    // The side that needs no spare room keeps its limits.
    const WindowLimits boxes[] = {{0, infinity, 0, 1}, {-infinity, 0, 0, 1}, {0, nan, 0, 1},
                                  {0, 1, nan, 1},      {0, 1, 0, infinity},  {nan, nan, nan, nan}};
    for (const WindowLimits &box : boxes) {
        Camera camera;
        camera.setZoomBox(box);
        camera.fitWindow({100, 100});
        EXPECT_FALSE(camera.hasVolume())
            << box.xMin << " " << box.xMax << " " << box.yMin << " " << box.yMax;
    }
    Camera camera;
    camera.fitWindow({100, 100});
    ASSERT_TRUE(camera.hasVolume());
    camera.fitDepth(0.0);
    EXPECT_FALSE(camera.hasVolume()) << "near is far";
    camera.fitDepth(infinity);
    EXPECT_FALSE(camera.hasVolume());
}

TEST(Camera, aCopyLeavesTheOriginalAsItIs)
{
    Camera camera;
    camera.setSize({400, 300});
    Camera printing = camera;
    printing.setSize({800, 400});
    printing.setWorldRotation(Camera::frontOrientation);
    EXPECT_EQ(camera.size(), (Size{400, 300}));
    EXPECT_EQ(camera.worldRotation(), AngleAndAxis());
}

TEST(CameraFitting, theCentreOfExtentsIsTheirMiddle)
{
    MutableExtents box;
    box.absorb(-1.0, 2.0, 10.0);
    box.absorb(3.0, 4.0, 20.0);
    expectVector(centerOfExtents(box), 1.0f, 3.0f, 15.0f);
}

TEST(CameraFitting, theSumIsRoundedBeforeItIsHalved)
{
    MutableExtents box;
    box.absorb(0.0, 0.0, 0.0);
    box.absorb(0.1, 16777217.0, 0.0);
    const Vector3 center = centerOfExtents(box);
    EXPECT_EQ(center.x, static_cast<float>(0.1) * 0.5f);
    EXPECT_EQ(center.y, 8388608.0f);
}

TEST(CameraFitting, aZoomBoxIsASquareShrunkAboutItsMiddle)
{
    EXPECT_EQ(zoomBoxAbout({4.0f, 1.0f, 9.0f}, 8.0, 0.5), (WindowLimits{0, 8, -3, 5}));
    EXPECT_EQ(zoomBoxAbout({4.0f, 1.0f, 9.0f}, 8.0, 2.0), (WindowLimits{-12, 20, -15, 17}));
}

TEST(CameraFitting, aFactorOfExactlyOneRoundsNothing)
{
    // Shrinking by 1 would round: half of 1100.1 - 899.9 is no longer 100.1.
    ASSERT_NE(1000.0 - (1100.1 - 899.9) * 0.5, 1000.0 - 100.1);
    const WindowLimits box = zoomBoxAbout({1000.0f, 0.0f, 0.0f}, 100.1, 1.0);
    EXPECT_EQ(box, (WindowLimits{1000.0 - 100.1, 1000.0 + 100.1, -100.1, 100.1}));
}
