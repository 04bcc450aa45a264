#include "platform/gl.h"

#include "base/Assertion.h"
#include "keloOpenGL/view/HVOGLBasicView.h"
#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/CapturedOutput.h"

#include <QColor>
#include <QImage>

#include <cmath>

using namespace kelo;
using kelo::test::boxDocument;
using kelo::test::ViewFixture;

namespace {

constexpr int width = 200;
constexpr int height = 100;

/// Notes the hooks that a cycle calls.
class HookView : public HVOGLBasicView
{
public:
    HookView() : HVOGLBasicView(Rect{{0, 0}, {width, height}}) {}
    void updateModelView() override { note("modelView"), HVOGLBasicView::updateModelView(); }
    void updateLighting() override { note("lighting"), HVOGLBasicView::updateLighting(); }
    void setupDefaultMaterial() override
    {
        note("material"), HVOGLBasicView::setupDefaultMaterial();
    }
    void drawContent() override { note("content"), HVOGLBasicView::drawContent(); }
    void drawExtraContent() override { note("extra"); }
    using HVOGLBasicView::setIsInColorPickMode;
    void note(const char *hook) { hooks.push_back(hook); }
    std::vector<std::string> hooks;
};

class BasicViewDrawing : public ViewFixture
{
protected:
    ~BasicViewDrawing() override
    {
        HVOGLBasicView::setDrawRectEnabled(true);
        HVOGLBasicView::setBufferSwappingEnabled(true);
    }

    std::array<GLint, 4> viewport() const
    {
        std::array<GLint, 4> values{};
        glGetIntegerv(GL_VIEWPORT, values.data());
        return values;
    }

    static Matrix matrix(GLenum name)
    {
        Matrix values;
        glGetFloatv(name, values.m);
        return values;
    }

    std::shared_ptr<HookView> view = makeView<HookView>();
};

void expectColor(const QImage &image, int x, int rowFromBottom, const Color &expected)
{
    const QColor color = image.pixelColor(x, image.height() - 1 - rowFromBottom);
    // One step of 255 for the rounding of a colour interpolated to the pixel's middle, and the part
    // of a corner's shade that half a pixel is away from it.
    EXPECT_NEAR(color.red(), expected.red * 255.0, 2.0) << x << ", " << rowFromBottom;
    EXPECT_NEAR(color.green(), expected.green * 255.0, 2.0) << x << ", " << rowFromBottom;
    EXPECT_NEAR(color.blue(), expected.blue * 255.0, 2.0) << x << ", " << rowFromBottom;
}

} // namespace

