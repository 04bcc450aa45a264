// Every action of the menus and every repeat of it, by scripts: what each does where its condition
// holds, and that nothing happens where it does not.

#include "tests/viewer/support/ScriptFixture.h"

#include "viewer/script/PickPoints.h"

#include <utility>

namespace {

using namespace viewer;
using kelo::TreatmentNote;

class ActionRows : public viewer::test::ScriptFixture
{
protected:
    ActionRows()
    {
        document().setElasticModels(kelo::DXDocumentModel::ElasticModels());
        play("click tool bracket");
    }

    const kelo::DXGLightweightModel &button(const char *key) const
    {
        return *document().buttonModels().at(key);
    }
    const kelo::DXGLightweightModel &tooth(const char *key) const
    {
        return *document().toothModels().at(key);
    }

    /// The delegate's calls since the last asking, one text each: "bracket:visibilityDidChange: 8".
    QStringList takeCalls()
    {
        const QJsonArray all = treatment->callLog().calls();
        QStringList calls;
        for (; callsTaken < all.size(); ++callsTaken) {
            const QJsonArray call = all[callsTaken].toArray();
            calls << call[0].toString() + (call.size() > 1 && call[1].isString()
                                               ? " " + call[1].toString()
                                               : QString());
        }
        return calls;
    }

    /// What a single action leaves behind besides its change of the document.
    void expectSingleAction(long lastActionType)
    {
        EXPECT_EQ(view->lastActionType(), lastActionType);
        EXPECT_TRUE(view->repeatActionTimerIsRunning());
        EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
        EXPECT_TRUE(view->mouseModeIsTemporary());
        EXPECT_EQ(view->lastClickedToothName(), "8");
    }

    /// Clicks tooth 9 in the repeat period and tells whether anything of the document changed.
    bool repeatChangesSomething()
    {
        takeCalls();
        const auto colors = document().bracketColorsTypeIDs();
        play("click tooth 9");
        EXPECT_EQ(player->openMenu(), nullptr) << "a repeat opens no menu";
        EXPECT_EQ(view->lastClickedToothName(), "8") << "a repeat keeps the tooth of the menu";
        EXPECT_TRUE(view->repeatActionTimerIsRunning());
        return !takeCalls().isEmpty() || document().bracketColorsTypeIDs() != colors;
    }

