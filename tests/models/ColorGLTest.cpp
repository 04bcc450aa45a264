#include "tests/models/GLFixture.h"

#include "models/Color.h"

namespace kelo {

namespace test {
void clearColorWithoutOpenGLHeaders(const Color &color);
} // namespace test

namespace {

class ColorGL : public test::GLFixture
{
protected:
    static std::array<float, 4> state(GLenum name)
    {
        std::array<float, 4> floats{};
        glGetFloatv(name, floats.data());
        return floats;
    }
};

TEST_F(ColorGL, glColorSetsTheCurrentColor)
{
    Color(0.25, 0.5, 0.75, 0.125).glColor();
    EXPECT_EQ(state(GL_CURRENT_COLOR), (std::array<float, 4>{0.25f, 0.5f, 0.75f, 0.125f}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ColorGL, glClearColorIsOneFunctionForAllCallers)
{
    Color(0.25, 0.5, 0.75, 1.0).glClearColor();
    EXPECT_EQ(state(GL_COLOR_CLEAR_VALUE), (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1.0f}));
    test::clearColorWithoutOpenGLHeaders(Color(1.0, 0.0, 0.5, 0.5));
    EXPECT_EQ(state(GL_COLOR_CLEAR_VALUE), (std::array<float, 4>{1.0f, 0.0f, 0.5f, 0.5f}));
    EXPECT_NO_GL_ERROR();
}

} // namespace
} // namespace kelo