TEST_F(BasicViewDrawing, theFirstCycleSetsUpLightAndMaterialThenRunsTheHooks)
{
    view->display();
    EXPECT_EQ(view->hooks, (std::vector<std::string>{"lighting", "material", "modelView",
                                                     "lighting", "material", "content", "extra"}));
    EXPECT_FALSE(view->isFirstDrawRect());
    view->hooks.clear();
    view->display();
    EXPECT_EQ(view->hooks,
              (std::vector<std::string>{"modelView", "lighting", "material", "content", "extra"}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theFirstCycleSetsTheOneTimeState)
{
    view->display();
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    EXPECT_EQ(view->openGLContext().swapInterval(), 1);
    GLfloat clear[4];
    glGetFloatv(GL_COLOR_CLEAR_VALUE, clear);
    EXPECT_FLOAT_EQ(clear[0], 0.29f);
    EXPECT_FLOAT_EQ(clear[1], 0.58f);
    EXPECT_FLOAT_EQ(clear[2], 0.73f);
    EXPECT_FLOAT_EQ(clear[3], 1.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, withDrawRectDisabledTheFirstDrawIsStillToCome)
{
    HVOGLBasicView::setDrawRectEnabled(false);
    view->display();
    EXPECT_TRUE(view->hooks.empty());
    EXPECT_TRUE(view->isFirstDrawRect());
    HVOGLBasicView::setDrawRectEnabled(true);
    view->display();
    EXPECT_FALSE(view->isFirstDrawRect());
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, withDrawRectDisabledTheBuffersKeepWhatTheyHold)
{
    view->display();
    glClearDepth(0.25);
    glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glClearDepth(1.0);
    glViewport(1, 2, 3, 4);
    HVOGLBasicView::setDrawRectEnabled(false);
    view->display();
    GLfloat depth = 0.0f;
    GLubyte pixel[3] = {};
    glReadPixels(5, 5, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    glReadPixels(5, 5, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel);
    EXPECT_NEAR(depth, 0.25f, 1e-6f); // 24 bits
    EXPECT_EQ((std::array{pixel[0], pixel[1], pixel[2]}), (std::array<GLubyte, 3>{255, 0, 0}));
    EXPECT_EQ(viewport(), (std::array<GLint, 4>{1, 2, 3, 4}));
    EXPECT_NO_GL_ERROR();
}

/// Counts how often the drawing is finished, which is how a surface without display is flushed.
class CountedFinishes
{
public:
    CountedFinishes() : kept_(epoxy_glFinish)
    {
        count = 0;
        original = kept_;
        epoxy_glFinish = [] {
            ++count;
            original();
        };
    }
    ~CountedFinishes() { epoxy_glFinish = kept_; }
    CountedFinishes(const CountedFinishes &) = delete;
    CountedFinishes &operator=(const CountedFinishes &) = delete;

    static inline int count = 0;

private:
    static inline PFNGLFINISHPROC original = nullptr;
    PFNGLFINISHPROC kept_;
};

TEST_F(BasicViewDrawing, theBufferIsFlushedOnceACycleUnlessSwappingIsDisabled)
{
    view->display();
    glFinish(); // epoxy looks an entry point up at its first call
    const CountedFinishes finishes;
    view->display();
    EXPECT_EQ(finishes.count, 1);
    HVOGLBasicView::setBufferSwappingEnabled(false);
    view->hooks.clear();
    view->display();
    EXPECT_EQ(finishes.count, 1);
    EXPECT_EQ(view->hooks.back(), "extra") << "the cycle itself runs";
    HVOGLBasicView::setBufferSwappingEnabled(true);
    view->display();
    EXPECT_EQ(finishes.count, 2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theContentIsDrawnWithoutBlending)
{
    view->display();
    glEnable(GL_BLEND);
    view->drawContent();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    // Without a document too.
    ASSERT_EQ(view->documentModel(), nullptr);
    view->setDocumentModel(boxDocument());
    glEnable(GL_BLEND);
    view->drawContent();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aViewDrawnBeforeAnyResizeResizesInsideTheCycle)
{
    view->display();
    EXPECT_EQ(viewport(), (std::array<GLint, 4>{0, 0, width, height}));
    EXPECT_EQ(view->windowLimits(), (WindowLimits{-2, 2, -1, 1}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, anEqualBoundsSizeLeavesViewportAndProjection)
{
    view->display();
    glViewport(1, 2, 3, 4);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    view->reshape();
    EXPECT_EQ(viewport(), (std::array<GLint, 4>{1, 2, 3, 4}));
    EXPECT_EQ(matrix(GL_PROJECTION_MATRIX).m[0], 1.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aNewSizeSetsViewportAndWindowLimits)
{
    view->display();
    view->setFrameSize({100, 300});
    view->makeCurrentContextIfNeeded();
    EXPECT_EQ(viewport(), (std::array<GLint, 4>{0, 0, 100, 300}));
    EXPECT_EQ(view->windowLimits(), (WindowLimits{-1, 1, -3, 3}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theViewportIsInDevicePixels)
{
    view->setSurfacelessScaleFactor(1.5);
    view->display();
    EXPECT_EQ(viewport(), (std::array<GLint, 4>{0, 0, 300, 150}));
    EXPECT_EQ(view->windowLimits(), (WindowLimits{-2, 2, -1, 1}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aChangeOfScaleAloneReachesTheViewport)
{
    view->display();
    view->setSurfacelessScaleFactor(2.0);
    view->display();
    EXPECT_EQ(viewport(), (std::array<GLint, 4>{0, 0, 400, 200}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aViewThatDoesNotWantTheBestResolutionDrawsInPoints)
{
    view->setWantsBestResolutionOpenGLSurface(false);
    view->setSurfacelessScaleFactor(2.0);
    view->display();
    EXPECT_EQ(viewport(), (std::array<GLint, 4>{0, 0, 200, 100}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aViewWithoutAreaDrawsNothing)
{
    view->setFrameSize({0, 100});
    view->display();
    EXPECT_TRUE(view->isFirstDrawRect());
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theBackgroundIsShadedFromCornerToCorner)
{
    const Color clear{0.29, 0.58, 0.73, 1.0};
    const QImage image = view->grabImage();
    ASSERT_EQ(image.size(), QSize(width, height));
    expectColor(image, 0, 0, clear);
    expectColor(image, width - 1, 0, {0.145, 0.29, 0.365, 1.0});
    expectColor(image, width - 1, height - 1, clear);
    expectColor(image, 0, height - 1, {0.645, 0.79, 0.865, 1.0});
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theProjectionIsOrthographicOverTheWindowLimits)
{
    view->setZoomData(HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(0, 10, 0, 10));
    view->display();
    // Window limits -5..15 and 0..10, near -1, far 1.
    const Matrix projection = matrix(GL_PROJECTION_MATRIX);
    EXPECT_FLOAT_EQ(projection.m[0], 2.0f / 20.0f);
    EXPECT_FLOAT_EQ(projection.m[5], 2.0f / 10.0f);
    EXPECT_FLOAT_EQ(projection.m[10], -1.0f);
    EXPECT_FLOAT_EQ(projection.m[12], -10.0f / 20.0f);
    EXPECT_FLOAT_EQ(projection.m[13], -10.0f / 10.0f);
    EXPECT_FLOAT_EQ(projection.m[15], 1.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theWorldTurnsAboutTheRotationCentre)
{
    view->setWorldCenterData(packed(Vector3{10.0f, 20.0f, 30.0f}));
    view->setWorldRotationAngle_axis(90.0, 0.0, 0.0, 1.0);
    view->display();
    const Matrix modelView = matrix(GL_MODELVIEW_MATRIX);
    const Vector3 center = Matrix_multiplyVector3(modelView, Vector3{10.0f, 20.0f, 30.0f});
    EXPECT_NEAR(center.x, 10.0f, 1e-4f);
    EXPECT_NEAR(center.y, 20.0f, 1e-4f);
    EXPECT_NEAR(center.z, 30.0f, 1e-4f);
    // One to the right of the centre goes to one above it.
    const Vector3 right = Matrix_multiplyVector3(modelView, Vector3{11.0f, 20.0f, 30.0f});
    EXPECT_NEAR(right.x, 10.0f, 1e-4f);
    EXPECT_NEAR(right.y, 21.0f, 1e-4f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theLightStaysWithTheViewer)
{
    view->setWorldRotationAngle_axis(70.0, 0.0, 1.0, 0.0);
    view->display();
    GLfloat position[4], ambient[4], diffuse[4], specular[4];
    glGetLightfv(GL_LIGHT0, GL_POSITION, position);
    glGetLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
    glGetLightfv(GL_LIGHT0, GL_DIFFUSE, diffuse);
    glGetLightfv(GL_LIGHT0, GL_SPECULAR, specular);
    EXPECT_TRUE(glIsEnabled(GL_LIGHT0));
    EXPECT_FLOAT_EQ(position[0], 0.0f);
    EXPECT_FLOAT_EQ(position[1], 0.0f);
    EXPECT_FLOAT_EQ(position[2], 1.0f);
    EXPECT_FLOAT_EQ(position[3], 0.0f);
    EXPECT_FLOAT_EQ(ambient[1], 0.2f);
    EXPECT_FLOAT_EQ(diffuse[1], 0.62f);
    EXPECT_FLOAT_EQ(specular[1], 1.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aMissingLightColourFailsTheAssertion)
{
    view->setDiffuseColor(std::nullopt);
    EXPECT_THROW(view->updateLighting(), AssertionFailure);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theDefaultMaterialGlowsFaintlyRedInFrontAndGreenBehind)
{
    view->display();
    GLfloat front[4], back[4], diffuse[4], specular[4], current[4], shininess, backShininess;
    glGetMaterialfv(GL_FRONT, GL_EMISSION, front);
    glGetMaterialfv(GL_BACK, GL_EMISSION, back);
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    glGetMaterialfv(GL_BACK, GL_SPECULAR, specular);
    glGetMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
    glGetMaterialfv(GL_BACK, GL_SHININESS, &backShininess);
    glGetFloatv(GL_CURRENT_COLOR, current);
    EXPECT_EQ((std::array{front[0], front[1], front[2], front[3]}),
              (std::array{0.2f, 0.0f, 0.0f, 0.8f}));
    EXPECT_EQ((std::array{back[0], back[1], back[2], back[3]}),
              (std::array{0.0f, 0.2f, 0.0f, 0.8f}));
    EXPECT_EQ((std::array{diffuse[0], diffuse[3]}), (std::array{1.0f, 0.8f}));
    EXPECT_EQ((std::array{specular[0], specular[3]}), (std::array{1.0f, 0.8f}));
    EXPECT_EQ(current[3], 0.8f);
    EXPECT_EQ(shininess, 32.0f);
    EXPECT_EQ(backShininess, 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aDocumentIsSeenAndHiddenModelsAreNot)
{
    const auto document = boxDocument();
    view->setDocumentModel(document);
    const QImage whole = view->grabImage();
    for (const auto &model : document->models())
        model->setHiddenPrimary(true);
    const QImage empty = view->grabImage();
    EXPECT_NE(whole, empty);
    view->setDocumentModel(nullptr);
    EXPECT_EQ(view->grabImage(), empty);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aModelHiddenBecauseOfItsToothIsNotDrawn)
{
    const auto document = boxDocument();
    const auto bracket = document->bracketModels().at("8");
    bracket->setMaterial(HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0}));
    view->setDocumentModel(document);
    const QImage whole = view->grabImage();
    bracket->setHiddenSecondary(true);
    EXPECT_NE(view->grabImage(), whole);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, inColourPickModeHiddenModelsAreDrawnInTheirColours)
{
    const auto document = boxDocument();
    view->setDocumentModel(document);
    for (const auto &model : document->models())
        model->setHiddenPrimary(true);
    view->display();
    view->setIsInColorPickMode(true);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glDisable(GL_LIGHTING);
    view->updateModelView();
    view->drawContent();
    // The default orientation looks at the front: the lower gum's box covers the lowest part.
    GLubyte pixel[3] = {1, 2, 3};
    const WindowLimits window = view->windowLimits();
    const auto row = static_cast<int>((-7.5 - window.yMin) / (window.yMax - window.yMin) * height);
    glReadPixels(width / 2, row, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel);
    const std::uint64_t identifier = document->lowerGumModel()->uniqueID();
    EXPECT_EQ(pixel[0] * 65536u + pixel[1] * 256u + pixel[2], identifier);
    view->setIsInColorPickMode(false);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, theJawsAreDrawnUnderTheirTransforms)
{
    const auto document = boxDocument();
    view->setDocumentModel(document);
    const QImage closed = view->grabImage();
    view->setMouthOpenAngle(9.0f);
    EXPECT_EQ(view->grabImage(), closed);
    view->setMouthOpenAngle(30.0f);
    EXPECT_NE(view->grabImage(), closed);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aMissingBracketIsLeftOutAndAllElseIsDrawn)
{
    const auto document = boxDocument();
    document->bracketModels().at("8")->setMaterial(
        HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0}));
    view->setDocumentModel(document);
    const QImage whole = view->grabImage();
    document->bracketModels().at("8")->setHiddenPrimary(true);
    const QImage withoutIt = view->grabImage();
    EXPECT_NE(withoutIt, whole);

    const auto incomplete = boxDocument();
    auto brackets = incomplete->bracketModels();
    brackets.erase("8");
    incomplete->setBracketModels(brackets);
    view->setDocumentModel(incomplete);
    QImage drawn;
    EXPECT_EQ(test::standardErrorOf([&] { drawn = view->grabImage(); }), "");
    EXPECT_EQ(drawn, withoutIt);
    EXPECT_EQ(view->hooks.back(), "extra");
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, withoutTheUpperGumBothJawsAreDrawn)
{
    const auto document = boxDocument();
    document->setUpperGumModel(std::make_shared<DXGLightweightModel>(nullptr, 0, nullptr, 0));
    view->setDocumentModel(document);
    const QImage withAnEmptyGum = view->grabImage();

    document->setUpperGumModel(nullptr); // in the frame that the view has: it is not fitted again
    EXPECT_EQ(view->grabImage(), withAnEmptyGum);
    for (const auto &model : document->loadedLowerModels())
        model->setHiddenPrimary(true);
    EXPECT_NE(view->grabImage(), withAnEmptyGum) << "the lower jaw was in the picture";
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aMissingSetIsPickedAroundLikeAMissingTooth)
{
    const auto document = boxDocument();
    auto teeth = document->toothModels();
    auto brackets = document->bracketModels();
    auto buttons = document->buttonModels();
    teeth.erase("8");
    brackets.erase("8");
    buttons.erase("8l");
    document->setToothModels(teeth);
    document->setBracketModels(brackets);
    document->setButtonModels(buttons);
    view->setDocumentModel(document);
    view->display();
    view->setIsInColorPickMode(true);
    const auto isPicked = [&](const DXGLightweightModel &model) {
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDisable(GL_LIGHTING);
        view->updateModelView();
        view->drawContent();
        std::vector<GLubyte> pixels(std::size_t(width) * height * 3);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
        for (std::size_t at = 0; at < pixels.size(); at += 3) {
            if (pixels[at] * 65536u + pixels[at + 1] * 256u + pixels[at + 2] == model.uniqueID())
                return true;
        }
        return false;
    };
    EXPECT_TRUE(isPicked(*brackets.at("9")));
    EXPECT_TRUE(isPicked(*document->lowerGumModel()));
    view->setIsInColorPickMode(false);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aLostContextIsSetUpAgainAndShowsTheSamePicture)
{
    view->setDocumentModel(boxDocument());
    const QImage before = view->grabImage();
    view->loseContext();
    EXPECT_TRUE(view->isFirstDrawRect());
    EXPECT_EQ(view->grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewDrawing, aThousandFramesLeaveNoError)
{
    view->setDocumentModel(boxDocument());
    const std::string said = test::standardOutputOf([&] {
        for (int frame = 0; frame < 1000; ++frame) {
            view->setWorldRotationAngle_axis(90.0 + frame % 30, -1.0, 0.0, 0.0);
            view->setMouthOpenAngle(static_cast<float>(frame % 110 - 55));
            view->display();
        }
    });
    EXPECT_EQ(said, "");
    EXPECT_NO_GL_ERROR();
}
