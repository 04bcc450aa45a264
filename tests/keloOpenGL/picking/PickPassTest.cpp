#include "keloOpenGL/picking/PickPass.h"

#include "platform/gl.h"

#include "models/PickIdentifier.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <optional>
#include <vector>

namespace {

using namespace kelo;

class PickPassTest : public kelo::test::ViewFixture
{
protected:
    PickPassTest() { view.openGLContext().makeCurrentContext(); }
    OpenGLView view{Rect{{0.0, 0.0}, {20.0, 10.0}}};
    OffscreenTarget target;
};

/// One pixel in the colour of an identifier.
void drawIdentifier(std::uint32_t identifier, int column, int row)
{
    const auto channel = [identifier](int shift) {
        return static_cast<float>(identifier >> shift & 0xFF) / 255.0f;
    };
    glPushAttrib(GL_SCISSOR_BIT | GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(column, row, 1, 1);
    glClearColor(channel(16), channel(8), channel(0), 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glPopAttrib();
}

TEST_F(PickPassTest, identifiersAreReadAsTheyWereDrawn)
{
    const OffscreenTarget::Binding binding(target, {3, 2}, pickFormats());
    ASSERT_TRUE(binding.isBound());
    const PickPassState before;
    beginPickPass(std::nullopt);
    drawIdentifier(0x123456, 2, 1);
    drawIdentifier(0xFEDC01, 0, 0);
    EXPECT_EQ(readPickIdentifier(2, 1), 0x123456u);
    EXPECT_EQ(readPickIdentifier(1, 1), 0u) << "nothing lies there";
    EXPECT_EQ(readPickIdentifiers({3, 2}),
              (std::vector<std::uint32_t>{0xFEDC01, 0, 0, 0, 0, 0x123456}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickPassTest, aPixelThatThePictureDoesNotHaveIsNoPixel)
{
    const OffscreenTarget::Binding binding(target, {3, 2}, pickFormats());
    const PickPassState before;
    beginPickPass(std::nullopt);
    EXPECT_EQ(readPickIdentifier(3, 0), noPixelPickIdentifier);
    EXPECT_EQ(readPickIdentifier(0, -1), noPixelPickIdentifier);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickPassTest, onlyAPartIsClearedAndDrawn)
{
    const OffscreenTarget::Binding binding(target, {3, 2}, pickFormats());
    drawIdentifier(0x010203, 0, 0);
    drawIdentifier(0x040506, 1, 1);
    const PickPassState before;
    beginPickPass(PixelRect{1, 1, 1, 1});
    EXPECT_EQ(readPickIdentifier(0, 0), 0x010203u) << "outside of the part";
    EXPECT_EQ(readPickIdentifier(1, 1), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickPassTest, everyStateIsAsItWasAfterwards)
{
    for (const GLenum capability : {GL_DITHER, GL_BLEND, GL_LIGHTING})
        glEnable(capability);
    for (const GLenum capability : {GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST})
        glDisable(capability);
    glClearColor(0.25f, 0.5f, 0.75f, 1.0f);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glMatrixMode(GL_PROJECTION);
    {
        const PickPassState before;
        beginPickPass(PixelRect{1, 1, 1, 1});
        EXPECT_FALSE(glIsEnabled(GL_BLEND));
        EXPECT_TRUE(glIsEnabled(GL_SCISSOR_TEST));
        readPickIdentifier(1, 1);
    }
    for (const GLenum capability : {GL_DITHER, GL_BLEND, GL_LIGHTING})
        EXPECT_TRUE(glIsEnabled(capability)) << capability;
    for (const GLenum capability : {GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST})
        EXPECT_FALSE(glIsEnabled(capability)) << capability;
    GLfloat clear[4] = {};
    GLint alignment = 0;
    GLint mode = 0;
    glGetFloatv(GL_COLOR_CLEAR_VALUE, clear);
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    EXPECT_EQ(clear[2], 0.75f);
    EXPECT_EQ(alignment, 8);
    EXPECT_EQ(mode, GL_PROJECTION);
    EXPECT_NO_GL_ERROR();
}

} // namespace
