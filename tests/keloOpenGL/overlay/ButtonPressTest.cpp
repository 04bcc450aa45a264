#include "keloOpenGL/overlay/ButtonPress.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

TEST(ButtonPress, itActsWhereThePointerIsOverTheButtonAtTheRelease)
{
    ButtonPress press;
    EXPECT_FALSE(press.isTracked());
    EXPECT_FALSE(press.isDown());
    press.begin();
    EXPECT_TRUE(press.isDown());
    press.moveTo(false);
    EXPECT_FALSE(press.isDown());
    EXPECT_TRUE(press.isTracked()) << "the pointer may come back";
    press.moveTo(true);
    EXPECT_TRUE(press.isDown());
    press.end();
    EXPECT_FALSE(press.isTracked());
    EXPECT_FALSE(press.isDown());
}

TEST(ButtonPress, oneThatIsGivenUpIsTrackedButDoesNotAct)
{
    ButtonPress press;
    press.begin();
    press.giveUp();
    EXPECT_TRUE(press.isTracked());
    EXPECT_FALSE(press.isDown());
}

} // namespace
