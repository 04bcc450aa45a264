#include "tests/keloOpenGL/treatment/PrintingFixture.h"

#include "keloOpenGL/view/StringTexture.h"

#include <cstdlib>
#include <stdexcept>

namespace {

using namespace kelo;

using kelo::test::printedDay;

class DXOpenGLPrinting : public kelo::test::PrintingFixture
{};

TEST_F(DXOpenGLPrinting, theFrontImageIs800By400AndEachSideImage725By400)
{
    view->submitPrintRequest();
    ASSERT_EQ(prints, 1);
    EXPECT_EQ(front.size(), QSize(800, 400));
    EXPECT_EQ(left.size(), QSize(725, 400));
    EXPECT_EQ(right.size(), QSize(725, 400));
    EXPECT_EQ(bytesPerLine, (std::vector<qsizetype>{2175, 2400, 2175}));
    EXPECT_EQ(front.format(), QImage::Format_RGB888);
    EXPECT_EQ(date, printedDay);
    EXPECT_TRUE(alerts.empty());
    EXPECT_NO_GL_ERROR();
}

/// The mean difference of two pictures of one size, in steps of 255.
double meanDifference(const QImage &one, const QImage &other)
{
    double sum = 0.0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            sum += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y)));
    }
    return sum / (static_cast<double>(one.width()) * one.height());
}

