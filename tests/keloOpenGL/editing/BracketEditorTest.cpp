#include "keloOpenGL/editing/BracketEditor.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

RepeatTarget bracketNotPlaced()
{
    RepeatTarget target;
    target.bracket = {true, false};
    return target;
}

TEST(BracketEditor, withoutAToothNothingIsChosen)
{
    BracketEditor editor;
    EXPECT_EQ(editor.choose(ActionType::RemoveBracket, std::nullopt), std::nullopt);
    EXPECT_EQ(editor.choose(ActionType::ColorBracket, std::nullopt, 3), std::nullopt);
    EXPECT_EQ(editor.lastColorTypeID(), std::nullopt);
}

TEST(BracketEditor, colouringAndPlacingNeedAColourType)
{
    BracketEditor editor;
    for (const ActionType action : {ActionType::ColorBracket, ActionType::PlaceBracket}) {
        EXPECT_EQ(editor.choose(action, "8"), std::nullopt);
        EXPECT_EQ(editor.choose(action, "8", 3),
                  (ToothChange{ToothOperation::ShowAndColorBracket, "8", 3}));
        EXPECT_EQ(editor.lastColorTypeID(), 3);
    }
}

TEST(BracketEditor, theOtherActionsLeaveTheLastColourAlone)
{
    const struct
    {
        ActionType action;
        ToothOperation operation;
    } rows[] = {
        {ActionType::RemoveBracket, ToothOperation::ToggleAndRemoveColorOfBracket},
        {ActionType::PlaceButton, ToothOperation::ToggleButton},
        {ActionType::RemoveButton, ToothOperation::ToggleButton},
        {ActionType::PlaceTooth, ToothOperation::ToggleTooth},
        {ActionType::RemoveTooth, ToothOperation::ToggleTooth},
    };
    BracketEditor editor;
    editor.choose(ActionType::ColorBracket, "9", 7);
    for (const auto &row : rows) {
        EXPECT_EQ(editor.choose(row.action, "8"), (ToothChange{row.operation, "8", std::nullopt}));
        EXPECT_EQ(editor.lastColorTypeID(), 7);
    }
}

TEST(BracketEditor, whatIsRepeatedIsWhatWasDoneNotWhatWasChosen)
{
    BracketEditor editor;
    EXPECT_EQ(editor.lastActionType(), 0);
    editor.choose(ActionType::PlaceBracket, "8", 3);
    EXPECT_EQ(editor.lastActionType(), 0) << "it may have come to nothing";
    editor.noteDone(ActionType::PlaceBracket);
    EXPECT_EQ(editor.lastActionType(), 1);
    EXPECT_EQ(editor.repeatOn("9", bracketNotPlaced()),
              (ToothChange{ToothOperation::ColorAndToggleBracket, "9", 3}));
}

TEST(BracketEditor, aRepeatedRemovalHasNoColour)
{
    BracketEditor editor;
    editor.choose(ActionType::ColorBracket, "8", 3);
    editor.noteDone(ActionType::RemoveBracket);
    EXPECT_EQ(editor.repeatOn("9", {}),
              (ToothChange{ToothOperation::RemoveColorAndToggleBracket, "9", std::nullopt}));
    EXPECT_EQ(editor.repeatOn("9", bracketNotPlaced()).operation, ToothOperation::None);
}

TEST(BracketEditor, theEndOfTheRepeatPeriodForgetsTheColour)
{
    BracketEditor editor;
    editor.choose(ActionType::ColorBracket, "8", 3);
    editor.noteDone(ActionType::ColorBracket);
    editor.endRepeatPeriod();
    EXPECT_EQ(editor.lastColorTypeID(), std::nullopt);
    EXPECT_EQ(editor.repeatOn("9", {}),
              (ToothChange{ToothOperation::ShowAndColorBracket, "9", std::nullopt}));
}

} // namespace
