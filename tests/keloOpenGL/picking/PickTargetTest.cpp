#include "keloOpenGL/picking/PickTarget.h"

#include "platform/gl.h"

#include "tests/keloOpenGL/ViewFixture.h"

#include <array>
#include <optional>

namespace {

using namespace kelo;

GLint glInteger(GLenum name)
{
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

std::array<GLubyte, 4> pixelAt(int column, int row)
{
    std::array<GLubyte, 4> pixel{};
    glReadPixels(column, row, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel.data());
    return pixel;
}

void clearTo(float red, float green, float blue)
{
    glClearColor(red, green, blue, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

class PickTargetTest : public kelo::test::ViewFixture
{
protected:
    PickTargetTest() { view.openGLContext().makeCurrentContext(); }
    OpenGLView view{Rect{{0.0, 0.0}, {20.0, 10.0}}};
    PickTarget target;
};

} // namespace

TEST_F(PickTargetTest, drawingAndReadingGoToTheBoundTargetAndBack)
{
    clearTo(1.0f, 0.0f, 0.0f);
    {
        const PickTarget::Binding binding(target, {20, 10});
        ASSERT_TRUE(binding.isBound());
        clearTo(0.0f, 0.0f, 1.0f);
        EXPECT_EQ(pixelAt(3, 4), (std::array<GLubyte, 4>{0, 0, 255, 255}));
    }
    EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), 0);
    EXPECT_EQ(pixelAt(3, 4), (std::array<GLubyte, 4>{255, 0, 0, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickTargetTest, hasEightBitsAColourAtLeast24OfDepthAndOneSample)
{
    const PickTarget::Binding binding(target, {20, 10});
    EXPECT_EQ(glInteger(GL_RED_BITS), 8);
    EXPECT_EQ(glInteger(GL_GREEN_BITS), 8);
    EXPECT_EQ(glInteger(GL_BLUE_BITS), 8);
    EXPECT_GE(glInteger(GL_DEPTH_BITS), 24);
    EXPECT_EQ(glInteger(GL_SAMPLES), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickTargetTest, isKeptFromUseToUse)
{
    EXPECT_EQ(target.framebufferName(), 0u);
    std::optional<PickTarget::Binding> binding(std::in_place, target, PixelSize{20, 10});
    const std::uint32_t name = target.framebufferName();
    EXPECT_NE(name, 0u);
    binding.reset();
    binding.emplace(target, PixelSize{20, 10});
    EXPECT_EQ(target.framebufferName(), name);
    EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), static_cast<GLint>(name));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickTargetTest, isMadeAnewForAnotherSize)
{
    {
        const PickTarget::Binding binding(target, {20, 10});
    }
    const PickTarget::Binding binding(target, {33, 44});
    ASSERT_TRUE(binding.isBound());
    EXPECT_EQ(target.size(), (PixelSize{33, 44}));
    clearTo(0.0f, 1.0f, 0.0f);
    EXPECT_EQ(pixelAt(32, 43), (std::array<GLubyte, 4>{0, 255, 0, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickTargetTest, aSizeThatCannotBeHadLeavesDrawingWhereItWas)
{
    const int tooLarge = glInteger(GL_MAX_RENDERBUFFER_SIZE_EXT) + 1;
    for (const PixelSize &size :
         {PixelSize{tooLarge, 10}, PixelSize{10, tooLarge}, PixelSize{0, 10}, PixelSize{10, -1}}) {
        const PickTarget::Binding binding(target, size);
        EXPECT_FALSE(binding.isBound());
        EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), 0);
        EXPECT_EQ(target.framebufferName(), 0u);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickTargetTest, insideAnotherFramebufferDrawingGoesBackThere)
{
    PickTarget outer;
    const PickTarget::Binding outerBinding(outer, {20, 10});
    {
        const PickTarget::Binding binding(target, {20, 10});
        EXPECT_NE(target.framebufferName(), outer.framebufferName());
    }
    EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), static_cast<GLint>(outer.framebufferName()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickTargetTest, aLostContextTakesTheTargetWithItAndTheNextOneGetsItsOwn)
{
    {
        const PickTarget::Binding binding(target, {20, 10});
    }
    view.loseContext();
    EXPECT_EQ(target.framebufferName(), 0u);
    view.openGLContext().makeCurrentContext();
    EXPECT_EQ(target.framebufferName(), 0u);
    const PickTarget::Binding binding(target, {20, 10});
    ASSERT_TRUE(binding.isBound());
    clearTo(0.0f, 1.0f, 0.0f);
    EXPECT_EQ(pixelAt(19, 9), (std::array<GLubyte, 4>{0, 255, 0, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickTargetTest, leavesNoNamesBehindInTheContext)
{
    GLuint name = 0;
    {
        PickTarget shortLived;
        const PickTarget::Binding binding(shortLived, {20, 10});
        name = shortLived.framebufferName();
        EXPECT_TRUE(glIsFramebufferEXT(name));
    }
    EXPECT_FALSE(glIsFramebufferEXT(name));
    EXPECT_NO_GL_ERROR();
}
