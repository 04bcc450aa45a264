#pragma once

#include "viewer/settings/Preferences.h"

#include <QPalette>

namespace viewer {

/// The colours of dialogs and windows in a light or a dark room.
QPalette lightPalette();
QPalette darkPalette();

/// Gives the application the colours of the user's choice, now and whenever it changes. Called
/// once, when the application is there and has the desktop's colours.
void followThemePreference();

} // namespace viewer
