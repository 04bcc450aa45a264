#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/ElasticModel.h"
#include "keloOpenGL/view/SimpleTexture.h"
#include "keloOpenGL/view/StringTexture.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>
#include <QTemporaryDir>

#include <cmath>
#include <functional>

namespace {

using namespace kelo;

const QDateTime shownToday(QDate(2026, 11, 20), QTime(0, 0));
const QDateTime shownYesterday(QDate(2026, 11, 19), QTime(0, 0));
constexpr int viewWidth = 400;
constexpr int viewHeight = 300;
constexpr double rectTolerance = 1e-6;

class OverlayView : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;
    void drawExtraContent() override
    {
        if (!aroundOverlay) return DXOpenGL::drawExtraContent();
        aroundOverlay([this] { DXOpenGL::drawExtraContent(); });
    }
    std::function<void(const std::function<void()> &)> aroundOverlay;
};

/// Everything that drawing an overlay could change.
std::vector<double> openGLState()
{
    std::vector<double> state;
    for (const GLenum flag :
         {GL_DEPTH_TEST, GL_LIGHTING, GL_BLEND, GL_CULL_FACE, GL_TEXTURE_2D, GL_TEXTURE_RECTANGLE,
          GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_COLOR_ARRAY})
        state.push_back(glIsEnabled(flag));
    for (const GLenum number :
         {GL_MATRIX_MODE, GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH, GL_BLEND_SRC,
          GL_BLEND_DST, GL_ARRAY_BUFFER_BINDING, GL_ELEMENT_ARRAY_BUFFER_BINDING,
          GL_TEXTURE_BINDING_RECTANGLE, GL_DEPTH_WRITEMASK, GL_DEPTH_FUNC, GL_FRAMEBUFFER_BINDING,
          GL_VERTEX_ARRAY_SIZE, GL_VERTEX_ARRAY_STRIDE, GL_TEXTURE_COORD_ARRAY_SIZE,
          GL_TEXTURE_COORD_ARRAY_STRIDE}) {
        GLint value = 0;
        glGetIntegerv(number, &value);
        state.push_back(value);
    }
    for (const GLenum numbers :
         {GL_MODELVIEW_MATRIX, GL_PROJECTION_MATRIX, GL_CURRENT_COLOR, GL_VIEWPORT}) {
        std::array<double, 16> values{};
        glGetDoublev(numbers, values.data());
        state.insert(state.end(), values.begin(), values.end());
    }
    return state;
}

int bufferCount()
{
    int count = 0;
    for (GLuint name = 1; name < 1000; ++name)
        count += glIsBuffer(name);
    return count;
}

/// A view of 4 : 3 without a document, so that behind the overlay there is nothing but the
/// background.
class DXOpenGLOverlay : public kelo::test::ViewFixture
{
protected:
    DXOpenGLOverlay()
    {
        view->setDelegate(&delegate);
        view->setCurrentDate(shownToday);
    }

    std::shared_ptr<SimpleTexture> textureOf(const QImage &picture)
    {
        const QString path = folder.filePath("picture.png");
        EXPECT_TRUE(picture.save(path));
        EXPECT_TRUE(view->openGLContext().makeCurrentContext());
        return SimpleTexture::textureWithFile(path.toStdString());
    }

    std::shared_ptr<SimpleTexture> plain(const QColor &color, int width = 64, int height = 32)
    {
        QImage picture(width, height, QImage::Format_RGBA8888);
        picture.fill(color);
        return textureOf(picture);
    }

    void setPlainPictures()
    {
        view->setElasticsToolTexture(plain(Qt::red));
        view->setElasticsToolSelectedTexture(plain(Qt::green));
        view->setBracketToolTexture(plain(Qt::blue));
        view->setBracketToolSelectedTexture(plain(Qt::yellow));
        view->setPrintButtonTexture(plain(Qt::white));
    }

