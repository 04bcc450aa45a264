#pragma once

#include <gtest/gtest.h>

namespace kelo::test {

/// Handles events until the display has nothing more to say: the X server and the window manager
/// have answered whatever this program has asked of them, and whatever keys and buttons xdotool has
/// pressed, and what that led to in turn. Fails after five seconds, and says which of the two did
/// not come to rest. Succeeds at once on a platform without an X display.
///
/// This is what to wait for where nothing of the program tells that a window is where it will stay,
/// or that an event did not come. Where something does, wait for that (waitUntil). Timers that the
/// program has set may still be to come.
testing::AssertionResult displayIsSettled();

/// Whether a compositor shows the windows of the X display: it owns a selection that the server
/// knows. False on other platforms.
bool displayHasCompositor();

} // namespace kelo::test
