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

RepeatOperation onlyIf(bool condition, RepeatOperation operation)
{
    return condition ? operation : RepeatOperation::None;
}

} // namespace

RepeatOperation repeatOperation(std::int64_t lastActionType, const RepeatTarget &target)
{
    switch (static_cast<ActionType>(lastActionType)) {
    case ActionType::ColorBracket:
        return onlyIf(!target.isLastClickedTooth, RepeatOperation::ShowAndColorBracket);
    case ActionType::PlaceBracket:
        return onlyIf(isUnplaced(target.bracket), RepeatOperation::ColorAndToggleBracket);
    case ActionType::RemoveBracket:
        return onlyIf(isShown(target.bracket), RepeatOperation::RemoveColorAndToggleBracket);
    case ActionType::PlaceButton:
        return onlyIf(isUnplaced(target.button), RepeatOperation::ToggleButton);
    case ActionType::RemoveButton:
        return onlyIf(isShown(target.button), RepeatOperation::ToggleButton);
    case ActionType::PlaceTooth:
        return onlyIf(target.tooth.primary, RepeatOperation::ToggleTooth);
    case ActionType::RemoveTooth:
        return onlyIf(!target.tooth.primary, RepeatOperation::ToggleTooth);
    }
    return RepeatOperation::None;
}

} // namespace kelo
