// Presses, moves and releases of a real pointer around a menu that a press opens.

#include "platform/presenters/Menu.h"
#include "tests/support/GLTest.h"
#include "tests/support/PointerSteps.h"
#include "tests/support/TestClock.h"

#include <algorithm>
#include <string>
#include <vector>

using namespace kelo;
using namespace kelo::test;

namespace {

/// A view in which every press opens a menu of twelve rows.
class MenuPressTest : public WindowTest
{
protected:
    MenuPressTest()
    {
        for (int row = 0; row < 12; ++row)
            menu->addItemWithTitle_actionName_action(
                "row " + std::to_string(row),
                "choose:", [this](MenuItem &item) { chosen.push_back(item.title); });
    }

    void showViewWithMenu()
    {
        showView();
        view->onEvent = [this](const Event &event) {
            if (event.type != EventType::LeftMouseDown && event.type != EventType::RightMouseDown)
                return;
            ++openings;
            ContextMenuPresenter::popUpNativeMenu(menu, event, *view);
            ++closings;
        };
    }
    QPoint onScreen(int x, int y) const { return container->mapToGlobal(QPoint(x, y)); }
    bool goThrough(const std::vector<Step> &steps)
    {
        return kelo::test::goThrough(steps, [this] { return openings == closings; });
    }
    /// Presses at a point, goes on from there, releases; then `check`, with the menu still open if
    /// all is well; then Escape.
    bool pressMoveAndRelease(const QPoint &from, const QPoint &by, const char *button,
                             const std::function<void()> &check)
    {
        const QPoint to = from + by;
        return goThrough({{atOnce,
                           [=] {
                               movePointer(from);
                               xdotool({"mousedown", button});
                           }},
                          {[] { return openMenu() != nullptr; }, [=] { movePointer(to); }},
                          {[=, this] { return watch.lastMove == to; },
                           [=] {
                               xdotool({"mouseup", button});
                           }},
                          {[this] { return watch.releases == 1; }, check},
                          {atOnce, [] {
                               xdotool({"key", "Escape"});
                           }}});
    }
    int buttonEventsOfView() const
    {
        const auto types = view->eventTypes();
        return static_cast<int>(std::count_if(types.begin(), types.end(), [](EventType type) {
            return type == EventType::LeftMouseDown || type == EventType::LeftMouseDragged ||
                   type == EventType::RightMouseDown || type == EventType::RightMouseDragged;
        }));
    }

    MainRunLoop realClock{nullptr};
    ButtonWatch watch;
    std::shared_ptr<Menu> menu = std::make_shared<Menu>("menu");
    std::vector<std::string> chosen;
    int openings = 0;
    int closings = 0;
};

const std::vector<std::string> nothing;

} // namespace

