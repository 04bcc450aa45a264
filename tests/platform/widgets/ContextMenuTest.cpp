#include "platform/time/RunLoop.h"
#include "platform/view/OpenGLView.h"
#include "platform/widgets/NativeMenu.h"
#include "tests/support/LogGuard.h"
#include "tests/support/TestClock.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace kelo;

namespace {

using Names = std::vector<std::string>;

class ClosingDelegate : public MenuDelegate
{
public:
    void menuDidClose(Menu &menu) override
    {
        closed.push_back(menu.title());
        modeAtClose = RunLoop::main().currentMode();
        openAtClose = QApplication::activePopupWidget() != nullptr;
    }
    Names closed;
    RunLoopMode modeAtClose = RunLoopMode::ModalPanel;
    bool openAtClose = true;
};

/// A real run loop, a menu, and a view to pop it up in.
class ContextMenuTest : public testing::Test
{
protected:
    ContextMenuTest() { previousPresenter_ = ContextMenuPresenter::setPresenter({}); }
    ~ContextMenuTest() override { ContextMenuPresenter::setPresenter(previousPresenter_); }

    std::shared_ptr<MenuItem> addRow(const std::string &title)
    {
        return menu->addItemWithTitle_actionName_action(
            title, "choose:", [this](MenuItem &item) { ran.push_back(item.title); });
    }
    /// What a platform without a screen says when a menu pops up.
    static void announcePopUpWarnings()
    {
        if (QGuiApplication::platformName() != QLatin1String("offscreen")) return;
        test::expectQtWarning("This plugin does not support raise()");
        test::expectQtWarning("This plugin does not support grabbing the keyboard");
    }
    /// Pops the menu up and does `whileOpen` with the native menu.
    void popUp(const std::function<void(QMenu &)> &whileOpen)
    {
        RunLoop::main().performSoon([&] {
            auto *native = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_NE(native, nullptr);
            modeWhileOpen = RunLoop::main().currentMode();
            whileOpen(*native);
            native->close();
        });
        announcePopUpWarnings();
        ContextMenuPresenter::popUpContextMenu(menu, {}, view);
    }

    test::MainRunLoop realClock{nullptr};
    OpenGLView view{Rect{{0.0, 0.0}, {100.0, 80.0}}};
    std::shared_ptr<Menu> menu = std::make_shared<Menu>("menu");
    Names ran;
    RunLoopMode modeWhileOpen = RunLoopMode::Default;

private:
    ContextMenuPresenter::Presenter previousPresenter_;
};

std::shared_ptr<const QImage> imageOf(const QColor &color, int side, int pixelsPerPoint)
{
    auto image = std::make_shared<QImage>(side * pixelsPerPoint, side * pixelsPerPoint,
                                          QImage::Format_ARGB32_Premultiplied);
    image->fill(color);
    image->setDevicePixelRatio(pixelsPerPoint);
    return image;
}

/// What a native menu looks like.
QImage pictureOf(QMenu &native)
{
    native.resize(native.sizeHint());
    return native.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The smallest rectangle with all pixels of a colour.
QRect placeOf(const QColor &color, const QImage &picture)
{
    QRect place;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == color) place |= QRect(x, y, 1, 1);
    return place;
}

/// How many pixels of a rectangle have another colour than its top left one.
int marksIn(const QRect &rect, const QImage &picture)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += picture.pixel(x, y) != picture.pixel(rect.topLeft());
    return count;
}

/// What lies between a menu's left edge and a row's image.
QRect leftOf(const QRect &image)
{
    constexpr int frame = 4;
    return QRect(QPoint(frame, image.top()), QPoint(image.left() - 2, image.bottom()));
}

/// What Return does on a row.
void choose(QMenu &native, int row)
{
    native.setActiveAction(native.actions().at(row));
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(&native, &press);
}

} // namespace

TEST_F(ContextMenuTest, thePresenterGetsTheMenuAfterItsUpdate)
{
    class Forbidding : public MenuDelegate
    {
        bool validateMenuItem(MenuItem &) override { return false; }
    } delegate;
    menu->delegate = &delegate;
    addRow("a");
    Event event;
    event.locationInWindow = {3.0, 4.0};
    bool enabled = true;
    Point location;
    ContextMenuPresenter::setPresenter(
        [&](const std::shared_ptr<Menu> &shown, const Event &cause, OpenGLView &in) {
            EXPECT_EQ(shown, menu);
            EXPECT_EQ(&in, &view);
            enabled = shown->items().front()->enabled;
            location = cause.locationInWindow;
        });
    ContextMenuPresenter::popUpContextMenu(menu, event, view);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(location, (Point{3.0, 4.0}));
}

