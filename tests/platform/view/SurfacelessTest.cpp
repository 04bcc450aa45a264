#include "tests/support/GLTest.h"

#include "platform/view/OpenGLView.h"
#include "tests/support/DrawingView.h"
#include "tests/support/TestSurface.h"

#include <QImage>

#include <cstring>
#include <string>
#include <vector>

namespace kelo {
namespace {

using test::DrawingView;

class Surfaceless : public testing::Test
{
protected:
    test::TestSurface surface{SurfaceKind::Surfaceless};
};

TEST_F(Surfaceless, theContextHasTheFixedFunctionCallsOfOpenGL21)
{
    DrawingView view(Rect{{0, 0}, {64, 48}});
    ASSERT_TRUE(view.openGLContext().makeCurrentContext());
    EXPECT_GE(epoxy_gl_version(), 21);
    // Core contexts answer these with an error.
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glBegin(GL_TRIANGLES);
    glEnd();
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, theBufferHas24BitsOfDepthAndNoMultisampling)
{
    DrawingView view(Rect{{0, 0}, {64, 48}});
    ASSERT_TRUE(view.openGLContext().makeCurrentContext());
    GLint depth = 0;
    GLint samples = -1;
    glGetIntegerv(GL_DEPTH_BITS, &depth);
    glGetIntegerv(GL_SAMPLES, &samples);
    EXPECT_GE(depth, 24);
    EXPECT_EQ(samples, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, noContextIsMadeBeforeItIsNeeded)
{
    DrawingView view(Rect{{0, 0}, {64, 48}});
    EXPECT_FALSE(view.hasOpenGLContext());
    EXPECT_EQ(view.deviceSize(), (PixelSize{64, 48}));
    EXPECT_FALSE(view.hasOpenGLContext());
    view.display();
    EXPECT_TRUE(view.hasOpenGLContext());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, theGrabbedImageHasTheTopRowFirst)
{
    DrawingView view(Rect{{0, 0}, {40, 30}});
    const QImage image = view.grabImage();
    ASSERT_EQ(image.size(), QSize(40, 30));
    // DrawingView paints the lowest quarter of the height red and the left quarter green.
    EXPECT_EQ(image.pixel(20, 0), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(20, 29), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(39, 29), qRgb(255, 0, 0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, theGrabbedImageIsOpaqueWhateverAlphaWasDrawn)
{
    DrawingView view(Rect{{0, 0}, {8, 8}});
    view.clearAlpha = 0.25f;
    EXPECT_FALSE(view.grabImage().hasAlphaChannel());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, grabbingKeepsThePixelStoreState)
{
    DrawingView view(Rect{{0, 0}, {10, 10}});
    view.openGLContext().makeCurrentContext();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ROW_LENGTH, 77);
    const QImage image = view.grabImage();
    EXPECT_EQ(image.pixel(9, 0), qRgb(0, 0, 255));
    GLint alignment = 0;
    GLint rowLength = 0;
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    glGetIntegerv(GL_PACK_ROW_LENGTH, &rowLength);
    EXPECT_EQ(alignment, 1);
    EXPECT_EQ(rowLength, 77);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, anEmptyViewGivesANullImage)
{
    DrawingView view(Rect{{0, 0}, {0, 0}});
    EXPECT_TRUE(view.grabImage().isNull());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, theBufferFollowsTheSizeAndTheContextStays)
{
    DrawingView view(Rect{{0, 0}, {40, 30}});
    view.display();
    const OpenGLContext *context = &view.openGLContext();
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    view.setFrameSize({200, 100});
    EXPECT_EQ(&view.openGLContext(), context);
    EXPECT_EQ(view.grabImage().size(), QSize(200, 100));
    EXPECT_EQ(view.grabImage().pixel(199, 0), qRgb(0, 0, 255));
    EXPECT_TRUE(glIsTexture(texture));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, theDeviceSizeIsTheScaledSizeRoundedOnce)
{
    DrawingView view(Rect{{0, 0}, {101, 33}});
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        view.setSurfacelessScaleFactor(scale);
        const PixelSize size = view.deviceSize();
        EXPECT_EQ(size.width, static_cast<int>(101 * scale + 0.5));
        EXPECT_EQ(size.height, static_cast<int>(33 * scale + 0.5));
        EXPECT_EQ(view.convertSizeToBacking(view.bounds().size),
                  (Size{double(size.width), double(size.height)}));
        const QImage image = view.grabImage();
        EXPECT_EQ(image.size(), QSize(size.width, size.height));
        EXPECT_EQ(image.pixel(size.width - 1, 0), qRgb(0, 0, 255)) << scale;
        EXPECT_EQ(image.pixel(size.width - 1, size.height - 1), qRgb(255, 0, 0)) << scale;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, twoViewsHaveContextsOfTheirOwn)
{
    DrawingView first(Rect{{0, 0}, {20, 20}});
    DrawingView second(Rect{{0, 0}, {30, 30}});
    first.display();
    EXPECT_TRUE(first.openGLContext().isCurrent());
    second.display();
    EXPECT_FALSE(first.openGLContext().isCurrent());
    EXPECT_EQ(OpenGLContext::currentContext(), second.sharedOpenGLContext());
    EXPECT_EQ(first.grabImage().size(), QSize(20, 20));
    EXPECT_EQ(second.grabImage().size(), QSize(30, 30));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, makingAContextLeavesTheCurrentOneCurrent)
{
    DrawingView first(Rect{{0, 0}, {20, 20}});
    first.display();
    DrawingView second(Rect{{0, 0}, {30, 30}});
    second.openGLContext();
    EXPECT_TRUE(first.openGLContext().isCurrent());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, aViewThatEndsWhileCurrentLeavesNoContextCurrent)
{
    {
        DrawingView view(Rect{{0, 0}, {20, 20}});
        view.display();
        EXPECT_NE(OpenGLContext::currentContext(), nullptr);
        EXPECT_NO_GL_ERROR();
    }
    EXPECT_EQ(OpenGLContext::currentContext(), nullptr);
}

TEST_F(Surfaceless, aContextThatOutlivesItsViewCannotBeMadeCurrent)
{
    std::shared_ptr<OpenGLContext> context;
    {
        DrawingView view(Rect{{0, 0}, {20, 20}});
        context = view.sharedOpenGLContext();
        view.display();
        EXPECT_NO_GL_ERROR();
    }
    EXPECT_FALSE(context->isCurrent());
    EXPECT_FALSE(context->makeCurrentContext());
    context->deleteBuffer(1);
    context->flushBuffer();
}

TEST_F(Surfaceless, namesAreDeletedAtOnceInTheCurrentContextAndLaterOtherwise)
{
    DrawingView first(Rect{{0, 0}, {20, 20}});
    DrawingView second(Rect{{0, 0}, {20, 20}});
    first.display();
    GLuint buffers[2] = {};
    glGenBuffers(2, buffers);
    for (GLuint buffer : buffers)
        glBindBuffer(GL_ARRAY_BUFFER, buffer);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    GLuint framebuffer = 0;
    glGenFramebuffersEXT(1, &framebuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer);
    GLuint renderbuffer = 0;
    glGenRenderbuffersEXT(1, &renderbuffer);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, renderbuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);

    first.openGLContext().deleteBuffer(buffers[0]);
    EXPECT_FALSE(glIsBuffer(buffers[0]));

    second.display();
    GLuint sameNumberInTheOther = 0;
    glGenBuffers(1, &sameNumberInTheOther);
    glBindBuffer(GL_ARRAY_BUFFER, sameNumberInTheOther);
    first.openGLContext().deleteBuffer(buffers[1]);
    first.openGLContext().deleteTexture(texture);
    first.openGLContext().deleteFramebuffer(framebuffer);
    first.openGLContext().deleteRenderbuffer(renderbuffer);
    first.openGLContext().deleteTexture(0);
    EXPECT_TRUE(glIsBuffer(sameNumberInTheOther));

    ASSERT_TRUE(first.openGLContext().makeCurrentContext());
    EXPECT_FALSE(glIsBuffer(buffers[1]));
    EXPECT_FALSE(glIsTexture(texture));
    EXPECT_FALSE(glIsFramebufferEXT(framebuffer));
    EXPECT_FALSE(glIsRenderbufferEXT(renderbuffer));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, aLostContextIsReplacedAndTheViewIsTold)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    view.display();
    const std::weak_ptr<OpenGLContext> lost = view.sharedOpenGLContext();
    view.loseContext();
    EXPECT_TRUE(lost.expired());
    EXPECT_EQ(view.contextLosses, 1);
    EXPECT_FALSE(view.hasOpenGLContext());
    EXPECT_TRUE(view.needsDisplay());
    EXPECT_EQ(view.grabImage().pixel(19, 0), qRgb(0, 0, 255));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, losingAContextThatWasNeverMadeDoesNothing)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    view.loseContext();
    EXPECT_EQ(view.contextLosses, 0);
}

TEST_F(Surfaceless, askingForARedrawOnlyMarksAndManyAskingsMakeOneFrame)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    for (int i = 0; i < 10; ++i)
        view.setNeedsDisplay(true);
    EXPECT_EQ(view.frames, 0);
    view.displayIfNeeded();
    EXPECT_EQ(view.frames, 1);
    view.displayIfNeeded();
    EXPECT_EQ(view.frames, 1);
    view.display();
    EXPECT_EQ(view.frames, 2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, aRedrawAskedForWhileDrawingIsStillWanted)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    view.whileDrawing = [&view] { view.setNeedsDisplay(true); };
    view.display();
    EXPECT_TRUE(view.needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, grabbingAnImageLeavesTheWishForARedrawAsItWas)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    view.display();
    view.grabImage();
    EXPECT_FALSE(view.needsDisplay());
    view.setNeedsDisplay(true);
    view.grabImage();
    EXPECT_TRUE(view.needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, flushingIsSuppressedWhileGrabbingAndNestedSuppressionsCount)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    bool suppressed = false;
    view.whileDrawing = [&] { suppressed = view.openGLContext().isFlushSuppressed(); };
    view.grabImage();
    EXPECT_TRUE(suppressed);
    view.display();
    EXPECT_FALSE(suppressed);
    OpenGLContext &context = view.openGLContext();
    {
        const OpenGLContext::FlushSuppression outer(context);
        {
            const OpenGLContext::FlushSuppression inner(context);
        }
        EXPECT_TRUE(context.isFlushSuppressed());
    }
    EXPECT_FALSE(context.isFlushSuppressed());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, theSwapIntervalIsRememberedAndStartsAtOne)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    EXPECT_EQ(view.openGLContext().swapInterval(), 1);
    view.openGLContext().setSwapInterval(0);
    EXPECT_EQ(view.openGLContext().swapInterval(), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, aBufferLargerThanTheDriverAllowsGivesOneSentence)
{
    DrawingView view(Rect{{0, 0}, {1e6, 1e6}});
    try {
        view.openGLContext();
        ADD_FAILURE() << "no buffer of that size exists";
    } catch (const OpenGLUnavailable &error) {
        EXPECT_STREQ(error.what(), "The 3D view cannot draw without a display: a pixel buffer of "
                                   "1000000 by 1000000 pixels cannot be had.");
    }
    view.setFrameSize({20, 20});
    EXPECT_EQ(view.grabImage().pixel(19, 0), qRgb(0, 0, 255));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, aDepthThatNobodyOffersGivesOneSentence)
{
    PixelFormat format;
    format.depthSize = 200;
    DrawingView view(Rect{{0, 0}, {20, 20}}, format);
    try {
        view.openGLContext();
        ADD_FAILURE() << "no such depth exists";
    } catch (const OpenGLUnavailable &error) {
        EXPECT_STREQ(error.what(),
                     "The 3D view cannot draw without a display: no pixel buffer with "
                     "200 bits of depth is offered.");
    }
}

