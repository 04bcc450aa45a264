#pragma once

#include "platform/gl.h"

#include "platform/view/OpenGLContext.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace kelo::test {

/// Takes every pending error of the current context, and says which they were. Without a current
/// context nothing can be said, which is a failure too.
inline testing::AssertionResult noGLError()
{
    // Asking GL itself without a context would end the program.
    if (!OpenGLContext::currentContext())
        return testing::AssertionFailure() << "no OpenGL context is current, so none can be asked";
    testing::AssertionResult result = testing::AssertionSuccess();
    // A lost context may report errors for ever.
    for (int i = 0; i < 16; ++i) {
        const GLenum error = glGetError();
        if (error == GL_NO_ERROR) break;
        if (i == 0) result = testing::AssertionFailure() << "pending OpenGL errors:";
        // A failure keeps no stream state from one piece to the next.
        char number[16];
        std::snprintf(number, sizeof number, " 0x%04X", error);
        result << number;
    }
    return result;
}

} // namespace kelo::test

/// Every test that draws ends with this line: no error may be pending in the current context.
#define EXPECT_NO_GL_ERROR() EXPECT_TRUE(::kelo::test::noGLError())
