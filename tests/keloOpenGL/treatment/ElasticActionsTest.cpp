// What the elastic menu does to placed elastics, named configurations, and whom it asks for names.

#include "tests/keloOpenGL/treatment/ElasticFixture.h"

#include "keloOpenGL/menus/ToothNaming.h"
#include "platform/presenters/Alert.h"

namespace {

using namespace kelo;
using namespace kelo::test;

using Log = std::vector<std::string>;
using Bands = std::vector<std::vector<std::string>>;

class ElasticActions : public ElasticFixture
{
protected:
    ElasticActions()
    {
        document->setDelegate(&documentDelegate);
        documentDelegate.bracket_visibilityDidChange = [this](const std::string &key, bool) {
            view->log.push_back("bracket " + key);
        };
        documentDelegate.button_visibilityDidChange = [this](const std::string &key, bool) {
            view->log.push_back("button " + key);
        };
        documentDelegate.elasticModelPlaced = [this](const auto &) {
            view->log.push_back("placed");
        };
        documentDelegate.elasticModelRemoved = [this](const auto &elastic) {
            view->log.push_back("removed " + elastic->bracketSequence().front());
        };
        documentDelegate.elasticModelColorDidChange = [this](const auto &elastic) {
            view->log.push_back("size of " + elastic->bracketSequence().front());
        };
        keptAlerts = AlertPresenter::setPresenter([this](const Alert &alert) {
            view->log.push_back("alert " + alert.messageText);
            detailText = alert.detailText;
        });
    }
    ~ElasticActions() override { AlertPresenter::setPresenter(keptAlerts); }

    void hearOfNaming()
    {
        delegate.launchElasticsConfigAssociationSheetWithElasticModel_namingAction =
            [this](const std::shared_ptr<ElasticModel> &elastic, int action) {
                view->log.push_back("name " + elastic->bracketSequence().front() + " by " +
                                    std::to_string(action));
            };
        view->setDelegate(&delegate);
    }
    Log takeLog() { return std::exchange(view->log, {}); }
    Bands bands() const
    {
        Bands sequences;
        for (const auto &elastic : document->elasticModels())
            sequences.push_back(elastic->bracketSequence());
        return sequences;
    }
    void name()
    {
        MenuItem row;
        view->nameSelectedElasticsModel(row);
    }
    void placeConfiguration(const std::string &sequence)
    {
        auto configuration = std::make_shared<ElasticsConfigType>();
        configuration->typeLabel = "Some";
        configuration->bracketSequence = sequence;
        MenuItem row = rowFor(configuration);
        view->placeSelectedElasticsConfigType(row);
    }

