// Which rows can be chosen, and what the headers say: every rule, each condition true and false.

#include "tests/keloOpenGL/menus/MenuFixture.h"

#include <array>

namespace {

using namespace kelo;
using namespace kelo::test;

constexpr std::array bracketTitles{"BracketColorType Menu", "Color BracketColorType Sub Menu",
                                   "Remove BracketColorType Sub Menu"};
constexpr std::array elasticTitles{"ElasticsSizeType Menu", "ElasticsConfigType Sub Menu",
                                   "Color ElasticsSizeType Sub Menu",
                                   "Remove ElasticsSizeType Sub Menu"};

class TreatmentMenuValidation : public MenuFixture
{
protected:
    /// The answer for a row in a menu of this title; the row itself stays in `row`.
    bool validated(const std::string &menuTitle, const std::string &action, long tag,
                   std::any represented = {}, const std::string &title = "Row")
    {
        menu = std::make_shared<Menu>(menuTitle);
        row = menu->addItemWithTitle_actionName_action(title, action, [](MenuItem &) {});
        row->tag = tag;
        row->representedObject = std::move(represented);
        return menus.validate(*row, context, namingAction);
    }
    bool inBracketMenu(const std::string &action, long tag, std::any represented = {})
    {
        return validated(bracketTitles[0], action, tag, std::move(represented));
    }
    bool inElasticMenu(const std::string &action, long tag, std::any represented = {},
                       const std::string &title = "Row")
    {
        return validated(elasticTitles[0], action, tag, std::move(represented), title);
    }

