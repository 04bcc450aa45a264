// The rules by which rows of the open menus can be chosen, each met with clicks.

#include "tests/viewer/support/ScriptFixture.h"

#include <algorithm>

namespace {

using viewer::test::ScriptFixture;

class MenuRows : public ScriptFixture
{
protected:
    MenuRows() { document().setElasticModels(kelo::DXDocumentModel::ElasticModels{}); }

    bool isEnabled(const std::string &title) const
    {
        const auto item = row(title);
        EXPECT_NE(item, nullptr) << title;
        return item && item->enabled;
    }
    /// How many rows of the submenu under this row can be chosen, and how many there are.
    std::pair<int, int> enabledOfSubmenu(const std::string &title) const
    {
        const auto item = row(title);
        if (!item || !item->submenu) return {-1, -1};
        const auto &items = item->submenu->items();
        return {
            std::count_if(items.begin(), items.end(), [](const auto &one) { return one->enabled; }),
            static_cast<int>(items.size())};
    }
    void placeElastic(long sizeID)
    {
        document().placeElasticModel(std::make_shared<kelo::ElasticModel>(
            nullptr, document().availableElasticsSizeTypes().at(sizeID),
            std::vector<std::string>{"11", "22", "21"}));
    }
    void takeAllBracketsAway()
    {
        for (const auto &[key, model] : document().bracketModels())
            document().toggleVisibilityOfBracket(key);
    }
    int colorCount() const
    {
        return static_cast<int>(document().availableBracketColorTypes().size());
    }
    int sizeCount() const
    {
        return static_cast<int>(document().availableElasticsSizeTypes().size());
    }
};

// The bracket menu

TEST_F(MenuRows, allBracketsCanBeRemovedWhileOneIsShown)
{
    takeAllBracketsAway();
    document().toggleVisibilityOfBracket("30");
    play("click tool bracket\nclick tooth 8\n");
    EXPECT_TRUE(isEnabled("Remove All Brackets"));
    EXPECT_FALSE(isEnabled("Remove Bracket")) << "8 has none";
    play("menu \"Remove All Brackets\"\nclick tooth 8\n");
    EXPECT_FALSE(isEnabled("Remove All Brackets")) << "none is shown any more";
    EXPECT_EQ(failureOf("menu \"Remove All Brackets\""),
              "1: the row 'Remove All Brackets' is disabled");
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, aBracketOfAToothThatIsOutCountsForNoRemoval)
{
    takeAllBracketsAway();
    document().toggleVisibilityOfBracket("30");
    document().toggleVisibilityOfTooth("30");
    play("click tool bracket\nclick tooth 8\n");
    EXPECT_FALSE(isEnabled("Remove All Brackets"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, aColourThatTheBracketHasCanStillBeGivenToAll)
{
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Red"));
    play("click tool bracket\nclick tooth 8\n");
    EXPECT_FALSE(isEnabled("Red"));
    EXPECT_EQ(enabledOfSubmenu("Mark All Brackets"), std::pair(colorCount(), colorCount()));
    play("menu \"Mark All Brackets\" > \"Red\"\n");
    for (const auto &[key, model] : document().bracketModels())
        EXPECT_EQ(colorOf(key), typeIDOf("Red")) << key;
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, theColourThatABracketIsDrawnInDecidesNotItsEntry)
{
    // White without any entry is the colour of the catalogue's white.
    ASSERT_EQ(colorOf("8"), std::nullopt);
    play("click tool bracket\nclick tooth 8\n");
    for (const auto &[typeID, type] : document().availableBracketColorTypes()) {
        const auto color = *type->bracketColor;
        const bool isWhite = color[0] == 1.0 && color[1] == 1.0 && color[2] == 1.0;
        EXPECT_EQ(isEnabled(type->typeLabel), !isWhite) << type->typeLabel;
        EXPECT_EQ(row(type->typeLabel)->state, kelo::MenuItemState::Off) << type->typeLabel;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, onAToothThatIsThereBothButtonRowsCanBeChosen)
{
    play("click tool bracket\nclick tooth 8\n");
    EXPECT_TRUE(isEnabled("Remove Lingual Button"));
    EXPECT_EQ(row("Place Lingual Button"), nullptr);
    EXPECT_TRUE(isEnabled("Remove Tooth"));
    play("menu \"Remove Lingual Button\"\nadvance 4\nclick tooth 8\n");
    EXPECT_TRUE(isEnabled("Place Lingual Button"));
    EXPECT_EQ(row("Remove Lingual Button"), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, onAToothThatIsOutNothingCanBePlacedButTheTooth)
{
    document().toggleVisibilityOfButton("8l");
    document().toggleVisibilityOfTooth("8");
    play("click tool bracket\nclick tooth 8\n");
    EXPECT_FALSE(isEnabled("Place Lingual Button"));
    EXPECT_EQ(row("Remove Lingual Button"), nullptr);
    EXPECT_TRUE(isEnabled("Place All Brackets")) << "the row that holds the submenu";
    EXPECT_EQ(enabledOfSubmenu("Place All Brackets"), std::pair(0, colorCount()));
    for (const auto &[typeID, type] : document().availableBracketColorTypes())
        EXPECT_FALSE(isEnabled(type->typeLabel)) << type->typeLabel;
    EXPECT_FALSE(isEnabled("Remove Bracket"));
    EXPECT_TRUE(isEnabled("Remove All Brackets")) << "others are shown";
    EXPECT_EQ(row("Remove Tooth"), nullptr);
    play("menu \"Place Tooth\"\n");
    EXPECT_FALSE(document().toothModels().at("8")->hiddenPrimary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, onABracketThatIsNotPlacedEveryColourPlaces)
{
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Red"));
    document().toggleVisibilityOfBracket("8");
    play("click tool bracket\nclick tooth 8\n");
    for (const auto &[typeID, type] : document().availableBracketColorTypes()) {
        EXPECT_TRUE(isEnabled(type->typeLabel)) << type->typeLabel;
        EXPECT_EQ(row(type->typeLabel)->state, kelo::MenuItemState::Off) << type->typeLabel;
    }
    EXPECT_EQ(enabledOfSubmenu("Place All Brackets"), std::pair(colorCount(), colorCount()));
    EXPECT_NO_GL_ERROR();
}

// The elastic menu

TEST_F(MenuRows, onABracketOnlyAllElasticsCanBeRemovedAndOnlyWhereThereAreAny)
{
    play("click bracket 8\n");
    EXPECT_FALSE(isEnabled("Remove Elastic"));
    EXPECT_FALSE(isEnabled("Remove All Elastics"));
    play("dismiss\n");
    placeElastic(1);
    play("click bracket 8\n");
    EXPECT_FALSE(isEnabled("Remove Elastic")) << "none is under the pointer";
    EXPECT_TRUE(isEnabled("Remove All Elastics"));
    EXPECT_EQ(failureOf("menu \"Remove Elastic\""), "1: the row 'Remove Elastic' is disabled");
    play("menu \"Remove All Elastics\"\n");
    EXPECT_EQ(document().elasticModels().size(), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, onABracketAnElasticCanBeStartedInEverySize)
{
    play("click bracket 8\n");
    EXPECT_TRUE(isEnabled("Start New Elastic"));
    EXPECT_EQ(enabledOfSubmenu("Start New Elastic"), std::pair(sizeCount(), sizeCount()));
    for (const auto &item : row("Start New Elastic")->submenu->items())
        EXPECT_EQ(item->state, kelo::MenuItemState::Off) << item->title;
    EXPECT_EQ(row("Mark All Elastics"), nullptr);
    EXPECT_EQ(row("Mark Elastic"), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, theHeaderOfTheNamedConfigurationsIsShownDisabledOverThem)
{
    play("click bracket 8\n");
    const auto header = row("Place Named Elastic...");
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->tag, -4);
    EXPECT_FALSE(header->enabled);
    EXPECT_NE(header->image, nullptr);
    for (const auto &configuration : document().availableElasticsConfigTypes())
        EXPECT_EQ(isEnabled(configuration->typeLabel), configuration->hasAssociatedSequence());
    const auto &items = player->openMenu()->items();
    const auto last = std::find(items.begin(), items.end(),
                                row(document().availableElasticsConfigTypes().back()->typeLabel));
    ASSERT_NE(last, items.end());
    EXPECT_TRUE((*std::next(last))->separator);
    EXPECT_EQ(failureOf("menu \"Place Named Elastic...\""),
              "1: the row 'Place Named Elastic...' is disabled");
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, onAnElasticItsOwnSizeIsCheckedAndDisabledAndTheOthersAreNot)
{
    placeElastic(7);
    play("click elastic 0\n");
    EXPECT_FALSE(isEnabled("Mark Elastic"));
    for (const auto &[typeID, type] : document().availableElasticsSizeTypes()) {
        EXPECT_EQ(isEnabled(type->typeLabel), typeID != 7) << type->typeLabel;
        EXPECT_EQ(row(type->typeLabel)->state == kelo::MenuItemState::On, typeID == 7)
            << type->typeLabel;
    }
    EXPECT_TRUE(isEnabled("Remove Elastic"));
    EXPECT_TRUE(isEnabled("Remove All Elastics"));
    EXPECT_EQ(failureOf("menu \"3/16\\\" 4.5 oz\""), "1: the row '3/16\" 4.5 oz' is disabled");
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, allElasticsCanBeGivenTheSizeThatThisOneHas)
{
    placeElastic(7);
    placeElastic(1);
    play("click elastic 0\n");
    ASSERT_EQ(view->currentEventElasticIndex(), 0u);
    EXPECT_TRUE(isEnabled("Mark All Elastics"));
    EXPECT_EQ(enabledOfSubmenu("Mark All Elastics"), std::pair(sizeCount(), sizeCount()));
    play("menu \"Mark All Elastics\" > \"3/16\\\" 4.5 oz\"\n");
    for (const auto &elastic : document().elasticModels())
        EXPECT_EQ(elastic->elasticsSizeType()->typeID, 7);
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuRows, anElasticWithoutAConfigurationIsGivenToTheHostToBeNamed)
{
    placeElastic(7);
    play("click elastic 0\nmenu \"Name This Elastic...\"\n");
    const QJsonArray call = treatment->callLog().calls().last().toArray();
    EXPECT_EQ(call.at(0).toString(),
              "launchElasticsConfigAssociationSheetWithElasticModel:namingAction:");
    EXPECT_EQ(call.at(1).toInt(-1), 0);
    EXPECT_NO_GL_ERROR();
}

} // namespace
