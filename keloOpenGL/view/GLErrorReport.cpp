#include "platform/gl.h"

#include "keloOpenGL/view/GLErrorReport.h"

#include <cstdio>

namespace kelo {
namespace {

/// GL_TABLE_TOO_LARGE of the imaging subset, which the headers of a plain context leave out.
constexpr unsigned tableTooLarge = 32817;

const char *errorName(unsigned code)
{
    switch (code) {
    case GL_INVALID_ENUM:
        return "GL_INVALID_ENUM";
    case GL_INVALID_VALUE:
        return "GL_INVALID_VALUE";
    case GL_INVALID_OPERATION:
        return "GL_INVALID_OPERATION";
    case GL_STACK_OVERFLOW:
        return "GL_STACK_OVERFLOW";
    case GL_STACK_UNDERFLOW:
        return "GL_STACK_UNDERFLOW";
    case GL_OUT_OF_MEMORY:
        return "GL_OUT_OF_MEMORY";
    case tableTooLarge:
        return "GL_TABLE_TOO_LARGE";
    default:
        return nullptr;
    }
}

} // namespace

std::string glErrorReport(unsigned code)
{
    std::string report = "OpenGL error: " + std::to_string(static_cast<int>(code)) + " - ";
    if (const char *name = errorName(code)) report += std::string(name) + "\n";
    return report;
}

unsigned reportGLError()
{
    const unsigned code = glGetError();
    if (code != GL_NO_ERROR) {
        std::fputs(glErrorReport(code).c_str(), stdout);
        std::fflush(stdout);
    }
    return code;
}

} // namespace kelo
