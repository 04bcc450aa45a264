// Option panels and sheets.

#include "keloOpenGL/windows/OptionPanelController.h"
#include "keloOpenGL/windows/SheetController.h"
#include "platform/time/NotificationCenter.h"
#include "tests/keloOpenGL/windows/WindowsFixture.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace {

using namespace kelo;
using kelo::test::interfaceFile;
using kelo::test::Windows;

constexpr Rect screen{{0.0, 0.0}, {1920.0, 1050.0}};
constexpr Size panelSize{200.0, 300.0};

TEST(OptionPanelPlace, itsCornerIsFivePointsBesideAndSixBelowTheWindowsTop)
{
    const Point origin = optionPanelOrigin({{100.0, 200.0}, {800.0, 600.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 905.0);
    EXPECT_EQ(origin.y, 200.0 + 600.0 - 6.0 - 300.0);
}

TEST(OptionPanelPlace, aPlaceThatRunsOffTheRightMovesLeftByExactlyTheOverflow)
{
    const Point origin = optionPanelOrigin({{1000.0, 200.0}, {800.0, 600.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 1920.0 - 200.0);
    EXPECT_EQ(origin.y, 494.0);
}

TEST(OptionPanelPlace, aPlaceBelowTheScreensBottomIsRaisedToTheBottomEdge)
{
    const Point origin = optionPanelOrigin({{100.0, 40.0}, {800.0, 200.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 905.0);
    EXPECT_EQ(origin.y, 0.0);
}

TEST(OptionPanelPlace, bothCorrectionsCanApplyAtOnce)
{
    const Rect high{{10.0, 50.0}, {1000.0, 1000.0}};
    const Point origin = optionPanelOrigin({{900.0, 40.0}, {800.0, 200.0}}, panelSize, high);
    EXPECT_EQ(origin.x, 1010.0 - 200.0);
    EXPECT_EQ(origin.y, 50.0);
}

TEST(OptionPanelPlace, aPlaceThatJustFitsStays)
{
    const Point origin = optionPanelOrigin({{915.0, 106.0}, {800.0, 200.0}}, panelSize, screen);
    EXPECT_EQ(origin.x, 1720.0);
    EXPECT_EQ(origin.y, 0.0);
}

class OptionPanels : public Windows
{
protected:
    OptionPanels()
    {
        write("Panel", interfaceFile("Panel"));
        mother.setWindowTitle("A Patient");
        mother.setGeometry(40, 60, 200, 150);
        mother.show();
    }
    std::unique_ptr<OptionPanelController> shownPanel()
    {
        auto panel = std::make_unique<OptionPanelController>("Panel");
        panel->setMotherWindow(&mother);
        panel->showWindow();
        return panel;
    }
    static void closeAll()
    {
        NotificationCenter::defaultCenter().postNotificationName(
            "closeAllOptionPanelsNotification");
    }
    QWidget mother;
};

TEST_F(OptionPanels, aPanelHasTheMotherWindowsTitleAndStandsBesideIt)
{
    const auto panel = shownPanel();
    EXPECT_TRUE(panel->window()->isVisible());
    EXPECT_EQ(panel->window()->windowTitle(), "A Patient");
    const QRect frame = mother.frameGeometry();
    EXPECT_EQ(panel->window()->pos().x(), frame.x() + frame.width() + 5);
    EXPECT_EQ(panel->window()->pos().y(), frame.y() + 6);
}

TEST_F(OptionPanels, aPanelThatWouldLeaveTheScreenIsMovedIntoIt)
{
    // The mother window is in the lower right corner, so the panel has room neither beside it nor
    // below its top.
    const QRect screenRect = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint corner = screenRect.bottomRight() + QPoint(1, 1);
    mother.setGeometry(QRect(corner - QPoint(260, 200), QSize(200, 150)));
    OptionPanelController panel("Panel");
    panel.setMotherWindow(&mother);
    panel.window()->resize(300, 400);
    ASSERT_GT(mother.frameGeometry().right() + 5 + 300, screenRect.right());
    ASSERT_GT(mother.frameGeometry().top() + 6 + 400, screenRect.bottom());
    panel.showWindow();
    // Nobody knows the new panel's frame; it is taken to be the mother window's.
    const QRect outer = mother.frameGeometry();
    const QRect inner = mother.geometry();
    EXPECT_EQ(panel.window()->geometry().right() + (outer.right() - inner.right()),
              screenRect.right());
    EXPECT_EQ(panel.window()->geometry().bottom() + (outer.bottom() - inner.bottom()),
              screenRect.bottom());
}

TEST_F(OptionPanels, aPanelIsMovedOnlyInTheDirectionInWhichItHasNoRoom)
{
    const QRect screenRect = QGuiApplication::primaryScreen()->availableGeometry();
    mother.setGeometry(QRect(screenRect.right() - 259, screenRect.top() + 60, 200, 150));
    const auto panel = [this] {
        auto made = std::make_unique<OptionPanelController>("Panel");
        made->setMotherWindow(&mother);
        made->window()->resize(300, 400);
        made->showWindow();
        return made;
    };
    const QPoint margin = mother.geometry().topLeft() - mother.frameGeometry().topLeft();
    const int rightMargin = mother.frameGeometry().right() - mother.geometry().right();
    const auto atTheRight = panel();
    EXPECT_EQ(atTheRight->window()->geometry().right() + rightMargin, screenRect.right());
    EXPECT_EQ(atTheRight->window()->geometry().top() - margin.y(),
              mother.frameGeometry().top() + 6);
    mother.setGeometry(QRect(screenRect.left() + 40, screenRect.bottom() - 199, 200, 150));
    const int bottomMargin = mother.frameGeometry().bottom() - mother.geometry().bottom();
    const auto atTheBottom = panel();
    EXPECT_EQ(atTheBottom->window()->geometry().left() - margin.x(),
              mother.frameGeometry().right() + 1 + 5);
    EXPECT_EQ(atTheBottom->window()->geometry().bottom() + bottomMargin, screenRect.bottom());
}

TEST_F(OptionPanels, postingCloseAllClosesEveryPanelShownSince)
{
    const auto one = shownPanel();
    const auto other = shownPanel();
    closeAll();
    EXPECT_FALSE(one->window()->isVisible());
    EXPECT_FALSE(other->window()->isVisible());
    EXPECT_TRUE(mother.isVisible());
}

TEST_F(OptionPanels, aPanelThatHasClosedNoLongerReacts)
{
    const auto panel = shownPanel();
    panel->window()->close();
    // Shown by other means than the controller's.
    panel->window()->show();
    closeAll();
    EXPECT_TRUE(panel->window()->isVisible());
    panel->showWindow();
    closeAll();
    EXPECT_FALSE(panel->window()->isVisible());
}

TEST_F(OptionPanels, aPanelThatIsGoneIsNotTold)
{
    auto panel = shownPanel();
    const QPointer<QWidget> window = panel->window();
    panel.reset();
    EXPECT_TRUE(window.isNull());
    closeAll(); // would reach a window that is no more
    EXPECT_TRUE(window.isNull());
}

TEST_F(OptionPanels, anotherWindowsClosingLeavesThePanelListening)
{
    const auto panel = shownPanel();
    panel->windowWillClose(&mother);
    closeAll();
    EXPECT_FALSE(panel->window()->isVisible());
}

// Sheets

TEST_F(Windows, aSheetHoldsUpItsMainWindowUntilItIsDone)
{
    QWidget main;
    main.show();
    SheetController sheet;
    sheet.setWindow(std::make_unique<QWidget>());
    sheet.setMainWindow(&main);
    sheet.startDialog();
    EXPECT_TRUE(sheet.window()->isVisible());
    EXPECT_EQ(sheet.window()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet.window()->windowHandle()->transientParent(), main.windowHandle());
    sheet.doneDialog();
    EXPECT_FALSE(sheet.window()->isVisible());
    EXPECT_EQ(sheet.window()->windowHandle()->transientParent(), nullptr);
}

TEST_F(Windows, doneEndsTheEditing)
{
    QWidget main;
    main.show();
    auto window = std::make_unique<QWidget>();
    auto *line = new QLineEdit(window.get());
    SheetController sheet;
    sheet.setWindow(std::move(window));
    sheet.setMainWindow(&main);
    sheet.startDialog();
    line->setFocus();
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(line, &typed);
    bool hasEnded = false;
    QObject::connect(line, &QLineEdit::editingFinished, [&hasEnded] { hasEnded = true; });
    ASSERT_TRUE(kelo::test::waitUntil([line] { return line->hasFocus(); }));
    sheet.doneDialog();
    EXPECT_NE(sheet.window()->focusWidget(), line);
    EXPECT_TRUE(hasEnded);
}

TEST_F(Windows, aSheetThatHasNotBegunIsDoneWithoutEffect)
{
    SheetController notLoaded("Nowhere");
    notLoaded.doneDialog();
    EXPECT_FALSE(notLoaded.isWindowLoaded());
    SheetController notBegun;
    notBegun.setWindow(std::make_unique<QWidget>());
    notBegun.doneDialog();
    EXPECT_FALSE(notBegun.window()->isVisible());
}

TEST_F(Windows, aSheetOutlivesItsMainWindow)
{
    SheetController sheet;
    sheet.setWindow(std::make_unique<QWidget>());
    {
        QWidget main;
        main.show();
        sheet.setMainWindow(&main);
        sheet.startDialog();
    }
    EXPECT_EQ(sheet.mainWindow(), nullptr);
    sheet.doneDialog();
    EXPECT_FALSE(sheet.window()->isVisible());
}

} // namespace
