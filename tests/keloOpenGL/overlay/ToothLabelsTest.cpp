// The texts beside the teeth: where they belong, which can be read, and how the view draws them.

#include "keloOpenGL/overlay/ToothLabels.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "platform/time/VirtualRunLoop.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>

#include <numbers>

namespace {

using namespace kelo;

Extents toothBox(float x, float y, float z, float width, float depth, float height)
{
    return {Vector3{x, y, z}, Vector3{width, depth, height}};
}

/// Looks from the front: x to the right, z up, and the front, -y, towards the viewer.
Matrix fromTheFront()
{
    Matrix toEye;
    Matrix_loadIdentity(&toEye);
    Matrix_rotate(&toEye, Vector3{1.0f, 0.0f, 0.0f}, -std::numbers::pi_v<float> / 2.0f);
    return toEye;
}

/// 40 mm from the middle to each edge.
Matrix projection()
{
    Matrix ortho;
    Matrix_loadIdentity(&ortho);
    Matrix_applyOrtho(&ortho, -40.0f, 40.0f, -40.0f, 40.0f, -100.0f, 100.0f);
    return ortho;
}

const Extents arch = toothBox(-30.0f, -20.0f, 0.0f, 60.0f, 40.0f, 10.0f);

TEST(ToothLabelSpots, anUpperLabelIsAtTheUpperEndAndALowerOneAtTheLower)
{
    const Extents tooth = toothBox(4.0f, -20.0f, 0.0f, 8.0f, 6.0f, 10.0f);
    // x: the middle, 8 of 40 to the right, times the aspect of 1.5; y: 10 of 40 up, or 0.
    const auto upper = toothLabelSpot(tooth, arch, true, fromTheFront(), projection(), 1.5);
    EXPECT_NEAR(upper.position.x, 0.3, 1e-6);
    EXPECT_NEAR(upper.position.y, 0.25, 1e-6);
    const auto lower = toothLabelSpot(tooth, arch, false, fromTheFront(), projection(), 1.5);
    EXPECT_NEAR(lower.position.y, 0.0, 1e-6);
}

TEST(ToothLabelSpots, aFrontToothFacesTheViewerAndALastMolarIsSeenFromTheEdge)
{
    const Extents incisor = toothBox(-4.0f, -20.0f, 0.0f, 8.0f, 6.0f, 10.0f);
    EXPECT_NEAR(toothLabelSpot(incisor, arch, true, fromTheFront(), projection(), 1.0).facing, 1.0,
                1e-6);
    const Extents molar =
        toothBox(22.0f, 16.0f, 0.0f, 8.0f, 8.0f, 10.0f); // its middle is the arch's end
    EXPECT_NEAR(toothLabelSpot(molar, arch, true, fromTheFront(), projection(), 1.0).facing, 0.0,
                1e-6);
}

TEST(ToothLabelSpots, fromBehindTheFrontTeethAreTurnedAway)
{
    Matrix fromBehind;
    Matrix_loadIdentity(&fromBehind);
    Matrix_rotate(&fromBehind, Vector3{1.0f, 0.0f, 0.0f}, -std::numbers::pi_v<float> / 2.0f);
    Matrix_rotate(&fromBehind, Vector3{0.0f, 0.0f, 1.0f}, std::numbers::pi_v<float>);
    const Extents incisor = toothBox(-4.0f, -20.0f, 0.0f, 8.0f, 6.0f, 10.0f);
    EXPECT_NEAR(toothLabelSpot(incisor, arch, true, fromBehind, projection(), 1.0).facing, -1.0,
                1e-6);
}

ToothLabelBox labelAt(double x, double facing)
{
    return {{{x, 0.0}, {1.0, 1.0}}, facing};
}

using Places = std::vector<std::size_t>;

TEST(LegibleToothLabels, ofTwoThatOverlapTheOneThatFacesTheViewerBetterIsKept)
{
    EXPECT_EQ(legibleToothLabels({labelAt(0.0, 0.3), labelAt(0.5, 0.9)}), (Places{1}));
}

TEST(LegibleToothLabels, labelsThatOnlyTouchAreBothKept)
{
    EXPECT_EQ(legibleToothLabels({labelAt(0.0, 0.3), labelAt(1.0, 0.9)}), (Places{0, 1}));
}

TEST(LegibleToothLabels, oneThatIsLeftOutCoversNoOther)
{
    // The middle one gives way to the first, so the last one is free.
    EXPECT_EQ(legibleToothLabels({labelAt(0.0, 0.9), labelAt(0.8, 0.6), labelAt(1.6, 0.3)}),
              (Places{0, 2}));
}

TEST(LegibleToothLabels, oneThatIsTurnedAwayIsLeftOut)
{
    EXPECT_EQ(legibleToothLabels({labelAt(0.0, -0.21), labelAt(2.0, -0.2)}), (Places{1}));
    EXPECT_EQ(legibleToothLabels({labelAt(0.0, std::numeric_limits<double>::quiet_NaN())}),
              Places{});
}

class DXOpenGLToothLabels : public kelo::test::ViewFixture
{
protected:
    DXOpenGLToothLabels()
    {
        document = kelo::test::boxDocument();
        view->setDocumentModel(document);
        view->loadTextures();
    }

