// The context menus row by row: titles, order, tags, actions, images, check marks.

#include "tests/keloOpenGL/menus/MenuFixture.h"
#include "tests/support/ShoutingTranslator.h"

#include "keloModel/QKModel.h"

#include <sstream>

namespace {

using namespace kelo;
using namespace kelo::test;

/// A row in one line: tag, indentation, title, action, image, and what else it is.
std::string lineOf(const MenuItem &item)
{
    if (item.separator) return "---";
    std::ostringstream line;
    line << item.tag << ' ' << item.indentationLevel << " \"" << item.title << "\" "
         << item.actionName << " [" << kindOf(item.image) << ']';
    if (item.state == MenuItemState::On) line << " checked";
    if (item.submenu) line << " > " << item.submenu->title();
    return line.str();
}

std::string linesOf(const Menu &menu)
{
    std::string lines;
    for (const auto &item : menu.items())
        lines += lineOf(*item) + "\n";
    return lines;
}

class TreatmentMenusTest : public MenuFixture
{
protected:
    const TreatmentMenus::Target noActions = [](const std::string &) {
        return std::function<void(MenuItem &)>();
    };
};

TEST_F(TreatmentMenusTest, onAShownBracketTheMenuMarks)
{
    document->setBracketColorTypeIDs({{"8", 3}});
    const auto menu = menus.bracketMenu(context);
    EXPECT_EQ(menu->title(), "BracketColorType Menu");
    EXPECT_EQ(linesOf(*menu),
              "1 0 \"Place/Mark Brackets\" doNothing: [none] > Color BracketColorType Sub Menu\n"
              "-4 0 \"Place/Mark BracketColorType\" doNothing: [none]\n"
              "-1 2 \"Blue\" bracketColorMenuItemSelected: [swatch 0 0 1]\n"
              "-1 2 \"Green\" bracketColorMenuItemSelected: [swatch 0 1 0] checked\n"
              "-1 2 \"Red\" bracketColorMenuItemSelected: [swatch 1 0 0]\n"
              "---\n"
              "-1 0 \"Remove Lingual Button\" removeButtonSelected: [cross]\n"
              "---\n"
              "-1 0 \"Remove Tooth\" removeToothSelected: [cross]\n"
              "---\n"
              "-1 0 \"Remove Bracket\" removeBracketSelected: [cross]\n"
              "4 0 \"Remove All Brackets\" removeAllBracketsSelected: [two crosses]\n");
    EXPECT_EQ(linesOf(*menu->items()[0]->submenu),
              "4 0 \"Blue\" markAllBracketsSelected: [two swatches 0 0 1]\n"
              "4 0 \"Green\" markAllBracketsSelected: [two swatches 0 1 0]\n"
              "4 0 \"Red\" markAllBracketsSelected: [two swatches 1 0 0]\n");
    EXPECT_FALSE(menu->items()[1]->enabled) << "the header";
}

TEST_F(TreatmentMenusTest, whereNothingIsPlacedTheMenuPlaces)
{
    document->setBracketColorTypeIDs({{"8", 3}});
    bracket("8").setHiddenPrimary(true);
    button("8l").setHiddenPrimary(true);
    const auto menu = menus.bracketMenu(context);
    EXPECT_EQ(linesOf(*menu),
              "1 0 \"Place/Mark Brackets\" doNothing: [none] > Color BracketColorType Sub Menu\n"
              "-4 0 \"Place/Mark BracketColorType\" doNothing: [none]\n"
              "-1 2 \"Blue\" placeBracketSelected: [swatch 0 0 1]\n"
              "-1 2 \"Green\" placeBracketSelected: [swatch 0 1 0]\n"
              "-1 2 \"Red\" placeBracketSelected: [swatch 1 0 0]\n"
              "---\n"
              "-1 0 \"Place Lingual Button\" placeButtonSelected: [plus]\n"
              "---\n"
              "-1 0 \"Remove Tooth\" removeToothSelected: [cross]\n"
              "---\n"
              "-1 0 \"Remove Bracket\" removeBracketSelected: [cross]\n"
              "4 0 \"Remove All Brackets\" removeAllBracketsSelected: [two crosses]\n")
        << "no check mark: only colouring and updating show one";
    EXPECT_EQ(menu->items()[0]->submenu->items()[0]->actionName, "placeAllBracketsSelected:");
}

TEST_F(TreatmentMenusTest, aHiddenToothHidesItsBracketAndButtonForTheMenuToo)
{
    document->toggleVisibilityOfTooth("8");
    const auto menu = menus.bracketMenu(context);
    EXPECT_EQ(menu->items()[2]->actionName, "placeBracketSelected:");
    EXPECT_EQ(menu->items()[6]->title, "Place Lingual Button");
    EXPECT_EQ(lineOf(*menu->items()[8]), "-1 0 \"Place Tooth\" placeToothSelected: [plus]");
}

TEST_F(TreatmentMenusTest, onAnExistingElasticTheMenuUpdates)
{
    placeElastic(nullptr, 2);
    context.elasticIndex = 0;
    const auto menu = menus.elasticMenu(context);
    EXPECT_EQ(menu->title(), "ElasticsSizeType Menu");
    EXPECT_EQ(linesOf(*menu),
              "1 0 \"Place/Mark Brackets\" doNothing: [none] > Color ElasticsSizeType Sub Menu\n"
              "-2 0 \"Place/Mark ElasticsSizeType\" doNothing: [none]\n"
              "-1 2 \"Small\" updateElasticColorMenuItemSelected: [swatch 0 0.5 0] checked\n"
              "-1 2 \"Large\" updateElasticColorMenuItemSelected: [swatch 0.5 0 0]\n"
              "---\n"
              "---\n"
              "-1 0 \"Name This Elastic...\" nameSelectedElasticsModel: [pencil]\n"
              "---\n"
              "-1 0 \"Remove Elastic\" removeElasticSelected: [cross]\n"
              "4 0 \"Remove All Elastics\" removeAllElasticsSelected: [two crosses]\n");
    EXPECT_EQ(linesOf(*menu->items()[0]->submenu),
              "4 0 \"Small\" markAllElasticsSelected: [two swatches 0 0.5 0]\n"
              "4 0 \"Large\" markAllElasticsSelected: [two swatches 0.5 0 0]\n");
}

TEST_F(TreatmentMenusTest, onABracketTheElasticMenuStartsAndPlacesConfigurations)
{
    const auto menu = menus.elasticMenu(context);
    EXPECT_EQ(linesOf(*menu),
              "-4 0 \"Place/Mark ElasticsSizeType\" doNothing: [none] > Color ElasticsSizeType Sub "
              "Menu\n"
              "---\n"
              "---\n"
              "-4 0 \"Place Named Elastic...\" doNothing: [plus]\n"
              "-1 2 \"Class II\" placeSelectedElasticsConfigType: [swatch 0 0.5 0]\n"
              "-1 2 \"Unsized\" placeSelectedElasticsConfigType: [swatch 1 1 1]\n"
              "---\n"
              "-1 0 \"Remove Elastic\" removeElasticSelected: [cross]\n"
              "4 0 \"Remove All Elastics\" removeAllElasticsSelected: [two crosses]\n");
    EXPECT_EQ(linesOf(*menu->items()[0]->submenu),
              "-1 0 \"Small\" startElasticColorMenuItemSelected: [swatch 0 0.5 0]\n"
              "-1 0 \"Large\" startElasticColorMenuItemSelected: [swatch 0.5 0 0]\n");
}

TEST_F(TreatmentMenusTest, withoutASequenceTheHeaderKeepsTag0WithoutSeparator)
{
    document->setAvailableElasticsConfigTypes({nowhere});
    const auto menu = menus.elasticMenu(context);
    ASSERT_EQ(menu->items().size(), 6u);
    EXPECT_EQ(lineOf(*menu->items()[3]), "0 0 \"Place Named Elastic...\" doNothing: [none]");
    EXPECT_EQ(menu->items()[4]->title, "Remove Elastic");
}

TEST_F(TreatmentMenusTest, withoutConfigurationsThereIsNoHeaderForThem)
{
    document->setAvailableElasticsConfigTypes({});
    const auto menu = menus.elasticMenu(context);
    ASSERT_EQ(menu->items().size(), 5u);
    EXPECT_EQ(menu->items()[3]->title, "Remove Elastic");
}

TEST_F(TreatmentMenusTest, theRowsStandForTheirCatalogueEntries)
{
    placeElastic(nullptr, 2);
    const auto brackets = menus.bracketMenu(context);
    EXPECT_EQ(
        std::any_cast<std::shared_ptr<BracketColorType>>(brackets->items()[2]->representedObject),
        colors.at(2));
    EXPECT_EQ(std::any_cast<std::shared_ptr<BracketColorType>>(
                  brackets->items()[0]->submenu->items()[1]->representedObject),
              colors.at(3));
    const auto starts = menus.elasticMenu(context);
    EXPECT_EQ(std::any_cast<std::shared_ptr<ElasticsSizeType>>(
                  starts->items()[0]->submenu->items()[0]->representedObject),
              sizes.at(2));
    EXPECT_EQ(
        std::any_cast<std::shared_ptr<ElasticsConfigType>>(starts->items()[4]->representedObject),
        classTwo);
}

TEST_F(TreatmentMenusTest, everyRowActsOnTheTarget)
{
    placeElastic(nullptr, 2);
    const auto onBracket = menus.elasticMenu(context);
    context.elasticIndex = 0;
    for (const auto &menu : {menus.bracketMenu(context), onBracket, menus.elasticMenu(context)}) {
        std::vector<std::shared_ptr<MenuItem>> rows = menu->items();
        const auto &inner = menu->items()[0]->submenu->items();
        ASSERT_FALSE(inner.empty());
        rows.insert(rows.end(), inner.begin(), inner.end());
        for (const auto &item : rows) {
            if (item->separator) continue;
            chosen.clear();
            ASSERT_TRUE(item->action) << item->title;
            item->action(*item);
            EXPECT_EQ(chosen, std::vector<std::string>{item->actionName}) << item->title;
        }
    }
}

TEST_F(TreatmentMenusTest, entriesOfAnEntityWithoutAColourAreWhite)
{
    for (const bool hasParent : {false, true}) {
        Menu menu;
        MenuItem parent;
        menus
            .colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
                menu, hasParent ? &parent : nullptr, catalogueRows(colors), 2, "ElasticsConfigType",
                "%@", noActions, "placeSelectedElasticsConfigType:", "markAllElasticsSelected:");
        // A secondary action gives no second rows to an entity of this kind.
        const std::string line = "\"Blue\" placeSelectedElasticsConfigType: [swatch 1 1 1]";
        if (hasParent) {
            EXPECT_TRUE(menu.items().empty());
            ASSERT_NE(parent.submenu, nullptr);
            EXPECT_EQ(parent.submenu->title(), "Color ElasticsConfigType Sub Menu");
            ASSERT_EQ(parent.submenu->items().size(), 3u);
            EXPECT_EQ(lineOf(*parent.submenu->items()[0]), "-1 0 " + line);
        } else {
            ASSERT_EQ(menu.items().size(), 3u);
            EXPECT_EQ(lineOf(*menu.items()[0]), "-1 2 " + line);
        }
    }
}

