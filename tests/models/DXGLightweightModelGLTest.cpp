#include "tests/models/GLFixture.h"

#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "tests/models/TestMeshes.h"
#include "tests/support/CapturedOutput.h"

#include <string>
#include <vector>

namespace kelo {
namespace {

using test::Pixel;
using test::rectangleModel;

class DXGLightweightModelGL : public test::GLFixture
{
protected:
    static int boundBuffer(GLenum binding)
    {
        int name = -1;
        glGetIntegerv(binding, &name);
        return name;
    }
    static int bufferSize(GLenum target, GLuint name)
    {
        int size = -1;
        glBindBuffer(target, name);
        glGetBufferParameteriv(target, GL_BUFFER_SIZE, &size);
        glBindBuffer(target, 0);
        return size;
    }
    static void expectNothingBoundOrEnabled()
    {
        EXPECT_EQ(boundBuffer(GL_ARRAY_BUFFER_BINDING), 0);
        EXPECT_EQ(boundBuffer(GL_ELEMENT_ARRAY_BUFFER_BINDING), 0);
        EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
        EXPECT_FALSE(glIsEnabled(GL_NORMAL_ARRAY));
    }
    /// What the identifier of the mesh looks like.
    static Pixel pickColor(const DXGLightweightModel &model)
    {
        const std::uint64_t identifier = model.uniqueID();
        return {static_cast<int>(identifier / 65536 % 128),
                static_cast<int>(identifier / 256 % 256), static_cast<int>(identifier % 256)};
    }
};

TEST_F(DXGLightweightModelGL, theBuffersAreUploadedOnceAndHoldTheArrays)
{
    const auto model = rectangleModel(-1.0f, -1.0f, 1.0f, 1.0f);
    EXPECT_EQ(model->vboID(), 0u);
    model->prepareVBO();
    const std::uint32_t vertexBuffer = model->vboID();
    const std::uint32_t indexBuffer = model->vboIndexID();
    ASSERT_NE(vertexBuffer, 0u);
    ASSERT_NE(indexBuffer, 0u);
    EXPECT_NE(vertexBuffer, indexBuffer);
    EXPECT_EQ(bufferSize(GL_ARRAY_BUFFER, vertexBuffer), 4 * 24);
    EXPECT_EQ(bufferSize(GL_ELEMENT_ARRAY_BUFFER, indexBuffer), 6 * 4);
    int usage = 0;
    glBindBuffer(GL_ARRAY_BUFFER, vertexBuffer);
    glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_USAGE, &usage);
    EXPECT_EQ(usage, GL_STATIC_DRAW);
    OBJVertex corner{};
    glGetBufferSubData(GL_ARRAY_BUFFER, 2 * 24, 24, &corner);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    EXPECT_EQ(corner.position[0], 1.0f);
    EXPECT_EQ(corner.position[1], 1.0f);
    EXPECT_EQ(corner.normal[2], 1.0f);

