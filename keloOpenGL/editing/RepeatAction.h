#pragma once

#include "base/Export.h"
#include "keloOpenGL/editing/ActionType.h"

#include <cstdint>

namespace kelo {

/// A model's two reasons to be hidden: it is not placed (a tooth: it is taken out), or its tooth is
/// hidden.
struct HiddenFlags
{
    bool primary = false;
    bool secondary = false;
};

/// What a repeated click has hit.
struct RepeatTarget
{
    HiddenFlags bracket;
    HiddenFlags button;
    HiddenFlags tooth;
    bool isLastClickedTooth = false; ///< the tooth that the menu was opened on
};

/// What a row of the bracket menu, or a click that repeats it, does to the document. Names tell the
/// order of the steps, which the document's delegate hears of one by one.
enum class ToothOperation {
    None,
    ShowAndColorBracket, ///< makes it and its tooth visible, in a colour
    ColorAndToggleBracket,
    RemoveColorAndToggleBracket,
    ToggleAndRemoveColorOfBracket,
    ToggleButton,
    ToggleTooth
};

/// What the menu's row of this action does to the tooth that the menu was opened on.
KELO_EXPORT ToothOperation chosenOperation(ActionType action);

/// Repeats an action only where it is still to be done. Colouring alone looks at no flag: it skips
/// only the tooth that the menu was opened on, and shows a bracket that is hidden.
KELO_EXPORT ToothOperation repeatOperation(std::int64_t lastActionType, const RepeatTarget &target);

} // namespace kelo
