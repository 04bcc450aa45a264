#pragma once

#include "base/Rect.h"

namespace kelo {

// Where menus open. Points of the screen, y counts down; an area is what a menu has to stay inside
// of, the screen as a rule. The height that comes back is smaller than the menu's only where the
// area leaves no more: the menu then scrolls.

/// The place of a menu for a pointer: to the right of it and below, or on the other side where that
/// leaves the area; beside it where the menu is too high to be above or below. Never over the
/// pointer's pixel, wherever it is: a row under it could be chosen by a click that was meant for
/// what lies beneath.
/// fromRightToLeft: languages that are written so have their menus on the left.
Rect placeOfMenu(const Point &pointer, const Size &menu, const Rect &area, bool fromRightToLeft);

/// The place of a submenu: beside its row and as high, or on the other side where that leaves the
/// area, and over the menu where neither side has room.
Rect placeOfSubmenu(const Rect &row, const Size &menu, const Rect &area, bool fromRightToLeft);

} // namespace kelo
