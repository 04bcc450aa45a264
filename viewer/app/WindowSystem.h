#pragma once

#include <functional>

namespace viewer {

// Qt ends a program that has no display, or loses it, from inside: by an abort, or by exit(1). What
// it says right before that is taken here, so that people get one sentence, scripts status 3, and
// nothing that was done is lost.

/// Passes Qt's messages on to standard error, and ends the program with status 3 where they say
/// that there is no display (any longer). For the whole run of the program.
void watchQtMessages();

/// While it lives, a platform plug-in that cannot start ends the program with one sentence and
/// status 3: put it around the making of the application object.
class StartOfWindowSystem
{
public:
    StartOfWindowSystem();
    /// The plug-in has started: what Qt said meanwhile is passed on.
    ~StartOfWindowSystem();
    StartOfWindowSystem(const StartOfWindowSystem &) = delete;
    StartOfWindowSystem &operator=(const StartOfWindowSystem &) = delete;
};

/// While it lives, the loss of the display calls `store` before it ends the program with status 3.
/// `store` must ask nobody and show nothing. One at a time; make it when everything that `store`
/// needs is there.
class StoredAtLossOfDisplay
{
public:
    explicit StoredAtLossOfDisplay(std::function<void()> store);
    ~StoredAtLossOfDisplay();
    StoredAtLossOfDisplay(const StoredAtLossOfDisplay &) = delete;
    StoredAtLossOfDisplay &operator=(const StoredAtLossOfDisplay &) = delete;
};

} // namespace viewer
