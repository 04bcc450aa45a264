#include "keloOpenGL/view/StreamBuffer.h"

#include "platform/gl.h"

#include "tests/keloOpenGL/ViewFixture.h"

#include <algorithm>
#include <array>

namespace {

using namespace kelo;

GLuint boundBuffer(GLenum binding)
{
    GLint name = -1;
    glGetIntegerv(binding, &name);
    return static_cast<GLuint>(name);
}

class StreamBufferTest : public kelo::test::ViewFixture
{
protected:
    StreamBufferTest() { view.openGLContext().makeCurrentContext(); }
    OpenGLView view{Rect{{0.0, 0.0}, {20.0, 10.0}}};
    StreamBuffer buffer{StreamBuffer::Kind::Vertices};
};

TEST_F(StreamBufferTest, isBoundAsItsKindIs)
{
    StreamBuffer indices{StreamBuffer::Kind::Indices};
    buffer.bind();
    indices.bind();
    EXPECT_NE(boundBuffer(GL_ARRAY_BUFFER_BINDING), 0u);
    EXPECT_NE(boundBuffer(GL_ELEMENT_ARRAY_BUFFER_BINDING), 0u);
    EXPECT_NE(boundBuffer(GL_ARRAY_BUFFER_BINDING), boundBuffer(GL_ELEMENT_ARRAY_BUFFER_BINDING));
    buffer.unbind();
    indices.unbind();
    EXPECT_EQ(boundBuffer(GL_ARRAY_BUFFER_BINDING), 0u);
    EXPECT_EQ(boundBuffer(GL_ELEMENT_ARRAY_BUFFER_BINDING), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(StreamBufferTest, holdsWhatWasWrittenLast)
{
    buffer.bind();
    for (const std::array<float, 2> &values : {std::array{1.0f, 2.0f}, std::array{3.0f, 4.0f}}) {
        auto *mapped = buffer.mapNew<float>(values.size());
        ASSERT_NE(mapped, nullptr);
        std::copy(values.begin(), values.end(), mapped);
        EXPECT_TRUE(buffer.unmap());
    }
    std::array<float, 2> held{};
    glGetBufferSubData(GL_ARRAY_BUFFER, 0, sizeof held, held.data());
    EXPECT_EQ(held, (std::array{3.0f, 4.0f}));
    GLint size = 0;
    glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_SIZE, &size);
    EXPECT_EQ(size, 8);
    buffer.unbind();
    EXPECT_NO_GL_ERROR();
}

TEST_F(StreamBufferTest, hasNoNameUntilItsFirstUseAndKeepsIt)
{
    EXPECT_FALSE(glIsBuffer(1));
    buffer.bind();
    const GLuint name = boundBuffer(GL_ARRAY_BUFFER_BINDING);
    buffer.unbind();
    buffer.bind();
    EXPECT_EQ(boundBuffer(GL_ARRAY_BUFFER_BINDING), name);
    buffer.unbind();
    EXPECT_NO_GL_ERROR();
}

TEST_F(StreamBufferTest, leavesNoNameBehind)
{
    GLuint name = 0;
    {
        StreamBuffer shortLived{StreamBuffer::Kind::Vertices};
        shortLived.bind();
        name = boundBuffer(GL_ARRAY_BUFFER_BINDING);
        shortLived.unbind();
    }
    EXPECT_FALSE(glIsBuffer(name));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StreamBufferTest, anotherContextGetsABufferOfItsOwn)
{
    buffer.bind();
    buffer.unbind();
    view.loseContext();
    view.openGLContext().makeCurrentContext();
    buffer.bind();
    ASSERT_NE(buffer.mapNew<float>(4), nullptr);
    EXPECT_TRUE(buffer.unmap());
    buffer.unbind();
    EXPECT_NO_GL_ERROR();
}

} // namespace