TEST_F(ContextMenuTest, aNativeMenuShowsTitlesStatesImagesAndSeparators)
{
    auto image = std::make_shared<QImage>(24, 24, QImage::Format_ARGB32);
    image->fill(Qt::red);
    addRow("Place Tooth")->image = image;
    menu->addItem(MenuItem::separatorItem());
    const auto checked = addRow("checked");
    checked->state = MenuItemState::On;
    checked->enabled = false;
    QMenu native;
    fillNativeMenu(native, *menu);
    const auto actions = native.actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), QStringLiteral("Place Tooth"));
    EXPECT_EQ(actions[0]->icon().pixmap(24, 24).toImage().pixelColor(12, 12), QColor(Qt::red));
    EXPECT_TRUE(actions[0]->isIconVisibleInMenu());
    EXPECT_TRUE(actions[0]->isEnabled());
    EXPECT_FALSE(actions[0]->isCheckable());
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_TRUE(actions[2]->isChecked());
    EXPECT_FALSE(actions[2]->isEnabled());
    EXPECT_EQ(itemOfAction(actions[2]), checked);
    EXPECT_EQ(itemOfAction(actions[1]), nullptr);
    EXPECT_EQ(itemOfAction(nullptr), nullptr);
}

TEST_F(ContextMenuTest, everyImageIsShownAtItsOwnSizeInPoints)
{
    addRow("one")->image = imageOf(Qt::red, 24, 2);
    addRow("all")->image = imageOf(Qt::blue, 29, 2);
    auto submenu = std::make_shared<Menu>("sub");
    addRow("more")->submenu = submenu;
    auto inner = std::make_shared<MenuItem>();
    inner->title = "inner";
    inner->image = imageOf(Qt::green, 24, 3);
    submenu->addItem(inner);
    QMenu native;
    fillNativeMenu(native, *menu);
    const QImage picture = pictureOf(native);
    const QRect red = placeOf(Qt::red, picture);
    const QRect blue = placeOf(Qt::blue, picture);
    EXPECT_EQ(red.size(), QSize(24, 24));
    EXPECT_EQ(blue.size(), QSize(29, 29));
    EXPECT_NEAR(red.center().x(), blue.center().x(), 1) << "they stand in one column";
    EXPECT_LT(red.bottom(), blue.top());
    QMenu &nativeSubmenu = *native.actions().back()->menu();
    EXPECT_EQ(placeOf(Qt::green, pictureOf(nativeSubmenu)).size(), QSize(24, 24));
}

TEST_F(ContextMenuTest, aCheckedRowWithAnImageShowsACheckMarkBesideIt)
{
    addRow("checked")->image = imageOf(Qt::red, 24, 2);
    menu->items().back()->state = MenuItemState::On;
    addRow("unchecked")->image = imageOf(Qt::blue, 24, 2);
    QMenu native;
    fillNativeMenu(native, *menu);
    const QImage picture = pictureOf(native);
    const QRect red = placeOf(Qt::red, picture);
    const QRect blue = placeOf(Qt::blue, picture);
    EXPECT_EQ(red.size(), QSize(24, 24)) << "the mark is not on the image";
    EXPECT_EQ(red.left(), blue.left());
    ASSERT_GT(leftOf(red).width(), 10);
    EXPECT_GT(marksIn(leftOf(red), picture), 10);
    EXPECT_EQ(marksIn(leftOf(blue), picture), 0);
}

TEST_F(ContextMenuTest, withoutACheckedImageThereIsNoRoomForCheckMarks)
{
    addRow("a")->image = imageOf(Qt::red, 24, 2);
    QMenu native;
    fillNativeMenu(native, *menu);
    EXPECT_LT(placeOf(Qt::red, pictureOf(native)).left(), 10);
}

TEST_F(ContextMenuTest, theActiveRowsHighlightReachesUnderItsCheckMark)
{
    addRow("checked")->image = imageOf(Qt::red, 24, 2);
    menu->items().back()->state = MenuItemState::On;
    QMenu native;
    fillNativeMenu(native, *menu);
    const QImage passive = pictureOf(native);
    native.setActiveAction(native.actions().front());
    const QImage active = pictureOf(native);
    const QRect red = placeOf(Qt::red, active);
    ASSERT_EQ(red, placeOf(Qt::red, passive));
    const QColor highlight = native.palette().color(QPalette::Highlight);
    const QPoint left(6, red.top() + 3);
    const QPoint right(active.width() - 7, red.top() + 3);
    EXPECT_EQ(active.pixelColor(left), highlight);
    EXPECT_EQ(active.pixelColor(right), highlight);
    EXPECT_NE(passive.pixelColor(left), highlight);
    EXPECT_GT(marksIn(leftOf(red).adjusted(2, 2, 0, -2), active), 10);
}

