// What a view hears of the modifier keys that a script holds.

#include "tests/viewer/support/ScriptFixture.h"

namespace {

using viewer::test::ScriptFixture;

/// Writes down the events that reach it, with the modifier keys that each carries.
class ListeningView : public kelo::DXOpenGL
{
public:
    using kelo::DXOpenGL::DXOpenGL;

    std::vector<std::string> heard;

    void flagsChanged(const kelo::Event &event) override
    {
        note("flags", event);
        kelo::DXOpenGL::flagsChanged(event);
    }
    void mouseDown(const kelo::Event &event) override { note("down", event); }
    void mouseDragged(const kelo::Event &event) override { note("drag", event); }
    void mouseUp(const kelo::Event &event) override { note("up", event); }
    void scrollWheel(const kelo::Event &event) override { note("wheel", event); }
    void keyDown(const kelo::Event &event) override { note("key down", event); }
    void keyUp(const kelo::Event &event) override { note("key up", event); }

private:
    void note(std::string what, const kelo::Event &event)
    {
        using namespace kelo::ModifierFlag;
        for (const auto &[flag, name] :
             {std::pair{Control, " control"}, {Shift, " shift"}, {Option, " option"}}) {
            if (event.modifierFlags & flag) what += name;
        }
        heard.push_back(what);
    }
};

using Heard = std::vector<std::string>;

/// What a view hears of a script.
Heard heardOf(kelo::VirtualRunLoop &clock, const QByteArray &text)
{
    const auto view = kelo::makeView<ListeningView>(kelo::Rect{{0.0, 0.0}, {100.0, 80.0}});
    view->display();
    viewer::ScriptPlayer player(*view, clock);
    EXPECT_EQ(player.play(viewer::parseScript(text)).toStdString(), "");
    EXPECT_NO_GL_ERROR();
    return view->heard;
}

class ScriptModifiers : public ScriptFixture
{};

TEST_F(ScriptModifiers, theKeyOfAPressGoesDownBeforeItAndIsLetGoAfterItsRelease)
{
    EXPECT_EQ(heardOf(*clock, "click 5 5 control\n"),
              (Heard{"flags control", "down control", "up control", "flags"}));
    EXPECT_EQ(heardOf(*clock, "press left 5 5 shift\ndrag 6 6\nrelease 6 6\n"),
              (Heard{"flags shift", "down shift", "drag shift", "up shift", "flags"}));
    EXPECT_EQ(heardOf(*clock, "click 5 5\n"), (Heard{"down", "up"}));
}

TEST_F(ScriptModifiers, aDragAndAReleaseCarryTheKeysThatAreHeldAtTheirTime)
{
    EXPECT_EQ(heardOf(*clock, "modifiers control\npress left 5 5\nmodifiers\nrelease 5 5\n"),
              (Heard{"flags control", "down control", "flags", "up"}));
    EXPECT_EQ(heardOf(*clock, "press left 5 5\nmodifiers option\ndrag 6 6\nrelease 6 6\n"),
              (Heard{"down", "flags option", "drag option", "up option"}));
}

TEST_F(ScriptModifiers, theKeysOfAPressAddToThoseThatAreHeldAnyway)
{
    EXPECT_EQ(heardOf(*clock, "modifiers option\nclick 5 5 control\n"),
              (Heard{"flags option", "flags control option", "down control option",
                     "up control option", "flags option"}));
    EXPECT_EQ(heardOf(*clock, "modifiers control\nclick 5 5 control\n"),
              (Heard{"flags control", "down control", "up control"}));
}

TEST_F(ScriptModifiers, theModifiersOfAKeyGoDownBeforeItAndAreLetGoAfterIt)
{
    EXPECT_EQ(heardOf(*clock, "key x control\n"),
              (Heard{"flags control", "key down control", "key up control", "flags"}));
    EXPECT_EQ(heardOf(*clock, "press left 5 5 shift\nkey x control\n"),
              (Heard{"flags shift", "down shift", "flags control shift", "key down control shift",
                     "key up control shift", "flags shift"}));
}

TEST_F(ScriptModifiers, theWheelCarriesTheKeysOfAPressThatGoesOn)
{
    EXPECT_EQ(heardOf(*clock, "press left 5 5 shift\nscroll 0 1\n"),
              (Heard{"flags shift", "down shift", "wheel shift"}));
}

TEST_F(ScriptModifiers, theViewIsNotToldAgainOfKeysThatItKnowsToBeHeld)
{
    EXPECT_EQ(heardOf(*clock, "modifiers\nmodifiers control\nmodifiers control\n"),
              (Heard{"flags control"}));
}

TEST_F(ScriptModifiers, aReleaseAfterControlWentUpDoesNotBringTheColourModeBack)
{
    play("modifiers control\npress left 400 590\n"); // nothing is there
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    EXPECT_TRUE(view->mouseModeIsTemporary());
    play("modifiers\nrelease 400 590\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    EXPECT_EQ(view->currentModifierFlags(), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptModifiers, aClickWithControlOnNothingLeavesTheElasticsMode)
{
    play("press left 400 590 control\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    play("release 400 590\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode)
        << "Control was held for the press only";
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptModifiers, theColourModeOfAClickWithControlEndsWhenItsMenuIsDismissed)
{
    play("click tooth 8 control\n");
    ASSERT_NE(player->openMenu(), nullptr);
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode) << "the menu has the keyboard";
    play("dismiss\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    EXPECT_EQ(view->currentModifierFlags(), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptModifiers, aControlClicksColourModeLastsWhileClicksRepeat)
{
    play("click bracket 8 control\nmenu \"Remove Bracket\"\n");
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    play("click bracket 9\n"); // without Control
    EXPECT_FALSE(bracketIsShown("9"));
    play("advance 3.5\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

} // namespace