TEST_F(MenuPressTest, aClickThatWobblesChoosesNothing)
{
    showViewWithMenu();
    bool wasOverARow = false;
    bool stayedOpen = false;
    EXPECT_TRUE(pressMoveAndRelease(onScreen(100, 80), {6, 6}, "1", [&] {
        const QMenu *native = openMenu();
        if (!native) return;
        stayedOpen = true;
        wasOverARow = native->actionAt(native->mapFromGlobal(watch.lastMove)) != nullptr;
        EXPECT_EQ(native->activeAction(), nullptr);
    }));
    EXPECT_TRUE(stayedOpen);
    EXPECT_TRUE(wasOverARow) << "where the release came";
    EXPECT_EQ(chosen, nothing);
    EXPECT_EQ(openings, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuPressTest, aDragAlongTheRowsChoosesNothingWithEitherButton)
{
    showViewWithMenu();
    for (const char *button : {"1", "3"}) {
        watch.releases = 0;
        bool stayedOpen = false;
        EXPECT_TRUE(pressMoveAndRelease(onScreen(100, 80), {40, 120}, button,
                                        [&] { stayedOpen = openMenu() != nullptr; }));
        EXPECT_TRUE(stayedOpen) << button;
        EXPECT_EQ(chosen, nothing) << button;
    }
    EXPECT_EQ(openings, 2);
    EXPECT_EQ(buttonEventsOfView(), 2) << "of the drags nothing came to the view";
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuPressTest, aReleaseThatCameBeforeTheMenuWasUpChoosesNothing)
{
    showViewWithMenu();
    const QPoint point = onScreen(100, 80);
    bool stayedOpen = false;
    EXPECT_TRUE(goThrough(
        {{atOnce,
          [=] {
              movePointer(point);
              xdotool({"mousedown", "1", "mousemove_relative", "30", "50", "mouseup", "1"});
          }},
         {[this] { return openMenu() && watch.releases == 1; },
          [&] { stayedOpen = openMenu() != nullptr; }},
         {atOnce, [] {
              xdotool({"key", "Escape"});
          }}}));
    EXPECT_TRUE(stayedOpen);
    EXPECT_EQ(chosen, nothing);
    EXPECT_EQ(buttonEventsOfView(), 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuPressTest, aDoubleClickChoosesNothingAndLeavesTheMenuOpen)
{
    showViewWithMenu();
    const QPoint point = onScreen(100, 80);
    bool stayedOpen = false;
    EXPECT_TRUE(goThrough(
        {{atOnce,
          [=] {
              movePointer(point);
              xdotool({"mousedown", "1"});
          }},
         {[] { return openMenu() != nullptr; },
          [] {
              xdotool({"mousemove_relative", "5", "4", "mouseup", "1", "mousedown", "1", "mouseup",
                       "1"});
          }},
         {[this] { return watch.releases == 2; }, [&] { stayedOpen = openMenu() != nullptr; }},
         {atOnce, [] {
              xdotool({"key", "Escape"});
          }}}));
    EXPECT_TRUE(stayedOpen);
    EXPECT_EQ(chosen, nothing);
    EXPECT_EQ(openings, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuPressTest, aClickAfterThePressChoosesItsRow)
{
    showViewWithMenu();
    QPoint row;
    EXPECT_TRUE(goThrough({{atOnce,
                            [this] {
                                movePointer(onScreen(100, 80));
                                xdotool({"click", "1"});
                            }},
                           {[this] { return openMenu() && watch.releases == 1; },
                            [&] {
                                if (const QMenu *native = openMenu())
                                    row = native->mapToGlobal(
                                        native->actionGeometry(native->actions().at(3)).center());
                                movePointer(row);
                            }},
                           {[&] { return watch.lastMove == row; },
                            [] {
                                xdotool({"click", "1"});
                            }}}));
    EXPECT_EQ(chosen, (std::vector<std::string>{"row 3"}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuPressTest, aClickElsewhereClosesTheMenuAndIsNoneInTheView)
{
    showViewWithMenu();
    EXPECT_TRUE(goThrough({{atOnce,
                            [this] {
                                movePointer(onScreen(100, 80));
                                xdotool({"click", "1"});
                            }},
                           {[this] { return openMenu() && watch.releases == 1; },
                            [this] {
                                movePointer(onScreen(20, 20));
                                xdotool({"mousedown", "1"});
                            }},
                           {[this] { return closings == 1; },
                            [] {
                                xdotool({"mousemove_relative", "30", "10", "mouseup", "1"});
                            }},
                           {[this] { return watch.releases == 2; }, [] {}}}));
    EXPECT_EQ(chosen, nothing);
    EXPECT_EQ(openings, 1);
    EXPECT_EQ(buttonEventsOfView(), 1);
    EXPECT_EQ(std::count_if(view->events.begin(), view->events.end(),
                            [](const Event &event) {
                                return event.type == EventType::LeftMouseUp && event.clickCount > 0;
                            }),
              0)
        << "the press that opened the menu has ended with it, and nobody clicked";
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuPressTest, noMenuOpensWithARowUnderThePointer)
{
    showViewWithMenu();
    const QRect screen = top->screen()->availableGeometry();
    // The view's middle at every edge and corner of the screen, and in its middle.
    for (const int x : {screen.left() + 3, screen.center().x(), screen.right() - 3}) {
        for (const int y : {screen.top() + 3, screen.center().y(), screen.bottom() - 3}) {
            const QPoint pointer(x, y);
            top->move(pointer - QPoint(top->width() / 2, top->height() / 2));
            ASSERT_TRUE(waitUntil([&] {
                return QRect(container->mapToGlobal(QPoint()), container->size())
                    .adjusted(9, 9, -9, -9)
                    .contains(pointer);
            }));
            watch.releases = 0;
            QRect place;
            EXPECT_TRUE(pressMoveAndRelease(pointer, {2, 2}, "1", [&] {
                if (const QMenu *native = openMenu()) place = native->geometry();
            }));
            EXPECT_FALSE(place.isEmpty());
            EXPECT_FALSE(place.contains(pointer)) << x << ' ' << y;
            EXPECT_TRUE(screen.contains(place)) << x << ' ' << y;
            EXPECT_EQ(chosen, nothing) << x << ' ' << y;
        }
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(MenuPressTest, anOpenMenuHasTheInputThatComesToTheViewsWindow)
{
    // As on Wayland, where windows of the same program hear of the pointer and the keys.
    showViewWithMenu();
    for (const bool byKey : {false, true}) {
        view->events.clear();
        openings = closings = 0;
        EXPECT_TRUE(goThrough(
            {{atOnce,
              [this] {
                  movePointer(onScreen(100, 80));
                  xdotool({"mousedown", "1"});
              }},
             {[] { return openMenu() != nullptr; },
              [&] {
                  mouse(QEvent::MouseMove, {150, 90}, Qt::NoButton, Qt::LeftButton);
                  mouse(QEvent::MouseButtonRelease, {150, 90}, Qt::LeftButton, Qt::NoButton);
                  mouse(QEvent::MouseMove, {20, 20}, Qt::NoButton, Qt::NoButton);
                  EXPECT_TRUE(openMenu());
                  if (byKey) {
                      QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
                      QCoreApplication::sendEvent(view->window(), &escape);
                  } else {
                      mouse(QEvent::MouseButtonPress, {20, 20}, Qt::LeftButton, Qt::LeftButton);
                  }
              }},
             {[this] { return closings == 1; },
              [] {
                  xdotool({"mouseup", "1"});
              }}}));
        EXPECT_EQ(closings, 1);
        EXPECT_EQ(buttonEventsOfView(), 1);
        const auto types = view->eventTypes();
        EXPECT_EQ(std::count(types.begin(), types.end(), EventType::KeyDown), 0);
    }
    EXPECT_EQ(chosen, nothing);
    EXPECT_NO_GL_ERROR();
}