TEST_F(TreatmentMenusTest, bracketColoursHaveRowsForAllEvenWithoutASecondaryAction)
{
    Menu menu;
    menus
        .colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
            menu, nullptr, catalogueRows(colors), std::nullopt, "BracketColorType", "%@", noActions,
            "placeBracketSelected:", "");
    EXPECT_EQ(linesOf(menu),
              "1 0 \"Place/Mark Brackets\" doNothing: [none] > Color BracketColorType Sub Menu\n"
              "-4 0 \"Place/Mark BracketColorType\" doNothing: [none]\n"
              "-1 2 \"Blue\" placeBracketSelected: [swatch 0 0 1]\n"
              "-1 2 \"Green\" placeBracketSelected: [swatch 0 1 0]\n"
              "-1 2 \"Red\" placeBracketSelected: [swatch 1 0 0]\n");
    EXPECT_EQ(linesOf(*menu.items()[0]->submenu), "4 0 \"Blue\"  [two swatches 0 0 1]\n"
                                                  "4 0 \"Green\"  [two swatches 0 1 0]\n"
                                                  "4 0 \"Red\"  [two swatches 1 0 0]\n");
}

TEST_F(TreatmentMenusTest, anElasticIndexBeyondTheListIsNoElastic)
{
    placeElastic(nullptr, 2);
    context.elasticIndex = 1;
    EXPECT_EQ(menus.elasticMenu(context)->items()[0]->title, "Place/Mark ElasticsSizeType");
    EXPECT_EQ(menus.elasticMenu(context)->items()[0]->tag, -4);
}

