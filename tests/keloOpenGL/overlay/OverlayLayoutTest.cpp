#include "keloOpenGL/overlay/OverlayLayout.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kelo;

constexpr double tolerance = 1e-6; // single precision near 1

void expectRect(const Rect &rect, double x, double y, double width, double height)
{
    EXPECT_NEAR(rect.origin.x, x, tolerance);
    EXPECT_NEAR(rect.origin.y, y, tolerance);
    EXPECT_NEAR(rect.size.width, width, tolerance);
    EXPECT_NEAR(rect.size.height, height, tolerance);
}

constexpr OverlayLayout fourToThree{800.0f / 600.0f};

TEST(OverlayLayout, theElasticsToolLiesAtTheTopRight)
{
    expectRect(fourToThree.elasticsToolRect({128, 64}), 1.0208333, 0.8125, 0.25, 0.125);
}

TEST(OverlayLayout, theBracketToolIsThreeQuartersAsWideAndCentredBelow)
{
    expectRect(fourToThree.bracketColorToolRect({128, 64}, {128, 64}), 1.0520833, 0.65625, 0.1875,
               0.09375);
}

TEST(OverlayLayout, theBracketToolKeepsItsGapUnderATallElasticsTool)
{
    // 64 x 128: 0.25 wide, 0.5 high, so its lower edge is at 0.9375 - 0.5 = 0.4375.
    const Rect elastics = fourToThree.elasticsToolRect({64, 128});
    EXPECT_NEAR(elastics.origin.y, 0.4375, tolerance);
    // 96 x 32: 0.1875 wide, 0.0625 high, its top 0.0625 below.
    expectRect(fourToThree.bracketColorToolRect({96, 32}, {64, 128}), 1.0520833, 0.3125, 0.1875,
               0.0625);
}

TEST(OverlayLayout, thePrintButtonsBottomEdgeStaysForEveryTexture)
{
    const std::vector<TextureSize> sizes{{192, 192}, {128, 64}, {64, 128},
                                         {7, 300},   {300, 7},  {1, 1}};
    for (const auto &[width, height] : sizes) {
        const Rect rect = fourToThree.printButtonRect({width, height});
        EXPECT_NEAR(rect.origin.y, -0.9375, tolerance * 20.0) << width << " x " << height;
        EXPECT_NEAR(rect.origin.x, 1.0208333, tolerance);
        EXPECT_NEAR(rect.size.width, 0.25, tolerance);
        EXPECT_NEAR(rect.size.height, 0.25 * height / width, tolerance * 20.0);
    }
}

TEST(OverlayLayout, aToolLiesBelowTheTopByItsOffset)
{
    // Half as wide: 0.125 x 0.0625, x = 0.5 * 0.25 * 0.5 + (2 - 0.3125), y = 0.9375 - 0.0625 - 0.5.
    expectRect(OverlayLayout::toolRectWithRatio_width_height_yOffset_relativeWidth(
                   2.0f, 64.0f, 32.0f, 0.5f, 0.5f),
               1.75, 0.375, 0.125, 0.0625);
}

TEST(OverlayLayout, theColumnStaysAtTheRightEdgeOfAnyView)
{
    for (const float aspect : {0.25f, 1.0f, 3.0f}) {
        const Rect rect = OverlayLayout{aspect}.elasticsToolRect({64, 64});
        EXPECT_NEAR(rect.origin.x + rect.size.width, aspect - 0.0625, tolerance);
        const Rect narrow = OverlayLayout{aspect}.bracketColorToolRect({64, 64}, {64, 64});
        EXPECT_NEAR(narrow.origin.x + narrow.size.width / 2.0, aspect - 0.1875, tolerance);
    }
}

TEST(OverlayLayout, aToolWithoutAPictureHasNoRectangle)
{
    EXPECT_EQ(fourToThree.elasticsToolRect({}), Rect{});
    EXPECT_EQ(fourToThree.bracketColorToolRect({}, {128, 64}), Rect{});
    EXPECT_EQ(fourToThree.printButtonRect({}), Rect{});
    EXPECT_EQ(fourToThree.printButtonRect({64, 0}), Rect{});
}

TEST(OverlayLayout, theDateLabelIsCentredAndHangsFromItsTopEdge)
{
    // Twice as wide as high.
    expectRect(OverlayLayout::dateLabelRect({80.0, 40.0}), -0.125, 0.875, 0.25, -0.125);
    // Ten times.
    expectRect(OverlayLayout::dateLabelRect({400.0, 40.0}), -0.625, 0.875, 1.25, -0.125);
}

} // namespace
