#include "keloOpenGL/view/Mouth.h"

#include "keloOpenGL/view/MouthTransforms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace kelo;

namespace {

MutableExtents sceneExtents()
{
    MutableExtents extents;
    extents.absorb(-30.0, -20.0, -12.0);
    extents.absorb(30.0, 28.0, 12.0);
    return extents;
}

bool areEqual(const Matrix &left, const Matrix &right)
{
    return std::equal(std::begin(left.m), std::end(left.m), std::begin(right.m));
}

} // namespace

TEST(Mouth, isClosedAtFirst)
{
    EXPECT_EQ(Mouth().openAngle(), 0.0f);
    EXPECT_EQ(Mouth().effectiveAngle(), 0.0f);
}

TEST(Mouth, opensBy55DegreesAtMost)
{
    struct Row
    {
        float angle;
        float stored;
    };
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Mouth mouth;
    for (const Row &row : {Row{70.0f, 55.0f}, Row{-80.0f, -55.0f}, Row{12.5f, 12.5f},
                           Row{-55.0f, -55.0f}, Row{infinity, 55.0f}}) {
        mouth.setOpenAngle(row.angle);
        EXPECT_EQ(mouth.openAngle(), row.stored);
    }
}

TEST(Mouth, anAngleWithoutLimitIsStoredAsItIs)
{
    Mouth mouth;
    mouth.setUnlimitedOpenAngle(70.0f);
    EXPECT_EQ(mouth.openAngle(), 70.0f);
    mouth.setUnlimitedOpenAngle(-90.0f);
    EXPECT_EQ(mouth.openAngle(), -90.0f);
}

TEST(Mouth, turnsItsJawsByTheEffectiveAngle)
{
    for (const float angle : {-40.0f, -8.0f, 0.0f, 8.0f, 40.0f}) {
        Mouth mouth;
        mouth.setOpenAngle(angle);
        const float effective = effectiveMouthOpenAngle(angle);
        EXPECT_EQ(mouth.effectiveAngle(), effective);
        EXPECT_TRUE(areEqual(mouth.upperTransform(sceneExtents()),
                             upperMouthTransform(effective, sceneExtents())));
        EXPECT_TRUE(areEqual(mouth.lowerTransform(sceneExtents()),
                             lowerMouthTransform(effective, sceneExtents())));
    }
    Mouth open;
    open.setOpenAngle(40.0f);
    EXPECT_FALSE(
        areEqual(open.upperTransform(sceneExtents()), open.lowerTransform(sceneExtents())));
    EXPECT_FALSE(
        areEqual(open.upperTransform(sceneExtents()), Mouth().upperTransform(sceneExtents())));
}
