#include "keloOpenGL/view/OffscreenTarget.h"

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

/// As picks have it.
constexpr OffscreenTarget::Formats formats{GL_RGBA8, GL_DEPTH_COMPONENT24};

class OffscreenTargetTest : public kelo::test::ViewFixture
{
protected:
    OffscreenTargetTest() { view.openGLContext().makeCurrentContext(); }
    OpenGLView view{Rect{{0.0, 0.0}, {20.0, 10.0}}};
    OffscreenTarget target;
};

} // namespace

TEST_F(OffscreenTargetTest, drawingAndReadingGoToTheBoundTargetAndBack)
{
    clearTo(1.0f, 0.0f, 0.0f);
    {
        const OffscreenTarget::Binding binding(target, {20, 10}, formats);
        ASSERT_TRUE(binding.isBound());
        clearTo(0.0f, 0.0f, 1.0f);
        EXPECT_EQ(pixelAt(3, 4), (std::array<GLubyte, 4>{0, 0, 255, 255}));
    }
    EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), 0);
    EXPECT_EQ(pixelAt(3, 4), (std::array<GLubyte, 4>{255, 0, 0, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, hasEightBitsAColourAtLeast24OfDepthAndOneSample)
{
    const OffscreenTarget::Binding binding(target, {20, 10}, formats);
    EXPECT_EQ(glInteger(GL_RED_BITS), 8);
    EXPECT_EQ(glInteger(GL_GREEN_BITS), 8);
    EXPECT_EQ(glInteger(GL_BLUE_BITS), 8);
    EXPECT_GE(glInteger(GL_DEPTH_BITS), 24);
    EXPECT_EQ(glInteger(GL_SAMPLES), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, isKeptFromUseToUse)
{
    EXPECT_EQ(target.framebufferName(), 0u);
    std::optional<OffscreenTarget::Binding> binding(std::in_place, target, PixelSize{20, 10},
                                                    formats);
    const std::uint32_t name = target.framebufferName();
    EXPECT_NE(name, 0u);
    binding.reset();
    binding.emplace(target, PixelSize{20, 10}, formats);
    EXPECT_EQ(target.framebufferName(), name);
    EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), static_cast<GLint>(name));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, isMadeAnewForAnotherSize)
{
    {
        const OffscreenTarget::Binding binding(target, {20, 10}, formats);
    }
    const OffscreenTarget::Binding binding(target, {33, 44}, formats);
    ASSERT_TRUE(binding.isBound());
    EXPECT_EQ(target.size(), (PixelSize{33, 44}));
    clearTo(0.0f, 1.0f, 0.0f);
    EXPECT_EQ(pixelAt(32, 43), (std::array<GLubyte, 4>{0, 255, 0, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, aSizeThatCannotBeHadLeavesDrawingWhereItWas)
{
    const int tooLarge = glInteger(GL_MAX_RENDERBUFFER_SIZE_EXT) + 1;
    for (const PixelSize &size :
         {PixelSize{tooLarge, 10}, PixelSize{10, tooLarge}, PixelSize{0, 10}, PixelSize{10, -1}}) {
        const OffscreenTarget::Binding binding(target, size, formats);
        EXPECT_FALSE(binding.isBound());
        EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), 0);
        EXPECT_EQ(target.framebufferName(), 0u);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, insideAnotherFramebufferDrawingGoesBackThere)
{
    OffscreenTarget outer;
    const OffscreenTarget::Binding outerBinding(outer, {20, 10}, formats);
    {
        const OffscreenTarget::Binding binding(target, {20, 10}, formats);
        EXPECT_NE(target.framebufferName(), outer.framebufferName());
    }
    EXPECT_EQ(glInteger(GL_FRAMEBUFFER_BINDING_EXT), static_cast<GLint>(outer.framebufferName()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, aLostContextTakesTheTargetWithItAndTheNextOneGetsItsOwn)
{
    {
        const OffscreenTarget::Binding binding(target, {20, 10}, formats);
    }
    view.loseContext();
    EXPECT_EQ(target.framebufferName(), 0u);
    view.openGLContext().makeCurrentContext();
    EXPECT_EQ(target.framebufferName(), 0u);
    const OffscreenTarget::Binding binding(target, {20, 10}, formats);
    ASSERT_TRUE(binding.isBound());
    clearTo(0.0f, 1.0f, 0.0f);
    EXPECT_EQ(pixelAt(19, 9), (std::array<GLubyte, 4>{0, 255, 0, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, leavesNoNamesBehindInTheContext)
{
    GLuint name = 0;
    {
        OffscreenTarget shortLived;
        const OffscreenTarget::Binding binding(shortLived, {20, 10}, formats);
        name = shortLived.framebufferName();
        EXPECT_TRUE(glIsFramebufferEXT(name));
    }
    EXPECT_FALSE(glIsFramebufferEXT(name));
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, hasNoDepthWhereNoneIsAskedFor)
{
    const OffscreenTarget::Binding binding(target, {20, 10}, {GL_RGBA8});
    ASSERT_TRUE(binding.isBound());
    EXPECT_EQ(glInteger(GL_DEPTH_BITS), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, isMadeAnewForOtherFormats)
{
    {
        const OffscreenTarget::Binding binding(target, {20, 10}, {GL_RGBA8});
    }
    const OffscreenTarget::Binding binding(target, {20, 10}, formats);
    ASSERT_TRUE(binding.isBound());
    EXPECT_GE(glInteger(GL_DEPTH_BITS), 24);
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, aReleasedDepthBufferOutlivesTheTarget)
{
    GLuint depth = 0;
    {
        OffscreenTarget shortLived;
        const OffscreenTarget::Binding binding(shortLived, {20, 10}, formats);
        ASSERT_TRUE(binding.isBound());
        depth = shortLived.releaseDepthBuffer();
        EXPECT_EQ(shortLived.releaseDepthBuffer(), 0u) << "it is the caller's";
    }
    EXPECT_TRUE(glIsRenderbufferEXT(depth));
    glDeleteRenderbuffersEXT(1, &depth);
    EXPECT_NO_GL_ERROR();
}

TEST_F(OffscreenTargetTest, otherFormatsLeaveAnIncompleteFramebufferBound)
{
    // Depth where colours belong.
    EXPECT_FALSE(target.bind({20, 10}, {GL_DEPTH_COMPONENT24}));
    EXPECT_NE(target.framebufferName(), 0u);
    EXPECT_NE(glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT), GL_FRAMEBUFFER_COMPLETE_EXT);
    EXPECT_FALSE(target.bind({20, 10}, {GL_DEPTH_COMPONENT24})) << "nor the second time";
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    target.drop();
    EXPECT_EQ(target.framebufferName(), 0u);
    EXPECT_NO_GL_ERROR();
}
