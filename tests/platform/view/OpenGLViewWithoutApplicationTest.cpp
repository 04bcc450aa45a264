#include "tests/support/DrawingView.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestSurface.h"

#include <QCoreApplication>
#include <QImage>

namespace kelo {
namespace {

using test::DrawingView;

TEST(OpenGLViewWithoutApplication, aViewDrawsWithoutAnyApplicationObject)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_EQ(OpenGLView::surfaceKind(), SurfaceKind::Surfaceless);
    DrawingView view(Rect{{0, 0}, {40, 30}});
    const QImage image = view.grabImage();
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(39, 29), qRgb(255, 0, 0));
    EXPECT_NO_GL_ERROR();
}

TEST(OpenGLViewWithoutApplication, aWindowCannotBeHadAndSaysSoInOneSentence)
{
    const test::TestSurface surface(SurfaceKind::Window);
    DrawingView view(Rect{{0, 0}, {40, 30}});
    try {
        view.openGLContext();
        ADD_FAILURE() << "there is no application to open a window in";
    } catch (const OpenGLUnavailable &problem) {
        EXPECT_STREQ(problem.what(),
                     "The 3D view needs a graphical application to open its window in.");
    }
}

} // namespace
} // namespace kelo
