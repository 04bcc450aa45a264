// This file sees the colour's header before any OpenGL header, ColorGLTest.cpp after one: the
// loader's macros must not make two different functions of one name.
#include "models/Color.h"

namespace kelo::test {

void clearColorWithoutOpenGLHeaders(const Color &color)
{
    color.glClearColor();
}

} // namespace kelo::test
