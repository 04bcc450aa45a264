#include "keloOpenGL/editing/RepeatAction.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

RepeatOperation repeated(ActionType type, const RepeatTarget &target)
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
                      RepeatOperation::ShowAndColorBracket);
            target.isLastClickedTooth = true;
            EXPECT_EQ(repeated(ActionType::ColorBracket, target), RepeatOperation::None);
        }
    }
}

TEST(RepeatAction, aBracketIsPlacedWhereItIsNotPlacedAndItsToothIsThere)
{
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(true, false)),
              RepeatOperation::ColorAndToggleBracket);
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(false, false)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(true, true)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceBracket, withBracket(false, true)), RepeatOperation::None);
}

TEST(RepeatAction, aBracketIsRemovedWhereItIsShown)
{
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(false, false)),
              RepeatOperation::RemoveColorAndToggleBracket);
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(true, false)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(false, true)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveBracket, withBracket(true, true)), RepeatOperation::None);
}

TEST(RepeatAction, aButtonIsPlacedAndRemovedByItsOwnFlags)
{
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(true, false)),
              RepeatOperation::ToggleButton);
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(false, false)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(false, true)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::PlaceButton, withButton(true, true)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(false, false)),
              RepeatOperation::ToggleButton);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(true, false)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(false, true)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveButton, withButton(true, true)), RepeatOperation::None);
}

TEST(RepeatAction, bracketAndButtonActionsLookAtNoFlagOfTheTooth)
{
    for (const HiddenFlags tooth :
         {HiddenFlags{false, true}, HiddenFlags{true, false}, HiddenFlags{true, true}}) {
        RepeatTarget target = withBracket(true, false);
        target.tooth = tooth;
        EXPECT_EQ(repeated(ActionType::PlaceBracket, target),
                  RepeatOperation::ColorAndToggleBracket);
        target = withBracket(false, false);
        target.tooth = tooth;
        EXPECT_EQ(repeated(ActionType::RemoveBracket, target),
                  RepeatOperation::RemoveColorAndToggleBracket);
        EXPECT_EQ(repeated(ActionType::RemoveButton, target), RepeatOperation::ToggleButton);
        target = withButton(true, false);
        target.tooth = tooth;
        EXPECT_EQ(repeated(ActionType::PlaceButton, target), RepeatOperation::ToggleButton);
    }
}

TEST(RepeatAction, aToothIsPlacedWhereItIsHiddenAndRemovedWhereItIsNot)
{
    EXPECT_EQ(repeated(ActionType::PlaceTooth, withTooth(true)), RepeatOperation::ToggleTooth);
    EXPECT_EQ(repeated(ActionType::PlaceTooth, withTooth(false)), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, withTooth(false)), RepeatOperation::ToggleTooth);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, withTooth(true)), RepeatOperation::None);
}

TEST(RepeatAction, aToothsSecondReasonToBeHiddenDoesNotCount)
{
    RepeatTarget target = withTooth(true);
    target.tooth.secondary = true;
    EXPECT_EQ(repeated(ActionType::PlaceTooth, target), RepeatOperation::ToggleTooth);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, target), RepeatOperation::None);
    target.tooth.primary = false;
    EXPECT_EQ(repeated(ActionType::PlaceTooth, target), RepeatOperation::None);
    EXPECT_EQ(repeated(ActionType::RemoveTooth, target), RepeatOperation::ToggleTooth);
}

TEST(RepeatAction, onlyColouringLooksAtTheToothOfTheMenu)
{
    RepeatTarget target = withBracket(true, false);
    target.isLastClickedTooth = true;
    EXPECT_EQ(repeated(ActionType::PlaceBracket, target), RepeatOperation::ColorAndToggleBracket);
}

TEST(RepeatAction, anyOtherNumberRepeatsNothing)
{
    for (const std::int64_t type : {std::int64_t{-1}, std::int64_t{7}, std::int64_t{1} << 40})
        EXPECT_EQ(repeatOperation(type, withBracket(true, false)), RepeatOperation::None);
}

} // namespace
