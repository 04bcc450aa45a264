#include "tests/viewer/support/ScriptFixture.h"

#include "tests/support/ShoutingTranslator.h"
#include "viewer/script/ScriptRun.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

namespace {

using viewer::test::ScriptFixture;

class ScriptPlayerTest : public ScriptFixture
{};

TEST_F(ScriptPlayerTest, aDragTurnsTheJawsAsTheMouseDoes)
{
    play("date 2026-01-01\n"); // the rotate mode
    const auto rotation = view->worldRotation();
    play("press left 400 40\ndrag 460 40\nrelease 460 40\n");
    EXPECT_NE(view->worldRotation(), rotation);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, theWheelOpensTheMouthAndAdvancingShutsIt)
{
    play("scroll 0 -5\n");
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 10.0f);
    play("advance 0.6\nadvance 0.3\n");
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, aHeldModifierCountsForEveryEventUntilItIsLetGo)
{
    play("modifiers control\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    EXPECT_EQ(view->currentModifierFlags(), kelo::ModifierFlag::Control);
    play("modifiers\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, theViewLearnsOfModifierKeysWhenAnOpenMenuHasClosed)
{
    play("click bracket 8\nmodifiers control\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    play("menu \"Start New Elastic\" > \"1/8\\\" 2 oz\"\n");
    EXPECT_EQ(view->currentModifierFlags(), kelo::ModifierFlag::Control);
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode)
        << "Control does not leave an elastic that is being strung";
    play("modifiers\nkey escape\nclick bracket 8\nmodifiers control\ndismiss\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, aPressWhileAMenuIsOpenOnlyClosesIt)
{
    play("click bracket 8\n");
    ASSERT_NE(player->openMenu(), nullptr);
    const auto rotation = view->worldRotation();
    play("press left 400 40\ndrag 460 40\nrelease 460 40\n");
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_EQ(view->worldRotation(), rotation);
    play("press left 400 40\ndrag 460 40\nrelease 460 40\n");
    EXPECT_NE(view->worldRotation(), rotation);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, escapeClosesAnOpenMenuAndOtherKeysDoNothing)
{
    play("click bracket 8\nkey 0\nscroll 0 4\n");
    ASSERT_NE(player->openMenu(), nullptr);
    EXPECT_EQ(view->mouthOpenAngle(), 0.0f);
    play("key escape\n");
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, theMenuKeyOpensTheMenuUnderThePointer)
{
    play("click bracket 8\ndismiss\nkey menu\n");
    ASSERT_NE(player->openMenu(), nullptr);
    EXPECT_EQ(player->openMenu()->title(), "ElasticsSizeType Menu");
    EXPECT_EQ(view->currentEventToothName(), "8");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, toolsAreClickedAtTheirMiddle)
{
    play("click tool bracket\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    play("click tool elastics\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    play("click tool print\n");
    EXPECT_EQ(treatment->callLog().calls().last().toArray().first().toString(),
              "printImagesLeft:front:right:forDate:elasticsLeft:front:right:");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, theViewCanBeResizedBetweenClicks)
{
    play("resize 500 700\nclick tool bracket\n");
    EXPECT_EQ(view->bounds().size, (kelo::Size{500.0, 700.0}));
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, mouthAndRotationAreSetAtOnce)
{
    play("mouth 20\nrotation 45 0 0 1\n");
    EXPECT_EQ(view->mouthOpenAngle(), 20.0f);
    EXPECT_EQ(view->worldRotation(), (kelo::HVOGLBasicView::Rotation{45.0f, 0.0f, 0.0f, 1.0f}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, waitingLetsRealTimePass)
{
    QElapsedTimer timer;
    timer.start();
    play("mouth 30\nkey 0\nwait 0.05\n");
    EXPECT_GE(timer.elapsed(), 45);
    EXPECT_LT(view->mouthOpenAngle(), 30.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, everyCommandThatFailsSaysWhyAndNamesItsLine)
{
    EXPECT_EQ(failureOf("\ndrag 1 2\n"), "2: no button is held");
    EXPECT_EQ(failureOf("release 1 2\n"), "1: no button is held");
    EXPECT_EQ(failureOf("dismiss\n"), "1: no menu is open");
    EXPECT_EQ(failureOf("menu \"Place Tooth\"\n"), "1: no menu is open");
    EXPECT_EQ(failureOf("click tooth 1\n"), "1: there is no tooth 1");
    EXPECT_EQ(failureOf("click button 8\n"), "1: there is no button 8");
    EXPECT_EQ(failureOf("click elastic 99\n"), "1: there is no elastic 99");
    EXPECT_EQ(failureOf("click bracket 18l\n"), "1: there is no bracket 18l");
    EXPECT_EQ(failureOf("click bracket 8\nmenu \"Nothing\"\n"), "2: the menu has no row 'Nothing'");
    EXPECT_EQ(failureOf("menu \"Start New Elastic\" > \"Nothing\"\n"),
              "1: the menu has no row 'Nothing'");
    EXPECT_EQ(failureOf("menu \"Remove Elastic\"\n"), "1: the row 'Remove Elastic' is disabled");
    EXPECT_EQ(failureOf("menu \"Remove All Elastics\" > \"x\"\n"),
              "1: 'Remove All Elastics' has no submenu");
    EXPECT_EQ(failureOf("dismiss\npress left 5 5\npress left 6 6\n"),
              "3: a button is held already");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, rowsAreChosenByTitleInEveryLanguageAndByShownTitleToo)
{
    const kelo::test::ShoutingTranslator language("DXOpenGL");
    for (const char *title : {"Start New Elastic", "START NEW ELASTIC"}) {
        play("click bracket 8\n");
        const auto start = row("Start New Elastic");
        ASSERT_NE(start, nullptr);
        EXPECT_EQ(start->shownTitle, "START NEW ELASTIC");
        play(QByteArray("menu \"") + title + "\" > \"1/8\\\" 2 oz\"\n");
        EXPECT_EQ(view->bracketSequence(), std::vector<std::string>{"8"}) << title;
        play("key escape\n");
    }
    EXPECT_EQ(failureOf("click bracket 8\nmenu \"Start new elastic\"\n"),
              "2: the menu has no row 'Start new elastic'");
    play("dismiss\n");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, aRowsTitleGoesBeforeWhatAnotherRowShows)
{
    const auto menu = std::make_shared<kelo::Menu>();
    std::string chosen;
    const auto add = [&](const char *title, const char *shownTitle) {
        menu->addItemWithTitle_actionName_action(
                title, "choose:", [&chosen](kelo::MenuItem &item) { chosen = item.title; })
            ->shownTitle = shownTitle;
    };
    add("First", "Second");
    add("Second", "Third");
    menu->autoenablesItems = false;
    const auto choose = [&](const QByteArray &title) {
        kelo::ContextMenuPresenter::popUpContextMenu(menu, kelo::Event(), *view);
        play("menu \"" + title + "\"\n");
        return chosen;
    };
    EXPECT_EQ(choose("Second"), "Second");
    EXPECT_EQ(choose("Third"), "Second");
    EXPECT_EQ(choose("First"), "First");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, aDisabledRowOfASubmenuAndOneOfADisabledRowCannotBeChosen)
{
    document().toggleVisibilityOfTooth("8"); // its bracket cannot be placed
    view->setCurrentEventToothName("8");
    view->displayBracketMenuForEvent({});
    EXPECT_EQ(failureOf("menu \"Place All Brackets\" > \"Red\"\n"), "1: the row 'Red' is disabled");
    const auto placeAll = row("Place All Brackets");
    ASSERT_TRUE(placeAll);
    placeAll->enabled = false;
    EXPECT_EQ(failureOf("menu \"Place All Brackets\" > \"Red\"\n"),
              "1: the row 'Place All Brackets' is disabled");
    view->display();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptPlayerTest, whatIsBehindOtherThingsCannotBeClicked)
{
    // From the front the second molars' lingual buttons are behind the arches.
    EXPECT_EQ(failureOf("click button 18l\n"), "1: nothing of button 18l can be clicked here");
    play("hide brackets\nhide elastics\n");
    EXPECT_EQ(failureOf("click bracket 8\n"), "1: nothing of bracket 8 can be clicked here");
    EXPECT_EQ(failureOf("click elastic 0\n"), "1: nothing of elastic 0 can be clicked here");
    play("hide upper-arch\n");
    EXPECT_EQ(failureOf("click tooth 8\n"), "1: nothing of tooth 8 can be clicked here");
    EXPECT_NO_GL_ERROR();
}

TEST(ScriptRun, aScriptThatCannotBeReadIsNamed)
{
    try {
        viewer::readScript("/nowhere/at/all");
        FAIL();
    } catch (const viewer::BadScript &problem) {
        EXPECT_EQ(std::string(problem.what()),
                  "/nowhere/at/all: could not be read: No such file or directory");
    }
}

TEST(ScriptRun, wrongLinesAreNamedWithTheirFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.script");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("jump\n\nmouth\n");
    file.close();
    try {
        viewer::readScript(path);
        FAIL();
    } catch (const viewer::BadScript &problem) {
        EXPECT_EQ(std::string(problem.what()), path.toStdString() + ":1: 'jump' is no command\n" +
                                                   path.toStdString() + ":3: DEGREES is missing");
    }
}

} // namespace