TEST_F(TreatmentMenusTest, fixedTitlesStayEnglishAndAreShownInTheUsersLanguage)
{
    const ShoutingTranslator language("DXOpenGL");
    const auto menu = menus.bracketMenu(context);
    int naming = 0;
    for (const auto &item : menu->items())
        menus.validate(*item, context, naming);
    std::vector<std::string> titles;
    for (const auto &item : menu->items())
        if (!item->separator) titles.push_back(item->title + "|" + item->shownTitle);
    EXPECT_EQ(titles, (std::vector<std::string>{
                          "Mark All Brackets|MARK ALL BRACKETS", "Mark Bracket|MARK BRACKET",
                          "Blue|", "Green|", "Red|", "Remove Lingual Button|REMOVE LINGUAL BUTTON",
                          "Remove Tooth|REMOVE TOOTH", "Remove Bracket|REMOVE BRACKET",
                          "Remove All Brackets|REMOVE ALL BRACKETS"}));
}

TEST_F(TreatmentMenusTest, theNameOfAConfigurationStaysAsItIsInTheUsersLanguage)
{
    const ShoutingTranslator language("DXOpenGL");
    placeElastic(classTwo, 2);
    context.elasticIndex = 0;
    const auto menu = menus.elasticMenu(context);
    int naming = 0;
    std::vector<std::string> titles;
    for (const auto &item : menu->items()) {
        menus.validate(*item, context, naming);
        if (item->actionName == "nameSelectedElasticsModel:")
            titles = {item->title, item->shownTitle};
    }
    EXPECT_EQ(titles, (std::vector<std::string>{"Rename \"Class II\" Elastic...",
                                                "RENAME \"Class II\" ELASTIC..."}));
}

