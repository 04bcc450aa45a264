// What the three printed pictures show, what a request leaves behind, and requests in the middle of
// something. Sizes, messages and the delegate are in DXOpenGLPrintingTest.cpp.

#include "tests/keloOpenGL/treatment/PrintingFixture.h"

#include "platform/view/OpenGLContext.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

using namespace kelo;

/// 1/sqrt(3) as a float.
constexpr float diagonal = 0.57735026f;
constexpr HVOGLBasicView::Rotation leftView{120.0f, -diagonal, diagonal, diagonal};
constexpr HVOGLBasicView::Rotation frontView{90.0f, -1.0f, 0.0f, 0.0f};
constexpr HVOGLBasicView::Rotation rightView{120.0f, -diagonal, -diagonal, -diagonal};

/// Every name up to here is asked for; contexts count names from 1.
constexpr GLuint lastName = 2000;

/// The names that a context has.
template<class Asked>
std::vector<GLuint> usedNames(Asked asked)
{
    std::vector<GLuint> names;
    for (GLuint name = 1; name <= lastName; ++name) {
        if (asked(name)) names.push_back(name);
    }
    return names;
}

std::vector<GLuint> renderbuffers()
{
    return usedNames([](GLuint name) { return glIsRenderbuffer(name) == GL_TRUE; });
}
std::vector<GLuint> framebuffers()
{
    return usedNames([](GLuint name) { return glIsFramebuffer(name) == GL_TRUE; });
}
std::vector<GLuint> buffersAndTextures()
{
    return usedNames(
        [](GLuint name) { return glIsBuffer(name) == GL_TRUE || glIsTexture(name) == GL_TRUE; });
}

GLint parameterOf(GLuint renderbuffer, GLenum parameter)
{
    GLint value = -1;
    glBindRenderbuffer(GL_RENDERBUFFER, renderbuffer);
    glGetRenderbufferParameteriv(GL_RENDERBUFFER, parameter, &value);
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    return value;
}

GLint integer(GLenum name)
{
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

/// The view's own buffer has its first row at the other end than a framebuffer object: the shading
/// of the background is summed up the other way round, and its last bit rounds differently.
constexpr int roundingDifference = 1;

/// Of any channel of any pixel, of 255.
int largestDifference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size()) return 255;
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            largest = std::max({largest, std::abs(a.red() - b.red()),
                                std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
        }
    }
    return largest;
}

bool hasBlue(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            // The background, (74, 148, 186) at its strongest, is nearly as green as it is blue.
            if (pixel.blue() > pixel.green() + 60 && pixel.blue() > pixel.red() + 60) return true;
        }
    }
    return false;
}

class DXOpenGLPrintedViews : public kelo::test::PrintingFixture
{
protected:
    void removeOverlay()
    {
        view->setDateStringTexture(nullptr);
        view->setElasticsToolTexture(nullptr);
        view->setElasticsToolSelectedTexture(nullptr);
        view->setBracketToolTexture(nullptr);
        view->setBracketToolSelectedTexture(nullptr);
        view->setPrintButtonTexture(nullptr);
    }

    /// What a view of 800 x 400 points shows on screen, turned like this, at twice the zoom, with
    /// white brackets and no overlay: drawn without anything of printing.
    QImage onScreenAt(const HVOGLBasicView::Rotation &rotation)
    {
        view->setFrameSize({800.0, 400.0});
        removeOverlay();
        const auto white = HVOGLMaterial::materialWithColor(Color::whiteColor());
        white->setFrontAmbientColor(Color::blackColor());
        white->setFrontSpecularColor(Color::whiteColor());
        for (const auto &[key, bracket] : document->bracketModels())
            bracket->setMaterial(white);
        view->setMouthOpenAngle(0.0f);
        view->setWorldRotationAngle_axis(rotation[0], rotation[1], rotation[2], rotation[3]);
        const WindowLimits box = view->zoomBox();
        view->setZoomData(HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(
            box.xMin / 2.0, box.xMax / 2.0, box.yMin / 2.0, box.yMax / 2.0));
        return view->grabImage().convertToFormat(QImage::Format_RGB888);
    }

    void openPlacementOn(const std::string &key)
    {
        view->setFirstClickedToothName(key);
        view->setLastClickedToothName(key);
        MenuItem item;
        item.representedObject = size;
        view->startElasticColorMenuItemSelected(item);
    }

