#include "platform/gl.h"

#include "document/DXDocumentModel.h"
#include "keloModel/TreatmentNote.h"
#include "models/DXGLightweightModel.h"
#include "platform/settings/SystemGeneration.h"
#include "platform/settings/VersionChecker.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/keloOpenGL/treatment/PickFixture.h"

#include <QImage>

#include <array>
#include <limits>
#include <optional>
#include <vector>

namespace {

using namespace kelo;
using kelo::test::addElastic;
using kelo::test::IdentifierPicture;
using kelo::test::PickView;

constexpr std::uint32_t sentinel = 0xABCDEF;

class DXOpenGLPicking : public kelo::test::ViewFixture
{
protected:
    DXOpenGLPicking() { view->setDocumentModel(document); }
    ~DXOpenGLPicking() override { setSystemGeneration(SystemGeneration::MountainLion); }

    /// Where a point of the world is in the view (in points), seen from the front as at the start
    /// or from behind: x runs to the right or to the left, z always up.
    Point pointOf(double x, double z) const
    {
        const WindowLimits window = view->windowLimits();
        const Vector3 center = view->rotationCenter();
        const double right = fromBehind ? 2.0 * center.x - x : x;
        const double up = center.y + (z - center.z);
        const Size size = view->bounds().size;
        return {(right - window.xMin) / (window.xMax - window.xMin) * size.width,
                (up - window.yMin) / (window.yMax - window.yMin) * size.height};
    }
    /// The middle of a model's front.
    Point middleOf(const DXGLightweightModel &model) const
    {
        const Extents &box = model.extents();
        return pointOf((box.xMin() + box.xMax()) * 0.5, (box.zMin() + box.zMax()) * 0.5);
    }
    void turnToTheBack()
    {
        view->setWorldRotationAngle_axis(180.0, 0.0, 1.0, 1.0);
        fromBehind = true;
    }
    DXOpenGL::Name nameAt(const Point &point, bool includeTeeth, bool *isButton = nullptr)
    {
        return view->bracketNameAtPoint_includeTeeth_isLingualButton(point, includeTeeth, isButton);
    }

    std::shared_ptr<DXDocumentModel> document = kelo::test::boxDocument();
    std::shared_ptr<PickView> view = makeView<PickView>(Rect{{0.0, 0.0}, {800.0, 600.0}});
    bool fromBehind = false;
};

/// A pixel that the picture shows in the identifier, in a column from firstColumn on.
std::optional<Point> firstPixelOf(const IdentifierPicture &picture, std::uint32_t identifier,
                                  int firstColumn = 0)
{
    for (int row = 0; row < picture.size.height; ++row) {
        for (int column = firstColumn; column < picture.size.width; ++column) {
            if (picture.at(column, row) == identifier)
                return Point{static_cast<double>(column), static_cast<double>(row)};
        }
    }
    return std::nullopt;
}

/// Everything of OpenGL's state that a pick may touch.
std::vector<float> drawingState()
{
    std::vector<float> state;
    for (const GLenum name : {GL_SCISSOR_TEST,
                              GL_LIGHTING,
                              GL_DITHER,
                              GL_BLEND,
                              GL_FOG,
                              GL_DEPTH_TEST,
                              GL_CULL_FACE,
                              GL_TEXTURE_2D,
                              GL_ALPHA_TEST,
                              GL_DEPTH_WRITEMASK,
                              GL_MATRIX_MODE,
                              GL_VERTEX_ARRAY,
                              GL_NORMAL_ARRAY,
                              GL_ARRAY_BUFFER_BINDING,
                              GL_ELEMENT_ARRAY_BUFFER_BINDING,
                              GL_FRAMEBUFFER_BINDING_EXT,
                              GL_RENDERBUFFER_BINDING_EXT,
                              GL_PACK_ALIGNMENT,
                              GL_MODELVIEW_STACK_DEPTH,
                              GL_PROJECTION_STACK_DEPTH,
                              GL_ATTRIB_STACK_DEPTH,
                              GL_DRAW_BUFFER,
                              GL_READ_BUFFER}) {
        GLfloat value = -1.0f;
        glGetFloatv(name, &value);
        state.push_back(value);
    }
    for (const auto &[name, count] : {std::pair{GL_SCISSOR_BOX, 4},
                                      {GL_VIEWPORT, 4},
                                      {GL_COLOR_CLEAR_VALUE, 4},
                                      {GL_CURRENT_COLOR, 4},
                                      {GL_COLOR_WRITEMASK, 4},
                                      {GL_MODELVIEW_MATRIX, 16},
                                      {GL_PROJECTION_MATRIX, 16}}) {
        std::array<GLfloat, 16> values{};
        glGetFloatv(static_cast<GLenum>(name), values.data());
        state.insert(state.end(), values.begin(), values.begin() + count);
    }
    return state;
}

} // namespace