TEST_F(TreatmentMenusTest, titlesAreTheFormatFilledWithTheLabel)
{
    Menu menu;
    menus
        .colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
            menu, nullptr, catalogueRows(sizes), 2, "ElasticsSizeType", "Use %@ now", noActions,
            "startElasticColorMenuItemSelected:", "");
    ASSERT_EQ(menu.items().size(), 2u) << "without a secondary action nothing acts on all";
    EXPECT_EQ(menu.items()[0]->title, "Use Small now");
    EXPECT_EQ(menu.items()[0]->state, MenuItemState::Off) << "starting shows no selection";
}

TEST_F(TreatmentMenusTest, anUnknownEntityNameRaisesNoEntityForName)
{
    Menu menu;
    const auto expectRaised = [](const std::function<void()> &build) {
        try {
            build();
            FAIL() << "nothing was raised";
        } catch (const NoEntityForName &raised) {
            EXPECT_EQ(raised.name(), "No entity for name");
            EXPECT_EQ(raised.reason(), "name = WireType");
        }
    };
    expectRaised([&] {
        menus
            .colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
                menu, nullptr, {}, std::nullopt, "WireType", "%@", noActions,
                "placeBracketSelected:", "");
    });
    expectRaised([&] {
        menus
            .elasticsConfigMenu_withAvailableConfigTypes_availableSizeTypes_entityName_format_target_primaryAction_secondaryAction(
                menu, {}, {}, "WireType", "%@", noActions, "placeSelectedElasticsConfigType:", "");
    });
    EXPECT_TRUE(menu.items().empty());
}

TEST_F(TreatmentMenusTest, theConfigurationBuilderOfAnotherEntityAddsOnlyTheHeader)
{
    Menu menu;
    menus
        .elasticsConfigMenu_withAvailableConfigTypes_availableSizeTypes_entityName_format_target_primaryAction_secondaryAction(
            menu, {classTwo}, sizes, "ElasticsSizeType", "%@", noActions,
            "placeSelectedElasticsConfigType:", "");
    EXPECT_EQ(linesOf(menu), "0 0 \"Place Named Elastic...\" doNothing: [none]\n");
}

} // namespace
