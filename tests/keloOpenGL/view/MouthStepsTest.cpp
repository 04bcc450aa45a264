#include "keloOpenGL/view/MouthSteps.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kelo;

namespace {

TEST(MouthSteps, upwardsFromOpenToClosedAndFromClosedToOpen)
{
    EXPECT_EQ(mouthAngleOneStepUp(30.0f), 0.0f);
    EXPECT_EQ(mouthAngleOneStepUp(10.0f), -45.0f) << "10 counts as closed";
    EXPECT_EQ(mouthAngleOneStepUp(-44.0f), -45.0f);
    EXPECT_EQ(mouthAngleOneStepUp(-45.0f), std::nullopt);
    EXPECT_EQ(mouthAngleOneStepUp(-50.0f), std::nullopt);
}

TEST(MouthSteps, downwardsTheOtherWayRound)
{
    EXPECT_EQ(mouthAngleOneStepDown(-30.0f), 0.0f);
    EXPECT_EQ(mouthAngleOneStepDown(-10.0f), 45.0f);
    EXPECT_EQ(mouthAngleOneStepDown(44.0f), 45.0f);
    EXPECT_EQ(mouthAngleOneStepDown(45.0f), std::nullopt);
}

TEST(MouthSteps, aMouthWithoutAnAngleStaysAsItIs)
{
    EXPECT_EQ(mouthAngleOneStepUp(NAN), std::nullopt);
    EXPECT_EQ(mouthAngleOneStepDown(NAN), std::nullopt);
    EXPECT_FALSE(mouthSnapsClosed(NAN));
}

TEST(MouthSteps, aMouthSnapsClosedBelowTwentyTwoDegrees)
{
    for (const float angle : {-21.9f, 0.0f, 21.9f})
        EXPECT_TRUE(mouthSnapsClosed(angle)) << angle;
    for (const float angle : {-22.0f, 22.0f, 40.0f})
        EXPECT_FALSE(mouthSnapsClosed(angle)) << angle;
}

} // namespace