    model->prepareVBO();
    model->draw();
    model->drawForColorSelection();
    EXPECT_EQ(model->vboID(), vertexBuffer);
    EXPECT_EQ(model->vboIndexID(), indexBuffer);
    EXPECT_EQ(model->vertexCount(), 4u) << "the arrays are kept";
    expectNothingBoundOrEnabled();
    EXPECT_NO_GL_ERROR();
}

/// Counts what is asked of the driver about buffers. One at a time.
class CountedBufferCalls
{
public:
    CountedBufferCalls()
    {
        // An entry point is looked up by its first call, which would then call the replacement.
        GLuint name = 0;
        glGenBuffers(1, &name);
        glBindBuffer(GL_ARRAY_BUFFER, name);
        glBufferData(GL_ARRAY_BUFFER, 4, nullptr, GL_STREAM_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glDeleteBuffers(1, &name);
        keptGen_ = epoxy_glGenBuffers;
        keptBind_ = epoxy_glBindBuffer;
        keptFill_ = epoxy_glBufferData;
        current_ = this;
        epoxy_glGenBuffers = [](GLsizei count, GLuint *names) {
            current_->made += count;
            current_->keptGen_(count, names);
        };
        epoxy_glBindBuffer = [](GLenum target, GLuint buffer) {
            current_->bound += buffer != 0;
            current_->keptBind_(target, buffer);
        };
        epoxy_glBufferData = [](GLenum target, GLsizeiptr size, const void *data, GLenum usage) {
            ++current_->filled;
            current_->keptFill_(target, size, data, usage);
        };
    }
    ~CountedBufferCalls()
    {
        epoxy_glGenBuffers = keptGen_;
        epoxy_glBindBuffer = keptBind_;
        epoxy_glBufferData = keptFill_;
        current_ = nullptr;
    }
    CountedBufferCalls(const CountedBufferCalls &) = delete;
    CountedBufferCalls &operator=(const CountedBufferCalls &) = delete;

    int made = 0, bound = 0, filled = 0;

private:
    static inline CountedBufferCalls *current_ = nullptr;
    PFNGLGENBUFFERSPROC keptGen_ = nullptr;
    PFNGLBINDBUFFERPROC keptBind_ = nullptr;
    PFNGLBUFFERDATAPROC keptFill_ = nullptr;
};

TEST_F(DXGLightweightModelGL, onlyTheFirstDrawingAsksForBuffers)
{
    const auto model = rectangleModel(-1.0f, -1.0f, 1.0f, 1.0f);
    const CountedBufferCalls calls;
    model->draw();
    EXPECT_EQ(calls.made, 2) << "vertices and indices";
    EXPECT_EQ(calls.filled, 2);
    EXPECT_EQ(calls.bound, 4) << "to fill them and to draw from them";
    for (int drawing = 1; drawing <= 3; ++drawing) {
        drawing == 2 ? model->drawForColorSelection() : model->draw();
        EXPECT_EQ(calls.made, 2) << drawing;
        EXPECT_EQ(calls.filled, 2) << drawing;
        EXPECT_EQ(calls.bound, 4 + 2 * drawing) << drawing;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, drawingUploadsAndDrawsInTheMaterialsColor)
{
    const auto model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    model->setMaterial(HVOGLMaterial::materialWithColor(Color(1.0, 0.0, 0.0)));
    glDisable(GL_LIGHTING);
    model->draw();
    EXPECT_EQ(pixelAt(0.0, 0.0), (Pixel{255, 0, 0}));
    EXPECT_EQ(pixelAt(1.9, -1.9), (Pixel{255, 0, 0}));
    EXPECT_EQ(pixelAt(2.3, 0.0), black);
    expectNothingBoundOrEnabled();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, drawingIsLitByTheNormals)
{
    const auto model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    HVOGLMaterial material(Color::blackColor());
    material.setFrontDiffuseColor(Color(0.0, 1.0, 0.0));
    material.setFrontSpecularColor(Color::blackColor());
    model->setMaterial(std::make_shared<HVOGLMaterial>(material));
    const float none[4]{0.0f, 0.0f, 0.0f, 1.0f};
    const float white[4]{1.0f, 1.0f, 1.0f, 1.0f};
    const float fromTheViewer[4]{0.0f, 0.0f, 1.0f, 0.0f};
    const float fromTheSide[4]{1.0f, 0.0f, 0.0f, 0.0f};
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, none);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
    glLightfv(GL_LIGHT0, GL_POSITION, fromTheViewer);
    model->draw();
    EXPECT_EQ(pixelAt(0.0, 0.0), (Pixel{0, 255, 0})) << "the light falls straight on it";
    prepare();
    glLightfv(GL_LIGHT0, GL_POSITION, fromTheSide);
    model->draw();
    EXPECT_EQ(pixelAt(0.0, 0.0), black) << "the light grazes it";
    glDisable(GL_LIGHTING);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, theHiddenFlagsDoNotKeepItFromDrawing)
{
    const auto model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    model->setHiddenPrimary(true);
    model->setHiddenSecondary(true);
    glDisable(GL_LIGHTING);
    model->draw();
    EXPECT_EQ(pixelAt(0.0, 0.0), (Pixel{255, 255, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, identifierABCDEFIsPickedInRed43Green205Blue239)
{
    ASSERT_LE(DXGLightweightModel::nextUniqueID(), 11259375u);
    DXGLightweightModel::setNextUniqueID(11259375);
    const auto model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    ASSERT_EQ(model->uniqueID(), 11259375u);
    model->drawForColorSelection();
    EXPECT_EQ(pixelAt(0.0, 0.0), (Pixel{43, 205, 239}));
    EXPECT_EQ(pixelAt(2.3, 0.0), black);
    expectNothingBoundOrEnabled();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, anExtendedHitboxIsPickedOneUnitAroundTheExtents)
{
    // Two small squares in opposite corners: most of the box between them is a hole.
    std::vector<OBJVertex> vertices;
    const auto addCorner = [&](float x, float y) { vertices.push_back({{x, y, 0.0f}, {0, 0, 1}}); };
    for (const float at : {-3.0f, 2.0f}) {
        addCorner(at, at);
        addCorner(at + 1.0f, at);
        addCorner(at + 1.0f, at + 1.0f);
    }
    const std::vector<std::uint32_t> indexes{0, 1, 2, 3, 4, 5};
    DXGLightweightModel model(vertices.data(), vertices.size(), indexes.data(), indexes.size());
    model.drawForColorSelection();
    EXPECT_EQ(pixelAt(-2.1, -2.6), pickColor(model));
    EXPECT_EQ(pixelAt(0.0, 0.0), black) << "the hole";

    prepare();
    model.setExtendedHitbox(true);
    glEnable(GL_CULL_FACE);
    model.drawForColorSelection();
    glDisable(GL_CULL_FACE);
    for (const auto &[x, y] :
         {std::pair{0.0, 0.0}, {3.9, 0.0}, {-3.9, 0.0}, {0.0, 3.9}, {0.0, -3.9}})
        EXPECT_EQ(pixelAt(x, y), pickColor(model)) << x << ' ' << y;
    for (const auto &[x, y] : {std::pair{4.1, 0.0}, {-4.3, 0.0}, {0.0, 4.1}, {0.0, -4.3}})
        EXPECT_EQ(pixelAt(x, y), black) << x << ' ' << y;
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, theExtendedHitboxIsClosedAndFacesOutwardsOnAllSixSides)
{
    const auto model = rectangleModel(-1.0f, -1.0f, 1.0f, 1.0f);
    model->setExtendedHitbox(true);
    // Seen along each axis from both ends, with back faces culled, the near side fills the box;
    // with front faces culled the far side does.
    const double turns[6][4]{{0, 1, 0, 0},   {180, 1, 0, 0}, {90, 1, 0, 0},
                             {-90, 1, 0, 0}, {90, 0, 1, 0},  {-90, 0, 1, 0}};
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    for (const auto &turn : turns) {
        for (const GLenum culled : {GL_BACK, GL_FRONT}) {
            prepare();
            glRotated(turn[0], turn[1], turn[2], turn[3]);
            glCullFace(culled);
            model->drawForColorSelection();
            EXPECT_EQ(pixelAt(0.0, 0.0), pickColor(*model)) << turn[0] << ' ' << turn[1];
            float depth = -1.0f;
            glReadPixels(32, 32, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
            EXPECT_EQ(depth < 0.5f, culled == GL_BACK)
                << "the near side is before the middle: " << turn[0] << ' ' << turn[1];
        }
    }
    glCullFace(GL_BACK);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, everySideOfTheExtendedHitboxIsOneUnitFromTheExtents)
{
    // Different on every side: no side can be taken for another.
    const OBJVertex corners[3]{{{-2.0f, -1.0f, -4.0f}, {0, 0, 1}},
                               {{1.0f, 3.0f, 2.0f}, {0, 0, 1}},
                               {{1.0f, 3.0f, 2.0f}, {0, 0, 1}}};
    const std::uint32_t indexes[3]{0, 1, 2};
    DXGLightweightModel model(corners, 3, indexes, 3);
    model.setExtendedHitbox(true);
    // Turned so that the viewer looks straight at one side of x -3...2, y -2...4, z -5...3: how far
    // that side is in front of the middle, and from where to where it reaches on the screen.
    const struct
    {
        const char *name;
        double angle, axisX, axisY;
        double front, left, right, bottom, top;
    } sides[]{{"z upper", 0, 1, 0, 3, -3, 2, -2, 4},   {"z lower", 180, 0, 1, 5, -2, 3, -2, 4},
              {"x upper", -90, 0, 1, 2, -3, 5, -2, 4}, {"x lower", 90, 0, 1, 3, -5, 3, -2, 4},
              {"y upper", 90, 1, 0, 4, -3, 2, -3, 5},  {"y lower", -90, 1, 0, 2, -3, 2, -5, 3}};
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    constexpr double near = 0.2; // less than a pixel, which is a quarter of a unit
    for (const auto &side : sides) {
        prepare();
        glRotated(side.angle, side.axisX, side.axisY, 0.0);
        model.drawForColorSelection();
        for (const double x : {side.left + near, side.right - near}) {
            for (const double y : {side.bottom + near, side.top - near}) {
                EXPECT_EQ(pixelAt(x, y), pickColor(model)) << side.name << ' ' << x << ' ' << y;
                float depth = -1.0f;
                glReadPixels(static_cast<int>((x + 8.0) * 4.0), static_cast<int>((y + 8.0) * 4.0),
                             1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
                EXPECT_NEAR(8.0 - 16.0 * depth, side.front, 1e-3) << side.name;
            }
        }
        const double middleX = (side.left + side.right) / 2.0;
        const double middleY = (side.bottom + side.top) / 2.0;
        EXPECT_EQ(pixelAt(side.left - near, middleY), black) << side.name;
        EXPECT_EQ(pixelAt(side.right + near, middleY), black) << side.name;
        EXPECT_EQ(pixelAt(middleX, side.bottom - near), black) << side.name;
        EXPECT_EQ(pixelAt(middleX, side.top + near), black) << side.name;
    }
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, anIndexOutsideTheVerticesIsSaidOnceAndNothingIsDrawn)
{
    std::vector<OBJVertex> vertices(3);
    vertices[0] = {{-4.0f, -4.0f, 0.0f}, {0, 0, 1}};
    vertices[1] = {{4.0f, -4.0f, 0.0f}, {0, 0, 1}};
    vertices[2] = {{0.0f, 4.0f, 0.0f}, {0, 0, 1}};
    const std::vector<std::uint32_t> indexes{0, 1, 2, 0, 1, 3};
    DXGLightweightModel model(vertices.data(), vertices.size(), indexes.data(), indexes.size());
    EXPECT_EQ(test::standardErrorOf([&] { model.draw(); }),
              "Error: Model " + std::to_string(model.uniqueID()) +
                  " has the index 3 but only 3 vertices, and is not drawn\n");
    EXPECT_EQ(test::standardErrorOf([&] {
                  model.draw();
                  model.drawForColorSelection();
              }),
              "");
    EXPECT_EQ(pixelAt(0.0, 0.0), black);
    EXPECT_EQ(model.vboID(), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, anExtendedHitboxNeedsNoIndexes)
{
    std::vector<OBJVertex> vertices(3);
    vertices[0] = {{-4.0f, -4.0f, 0.0f}, {0, 0, 1}};
    vertices[1] = {{4.0f, -4.0f, 0.0f}, {0, 0, 1}};
    vertices[2] = {{0.0f, 4.0f, 0.0f}, {0, 0, 1}};
    const std::uint32_t outside = 3;
    DXGLightweightModel model(vertices.data(), vertices.size(), &outside, 1);
    model.setExtendedHitbox(true);
    EXPECT_EQ(test::standardErrorOf([&] { model.drawForColorSelection(); }), "");
    EXPECT_EQ(pixelAt(0.0, 0.0), pickColor(model));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, aModelWithoutTrianglesDrawsNothing)
{
    DXGLightweightModel model(nullptr, 0, nullptr, 0);
    EXPECT_EQ(test::standardErrorOf([&] {
                  model.draw();
                  model.drawForColorSelection();
              }),
              "");
    EXPECT_EQ(pixelAt(0.0, 0.0), black);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, aModelOfTwoContextsHasBuffersInEachAndIsDrawnInBoth)
{
    const auto model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    glDisable(GL_LIGHTING);
    model->draw();
    const std::uint32_t firstName = model->vboID();
    OpenGLView otherView(Rect{{0.0, 0.0}, {64.0, 64.0}});
    ASSERT_TRUE(otherView.openGLContext().makeCurrentContext());
    EXPECT_EQ(model->vboID(), 0u) << "not uploaded here yet";
    prepare();
    model->draw();
    EXPECT_NE(model->vboID(), 0u);
    EXPECT_EQ(pixelAt(0.0, 0.0), (Pixel{255, 255, 255}));
    EXPECT_NO_GL_ERROR();
    ASSERT_TRUE(context()->makeCurrentContext());
    EXPECT_EQ(model->vboID(), firstName);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, aModelWhoseContextWentUploadsAgain)
{
    const auto model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    glDisable(GL_LIGHTING);
    model->draw();
    ASSERT_NE(model->vboID(), 0u);
    view.loseContext();
    EXPECT_EQ(model->vboID(), 0u);
    ASSERT_TRUE(context()->makeCurrentContext());
    prepare();
    glDisable(GL_LIGHTING);
    model->draw();
    EXPECT_NE(model->vboID(), 0u);
    EXPECT_EQ(pixelAt(0.0, 0.0), (Pixel{255, 255, 255}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXGLightweightModelGL, theEndOfAModelDeletesItsBuffers)
{
    auto model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    model->prepareVBO();
    const GLuint vertexBuffer = model->vboID();
    const GLuint indexBuffer = model->vboIndexID();
    ASSERT_TRUE(glIsBuffer(vertexBuffer));
    model.reset();
    EXPECT_FALSE(glIsBuffer(vertexBuffer));
    EXPECT_FALSE(glIsBuffer(indexBuffer));

    model = rectangleModel(-2.0f, -2.0f, 2.0f, 2.0f);
    model->prepareVBO();
    const GLuint later = model->vboID();
    OpenGLView otherView(Rect{{0.0, 0.0}, {64.0, 64.0}});
    ASSERT_TRUE(otherView.openGLContext().makeCurrentContext());
    model.reset();
    ASSERT_TRUE(context()->makeCurrentContext());
    EXPECT_FALSE(glIsBuffer(later)) << "deleted when its context became current again";
    EXPECT_NO_GL_ERROR();
}

} // namespace
} // namespace kelo