TEST_F(Surfaceless, thereIsNoWindow)
{
    DrawingView view(Rect{{0, 0}, {20, 20}});
    EXPECT_EQ(view.window(), nullptr);
}

TEST_F(Surfaceless, fullScreenWithoutADisplayKeepsSizeAndContext)
{
    DrawingView view(Rect{{0, 0}, {20, 10}});
    EXPECT_FALSE(view.isInFullScreenMode());
    const OpenGLContext *const context = &view.openGLContext();
    EXPECT_TRUE(view.enterFullScreenMode());
    EXPECT_TRUE(view.isInFullScreenMode());
    EXPECT_TRUE(view.enterFullScreenMode()) << "it is there already";
    EXPECT_EQ(view.bounds().size, (Size{20, 10}));
    EXPECT_EQ(&view.openGLContext(), context);
    view.exitFullScreenModeWithOptions();
    EXPECT_FALSE(view.isInFullScreenMode());
    view.exitFullScreenModeWithOptions();
    EXPECT_FALSE(view.isInFullScreenMode());
    view.display();
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, aThousandFramesLeaveNoError)
{
    DrawingView view(Rect{{0, 0}, {32, 32}});
    for (int i = 0; i < 1000; ++i) {
        view.display();
        ASSERT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "frame " << i;
    }
    EXPECT_EQ(view.frames, 1000);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Surfaceless, aPendingErrorIsFoundByTheCheckThatEndsEveryTest)
{
    DrawingView view(Rect{{0, 0}, {8, 8}});
    view.display();
    glEnable(0xFFFF);
    EXPECT_FALSE(test::noGLError());
    EXPECT_NO_GL_ERROR();
    view.loseContext();
    EXPECT_FALSE(test::noGLError());
}

} // namespace
} // namespace kelo
