#include "keloOpenGL/view/RotateDrag.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

constexpr Size draggedView{400.0, 200.0};

TEST(RotateDrag, theShorterSideIsHalfATurn)
{
    RotateDrag drag;
    drag.begin({10.0, 20.0}, MouseButton::Left);
    const auto turn = drag.moveTo({60.0, 10.0}, MouseButton::Left, draggedView);
    ASSERT_TRUE(turn);
    EXPECT_FLOAT_EQ(turn->across, 45.0f);
    EXPECT_FLOAT_EQ(turn->up, -9.0f);
    const auto next = drag.moveTo({60.0, 10.0}, MouseButton::Left, draggedView);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->across, 0.0f) << "each move counts from the last";
}

TEST(RotateDrag, itIsTheButtonsThatBeganIt)
{
    RotateDrag drag;
    drag.begin({0.0, 0.0}, MouseButton::Left);
    drag.begin({50.0, 0.0}, MouseButton::Right);
    EXPECT_FALSE(drag.moveTo({100.0, 0.0}, MouseButton::Right, draggedView));
    EXPECT_FALSE(drag.end(MouseButton::Right));
    EXPECT_TRUE(drag.isGoingOn());
    const auto turn = drag.moveTo({100.0, 0.0}, MouseButton::Left, draggedView);
    ASSERT_TRUE(turn);
    EXPECT_FLOAT_EQ(turn->across, 90.0f) << "from where the left button was pressed";
    EXPECT_TRUE(drag.end(MouseButton::Left));
    EXPECT_FALSE(drag.isGoingOn());
}

TEST(RotateDrag, anEventWithoutAButtonCountsAsItsOwn)
{
    RotateDrag drag;
    drag.begin({0.0, 0.0}, MouseButton::Left);
    EXPECT_TRUE(drag.moveTo({1.0, 0.0}, std::nullopt, draggedView));
    EXPECT_TRUE(drag.end(std::nullopt));
}

TEST(RotateDrag, aViewWithoutAreaTurnsByNothing)
{
    RotateDrag drag;
    drag.begin({0.0, 0.0}, MouseButton::Left);
    const auto turn = drag.moveTo({100.0, 100.0}, MouseButton::Left, {400.0, 0.0});
    ASSERT_TRUE(turn);
    EXPECT_EQ(turn->across, 0.0f);
    EXPECT_EQ(turn->up, 0.0f);
}

TEST(RotateDrag, oneThatIsGivenUpIsOver)
{
    RotateDrag drag;
    drag.begin({0.0, 0.0}, MouseButton::Left);
    drag.cancel();
    EXPECT_FALSE(drag.isGoingOn());
    drag.begin({0.0, 0.0}, MouseButton::Right);
    EXPECT_TRUE(drag.isGoingOn());
    EXPECT_TRUE(drag.end(MouseButton::Right));
}

} // namespace
