#pragma once

#include "viewer/CommandLine.h"

namespace kelo {
class DXOpenGL;
}

namespace viewer {

class DelegateCallLog;

/// Writes what the command line asks for at the end of a run (picture, state, scene). What goes
/// wrong is said on standard error; returns how the program ends.
ExitStatus writeOutputs(const CommandLine &commandLine, kelo::DXOpenGL &view,
                        const DelegateCallLog &callLog);

/// A whole run without a window: loads the treatment, draws it, writes the outputs.
ExitStatus runHeadless(const CommandLine &commandLine);

/// Checks the folder that --meshes names, if any; says on standard error what is wrong with it.
bool meshesCanBeLoaded(const CommandLine &commandLine);

/// One line (or several) on standard error, for people.
void tellUser(const QString &message);

} // namespace viewer