    /// A point of the view where this bracket is seen.
    Point pointOfBracket(const std::string &key)
    {
        const auto identifiers = view->pickIdentifiers();
        const int width = view->deviceSize().width;
        for (std::size_t i = 0; i < identifiers.size(); ++i) {
            bool isButton = false;
            const auto name = view->bracketNameForIdentifier_includeTeeth_isLingualButton(
                identifiers[i], false, &isButton);
            if (name == key && !isButton)
                return {static_cast<double>(static_cast<int>(i) % width),
                        static_cast<double>(static_cast<int>(i) / width)};
        }
        ADD_FAILURE() << "bracket " << key << " is not seen";
        return {};
    }

    void clickBracket(const std::string &key)
    {
        const Point point = pointOfBracket(key);
        view->sendEvent(eventAt(EventType::LeftMouseDown, point.x, point.y));
        view->sendEvent(eventAt(EventType::LeftMouseUp, point.x, point.y));
    }
};

TEST_F(DXOpenGLPrintedViews, theLeftImageIsTurned120DegreesWithout75Columns)
{
    view->submitPrintRequest();
    const QImage shown = onScreenAt(leftView);
    ASSERT_EQ(shown.size(), QSize(800, 400));
    EXPECT_LE(largestDifference(left, shown.copy(75, 0, 725, 400)), roundingDifference);
    EXPECT_GT(largestDifference(left, shown.copy(0, 0, 725, 400)), 100) << "the column matters";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, theFrontImageIsTheWholeViewFromTheFrontAtTwiceTheZoom)
{
    view->submitPrintRequest();
    const QImage shown = onScreenAt(frontView);
    EXPECT_LE(largestDifference(front, shown), roundingDifference);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, theRightImageIsTurnedTheOtherWayWithout75Columns)
{
    view->submitPrintRequest();
    const QImage shown = onScreenAt(rightView);
    EXPECT_LE(largestDifference(right, shown.copy(0, 0, 725, 400)), roundingDifference);
    EXPECT_GT(largestDifference(right, shown.copy(75, 0, 725, 400)), 100) << "the column matters";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, theLeftImageShowsTooth2AndTheRightOneTooth15)
{
    // Tooth 2 is at the smallest x, tooth 15 at the largest: each hides the other from its
    // side.
    document->toothModels().at("2")->setMaterial(
        HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0}));
    document->toothModels().at("15")->setMaterial(
        HVOGLMaterial::materialWithColor(Color{0.0, 0.0, 1.0, 1.0}));
    view->submitPrintRequest();
    EXPECT_TRUE(hasRed(left));
    EXPECT_FALSE(hasBlue(left));
    EXPECT_TRUE(hasBlue(right));
    EXPECT_FALSE(hasRed(right));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, theViewsAreDrawnInTheOrderLeftFrontRightWithTheMouthClosed)
{
    view->setMouthOpenAngle(25.0f);
    std::vector<HVOGLBasicView::Rotation> rotations;
    std::vector<float> angles;
    view->whileDrawing = [&] {
        rotations.push_back(view->worldRotation());
        angles.push_back(view->mouthOpenAngle());
    };
    view->submitPrintRequest();
    EXPECT_EQ(rotations, (std::vector<HVOGLBasicView::Rotation>{leftView, frontView, rightView}));
    EXPECT_EQ(angles, (std::vector<float>{0.0f, 0.0f, 0.0f}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, thePrintMaterialIsWhiteWithBlackAmbientLight)
{
    int seen = 0;
    view->whileDrawing = [&] {
        for (const auto &[key, bracket] : document->bracketModels()) {
            const auto &material = bracket->material();
            ASSERT_NE(material, nullptr);
            EXPECT_EQ(material->frontDiffuseColor(), Color::whiteColor());
            EXPECT_EQ(material->frontAmbientColor(), Color::blackColor());
            EXPECT_EQ(material->frontSpecularColor(), Color::whiteColor());
            ++seen;
        }
    };
    view->submitPrintRequest();
    EXPECT_EQ(seen, 3 * 28);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, onlyTheDepthRenderbuffersNameOutlivesTheRequest)
{
    ASSERT_FALSE(view->grabImage().isNull()); // what any frame makes is there before
    view->submitPrintRequest();               // and what the print material makes
    const auto renderbuffersBefore = renderbuffers();
    const auto framebuffersBefore = framebuffers();
    const auto othersBefore = buffersAndTextures();
    view->submitPrintRequest();
    auto added = renderbuffers();
    EXPECT_EQ(framebuffers(), framebuffersBefore);
    EXPECT_EQ(buffersAndTextures(), othersBefore);
    std::erase_if(added, [&](GLuint name) {
        return std::find(renderbuffersBefore.begin(), renderbuffersBefore.end(), name) !=
               renderbuffersBefore.end();
    });
    ASSERT_EQ(added.size(), 1u);
    // Its storage is given back but for a pixel.
    EXPECT_EQ(parameterOf(added[0], GL_RENDERBUFFER_WIDTH), 1);
    EXPECT_EQ(parameterOf(added[0], GL_RENDERBUFFER_HEIGHT), 1);
    EXPECT_GT(parameterOf(added[0], GL_RENDERBUFFER_DEPTH_SIZE), 0);
    EXPECT_EQ(parameterOf(added[0], GL_RENDERBUFFER_RED_SIZE), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, anIncompleteFramebufferLeavesOnlyTheRenderbuffer)
{
    ASSERT_FALSE(view->grabImage().isNull());
    const auto before = renderbuffers();
    const auto framebuffersBefore = framebuffers();
    view->status = GL_FRAMEBUFFER_UNSUPPORTED_EXT;
    view->submitPrintRequest();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(framebuffers(), framebuffersBefore);
    auto after = renderbuffers();
    ASSERT_EQ(after.size(), before.size() + 1);
    std::erase_if(after, [&](GLuint name) {
        return std::find(before.begin(), before.end(), name) != before.end();
    });
    EXPECT_GT(parameterOf(after.at(0), GL_RENDERBUFFER_DEPTH_SIZE), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, withoutFramebufferObjectsNoObjectsAreCreated)
{
    ASSERT_FALSE(view->grabImage().isNull());
    const auto renderbuffersBefore = renderbuffers();
    const auto framebuffersBefore = framebuffers();
    const auto othersBefore = buffersAndTextures();
    view->extensions = "GL_EXT_texture";
    view->submitPrintRequest();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(renderbuffers(), renderbuffersBefore);
    EXPECT_EQ(framebuffers(), framebuffersBefore);
    EXPECT_EQ(buffersAndTextures(), othersBefore);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, theLargerPicturesLeaveNoRenderbufferBehind)
{
    ASSERT_FALSE(view->grabImage().isNull());
    const auto renderbuffersBefore = renderbuffers();
    const auto framebuffersBefore = framebuffers();
    ASSERT_FALSE(view->printPicturesAtScale(2).front.isNull());
    view->status = GL_FRAMEBUFFER_UNSUPPORTED_EXT;
    ASSERT_TRUE(view->printPicturesAtScale(2).front.isNull());
    view->status.reset();
    view->whileDrawing = [] { throw std::bad_alloc(); };
    EXPECT_THROW(view->printPicturesAtScale(2), std::bad_alloc);
    EXPECT_EQ(renderbuffers(), renderbuffersBefore);
    EXPECT_EQ(framebuffers(), framebuffersBefore);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, theAlertOpensWhenTheViewIsShownAgainAndHasItsOwnBuffer)
{
    ASSERT_FALSE(view->grabImage().isNull());
    const auto framebuffersBefore = framebuffers();
    int opened = 0;
    AlertPresenter::setPresenter([&](const Alert &) {
        ++opened;
        EXPECT_FALSE(view->openGLContext().isFlushSuppressed());
        EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING_EXT), 0);
        EXPECT_EQ(framebuffers(), framebuffersBefore);
        view->flushSuppressedWhileDrawing.clear();
        view->display(); // as its window does when the box uncovers it
        EXPECT_EQ(view->flushSuppressedWhileDrawing, (std::vector<bool>{false}));
    });
    view->status = GL_FRAMEBUFFER_UNSUPPORTED_EXT;
    view->submitPrintRequest();
    EXPECT_EQ(opened, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, aViewThatIsClosedWhileTheAlertIsOpenIsNotTouchedAgain)
{
    AlertPresenter::setPresenter([&](const Alert &) { view.reset(); });
    view->status = GL_FRAMEBUFFER_UNSUPPORTED_EXT;
    std::weak_ptr<DXOpenGL> gone = view;
    view->submitPrintRequest();
    EXPECT_TRUE(gone.expired());
    view = makeView<kelo::test::PrintingView>(Rect{{0.0, 0.0}, {40.0, 30.0}});
    view->display(); // the other view's context went with it
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, aRequestThatFailsWhileDrawingLeavesTheViewAsItWas)
{
    view->setMouthOpenAngle(30.0f);
    view->setWorldRotationAngle_axis(37.0, 0.3, -0.6, 0.74);
    const QImage onScreen = view->grabImage();
    const auto rotation = view->worldRotation();
    const auto material = document->bracketModels().at("8")->material();
    const auto framebuffersBefore = framebuffers();
    for (const int failing : {1, 2, 3}) {
        int pass = 0;
        view->whileDrawing = [&] {
            if (++pass == failing) throw std::bad_alloc();
        };
        EXPECT_THROW(view->submitPrintRequest(), std::bad_alloc) << failing;
        view->whileDrawing = nullptr;
        EXPECT_EQ(prints, 0);
        EXPECT_EQ(view->worldRotation(), rotation) << failing;
        EXPECT_EQ(view->mouthOpenAngle(), 30.0f) << failing;
        EXPECT_EQ(view->cameraSize(), (Size{400.0, 300.0})) << failing;
        EXPECT_EQ(document->bracketModels().at("8")->material(), material) << failing;
        EXPECT_EQ(integer(GL_PROJECTION_STACK_DEPTH), 1) << failing;
        EXPECT_EQ(integer(GL_MATRIX_MODE), GL_MODELVIEW) << failing;
        EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING_EXT), 0) << failing;
        EXPECT_EQ(framebuffers(), framebuffersBefore) << failing;
        EXPECT_FALSE(view->openGLContext().isFlushSuppressed()) << failing;
        EXPECT_EQ(view->grabImage(), onScreen) << failing; // the overlay is there too
    }
    view->submitPrintRequest();
    EXPECT_EQ(prints, 1);
    EXPECT_EQ(front.size(), QSize(800, 400));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, aRequestDuringADragLeavesTheDragWhereItWas)
{
    view->setMouseMode(DXOpenGL::rotateMode);
    view->display(); // a drag is measured by what was drawn
    std::vector<HVOGLBasicView::Rotation> rotations;
    std::vector<float> angles;
    for (const bool isPrinted : {false, true}) {
        view->setWorldRotationAngle_axis(90.0, -1.0, 0.0, 0.0);
        view->setMouthOpenAngle(0.0f);
        view->sendEvent(eventAt(EventType::LeftMouseDown, 100.0, 150.0));
        view->sendEvent(eventAt(EventType::LeftMouseDragged, 130.0, 120.0));
        if (isPrinted) view->submitPrintRequest();
        view->sendEvent(eventAt(EventType::LeftMouseDragged, 150.0, 60.0));
        rotations.push_back(view->worldRotation());
        angles.push_back(view->mouthOpenAngle());
        view->sendEvent(eventAt(EventType::LeftMouseUp, 150.0, 60.0));
    }
    EXPECT_EQ(prints, 1);
    EXPECT_NE(rotations[0], frontView) << "the drag turned the jaws";
    EXPECT_GT(angles[0], 0.0f) << "and opened the mouth";
    EXPECT_EQ(rotations[1], rotations[0]);
    EXPECT_EQ(angles[1], angles[0]);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, aPrintRequestLeavesAnOpenElasticAndItsHighlight)
{
    const auto own = document->bracketModels().at("8")->material();
    openPlacementOn("8");
    const auto highlighted = document->bracketModels().at("8")->material();
    ASSERT_NE(highlighted, own);
    const QImage onScreen = view->grabImage();
    view->submitPrintRequest();
    ASSERT_EQ(prints, 1);
    EXPECT_FALSE(hasRed(front)) << "the highlighted bracket is printed white too";
    EXPECT_EQ(view->bracketSequence(), (std::vector<std::string>{"8"}));
    EXPECT_EQ(document->bracketModels().at("8")->material(), highlighted);
    EXPECT_EQ(view->grabImage(), onScreen);
    view->endElasticPlacement();
    EXPECT_EQ(document->bracketModels().at("8")->material(), own);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, aRequestInFullScreenLeavesThePictureAsItWas)
{
    const QImage onScreen = view->grabImage();
    view->fullScreen = true;
    view->submitPrintRequest();
    ASSERT_EQ(prints, 1);
    EXPECT_EQ(view->grabImage(), onScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, theListsAreMadeBeforeFullScreenIsLeft)
{
    place({"6", "30"});
    view->fullScreen = true;
    view->whenLeavingFullScreen = [this] { place({"8", "25"}); };
    view->submitPrintRequest();
    ASSERT_EQ(elastics.size(), 3u);
    ASSERT_EQ(elastics[1].size(), 1u) << "what came after the lists were made is not in them";
    EXPECT_EQ(elastics[1][0].brackets, (std::vector<std::string>{"6", "30"}));
    EXPECT_EQ(document->elasticModels().size(), 2u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrintedViews, finishOperationsPlacesAnElasticThatIsStrungOverTwoBrackets)
{
    view->setMouseMode(DXOpenGL::elasticsMode);
    openPlacementOn("8");
    clickBracket("25");
    ASSERT_EQ(view->bracketSequence(), (std::vector<std::string>{"8", "25"}));
    view->finishOperations();
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    ASSERT_EQ(document->elasticModels().size(), 1u);
    EXPECT_EQ(document->elasticModels()[0]->bracketSequence(),
              (std::vector<std::string>{"8", "25"}));
    EXPECT_EQ(document->elasticModels()[0]->elasticsSizeType(), size);
    EXPECT_NO_GL_ERROR();
}

} // namespace
