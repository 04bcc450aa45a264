// Stringing an elastic against all that may come between its clicks: the other button's menu,
// removals, clicks on what takes no part.

#include "tests/viewer/support/ScriptFixture.h"

#include "platform/presenters/Alert.h"
#include "viewer/script/PickPoints.h"

#include <vector>

namespace {

using viewer::test::ScriptFixture;
using Bands = std::vector<std::vector<std::string>>;
using Sequence = std::vector<std::string>;

class Stringing : public ScriptFixture
{
protected:
    Stringing() { document().setElasticModels(kelo::DXDocumentModel::ElasticModels{}); }

    /// The menu row that begins an elastic, after a click on something of this kind and key.
    static QByteArray startOn(const QByteArray &what)
    {
        return "click " + what + "\nmenu \"Start New Elastic\" > \"1/4\\\" 2 oz\"\n";
    }
    QByteArray placeOf(std::uint64_t uniqueID)
    {
        const auto point =
            viewer::clickablePoint(*view, static_cast<std::uint32_t>(uniqueID)).value();
        return QByteArray::number(point.x) + ' ' + QByteArray::number(point.y);
    }
    /// Opens the bracket menu with the right button.
    void rightClickTooth(const char *key)
    {
        const QByteArray place = placeOf(document().toothModels().at(key)->uniqueID());
        play("press right " + place + "\nrelease " + place + '\n');
        ASSERT_NE(player->openMenu(), nullptr);
        ASSERT_EQ(player->openMenu()->title(), "BracketColorType Menu");
    }
    /// Presses on something and drags from there; whether the jaws turned with it.
    bool aDragFromThereTurnsTheJaws(std::uint64_t uniqueID)
    {
        const auto point =
            viewer::clickablePoint(*view, static_cast<std::uint32_t>(uniqueID)).value();
        const auto before = view->worldRotation();
        const auto at = [&point](const char *verb, double aside) {
            return QByteArray(verb) + ' ' + QByteArray::number(point.x + aside) + ' ' +
                   QByteArray::number(point.y) + '\n';
        };
        play(at("press left", 0.0) + at("drag", 60.0));
        const bool hasTurned = view->worldRotation() != before;
        play(at("release", 60.0));
        return hasTurned;
    }
};

// The other button's menu

TEST_F(Stringing, aMenuOnAnotherToothDoesNotMakeThatToothTheNewestMember)
{
    play(startOn("bracket 8"));
    rightClickTooth("25");
    play("dismiss\nclick bracket 25\n");
    EXPECT_EQ(view->bracketSequence(), (Sequence{"8", "25"})) << "added, not taken back";
    EXPECT_EQ(view->lastClickedToothName(), "25");
    play("click bracket 8\n");
    EXPECT_EQ(bands(), (Bands{{"8", "25"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, theNewestMemberIsTakenBackAfterAMenuOnAnotherTooth)
{
    play(startOn("bracket 8") + "click bracket 9\nclick bracket 24\n");
    ASSERT_EQ(view->bracketSequence(), (Sequence{"8", "9", "24"}));
    rightClickTooth("25");
    EXPECT_EQ(view->lastClickedToothName(), "25") << "the menu is about that tooth";
    play("dismiss\nclick bracket 24\n");
    EXPECT_EQ(view->bracketSequence(), (Sequence{"8", "9"})) << "not 24 twice in a row";
    EXPECT_EQ(view->lastClickedToothName(), "9");
    play("click bracket 8\n");
    EXPECT_EQ(bands(), (Bands{{"8", "9"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, aMenuOnTheFirstToothChangesNothingOfTheBand)
{
    play(startOn("bracket 8") + "click bracket 25\n");
    rightClickTooth("8");
    play("dismiss\n");
    EXPECT_EQ(view->bracketSequence(), (Sequence{"8", "25"}));
    play("click bracket 25\n");
    EXPECT_EQ(view->bracketSequence(), Sequence{"8"}) << "25 is the newest";
    play("click bracket 8\n");
    EXPECT_EQ(bands(), Bands());
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, anActionOnOneToothFromTheOtherButtonsMenuGivesTheElasticUp)
{
    const auto own = bracket("8").material();
    play(startOn("bracket 8") + "click bracket 25\n");
    rightClickTooth("24");
    play("menu \"Remove Lingual Button\"\n");
    EXPECT_EQ(view->mouseMode(), kelo::HVOGLBasicView::colorMode);
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(bracket("8").material(), own);
    EXPECT_EQ(bands(), Bands());
    EXPECT_NO_GL_ERROR();
}

// What was removed meanwhile

TEST_F(Stringing, membersOnTheTwoSidesOfARemovedOneAreNotPlacedTwiceInARow)
{
    const QByteArray fromInside = "rotation 150 -1 0 0\n";
    const QByteArray fromTheFront = "rotation 90 -1 0 0\n";
    play(fromInside + startOn("button 9l") + "click button 8l\n" + fromTheFront +
         "click bracket 25\n" + fromInside + "click button 8l\n" + fromTheFront);
    ASSERT_EQ(view->bracketSequence(), (Sequence{"9l", "8l", "25", "8l"}));
    rightClickTooth("24");
    play("menu \"Remove All Brackets\"\n" + fromInside + "click button 9l\n");
    EXPECT_EQ(bands(), (Bands{{"9l", "8l"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, aBandOfWhichOneMemberIsLeftIsNotPlaced)
{
    const QByteArray fromInside = "rotation 150 -1 0 0\n";
    play(fromInside + startOn("button 9l") + "rotation 90 -1 0 0\nclick bracket 25\n");
    ASSERT_EQ(view->bracketSequence(), (Sequence{"9l", "25"}));
    rightClickTooth("24");
    play("menu \"Remove All Brackets\"\n" + fromInside + "click button 9l\n");
    EXPECT_EQ(bands(), Bands());
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

// What takes no part

TEST_F(Stringing, aToothWithoutItsBracketTakesNoPartAndTurnsTheJaws)
{
    document().toggleVisibilityOfBracket("25");
    const auto tooth = document().toothModels().at("25")->uniqueID();
    EXPECT_TRUE(aDragFromThereTurnsTheJaws(tooth)) << "before an elastic is strung";
    EXPECT_EQ(player->openMenu(), nullptr);
    play("rotation 90 -1 0 0\n" + startOn("bracket 8"));
    EXPECT_TRUE(aDragFromThereTurnsTheJaws(tooth)) << "while one is";
    EXPECT_EQ(view->currentEventToothName(), "25");
    EXPECT_EQ(view->bracketSequence(), Sequence{"8"});
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, aBracketThatTakesPartDoesNotTurnTheJaws)
{
    const auto brackets = document().bracketModels();
    EXPECT_FALSE(aDragFromThereTurnsTheJaws(brackets.at("25")->uniqueID()));
    EXPECT_NE(player->openMenu(), nullptr);
    play("dismiss\n" + startOn("bracket 8"));
    EXPECT_FALSE(aDragFromThereTurnsTheJaws(brackets.at("25")->uniqueID()));
    EXPECT_EQ(view->bracketSequence(), (Sequence{"8", "25"}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, aToothThatIsOutButStillSeenTakesNoPart)
{
    document().toggleVisibilityOfTooth("25");
    play(startOn("bracket 8"));
    const auto tooth = document().toothModels().at("25");
    const auto point = viewer::clickablePoint(*view, static_cast<std::uint32_t>(tooth->uniqueID()));
    ASSERT_TRUE(point) << "a hidden tooth can be picked";
    EXPECT_TRUE(aDragFromThereTurnsTheJaws(tooth->uniqueID()));
    EXPECT_EQ(view->bracketSequence(), Sequence{"8"});
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, anElasticTakesNoPartAndTurnsTheJaws)
{
    document().placeElasticModel(std::make_shared<kelo::ElasticModel>(
        nullptr, document().availableElasticsSizeTypes().at(1), Sequence{"11", "22", "21"}));
    constexpr std::uint64_t firstElastic = 0x800000;
    play(startOn("bracket 8"));
    const auto index = view->currentEventElasticIndex();
    EXPECT_TRUE(aDragFromThereTurnsTheJaws(firstElastic));
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_EQ(view->currentEventElasticIndex(), index);
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
    EXPECT_EQ(view->bracketSequence(), Sequence{"8"});
    play("key escape\nrotation 90 -1 0 0\n");
    EXPECT_FALSE(aDragFromThereTurnsTheJaws(firstElastic)) << "with none strung its menu opens";
    EXPECT_NE(player->openMenu(), nullptr);
    EXPECT_EQ(view->currentEventElasticIndex(), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Stringing, theBackgroundTurnsTheJawsAndNamesNothing)
{
    play(startOn("bracket 8"));
    const auto before = view->worldRotation();
    play("press left 20 580\ndrag 90 580\n");
    EXPECT_NE(view->worldRotation(), before);
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
    play("release 90 580\n");
    EXPECT_EQ(view->bracketSequence(), Sequence{"8"});
    EXPECT_NO_GL_ERROR();
}

// A named configuration that cannot be placed

TEST_F(Stringing, aConfigurationThatCannotBePlacedLeavesAllAsItWas)
{
    const auto kept = kelo::AlertPresenter::setPresenter([](const kelo::Alert &) {});
    document().toggleVisibilityOfTooth("30");
    document().toggleVisibilityOfButton("3l");
    const auto buttons = document().buttonVisibilities();
    const auto brackets = document().bracketVisibilities();
    const auto callCount = treatment->callLog().calls().size();
    play("click bracket 8\nmenu \"Cross-bite, palatal right\"\n"); // 3l and 30
    kelo::AlertPresenter::setPresenter(kept);
    EXPECT_EQ(document().buttonVisibilities(), buttons);
    EXPECT_EQ(document().bracketVisibilities(), brackets);
    EXPECT_EQ(treatment->callLog().calls().size(), callCount);
    EXPECT_EQ(view->mouseMode(), kelo::HVOGLBasicView::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_EQ(bands(), Bands());
    EXPECT_NO_GL_ERROR();
}

} // namespace