    std::shared_ptr<Menu> menu;
    std::shared_ptr<MenuItem> row;
    int namingAction = -7;
};

TEST_F(TreatmentMenuValidation, rowsOfAMenuWithAnyOtherTitleAreDisabled)
{
    EXPECT_FALSE(validated("Some Menu", "placeToothSelected:", -1));
    EXPECT_FALSE(validated("", "startElasticColorMenuItemSelected:", -1));
    for (const char *title : bracketTitles) {
        EXPECT_TRUE(validated(title, "placeToothSelected:", -1)) << title;
        EXPECT_FALSE(validated(title, "startElasticColorMenuItemSelected:", -1)) << title;
    }
    for (const char *title : elasticTitles) {
        EXPECT_TRUE(validated(title, "startElasticColorMenuItemSelected:", -1)) << title;
        EXPECT_FALSE(validated(title, "placeToothSelected:", -1)) << title;
    }
}

TEST_F(TreatmentMenuValidation, aRowWithoutAMenuIsDisabled)
{
    MenuItem alone;
    alone.actionName = "placeToothSelected:";
    EXPECT_FALSE(menus.validate(alone, context, namingAction));
}

TEST_F(TreatmentMenuValidation, aRowOfAMenuWithoutRowsIsDisabled)
{
    Menu empty("BracketColorType Menu");
    MenuItem taken;
    taken.actionName = "placeToothSelected:";
    taken.menu = &empty; // the menu that lost it
    EXPECT_FALSE(menus.validate(taken, context, namingAction));
    empty.addItemWithTitle_actionName_action("Another", "", nullptr);
    EXPECT_TRUE(menus.validate(taken, context, namingAction)) << "the menu has a row again";
}

TEST_F(TreatmentMenuValidation, theHeadersOfAShownBracketMark)
{
    EXPECT_TRUE(inBracketMenu("doNothing:", 1));
    EXPECT_EQ(row->title, "Mark All Brackets");
    EXPECT_EQ(kindOf(row->image), "two swatches 1 1 1");
    EXPECT_FALSE(inBracketMenu("doNothing:", -4));
    EXPECT_EQ(row->title, "Mark Bracket");
    EXPECT_EQ(kindOf(row->image), "swatch 1 1 1");
}

TEST_F(TreatmentMenuValidation, theHeadersOfAHiddenBracketPlace)
{
    const auto expectPlacing = [this] {
        EXPECT_TRUE(inBracketMenu("doNothing:", 1));
        EXPECT_EQ(row->title, "Place All Brackets");
        EXPECT_EQ(kindOf(row->image), "plus for all");
        EXPECT_FALSE(inBracketMenu("doNothing:", -4));
        EXPECT_EQ(row->title, "Place Bracket");
        EXPECT_EQ(kindOf(row->image), "plus");
    };
    bracket("8").setHiddenPrimary(true);
    expectPlacing();
    bracket("8").setHiddenPrimary(false);
    bracket("8").setHiddenSecondary(true);
    expectPlacing();
}

TEST_F(TreatmentMenuValidation, otherRowsThatDoNothingAreEnabledOnlyWithTagMinusThree)
{
    for (const long tag : {-5L, -2L, -1L, 0L, 2L, 4L}) {
        EXPECT_FALSE(inBracketMenu("doNothing:", tag)) << tag;
        EXPECT_EQ(row->title, "Row") << tag;
    }
    EXPECT_TRUE(inBracketMenu("doNothing:", -3));
    EXPECT_EQ(row->title, "Row");
    for (const long tag : {-5L, -1L, 0L, 2L, 4L})
        EXPECT_FALSE(inElasticMenu("doNothing:", tag)) << tag;
    EXPECT_TRUE(inElasticMenu("doNothing:", -3));
    EXPECT_EQ(row->title, "Row");
}

TEST_F(TreatmentMenuValidation, placingABracketNeedsItsTooth)
{
    for (const char *action : {"placeBracketSelected:", "placeAllBracketsSelected:",
                               "placeButtonSelected:", "removeButtonSelected:"}) {
        tooth("8").setHiddenPrimary(false);
        EXPECT_TRUE(inBracketMenu(action, -1)) << action;
        EXPECT_TRUE(inBracketMenu(action, 4)) << action;
        tooth("8").setHiddenPrimary(true);
        EXPECT_FALSE(inBracketMenu(action, -1)) << action;
        EXPECT_FALSE(inBracketMenu(action, 4)) << action;
    }
}

TEST_F(TreatmentMenuValidation, aColourIsEnabledWhereItDiffersFromTheBracketsMaterial)
{
    document->setBracketColorTypeIDs({{"8", 1}});
    for (const char *action : {"bracketColorMenuItemSelected:", "markAllBracketsSelected:"}) {
        EXPECT_FALSE(inBracketMenu(action, -1, colors.at(1))) << action;
        EXPECT_TRUE(inBracketMenu(action, -1, colors.at(2))) << action;
        EXPECT_TRUE(inBracketMenu(action, 4, colors.at(1))) << "a tag of 4 always, " << action;
        EXPECT_TRUE(inBracketMenu(action, 1, colors.at(1))) << "a tag of 1 always, " << action;
    }
    tooth("8").setHiddenPrimary(true);
    for (const char *action : {"bracketColorMenuItemSelected:", "markAllBracketsSelected:"}) {
        for (const long tag : {-1L, 1L, 4L})
            EXPECT_FALSE(inBracketMenu(action, tag, colors.at(2))) << action << tag;
    }
}

TEST_F(TreatmentMenuValidation, eachOfRedGreenAndBlueMakesAColourDifferAndTheOpacityDoesNot)
{
    bracket("8").setMaterial(HVOGLMaterial::materialWithColor(Color(0.5, 0.5, 0.5, 1.0)));
    const struct
    {
        std::array<double, 4> color;
        bool differs;
    } rows[] = {{{0.5, 0.5, 0.5, 1.0}, false},
                {{0.5, 0.5, 0.5, 0.25}, false},
                {{0.25, 0.5, 0.5, 1.0}, true},
                {{0.5, 0.25, 0.5, 1.0}, true},
                {{0.5, 0.5, 0.25, 1.0}, true}};
    for (const auto &[color, differs] : rows) {
        auto type = std::make_shared<BracketColorType>();
        type->bracketColor = color;
        EXPECT_EQ(inBracketMenu("bracketColorMenuItemSelected:", -1, type), differs);
    }
}

TEST_F(TreatmentMenuValidation, aBracketIsRemovedWhereItIsShown)
{
    EXPECT_TRUE(inBracketMenu("removeBracketSelected:", -1));
    EXPECT_TRUE(inBracketMenu("removeAllBracketsSelected:", -1)) << "the tag decides";
    bracket("8").setHiddenPrimary(true);
    EXPECT_FALSE(inBracketMenu("removeBracketSelected:", -1));
    bracket("8").setHiddenPrimary(false);
    bracket("8").setHiddenSecondary(true);
    EXPECT_FALSE(inBracketMenu("removeBracketSelected:", -1));
}

TEST_F(TreatmentMenuValidation, allBracketsAreRemovedWhereAnyIsShown)
{
    for (const auto &[key, model] : document->bracketModels())
        model->setHiddenPrimary(true);
    for (const long tag : {1L, 4L}) {
        EXPECT_FALSE(inBracketMenu("removeAllBracketsSelected:", tag));
        bracket("30").setHiddenPrimary(false);
        EXPECT_TRUE(inBracketMenu("removeAllBracketsSelected:", tag));
        EXPECT_TRUE(inBracketMenu("removeBracketSelected:", tag));
        bracket("30").setHiddenSecondary(true);
        EXPECT_FALSE(inBracketMenu("removeAllBracketsSelected:", tag));
        bracket("30").setHiddenSecondary(false);
        bracket("30").setHiddenPrimary(true);
    }
}

TEST_F(TreatmentMenuValidation, aToothCanAlwaysBePlacedAndRemoved)
{
    for (const bool isHidden : {false, true}) {
        tooth("8").setHiddenPrimary(isHidden);
        EXPECT_TRUE(inBracketMenu("placeToothSelected:", -1));
        EXPECT_TRUE(inBracketMenu("removeToothSelected:", -1));
    }
}

TEST_F(TreatmentMenuValidation, anythingElseIsDisabled)
{
    for (const char *action : {"", "copy:", "clearAllBracketsSelected:"}) {
        EXPECT_FALSE(inBracketMenu(action, -1)) << action;
        EXPECT_FALSE(inElasticMenu(action, -1)) << action;
    }
}

TEST_F(TreatmentMenuValidation, tagsOneAndFourActOnAllAndNegativeOnesDoNot)
{
    // -1 to -4 as unsigned numbers are not below -4.
    for (const auto &[key, model] : document->bracketModels())
        model->setHiddenPrimary(key == "8");
    for (const long tag : {-4L, -3L, -2L, -1L})
        EXPECT_FALSE(inBracketMenu("removeBracketSelected:", tag)) << "bracket 8 is hidden " << tag;
    for (const long tag : {0L, 1L, 4L, 100L})
        EXPECT_TRUE(inBracketMenu("removeBracketSelected:", tag)) << "another one is shown " << tag;
    EXPECT_TRUE(inBracketMenu("removeBracketSelected:", -5)) << "-5 is below -4 too";
}

TEST_F(TreatmentMenuValidation, theHeadersOfTheElasticMenus)
{
    EXPECT_TRUE(inElasticMenu("doNothing:", 1));
    EXPECT_EQ(row->title, "Mark All Elastics");
    EXPECT_EQ(kindOf(row->image), "two swatches 1 1 1");
    EXPECT_FALSE(inElasticMenu("doNothing:", -2));
    EXPECT_EQ(row->title, "Mark Elastic");
    EXPECT_EQ(kindOf(row->image), "swatch 1 1 1");
    EXPECT_TRUE(inElasticMenu("doNothing:", -4));
    EXPECT_EQ(row->title, "Start New Elastic");
    EXPECT_EQ(kindOf(row->image), "plus");
    EXPECT_FALSE(inElasticMenu("doNothing:", -4, {}, "Place Named Elastic..."));
    EXPECT_EQ(row->title, "Place Named Elastic...");
    EXPECT_EQ(kindOf(row->image), "none");
}

TEST_F(TreatmentMenuValidation, anElasticIsNamedOrRenamed)
{
    EXPECT_FALSE(inElasticMenu("nameSelectedElasticsModel:", -1)) << "no elastics";
    context.elasticIndex = 0;
    EXPECT_FALSE(inElasticMenu("nameSelectedElasticsModel:", -1)) << "still none";
    placeElastic(nullptr, 1);
    placeElastic(classTwo, 1);
    EXPECT_TRUE(inElasticMenu("nameSelectedElasticsModel:", -1));
    EXPECT_EQ(row->title, "Name This Elastic...");
    EXPECT_EQ(namingAction, 0);
    context.elasticIndex = 1;
    EXPECT_TRUE(inElasticMenu("nameSelectedElasticsModel:", -1));
    EXPECT_EQ(row->title, "Rename \"Class II\" Elastic...");
    EXPECT_EQ(namingAction, 1);
    namingAction = -7;
    for (const std::uint64_t none : {noElastic, std::uint64_t{2}}) {
        context.elasticIndex = none; // nothing, and beyond the two
        EXPECT_FALSE(inElasticMenu("nameSelectedElasticsModel:", -1));
        EXPECT_EQ(row->title, "Row");
        EXPECT_EQ(namingAction, -7);
    }
}

TEST_F(TreatmentMenuValidation, aConfigurationIsPlacedWhereItHasASequence)
{
    EXPECT_TRUE(inElasticMenu("placeSelectedElasticsConfigType:", -1, classTwo));
    EXPECT_FALSE(inElasticMenu("placeSelectedElasticsConfigType:", -1, nowhere));
    EXPECT_FALSE(inElasticMenu("placeSelectedElasticsConfigType:", -1)) << "of nothing";
}

TEST_F(TreatmentMenuValidation, anElasticCanAlwaysBeStarted)
{
    EXPECT_TRUE(inElasticMenu("startElasticColorMenuItemSelected:", -1, sizes.at(1)));
    placeElastic(nullptr, 1);
    EXPECT_TRUE(inElasticMenu("startElasticColorMenuItemSelected:", -1, sizes.at(1)));
}

TEST_F(TreatmentMenuValidation, aSizeIsEnabledWhereItsColourDiffersFromTheElasticsOwn)
{
    placeElastic(nullptr, 1);
    for (const char *action : {"updateElasticColorMenuItemSelected:", "markAllElasticsSelected:"}) {
        context.elasticIndex = noElastic;
        EXPECT_FALSE(inElasticMenu(action, -1, sizes.at(2))) << action;
        EXPECT_TRUE(inElasticMenu(action, 1, sizes.at(2))) << action;
        EXPECT_TRUE(inElasticMenu(action, 4, sizes.at(2))) << action;
        context.elasticIndex = 0;
        EXPECT_FALSE(inElasticMenu(action, -1, sizes.at(1))) << action;
        EXPECT_TRUE(inElasticMenu(action, -1, sizes.at(2))) << action;
        EXPECT_TRUE(inElasticMenu(action, 4, sizes.at(1))) << action;
    }
}

TEST_F(TreatmentMenuValidation, theElasticsColourIsTheOneThatTheCatalogueHasNow)
{
    placeElastic(nullptr, 1);
    context.elasticIndex = 0;
    const auto before = sizes.at(1);
    addSize(1, 2, "Large", {0, 0.5, 0, 1}); // the colour of size 2
    document->setAvailableElasticsSizeTypes(sizes);
    EXPECT_FALSE(inElasticMenu("updateElasticColorMenuItemSelected:", -1, sizes.at(2)));
    EXPECT_TRUE(inElasticMenu("updateElasticColorMenuItemSelected:", -1, before));
}

TEST_F(TreatmentMenuValidation, elasticsAreRemovedWhereThereAreAny)
{
    for (const char *action : {"removeElasticSelected:", "removeAllElasticsSelected:"}) {
        document->setElasticModels(DXDocumentModel::ElasticModels());
        context.elasticIndex = 0;
        for (const long tag : {-1L, 1L, 4L})
            EXPECT_FALSE(inElasticMenu(action, tag)) << action << tag;
        placeElastic(nullptr, 1);
        for (const long tag : {-1L, 1L, 4L})
            EXPECT_TRUE(inElasticMenu(action, tag)) << action << tag;
        context.elasticIndex = 1;
        EXPECT_FALSE(inElasticMenu(action, -1)) << "beyond the list, " << action;
        EXPECT_TRUE(inElasticMenu(action, 4)) << action;
        context.elasticIndex = noElastic;
        EXPECT_FALSE(inElasticMenu(action, -1)) << action;
        EXPECT_TRUE(inElasticMenu(action, 1)) << action;
    }
}

} // namespace
