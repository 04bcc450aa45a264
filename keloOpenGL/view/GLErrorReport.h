#pragma once

#include "base/Export.h"

#include <string>

namespace kelo {

/// What is printed for an OpenGL error code: "OpenGL error: 1280 - GL_INVALID_ENUM" and a line end;
/// for a code without a name only the part up to "- ".
KELO_EXPORT std::string glErrorReport(unsigned code);

/// Reads one error code of the current context and prints its report on standard output unless it
/// is 0; returns it. Further errors wait for the next call.
KELO_EXPORT unsigned reportGLError();

} // namespace kelo
