#include "keloOpenGL/editing/RepeatAction.h"

namespace kelo {
namespace {

bool isUnplaced(const HiddenFlags &hidden)
{
    return hidden.primary && !hidden.secondary;
}

bool isShown(const HiddenFlags &hidden)
{
    return !hidden.primary && !hidden.secondary;
}

ToothOperation onlyIf(bool condition, ToothOperation operation)
{
    return condition ? operation : ToothOperation::None;
}

} // namespace

ToothOperation chosenOperation(ActionType action)
{
    switch (action) {
    case ActionType::ColorBracket:
    case ActionType::PlaceBracket:
        return ToothOperation::ShowAndColorBracket;
    case ActionType::RemoveBracket:
        return ToothOperation::ToggleAndRemoveColorOfBracket;
    case ActionType::PlaceButton:
    case ActionType::RemoveButton:
        return ToothOperation::ToggleButton;
    case ActionType::PlaceTooth:
    case ActionType::RemoveTooth:
        return ToothOperation::ToggleTooth;
    }
    return ToothOperation::None;
}

ToothOperation repeatOperation(std::int64_t lastActionType, const RepeatTarget &target)
{
    switch (static_cast<ActionType>(lastActionType)) {
    case ActionType::ColorBracket:
        return onlyIf(!target.isLastClickedTooth, ToothOperation::ShowAndColorBracket);
    case ActionType::PlaceBracket:
        return onlyIf(isUnplaced(target.bracket), ToothOperation::ColorAndToggleBracket);
    case ActionType::RemoveBracket:
        return onlyIf(isShown(target.bracket), ToothOperation::RemoveColorAndToggleBracket);
    case ActionType::PlaceButton:
        return onlyIf(isUnplaced(target.button), ToothOperation::ToggleButton);
    case ActionType::RemoveButton:
        return onlyIf(isShown(target.button), ToothOperation::ToggleButton);
    case ActionType::PlaceTooth:
        return onlyIf(target.tooth.primary, ToothOperation::ToggleTooth);
    case ActionType::RemoveTooth:
        return onlyIf(!target.tooth.primary, ToothOperation::ToggleTooth);
    }
    return ToothOperation::None;
}

} // namespace kelo