TEST_F(ContextMenuTest, anIndentedRowStartsWithTwoEmSpacesALevel)
{
    addRow("Red")->indentationLevel = 2;
    QMenu native;
    fillNativeMenu(native, *menu);
    EXPECT_EQ(native.actions().front()->text().toStdU16String(), u"\u2003\u2003\u2003\u2003Red");
}

TEST_F(ContextMenuTest, aShownTitleIsShownInTheTitlesPlace)
{
    addRow("Remove Tooth")->shownTitle = "Zahn entfernen";
    QMenu native;
    fillNativeMenu(native, *menu);
    EXPECT_EQ(native.actions().front()->text(), QStringLiteral("Zahn entfernen"));
    EXPECT_EQ(itemOfAction(native.actions().front())->title, "Remove Tooth");
}

TEST_F(ContextMenuTest, anAmpersandInATitleIsShownAsItIs)
{
    addRow("Light & Heavy");
    QMenu native;
    fillNativeMenu(native, *menu);
    EXPECT_EQ(native.actions().front()->text(), QStringLiteral("Light && Heavy"));
}

TEST_F(ContextMenuTest, aSubmenuBecomesANativeSubmenu)
{
    auto submenu = std::make_shared<Menu>("sub");
    const auto inner = std::make_shared<MenuItem>();
    inner->title = "inner";
    submenu->addItem(inner);
    addRow("outer")->submenu = submenu;
    QMenu native;
    fillNativeMenu(native, *menu);
    const QMenu *nativeSubmenu = native.actions().front()->menu();
    ASSERT_NE(nativeSubmenu, nullptr);
    ASSERT_EQ(nativeSubmenu->actions().size(), 1);
    EXPECT_EQ(itemOfAction(nativeSubmenu->actions().front()), inner);
}

TEST_F(ContextMenuTest, theChosenRowsActionRunsAfterTheMenuHasClosed)
{
    ClosingDelegate delegate;
    menu->delegate = &delegate;
    bool openDuringAction = true;
    addRow("a");
    addRow("b")->action = [&](MenuItem &item) {
        ran.push_back(item.title);
        openDuringAction = QApplication::activePopupWidget() != nullptr;
        EXPECT_TRUE(delegate.closed.empty());
    };
    popUp([](QMenu &native) { choose(native, 1); });
    EXPECT_EQ(ran, (Names{"b"}));
    EXPECT_FALSE(openDuringAction);
    EXPECT_EQ(delegate.closed, (Names{"menu"}));
    EXPECT_FALSE(delegate.openAtClose);
}

TEST_F(ContextMenuTest, theRunLoopTracksEventsWhileTheMenuIsOpen)
{
    ClosingDelegate delegate;
    menu->delegate = &delegate;
    addRow("a");
    popUp([](QMenu &) {});
    EXPECT_EQ(modeWhileOpen, RunLoopMode::EventTracking);
    EXPECT_EQ(delegate.modeAtClose, RunLoopMode::Default);
}

TEST_F(ContextMenuTest, aMenuThatIsDismissedRunsNothingButTellsItsDelegate)
{
    ClosingDelegate delegate;
    menu->delegate = &delegate;
    addRow("a");
    popUp([](QMenu &) {});
    EXPECT_TRUE(ran.empty());
    EXPECT_EQ(delegate.closed, (Names{"menu"}));
}

TEST_F(ContextMenuTest, aDisabledRowCannotBeChosen)
{
    menu->autoenablesItems = false;
    addRow("a")->enabled = false;
    popUp([](QMenu &native) { choose(native, 0); });
    EXPECT_TRUE(ran.empty());
}

TEST_F(ContextMenuTest, timersOfTheTrackingModeFireWhileTheMenuIsOpen)
{
    addRow("a");
    int tracked = 0;
    int untracked = 0;
    const auto both = std::make_shared<Timer>(0.001, true, [&](Timer &timer) {
        if (++tracked < 3) return;
        timer.invalidate();
        if (auto *native = QApplication::activePopupWidget()) native->close();
    });
    RunLoop::main().addTimer(both, RunLoopMode::Default | RunLoopMode::EventTracking);
    const auto other = RunLoop::main().scheduledTimer(0.001, true, [&](Timer &) { ++untracked; });
    announcePopUpWarnings();
    ContextMenuPresenter::popUpContextMenu(menu, {}, view);
    EXPECT_EQ(tracked, 3);
    EXPECT_EQ(untracked, 0);
    other->invalidate();
}
