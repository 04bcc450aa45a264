// What a clinician does with clicks and menus, on the sample patient: every press goes through the
// view's own picking and handlers.

#include "tests/viewer/support/ScriptFixture.h"

#include "keloModel/TreatmentNote.h"
#include "platform/presenters/Alert.h"
#include "viewer/script/PickPoints.h"

#include <algorithm>
#include <set>

namespace {

using kelo::TreatmentNote;
using viewer::test::ScriptFixture;
using Bands = std::vector<std::vector<std::string>>;

/// The sample without its elastics, so that bands do not cover what is clicked.
class Clinician : public ScriptFixture
{
protected:
    Clinician() { document().setElasticModels(kelo::DXDocumentModel::ElasticModels{}); }

    void hideBracket(const std::string &key) { document().toggleVisibilityOfBracket(key); }
};

// Bracket, button and tooth actions

TEST_F(Clinician, aBracketPlacedFromTheMenuIsPlacedOnTheNextTeethByAClickEach)
{
    for (const char *key : {"7", "8", "9", "10"})
        hideBracket(key);
    document().bracket_setColorWithBracketColorTypeID("11", typeIDOf("Gold"));
    play("click tool bracket\nclick tooth 8\nmenu \"Red\"\n");
    EXPECT_TRUE(bracketIsShown("8"));
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::PlaceBracket);
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    play("click tooth 7\nadvance 2\nclick tooth 9\nadvance 2\nclick tooth 10\nclick tooth 11\n");
    for (const char *key : {"7", "8", "9", "10"}) {
        EXPECT_TRUE(bracketIsShown(key)) << key;
        EXPECT_EQ(colorOf(key), typeIDOf("Red")) << key;
    }
    // A tooth that already shows a bracket is left alone.
    EXPECT_EQ(colorOf("11"), typeIDOf("Gold"));
    EXPECT_EQ(view->lastClickedToothName(), "8");
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aRepeatedColourSkipsTheMenusToothAndShowsBrackets)
{
    hideBracket("9");
    play("click tool bracket\nclick tooth 8\nmenu \"Red\"\nclick tooth 9\nclick tooth 10\n");
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::ColorBracket);
    EXPECT_TRUE(bracketIsShown("9"));
    EXPECT_EQ(colorOf("9"), typeIDOf("Red"));
    EXPECT_EQ(colorOf("10"), typeIDOf("Red"));
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Gold"));
    document().bracket_setColorWithBracketColorTypeID("10", typeIDOf("Gold"));
    play("click tooth 8\nclick tooth 10\n");
    EXPECT_EQ(colorOf("8"), typeIDOf("Gold"));
    EXPECT_EQ(colorOf("10"), typeIDOf("Red"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aRepeatedRemovalSkipsABracketHiddenForASecondaryReason)
{
    document().toggleVisibilityOfTooth("9");
    ASSERT_TRUE(bracket("9").hiddenSecondary());
    ASSERT_FALSE(bracket("9").hiddenPrimary());
    play("click tool bracket\nclick tooth 8\nmenu \"Remove Bracket\"\n");
    EXPECT_FALSE(bracketIsShown("8"));
    EXPECT_EQ(colorOf("8"), kelo::noBracketColorTypeID);
    play("click tooth 9\nclick tooth 10\n");
    EXPECT_FALSE(bracket("9").hiddenPrimary());
    EXPECT_FALSE(bracketIsShown("10"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, afterThePeriodExpiresAClickOnAToothOpensTheMenuAgain)
{
    play("click tool bracket\nclick tooth 8\nmenu \"Red\"\nadvance 3.1\n");
    EXPECT_EQ(view->lastBracketColorTypeID(), std::nullopt);
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode) << "the tool's own mode";
    EXPECT_FALSE(view->mouseModeIsTemporary());
    play("click tooth 9\n");
    EXPECT_NE(player->openMenu(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, openingTheMenuEndsTheRepeatPeriodAtOnce)
{
    play("click tool bracket\nclick tooth 8\nmenu \"Red\"\n");
    ASSERT_TRUE(view->repeatActionTimerIsRunning());
    view->setCurrentEventToothName("9");
    view->displayBracketMenuForEvent(kelo::Event{});
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, buttonsArePlacedAndRemovedOnTheNextTeethByClicks)
{
    play("click tool bracket\nclick tooth 8\nmenu \"Remove Lingual Button\"\n");
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::RemoveButton);
    play("click tooth 9\nclick tooth 9\n");
    EXPECT_TRUE(document().buttonModels().at("8l")->hiddenPrimary());
    EXPECT_TRUE(document().buttonModels().at("9l")->hiddenPrimary()) << "removed once, not toggled";
    play("advance 4\nclick tooth 8\nmenu \"Place Lingual Button\"\nclick tooth 9\n");
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::PlaceButton);
    EXPECT_FALSE(document().buttonModels().at("8l")->hiddenPrimary());
    EXPECT_FALSE(document().buttonModels().at("9l")->hiddenPrimary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, teethAreTakenOutAndPutBackByClicks)
{
    play("click tool bracket\nclick tooth 8\nmenu \"Remove Tooth\"\nclick tooth 9\n");
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::RemoveTooth);
    EXPECT_TRUE(document().toothModels().at("8")->hiddenPrimary());
    EXPECT_TRUE(document().toothModels().at("9")->hiddenPrimary());
    play("advance 4\nclick tooth 8\nmenu \"Place Tooth\"\nclick tooth 9\nclick tooth 10\n");
    EXPECT_EQ(kelo::ActionType(view->lastActionType()), kelo::ActionType::PlaceTooth);
    EXPECT_FALSE(document().toothModels().at("8")->hiddenPrimary());
    EXPECT_FALSE(document().toothModels().at("9")->hiddenPrimary());
    EXPECT_FALSE(document().toothModels().at("10")->hiddenPrimary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aClickOnNothingInTheColourModeTurnsTheJaws)
{
    const auto rotation = view->worldRotation();
    play("click tool bracket\npress left 20 580\ndrag 90 580\nrelease 90 580\n");
    EXPECT_NE(view->worldRotation(), rotation);
    EXPECT_EQ(player->openMenu(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, removeAllBracketsHidesEveryShownOneAndTakesEveryColourAway)
{
    hideBracket("9");
    document().bracket_setColorWithBracketColorTypeID("9", typeIDOf("Gold"));
    play("click tool bracket\nclick tooth 8\nmenu \"Remove All Brackets\"\n");
    for (const auto &[key, model] : document().bracketModels()) {
        EXPECT_TRUE(model->hiddenPrimary()) << key;
        EXPECT_EQ(colorOf(key), kelo::noBracketColorTypeID) << key;
    }
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, markAllBracketsRecoloursHiddenOnesTooWithoutShowingThem)
{
    hideBracket("9");
    play("click tool bracket\nclick tooth 8\nmenu \"Mark All Brackets\" > \"Teal\"\n");
    for (const auto &[key, model] : document().bracketModels())
        EXPECT_EQ(colorOf(key), typeIDOf("Teal")) << key;
    EXPECT_FALSE(bracketIsShown("9"));
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, placeAllBracketsShowsThoseThatAreNotPlaced)
{
    for (const char *key : {"7", "8", "9"})
        hideBracket(key);
    document().toggleVisibilityOfTooth("7");
    ASSERT_TRUE(bracket("7").hiddenSecondary());
    kelo::MenuItem item;
    item.representedObject = document().availableBracketColorTypes().at(typeIDOf("Red"));
    view->setNeedsDisplay(false);
    view->placeAllBracketsSelected(item);
    EXPECT_TRUE(bracketIsShown("8"));
    EXPECT_TRUE(bracketIsShown("9"));
    EXPECT_TRUE(bracket("7").hiddenPrimary()) << "its tooth is out";
    EXPECT_EQ(colorOf("8"), typeIDOf("Red"));
    EXPECT_EQ(colorOf("10"), std::nullopt);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_NO_GL_ERROR();
}

// Stringing elastics

TEST_F(Clinician, anElasticIsStrungByClicksAndClosedOnItsFirstBracket)
{
    play("click bracket 8\nmenu \"Start New Elastic\" > \"1/4\\\" 3.5 oz\"\n"
         "click bracket 25\nclick bracket 24\nclick bracket 24\n");
    EXPECT_EQ(view->bracketSequence(), (std::vector<std::string>{"8", "25"}));
    EXPECT_EQ(view->lastClickedToothName(), "25");
    play("click bracket 8\n");
    EXPECT_EQ(bands(), (Bands{{"8", "25"}}));
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    const auto &elastic = *document().elasticModels()[0];
    EXPECT_EQ(elastic.elasticsSizeType()->typeLabel, "1/4\" 3.5 oz");
    EXPECT_EQ(elastic.elasticsConfigType(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aSecondClickOnTheFirstBracketAtOnceGivesTheElasticUp)
{
    const auto material = bracket("8").material();
    play("click bracket 8\nmenu \"Start New Elastic\" > \"1/4\\\" 3.5 oz\"\n");
    EXPECT_NE(bracket("8").material(), material);
    EXPECT_EQ(bracket("8").material()->shininess(), 2.0);
    play("click bracket 8\n");
    EXPECT_EQ(bands(), Bands());
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(bracket("8").material(), material);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aClickOnAToothCountsAsOneOnItsShownBracket)
{
    play("click tooth 8\nmenu \"Start New Elastic\" > \"1/4\\\" 3.5 oz\"\n"
         "click tooth 25\nclick tooth 8\n");
    EXPECT_EQ(bands(), (Bands{{"8", "25"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, anElasticIsStrungOverLingualButtonsToo)
{
    play("mouth 50\nrotation 60 -1 0 0\n");
    play("click button 24l\nmenu \"Start New Elastic\" > \"1/4\\\" 3.5 oz\"\n");
    EXPECT_EQ(view->firstClickedToothName(), "24l");
    play("click button 26l\nclick button 24l\n");
    EXPECT_EQ(bands(), (Bands{{"24l", "26l"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aBracketPaintedWhileStringingKeepsItsNewColour)
{
    const std::string rightPressOn8 = [this] {
        const auto point = viewer::clickablePoint(*view, bracket("8").uniqueID()).value();
        const std::string place = std::to_string(point.x) + ' ' + std::to_string(point.y);
        return "press right " + place + "\nrelease " + place + '\n';
    }();
    const auto colorOfType = [this](const std::string &label) {
        const auto &types = document().availableBracketColorTypes();
        return kelo::Color(*types.at(typeIDOf(label))->bracketColor);
    };
    const QByteArray start = "click bracket 8\nmenu \"Start New Elastic\" > \"1/4\\\" 2 oz\"\n" +
                             QByteArray::fromStdString(rightPressOn8);
    // All brackets: the elastic goes on.
    play(start + "menu \"Mark All Brackets\" > \"Coral\"\n");
    ASSERT_TRUE(view->bracketSequence());
    play("click bracket 9\nclick bracket 8\n");
    EXPECT_EQ(bands(), (Bands{{"8", "9"}}));
    EXPECT_EQ(bracket("8").material()->color(), colorOfType("Coral"));
    // One bracket: the elastic is discarded.
    play(start + "menu \"Red\"\n");
    EXPECT_FALSE(view->bracketSequence());
    EXPECT_EQ(bracket("8").material()->color(), colorOfType("Red"));
    EXPECT_EQ(bracket("8").material()->shininess(), kelo::HVOGLMaterial::defaultShininess);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aBracketThatIsRemovedWhileAnElasticIsStrungOverItTakesNoPart)
{
    const std::string seenFromInside = "rotation 150 -1 0 0\n";
    const std::string start =
        seenFromInside + "click button 9l\nmenu \"Start New Elastic\" > \"1/4\\\" 2 oz\"\n";
    play(QByteArray::fromStdString(start + "click button 8l\nrotation 90 -1 0 0\n"));
    play("click bracket 25\n");
    ASSERT_EQ(view->bracketSequence(), (std::vector<std::string>{"9l", "8l", "25"}));
    const auto point = viewer::clickablePoint(*view, bracket("24").uniqueID()).value();
    const std::string place = std::to_string(point.x) + ' ' + std::to_string(point.y);
    play(QByteArray::fromStdString("press right " + place + "\nrelease " + place +
                                   "\nmenu \"Remove All Brackets\"\n" + seenFromInside));
    play("click button 9l\n");
    EXPECT_EQ(bands(), (Bands{{"9l", "8l"}}));
    EXPECT_FALSE(view->bracketSequence());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aConfigurationOverAHiddenToothAlertsAndPlacesNothing)
{
    std::vector<kelo::Alert> alerts;
    const auto kept = kelo::AlertPresenter::setPresenter(
        [&alerts](const kelo::Alert &alert) { alerts.push_back(alert); });
    document().toggleVisibilityOfTooth("30");
    hideBracket("6");
    play("click bracket 8\nmenu \"Class II right\"\n");
    kelo::AlertPresenter::setPresenter(kept);
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].messageText, "Cannot Place Named Elastic");
    EXPECT_EQ(alerts[0].informativeText,
              "The Elastic Configuration named 'Class II right' cannot be placed because 1 or more "
              "required teeth for Bracket/Button placement are missing.");
    EXPECT_EQ(alerts[0].buttonTitle, "OK");
    EXPECT_EQ(bands(), Bands());
    EXPECT_FALSE(bracketIsShown("6"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aConfigurationFirstShowsHiddenBracketsWithoutColour)
{
    hideBracket("6");
    document().bracket_setColorWithBracketColorTypeID("6", typeIDOf("Gold"));
    document().bracket_setColorWithBracketColorTypeID("30", typeIDOf("Gold"));
    play("click bracket 8\nmenu \"Class II right\"\n");
    EXPECT_TRUE(bracketIsShown("6"));
    EXPECT_EQ(colorOf("6"), kelo::noBracketColorTypeID);
    EXPECT_EQ(colorOf("30"), typeIDOf("Gold")) << "it was shown already";
    EXPECT_EQ(bands(), (Bands{{"6", "30"}}));
    EXPECT_EQ(document().elasticModels()[0]->elasticsConfigType()->typeLabel, "Class II right");
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aConfigurationShowsTheLingualButtonsThatItNeeds)
{
    document().toggleVisibilityOfButton("3l");
    play("click bracket 8\nmenu \"Cross-bite, palatal right\"\n");
    EXPECT_FALSE(document().buttonModels().at("3l")->hiddenPrimary());
    EXPECT_EQ(bands(), (Bands{{"3l", "30"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, removeAllElasticsOnAnEmptyDocumentOnlyRedraws)
{
    view->setNeedsDisplay(false);
    const auto callCount = treatment->callLog().calls().size();
    kelo::MenuItem item;
    view->removeAllElasticsSelected(item);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_EQ(treatment->callLog().calls().size(), callCount);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, anElasticIsRecolouredRemovedAndNamedFromItsMenu)
{
    play("click bracket 8\nmenu \"Triangle left\"\nclick bracket 8\nmenu \"Vertical right\"\n"
         "click elastic 0\nmenu \"1/2\\\" 6 oz\"\n");
    EXPECT_EQ(document().elasticModels()[0]->elasticsSizeType()->typeLabel, "1/2\" 6 oz");
    EXPECT_NE(document().elasticModels()[1]->elasticsSizeType()->typeLabel, "1/2\" 6 oz");
    play("click elastic 1\nmenu \"Rename \\\"Vertical right\\\" Elastic...\"\n");
    const QJsonArray naming = treatment->callLog().calls().last().toArray();
    EXPECT_EQ(naming.at(0).toString(),
              "launchElasticsConfigAssociationSheetWithElasticModel:namingAction:");
    EXPECT_EQ(naming.at(1).toInt(), 1);
    play("click elastic 0\nmenu \"Remove Elastic\"\n");
    EXPECT_EQ(bands(), (Bands{{"6", "27"}}));
    play("click elastic 0\nmenu \"Remove All Elastics\"\n");
    EXPECT_EQ(bands(), Bands());
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, allElasticsAreMarkedAtOnceBetweenTwoCallsOfTheDelegate)
{
    play("click bracket 8\nmenu \"Triangle left\"\nclick bracket 8\nmenu \"Vertical right\"\n");
    const auto callCount = treatment->callLog().calls().size();
    kelo::MenuItem item;
    item.representedObject = document().availableElasticsSizeTypes().at(24);
    view->markAllElasticsSelected(item);
    QStringList selectors;
    const QJsonArray calls = treatment->callLog().calls();
    for (auto i = callCount; i < calls.size(); ++i)
        selectors << calls.at(i).toArray().first().toString();
    EXPECT_EQ(selectors,
              (QStringList{"DXOpenGL:willUpdateDocumentModel:", "elasticModelColorDidChange:",
                           "elasticModelColorDidChange:", "DXOpenGL:didUpdateDocumentModel:"}));
    for (const auto &elastic : document().elasticModels())
        EXPECT_EQ(elastic->elasticsSizeType()->typeID, 24);
    EXPECT_NO_GL_ERROR();
}

// Menus

TEST_F(Clinician, onAToothWhoseBracketIsHiddenTheMenuPlaces)
{
    hideBracket("8");
    play("click tool bracket\nclick tooth 8\n");
    ASSERT_NE(row("Place All Brackets"), nullptr);
    EXPECT_TRUE(row("Place All Brackets")->enabled);
    EXPECT_NE(row("Place All Brackets")->submenu, nullptr);
    ASSERT_NE(row("Place Bracket"), nullptr);
    EXPECT_FALSE(row("Place Bracket")->enabled);
    EXPECT_EQ(row("Red")->actionName, "placeBracketSelected:");
    EXPECT_TRUE(row("Red")->enabled);
    EXPECT_FALSE(row("Remove Bracket")->enabled);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, onAShownBracketItsCurrentColourIsCheckedAndDisabled)
{
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Red"));
    play("click tool bracket\nclick tooth 8\n");
    EXPECT_EQ(row("Red")->state, kelo::MenuItemState::On);
    EXPECT_FALSE(row("Red")->enabled);
    EXPECT_EQ(row("Gold")->state, kelo::MenuItemState::Off);
    EXPECT_TRUE(row("Gold")->enabled);
    EXPECT_NE(row("Mark All Brackets"), nullptr);
    EXPECT_FALSE(row("Mark Bracket")->enabled);
    EXPECT_TRUE(row("Remove Bracket")->enabled);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, onAHiddenToothOnlyPlaceToothStaysEnabled)
{
    document().toggleVisibilityOfTooth("8");
    play("click tool bracket\nclick tooth 8\n");
    EXPECT_FALSE(row("Red")->enabled);
    EXPECT_FALSE(row("Remove Bracket")->enabled);
    ASSERT_NE(row("Place Lingual Button"), nullptr) << "it is hidden with its tooth";
    EXPECT_FALSE(row("Place Lingual Button")->enabled);
    EXPECT_TRUE(row("Place Tooth")->enabled);
    for (const auto &item : row("Place All Brackets")->submenu->items())
        EXPECT_FALSE(item->enabled) << item->title;
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, anUnnamedElasticIsNamedAndANamedOneRenamed)
{
    document().placeElasticModel(
        std::make_shared<kelo::ElasticModel>(nullptr, document().availableElasticsSizeTypes().at(1),
                                             std::vector<std::string>{"11", "22", "21"}));
    play("click elastic 0\n");
    ASSERT_NE(row("Name This Elastic..."), nullptr);
    EXPECT_TRUE(row("Name This Elastic...")->enabled);
    EXPECT_EQ(kelo::elasticConfigNamingAction, 0);
    play("dismiss\n");
    document().elasticModels()[0]->setElasticsConfigType(
        document().availableElasticsConfigTypes()[0]);
    play("click elastic 0\n");
    EXPECT_NE(row("Rename \"Class II right\" Elastic..."), nullptr);
    EXPECT_EQ(kelo::elasticConfigNamingAction, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, withNoSequencePlaceNamedIsDisabledWithoutSeparator)
{
    auto configuration = std::make_shared<kelo::ElasticsConfigType>();
    configuration->typeLabel = "Nowhere";
    document().setAvailableElasticsConfigTypes({configuration});
    play("click bracket 8\n");
    const auto header = row("Place Named Elastic...");
    ASSERT_NE(header, nullptr);
    EXPECT_FALSE(header->enabled);
    EXPECT_EQ(header->tag, 0);
    const auto &items = player->openMenu()->items();
    const auto at = std::find(items.begin(), items.end(), header);
    ASSERT_NE(std::next(at), items.end());
    EXPECT_FALSE((*std::next(at))->separator);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, aMenuThatClosesEndsTheTemporaryModeOfControl)
{
    play("press left 400 590 control\n"); // nothing is there
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    play("release 400 590\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode) << "the key was held for the press";
    play("modifiers control\nclick tooth 8\nmodifiers\n");
    EXPECT_NE(player->openMenu(), nullptr);
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode) << "the open menu has the keyboard";
    play("dismiss\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    play("click tooth 8 control\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::colorMode);
    play("dismiss\n");
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

// Input

TEST_F(Clinician, aScrollTo15DegreesSnapsShutAndOneTo30StaysOpen)
{
    play("scroll 0 -7.5\n");
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 15.0f);
    play("advance 0.49\n");
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 15.0f);
    play("advance 0.6\n");
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 0.0f);
    play("scroll 0 -15\nadvance 2\n");
    EXPECT_FLOAT_EQ(view->mouthOpenAngle(), 30.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(Clinician, everyObjectsPickedAreaNamesThatObjectAtSixScales)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        view->setSurfacelessScaleFactor(scale);
        std::set<std::string> clicked;
        for (const char *pose :
             {"rotation 90 -1 0 0\nmouth 0\n", "rotation 90 -1 0 0\nmouth 50\n",
              "rotation 120 -1 1 1\nmouth 40\n", "rotation 120 -1 -1 -1\nmouth 40\n",
              "rotation 20 -1 0 0\nmouth 50\n", "rotation 160 -1 0 0\nmouth -50\n"}) {
            play(pose);
            const std::vector<std::uint32_t> identifiers = view->pickIdentifiers();
            const kelo::PixelSize size = view->deviceSize();
            const auto check = [&](const kelo::DXDocumentModel::Models &models, bool areTeeth,
                                   bool areButtons, const std::string &kind) {
                for (const auto &[key, model] : models) {
                    const auto pixel = viewer::innermostPixel(identifiers, size.width, size.height,
                                                              model->uniqueID());
                    if (!pixel) continue;
                    bool isButton = !areButtons;
                    const auto name = view->bracketNameAtPoint_includeTeeth_isLingualButton(
                        {pixel->column + 0.5, pixel->row + 0.5}, areTeeth, &isButton);
                    EXPECT_EQ(name, key) << kind << " at scale " << scale;
                    EXPECT_EQ(isButton, areButtons) << kind << key;
                    clicked.insert(kind + key);
                }
            };
            check(document().toothModels(), true, false, "tooth ");
            check(document().bracketModels(), false, false, "bracket ");
            check(document().buttonModels(), false, true, "button ");
        }
        EXPECT_EQ(clicked.size(), 3u * 28u) << "at scale " << scale;
    }
    EXPECT_NO_GL_ERROR();
}

} // namespace
