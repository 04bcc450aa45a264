#include "keloOpenGL/view/HVFindGoodWindow.h"

#include <gtest/gtest.h>

using kelo::HVFindGoodWindow;
using kelo::WindowLimits;

TEST(FindGoodWindow, aWideViewGetsSpareRoomOnXOnly)
{
    // 200 by 100 points, box 2 by 2: 100 and 50 points a unit, so x is widened by 2.
    EXPECT_EQ(HVFindGoodWindow(200, 100, {-1, 1, -1, 1}), (WindowLimits{-2, 2, -1, 1}));
}

TEST(FindGoodWindow, aTallViewGetsSpareRoomOnYOnly)
{
    EXPECT_EQ(HVFindGoodWindow(100, 300, {-1, 1, -1, 1}), (WindowLimits{-1, 1, -3, 3}));
}

TEST(FindGoodWindow, aTieComputesTheYLimitsAndKeepsX)
{
    EXPECT_EQ(HVFindGoodWindow(100, 100, {0, 2, 4, 6}), (WindowLimits{0, 2, 4, 6}));
}

TEST(FindGoodWindow, theBoxStaysCentredInTheSpareRoom)
{
    // 10 by 20 box in 200 by 100 points: 20 and 5 points a unit, x is widened by 4 to 40 about 15.
    EXPECT_EQ(HVFindGoodWindow(200, 100, {10, 20, 0, 20}), (WindowLimits{-5, 35, 0, 20}));
}

TEST(FindGoodWindow, aZoomBoxWithZeroWidthUsesOnePixelAUnitOnThatAxis)
{
    // 1 against 100 / 2 = 50 pixels a unit: y is widened by 50.
    EXPECT_EQ(HVFindGoodWindow(200, 100, {3, 3, -1, 1}), (WindowLimits{3, 3, -50, 50}));
}

TEST(FindGoodWindow, aZoomBoxWithZeroHeightUsesOnePixelAUnitOnThatAxis)
{
    // 200 / 2 = 100 against 1 pixel a unit: x is widened by 100.
    EXPECT_EQ(HVFindGoodWindow(200, 100, {-1, 1, 7, 7}), (WindowLimits{-100, 100, 7, 7}));
}

TEST(FindGoodWindow, aComputedHalfSizeOfExactlyZeroBecomesOne)
{
    // x has no extent and 1 pixel a unit against 0.25 on y: x is the axis that is widened, from 0.
    EXPECT_EQ(HVFindGoodWindow(200, 100, {3, 3, 0, 400}), (WindowLimits{2, 4, 0, 400}));
    // No extent on either axis: a tie, so y.
    EXPECT_EQ(HVFindGoodWindow(200, 100, {3, 3, 7, 7}), (WindowLimits{3, 3, 6, 8}));
}
