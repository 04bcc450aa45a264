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

/// What a repeated click does to the document.
enum class RepeatOperation {
    None,
    ShowAndColorBracket,         ///< makes it and its tooth visible, in the last colour
    ColorAndToggleBracket,       ///< the last colour, then the visibility
    RemoveColorAndToggleBracket, ///< no colour, then the visibility
    ToggleButton,
    ToggleTooth
};

/// Repeats an action only where it is still to be done. Colouring alone looks at no flag: it skips
/// only the tooth that the menu was opened on, and shows a bracket that is hidden.
KELO_EXPORT RepeatOperation repeatOperation(std::int64_t lastActionType,
                                            const RepeatTarget &target);

} // namespace kelo
