#include "tools/lightbake/Tone.h"

#include <gtest/gtest.h>

namespace kelo::lightbake {
namespace {

/// An upper or lower crown of ten millimetres over a gum whose margin is at z = 0.
Crown crownOfTenMillimetres(int toothNumber)
{
    Crown crown;
    crown.toothNumber = toothNumber;
    crown.isUpper = toothNumber <= 16;
    const double outOfGum = crown.isUpper ? -1.0 : 1.0;
    for (const double height : {0.0, 2.0, 4.0, 6.0, 8.0, 10.0})
        crown.exposed.push_back({0.0, 0.0, outOfGum * height});
    crown.buried = {{0.0, 0.0, 0.0}, {0.0, 0.0, -2.0 * outOfGum}};
    crown.middle = {0.0, 0.0, 5.0 * outOfGum};
    crown.tip = 10.0 * outOfGum;
    return crown;
}

/// At a height over the margin.
double toneAt(int toothNumber, double height)
{
    const Crown crown = crownOfTenMillimetres(toothNumber);
    return toneOfEnamel(crown, {0.0, 0.0, crown.isUpper ? -height : height});
}

TEST(LightbakeTone, enamelIsWarmAtTheGumAndGreyAtTheEdge)
{
    for (const int incisor : {7, 8, 9, 10, 23, 24, 25, 26}) {
        EXPECT_DOUBLE_EQ(toneAt(incisor, 0.0), 1.0) << incisor;
        EXPECT_DOUBLE_EQ(toneAt(incisor, 2.0), 0.5) << incisor;
        EXPECT_DOUBLE_EQ(toneAt(incisor, 5.0), 0.0) << "the tooth's own shade";
        EXPECT_DOUBLE_EQ(toneAt(incisor, 8.0), -0.5) << incisor;
        EXPECT_DOUBLE_EQ(toneAt(incisor, 10.0), -1.0) << incisor;
    }
}

TEST(LightbakeTone, caninesAreYellowerThroughout)
{
    for (const int canine : {6, 11, 22, 27})
        for (double height = 0.5; height <= 10.0; height += 0.5)
            EXPECT_GT(toneAt(canine, height), toneAt(8, height)) << canine << " " << height;
    EXPECT_DOUBLE_EQ(toneAt(6, 0.0), 1.0);
    EXPECT_DOUBLE_EQ(toneAt(27, 10.0), -0.4);
}

TEST(LightbakeTone, premolarsAndMolarsAreHalfAsGrey)
{
    for (const int posterior : {2, 3, 4, 5, 12, 13, 14, 15, 18, 21, 28, 31}) {
        EXPECT_DOUBLE_EQ(toneAt(posterior, 0.0), 1.0) << posterior;
        EXPECT_DOUBLE_EQ(toneAt(posterior, 10.0), -0.5) << posterior;
    }
}

TEST(LightbakeTone, aCrownOutsideOfEveryGumHasNone)
{
    Crown crown = crownOfTenMillimetres(8);
    crown.buried.clear();
    EXPECT_DOUBLE_EQ(toneOfEnamel(crown, {0.0, 0.0, -10.0}), 0.0);
}

TEST(LightbakeTone, theCrownIsWhatTheGumLeavesFree)
{
    Part tooth;
    tooth.toothNumber = 8;
    for (const float z : {2.0f, 0.0f, -4.0f, -9.0f})
        tooth.vertices.push_back({{1.0f, -14.0f, z}, {0, 0, 1}});
    std::vector<VertexLight> light(4);
    light[0].isBuried = true;
    const Crown upper = crownOf(tooth, light);
    EXPECT_EQ(upper.exposed.size(), 3u);
    EXPECT_EQ(upper.buried.size(), 1u);
    EXPECT_DOUBLE_EQ(upper.tip, -9.0);
    EXPECT_NEAR(upper.middle.z, -13.0 / 3.0, 1e-12);
    tooth.isUpper = false;
    EXPECT_DOUBLE_EQ(crownOf(tooth, light).tip, 0.0);
}

/// Two crowns at the sides of an arch, with the gum around them.
std::vector<Crown> archOfTwo(bool isUpper)
{
    std::vector<Crown> crowns;
    for (const double side : {-20.0, 20.0}) {
        Crown crown;
        crown.isUpper = isUpper;
        crown.exposed = {{side, 0.0, 0.0}};
        crown.middle = {side, 0.0, 0.0};
        crowns.push_back(crown);
    }
    return crowns;
}

TEST(LightbakeTone, gumIsPaleAtTheMarginAndRedInTheVestibule)
{
    for (const bool isUpper : {true, false}) {
        const std::vector<Crown> crowns = archOfTwo(isUpper);
        const Vec3 outwards{1.0, 0.0, 0.0};
        EXPECT_DOUBLE_EQ(toneOfGum(crowns, {21.0, 0.0, 0.0}, outwards), -1.0);
        EXPECT_DOUBLE_EQ(toneOfGum(crowns, {25.0, 0.0, 0.0}, outwards), 0.0)
            << "where attached gingiva ends";
        EXPECT_DOUBLE_EQ(toneOfGum(crowns, {28.0, 0.0, 0.0}, outwards), 1.0);
    }
}

TEST(LightbakeTone, thePalateIsPaleAndTheFloorOfTheMouthIsRed)
{
    const Vec3 down{0.0, 0.0, -1.0};
    const Vec3 up{0.0, 0.0, 1.0};
    const Vec3 middle{0.0, 0.0, 0.0};
    EXPECT_DOUBLE_EQ(toneOfGum(archOfTwo(true), middle, down), -0.5);
    EXPECT_DOUBLE_EQ(toneOfGum(archOfTwo(true), middle, up), 1.0) << "the roof of the base";
    EXPECT_DOUBLE_EQ(toneOfGum(archOfTwo(false), middle, up), 1.0);
}

TEST(LightbakeTone, aGumWithoutTeethHasNone)
{
    EXPECT_DOUBLE_EQ(toneOfGum({}, {0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}), 0.0);
}

} // namespace
} // namespace kelo::lightbake
