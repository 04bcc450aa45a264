// The menus of a delegate that may end before they do.

#include "keloOpenGL/menus/OpenMenus.h"

#include "platform/presenters/Menu.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace kelo;

TEST(OpenMenus, aMenuHasItsDelegateUntilThisEnds)
{
    MenuDelegate delegate;
    const auto menu = std::make_shared<Menu>("Menu");
    std::optional<OpenMenus> opened(std::in_place);
    opened->add(menu, delegate);
    EXPECT_EQ(menu->delegate, &delegate);
    opened.reset();
    EXPECT_EQ(menu->delegate, nullptr);
}

TEST(OpenMenus, aMenuThatWasGivenAnotherDelegateKeepsThat)
{
    MenuDelegate delegate;
    MenuDelegate other;
    const auto menu = std::make_shared<Menu>("Menu");
    OpenMenus opened;
    opened.add(menu, delegate);
    menu->delegate = &other;
    opened.release();
    EXPECT_EQ(menu->delegate, &other);
}

TEST(OpenMenus, menusThatAreGoneAreForgotten)
{
    MenuDelegate delegate;
    OpenMenus opened;
    const auto kept = std::make_shared<Menu>("Kept");
    opened.add(kept, delegate);
    opened.add(std::make_shared<Menu>("Gone"), delegate);
    opened.add(std::make_shared<Menu>("Gone too"), delegate);
    opened.release();
    EXPECT_EQ(kept->delegate, nullptr);
}

} // namespace
