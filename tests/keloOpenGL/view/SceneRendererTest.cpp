#include "keloOpenGL/view/SceneRenderer.h"

#include "platform/gl.h"

#include "base/Assertion.h"
#include "keloOpenGL/view/Camera.h"
#include "keloOpenGL/view/GLErrorReport.h"
#include "keloOpenGL/view/Light.h"
#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <array>
#include <functional>

namespace {

using namespace kelo;

using DrawnPixel = std::array<GLubyte, 3>;
using Models = std::vector<std::shared_ptr<DXGLightweightModel>>;

constexpr int surfaceWidth = 20;
constexpr int surfaceHeight = 10;
const Color backgroundBlue{0.0, 0.0, 1.0, 1.0};

DrawnPixel drawnPixelAt(int column, int row)
{
    DrawnPixel pixel{};
    glReadPixels(column, row, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
    return pixel;
}

bool glFlag(GLenum name)
{
    GLboolean value = GL_FALSE;
    glGetBooleanv(name, &value);
    return value == GL_TRUE;
}

Matrix glMatrix(GLenum name)
{
    Matrix matrix;
    glGetFloatv(name, matrix.m);
    return matrix;
}

/// The stages of a scene that draws nothing: their names as they are asked, and what holds then.
struct NotedStages
{
    void updateModelView() { note("modelView"); }
    void updateLighting() { note("lighting"); }
    void setupDefaultMaterial() { note("material"); }
    void drawContent() { note("content"); }
    void drawExtraContent() { note("extra"); }
    void note(const char *name)
    {
        names.emplace_back(name);
        writesDepth.push_back(glFlag(GL_DEPTH_WRITEMASK));
    }
    std::vector<std::string> names;
    std::vector<bool> writesDepth;
};

class SceneRendering : public kelo::test::ViewFixture
{
protected:
    SceneRendering()
    {
        surface.openGLContext().makeCurrentContext();
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        SceneRenderer::setUp(std::nullopt);
        renderer.setViewport({surfaceWidth, surfaceHeight});
    }

    OpenGLView surface{Rect{{0.0, 0.0}, {surfaceWidth, surfaceHeight}}};
    SceneRenderer renderer;
};

} // namespace

TEST_F(SceneRendering, asksTheStagesInTheirOrder)
{
    NotedStages stages;
    SceneRenderer::drawScene({surfaceWidth, surfaceHeight}, backgroundBlue, stages);
    EXPECT_EQ(stages.names,
              (std::vector<std::string>{"modelView", "lighting", "material", "content", "extra"}));
    EXPECT_EQ(stages.writesDepth, (std::vector<bool>{false, true, true, true, true}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, theBackgroundCoversColoursAndClearsDepths)
{
    glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
    glClearDepth(0.25);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glClearDepth(1.0);
    glEnable(GL_LIGHTING);
    SceneRenderer::drawBackground({surfaceWidth, surfaceHeight}, backgroundBlue);
    EXPECT_LT(drawnPixelAt(0, 0)[0], 20) << "only the shade of the lighter corner";
    EXPECT_GT(drawnPixelAt(0, surfaceHeight - 1)[0], drawnPixelAt(surfaceWidth - 1, 0)[0])
        << "lighter at the top left";
    GLfloat depth = 0.0f;
    glReadPixels(5, 5, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    EXPECT_EQ(depth, 1.0f);
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glFlag(GL_DEPTH_WRITEMASK));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, theBackgroundIsBlackWithoutAColour)
{
    SceneRenderer::drawBackground({surfaceWidth, surfaceHeight}, std::nullopt);
    EXPECT_EQ(drawnPixelAt(surfaceWidth - 1, 0), (DrawnPixel{0, 0, 0}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, theBackgroundLeavesTheProjection)
{
    Camera camera;
    camera.fitWindow({surfaceWidth, surfaceHeight});
    SceneRenderer::loadProjection(camera);
    const Matrix before = glMatrix(GL_PROJECTION_MATRIX);
    SceneRenderer::drawBackground({surfaceWidth, surfaceHeight}, backgroundBlue);
    const Matrix after = glMatrix(GL_PROJECTION_MATRIX);
    EXPECT_TRUE(std::equal(std::begin(before.m), std::end(before.m), std::begin(after.m)));
    EXPECT_FLOAT_EQ(after.m[5], 1.0f);
    EXPECT_FLOAT_EQ(after.m[0], 0.5f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, aCameraWithoutVolumeLeavesTheIdentity)
{
    Camera camera;
    camera.fitWindow({surfaceWidth, surfaceHeight});
    SceneRenderer::loadProjection(camera);
    ASSERT_FLOAT_EQ(glMatrix(GL_PROJECTION_MATRIX).m[0], 0.5f);
    camera.fitDepth(0.0);
    SceneRenderer::loadProjection(camera);
    const Matrix projection = glMatrix(GL_PROJECTION_MATRIX);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(projection.m[i], i % 5 == 0 ? 1.0f : 0.0f) << i;
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, theWorldTurnsAboutTheRotationCentre)
{
    Camera camera;
    camera.setRotationCenter({10.0f, 20.0f, 30.0f});
    camera.setWorldRotation({90.0f, 0.0f, 0.0f, 1.0f});
    SceneRenderer::loadModelView(camera);
    const Vector3 moved =
        Matrix_multiplyVector3(glMatrix(GL_MODELVIEW_MATRIX), Vector3{11.0f, 20.0f, 30.0f});
    EXPECT_NEAR(moved.x, 10.0f, 1e-4f);
    EXPECT_NEAR(moved.y, 21.0f, 1e-4f);
    EXPECT_NEAR(moved.z, 30.0f, 1e-4f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, aTurnedLightIsTurnedFromTheViewersAxis)
{
    Light light = Light::usual();
    light.rotation = {90.0f, 0.0f, 1.0f, 0.0f};
    Camera camera;
    camera.setWorldRotation({70.0f, 1.0f, 0.0f, 0.0f}); // without effect on the light
    SceneRenderer::loadModelView(camera);
    SceneRenderer::loadLight(light);
    GLfloat position[4];
    glGetLightfv(GL_LIGHT0, GL_POSITION, position);
    EXPECT_NEAR(position[0], 1.0f, 1e-6f);
    EXPECT_NEAR(position[1], 0.0f, 1e-6f);
    EXPECT_NEAR(position[2], 0.0f, 1e-6f);
    EXPECT_EQ(position[3], 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, aLightWithoutAllItsColoursIsRefused)
{
    Light light = Light::usual();
    light.specularColor.reset();
    try {
        SceneRenderer::loadLight(light);
        ADD_FAILURE() << "it was loaded";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(), "the ambient, diffuse and specular light colours must be set");
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, aModelIsDrawnAsItIsChosen)
{
    const auto model = kelo::test::boxModel({-2.0f, -2.0f, -0.5f}, {2.0f, 2.0f, 0.5f});
    const auto red = HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0});
    model->setMaterial(red);
    Camera camera;
    camera.fitWindow({surfaceWidth, surfaceHeight});
    SceneRenderer::loadProjection(camera);
    SceneRenderer::loadModelView(camera);
    const Models jaw{model};
    Matrix closed;
    Matrix_loadIdentity(&closed);
    const auto drawn = [&](ModelDrawing drawing) {
        SceneRenderer::drawBackground({surfaceWidth, surfaceHeight}, std::nullopt);
        SceneRenderer::beginContent();
        SceneRenderer::loadLight(Light::usual());
        SceneRenderer::drawJaw(jaw, closed, [&](const DXGLightweightModel &) { return drawing; });
        return drawnPixelAt(surfaceWidth - 1, 0); // the background is black there
    };
    EXPECT_EQ(drawn(ModelDrawing::None), (DrawnPixel{0, 0, 0}));
    EXPECT_EQ(drawn(ModelDrawing::MaterialOnly), (DrawnPixel{0, 0, 0}));
    EXPECT_GT(drawn(ModelDrawing::Shaded)[0], 100);
    glDisable(GL_DITHER);
    SceneRenderer::drawBackground({surfaceWidth, surfaceHeight}, std::nullopt);
    SceneRenderer::beginContent();
    SceneRenderer::drawJaw(jaw, closed,
                           [](const DXGLightweightModel &) { return ModelDrawing::Identifier; });
    const DrawnPixel picked = drawnPixelAt(surfaceWidth - 1, 0);
    EXPECT_EQ(picked[0] * 65536u + picked[1] * 256u + picked[2], model->uniqueID());
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, anUnseenModelHandsItsMaterialOn)
{
    const auto unseen = kelo::test::boxModel({-2.0f, -2.0f, -0.5f}, {2.0f, 2.0f, 0.5f});
    unseen->setMaterial(HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0}));
    SceneRenderer::loadDefaultMaterial();
    Matrix closed;
    Matrix_loadIdentity(&closed);
    GLfloat specular[4], diffuse[4];
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    EXPECT_EQ(diffuse[1], 1.0f);
    SceneRenderer::drawJaw(Models{unseen}, closed,
                           [](const DXGLightweightModel &) { return ModelDrawing::MaterialOnly; });
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    glGetMaterialfv(GL_FRONT, GL_SPECULAR, specular);
    EXPECT_EQ(diffuse[1], 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, aJawIsDrawnUnderItsTransformAlone)
{
    const auto model = kelo::test::boxModel({-0.1f, -0.1f, -0.1f}, {0.1f, 0.1f, 0.1f});
    Matrix moved;
    Matrix_loadIdentity(&moved);
    Matrix_translate(&moved, 3.0f, 4.0f, 5.0f);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    Matrix during;
    SceneRenderer::drawJaw(Models{model}, moved, [&](const DXGLightweightModel &) {
        during = glMatrix(GL_MODELVIEW_MATRIX);
        return ModelDrawing::None;
    });
    EXPECT_EQ(during.m[12], 3.0f);
    EXPECT_EQ(during.m[14], 5.0f);
    EXPECT_EQ(glMatrix(GL_MODELVIEW_MATRIX).m[12], 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneRendering, theFirstCycleComesAgainWithAnotherContext)
{
    EXPECT_TRUE(renderer.isFirstCycle());
    renderer.noteCycle();
    EXPECT_FALSE(renderer.isFirstCycle());
    renderer.contextWasLost();
    EXPECT_TRUE(renderer.isFirstCycle());
    EXPECT_EQ(renderer.viewport(), (PixelSize{surfaceWidth, surfaceHeight}));
    EXPECT_NO_GL_ERROR();
}

TEST(GLErrorReports, haveCodeAndName)
{
    EXPECT_EQ(glErrorReport(1281), "OpenGL error: 1281 - GL_INVALID_VALUE\n");
    EXPECT_EQ(glErrorReport(32817), "OpenGL error: 32817 - GL_TABLE_TOO_LARGE\n");
    EXPECT_EQ(glErrorReport(1), "OpenGL error: 1 - ");
}
