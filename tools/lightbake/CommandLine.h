#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace kelo {

/// The program `lightbake` without its process: takes the arguments behind the program's name,
/// writes what was done to `out` and complaints to `error`, and returns the exit status: 0, 1 if
/// the folder's meshes cannot be read or a file cannot be written, 2 for wrong use.
int runLightbake(const std::vector<std::string> &arguments, std::ostream &out, std::ostream &error);

} // namespace kelo
