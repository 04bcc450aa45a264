#include "keloOpenGL/treatment/DXOpenGL.h"

#include "keloOpenGL/view/SimpleTexture.h"
#include "keloOpenGL/view/StringTexture.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>
#include <QLocale>

#include <limits>

namespace {

using namespace kelo;

const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
const QDateTime yesterday(QDate(2026, 11, 19), QTime(0, 0));

/// Counts the changes of the mode, which making a label goes with.
class ViewUnderTest : public DXOpenGL
{
public:
    using DXOpenGL::_lightRotation;
    using DXOpenGL::DXOpenGL;
    void setMouseMode(long mode) override
    {
        ++modeChanges;
        DXOpenGL::setMouseMode(mode);
    }
    int modeChanges = 0;
};

class DXOpenGLState : public kelo::test::ViewFixture
{
protected:
    std::shared_ptr<ViewUnderTest> view = makeView<ViewUnderTest>(Rect{{0.0, 0.0}, {200.0, 150.0}});
};

TEST_F(DXOpenGLState, aNewViewHasWhiteLightTurnedByTwentyDegrees)
{
    EXPECT_EQ(view->_lightRotation, (HVOGLBasicView::Rotation{20.0f, 1.0f, 1.0f, 1.0f}));
    // The colours are the initialiser's until the view is awake, which restores the defaults.
    const DXOpenGL bare(Rect{{0.0, 0.0}, {200.0, 150.0}});
    EXPECT_EQ(bare.ambientColor(), Color::whiteColor());
    EXPECT_EQ(bare.diffuseColor(), Color::whiteColor());
    EXPECT_EQ(bare.specularColor(), Color::whiteColor());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aNewViewHasNoNamesNoDatesAndNoTimers)
{
    EXPECT_EQ(view->delegate(), nullptr);
    EXPECT_FALSE(view->currentDate().isValid());
    EXPECT_FALSE(view->approvedDate().isValid());
    EXPECT_FALSE(view->displayedDate().isValid());
    EXPECT_FALSE(view->displayedDateIsToday());
    EXPECT_EQ(view->dateStringTexture(), nullptr);
    EXPECT_EQ(view->firstClickedToothName(), std::nullopt);
    EXPECT_EQ(view->lastClickedToothName(), std::nullopt);
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
    EXPECT_EQ(view->currentEventElasticIndex(), 0u);
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(view->lastClickedElasticID(), 0u);
    EXPECT_EQ(view->lastBracketColorTypeID(), std::nullopt);
    EXPECT_EQ(view->lastElasticsSizeTypeID(), std::nullopt);
    EXPECT_EQ(view->lastActionType(), 0);
    EXPECT_EQ(view->repeatActionTimerInterval(), 0.0);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, everyNewViewResetsTheNamingAction)
{
    elasticConfigNamingAction = 1;
    const DXOpenGL another(Rect{{0.0, 0.0}, {10.0, 10.0}});
    EXPECT_EQ(elasticConfigNamingAction, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, messagesPersistForTenSecondsUntilAHostSaysOtherwise)
{
    EXPECT_EQ(gMsgPresistance, 10.0);
}

TEST_F(DXOpenGLState, theNotFoundIndexIsTheLargestSignedNumber)
{
    EXPECT_EQ(notFound, static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()));
}

TEST_F(DXOpenGLState, aNewViewHasThePicturesOfItsFiveTools)
{
    EXPECT_NE(view->bracketToolTexture(), nullptr);
    EXPECT_NE(view->bracketToolSelectedTexture(), nullptr);
    EXPECT_NE(view->elasticsToolTexture(), nullptr);
    EXPECT_NE(view->elasticsToolSelectedTexture(), nullptr);
    EXPECT_NE(view->printButtonTexture(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aDelegateIsAReferenceThatCanBeTakenAway)
{
    DXOpenGLDelegate delegate;
    view->setDelegate(&delegate);
    EXPECT_EQ(view->delegate(), &delegate);
    view->setDelegate(nullptr);
    EXPECT_EQ(view->delegate(), nullptr);
}

TEST_F(DXOpenGLState, namesAndDatesAreKeptAsTheyAreSet)
{
    view->setFirstClickedToothName("6");
    view->setLastClickedToothName("30");
    view->setCurrentEventToothName("8l");
    view->setCurrentDate(today);
    view->setApprovedDate(yesterday);
    EXPECT_EQ(view->firstClickedToothName(), "6");
    EXPECT_EQ(view->lastClickedToothName(), "30");
    EXPECT_EQ(view->currentEventToothName(), "8l");
    EXPECT_EQ(view->currentDate(), today);
    EXPECT_EQ(view->approvedDate(), yesterday);
    view->setCurrentEventToothName(std::nullopt);
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
}

TEST_F(DXOpenGLState, todaysDateWithNoApprovalDateSwitchesTheViewIntoElasticsMode)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_EQ(view->mouseMode(), 6);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, anyOtherDateSwitchesTheViewToTheRotateMode)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    ASSERT_EQ(view->mouseMode(), 6);
    view->setDisplayedDate(yesterday);
    EXPECT_FALSE(view->displayedDateIsToday());
    EXPECT_EQ(view->mouseMode(), 2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, anApprovedTreatmentSwitchesTheViewToTheRotateModeOnItsOwnDay)
{
    view->setMouseMode(5);
    view->setCurrentDate(today);
    view->setApprovedDate(today);
    view->setDisplayedDate(today);
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_EQ(view->mouseMode(), 2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, anotherMomentOfTheSameDayIsNotToday)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today.addSecs(1));
    EXPECT_FALSE(view->displayedDateIsToday());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, theSameInstantInAnotherTimeZoneIsToday)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today.toUTC());
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, settingTheSameDisplayedDateTwiceRebuildsNothingAndLeavesTheMouseModeAlone)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    view->setMouseMode(5);
    view->modeChanges = 0;
    const auto label = view->dateStringTexture();
    view->setNeedsDisplay(false);
    view->setDisplayedDate(today);
    EXPECT_EQ(view->dateStringTexture(), label);
    EXPECT_EQ(view->modeChanges, 0);
    EXPECT_EQ(view->mouseMode(), 5);
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, theLabelSaysTodayOrTheDateInTheLocalesShortForm)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    ASSERT_NE(view->dateStringTexture(), nullptr);
    EXPECT_EQ(view->dateStringTexture()->text(), "Today");
    view->setNeedsDisplay(false);
    view->setDisplayedDate(yesterday);
    EXPECT_EQ(view->dateStringTexture()->text(),
              QLocale().toString(QDate(2026, 11, 19), QLocale::ShortFormat).toStdString());
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aNegativeRepeatIntervalYieldsARepeatPeriodOfThreeSeconds)
{
    view->setRepeatActionTimerInterval(-0.5);
    EXPECT_EQ(view->repeatActionTimerInterval(), 3.0);
    view->restartRepeatActionTimer();
    loop->advance(2.9);
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    loop->advance(0.2);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
}