    /// What is behind the overlay.
    QImage background()
    {
        view->aroundOverlay = [](const auto &) {};
        const QImage picture = view->grabImage();
        view->aroundOverlay = nullptr;
        return picture;
    }

    /// A rectangle of the overlay in the pixels of a picture, rows from the top.
    static QRectF inPixels(const Rect &rect)
    {
        const double half = viewHeight / 2.0;
        const double top = rect.origin.y + rect.size.height;
        return {rect.origin.x * half + viewWidth / 2.0, half - top * half, rect.size.width * half,
                rect.size.height * half};
    }

    static QPoint middleOf(const Rect &rect) { return inPixels(rect).center().toPoint(); }

    Rect labelRect() const
    {
        const Size size = view->dateStringTexture()->texSize();
        const double width = 0.125 * size.width / size.height;
        return {{-width / 2.0, 0.75}, {width, 0.125}};
    }

    /// Every pixel that the overlay changes lies in one of these rectangles, and each of them has
    /// some.
    void expectDrawnExactlyIn(const std::vector<Rect> &rects)
    {
        const QImage without = background();
        const QImage with = view->grabImage();
        std::vector<int> counts(rects.size());
        for (int y = 0; y < viewHeight; ++y) {
            for (int x = 0; x < viewWidth; ++x) {
                if (with.pixel(x, y) == without.pixel(x, y)) continue;
                bool expected = false;
                for (std::size_t i = 0; i < rects.size(); ++i) {
                    if (!inPixels(rects[i]).contains(QPointF(x + 0.5, y + 0.5))) continue;
                    expected = true;
                    ++counts[i];
                }
                ASSERT_TRUE(expected) << "drawn at " << x << ", " << y;
            }
        }
        for (std::size_t i = 0; i < rects.size(); ++i)
            EXPECT_GT(counts[i], 50) << "in rectangle " << i;
    }

    Event pointerAt(EventType type, const Rect &rect) const
    {
        const QPoint middle = middleOf(rect);
        return eventAt(type, middle.x(), viewHeight - middle.y());
    }

    QTemporaryDir folder;
    DXOpenGLDelegate delegate;
    std::shared_ptr<OverlayView> view =
        makeView<OverlayView>(Rect{{0.0, 0.0}, {viewWidth, viewHeight}});
};

void expectToolRect(const Rect &rect, double x, double y, double width, double height)
{
    EXPECT_NEAR(rect.origin.x, x, rectTolerance);
    EXPECT_NEAR(rect.origin.y, y, rectTolerance);
    EXPECT_NEAR(rect.size.width, width, rectTolerance);
    EXPECT_NEAR(rect.size.height, height, rectTolerance);
}

