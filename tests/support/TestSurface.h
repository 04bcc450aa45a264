#pragma once

#include "platform/view/OpenGLView.h"

namespace kelo::test {

/// What views that are made while it lives draw on: SurfaceKind::Surfaceless for a pixel buffer
/// that needs no display, SurfaceKind::Window for native windows. Afterwards the platform decides
/// again. Make it a member of a fixture in front of the views. A test that draws includes
/// tests/support/GLTest.h too and ends with EXPECT_NO_GL_ERROR().
class TestSurface
{
public:
    explicit TestSurface(SurfaceKind kind) { OpenGLView::setSurfaceKind(kind); }
    ~TestSurface() { OpenGLView::setSurfaceKind(SurfaceKind::Automatic); }
    TestSurface(const TestSurface &) = delete;
    TestSurface &operator=(const TestSurface &) = delete;
};

} // namespace kelo::test
