// The table of commands: complete, without doubles, and each with a method of the view.

#include "keloOpenGL/menus/MenuCommand.h"

#include "keloOpenGL/treatment/MenuMethods.h"
#include "tests/keloOpenGL/menus/MenuFixture.h"

#include <set>
#include <string>
#include <utility>

namespace {

using namespace kelo;
using namespace kelo::test;

TEST(MenuCommands, aSelectorIsOnceInAMenuAndHasARule)
{
    std::set<std::pair<MenuKind, std::string>> selectors;
    for (const MenuCommand &command : menuCommands()) {
        EXPECT_TRUE(selectors.emplace(command.menu, command.selector).second) << command.selector;
        EXPECT_NE(command.rule, nullptr) << command.selector;
        EXPECT_EQ(menuCommand(command.menu, command.selector), &command);
    }
    EXPECT_EQ(menuCommand(MenuKind::Bracket, "copy:"), nullptr);
    EXPECT_EQ(menuCommand(MenuKind::Elastic, "placeToothSelected:"), nullptr) << "the other menu's";
}

TEST(MenuCommands, everyCommandHasAMethodAndEveryMethodACommand)
{
    std::set<std::string> selectors;
    for (const MenuCommand &command : menuCommands()) {
        selectors.insert(command.selector);
        const auto method = menuMethods().find(command.selector);
        ASSERT_NE(method, menuMethods().end()) << command.selector;
        EXPECT_TRUE(method->second) << command.selector;
    }
    for (const auto &[selector, method] : menuMethods())
        EXPECT_TRUE(selectors.contains(selector)) << selector;
}

TEST(MenuCommands, aFixedRowHasAPictureAndSaysWhetherItActsOnAll)
{
    for (const MenuCommand &command : menuCommands()) {
        if (!command.text) continue;
        EXPECT_NE(command.picture, nullptr) << command.selector;
        const bool saysAll = std::string(command.text).find("All") != std::string::npos;
        EXPECT_EQ(command.tag, saysAll ? 4 : -1) << command.selector;
    }
}

TEST(MenuCommands, onlyColouringAndUpdatingShowWhatIsInForce)
{
    std::set<std::string> checking;
    for (const MenuCommand &command : menuCommands())
        if (checksSelection(command.selector)) checking.insert(command.selector);
    EXPECT_EQ(checking, (std::set<std::string>{"bracketColorMenuItemSelected:",
                                               "updateElasticColorMenuItemSelected:"}));
    EXPECT_FALSE(checksSelection("copy:"));
}

class MenuCommandRules : public MenuFixture
{
protected:
    bool isShown(const char *selector) const
    {
        return menuCommand(MenuKind::Bracket, selector)->isShown(context);
    }
};

TEST_F(MenuCommandRules, eachOfPlacingAndRemovingIsShownWhereTheOtherIsNot)
{
    for (const bool isHidden : {false, true}) {
        tooth("8").setHiddenPrimary(isHidden);
        button("8l").setHiddenPrimary(isHidden);
        EXPECT_EQ(isShown("placeToothSelected:"), isHidden);
        EXPECT_EQ(isShown("removeToothSelected:"), !isHidden);
        EXPECT_EQ(isShown("placeButtonSelected:"), isHidden);
        EXPECT_EQ(isShown("removeButtonSelected:"), !isHidden);
    }
}

} // namespace
