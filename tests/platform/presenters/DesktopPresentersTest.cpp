// Without registered presenters, so in a program that neither makes views of the library nor calls
// useWidgetPresenters.

#include "platform/presenters/DesktopPresenters.h"
#include "base/Assertion.h"
#include "platform/presenters/Alert.h"
#include "platform/presenters/Menu.h"
#include "platform/view/Event.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/DrawingView.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kelo {
namespace {

TEST(DesktopPresenters, withoutWidgetsAnAlertGoesToStandardError)
{
    EXPECT_EQ(test::standardErrorOf([] {
                  desktopPresenters().alert({"Headline", "What to do."});
              }),
              "Headline: What to do.\n");
}

TEST(DesktopPresenters, withoutWidgetsAMenuClosesWithoutAChoice)
{
    bool hasRun = false;
    const auto menu = std::make_shared<Menu>();
    menu->addItemWithTitle_actionName_action("Remove Tooth", "",
                                             [&](MenuItem &) { hasRun = true; });
    struct : MenuDelegate
    {
        void menuDidClose(Menu &) override { ++closings; }
        int closings = 0;
    } delegate;
    menu->delegate = &delegate;
    test::DrawingView view(Rect{{0, 0}, {40, 30}});
    ContextMenuPresenter::popUpNativeMenu(menu, {}, view);
    EXPECT_FALSE(hasRun);
    EXPECT_EQ(delegate.closings, 1);
}

TEST(DesktopPresenters, withoutWidgetsAContainerIsRefusedInOneSentence)
{
    test::DrawingView view(Rect{{0, 0}, {40, 30}});
    try {
        view.createContainer();
        ADD_FAILURE() << "nothing can show the view in a widget";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(),
                     "useWidgetPresenters must be called before a view gets a container");
    }
}

TEST(DesktopPresenters, aRegisteredPresenterIsAsked)
{
    const DesktopPresenters before = desktopPresenters();
    DesktopPresenters mine = before;
    std::string shown;
    mine.showToolTip = [&](const std::string &text) { shown = text; };
    setDesktopPresenters(mine);
    desktopPresenters().showToolTip("Elastics");
    setDesktopPresenters(before);
    EXPECT_EQ(shown, "Elastics");
}

TEST(DesktopPresenters, oneThatIsMissingIsAnAssertion)
{
    DesktopPresenters incomplete = desktopPresenters();
    incomplete.contextMenu = {};
    try {
        setDesktopPresenters(incomplete);
        ADD_FAILURE() << "a menu could not be shown";
    } catch (const AssertionFailure &failure) {
        EXPECT_STREQ(failure.what(), "every desktop presenter must be set");
    }
}

} // namespace
} // namespace kelo
