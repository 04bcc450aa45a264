// Baked light as a shader receives it.

#include "tests/models/GLFixture.h"

#include "models/BakedLight.h"
#include "models/DXGLightweightModel.h"
#include "tests/models/TestMeshes.h"

#include <memory>

namespace kelo {
namespace {

using test::Pixel;
using test::rectangleModel;

class BakedLightGL : public test::GLFixture
{
protected:
    void SetUp() override
    {
        GLFixture::SetUp();
        // Shows (closed, open, tone) as red, green and, from -1 to 1, blue.
        const char *source = "#version 120\n"
                             "void main() {\n"
                             "    gl_Position = ftransform();\n"
                             "    vec3 light = gl_MultiTexCoord1.xyz;\n"
                             "    gl_FrontColor = vec4(light.xy, 0.5 + 0.5 * light.z, 1.0);\n"
                             "}\n";
        const GLuint stage = glCreateShader(GL_VERTEX_SHADER);
        glShaderSource(stage, 1, &source, nullptr);
        glCompileShader(stage);
        program = glCreateProgram();
        glAttachShader(program, stage);
        glLinkProgram(program);
        glDeleteShader(stage);
        GLint isLinked = GL_FALSE;
        glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
        ASSERT_EQ(isLinked, GL_TRUE);
        glUseProgram(program);
        model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
        ASSERT_EQ(model->vertexCount(), 4u);
    }
    void TearDown() override
    {
        glUseProgram(0);
        glDeleteProgram(program);
    }

    Pixel drawnPixel()
    {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        model->drawWithBakedLight();
        return pixelAt(0.0, 0.0);
    }
    static void expectOpenIsCurrentAndNothingEnabled()
    {
        float current[4]{};
        glActiveTexture(GL_TEXTURE1);
        glGetFloatv(GL_CURRENT_TEXTURE_COORDS, current);
        glActiveTexture(GL_TEXTURE0);
        EXPECT_EQ(current[0], 1.0f);
        EXPECT_EQ(current[1], 1.0f);
        EXPECT_EQ(current[2], 0.0f);
        int unit = 0, buffer = -1;
        glGetIntegerv(GL_CLIENT_ACTIVE_TEXTURE, &unit);
        EXPECT_EQ(unit, GL_TEXTURE0);
        glClientActiveTexture(GL_TEXTURE1);
        EXPECT_FALSE(glIsEnabled(GL_TEXTURE_COORD_ARRAY));
        glClientActiveTexture(GL_TEXTURE0);
        EXPECT_FALSE(glIsEnabled(GL_TEXTURE_COORD_ARRAY));
        glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &buffer);
        EXPECT_EQ(buffer, 0);
        EXPECT_NO_GL_ERROR();
    }

    GLuint program = 0;
    std::shared_ptr<DXGLightweightModel> model;
};

TEST_F(BakedLightGL, arrivesInTheSecondTextureCoordinate)
{
    model->setBakedLight(BakedLight(4, {51, 102, -127}));
    EXPECT_EQ(drawnPixel(), (Pixel{51, 102, 0}));
    model->setBakedLight(BakedLight(4, {0, 255, 127}));
    EXPECT_EQ(drawnPixel(), (Pixel{0, 255, 255})) << "what replaces it is uploaded";
    expectOpenIsCurrentAndNothingEnabled();
}

TEST_F(BakedLightGL, everyVertexHasItsOwn)
{
    BakedLight light(4);
    for (std::size_t i = 0; i < 4; ++i) {
        // Dark at the left, bright at the right.
        const bool isLeft = model->vertices()[i].position[0] < 0.0f;
        light[i].closed = isLeft ? 0 : 255;
        light[i].open = isLeft ? 255 : 0;
    }
    model->setBakedLight(light);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    model->drawWithBakedLight();
    const Pixel left = pixelAt(-1.6, 1.0);
    const Pixel right = pixelAt(1.6, 1.0);
    EXPECT_NEAR(left[0], 28, 8);
    EXPECT_NEAR(left[1], 227, 8);
    EXPECT_NEAR(right[0], 227, 8);
    EXPECT_NEAR(right[1], 28, 8);
    expectOpenIsCurrentAndNothingEnabled();
}

TEST_F(BakedLightGL, aMeshWithoutItIsInTheOpen)
{
    glMultiTexCoord3f(GL_TEXTURE1, 0.0f, 0.0f, -1.0f);
    const Pixel inTheOpen = drawnPixel();
    EXPECT_EQ(inTheOpen[0], 255);
    EXPECT_EQ(inTheOpen[1], 255);
    EXPECT_NEAR(inTheOpen[2], 128, 1);
    model->setBakedLight(BakedLight(4, {51, 102, -127}));
    EXPECT_EQ(drawnPixel(), (Pixel{51, 102, 0}));
    model->setBakedLight(std::nullopt);
    EXPECT_EQ(drawnPixel(), inTheOpen);
    expectOpenIsCurrentAndNothingEnabled();
}

TEST_F(BakedLightGL, plainDrawingDoesNotTouchIt)
{
    model->setBakedLight(BakedLight(4, {51, 102, -127}));
    model->drawWithBakedLight(); // even if it is there
    glMultiTexCoord3f(GL_TEXTURE1, 0.2f, 0.6f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    model->draw();
    EXPECT_EQ(pixelAt(0.0, 0.0), (Pixel{51, 153, 255})) << "the current coordinate, not the mesh's";
    float current[4]{};
    glActiveTexture(GL_TEXTURE1);
    glGetFloatv(GL_CURRENT_TEXTURE_COORDS, current);
    glActiveTexture(GL_TEXTURE0);
    EXPECT_EQ(current[0], 0.2f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BakedLightGL, theFixedPipelineDrawsTheSamePixelsWithIt)
{
    glUseProgram(0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    model->draw();
    const Pixel plain = pixelAt(0.0, 0.0);
    EXPECT_NE(plain, black);
    model->setBakedLight(BakedLight(4, {0, 0, -127}));
    EXPECT_EQ(drawnPixel(), plain);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BakedLightGL, goesWithItsModel)
{
    model->setBakedLight(BakedLight(4));
    model->drawWithBakedLight();
    const auto nextName = [] {
        GLuint name = 0;
        glGenBuffers(1, &name);
        return name;
    };
    const GLuint last = nextName();
    int there = 0;
    for (GLuint name = 1; name < last; ++name)
        there += glIsBuffer(name);
    model.reset();
    int left = 0;
    for (GLuint name = 1; name < last; ++name)
        left += glIsBuffer(name);
    EXPECT_EQ(there - left, 3) << "vertices, indices and baked light";
    glDeleteBuffers(1, &last);
    EXPECT_NO_GL_ERROR();
}

} // namespace
} // namespace kelo
