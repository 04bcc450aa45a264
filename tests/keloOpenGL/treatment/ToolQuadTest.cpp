// How a tool of the overlay reaches OpenGL: its buffers, its four vertices and the one draw.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/view/SimpleTexture.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>
#include <QTemporaryDir>

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace {

using namespace kelo;

/// Notes the fillings of buffers and, at each draw, what the bound buffers hold. One at a time.
class RecordedQuads
{
public:
    struct Fill
    {
        GLenum target;
        GLsizeiptr size;
        bool hasData;
        GLenum usage;
        bool operator==(const Fill &) const = default;
    };
    struct Draw
    {
        GLenum mode;
        GLsizei count;
        GLenum type;
        GLint texture; ///< bound to the rectangle target
        std::vector<float> vertices;
        std::vector<std::uint32_t> indices;
        std::vector<GLint> pointers; ///< size and stride of the vertices and texture coordinates
        std::vector<std::uintptr_t> offsets;
    };

    RecordedQuads()
    {
        // An entry point is looked up by its first call, which would then call the replacement.
        GLuint buffer = 0;
        glGenBuffers(1, &buffer);
        glBindBuffer(GL_ARRAY_BUFFER, buffer);
        glBufferData(GL_ARRAY_BUFFER, 4, nullptr, GL_STREAM_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glDeleteBuffers(1, &buffer);
        glDrawElements(GL_POINTS, 0, GL_UNSIGNED_INT, nullptr);
        keptDraw_ = epoxy_glDrawElements;
        keptFill_ = epoxy_glBufferData;
        current = this;
        epoxy_glBufferData = [](GLenum target, GLsizeiptr size, const void *data, GLenum usage) {
            current->fills.push_back({target, size, data != nullptr, usage});
            current->keptFill_(target, size, data, usage);
        };
        epoxy_glDrawElements = [](GLenum mode, GLsizei count, GLenum type, const void *indices) {
            current->note(mode, count, type);
            current->keptDraw_(mode, count, type, indices);
        };
    }
    ~RecordedQuads()
    {
        epoxy_glDrawElements = keptDraw_;
        epoxy_glBufferData = keptFill_;
        current = nullptr;
    }

    std::vector<Fill> fills;
    std::vector<Draw> draws;

private:
    static GLint integer(GLenum name)
    {
        GLint value = -1;
        glGetIntegerv(name, &value);
        return value;
    }

    static std::uintptr_t offset(GLenum name)
    {
        void *value = nullptr;
        glGetPointerv(name, &value);
        return reinterpret_cast<std::uintptr_t>(value);
    }

    void note(GLenum mode, GLsizei count, GLenum type)
    {
        Draw draw{mode, count, type, integer(GL_TEXTURE_BINDING_RECTANGLE), {}, {}, {}, {}};
        draw.vertices.resize(16);
        glGetBufferSubData(GL_ARRAY_BUFFER, 0, 64, draw.vertices.data());
        draw.indices.resize(4);
        glGetBufferSubData(GL_ELEMENT_ARRAY_BUFFER, 0, 16, draw.indices.data());
        draw.pointers = {integer(GL_VERTEX_ARRAY_SIZE), integer(GL_VERTEX_ARRAY_STRIDE),
                         integer(GL_TEXTURE_COORD_ARRAY_SIZE),
                         integer(GL_TEXTURE_COORD_ARRAY_STRIDE)};
        draw.offsets = {offset(GL_VERTEX_ARRAY_POINTER), offset(GL_TEXTURE_COORD_ARRAY_POINTER)};
        draws.push_back(draw);
    }

    static inline RecordedQuads *current = nullptr;
    PFNGLDRAWELEMENTSPROC keptDraw_ = nullptr;
    PFNGLBUFFERDATAPROC keptFill_ = nullptr;
};

class ToolQuad : public kelo::test::ViewFixture
{
protected:
    std::shared_ptr<SimpleTexture> texture(int width, int height)
    {
        QImage picture(width, height, QImage::Format_RGBA8888);
        picture.fill(Qt::red);
        const QString path = folder.filePath("picture.png");
        EXPECT_TRUE(picture.save(path));
        EXPECT_TRUE(view->openGLContext().makeCurrentContext());
        return SimpleTexture::textureWithFile(path.toStdString());
    }

    QTemporaryDir folder;
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {400.0, 300.0}});
};

TEST_F(ToolQuad, bothBuffersAreSpecifiedAnewWithoutDataForEveryTool)
{
    const auto picture = texture(128, 64);
    const RecordedQuads recorded;
    for (int i = 0; i < 2; ++i)
        view->drawToolButton_inRect(picture, Rect{{0.5, 0.25}, {0.25, 0.125}});
    const std::vector<RecordedQuads::Fill> once{
        {GL_ARRAY_BUFFER, 64, false, GL_STREAM_DRAW},
        {GL_ELEMENT_ARRAY_BUFFER, 16, false, GL_STREAM_DRAW}};
    ASSERT_EQ(recorded.fills.size(), 4u);
    EXPECT_EQ(std::vector(recorded.fills.begin(), recorded.fills.begin() + 2), once);
    EXPECT_EQ(std::vector(recorded.fills.begin() + 2, recorded.fills.end()), once);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ToolQuad, itIsOneDrawOfFourVerticesFromTheLowerLeftRound)
{
    const auto picture = texture(128, 64);
    const RecordedQuads recorded;
    view->drawToolButton_inRect(picture, Rect{{0.5, 0.25}, {0.25, 0.125}});
    ASSERT_EQ(recorded.draws.size(), 1u);
    const RecordedQuads::Draw &draw = recorded.draws[0];
    EXPECT_EQ(draw.mode, static_cast<GLenum>(GL_QUADS));
    EXPECT_EQ(draw.count, 4);
    EXPECT_EQ(draw.type, static_cast<GLenum>(GL_UNSIGNED_INT));
    EXPECT_NE(draw.texture, 0);
    EXPECT_EQ(draw.indices, (std::vector<std::uint32_t>{0, 1, 2, 3}));
    EXPECT_EQ(draw.vertices, (std::vector<float>{0.5f, 0.25f, 0.0f, 64.0f,    //
                                                 0.75f, 0.25f, 128.0f, 64.0f, //
                                                 0.75f, 0.375f, 128.0f, 0.0f, //
                                                 0.5f, 0.375f, 0.0f, 0.0f}));
    EXPECT_EQ(draw.pointers, (std::vector<GLint>{2, 16, 2, 16}));
    EXPECT_EQ(draw.offsets, (std::vector<std::uintptr_t>{0, 8}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ToolQuad, afterwardsNothingIsBoundAndTheArraysAreOff)
{
    const auto picture = texture(16, 16);
    view->drawToolButton_inRect(picture, Rect{{0.0, 0.0}, {0.25, 0.25}});
    for (const GLenum binding :
         {GL_ARRAY_BUFFER_BINDING, GL_ELEMENT_ARRAY_BUFFER_BINDING, GL_TEXTURE_BINDING_RECTANGLE}) {
        GLint name = -1;
        glGetIntegerv(binding, &name);
        EXPECT_EQ(name, 0) << binding;
    }
    EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_COORD_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_RECTANGLE));
    EXPECT_NO_GL_ERROR();
}

} // namespace
