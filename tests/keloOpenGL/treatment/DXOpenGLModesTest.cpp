// Modes, tool buttons, the print button, modifiers and the keys that end things. Drags, wheel and
// arrow keys are in DXOpenGLInputTest.cpp, what presses meet in DXOpenGLPressesTest.cpp.

#include "tests/keloOpenGL/treatment/ModesFixture.h"

#include <QCursor>
#include <QImage>

namespace {

using namespace kelo;
using kelo::test::DXOpenGLModes;
using kelo::test::today;
using kelo::test::yesterday;

TEST_F(DXOpenGLModes, theModesAnswerForThemselves)
{
    view->setMouseMode(DXOpenGL::elasticsMode);
    EXPECT_TRUE(view->mouseModeIsElastics());
    EXPECT_FALSE(view->mouseModeIsBracketColor());
    view->setMouseMode(DXOpenGL::colorMode);
    EXPECT_FALSE(view->mouseModeIsElastics());
    EXPECT_TRUE(view->mouseModeIsBracketColor());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, everyModeHasACursorOfItsOwn)
{
    EXPECT_EQ(view->cursorForMouseMode(DXOpenGL::rotateMode).shape(), Qt::ArrowCursor);
    EXPECT_EQ(view->cursorForMouseMode(DXOpenGL::colorMode).shape(), Qt::PointingHandCursor);
    EXPECT_EQ(view->cursorForMouseMode(DXOpenGL::elasticsMode).shape(), Qt::CrossCursor);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aModeChangeAsksForARedraw)
{
    view->setNeedsDisplay(false);
    view->setMouseMode(DXOpenGL::rotateMode);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, leavingTheElasticsModeWhileStringingEndsThePlacement)
{
    beginElastic();
    view->setMouseMode(DXOpenGL::colorMode);
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, settingMode6AgainLeavesTheElasticBeingStrungAlone)
{
    beginElastic();
    view->setMouseMode(DXOpenGL::elasticsMode);
    EXPECT_NE(view->bracketSequence(), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, changingFromMode5To6DuringARepeatPeriodCancelsTheRepeat)
{
    view->setMouseMode(DXOpenGL::rotateMode);
    view->restartRepeatActionTimer();
    view->setTemporaryMouseMode(DXOpenGL::colorMode);
    view->setMouseMode(DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aRepeatPeriodHoldsTheTemporaryColourMode)
{
    view->restartRepeatActionTimer();
    view->setTemporaryMouseMode(DXOpenGL::colorMode);
    view->restorePermanentMouseMode();
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_TRUE(view->mouseModeIsTemporary());
    clock->advance(3.1);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, todayAPressOnTheElasticsToolEntersItsModeWithoutRotating)
{
    view->setMouseMode(DXOpenGL::rotateMode);
    const auto rotation = view->worldRotation();
    const Point tool = middleOf(view->elasticsToolRect());
    press(tool);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    drag({tool.x - 50.0, tool.y});
    release({tool.x - 50.0, tool.y});
    EXPECT_EQ(view->worldRotation(), rotation);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aPressOnTheBracketToolSwitchesToMode5)
{
    click(middleOf(view->bracketColorToolRect()));
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, onAPastDateAPressInTheToolsPlaceRotates)
{
    view->setDisplayedDate(yesterday);
    ASSERT_EQ(view->mouseMode(), DXOpenGL::rotateMode);
    const auto rotation = view->worldRotation();
    const Point tool = middleOf(view->elasticsToolRect());
    press(tool);
    drag({tool.x - 50.0, tool.y});
    release({tool.x - 50.0, tool.y});
    EXPECT_EQ(view->mouseMode(), DXOpenGL::rotateMode);
    EXPECT_NE(view->worldRotation(), rotation);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, inAnApprovedTreatmentAPressInTheToolsPlaceChangesNoMode)
{
    view->setApprovedDate(today);
    view->setMouseMode(DXOpenGL::rotateMode);
    click(middleOf(view->bracketColorToolRect()));
    EXPECT_EQ(view->mouseMode(), DXOpenGL::rotateMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aClickOnThePrintButtonPrintsOnce)
{
    click(middleOf(view->printButtonRect()));
    EXPECT_EQ(prints, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aPrintButtonPressThatIsDraggedOutPrintsNothing)
{
    const auto rotation = view->worldRotation();
    press(middleOf(view->printButtonRect()));
    drag({100.0, 100.0});
    release({100.0, 100.0});
    EXPECT_EQ(prints, 0);
    EXPECT_EQ(view->worldRotation(), rotation);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, draggingBackInBeforeReleasePrints)
{
    const Point button = middleOf(view->printButtonRect());
    press(button);
    drag({100.0, 100.0});
    drag(button);
    release(button);
    EXPECT_EQ(prints, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, thePressedPrintButtonIsDrawnDarker)
{
    const QImage up = view->grabImage();
    const Point button = middleOf(view->printButtonRect());
    press(button);
    const QImage down = view->grabImage();
    drag({100.0, 100.0});
    const QImage draggedOut = view->grabImage();
    release({100.0, 100.0});
    EXPECT_NE(down, up);
    EXPECT_EQ(draggedOut, up);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aLostReleasePrintsNothing)
{
    press(middleOf(view->printButtonRect()));
    view->mouseCaptureLost();
    EXPECT_EQ(prints, 0);
    click(middleOf(view->printButtonRect()));
    EXPECT_EQ(prints, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aLostReleaseEndsTheDrag)
{
    press(background);
    drag({60.0, 40.0});
    view->mouseCaptureLost();
    const auto rotation = view->worldRotation();
    drag({160.0, 90.0});
    EXPECT_EQ(view->worldRotation(), rotation);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aDoubleClickBesideThePrintButtonTogglesFullScreen)
{
    press(background, 0, 1);
    release(background, 0, 1);
    EXPECT_EQ(fullScreenToggles, 0);
    press(background, 0, 2);
    view->setNeedsDisplay(false);
    release(background, 0, 2);
    EXPECT_EQ(fullScreenToggles, 1);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aDoubleClickOnThePrintButtonPrintsTwiceAndTogglesNothing)
{
    const Point button = middleOf(view->printButtonRect());
    press(button, 0, 1);
    release(button, 0, 1);
    press(button, 0, 2);
    release(button, 0, 2);
    EXPECT_EQ(prints, 2);
    EXPECT_EQ(fullScreenToggles, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aDoubleClickWithoutADelegateDoesNothing)
{
    view->setDelegate(nullptr);
    press(background, 0, 2);
    release(background, 0, 2);
    EXPECT_EQ(fullScreenToggles, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aDoubleClickWhoseReleaseIsLostTogglesNothing)
{
    press(background, 0, 2);
    view->mouseCaptureLost();
    EXPECT_EQ(fullScreenToggles, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, controlHeldInElasticsModeIsATemporaryColourMode)
{
    Event control;
    control.type = EventType::FlagsChanged;
    control.modifierFlags = ModifierFlag::Control;
    view->sendEvent(control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_TRUE(view->mouseModeIsTemporary());
    control.modifierFlags = 0;
    view->sendEvent(control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, controlHeldWhileAnElasticIsStrungChangesNothing)
{
    beginElastic();
    Event control;
    control.type = EventType::FlagsChanged;
    control.modifierFlags = ModifierFlag::Control;
    view->sendEvent(control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NE(view->bracketSequence(), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, controlHeldInTheRotateModeChangesNothing)
{
    view->setMouseMode(DXOpenGL::rotateMode);
    Event control;
    control.type = EventType::FlagsChanged;
    control.modifierFlags = ModifierFlag::Control;
    view->sendEvent(control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::rotateMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aControlPressEntersTheColourModeUntilItsRelease)
{
    press(background, ModifierFlag::Control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_TRUE(view->mouseModeIsTemporary());
    release(background);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, aPressWithoutControlLeavesATemporaryColourMode)
{
    view->setTemporaryMouseMode(DXOpenGL::colorMode);
    press(background);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    release(background);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, escapeEndsAnElasticBeingStrung)
{
    beginElastic();
    view->setNeedsDisplay(false);
    view->sendEvent(keyEvent(u"\x1b"));
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_EQ(fullScreenToggles, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, escapeWithNoPlacementAndNotInFullScreenDoesNothing)
{
    view->setNeedsDisplay(false);
    view->sendEvent(keyEvent(u"\x1b"));
    EXPECT_EQ(fullScreenToggles, 0);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, escapeInFullScreenAsksTheDelegateToToggleIt)
{
    view->fullScreen = true;
    view->sendEvent(keyEvent(u"\x1b"));
    EXPECT_EQ(fullScreenToggles, 1);
    EXPECT_EQ(view->exits, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, escapeInFullScreenLeavesItWhereTheDelegateDoesNotToggleIt)
{
    view->fullScreen = true;
    delegate.toggleFullScreenMode = nullptr;
    view->setNeedsDisplay(false);
    view->sendEvent(keyEvent(u"\x1b"));
    EXPECT_EQ(view->exits, 1);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, escapeInFullScreenEndsAnElasticBeingStrungFirst)
{
    view->fullScreen = true;
    beginElastic();
    view->sendEvent(keyEvent(u"\x1b"));
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(fullScreenToggles, 0);
    EXPECT_EQ(view->exits, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLModes, theToolsTellWhatTheyAre)
{
    EXPECT_EQ(view->toolTipAtPoint(middleOf(view->elasticsToolRect())), "String elastics");
    EXPECT_EQ(view->toolTipAtPoint(middleOf(view->bracketColorToolRect())),
              "Place and colour brackets");
    EXPECT_EQ(view->toolTipAtPoint(middleOf(view->printButtonRect())), "Print");
    EXPECT_EQ(view->toolTipAtPoint(background), "");
    view->setDisplayedDate(yesterday);
    EXPECT_EQ(view->toolTipAtPoint(middleOf(view->elasticsToolRect())), "");
    EXPECT_EQ(view->toolTipAtPoint(middleOf(view->printButtonRect())), "Print");
    EXPECT_NO_GL_ERROR();
}

} // namespace
