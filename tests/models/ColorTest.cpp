#include "models/Color.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace kelo {
namespace {

TEST(Color, blendingMixesEveryComponentAlphaIncluded)
{
    const Color from(0.2, 0.4, 0.6, 1.0);
    const Color to(1.0, 0.0, 0.2, 0.5);
    // (1 - 0.25) * from + 0.25 * to, by hand.
    const Color blended = from.blendedColorWithFraction_ofColor(0.25, to);
    EXPECT_NEAR(blended.red, 0.4, 1e-15);
    EXPECT_NEAR(blended.green, 0.3, 1e-15);
    EXPECT_NEAR(blended.blue, 0.5, 1e-15);
    EXPECT_NEAR(blended.alpha, 0.875, 1e-15);
}

TEST(Color, blendingByNothingKeepsTheColorAndByOneGivesTheOther)
{
    const Color from(0.1, 0.2, 0.3, 0.4);
    const Color to(0.9, 0.8, 0.7, 0.6);
    EXPECT_EQ(from.blendedColorWithFraction_ofColor(0.0, to), from);
    EXPECT_EQ(from.blendedColorWithFraction_ofColor(1.0, to), to);
}

TEST(Color, whiteAndBlackAreOpaqueAndAGreyTakesItsAlpha)
{
    EXPECT_EQ(Color::whiteColor(), Color(1.0, 1.0, 1.0, 1.0));
    EXPECT_EQ(Color::blackColor(), Color(0.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(Color::calibratedWhite(0.25, 0.5), Color(0.25, 0.25, 0.25, 0.5));
    EXPECT_EQ(Color(), Color::blackColor());
}

TEST(Color, anArrayGivesRedGreenBlueAlphaInThisOrder)
{
    const Color color(std::array<double, 4>{0.1, 0.2, 0.3, 0.4});
    EXPECT_EQ(color.red, 0.1);
    EXPECT_EQ(color.green, 0.2);
    EXPECT_EQ(color.blue, 0.3);
    EXPECT_EQ(color.alpha, 0.4);
}

TEST(Color, equalColorsHashAlikeAlsoWithTheOtherZero)
{
    const Color zero(0.0, 0.5, 0.5, 1.0);
    const Color otherZero(-0.0, 0.5, 0.5, 1.0);
    ASSERT_EQ(zero, otherZero);
    EXPECT_EQ(zero.hash(), otherZero.hash());
    EXPECT_NE(Color(0.1, 0.2, 0.3).hash(), Color(0.3, 0.2, 0.1).hash());
}

TEST(Color, colorsThatDifferInOneComponentAreNotEqual)
{
    const Color color(0.1, 0.2, 0.3, 0.4);
    EXPECT_NE(color, Color(0.11, 0.2, 0.3, 0.4));
    EXPECT_NE(color, Color(0.1, 0.21, 0.3, 0.4));
    EXPECT_NE(color, Color(0.1, 0.2, 0.31, 0.4));
    EXPECT_NE(color, Color(0.1, 0.2, 0.3, 0.41));
}

TEST(Color, theFloatsOfRgbaAreTheComponentsRoundedToSingle)
{
    const float *floats = Color(0.1, 0.25, 1.0, 0.7).rgba();
    EXPECT_EQ(floats[0], 0.1f);
    EXPECT_EQ(floats[1], 0.25f);
    EXPECT_EQ(floats[2], 1.0f);
    EXPECT_EQ(floats[3], 0.7f);
}

TEST(Color, theNinthCallOfRgbaReusesTheSlotOfTheFirst)
{
    std::vector<const float *> slots;
    for (int call = 0; call < 9; ++call)
        slots.push_back(Color(call / 16.0, 0.0, 0.0).rgba());
    EXPECT_EQ(slots[8], slots[0]);
    EXPECT_EQ(slots[0][0], 0.5f) << "the ninth color stands in the first slot";
    for (int call = 1; call < 8; ++call) {
        EXPECT_EQ(slots[call][0], static_cast<float>(call) / 16.0f);
        EXPECT_NE(slots[call], slots[0]);
    }
}

TEST(Color, theSlotsFollowOneAnotherFourFloatsApart)
{
    const Color color;
    const float *previous = color.rgba();
    int wraps = 0;
    for (int call = 0; call < 8; ++call) {
        const float *next = color.rgba();
        if (next < previous)
            ++wraps;
        else
            EXPECT_EQ(next - previous, 4);
        previous = next;
    }
    EXPECT_EQ(wraps, 1);
}

TEST(Color, theComponentsAreWrittenIntoTheCallersArray)
{
    float floats[6]{-1.0f, -1.0f, -1.0f, -1.0f, -1.0f, -1.0f};
    Color(0.25, 0.5, 0.75, 1.0).getRedGreenBlueAlphaIntoArray(floats + 1);
    EXPECT_EQ(floats[0], -1.0f);
    EXPECT_EQ(floats[1], 0.25f);
    EXPECT_EQ(floats[2], 0.5f);
    EXPECT_EQ(floats[3], 0.75f);
    EXPECT_EQ(floats[4], 1.0f);
    EXPECT_EQ(floats[5], -1.0f);
}

} // namespace
} // namespace kelo