    std::shared_ptr<DXDocumentModel> document;
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {400.0, 300.0}});
};

TEST_F(DXOpenGLToothLabels, aLabelIsSeenAtItsToothAndNowhereElse)
{
    const QImage without = view->grabImage();
    view->setToothLabels({{"8", "8"}});
    const QImage with = view->grabImage();
    QRect changed;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) != without.pixel(x, y)) changed |= QRect(x, y, 1, 1);
        }
    }
    ASSERT_FALSE(changed.isEmpty());
    EXPECT_LE(changed.height(), 24) << "13 points and the room above and below";
    EXPECT_LE(changed.width(), 24);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLToothLabels, aMissingToothAndOneOfAnArchThatIsLeftOutHaveNone)
{
    const QImage without = view->grabImage();
    document->toothModels().at("8")->setHiddenPrimary(true);
    const QImage withoutTooth = view->grabImage();
    view->setToothLabels({{"8", "8"}, {"99", "no tooth"}});
    EXPECT_EQ(view->grabImage(), withoutTooth);
    document->toothModels().at("8")->setHiddenPrimary(false);
    EXPECT_NE(view->grabImage(), without);
    view->setShowsScenePart(ScenePart::UpperArch, false);
    const QImage lowerArch = view->grabImage();
    view->setToothLabels({});
    EXPECT_EQ(view->grabImage(), lowerArch);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLToothLabels, picksDoNotSeeThem)
{
    const auto identifiers = view->pickIdentifiers();
    view->setToothLabels({{"8", "8"}, {"25", "25"}});
    view->display();
    EXPECT_EQ(view->pickIdentifiers(), identifiers);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLToothLabels, neitherDoPrints)
{
    const auto before = view->printPicturesAtScale(1);
    view->setToothLabels({{"8", "8"}, {"25", "25"}});
    EXPECT_EQ(view->printPicturesAtScale(1).front, before.front);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLToothLabels, settingOthersAsksForARedrawAndTheSameOnesDoNot)
{
    view->setToothLabels({{"8", "8"}});
    EXPECT_TRUE(view->needsDisplay());
    view->setNeedsDisplay(false);
    view->setToothLabels({{"8", "8"}});
    EXPECT_FALSE(view->needsDisplay());
    view->setToothLabels({{"8", "11"}});
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLToothLabels, theyComeBackAfterTheContextWasLost)
{
    view->setToothLabels({{"8", "8"}});
    const QImage before = view->grabImage();
    view->loseContext();
    EXPECT_EQ(view->grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

} // namespace
