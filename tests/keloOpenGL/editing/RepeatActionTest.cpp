#include "keloOpenGL/editing/RepeatAction.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

ToothOperation repeated(ActionType type, const RepeatTarget &target)
{
    return repeatOperation(static_cast<std::int64_t>(type), target);
}

RepeatTarget withBracket(bool primary, bool secondary)
{
    RepeatTarget target;
    target.bracket = {primary, secondary};
    return target;
}

RepeatTarget withButton(bool primary, bool secondary)
{
    RepeatTarget target;
    target.button = {primary, secondary};
    return target;
}

RepeatTarget withTooth(bool isHidden)
{
    RepeatTarget target;
    target.tooth.primary = isHidden;
    return target;
}

TEST(RepeatAction, theNumbersAreTheOnesOfTheLastAction)
{
    EXPECT_EQ(static_cast<int>(ActionType::ColorBracket), 0);
    EXPECT_EQ(static_cast<int>(ActionType::PlaceBracket), 1);
    EXPECT_EQ(static_cast<int>(ActionType::RemoveBracket), 2);
    EXPECT_EQ(static_cast<int>(ActionType::PlaceButton), 3);
    EXPECT_EQ(static_cast<int>(ActionType::RemoveButton), 4);
    EXPECT_EQ(static_cast<int>(ActionType::PlaceTooth), 5);
    EXPECT_EQ(static_cast<int>(ActionType::RemoveTooth), 6);
}

TEST(RepeatAction, aColourGoesToEveryToothButTheOneOfTheMenuWhateverItsFlags)
{
    for (const bool primary : {false, true}) {
        for (const bool secondary : {false, true}) {
            RepeatTarget target = withBracket(primary, secondary);
            EXPECT_EQ(repeated(ActionType::ColorBracket, target),
                      ToothOperation::ShowAndColorBracket);
            target.isLastClickedTooth = true;
            EXPECT_EQ(repeated(ActionType::ColorBracket, target), ToothOperation::None);
        }
    }
}

TEST(RepeatAction, aBracketIsPlacedWhereItIsNotPlacedAndItsToothIsThere)
{
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(true, false)),
              ToothOperation::ColorAndToggleBracket);
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(false, false)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(true, true)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(false, true)), ToothOperation::None);
}

TEST(RepeatAction, aBracketIsRemovedWhereItIsShown)
{
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(false, false)),
              ToothOperation::RemoveColorAndToggleBracket);
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(true, false)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(false, true)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(true, true)), ToothOperation::None);
}

TEST(RepeatAction, aButtonIsPlacedAndRemovedByItsOwnFlags)
{
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(true, false)),
              ToothOperation::ToggleButton);
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(false, false)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(false, true)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(true, true)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(false, false)),
              ToothOperation::ToggleButton);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(true, false)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(false, true)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(true, true)), ToothOperation::None);
}

TEST(RepeatAction, bracketAndButtonActionsLookAtNoFlagOfTheTooth)
{
    for (const HiddenFlags tooth :
         {HiddenFlags{false, true}, HiddenFlags{true, false}, HiddenFlags{true, true}}) {
        RepeatTarget target = withBracket(true, false);
        target.tooth = tooth;
        EXPECT_EQ(repeated(ActionType::PlaceBracket, target),
                  ToothOperation::ColorAndToggleBracket);
        target = withBracket(false, false);
        target.tooth = tooth;
        EXPECT_EQ(repeated(ActionType::RemoveBracket, target),
                  ToothOperation::RemoveColorAndToggleBracket);
        EXPECT_EQ(repeated(ActionType::RemoveButton, target), ToothOperation::ToggleButton);
        target = withButton(true, false);
        target.tooth = tooth;
        EXPECT_EQ(repeated(ActionType::PlaceButton, target), ToothOperation::ToggleButton);
    }
}

TEST(RepeatAction, aToothIsPlacedWhereItIsHiddenAndRemovedWhereItIsNot)
{
    EXPECT_EQ(repeated(ActionType::PlaceTooth, withTooth(true)), ToothOperation::ToggleTooth);
    EXPECT_EQ(repeated(ActionType::PlaceTooth, withTooth(false)), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, withTooth(false)), ToothOperation::ToggleTooth);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, withTooth(true)), ToothOperation::None);
}

TEST(RepeatAction, aToothsSecondReasonToBeHiddenDoesNotCount)
{
    RepeatTarget target = withTooth(true);
    target.tooth.secondary = true;
    EXPECT_EQ(repeated(ActionType::PlaceTooth, target), ToothOperation::ToggleTooth);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, target), ToothOperation::None);
    target.tooth.primary = false;
    EXPECT_EQ(repeated(ActionType::PlaceTooth, target), ToothOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, target), ToothOperation::ToggleTooth);
}

TEST(RepeatAction, onlyColouringLooksAtTheToothOfTheMenu)
{
    RepeatTarget target = withBracket(true, false);
    target.isLastClickedTooth = true;
    EXPECT_EQ(repeated(ActionType::PlaceBracket, target), ToothOperation::ColorAndToggleBracket);
}

TEST(RepeatAction, anyOtherNumberRepeatsNothing)
{
    for (const std::int64_t type : {std::int64_t{-1}, std::int64_t{7}, std::int64_t{1} << 40})
        EXPECT_EQ(repeatOperation(type, withBracket(true, false)), ToothOperation::None);
}

} // namespace
