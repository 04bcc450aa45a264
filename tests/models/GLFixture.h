#pragma once

#include "tests/support/GLTest.h"
#include "tests/support/TestSurface.h"

#include <gtest/gtest.h>

#include <array>

namespace kelo::test {

using Pixel = std::array<int, 3>;

/// A 64 by 64 pixel buffer with a context, and a camera that looks down the z axis at x and y from
/// -8 to 8, four pixels a unit.
class GLFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(context()->makeCurrentContext());
        prepare();
    }

    std::shared_ptr<OpenGLContext> context() { return view.sharedOpenGLContext(); }

    /// Camera and empty buffer in the current context.
    static void prepare()
    {
        glViewport(0, 0, 64, 64);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-8.0, 8.0, -8.0, 8.0, -8.0, 8.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glDisable(GL_DITHER);
        glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }

    /// The pixel that shows the point (x, y) of the scene.
    static Pixel pixelAt(double x, double y)
    {
        unsigned char bytes[3]{};
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(static_cast<int>((x + 8.0) * 4.0), static_cast<int>((y + 8.0) * 4.0), 1, 1,
                     GL_RGB, GL_UNSIGNED_BYTE, bytes);
        return {bytes[0], bytes[1], bytes[2]};
    }

    static constexpr Pixel black{0, 0, 0};

    TestSurface surface{SurfaceKind::Surfaceless};
    OpenGLView view{Rect{{0.0, 0.0}, {64.0, 64.0}}};
};

} // namespace kelo::test
