#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace kelo {

/// The program `banddepth` without its process: takes the arguments after the program's name,
/// writes the report to `out` and complaints to `error`, and returns the exit status: 0, 1 if a
/// band of the tables runs deeper than the limit in a tooth at the closed mouth, 2 for wrong use or
/// for files that cannot be measured.
int runBanddepth(const std::vector<std::string> &arguments, std::ostream &out, std::ostream &error);

} // namespace kelo
