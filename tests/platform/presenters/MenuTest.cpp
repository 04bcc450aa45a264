#include "platform/presenters/Menu.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace kelo;

namespace {

using Names = std::vector<std::string>;

/// Notes what it is asked, and forbids the rows that it is told to.
class AskingDelegate : public MenuDelegate
{
public:
    void menuNeedsUpdate(Menu &menu) override { asked.push_back("update " + menu.title()); }
    bool validateMenuItem(MenuItem &item) override
    {
        asked.push_back("validate " + item.menu->title() + "/" + item.title);
        return item.title != forbidden;
    }
    void menuDidClose(Menu &menu) override { asked.push_back("closed " + menu.title()); }

    Names asked;
    std::string forbidden;
};

class MenuTest : public testing::Test
{
protected:
    std::shared_ptr<MenuItem> addRow(Menu &to, const std::string &title)
    {
        return to.addItemWithTitle_actionName_action(title, "choose:", [this](MenuItem &item) {
            delegate.asked.push_back("run " + item.title);
        });
    }

    AskingDelegate delegate;
    Menu menu{"main"};
};

} // namespace

TEST_F(MenuTest, theFirstRowWithATagIsFound)
{
    const auto a = addRow(menu, "a");
    const auto b = addRow(menu, "b");
    addRow(menu, "c")->tag = 7;
    b->tag = 7;
    EXPECT_EQ(menu.itemWithTag(7), b);
    EXPECT_EQ(menu.itemWithTag(0), a);
    EXPECT_EQ(menu.itemWithTag(8), nullptr);
}

TEST_F(MenuTest, aRowKnowsItsMenuForAsLongAsThatLives)
{
    auto ended = std::make_unique<Menu>("ended");
    const auto row = addRow(*ended, "row");
    EXPECT_EQ(row->menu, ended.get());
    ended.reset();
    EXPECT_EQ(row->menu, nullptr);
}

TEST_F(MenuTest, anUpdateAsksForContentsThenValidatesThenGoesIntoTheSubmenus)
{
    menu.delegate = &delegate;
    const auto submenu = std::make_shared<Menu>("sub");
    addRow(menu, "a")->submenu = submenu;
    addRow(menu, "b");
    addRow(*submenu, "c");
    menu.update();
    EXPECT_EQ(delegate.asked, (Names{"update main", "validate main/a", "validate main/b",
                                     "update sub", "validate sub/c"}));
}

TEST_F(MenuTest, theAnswerOfTheValidationOverridesWhatTheRowHadBefore)
{
    menu.delegate = &delegate;
    const auto a = addRow(menu, "a");
    const auto b = addRow(menu, "b");
    a->enabled = false;
    delegate.forbidden = "b";
    menu.update();
    EXPECT_TRUE(a->enabled);
    EXPECT_FALSE(b->enabled);
}

TEST_F(MenuTest, rowsWithoutActionAndSeparatorsAreNotValidated)
{
    menu.delegate = &delegate;
    const auto plain = menu.addItemWithTitle_actionName_action("plain", "", nullptr);
    plain->enabled = false;
    const auto separator = menu.addItem(MenuItem::separatorItem());
    menu.update();
    EXPECT_EQ(delegate.asked, (Names{"update main"}));
    EXPECT_FALSE(plain->enabled);
    EXPECT_TRUE(separator->separator);
    EXPECT_FALSE(separator->enabled);
}

TEST_F(MenuTest, aMenuThatDoesNotAutoenableKeepsItsRowsAsTheyAre)
{
    menu.delegate = &delegate;
    menu.autoenablesItems = false;
    delegate.forbidden = "a";
    const auto a = addRow(menu, "a");
    menu.update();
    EXPECT_TRUE(a->enabled);
    EXPECT_EQ(delegate.asked, (Names{"update main"}));
}

TEST_F(MenuTest, aSubmenusOwnDelegateComesBeforeItsParents)
{
    AskingDelegate own;
    menu.delegate = &delegate;
    const auto submenu = std::make_shared<Menu>("sub");
    submenu->delegate = &own;
    addRow(menu, "a")->submenu = submenu;
    addRow(*submenu, "c");
    menu.update();
    EXPECT_EQ(delegate.asked, (Names{"update main", "validate main/a"}));
    EXPECT_EQ(own.asked, (Names{"update sub", "validate sub/c"}));
}

TEST_F(MenuTest, rowsPutStraightIntoTheListLearnOfTheirMenuByAnUpdate)
{
    const auto row = std::make_shared<MenuItem>();
    menu.items().push_back(row);
    menu.update();
    EXPECT_EQ(row->menu, &menu);
}

TEST_F(MenuTest, theChosenRowsActionRunsBeforeTheDelegateHearsOfTheClosing)
{
    menu.delegate = &delegate;
    const auto row = addRow(menu, "a");
    menu.close(row);
    EXPECT_EQ(delegate.asked, (Names{"run a", "closed main"}));
}

TEST_F(MenuTest, closingWithoutAChoiceRunsNothing)
{
    menu.delegate = &delegate;
    addRow(menu, "a");
    menu.close(nullptr);
    EXPECT_EQ(delegate.asked, (Names{"closed main"}));
}

TEST_F(MenuTest, aDisabledRowsActionDoesNotRun)
{
    menu.delegate = &delegate;
    const auto row = addRow(menu, "a");
    row->enabled = false;
    menu.close(row);
    EXPECT_EQ(delegate.asked, (Names{"closed main"}));
}

TEST_F(MenuTest, anActionMayEmptyItsMenuAndReplaceItself)
{
    auto row = std::make_shared<MenuItem>();
    bool ran = false;
    row->action = [&](MenuItem &item) {
        item.action = nullptr;
        menu.items().clear();
        ran = true;
    };
    menu.addItem(row);
    menu.close(row);
    EXPECT_TRUE(ran);
    EXPECT_TRUE(menu.items().empty());
}
