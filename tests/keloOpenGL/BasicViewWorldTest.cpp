#include "base/Assertion.h"
#include "keloOpenGL/view/HVOGLBasicView.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <cmath>
#include <optional>

using namespace kelo;
using kelo::test::boxDocument;
using kelo::test::ViewFixture;

namespace {

/// A view whose hooks a test can set.
class HookedView : public HVOGLBasicView
{
public:
    HookedView() : HVOGLBasicView(Rect{{0, 0}, {200, 100}}) {}
    double zoomToFitScaleFactor() const override { return scaleFactor; }
    double zoomToFitRadiusForExtents(const Extents &extents) const override
    {
        return radius > 0.0 ? radius : HVOGLBasicView::zoomToFitRadiusForExtents(extents);
    }
    PackedData rotationCenterDataForWorldCenterData(const PackedData &data) const override
    {
        if (shortAnswer) return PackedData(*shortAnswer);
        auto center = unpacked<Vector3>(data);
        center.x += offset;
        return packed(center);
    }
    double scaleFactor = 0.625;
    double radius = 0.0;
    float offset = 0.0f;
    std::optional<std::size_t> shortAnswer; ///< bytes of a centre that is none
};

class BasicViewWorld : public ViewFixture
{
protected:
    std::shared_ptr<HookedView> view = makeView<HookedView>();
};

void expectVector(const Vector3 &actual, float x, float y, float z)
{
    EXPECT_EQ(actual.x, x);
    EXPECT_EQ(actual.y, y);
    EXPECT_EQ(actual.z, z);
}

void expectLimits(const WindowLimits &actual, double xMin, double xMax, double yMin, double yMax)
{
    EXPECT_NEAR(actual.xMin, xMin, 1e-9);
    EXPECT_NEAR(actual.xMax, xMax, 1e-9);
    EXPECT_NEAR(actual.yMin, yMin, 1e-9);
    EXPECT_NEAR(actual.yMax, yMax, 1e-9);
}

} // namespace

TEST_F(BasicViewWorld, packedBuffersHaveTheirByteLayouts)
{
    view->setWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(view->worldCenterData().size(), 12u);
    EXPECT_EQ(view->rotationCenterData(), view->worldCenterData());
    const PackedData zoom = HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(1, 2, 3, 4);
    ASSERT_EQ(zoom.size(), 32u);
    EXPECT_EQ((unpacked<std::array<double, 4>>(zoom)), (std::array<double, 4>{1, 2, 3, 4}));
}

TEST_F(BasicViewWorld, aCentreBufferOfOtherThan12BytesTriggersTheAssertion)
{
    for (const std::size_t length : {0u, 11u, 13u, 16u}) {
        EXPECT_THROW(view->setWorldCenterData(PackedData(length)), AssertionFailure) << length;
        EXPECT_THROW(view->setRotationCenterData(PackedData(length)), AssertionFailure) << length;
    }
}

TEST_F(BasicViewWorld, aSubclassThatGivesNoRotationCentreTriggersTheAssertion)
{
    view->setDocumentModel(boxDocument());
    const WindowLimits zoomBox = view->zoomBox();
    const double zMin = view->zMin();
    for (const std::size_t length : {0u, 4u, 11u, 13u}) {
        view->shortAnswer = length;
        try {
            view->zoomToFit();
            ADD_FAILURE() << length << " bytes were taken";
        } catch (const AssertionFailure &failure) {
            EXPECT_STREQ(failure.what(), "rotation-centre data must be 12 bytes");
        }
        EXPECT_THROW(view->setWorldCenterData(packed(Vector3{})), AssertionFailure) << length;
    }
    EXPECT_EQ(view->zMin(), zMin) << "nothing is half done";
    const WindowLimits after = view->zoomBox();
    expectLimits(after, zoomBox.xMin, zoomBox.xMax, zoomBox.yMin, zoomBox.yMax);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, packedDataOfAnotherLengthIsNotUnpacked)
{
    EXPECT_EQ(unpacked<float>(packed(2.5f)), 2.5f);
    for (const std::size_t length : {0u, 3u, 5u}) {
        try {
            unpacked<float>(PackedData(length));
            ADD_FAILURE() << length << " bytes were taken";
        } catch (const AssertionFailure &failure) {
            EXPECT_STREQ(failure.what(), "packed data must be as long as what is packed in it");
        }
    }
}

TEST_F(BasicViewWorld, aRotationIsStoredAsItIsAndAsksForARedraw)
{
    view->setNeedsDisplay(false);
    view->setWorldRotationAngle_axis(400.0, 3.0, 0.0, 4.0);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{400.0f, 3.0f, 0.0f, 4.0f}));
    EXPECT_TRUE(view->needsDisplay());
    view->restoreDefaultOrientation();
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{90.0f, -1.0f, 0.0f, 0.0f}));
}