TEST_F(DXOpenGLOverlay, theToolsOfAViewOf800By600LieAtTheTopRight)
{
    view = makeView<OverlayView>(Rect{{0.0, 0.0}, {800.0, 600.0}});
    view->setElasticsToolTexture(plain(Qt::red, 128, 64));
    view->setBracketToolTexture(plain(Qt::red, 128, 64));
    for (const bool drawnBefore : {false, true}) {
        if (drawnBefore) view->display();
        expectToolRect(view->elasticsToolRect(), 1.0208333, 0.8125, 0.25, 0.125);
        expectToolRect(view->bracketColorToolRect(), 1.0520833, 0.65625, 0.1875, 0.09375);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, aToolsRectangleFollowsFromItsPicturesSize)
{
    expectToolRect(DXOpenGL::toolRectWithRatio_width_height_yOffset_relativeWidth(
                       4.0f / 3.0f, 128.0f, 64.0f, 0.0f, 1.0f),
                   1.0208333, 0.8125, 0.25, 0.125);
}

TEST_F(DXOpenGLOverlay, thePrintButtonsBottomEdgeStaysForEveryPicture)
{
    for (const auto &[width, height] : {std::pair{64, 64}, {128, 32}, {40, 120}}) {
        view->setPrintButtonTexture(plain(Qt::white, width, height));
        EXPECT_NEAR(view->printButtonRect().origin.y, -0.9375, rectTolerance);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, hostsFindTheToolsByTheirNames)
{
    EXPECT_EQ(DXOpenGL::toolNames(), (std::vector<std::string>{"elastics", "bracket", "print"}));
    EXPECT_EQ(view->toolRectNamed("elastics"), view->elasticsToolRect());
    EXPECT_EQ(view->toolRectNamed("bracket"), view->bracketColorToolRect());
    EXPECT_EQ(view->toolRectNamed("print"), view->printButtonRect());
    EXPECT_EQ(view->toolRectNamed("ruler"), Rect());
    view->setDisplayedDate(shownToday);
    EXPECT_EQ(view->shownToolRects(),
              (std::vector<Rect>{view->elasticsToolRect(), view->bracketColorToolRect(),
                                 view->printButtonRect()}));
    view->setApprovedDate(shownToday);
    EXPECT_EQ(view->shownToolRects(), std::vector<Rect>{view->printButtonRect()});
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, todayAllOfItIsDrawnAndNothingElse)
{
    setPlainPictures();
    view->setDisplayedDate(shownToday);
    expectDrawnExactlyIn({labelRect(), view->elasticsToolRect(), view->bracketColorToolRect(),
                          view->printButtonRect()});
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, onAPastDateOnlyTheLabelAndThePrintButtonAreDrawn)
{
    setPlainPictures();
    view->setDisplayedDate(shownYesterday);
    expectDrawnExactlyIn({labelRect(), view->printButtonRect()});
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, withAnApprovalDateOnlyTheLabelAndThePrintButtonAreDrawn)
{
    setPlainPictures();
    view->setApprovedDate(shownYesterday);
    view->setDisplayedDate(shownToday);
    ASSERT_TRUE(view->displayedDateIsToday());
    expectDrawnExactlyIn({labelRect(), view->printButtonRect()});
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, theToolOfTheModeIsDrawnChosen)
{
    setPlainPictures();
    view->setDisplayedDate(shownToday);
    struct Row
    {
        long mode;
        QColor elastics, bracket;
    };
    for (const Row &row : {Row{HVOGLBasicView::elasticsMode, Qt::green, Qt::blue},
                           Row{HVOGLBasicView::colorMode, Qt::red, Qt::yellow},
                           Row{HVOGLBasicView::rotateMode, Qt::red, Qt::blue}}) {
        view->setMouseMode(row.mode);
        const QImage picture = view->grabImage();
        EXPECT_EQ(picture.pixelColor(middleOf(view->elasticsToolRect())), row.elastics) << row.mode;
        EXPECT_EQ(picture.pixelColor(middleOf(view->bracketColorToolRect())), row.bracket)
            << row.mode;
        EXPECT_EQ(picture.pixelColor(middleOf(view->printButtonRect())), QColor(Qt::white));
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, aChosenToolIsDrawnInTheRectangleMeasuredOnTheOtherPicture)
{
    setPlainPictures();
    view->setElasticsToolSelectedTexture(plain(Qt::green, 16, 64));
    view->setDisplayedDate(shownToday);
    ASSERT_TRUE(view->mouseModeIsElastics());
    expectDrawnExactlyIn({labelRect(), view->elasticsToolRect(), view->bracketColorToolRect(),
                          view->printButtonRect()});
    expectToolRect(view->elasticsToolRect(), 1.0208333, 0.8125, 0.25, 0.125);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, aPictureStandsUprightAndUnmirroredInItsOwnColours)
{
    QImage picture(64, 64, QImage::Format_RGBA8888);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const QColor upper = x < 32 ? Qt::red : Qt::green;
            const QColor lower = x < 32 ? Qt::blue : Qt::yellow;
            picture.setPixelColor(x, y, y < 32 ? upper : lower);
        }
    }
    view->setPrintButtonTexture(textureOf(picture));
    const QRectF place = inPixels(view->printButtonRect());
    const QImage drawn = view->grabImage();
    const auto colorAt = [&](double across, double down) {
        return drawn.pixelColor(
            QPointF(place.x() + across * place.width(), place.y() + down * place.height())
                .toPoint());
    };
    EXPECT_EQ(colorAt(0.2, 0.2), QColor(Qt::red));
    EXPECT_EQ(colorAt(0.8, 0.2), QColor(Qt::green));
    EXPECT_EQ(colorAt(0.2, 0.8), QColor(Qt::blue));
    EXPECT_EQ(colorAt(0.8, 0.8), QColor(Qt::yellow));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, aTransparentPictureLetsTheSceneShineThroughByItsAlpha)
{
    const QColor color(200, 100, 0, 102); // two fifths
    view->setPrintButtonTexture(plain(color));
    const QPoint middle = middleOf(view->printButtonRect());
    const QColor behind = background().pixelColor(middle);
    const QColor drawn = view->grabImage().pixelColor(middle);
    EXPECT_NEAR(drawn.red(), 0.4 * 200 + 0.6 * behind.red(), 2.0);
    EXPECT_NEAR(drawn.green(), 0.4 * 100 + 0.6 * behind.green(), 2.0);
    EXPECT_NEAR(drawn.blue(), 0.6 * behind.blue(), 2.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, thePressedPrintButtonIsDrawnDarkerAndNothingElseIs)
{
    setPlainPictures();
    view->setElasticsToolSelectedTexture(plain(Qt::white));
    view->setDisplayedDate(shownToday);
    const QPoint print = middleOf(view->printButtonRect());
    const QPoint tool = middleOf(view->elasticsToolRect());
    view->sendEvent(pointerAt(EventType::LeftMouseDown, view->printButtonRect()));
    for (int frame = 0; frame < 2; ++frame) {
        const QImage pressed = view->grabImage();
        for (const int channel :
             {pressed.pixelColor(print).red(), pressed.pixelColor(print).green(),
              pressed.pixelColor(print).blue()})
            EXPECT_NEAR(channel, 0.625 * 255.0, 1.0);
        EXPECT_EQ(pressed.pixelColor(tool), QColor(Qt::white)) << "frame " << frame;
    }
    view->sendEvent(pointerAt(EventType::LeftMouseUp, view->printButtonRect()));
    EXPECT_EQ(view->grabImage().pixelColor(print), QColor(Qt::white));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, toolsWithoutPicturesHaveNoRectanglesAndAreNotDrawn)
{
    view->setElasticsToolTexture(nullptr);
    view->setElasticsToolSelectedTexture(plain(Qt::green)); // has no place to be drawn in
    view->setBracketToolTexture(nullptr);
    view->setBracketToolSelectedTexture(nullptr);
    view->setPrintButtonTexture(nullptr);
    view->setDisplayedDate(shownToday);
    EXPECT_EQ(view->elasticsToolRect(), Rect{});
    EXPECT_EQ(view->bracketColorToolRect(), Rect{});
    EXPECT_EQ(view->printButtonRect(), Rect{});
    expectDrawnExactlyIn({labelRect()});
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, withoutALabelOrWithAnEmptyOneOnlyTheButtonsAreDrawn)
{
    setPlainPictures();
    view->setDisplayedDate(shownYesterday);
    view->setDateStringTexture(nullptr);
    expectDrawnExactlyIn({view->printButtonRect()});
    view->setDateStringTexture(std::make_shared<StringTexture>("", TextAttributes{}));
    expectDrawnExactlyIn({view->printButtonRect()});
    EXPECT_NO_GL_ERROR();
}

/// The letter L has ink at the left and below, none in its upper right part.
TEST_F(DXOpenGLOverlay, theLabelStandsUprightAndUnmirrored)
{
    TextAttributes attributes;
    attributes.foregroundColor = Color::whiteColor();
    attributes.pointSize = 36.0;
    view->setDateStringTexture(std::make_shared<StringTexture>("L", attributes));
    view->setPrintButtonTexture(nullptr);
    const QImage without = background();
    const QImage with = view->grabImage();
    QRect ink;
    const auto isInk = [&](int x, int y) { return with.pixel(x, y) != without.pixel(x, y); };
    for (int y = 0; y < viewHeight; ++y) {
        for (int x = 0; x < viewWidth; ++x)
            if (isInk(x, y)) ink |= QRect(x, y, 1, 1);
    }
    ASSERT_GT(ink.width(), 4);
    ASSERT_GT(ink.height(), 8);
    EXPECT_TRUE(isInk(ink.left() + 1, ink.top() + 1));
    EXPECT_TRUE(isInk(ink.right() - 1, ink.bottom() - 1));
    EXPECT_FALSE(isInk(ink.right() - 1, ink.top() + 1));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, theLabelIsOpaqueWhiteAndNotWashedOut)
{
    view = makeView<OverlayView>(Rect{{0.0, 0.0}, {800.0, 600.0}});
    view->setCurrentDate(shownToday);
    view->setDisplayedDate(shownToday);
    const QImage picture = view->grabImage();
    int whitePixels = 0;
    for (int y = 37; y < 75; ++y) { // 0.125 of 2 units high, from 0.125 below the top
        for (int x = 200; x < 600; ++x)
            whitePixels += qGray(picture.pixel(x, y)) >= 250;
    }
    EXPECT_GT(whitePixels, 100);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, aHostsOwnLabelComesBackAfterALostContext)
{
    TextAttributes attributes;
    attributes.foregroundColor = {1.0, 0.0, 0.0, 1.0};
    attributes.pointSize = 36.0;
    view->setDateStringTexture(std::make_shared<StringTexture>("Recall", attributes));
    const QImage before = view->grabImage();
    ASSERT_NE(before, background());
    view->loseContext();
    EXPECT_EQ(view->grabImage(), before);
    EXPECT_EQ(view->dateStringTexture()->text(), "Recall");
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, whilePrintingItChangesNoOpenGLStateAtAll)
{
    view->setDocumentModel(kelo::test::boxDocument());
    view->setDisplayedDate(shownToday);
    int prints = 0;
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right = [&prints](auto &&...) {
        ++prints;
    };
    int drawings = 0;
    std::vector<bool> same;
    view->aroundOverlay = [&](const std::function<void()> &drawOverlay) {
        ++drawings;
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glColor3f(0.1f, 0.2f, 0.3f);
        glBlendFunc(GL_SRC_COLOR, GL_ZERO);
        glEnable(GL_LIGHTING);
        glMatrixMode(GL_TEXTURE);
        const auto before = openGLState();
        drawOverlay();
        same.push_back(openGLState() == before);
        glPopAttrib();
    };
    view->submitPrintRequest();
    EXPECT_EQ(prints, 1);
    ASSERT_GE(drawings, 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(same[static_cast<std::size_t>(i)]) << "print " << i;
    same.clear();
    view->display();
    EXPECT_EQ(same, std::vector<bool>{false}) << "drawing it on the screen does change state";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, itPutsBackMatricesMatrixModeAndDepthTest)
{
    setPlainPictures();
    view->setDisplayedDate(shownToday);
    view->display();
    ASSERT_TRUE(view->openGLContext().makeCurrentContext());
    for (const bool depthTest : {true, false}) {
        for (const GLenum mode : {GL_MODELVIEW, GL_PROJECTION, GL_TEXTURE}) {
            glMatrixMode(GL_PROJECTION);
            glLoadIdentity();
            glScalef(0.5f, 0.25f, 0.125f);
            glMatrixMode(GL_MODELVIEW);
            glLoadIdentity();
            glTranslatef(1.0f, 2.0f, 3.0f);
            glMatrixMode(mode);
            glDisable(GL_DEPTH_TEST);
            if (depthTest) glEnable(GL_DEPTH_TEST);
            glDisable(GL_LIGHTING);
            glDisable(GL_BLEND);
            glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
            glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
            const auto before = openGLState();
            view->drawExtraContent();
            EXPECT_EQ(openGLState(), before) << "mode " << mode << ", depth test " << depthTest;
        }
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, itLeavesBlendingLightingAndRectangleTexturesOff)
{
    view->setDisplayedDate(shownToday);
    view->display();
    ASSERT_TRUE(view->openGLContext().makeCurrentContext());
    glEnable(GL_BLEND);
    glEnable(GL_LIGHTING);
    glEnable(GL_TEXTURE_RECTANGLE);
    view->drawExtraContent();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_RECTANGLE));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, theToolsAndTheBandsShareOneIndexBuffer)
{
    const auto document = kelo::test::boxDocument();
    const auto size = std::make_shared<ElasticsSizeType>();
    size->typeID = 1;
    size->elasticsColor = {0.0, 1.0, 0.0, 1.0};
    document->setAvailableElasticsSizeTypes({{1, size}});
    const auto elastic =
        std::make_shared<ElasticModel>(nullptr, size, std::vector<std::string>{"6", "27"});
    for (const bool toolsFirst : {true, false}) {
        view = makeView<OverlayView>(Rect{{0.0, 0.0}, {viewWidth, viewHeight}});
        view->setDocumentModel(document);
        view->setCurrentDate(shownToday);
        view->setDisplayedDate(shownToday);
        const auto printer = view->printButtonTexture();
        ASSERT_NE(printer, nullptr);
        for (const auto set :
             {&DXOpenGL::setElasticsToolTexture, &DXOpenGL::setElasticsToolSelectedTexture,
              &DXOpenGL::setBracketToolTexture, &DXOpenGL::setBracketToolSelectedTexture,
              &DXOpenGL::setPrintButtonTexture})
            (view.get()->*set)(nullptr);
        view->display();
        const int models = bufferCount();
        const auto addTools = [&] { view->setPrintButtonTexture(printer); };
        const auto addBand = [&] { document->placeElasticModel(elastic); };
        toolsFirst ? addTools() : addBand();
        view->display();
        EXPECT_EQ(bufferCount(), models + 2) << "vertices and indices";
        toolsFirst ? addBand() : addTools();
        view->display();
        EXPECT_EQ(bufferCount(), models + 3) << "only vertices";
        document->removeElasticModel(elastic);
        EXPECT_NO_GL_ERROR();
    }
}

TEST_F(DXOpenGLOverlay, aBufferWithoutMemoryLeavesTheToolsUndrawn)
{
    setPlainPictures();
    view->setDisplayedDate(shownToday);
    const QImage whole = view->grabImage();
    const auto keptMapBuffer = epoxy_glMapBuffer;
    epoxy_glMapBuffer = [](GLenum, GLenum) -> void * { return nullptr; };
    expectDrawnExactlyIn({labelRect()});
    epoxy_glMapBuffer = keptMapBuffer;
    EXPECT_EQ(view->grabImage(), whole);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, aViewWithoutAreaDrawsNone)
{
    const auto flat = makeView<OverlayView>(Rect{{0.0, 0.0}, {0.0, 0.0}});
    ASSERT_TRUE(view->openGLContext().makeCurrentContext());
    flat->drawExtraContent();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLOverlay, theLibrarysPicturesAreSquareAndLarge)
{
    for (const auto &texture : {view->elasticsToolTexture(), view->elasticsToolSelectedTexture(),
                                view->bracketToolTexture(), view->bracketToolSelectedTexture(),
                                view->printButtonTexture()}) {
        ASSERT_NE(texture, nullptr);
        EXPECT_EQ(texture->width(), 192u);
        EXPECT_EQ(texture->height(), 192u);
    }
    EXPECT_NO_GL_ERROR();
}

} // namespace
