#include "keloOpenGL/editing/BracketEditor.h"

namespace kelo {

std::optional<ToothChange> BracketEditor::choose(ActionType action,
                                                 const std::optional<std::string> &tooth,
                                                 std::optional<long> colorTypeID)
{
    const ToothOperation operation = chosenOperation(action);
    const bool colors = operation == ToothOperation::ShowAndColorBracket;
    if (!tooth || (colors && !colorTypeID)) return std::nullopt;
    if (colors) lastColorTypeID_ = colorTypeID;
    return ToothChange{operation, *tooth, colors ? colorTypeID : std::nullopt};
}

ToothChange BracketEditor::repeatOn(const std::string &tooth, const RepeatTarget &target) const
{
    const ToothOperation operation = repeatOperation(lastActionType_, target);
    const bool colors = operation == ToothOperation::ShowAndColorBracket ||
                        operation == ToothOperation::ColorAndToggleBracket;
    return {operation, tooth, colors ? lastColorTypeID_ : std::nullopt};
}

} // namespace kelo
