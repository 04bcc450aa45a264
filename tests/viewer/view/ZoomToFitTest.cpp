// The sample patient in windows of all proportions.

#include "viewer/view/ZoomToFit.h"

#include "tests/viewer/support/ScriptFixture.h"

namespace {

using namespace viewer;

class ZoomToFit : public viewer::test::ScriptFixture
{
protected:
    void showIn(const kelo::Size &size)
    {
        view->setFrameSize(size);
        view->display();
    }

    /// Whether anything of the jaws lies on the left or the right edge of the view.
    bool isCutOff() const
    {
        const auto pixels = view->pickIdentifiers();
        const auto width = static_cast<std::size_t>(view->deviceSize().width);
        EXPECT_GT(pixels.size(), width);
        for (std::size_t row = 0; row < pixels.size(); row += width) {
            if (pixels[row] != 0 || pixels[row + width - 1] != 0) return true;
        }
        return false;
    }
};

TEST_F(ZoomToFit, theJawsAreSeenFromSideToSideInEveryWindow)
{
    for (const kelo::Size size :
         {kelo::Size{400.0, 800.0}, {300.0, 300.0}, {200.0, 700.0}, {1024.0, 600.0}}) {
        showIn(size);
        zoomToFit(*view);
        EXPECT_FALSE(isCutOff()) << size.width << " x " << size.height;
        view->setWorldRotationAngle_axis(120.0, -0.57735026, 0.57735026, 0.57735026);
        EXPECT_FALSE(isCutOff()) << "from the patient's right";
        view->restoreDefaultOrientation();
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(ZoomToFit, theViewsOwnFitCutsTheSidesOffInANarrowWindow)
{
    showIn({400.0, 800.0});
    view->zoomToFit();
    EXPECT_TRUE(isCutOff()) << "or the test above would show nothing";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ZoomToFit, aFittedSceneStaysFittedWhenTheWindowGetsNarrow)
{
    showIn({800.0, 600.0});
    zoomToFit(*view);
    showIn({300.0, 600.0});
    EXPECT_FALSE(isCutOff());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ZoomToFit, aWindowThatIsWideEnoughShowsWhatTheViewsOwnFitShows)
{
    showIn({1200.0, 600.0}); // twice as wide as high: wider than the jaws and their gums
    view->zoomToFit();
    const kelo::WindowLimits own = view->windowLimits();
    zoomToFit(*view);
    EXPECT_NEAR(view->windowLimits().xMin, own.xMin, 1e-9);
    EXPECT_NEAR(view->windowLimits().xMax, own.xMax, 1e-9);
    EXPECT_EQ(view->windowLimits().yMin, own.yMin);
    EXPECT_EQ(view->windowLimits().yMax, own.yMax);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ZoomToFit, aScriptsZoomFitIsTheSame)
{
    play("zoom 0 1 0 1\nresize 400 800\nzoom fit\n");
    EXPECT_FALSE(isCutOff());
    const kelo::WindowLimits box = view->zoomBox();
    zoomToFit(*view);
    EXPECT_EQ(view->zoomBox().xMin, box.xMin);
    EXPECT_EQ(view->zoomBox().xMax, box.xMax);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ZoomToFit, aViewWithoutADocumentIsFittedToTheDefaultScene)
{
    view->setDocumentModel(nullptr);
    zoomToFit(*view);
    EXPECT_LT(view->zoomBox().xMin, view->zoomBox().xMax);
    EXPECT_NO_GL_ERROR();
}

} // namespace
