#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace kelo {

/// The program `meshcheck` without its process: takes the arguments after the program's name,
/// writes the report to `out` and complaints about the arguments to `error`, and returns the exit
/// status: 0 for no problem, 2 for problems, 1 for wrong use.
int runMeshcheck(const std::vector<std::string> &arguments, std::ostream &out, std::ostream &error);

} // namespace kelo
