#include "keloOpenGL/printing/PrintTarget.h"
#include "keloOpenGL/printing/WhiteBrackets.h"

#include "platform/gl.h"

#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <optional>
#include <vector>

namespace {

using namespace kelo;

GLint printInteger(GLenum name)
{
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

/// Names count up from 1; the test makes few.
std::vector<GLuint> namesOfRenderbuffers()
{
    std::vector<GLuint> names;
    for (GLuint name = 1; name < 100; ++name) {
        if (glIsRenderbufferEXT(name)) names.push_back(name);
    }
    return names;
}

class PrintTargetTest : public kelo::test::ViewFixture
{
protected:
    PrintTargetTest() { view.openGLContext().makeCurrentContext(); }
    OpenGLView view{Rect{{0.0, 0.0}, {20.0, 10.0}}};
};

} // namespace

TEST_F(PrintTargetTest, isBoundForAsLongAsItLives)
{
    {
        const PrintTarget target({8, 4});
        EXPECT_TRUE(target.isMade());
        EXPECT_NE(printInteger(GL_FRAMEBUFFER_BINDING_EXT), 0);
        EXPECT_EQ(glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT), GL_FRAMEBUFFER_COMPLETE_EXT);
        EXPECT_GT(printInteger(GL_DEPTH_BITS), 0);
    }
    EXPECT_EQ(printInteger(GL_FRAMEBUFFER_BINDING_EXT), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintTargetTest, leavesTheNameOfItsDepthBufferWithOnePixel)
{
    ASSERT_TRUE(namesOfRenderbuffers().empty());
    {
        const PrintTarget target({8, 4});
        EXPECT_EQ(namesOfRenderbuffers().size(), 2u);
    }
    const auto left = namesOfRenderbuffers();
    ASSERT_EQ(left.size(), 1u);
    GLint width = 0;
    GLint height = 0;
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, left[0]);
    glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_WIDTH_EXT, &width);
    glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_HEIGHT_EXT, &height);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, 0);
    EXPECT_EQ(width, 1);
    EXPECT_EQ(height, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintTargetTest, leavesNothingWhereTheDepthBufferIsDropped)
{
    {
        PrintTarget target({8, 4});
        target.dropDepthBuffer();
    }
    EXPECT_TRUE(namesOfRenderbuffers().empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintTargetTest, aSizeThatCannotBeHadMakesNothing)
{
    {
        const PrintTarget target({printInteger(GL_MAX_RENDERBUFFER_SIZE_EXT) + 1, 4});
        EXPECT_FALSE(target.isMade());
        EXPECT_EQ(printInteger(GL_FRAMEBUFFER_BINDING_EXT), 0);
    }
    EXPECT_TRUE(namesOfRenderbuffers().empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintTargetTest, isReadTopRowFirstFromAColumnOn)
{
    const PrintTarget target({8, 4});
    glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(5, 3, 1, 1); // in the top row
    glClearColor(0.0f, 0.0f, 1.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    const std::vector<unsigned char> red{255, 0, 0};
    const std::vector<unsigned char> blue{0, 0, 255};
    const auto image = readPrintImage(5, {3, 4});
    ASSERT_EQ(image.size(), 3u * 3 * 4) << "rows have no padding";
    EXPECT_EQ(std::vector(image.begin(), image.begin() + 3), blue);
    for (std::size_t pixel = 1; pixel < 12; ++pixel) {
        const auto begin = image.begin() + static_cast<std::ptrdiff_t>(3 * pixel);
        EXPECT_EQ(std::vector(begin, begin + 3), red) << pixel;
    }
    EXPECT_NO_GL_ERROR();
}

TEST(WhiteBrackets, areWhiteForAsLongAsItLives)
{
    const auto document = std::make_shared<DXDocumentModel>();
    const auto bracket = kelo::test::boxModel({0.0f, 0.0f, 0.0f}, {1.0f, 1.0f, 1.0f});
    const auto own = HVOGLMaterial::materialWithColor(Color::blackColor());
    bracket->setMaterial(own);
    document->setBracketModels({{"8", bracket}});
    {
        const WhiteBrackets white(document.get());
        ASSERT_NE(bracket->material(), own);
        EXPECT_EQ(bracket->material()->color(), Color::whiteColor());
    }
    EXPECT_EQ(bracket->material(), own);
    const WhiteBrackets nothing(nullptr);
}