    qsizetype callsTaken = 0;
};

TEST_F(ActionRows, colouringMakesTheBracketVisibleInTheColour)
{
    takeCalls();
    play("click tooth 8\nmenu \"Red\"");
    EXPECT_EQ(colorOf("8"), typeIDOf("Red"));
    EXPECT_EQ(view->lastBracketColorTypeID(), typeIDOf("Red"));
    EXPECT_EQ(takeCalls(), QStringList()) << "it was visible";
    expectSingleAction(0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatedColourGoesToAnotherToothAndNotToTheSame)
{
    play("click tooth 8\nmenu \"Red\"");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_EQ(colorOf("9"), typeIDOf("Red"));
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Gold"));
    play("click tooth 8");
    EXPECT_EQ(colorOf("8"), typeIDOf("Gold"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, placingShowsTheBracketInTheColour)
{
    document().toggleVisibilityOfBracket("8");
    takeCalls();
    play("click tooth 8\nmenu \"Red\"");
    EXPECT_TRUE(bracketIsShown("8"));
    EXPECT_EQ(colorOf("8"), typeIDOf("Red"));
    EXPECT_EQ(takeCalls(), QStringList{"bracket:visibilityDidChange: 8"});
    expectSingleAction(1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatedPlacingPlacesWhatIsNotPlacedAndLeavesTheRest)
{
    document().toggleVisibilityOfBracket("8");
    play("click tooth 8\nmenu \"Red\"");
    EXPECT_FALSE(repeatChangesSomething()) << "9 has its bracket";
    document().toggleVisibilityOfBracket("9");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_TRUE(bracketIsShown("9"));
    EXPECT_EQ(colorOf("9"), typeIDOf("Red"));
    document().toggleVisibilityOfBracket("9");
    document().toggleVisibilityOfTooth("9");
    EXPECT_FALSE(repeatChangesSomething()) << "9 is out";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, removingHidesTheBracketAndThenTakesItsColour)
{
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Red"));
    takeCalls();
    play("click tooth 8\nmenu \"Remove Bracket\"");
    EXPECT_TRUE(bracket("8").hiddenPrimary());
    EXPECT_EQ(colorOf("8"), 4999);
    EXPECT_EQ(takeCalls(), QStringList{"bracket:visibilityDidChange: 8"});
    expectSingleAction(2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatedRemovalRemovesWhatIsShownAndLeavesTheRest)
{
    play("click tooth 8\nmenu \"Remove Bracket\"");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_TRUE(bracket("9").hiddenPrimary());
    EXPECT_EQ(colorOf("9"), 4999);
    EXPECT_FALSE(repeatChangesSomething()) << "9 has none any more";
    document().toggleVisibilityOfBracket("9");
    document().toggleVisibilityOfTooth("9");
    EXPECT_FALSE(repeatChangesSomething()) << "9 is out";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, placingAndRemovingAButtonToggleIt)
{
    takeCalls();
    play("click tooth 8\nmenu \"Remove Lingual Button\"");
    EXPECT_TRUE(button("8l").hiddenPrimary());
    EXPECT_EQ(takeCalls(), QStringList{"button:visibilityDidChange: 8l"});
    expectSingleAction(4);
    play("advance 4\nclick tooth 8\nmenu \"Place Lingual Button\"");
    EXPECT_FALSE(button("8l").hiddenPrimary());
    expectSingleAction(3);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatedButtonActionLooksAtTheButtonsFlags)
{
    play("click tooth 8\nmenu \"Remove Lingual Button\"");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_TRUE(button("9l").hiddenPrimary());
    EXPECT_FALSE(repeatChangesSomething()) << "it is removed already";
    document().toggleVisibilityOfButton("9l");
    document().toggleVisibilityOfTooth("9");
    EXPECT_FALSE(repeatChangesSomething()) << "9 is out";
    document().toggleVisibilityOfTooth("9");
    play("advance 4\nclick tooth 8\nmenu \"Place Lingual Button\"");
    EXPECT_FALSE(repeatChangesSomething()) << "it is placed already";
    document().toggleVisibilityOfButton("9l");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_FALSE(button("9l").hiddenPrimary());
    document().toggleVisibilityOfButton("9l");
    document().toggleVisibilityOfTooth("9");
    EXPECT_FALSE(repeatChangesSomething()) << "9 is out";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aClickOnAButtonCountsForItsTooth)
{
    play("click tooth 8\nmenu \"Remove Bracket\"\nrotation 0 -1 0 0\nhide upper-arch");
    ASSERT_TRUE(bracketIsShown("30"));
    play("click button 30l");
    EXPECT_FALSE(bracketIsShown("30"));
    EXPECT_EQ(view->currentEventToothName(), "30");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, placingAndRemovingAToothToggleIt)
{
    takeCalls();
    play("click tooth 8\nmenu \"Remove Tooth\"");
    EXPECT_TRUE(tooth("8").hiddenPrimary());
    EXPECT_EQ(takeCalls(), QStringList{"tooth:visibilityDidChange: 8"});
    expectSingleAction(6);
    play("advance 4\nclick tooth 8\nmenu \"Place Tooth\"");
    EXPECT_FALSE(tooth("8").hiddenPrimary());
    expectSingleAction(5);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatedToothActionLooksAtTheToothsFlag)
{
    play("click tooth 8\nmenu \"Remove Tooth\"");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_TRUE(tooth("9").hiddenPrimary());
    EXPECT_FALSE(repeatChangesSomething()) << "it is out already";
    play("advance 4\nclick tooth 8\nmenu \"Place Tooth\"");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_FALSE(tooth("9").hiddenPrimary());
    EXPECT_FALSE(repeatChangesSomething()) << "it is there already";
    EXPECT_NO_GL_ERROR();
}

/// After an action on all brackets: no period, no temporary mode, no last action.
#define EXPECT_NO_REPEAT_PERIOD()                                                                  \
    EXPECT_FALSE(view->repeatActionTimerIsRunning());                                              \
    EXPECT_FALSE(view->mouseModeIsTemporary());                                                    \
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::ColorBracket)

TEST_F(ActionRows, placingAllPlacesThoseThatAreNotPlacedOnTeethThatAreThere)
{
    for (const char *key : {"8", "9", "10"})
        document().toggleVisibilityOfBracket(key);
    document().toggleVisibilityOfTooth("10");
    document().bracket_setColorWithBracketColorTypeID("11", typeIDOf("Gold"));
    play("click tooth 8\nmenu \"Place All Brackets\" > \"Red\"");
    EXPECT_EQ(colorOf("8"), typeIDOf("Red"));
    EXPECT_EQ(colorOf("9"), typeIDOf("Red"));
    EXPECT_TRUE(bracketIsShown("8") && bracketIsShown("9"));
    EXPECT_TRUE(bracket("10").hiddenPrimary()) << "its tooth is out";
    EXPECT_EQ(colorOf("11"), typeIDOf("Gold")) << "placed before";
    EXPECT_NO_REPEAT_PERIOD();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, markingAllColoursHiddenOnesTooAndShowsNone)
{
    document().toggleVisibilityOfBracket("9");
    play("click tooth 8\nmenu \"Mark All Brackets\" > \"Red\"");
    for (const auto &[key, model] : document().bracketModels())
        EXPECT_EQ(colorOf(key), typeIDOf("Red")) << key;
    EXPECT_TRUE(bracket("9").hiddenPrimary());
    EXPECT_NO_REPEAT_PERIOD();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, removingAllHidesThosePlacedAndClearsEveryColour)
{
    document().toggleVisibilityOfBracket("9");
    document().toggleVisibilityOfTooth("10");
    document().bracket_setColorWithBracketColorTypeID("9", typeIDOf("Gold"));
    play("click tooth 8\nmenu \"Remove All Brackets\"");
    for (const auto &[key, model] : document().bracketModels()) {
        EXPECT_TRUE(model->hiddenPrimary()) << key;
        EXPECT_EQ(colorOf(key), 4999) << key;
    }
    EXPECT_NO_REPEAT_PERIOD();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, clearingAllTakesEveryColourAndHidesNone)
{
    document().bracket_setColorWithBracketColorTypeID("9", typeIDOf("Gold"));
    kelo::MenuItem row;
    view->clearAllBracketsSelected(row);
    for (const auto &[key, model] : document().bracketModels()) {
        EXPECT_FALSE(model->hiddenPrimary()) << key;
        EXPECT_EQ(colorOf(key), 4999) << key;
    }
    EXPECT_NO_REPEAT_PERIOD();
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, everyRepeatBeginsANewFullPeriod)
{
    play("click tooth 8\nmenu \"Red\"\nadvance 2.5\nclick tooth 9\nadvance 2.5\nclick tooth 10");
    EXPECT_EQ(colorOf("10"), typeIDOf("Red"));
    play("advance 2.9");
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    play("advance 0.2");
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(view->lastBracketColorTypeID(), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatWhoseConditionFailsBeginsANewFullPeriodToo)
{
    play("click tooth 8\nmenu \"Remove Bracket\"\nclick tooth 9\nadvance 2.5");
    EXPECT_FALSE(repeatChangesSomething()) << "9 has none any more";
    play("advance 2.9");
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    play("advance 0.2");
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aClickOnNothingInThePeriodTurnsTheJawsAndDoesNotProlongIt)
{
    play("click tooth 8\nmenu \"Red\"\nadvance 2.5");
    takeCalls();
    const auto rotation = view->worldRotation();
    play("press left 20 580\ndrag 90 580");
    EXPECT_NE(view->worldRotation(), rotation);
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
    play("release 90 580");
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_EQ(takeCalls(), QStringList());
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    play("advance 0.6");
    EXPECT_FALSE(view->repeatActionTimerIsRunning()) << "3 seconds after the action";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, theRightButtonRepeatsLikeTheLeft)
{
    play("click tooth 8\nmenu \"Red\"");
    const auto point = viewer::clickablePoint(
        *view, static_cast<std::uint32_t>(document().toothModels().at("9")->uniqueID()));
    ASSERT_TRUE(point);
    const QByteArray place = QByteArray::number(point->x) + ' ' + QByteArray::number(point->y);
    play("press right " + place + "\nrelease " + place);
    EXPECT_EQ(colorOf("9"), typeIDOf("Red"));
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatedColourShowsAToothThatIsOutWithItsBracket)
{
    document().toggleVisibilityOfBracket("9");
    document().toggleVisibilityOfTooth("9");
    play("click tooth 8\nmenu \"Red\"");
    EXPECT_TRUE(repeatChangesSomething());
    EXPECT_FALSE(tooth("9").hiddenPrimary());
    EXPECT_TRUE(bracketIsShown("9"));
    EXPECT_EQ(colorOf("9"), typeIDOf("Red"));
    EXPECT_NO_GL_ERROR();
}

// What is redrawn, and in which order things happen

TEST_F(ActionRows, everySingleActionAsksForARedraw)
{
    document().toggleVisibilityOfBracket("8");
    // Buttons and teeth by the change of the mode that every action makes.
    for (const char *title : {"Red", "Gold", "Remove Bracket", "Remove Lingual Button",
                              "Place Lingual Button", "Remove Tooth", "Place Tooth"}) {
        play("click tooth 8");
        view->setNeedsDisplay(false);
        play("menu \"" + QByteArray(title) + '"');
        EXPECT_TRUE(view->needsDisplay()) << title;
        play("advance 4");
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, everyActionOnAllAsksForARedraw)
{
    kelo::MenuItem row;
    row.representedObject = document().availableBracketColorTypes().at(typeIDOf("Red"));
    for (const auto action :
         {&kelo::DXOpenGL::placeAllBracketsSelected, &kelo::DXOpenGL::markAllBracketsSelected,
          &kelo::DXOpenGL::removeAllBracketsSelected, &kelo::DXOpenGL::clearAllBracketsSelected}) {
        view->setNeedsDisplay(false);
        (view.get()->*action)(row);
        EXPECT_TRUE(view->needsDisplay());
        EXPECT_FALSE(view->repeatActionTimerIsRunning());
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatAsksForARedrawWhetherItsConditionHoldsOrNot)
{
    const auto pressOn9 = [this] {
        const auto point = viewer::clickablePoint(
            *view, static_cast<std::uint32_t>(document().toothModels().at("9")->uniqueID()));
        const QByteArray place = QByteArray::number(point->x) + ' ' + QByteArray::number(point->y);
        view->setNeedsDisplay(false);
        view->bracketNameAtPoint_includeTeeth_isLingualButton(*point, true, nullptr);
        EXPECT_FALSE(view->needsDisplay()) << "looking alone asks for none";
        play("press left " + place);
        EXPECT_TRUE(view->needsDisplay());
        play("release " + place);
    };
    play("click tooth 8\nmenu \"Remove Bracket\"");
    pressOn9();
    ASSERT_FALSE(bracketIsShown("9"));
    takeCalls();
    pressOn9();
    EXPECT_EQ(takeCalls(), QStringList()) << "its condition failed";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionRows, aRepeatLeavesTheKindOfActionAsItWas)
{
    play("click tooth 8\nmenu \"Remove Lingual Button\"\nclick tooth 9\nclick tooth 10");
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::RemoveButton);
    play("advance 4\nclick tooth 8\nmenu \"Remove Tooth\"\nclick tooth 9\nclick tooth 9");
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::RemoveTooth);
    EXPECT_NO_GL_ERROR();
}

/// Notes the colour that a bracket has at the moment when the host hears of its visibility.
class ActionOrder : public ActionRows
{
protected:
    ActionOrder()
    {
        kelo::DXDocumentModelDelegate &host = *document().delegate();
        const auto logged = host.bracket_visibilityDidChange;
        host.bracket_visibilityDidChange = [this, logged](const std::string &key, bool visible) {
            colorsAtTheCall.push_back(colorOf(key));
            logged(key, visible);
        };
    }
    std::vector<std::optional<long>> takeColors() { return std::exchange(colorsAtTheCall, {}); }

    using Colors = std::vector<std::optional<long>>;
    Colors colorsAtTheCall;
};

TEST_F(ActionOrder, aPlacedBracketIsShownAndThenColoured)
{
    document().toggleVisibilityOfBracket("8");
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Gold"));
    takeColors();
    play("click tooth 8\nmenu \"Red\"");
    EXPECT_EQ(takeColors(), Colors{typeIDOf("Gold")});
    EXPECT_EQ(colorOf("8"), typeIDOf("Red"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionOrder, aRemovedBracketIsHiddenAndThenLosesItsColour)
{
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Gold"));
    play("click tooth 8\nmenu \"Remove Bracket\"");
    EXPECT_EQ(takeColors(), Colors{typeIDOf("Gold")});
    EXPECT_EQ(colorOf("8"), 4999);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionOrder, aRepeatedPlacingColoursAndThenShows)
{
    document().toggleVisibilityOfBracket("8");
    document().toggleVisibilityOfBracket("9");
    document().bracket_setColorWithBracketColorTypeID("9", typeIDOf("Gold"));
    play("click tooth 8\nmenu \"Red\"");
    takeColors();
    play("click tooth 9");
    EXPECT_EQ(takeColors(), Colors{typeIDOf("Red")});
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionOrder, aRepeatedRemovalTakesTheColourAndThenHides)
{
    document().bracket_setColorWithBracketColorTypeID("9", typeIDOf("Gold"));
    play("click tooth 8\nmenu \"Remove Bracket\"");
    takeColors();
    play("click tooth 9");
    EXPECT_EQ(takeColors(), Colors{4999});
    EXPECT_NO_GL_ERROR();
}

TEST_F(ActionOrder, removingAllHidesEveryOneBeforeTheFirstLosesItsColour)
{
    for (const auto &[key, model] : document().bracketModels())
        document().bracket_setColorWithBracketColorTypeID(key, typeIDOf("Gold"));
    play("click tooth 8\nmenu \"Remove All Brackets\"");
    EXPECT_EQ(takeColors(), Colors(document().bracketModels().size(), typeIDOf("Gold")));
    EXPECT_NO_GL_ERROR();
}

} // namespace