TEST_F(BasicViewWorld, theTargetOperationsActAtOnce)
{
    view->setTargetWorldRotationAngle_axis(30.0, 0.0, 0.0, 1.0);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{30.0f, 0.0f, 0.0f, 1.0f}));
    view->setTargetWorldRotationData(packed(HVOGLBasicView::Rotation{45.0f, 1.0f, 0.0f, 0.0f}));
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{45.0f, 1.0f, 0.0f, 0.0f}));
    view->setTargetWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    expectVector(view->worldCenter(), 1.0f, 2.0f, 3.0f);
    view->setTargetZoomData(HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(-3, 3, -2, 2));
    EXPECT_EQ(view->zoomBox(), (WindowLimits{-3, 3, -2, 2}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, theRotationCentreFollowsTheWorldCentreThroughItsHook)
{
    view->offset = 5.0f;
    view->setWorldCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    expectVector(view->worldCenter(), 1.0f, 2.0f, 3.0f);
    expectVector(view->rotationCenter(), 6.0f, 2.0f, 3.0f);
}

TEST_F(BasicViewWorld, settingTheRotationCentreAsksForNoRedraw)
{
    view->setNeedsDisplay(false);
    view->setRotationCenterData(packed(Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_FALSE(view->needsDisplay());
}

TEST_F(BasicViewWorld, zoomDataLeavesNearAndFarAsTheyWere)
{
    view->setZoomData(HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(-10, 10, -10, 10));
    EXPECT_EQ(view->zMin(), -1.0);
    EXPECT_EQ(view->zMax(), 1.0);
    // 200 by 100 points: x gets the spare room.
    expectLimits(view->windowLimits(), -20, 20, -10, 10);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, theWorldCentreOfABoxIsItsMiddle)
{
    MutableExtents box;
    box.absorb(-1.0, 2.0, 10.0);
    box.absorb(3.0, 4.0, 20.0);
    const auto center = unpacked<Vector3>(HVOGLBasicView::worldCenterDataForExtents(box));
    expectVector(center, 1.0f, 3.0f, 15.0f);
}

TEST_F(BasicViewWorld, withoutADocumentZoomToFitFramesTheDefaultExtentsOfRadius100)
{
    view->zoomToFit();
    // The circumscribed radius of a cube of half-size 100, times 0.625.
    const double half = 100.0 * std::sqrt(3.0) * 0.625;
    expectLimits(view->zoomBox(), -half, half, -half, half);
    EXPECT_EQ(view->zMin(), -100.0 * 100.0);
    EXPECT_EQ(view->zMax(), 100.0 * 100.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, aDocumentWithoutModelsFramesTheDefaultExtentsToo)
{
    view->setDocumentModel(std::make_shared<DXDocumentModel>());
    EXPECT_EQ(view->extents()->radius(), 100.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, anIncompleteDocumentGivesTheDefaultExtents)
{
    const auto document = boxDocument();
    document->setUpperGumModel(nullptr);
    view->setDocumentModel(document);
    EXPECT_EQ(view->extents()->radius(), 100.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, aNewDocumentIsCentredAndFramedAtOnce)
{
    view->setDocumentModel(boxDocument());
    EXPECT_EQ(view->extents()->description(), "x(-30,30)y(-20,20)z(-10,10)");
    const double half = std::sqrt(30.0 * 30.0 + 20.0 * 20.0 + 10.0 * 10.0) * 0.625;
    expectLimits(view->zoomBox(), -half, half, -half, half);
    expectLimits(view->windowLimits(), -2 * half, 2 * half, -half, half);
    expectVector(view->worldCenter(), 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(view->zMin(), -30.0 * 100.0);
    EXPECT_EQ(view->zMax(), 30.0 * 100.0);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, aScaleFactorOfExactlyOneSkipsTheShrinking)
{
    view->scaleFactor = 1.0;
    view->offset = 1000.0f;
    view->radius = 100.1;
    // Shrinking by 1 would round: half of 1100.1 - 899.9 is no longer 100.1.
    ASSERT_NE(1000.0 - (1100.1 - 899.9) * 0.5, 1000.0 - 100.1);
    view->zoomToFit();
    EXPECT_EQ(view->zoomBox().xMin, 1000.0 - 100.1);
    EXPECT_EQ(view->zoomBox().xMax, 1000.0 + 100.1);
    EXPECT_EQ(view->zoomBox().yMin, -100.1);
    EXPECT_EQ(view->zoomBox().yMax, 100.1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, nearAndFarArePlacedAboutTheRotationCentreThatWasInForce)
{
    view->setRotationCenterData(packed(Vector3{0.0f, 0.0f, 50.0f}));
    view->zoomToFit();
    EXPECT_EQ(view->zMin(), 50.0 - 10000.0);
    EXPECT_EQ(view->zMax(), 50.0 + 10000.0);
    expectVector(view->rotationCenter(), 0.0f, 0.0f, 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BasicViewWorld, theZoomBoxIsCentredOnTheRotationCentreOfTheHook)
{
    view->offset = 4.0f;
    view->radius = 8.0;
    view->scaleFactor = 0.5;
    view->zoomToFit();
    expectLimits(view->zoomBox(), 0, 8, -4, 4);
    EXPECT_NO_GL_ERROR();
}