TEST_F(DXOpenGLPrinting, theLargerPicturesShowTheSameWithMorePixels)
{
    view->setMouthOpenAngle(30.0f);
    const QImage shown = view->grabImage();
    view->submitPrintRequest();
    const auto pictures = view->printPicturesAtScale(2);
    ASSERT_EQ(pictures.left.size(), QSize(1450, 800));
    ASSERT_EQ(pictures.front.size(), QSize(1600, 800));
    ASSERT_EQ(pictures.right.size(), QSize(1450, 800));
    // Every other pixel of the larger picture lies where one of the smaller picture lies, but for
    // the edges of the boxes, which fall elsewhere.
    EXPECT_LT(meanDifference(pictures.left.scaled(725, 400), left), 2.0);
    EXPECT_LT(meanDifference(pictures.front.scaled(800, 400), front), 2.0);
    EXPECT_LT(meanDifference(pictures.right.scaled(725, 400), right), 2.0);
    EXPECT_GT(meanDifference(pictures.right.scaled(725, 400), left), 2.0);
    EXPECT_EQ(view->mouthOpenAngle(), 30.0f);
    EXPECT_EQ(view->grabImage(), shown);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, theLargerPicturesAtScale1AreThoseOfARequest)
{
    view->submitPrintRequest();
    const auto pictures = view->printPicturesAtScale(1);
    EXPECT_EQ(pictures.left, left);
    EXPECT_EQ(pictures.front, front);
    EXPECT_EQ(pictures.right, right);
    EXPECT_EQ(view->printPicturesAtScale(0).front, front);
    EXPECT_EQ(view->printPicturesAtScale(9).front.size(), QSize(3200, 1600));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, aViewThatCannotPrintHasNoLargerPictures)
{
    view->status = GL_FRAMEBUFFER_UNSUPPORTED_EXT;
    EXPECT_TRUE(view->printPicturesAtScale(2).front.isNull());
    view->status.reset();
    view->extensions = "GL_EXT_something";
    EXPECT_TRUE(view->printPicturesAtScale(2).front.isNull());
    EXPECT_TRUE(alerts.empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, withoutAPrintOperationOfTheDelegateNothingHappens)
{
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right = nullptr;
    view->submitPrintRequest();
    view->setDelegate(nullptr);
    view->submitPrintRequest();
    EXPECT_EQ(prints, 0);
    EXPECT_TRUE(alerts.empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, bracketsArePrintedWhiteAndKeepTheirColours)
{
    ASSERT_TRUE(hasRed(view->grabImage()));
    const auto material = document->bracketModels().at("8")->material();
    view->submitPrintRequest();
    EXPECT_FALSE(hasRed(front));
    EXPECT_FALSE(hasRed(left));
    EXPECT_FALSE(hasRed(right));
    EXPECT_EQ(document->bracketModels().at("8")->material(), material);
    EXPECT_TRUE(hasRed(view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, whilePrintingTheOverlayIsAbsentFromTheImages)
{
    view->submitPrintRequest();
    const QImage withOverlay = front;
    // Without label and pictures there is nothing that the overlay could draw.
    view->setDateStringTexture(nullptr);
    view->setElasticsToolTexture(nullptr);
    view->setElasticsToolSelectedTexture(nullptr);
    view->setBracketToolTexture(nullptr);
    view->setBracketToolSelectedTexture(nullptr);
    view->setPrintButtonTexture(nullptr);
    view->submitPrintRequest();
    EXPECT_EQ(front, withOverlay);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, anOpenMouthIsPrintedClosedAndStaysOpenOnScreen)
{
    view->submitPrintRequest();
    const QImage closed = front;
    view->setMouthOpenAngle(30.0f);
    const QImage onScreen = view->grabImage();
    view->submitPrintRequest();
    EXPECT_EQ(front, closed);
    EXPECT_EQ(view->mouthOpenAngle(), 30.0f);
    EXPECT_EQ(view->grabImage(), onScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, theViewOnScreenIsTheSameAfterwardsWhicheverWayItWasTurned)
{
    view->setWorldRotationAngle_axis(37.0, 0.3, -0.6, 0.74);
    const auto rotation = view->worldRotation();
    const QImage onScreen = view->grabImage();
    view->submitPrintRequest();
    EXPECT_EQ(view->worldRotation(), rotation);
    EXPECT_EQ(view->cameraSize(), (Size{400.0, 300.0}));
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ((std::vector<GLint>{viewport, viewport + 4}), (std::vector<GLint>{0, 0, 400, 300}));
    GLint framebuffer = -1;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &framebuffer);
    EXPECT_EQ(framebuffer, 0);
    EXPECT_EQ(view->grabImage(), onScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, atTwicePixelsPerPointTheViewportIsRestoredInPixels)
{
    view->setSurfacelessScaleFactor(2.0);
    const QImage onScreen = view->grabImage();
    view->submitPrintRequest();
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ((std::vector<GLint>{viewport, viewport + 4}), (std::vector<GLint>{0, 0, 800, 600}));
    EXPECT_EQ(view->grabImage(), onScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, theViewLeavesFullScreenBeforeTheDelegateIsCalled)
{
    view->fullScreen = true;
    view->submitPrintRequest();
    ASSERT_EQ(prints, 1);
    EXPECT_FALSE(wasInFullScreen);
    EXPECT_FALSE(view->isInFullScreenMode());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, theTopLeftPixelIsBytes0To2OfTheReturnedBlock)
{
    ASSERT_FALSE(view->grabImage().isNull()); // the viewport is 400 x 300, less than a block
    view->setFrameSize({800.0, 400.0});
    ASSERT_FALSE(view->grabImage().isNull());
    const int offset = 75;
    const auto block =
        view->printImageForRotationAngle_x_y_z_width_offset(90.0f, -1.0f, 0.0f, 0.0f, 725, offset);
    ASSERT_EQ(block.size(), 725u * 400u * 3u);
    // The scene is still in the framebuffer; OpenGL counts rows from the bottom.
    const auto pixelAt = [](int x, int rowFromBottom) {
        std::vector<unsigned char> pixel(3);
        glReadPixels(x, rowFromBottom, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
        return pixel;
    };
    const auto blockPixel = [&block](int x, int row) {
        const auto first = block.begin() + (row * 725 + x) * 3;
        return std::vector<unsigned char>(first, first + 3);
    };
    EXPECT_EQ(blockPixel(0, 0), pixelAt(offset, 399));
    EXPECT_EQ(blockPixel(724, 0), pixelAt(799, 399));
    EXPECT_EQ(blockPixel(0, 399), pixelAt(offset, 0));
    EXPECT_EQ(blockPixel(362, 150), pixelAt(offset + 362, 249));
    // The background is shaded, so that rows in the wrong order would be seen.
    EXPECT_NE(blockPixel(0, 0), blockPixel(0, 399));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, theThreeListsHoldTheElasticsOfEachSide)
{
    place({"6", "30"});
    place({"11", "21"});
    place({"8", "25"});
    view->submitPrintRequest();
    ASSERT_EQ(elastics.size(), 3u);
    const auto bands = [this](std::size_t side) {
        std::vector<std::vector<std::string>> keys;
        for (const ElasticDescription &elastic : elastics[side]) {
            keys.push_back(elastic.brackets);
            EXPECT_EQ(elastic.elastic->bracketSequence(), elastic.brackets);
        }
        return keys;
    };
    using Bands = std::vector<std::vector<std::string>>;
    EXPECT_EQ(bands(0), (Bands{{"6", "30"}}));
    EXPECT_EQ(bands(1), (Bands{{"6", "30"}, {"11", "21"}, {"8", "25"}}));
    EXPECT_EQ(bands(2), (Bands{{"11", "21"}}));
    EXPECT_EQ(elastics[0][0].name, "1/4\" 3.5 oz");
    EXPECT_EQ(elastics[0][0].color, (Color{0.0, 1.0, 0.0, 1.0}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, withoutFramebufferObjectsAnAlertSaysNoPrinting)
{
    view->extensions = "GL_ARB_multitexture GL_EXT_texture";
    const QImage onScreen = view->grabImage();
    view->submitPrintRequest();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].messageText, "Printing Not Supported");
    EXPECT_EQ(alerts[0].informativeText,
              "This computer does not meet the minimum system requirements for printing.");
    EXPECT_EQ(alerts[0].buttonTitle, "OK");
    EXPECT_EQ(prints, 0);
    EXPECT_EQ(view->grabImage(), onScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, anIncompleteFramebufferIsToldWithItsStatusInHexadecimal)
{
    view->status = 0x8CDDu;
    const QImage onScreen = view->grabImage();
    view->submitPrintRequest();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].messageText, "Printing Not Supported");
    EXPECT_EQ(alerts[0].informativeText, "This computer does not meet the minimum system "
                                         "requirements for printing. (Error 0x8CDD)");
    EXPECT_EQ(alerts[0].buttonTitle, "OK");
    EXPECT_EQ(prints, 0);
    GLint framebuffer = -1;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &framebuffer);
    EXPECT_EQ(framebuffer, 0);
    EXPECT_EQ(view->cameraSize(), (Size{400.0, 300.0}));
    EXPECT_EQ(view->grabImage(), onScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, anExceptionInTheDelegatesHandlerFindsEverythingRestored)
{
    const auto material = document->bracketModels().at("8")->material();
    const QImage onScreen = view->grabImage();
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right = [](auto &&...) {
        throw std::runtime_error("the printer is on fire");
    };
    EXPECT_THROW(view->submitPrintRequest(), std::runtime_error);
    EXPECT_EQ(document->bracketModels().at("8")->material(), material);
    EXPECT_EQ(view->grabImage(), onScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, aRequestDuringATransitionLeavesItRunning)
{
    view->setTargetMouthOpenAngle(40.0f);
    clock->advance(0.3);
    const float angle = view->mouthOpenAngle();
    view->submitPrintRequest();
    EXPECT_EQ(view->mouthOpenAngle(), angle);
    clock->advance(1.0);
    EXPECT_EQ(view->mouthOpenAngle(), 40.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, nothingThatIsDrawnForPrintingIsShown)
{
    view->display();
    ASSERT_EQ(view->flushSuppressedWhileDrawing, (std::vector<bool>{false}));
    view->flushSuppressedWhileDrawing.clear();
    view->submitPrintRequest();
    EXPECT_EQ(view->flushSuppressedWhileDrawing, (std::vector<bool>{true, true, true}));
    EXPECT_FALSE(view->openGLContext().isFlushSuppressed());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, aViewWithoutADocumentPrintsTheBackground)
{
    view->setDocumentModel(nullptr);
    view->submitPrintRequest();
    ASSERT_EQ(prints, 1);
    EXPECT_EQ(front.size(), QSize(800, 400));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, finishOperationsWithNoPlacementOpenDoesNothing)
{
    view->setNeedsDisplay(false);
    view->finishOperations();
    EXPECT_TRUE(document->elasticModels().empty());
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPrinting, finishOperationsEndsAnElasticThatIsStrungOverOneBracketOnly)
{
    view->setFirstClickedToothName("8");
    view->setLastClickedToothName("8");
    MenuItem item;
    item.representedObject = size;
    view->startElasticColorMenuItemSelected(item);
    view->finishOperations();
    EXPECT_TRUE(document->elasticModels().empty());
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

} // namespace
