#pragma once

#include "viewer/settings/CommandLine.h"

namespace kelo {
class DXOpenGL;
class Menu;
} // namespace kelo

namespace viewer {

class OpenedTreatment;

/// Writes the view's state with the menu that is open ("-" for standard output). Returns what went
/// wrong, or an empty string.
QString writeState(const kelo::DXOpenGL &view, const OpenedTreatment &treatment,
                   const kelo::Menu *openMenu, const QString &file);

/// Writes what the command line asks for at the end of a run (picture, pages, state, scene). What
/// goes wrong is said on standard error; returns how the program ends.
ExitStatus writeOutputs(const CommandLine &commandLine, kelo::DXOpenGL &view,
                        const OpenedTreatment &treatment, const kelo::Menu *openMenu = nullptr);

/// What to say when a print request gave nothing: by the name of the FILE, or of the output.
QString couldNotBePrinted(const CommandLine &commandLine);

/// A whole run without a window: loads the treatment, plays the script, writes the outputs. Several
/// FILEs are printed one after the other; the worst of them decides how the program ends.
ExitStatus runHeadless(const CommandLine &commandLine);

/// Checks the folder that --meshes names, if any; says on standard error what is wrong with it.
bool meshesCanBeLoaded(const CommandLine &commandLine);

} // namespace viewer