    MenuItem nothing;
    std::string detailText; ///< of the last alert
    DXOpenGLDelegate delegate;

private:
    DXDocumentModelDelegate documentDelegate;
    AlertPresenter::Presenter keptAlerts;
};

// Naming

TEST_F(ElasticActions, namingLeavesFullScreenAndThenAsksTheDelegate)
{
    placeElastic({"6", "27"});
    placeElastic({"11", "22"});
    hearOfNaming();
    clickElastic(1);
    ASSERT_EQ(view->currentEventElasticIndex(), 1u);
    view->isFullScreen = true;
    takeLog();
    elasticConfigNamingAction = 0;
    name();
    EXPECT_EQ(takeLog(), (Log{"exit full screen", "name 11 by 0"}));
    elasticConfigNamingAction = 1;
    name();
    EXPECT_EQ(takeLog(), Log{"name 11 by 1"}) << "not in full screen any more";
    elasticConfigNamingAction = 0;
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, withoutElasticsNothingIsNamedAndFullScreenStays)
{
    hearOfNaming();
    view->isFullScreen = true;
    name();
    EXPECT_EQ(takeLog(), Log());
    EXPECT_TRUE(view->isFullScreen);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, withNoElasticUnderThePointerNoneIsNamed)
{
    placeElastic({"11", "22"});
    hearOfNaming();
    clickBracket("8");
    ASSERT_EQ(view->currentEventElasticIndex(), noElasticIndex);
    view->isFullScreen = true;
    takeLog();
    name();
    EXPECT_EQ(takeLog(), Log{"exit full screen"});
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, anElasticThatIsGoneMeanwhileIsNotNamed)
{
    placeElastic({"6", "27"});
    const auto last = placeElastic({"11", "22"});
    hearOfNaming();
    clickElastic(1);
    document->removeElasticModel(last);
    takeLog();
    name();
    EXPECT_EQ(takeLog(), Log());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, aDelegateThatNamesNothingIsNotAskedButFullScreenIsLeft)
{
    placeElastic({"11", "22"});
    clickElastic(0);
    takeLog();
    for (DXOpenGLDelegate *host : {static_cast<DXOpenGLDelegate *>(nullptr), &delegate}) {
        view->setDelegate(host);
        view->isFullScreen = true;
        name();
        EXPECT_EQ(takeLog(), Log{"exit full screen"});
    }
    EXPECT_NO_GL_ERROR();
}

// Named configurations

TEST_F(ElasticActions, aRowThatStandsForNoConfigurationPlacesNothing)
{
    bracket("6").setHiddenPrimary(true);
    for (const std::any &represented :
         {std::any(), std::any(sizeType(1)), std::any(std::string("6,27")),
          std::any(std::shared_ptr<ElasticsConfigType>())}) {
        MenuItem row = rowFor(represented);
        view->placeSelectedElasticsConfigType(row);
    }
    EXPECT_EQ(bands(), Bands());
    EXPECT_EQ(takeLog(), Log());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, aConfigurationShowsWhatItNeedsAndThenIsPlaced)
{
    bracket("6").setHiddenPrimary(true);
    button("27l").setHiddenPrimary(true);
    button("26l").setHiddenSecondary(true);
    placeConfiguration("6,5l,27l,27,26l");
    // The button that its tooth alone hid is toggled all the same.
    EXPECT_EQ(takeLog(), (Log{"bracket 6", "button 27l", "button 26l", "placed"}));
    EXPECT_FALSE(bracket("6").hiddenPrimary());
    EXPECT_FALSE(button("5l").hiddenPrimary()) << "a button that is shown is left alone";
    EXPECT_FALSE(button("27l").hiddenPrimary());
    EXPECT_TRUE(button("26l").hiddenPrimary());
    EXPECT_EQ(document->bracketColorsTypeIDs().at("6"), 4999);
    EXPECT_FALSE(document->bracketColorsTypeIDs().contains("27"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, aButtonHiddenForBothReasonsIsToggledOnce)
{
    button("27l").setHiddenPrimary(true);
    button("27l").setHiddenSecondary(true);
    placeConfiguration("27l,6");
    EXPECT_EQ(takeLog(), (Log{"button 27l", "placed"}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, aMembersHiddenToothStopsAConfigurationBeforeItShows)
{
    bracket("6").setHiddenPrimary(true);
    auto &tooth = *document->toothModels().at("27");
    for (const char *sequence : {"6,27", "6,27l", "27l,6", "6,5l,27"}) {
        tooth.setHiddenPrimary(true);
        placeConfiguration(sequence);
        EXPECT_EQ(takeLog(), Log{"alert Cannot Place Named Elastic"}) << sequence;
        tooth.setHiddenPrimary(false);
        tooth.setHiddenSecondary(true);
        placeConfiguration(sequence);
        EXPECT_EQ(takeLog(), Log{"alert Cannot Place Named Elastic"}) << sequence;
        tooth.setHiddenSecondary(false);
    }
    EXPECT_TRUE(bracket("6").hiddenPrimary());
    EXPECT_EQ(bands(), Bands());
    placeConfiguration("6,27");
    EXPECT_EQ(takeLog(), (Log{"bracket 6", "placed"}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, theAlertNamesEveryMissingToothOnceAsTheHostNamesTeeth)
{
    for (const char *key : {"5", "27"})
        document->toothModels().at(key)->setHiddenPrimary(true);
    placeConfiguration("6,27,5l,27l");
    EXPECT_EQ(detailText, "Missing: 27, 5");
    const auto kept = ToothNaming::setNaming([](const std::string &key) { return "#" + key; });
    placeConfiguration("6,27,5l,27l");
    EXPECT_EQ(detailText, "Missing: #27, #5");
    ToothNaming::setNaming(kept);
    EXPECT_EQ(bands(), Bands());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, aBandOverTheSameMembersIsPlacedAgainOnlyIfTheHostSaysYes)
{
    bool answer = false;
    delegate.mayPlaceAgain = [&](const std::shared_ptr<ElasticsConfigType> &configuration) {
        view->log.push_back("asked for " + configuration->bracketSequence);
        return answer;
    };
    view->setDelegate(&delegate);
    placeConfiguration("6,27");
    EXPECT_EQ(takeLog(), Log{"placed"}) << "there was none before";
    bracket("6").setHiddenPrimary(true);
    placeConfiguration("6,27");
    EXPECT_EQ(takeLog(), Log{"asked for 6,27"});
    EXPECT_TRUE(bracket("6").hiddenPrimary()) << "nothing is changed without a yes";
    placeConfiguration("27,6");
    EXPECT_EQ(takeLog(), (Log{"bracket 6", "placed"})) << "that band is another one";
    answer = true;
    placeConfiguration("6,27");
    EXPECT_EQ(takeLog(), (Log{"asked for 6,27", "placed"}));
    EXPECT_EQ(bands(), (Bands{{"6", "27"}, {"27", "6"}, {"6", "27"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, withoutAHostsAnswerABandIsPlacedAgain)
{
    placeConfiguration("6,27");
    placeConfiguration("6,27");
    view->setDelegate(&delegate);
    placeConfiguration("6,27");
    EXPECT_EQ(bands().size(), 3u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, theHostMayTakeItsDelegateAwayWhileItIsAsked)
{
    auto own = std::make_unique<DXOpenGLDelegate>();
    own->mayPlaceAgain = [&](const auto &) {
        view->setDelegate(nullptr);
        own.reset();
        return true;
    };
    view->setDelegate(own.get());
    placeConfiguration("6,27");
    placeConfiguration("6,27");
    EXPECT_EQ(bands().size(), 2u);
    EXPECT_NO_GL_ERROR();
}

// Placed elastics

TEST_F(ElasticActions, theElasticOfTheMenuIsRecolouredAndRemoved)
{
    const auto first = placeElastic({"6", "27"});
    const auto second = placeElastic({"11", "22"});
    clickElastic(1);
    EXPECT_EQ(view->lastClickedElasticID(), second->uniqueID());
    takeLog();
    view->setNeedsDisplay(false);
    MenuItem row = rowFor(document->availableElasticsSizeTypes().at(2));
    view->updateElasticColorMenuItemSelected(row);
    EXPECT_EQ(takeLog(), Log{"size of 11"});
    EXPECT_EQ(first->elasticsSizeType()->typeID, 1);
    EXPECT_EQ(second->elasticsSizeType()->typeID, 2);
    EXPECT_TRUE(view->needsDisplay());
    view->setNeedsDisplay(false);
    view->removeElasticSelected(nothing);
    EXPECT_EQ(takeLog(), Log{"removed 11"});
    EXPECT_EQ(bands(), (Bands{{"6", "27"}}));
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, anElasticThatIsGoneMeanwhileIsNeitherRecolouredNorRemoved)
{
    placeElastic({"6", "27"});
    const auto gone = placeElastic({"11", "22"});
    clickElastic(1);
    document->removeElasticModel(gone);
    takeLog();
    view->setNeedsDisplay(false);
    MenuItem row = rowFor(document->availableElasticsSizeTypes().at(2));
    view->updateElasticColorMenuItemSelected(row);
    EXPECT_TRUE(view->needsDisplay()) << "it is redrawn all the same";
    view->setNeedsDisplay(false);
    view->removeElasticSelected(nothing);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_EQ(takeLog(), Log());
    EXPECT_EQ(bands(), (Bands{{"6", "27"}}));
    EXPECT_EQ(document->elasticModels()[0]->elasticsSizeType()->typeID, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, markingAllGoesThroughTheElasticsInTheirOrder)
{
    for (const char *key : {"11", "6", "8"})
        placeElastic({key, "25"});
    takeLog();
    MenuItem row = rowFor(document->availableElasticsSizeTypes().at(2));
    const Log sizes{"size of 11", "size of 6", "size of 8"};
    // A host without the two operations, and none at all.
    for (DXOpenGLDelegate *host : {&delegate, static_cast<DXOpenGLDelegate *>(nullptr)}) {
        view->setDelegate(host);
        view->setNeedsDisplay(false);
        view->markAllElasticsSelected(row);
        EXPECT_EQ(takeLog(), sizes);
        EXPECT_TRUE(view->needsDisplay());
    }
    delegate.DXOpenGL_willUpdateDocumentModel = [this](DXOpenGL &, DXDocumentModel &) {
        view->log.push_back("will");
    };
    view->setDelegate(&delegate);
    view->markAllElasticsSelected(row);
    EXPECT_EQ(takeLog(), (Log{"will", "size of 11", "size of 6", "size of 8"}));
    delegate.DXOpenGL_willUpdateDocumentModel = nullptr;
    delegate.DXOpenGL_didUpdateDocumentModel = [this](DXOpenGL &, DXDocumentModel &) {
        view->log.push_back("did");
    };
    view->markAllElasticsSelected(row);
    EXPECT_EQ(takeLog(), (Log{"size of 11", "size of 6", "size of 8", "did"}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, removingAllTakesTheFirstAgainAndAgain)
{
    for (const char *key : {"11", "6", "8"})
        placeElastic({key, "25"});
    takeLog();
    view->setNeedsDisplay(false);
    view->removeAllElasticsSelected(nothing);
    EXPECT_EQ(takeLog(), (Log{"removed 11", "removed 6", "removed 8"}));
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

// What opens the menu, and what it leaves as it was

TEST_F(ElasticActions, theMenuOfAnElasticLeavesTheClickedNamesAsTheyWere)
{
    const auto elastic = placeElastic({"11", "22"});
    view->setFirstClickedToothName("4");
    view->setLastClickedToothName("5");
    clickElastic(0);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->delegate, view.get());
    EXPECT_EQ(view->firstClickedToothName(), "4");
    EXPECT_EQ(view->lastClickedToothName(), "5");
    EXPECT_EQ(view->lastClickedElasticID(), elastic->uniqueID());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, theMenuOfABracketLeavesTheElasticOfTheLastMenuAsItWas)
{
    const auto elastic = placeElastic({"11", "22"});
    clickElastic(0);
    menu = nullptr;
    clickBracket("8");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->delegate, view.get());
    EXPECT_EQ(view->firstClickedToothName(), "8");
    EXPECT_EQ(view->lastClickedToothName(), "8");
    EXPECT_EQ(view->lastClickedElasticID(), elastic->uniqueID());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, theBracketMenuEndsARepeatPeriodAndIsAboutItsTooth)
{
    view->setRepeatActionTimerInterval(3.0);
    view->restartRepeatActionTimer();
    view->setFirstClickedToothName("4");
    view->setCurrentEventToothName("9");
    view->displayBracketMenuForEvent(Event{});
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->delegate, view.get());
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(view->lastClickedToothName(), "9");
    EXPECT_EQ(view->firstClickedToothName(), "4");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticActions, everyRowOfBothMenusAndTheirSubmenusDoesWhatItSays)
{
    for (long typeID : {1L, 2L}) {
        auto color = std::make_shared<BracketColorType>();
        color->typeID = typeID;
        auto colors = document->availableBracketColorTypes();
        colors[typeID] = color;
        document->setAvailableBracketColorTypes(colors);
    }
    const auto countWithAction = [](const Menu &opened) {
        int count = 0;
        for (const auto &item : opened.items()) {
            if (item->separator) continue;
            EXPECT_TRUE(item->action) << item->title;
            EXPECT_FALSE(item->actionName.empty()) << item->title;
            ++count;
            if (!item->submenu) continue;
            for (const auto &inner : item->submenu->items()) {
                EXPECT_TRUE(inner->action) << inner->title;
                EXPECT_EQ(inner->menu, item->submenu.get());
                ++count;
            }
        }
        return count;
    };
    view->setCurrentEventToothName("9");
    view->displayBracketMenuForEvent(Event{});
    // The holder with two rows, the header, two colours, button, tooth, two removals.
    EXPECT_EQ(countWithAction(*menu), 10);
    MenuItem &forAll = *menu->items()[0]->submenu->items()[1];
    forAll.action(forAll);
    EXPECT_EQ(document->bracketColorsTypeIDs().size(), document->bracketModels().size())
        << "a row of the submenu acts on the view";
    clickBracket("8");
    // The header with two sizes, two removals.
    EXPECT_EQ(countWithAction(*menu), 5);
    MenuItem &start = *menu->items()[0]->submenu->items()[0];
    start.action(start);
    EXPECT_EQ(view->bracketSequence(), std::vector<std::string>{"8"});
    view->endElasticPlacement();
    placeElastic({"11", "22"});
    clickElastic(0);
    // The holder with two rows, the header, two sizes, the name, two removals.
    EXPECT_EQ(countWithAction(*menu), 9);
    MenuItem &markAll = *menu->items()[0]->submenu->items()[1];
    markAll.action(markAll);
    EXPECT_EQ(document->elasticModels()[0]->elasticsSizeType()->typeID, 2);
    EXPECT_NO_GL_ERROR();
}

} // namespace
