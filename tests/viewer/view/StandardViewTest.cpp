#include "viewer/view/StandardView.h"

#include "keloOpenGL/keloOpenGL.h"
#include "tests/keloOpenGL/ViewFixture.h"

namespace {

using namespace kelo;
using namespace viewer;

class StandardViews : public kelo::test::ViewFixture
{
protected:
    StandardViews()
    {
        view->setDocumentModel(kelo::test::boxDocument());
        view->display();
    }

    /// Where a direction of the world points to in the view: x to the right, y up, z to the viewer.
    Vector3 inView(const Vector3 &direction) const
    {
        const auto &r = view->worldRotation();
        return Quaternion_multiplyVector3(
            Quaternion_fromAxisAngle(Vector3{r[1], r[2], r[3]}, r[0] * 3.1415927f / 180.0f),
            direction);
    }

    static void expectNear(const Vector3 &actual, const Vector3 &expected)
    {
        EXPECT_NEAR(actual.x, expected.x, 1e-5f);
        EXPECT_NEAR(actual.y, expected.y, 1e-5f);
        EXPECT_NEAR(actual.z, expected.z, 1e-5f);
    }

    void go(StandardView standardView)
    {
        showStandardView(*view, standardView);
        clock->advance(1.0);
    }

    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {200.0, 150.0}});
    /// Of the world: the front teeth lie towards -y, the upper jaw towards +z.
    const Vector3 front{0, -1, 0};
    const Vector3 up{0, 0, 1};
};

TEST_F(StandardViews, theyTurnThereInThreeQuartersOfASecondWithTheMouthClosed)
{
    view->setMouthOpenAngle(30.0f);
    view->rotateByDegrees(50.0f);
    showStandardView(*view, StandardView::Front);
    EXPECT_TRUE(view->isAnimatingWorldRotation());
    clock->advance(0.8);
    EXPECT_FALSE(view->isAnimatingWorldRotation());
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    expectNear(inView(front), {0, 0, 1});
    expectNear(inView(up), {0, 1, 0});
    EXPECT_NO_GL_ERROR();
}

TEST_F(StandardViews, theRightViewShowsThePatientsRightFrontTeethToTheRight)
{
    go(StandardView::Right);
    expectNear(inView(front), {1, 0, 0});
    expectNear(inView(up), {0, 1, 0});
    go(StandardView::Left);
    expectNear(inView(front), {-1, 0, 0});
    expectNear(inView(up), {0, 1, 0});
    EXPECT_NO_GL_ERROR();
}

TEST_F(StandardViews, anOcclusalViewShowsChewingSurfacesOfOneArch)
{
    go(StandardView::UpperOcclusal);
    expectNear(inView(up), {0, 0, -1});
    EXPECT_TRUE(view->showsScenePart(ScenePart::UpperArch));
    EXPECT_FALSE(view->showsScenePart(ScenePart::LowerArch));
    go(StandardView::LowerOcclusal);
    expectNear(inView(up), {0, 0, 1});
    EXPECT_FALSE(view->showsScenePart(ScenePart::UpperArch));
    EXPECT_TRUE(view->showsScenePart(ScenePart::LowerArch));
    go(StandardView::Front);
    EXPECT_TRUE(view->showsScenePart(ScenePart::UpperArch));
    EXPECT_TRUE(view->showsScenePart(ScenePart::LowerArch));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StandardViews, theyHaveTitles)
{
    QStringList titles;
    for (const StandardView standardView : standardViews)
        titles << titleOfStandardView(standardView);
    EXPECT_EQ(titles, (QStringList{"Front", "Right", "Left", "Upper Occlusal", "Lower Occlusal"}));
}

} // namespace
