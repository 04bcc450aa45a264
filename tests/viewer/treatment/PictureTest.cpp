// The sample patient as the viewer shows it, against the pictures that are kept.

#include "keloOpenGL/keloOpenGL.h"
#include "tests/support/GLTest.h"
#include "tests/support/PictureComparison.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestSurface.h"
#include "viewer/treatment/OpenedTreatment.h"

#include <QImage>
#include <QLocale>

#include <gtest/gtest.h>

namespace {

using namespace kelo;
using kelo::test::isThePictureKeptAs;

constexpr float diagonal = 0.57735026f;

/// The sample treatment in a view of 480 x 360 points, in a locale of its own: the label shows a
/// date.
class Pictures : public testing::Test
{
protected:
    Pictures()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {480.0, 360.0}});
        viewer::CommandLine commandLine;
        commandLine.headless = true;
        treatment = std::make_unique<viewer::OpenedTreatment>(commandLine);
        treatment->showIn(*view);
    }
    ~Pictures() override
    {
        view.reset();
        treatment.reset();
        QLocale::setDefault(QLocale::system());
    }

    test::TestSurface surface{SurfaceKind::Surfaceless};
    test::TestClock clock;
    std::shared_ptr<DXOpenGL> view;
    std::unique_ptr<viewer::OpenedTreatment> treatment;
};

TEST_F(Pictures, theMouthClosed)
{
    EXPECT_TRUE(isThePictureKeptAs("closed", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theMouthOpenUp)
{
    view->setMouthOpenAngle(-45.0f);
    EXPECT_TRUE(isThePictureKeptAs("open-up", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theMouthOpenDown)
{
    view->setMouthOpenAngle(45.0f);
    EXPECT_TRUE(isThePictureKeptAs("open-down", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, thePatientsRightProfile)
{
    view->setWorldRotationAngle_axis(120.0, -diagonal, diagonal, diagonal);
    EXPECT_TRUE(isThePictureKeptAs("right-profile", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, thePatientsLeftProfile)
{
    view->setWorldRotationAngle_axis(120.0, -diagonal, -diagonal, -diagonal);
    EXPECT_TRUE(isThePictureKeptAs("left-profile", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, aPastDate)
{
    view->setDisplayedDate(QDateTime(QDate(2026, 3, 5), QTime(0, 0)));
    EXPECT_TRUE(isThePictureKeptAs("past-date", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, anApprovedTreatment)
{
    view->setApprovedDate(view->currentDate());
    EXPECT_TRUE(isThePictureKeptAs("approved", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theElasticsModeIsTheOneThatTodayBegins)
{
    ASSERT_TRUE(view->mouseModeIsElastics());
    EXPECT_TRUE(isThePictureKeptAs("closed", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theBracketColourMode)
{
    view->setMouseMode(HVOGLBasicView::colorMode);
    EXPECT_TRUE(isThePictureKeptAs("bracket-mode", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theRotateMode)
{
    view->setMouseMode(HVOGLBasicView::rotateMode);
    EXPECT_TRUE(isThePictureKeptAs("rotate-mode", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theOverlayStandsStillWhileTheJawsTurn)
{
    const QImage before = view->grabImage();
    view->rotateByDegrees(40.0f);
    const QImage after = view->grabImage();
    ASSERT_NE(after, before);
    // The upper tool and the label, where the jaws never are.
    const QRect tools(425, 0, 55, 54);
    const QRect label(192, 18, 96, 28);
    EXPECT_EQ(after.copy(tools), before.copy(tools));
    EXPECT_EQ(after.copy(label), before.copy(label));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theDateLabelAtOneAndAHalfAndTwoPixelsAPoint)
{
    view->setDisplayedDate(QDateTime(QDate(2026, 3, 5), QTime(0, 0)));
    for (const auto &[name, scale] : {std::pair{"label-1.5", 1.5}, {"label-2", 2.0}}) {
        view->setSurfacelessScaleFactor(scale);
        const QImage picture = view->grabImage();
        const int height = picture.height();
        EXPECT_TRUE(isThePictureKeptAs(
            name, picture.copy(picture.width() / 3, 0, picture.width() / 3, height / 5)));
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, theTeethWithTheirNumbers)
{
    ToothLabels labels;
    for (const auto &[key, model] : treatment->document()->toothModels())
        labels[key] = key;
    view->setToothLabels(labels);
    EXPECT_TRUE(isThePictureKeptAs("tooth-numbers", view->grabImage()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Pictures, aWrongPictureFails)
{
    view->rotateByDegrees(1.0f);
    const QImage turned = view->grabImage();
    view->rotateByDegrees(-1.0f);
    const auto difference = kelo::test::differenceOfPictures(turned, view->grabImage());
    EXPECT_FALSE(difference.isSmall());
    EXPECT_FALSE(kelo::test::isTheKeptPicture("closed", turned));
    EXPECT_NO_GL_ERROR();
}

TEST(PictureDifferences, threeOf255AreToleratedAndFourAreNot)
{
    QImage one(10, 10, QImage::Format_RGB888);
    one.fill(QColor(100, 100, 100));
    QImage other(10, 10, QImage::Format_RGB888);
    other.fill(QColor(103, 97, 100));
    EXPECT_EQ(kelo::test::differenceOfPictures(one, other).differentPixelCount, 0u);
    other.fill(QColor(104, 100, 100));
    const auto difference = kelo::test::differenceOfPictures(one, other);
    EXPECT_EQ(difference.differentPixelCount, 100u);
    EXPECT_EQ(difference.largestDifference, 4);
    EXPECT_FALSE(difference.isSmall());
}

TEST(PictureDifferences, onePixelInAThousandMayDiffer)
{
    QImage one(100, 20, QImage::Format_RGB888);
    one.fill(Qt::black);
    QImage other = one;
    other.setPixelColor(3, 3, Qt::white);
    other.setPixelColor(7, 9, Qt::white);
    EXPECT_TRUE(kelo::test::differenceOfPictures(one, other).isSmall());
    other.setPixelColor(8, 9, Qt::white);
    EXPECT_FALSE(kelo::test::differenceOfPictures(one, other).isSmall());
}

} // namespace