TEST_F(DXOpenGLPicking, emptySpaceHasTheIdentifierZeroAndNoName)
{
    bool isButton = true;
    EXPECT_EQ(view->pickIdentifierAtPoint({1.0, 300.0}), 0u);
    EXPECT_EQ(nameAt({1.0, 300.0}, true, &isButton), std::nullopt);
    EXPECT_TRUE(isButton) << "nothing found leaves the flag";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aBracketAToothAndAGumAreReadAsTheirUniqueIdentifiers)
{
    const auto bracket = document->bracketModels().at("8");
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    const auto tooth = document->toothModels().at("20");
    const Point corner = pointOf(tooth->extents().xMin() + 0.4, tooth->extents().zMax() - 0.4);
    EXPECT_EQ(view->pickIdentifierAtPoint(corner), tooth->uniqueID());
    const auto gum = document->upperGumModel();
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*gum)), gum->uniqueID());
    EXPECT_EQ(nameAt(middleOf(*gum), true), std::nullopt) << "a gum has no key";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aHiddenBracketsPlaceHasThatBracketsKey)
{
    const auto bracket = document->bracketModels().at("8");
    bracket->setHiddenPrimary(true);
    bracket->setHiddenSecondary(true);
    bool isButton = true;
    EXPECT_EQ(nameAt(middleOf(*bracket), false, &isButton), "8");
    EXPECT_FALSE(isButton);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aHiddenToothIsPickedTooWhereTeethAreIncluded)
{
    const auto tooth = document->toothModels().at("9");
    tooth->setHiddenPrimary(true);
    const Point corner = pointOf(tooth->extents().xMin() + 0.4, tooth->extents().zMax() - 0.4);
    EXPECT_EQ(nameAt(corner, true), "9");
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aLingualButtonSetsTheFlagToYesAndAToothOrABracketToNo)
{
    const auto bracket = document->bracketModels().at("23");
    bool isButton = true;
    EXPECT_EQ(nameAt(middleOf(*bracket), true, &isButton), "23");
    EXPECT_FALSE(isButton);

    const auto tooth = document->toothModels().at("23");
    isButton = true;
    const Point corner = pointOf(tooth->extents().xMin() + 0.4, tooth->extents().zMax() - 0.4);
    EXPECT_EQ(nameAt(corner, true, &isButton), "23");
    EXPECT_FALSE(isButton);

    turnToTheBack();
    isButton = false;
    EXPECT_EQ(nameAt(middleOf(*document->buttonModels().at("23l")), true, &isButton), "23l");
    EXPECT_TRUE(isButton);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aButtonIsPickedByItsBoxGrownByOneOnEverySide)
{
    turnToTheBack();
    const auto button = document->buttonModels().at("8l");
    ASSERT_TRUE(button->extendedHitbox());
    const Extents &box = button->extents();
    // The mesh ends 0.9 before these points, the grown box 0.1 behind them.
    const double z = (box.zMin() + box.zMax()) * 0.5;
    const double x = (box.xMin() + box.xMax()) * 0.5;
    EXPECT_EQ(nameAt(pointOf(box.xMin() - 0.9, z), false), "8l");
    EXPECT_EQ(nameAt(pointOf(box.xMax() + 0.9, z), false), "8l");
    EXPECT_EQ(nameAt(pointOf(x, box.zMin() - 0.9), false), "8l");
    EXPECT_EQ(nameAt(pointOf(x, box.zMax() + 0.9), false), "8l");
    EXPECT_EQ(nameAt(pointOf(x, box.zMax() + 1.2), false), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aBareToothHasNoNameWhereTeethAreNotIncluded)
{
    const auto tooth = document->toothModels().at("8");
    const Point corner = pointOf(tooth->extents().xMin() + 0.4, tooth->extents().zMax() - 0.4);
    ASSERT_EQ(view->pickIdentifierAtPoint(corner), tooth->uniqueID());
    EXPECT_EQ(nameAt(corner, false), std::nullopt);
    EXPECT_EQ(nameAt(corner, true), "8");
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, namesAreLookedUpByIdentifierAndTheFlagMayBeLeftOut)
{
    const auto name = [this](std::uint64_t identifier, bool includeTeeth) {
        return view->bracketNameForIdentifier_includeTeeth_isLingualButton(
            static_cast<std::uint32_t>(identifier), includeTeeth, nullptr);
    };
    for (const auto &[key, model] : document->toothModels()) {
        EXPECT_EQ(name(model->uniqueID(), true), key);
        EXPECT_EQ(name(model->uniqueID(), false), std::nullopt);
    }
    for (const auto &[key, model] : document->bracketModels())
        EXPECT_EQ(name(model->uniqueID(), false), key);
    for (const auto &[key, model] : document->buttonModels())
        EXPECT_EQ(name(model->uniqueID(), false), key);
    EXPECT_EQ(name(0, true), std::nullopt);
    EXPECT_EQ(name(document->lowerGumModel()->uniqueID(), true), std::nullopt);
    EXPECT_EQ(name(0x800000, true), std::nullopt);
    EXPECT_EQ(name(sentinel, true), std::nullopt);
    view->setDocumentModel(nullptr);
    EXPECT_EQ(name(1, true), std::nullopt);
    EXPECT_EQ(view->pickIdentifierAtPoint({400.0, 300.0}), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aPointOutsideTheViewReadsNothingAndGivesTheSentinel)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    for (const Point &point : {Point{-1.0, 10.0}, Point{10.0, -1.0}, Point{800.0, 10.0},
                               Point{10.0, 600.0}, Point{-infinity, 10.0}, Point{10.0, infinity},
                               Point{nan, 10.0}, Point{10.0, nan}, Point{1e300, -1e300}})
        EXPECT_EQ(view->pickIdentifierAtPoint(point), sentinel) << point.x << ", " << point.y;
    EXPECT_EQ(nameAt({-1.0, 10.0}, true), std::nullopt);
    // Cut to whole numbers these are pixels of the view's edge.
    for (const Point &point : {Point{-0.5, 10.0}, Point{10.0, -0.5}, Point{799.9, 10.0}})
        EXPECT_EQ(view->pickIdentifierAtPoint(point), 0u) << point.x << ", " << point.y;
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aViewWithoutAreaGivesTheSentinel)
{
    const auto empty = makeView<PickView>(Rect{{0.0, 0.0}, {0.0, 0.0}});
    EXPECT_EQ(empty->pickIdentifierAtPoint({0.0, 0.0}), sentinel);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aPickNeedsNoDrawingBeforeIt)
{
    const auto fresh = makeView<PickView>(Rect{{0.0, 0.0}, {800.0, 600.0}});
    fresh->setDocumentModel(document);
    const auto bracket = document->bracketModels().at("8");
    EXPECT_EQ(fresh->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    EXPECT_EQ(fresh->drawnPictures, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aPickLeavesThePictureAlone)
{
    const QImage before = view->grabImage();
    const std::vector<GLubyte> bufferBefore = view->ownBuffer();
    const int pictures = view->drawnPictures;
    view->pickIdentifierAtPoint(middleOf(*document->bracketModels().at("8")));
    view->pickIdentifierAtPoint({1.0, 1.0});
    EXPECT_EQ(view->drawnPictures, pictures);
    EXPECT_EQ(view->ownBuffer(), bufferBefore);
    EXPECT_EQ(view->grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aPickNeitherAsksForARedrawNorTakesTheAskingBack)
{
    view->display(); // takes the size over and asks for the next frame
    view->display();
    ASSERT_FALSE(view->needsDisplay());
    view->pickIdentifierAtPoint({400.0, 300.0});
    EXPECT_FALSE(view->needsDisplay());
    view->setNeedsDisplay(true);
    view->pickIdentifierAtPoint({400.0, 300.0});
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aPickPutsEveryStateOfOpenGLBack)
{
    view->display();
    glEnable(GL_DITHER);
    glEnable(GL_LIGHTING);
    glEnable(GL_SCISSOR_TEST);
    glScissor(3, 4, 500, 400);
    glClearColor(0.25f, 0.5f, 0.75f, 1.0f);
    glColor4f(0.5f, 0.25f, 1.0f, 0.5f);
    glDisable(GL_CULL_FACE);
    glMatrixMode(GL_PROJECTION);
    const std::vector<float> before = drawingState();
    view->pickIdentifierAtPoint(middleOf(*document->bracketModels().at("8")));
    EXPECT_EQ(drawingState(), before);
    EXPECT_FALSE(view->isInColorPickMode());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aPickThatFailsWhileDrawingPutsEverythingBackToo)
{
    view->display();
    const std::vector<float> before = drawingState();
    view->failsWhileDrawing = true;
    EXPECT_THROW(view->pickIdentifierAtPoint({400.0, 300.0}), std::runtime_error);
    EXPECT_EQ(drawingState(), before);
    EXPECT_FALSE(view->isInColorPickMode());
    view->failsWhileDrawing = false;
    const auto bracket = document->bracketModels().at("8");
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, fogDitheringBlendingAndTexturesDoNotChangeAnIdentifier)
{
    // An identifier with bits in all three bytes, so that every channel would show it.
    const auto bracket = document->bracketModels().at("8");
    DXGLightweightModel::setNextUniqueID(0x123457);
    const auto marked = kelo::test::boxModel({-60.0f, -60.0f, -60.0f}, {60.0f, -40.0f, 60.0f});
    ASSERT_EQ(marked->uniqueID(), 0x123457u);
    document->setUpperGumModel(marked);
    view->display();
    const std::array<GLfloat, 4> white{1.0f, 1.0f, 1.0f, 1.0f};
    glFogfv(GL_FOG_COLOR, white.data());
    glFogi(GL_FOG_MODE, GL_EXP);
    for (const GLenum capability : {GL_FOG, GL_DITHER, GL_BLEND, GL_TEXTURE_2D, GL_LIGHTING})
        glEnable(capability);
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), 0x123457u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, onlyModelsThatMayLieUnderThePixelAreDrawn)
{
    view->drawnModels = 0;
    EXPECT_EQ(view->pickIdentifierAtPoint({1.0, 300.0}), 0u);
    EXPECT_EQ(view->drawnModels, 0);
    // From the front a bracket lies before its tooth and its button; the gums lie elsewhere.
    const auto bracket = document->bracketModels().at("8");
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    EXPECT_EQ(view->drawnModels, 3);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aResizedViewIsPickedInItsNewPixels)
{
    view->display();
    view->setFrameSize({300.0, 500.0});
    const auto bracket = document->bracketModels().at("8");
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    EXPECT_EQ(view->pickIdentifierAtPoint({300.0, 10.0}), sentinel);
    EXPECT_EQ(view->pickIdentifierAtPoint({10.0, 499.0}), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aViewThatLostItsContextIsPickedInTheNextOne)
{
    const auto bracket = document->bracketModels().at("8");
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    view->loseContext();
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, withoutFramebufferObjectsTheOwnBufferIsUsedAndThenDrawnAgain)
{
    view->picksOffScreen = false;
    const QImage before = view->grabImage();
    const std::vector<GLubyte> bufferBefore = view->ownBuffer();
    const int pictures = view->drawnPictures;
    const auto bracket = document->bracketModels().at("8");
    EXPECT_EQ(view->pickIdentifierAtPoint(middleOf(*bracket)), bracket->uniqueID());
    EXPECT_EQ(view->drawnPictures, pictures + 1);
    EXPECT_EQ(view->ownBuffer(), bufferBefore);
    EXPECT_EQ(view->pickIdentifierAtPoint({-1.0, 0.0}), sentinel);
    EXPECT_EQ(view->grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, anElasticIsReadAsTheTopBitAndItsPlaceInTheList)
{
    addElastic(*document, {"7", "8"});
    addElastic(*document, {"8", "9"});
    addElastic(*document, {"9", "10"});
    const IdentifierPicture picture = view->fullPass();
    for (const std::uint32_t identifier : {0x800000u, 0x800001u, 0x800002u}) {
        const std::optional<Point> point = firstPixelOf(picture, identifier);
        ASSERT_TRUE(point) << std::hex << identifier;
        EXPECT_EQ(view->pickIdentifierAtPoint(*point), identifier);
        EXPECT_EQ(nameAt(*point, true), std::nullopt);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, the257thElasticIsReadAsTheFirst)
{
    for (int i = 0; i < 256; ++i)
        addElastic(*document, {"7", "8"});
    EXPECT_FALSE(firstPixelOf(view->fullPass(), 0x800000u, 400));
    addElastic(*document, {"9", "10"});
    // The first lies left of the middle, so what reads as the first on the right is the 257th.
    const std::optional<Point> point = firstPixelOf(view->fullPass(), 0x800000u, 400);
    ASSERT_TRUE(point);
    EXPECT_EQ(view->pickIdentifierAtPoint(*point), 0x800000u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, theElasticAtIndex300IsReadAsTheOneAt44)
{
    for (int i = 0; i < 300; ++i)
        addElastic(*document, {"7", "8"});
    addElastic(*document, {"9", "10"});
    // Right of the middle there is the last one only: 300 is 256 + 44.
    const std::optional<Point> point = firstPixelOf(view->fullPass(), 0x800000u + 44u, 400);
    ASSERT_TRUE(point);
    EXPECT_EQ(view->pickIdentifierAtPoint(*point), 0x800000u + 44u);
    view->setMouseMode(HVOGLBasicView::elasticsMode);
    Event press;
    press.type = EventType::LeftMouseDown;
    press.locationInWindow = {point->x, point->y + 1.0};
    int menuCount = 0;
    const auto presenter = ContextMenuPresenter::setPresenter(
        [&](const std::shared_ptr<Menu> &, const Event &, OpenGLView &) { ++menuCount; });
    view->elasticsMouseDown(press);
    ContextMenuPresenter::setPresenter(presenter);
    EXPECT_EQ(menuCount, 1);
    EXPECT_EQ(view->currentEventElasticIndex(), 44u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, aClickHitsWhatItPointsAtUnderSixBackingScales)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        view->setSurfacelessScaleFactor(scale);
        view->display();
        for (const auto &[key, bracket] : document->bracketModels()) {
            const Point point = middleOf(*bracket);
            const Event event = eventAt(EventType::LeftMouseDown, point.x, point.y);
            const Point backing = view->backingPointForEvent(event);
            EXPECT_NEAR(backing.x, point.x * scale, 1e-9) << scale;
            EXPECT_NEAR(backing.y, point.y * scale, 1e-9) << scale;
            EXPECT_EQ(nameAt(backing, false), key) << scale;
        }
        // The last point of the view still lies in the drawable, the next one does not.
        const Event corner = eventAt(EventType::LeftMouseDown, 799.0, 599.0);
        EXPECT_EQ(view->pickIdentifierAtPoint(view->backingPointForEvent(corner)), 0u) << scale;
        const Event beyond = eventAt(EventType::LeftMouseDown, 800.0, 599.0);
        EXPECT_EQ(view->pickIdentifierAtPoint(view->backingPointForEvent(beyond)), sentinel);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPicking, withoutTheBestResolutionPointsStayAsTheyAre)
{
    view->setSurfacelessScaleFactor(2.0);
    const auto bracket = document->bracketModels().at("8");
    const Point point = middleOf(*bracket);
    const Event event = eventAt(EventType::LeftMouseDown, point.x, point.y);
    view->setWantsBestResolutionOpenGLSurface(false);
    EXPECT_NEAR(view->backingPointForEvent(event).x, point.x, 1e-9);
    EXPECT_NEAR(view->backingPointForEvent(event).y, point.y, 1e-9);
    EXPECT_EQ(nameAt(view->backingPointForEvent(event), false), "8");
    view->setWantsBestResolutionOpenGLSurface(true);
    setSystemGeneration(SystemGeneration::BeforeLion);
    EXPECT_NEAR(view->backingPointForEvent(event).x, point.x, 1e-9);
    EXPECT_NEAR(view->backingPointForEvent(event).y, point.y, 1e-9);
    EXPECT_EQ(nameAt(view->backingPointForEvent(event), false), "8");
    EXPECT_NO_GL_ERROR();
}