TEST_F(DXOpenGLState, aRepeatIntervalOfZeroExpiresOnTheNextPassOfTheRunLoop)
{
    view->restartRepeatActionTimer();
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    loop->advance(0.0);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
}

TEST_F(DXOpenGLState, restartingTheRepeatTimerBeginsAFullPeriod)
{
    view->setRepeatActionTimerInterval(2.0);
    view->restartRepeatActionTimer();
    loop->advance(1.5);
    view->restartRepeatActionTimer();
    loop->advance(1.5);
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    loop->advance(0.6);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
}

TEST_F(DXOpenGLState, theEndOfTheRepeatPeriodRestoresThePermanentMode)
{
    view->setMouseMode(6);
    view->setRepeatActionTimerInterval(1.0);
    view->restartRepeatActionTimer();
    view->setTemporaryMouseMode(5);
    loop->advance(1.1);
    EXPECT_EQ(view->mouseMode(), 6);
    EXPECT_FALSE(view->mouseModeIsTemporary());
}

TEST_F(DXOpenGLState, aViewThatEndsInARepeatPeriodTakesItsTimerAlong)
{
    view->setRepeatActionTimerInterval(1.0);
    view->restartRepeatActionTimer();
    view.reset();
    loop->advance(2.0); // a timer left behind would call the view that is gone
}

TEST_F(DXOpenGLState, aLostContextBringsTheLabelAndTheToolsBack)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    const QImage before = view->grabImage();
    view->loseContext();
    EXPECT_EQ(view->grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

} // namespace
