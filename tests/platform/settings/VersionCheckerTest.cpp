#include "platform/settings/VersionChecker.h"
#include "base/Assertion.h"
#include "platform/settings/SystemGeneration.h"

#include <gtest/gtest.h>

using namespace kelo;

TEST(VersionChecker, everySystemIsOfTheNewestGenerationUntilATestSaysOtherwise)
{
    EXPECT_TRUE(VersionChecker::isLionOrLater());
    EXPECT_TRUE(VersionChecker::isMountainLionOrLater());
}

TEST(VersionChecker, theOlderGenerationsAnswerAsTheyWere)
{
    setSystemGeneration(SystemGeneration::Lion);
    EXPECT_TRUE(VersionChecker::isLionOrLater());
    EXPECT_FALSE(VersionChecker::isMountainLionOrLater());
    setSystemGeneration(SystemGeneration::BeforeLion);
    EXPECT_FALSE(VersionChecker::isLionOrLater());
    EXPECT_FALSE(VersionChecker::isMountainLionOrLater());
    setSystemGeneration(SystemGeneration::MountainLion);
    EXPECT_TRUE(VersionChecker::isMountainLionOrLater());
}

TEST(Assertion, aConditionThatHoldsIsPassedOver)
{
    EXPECT_NO_THROW(assertThat(true, "never said"));
}

TEST(Assertion, aConditionThatDoesNotHoldThrowsItsMessage)
{
    try {
        assertThat(false, "the buffer has the wrong length");
        FAIL() << "no failure";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(), "the buffer has the wrong length");
    }
}
