// The treatment view's menus as the desktop shows them, with a real pointer and keyboard.

#include "document/DXDocumentModel.h"
#include "keloOpenGL/treatment/DXOpenGL.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/WindowTest.h"

#include <QMenu>
#include <QPointer>
#include <QTimer>

namespace {

using namespace kelo;
using kelo::test::displayIsSettled;
using kelo::test::waitUntil;
using kelo::test::xdotool;

constexpr double repeatPeriod = 0.4;

class NativeMenu : public testing::Test
{
protected:
    NativeMenu()
    {
        view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {400.0, 300.0}});
        DXDocumentModel::BracketColorTypes colors;
        for (const auto &[id, color] :
             {std::pair{1L, std::array<double, 4>{1, 0, 0, 1}}, {2L, {0, 0, 1, 1}}}) {
            colors[id] = std::make_shared<BracketColorType>();
            colors[id]->typeID = id;
            colors[id]->displayOrder = id;
            colors[id]->typeLabel = id == 1 ? "Red" : "Blue";
            colors[id]->bracketColor = color;
        }
        document->setAvailableBracketColorTypes(colors);
        for (const auto &[key, bracket] : document->bracketModels())
            bracket->setMaterial(HVOGLMaterial::materialWithColor(Color::whiteColor()));
        view->setDocumentModel(document);
        const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
        view->setCurrentDate(today);
        view->setDisplayedDate(today);
        view->setRepeatActionTimerInterval(repeatPeriod);
        view->setMouseMode(DXOpenGL::elasticsMode);
    }
    ~NativeMenu() override
    {
        xdotool({"keyup", "Control_L", "mouseup", "1", "mouseup", "3"});
        top.reset();
        view.reset();
    }

    void SetUp() override
    {
        top = std::make_unique<QWidget>();
        top->resize(400, 300);
        QWidget *const container = view->createContainer(top.get());
        container->setGeometry(0, 0, 400, 300);
        top->show();
        ASSERT_TRUE(waitUntil([this] { return view->isExposed() && top->isActiveWindow(); }));
        ASSERT_TRUE(xdotool({"keyup", "Control_L", "mouseup", "1", "mouseup", "3"}));
        ASSERT_TRUE(displayIsSettled());
        pointAt("8");
        // The keyboard is the view's once it was clicked; here without a click.
        container->setFocus();
        ASSERT_TRUE(waitUntil([container] { return container->hasFocus(); }));
        ASSERT_TRUE(displayIsSettled());
    }

    /// Moves the real pointer to a pixel that shows the bracket.
    void pointAt(const std::string &key)
    {
        const std::uint64_t identifier = document->bracketModels().at(key)->uniqueID();
        const std::vector<std::uint32_t> picture = view->pickIdentifiers();
        const PixelSize size = view->deviceSize();
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < picture.size(); ++i)
            if (picture[i] == identifier) places.push_back(i);
        ASSERT_FALSE(places.empty());
        const std::size_t place = places[places.size() / 2];
        const auto width = static_cast<std::size_t>(size.width);
        const QPoint global = view->window()->mapToGlobal(QPoint(
            static_cast<int>(place % width), size.height - 1 - static_cast<int>(place / width)));
        ASSERT_TRUE(
            xdotool({"mousemove", QString::number(global.x() - 3), QString::number(global.y()),
                     "mousemove", QString::number(global.x()), QString::number(global.y())}));
        ASSERT_TRUE(waitUntil([this] { return view->pointerIsOverView(); }));
    }

    static QMenu *openMenu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

    /// Does things with the desktop that open a menu, then others while it is open, and waits until
    /// it has closed; where they do not close it, it is closed then.
    void whileOpen(const QStringList &opening, const QStringList &inMenu)
    {
        bool wasOpen = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            if (wasOpen || !openMenu() || !openMenu()->windowHandle()->isExposed()) return;
            wasOpen = true;
            modeWhileOpen = view->mouseMode();
            titles.clear();
            for (const QAction *action : openMenu()->actions())
                titles << action->text();
            // The menu itself: its submenu may be what is in front by then.
            const QPointer<QMenu> menu = openMenu();
            EXPECT_TRUE(xdotool(inMenu));
            EXPECT_TRUE(displayIsSettled());
            if (menu) menu->close();
        });
        watch.start(20);
        ASSERT_TRUE(xdotool(opening));
        ASSERT_TRUE(waitUntil([&] { return wasOpen && !openMenu(); }));
    }
    bool controlIsKnownHeld() const
    {
        return (view->currentModifierFlags() & ModifierFlag::Control) != 0;
    }

    kelo::test::TestSurface surface{SurfaceKind::Window};
    kelo::test::MainRunLoop realClock{nullptr};
    std::shared_ptr<DXDocumentModel> document = kelo::test::boxDocument();
    std::shared_ptr<DXOpenGL> view;
    std::unique_ptr<QWidget> top;
    long modeWhileOpen = 0;
    QStringList titles;
};

TEST_F(NativeMenu, controlThatIsLetGoOverTheMenuEndsTheTemporaryMode)
{
    whileOpen({"keydown", "Control_L", "mousedown", "1"},
              {"mouseup", "1", "keyup", "Control_L", "key", "Escape"});
    EXPECT_EQ(modeWhileOpen, 5) << titles.join(", ").toStdString();
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_FALSE(controlIsKnownHeld());
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
    // What the view believes of the key is right from here on too.
    ASSERT_TRUE(xdotool({"keydown", "Control_L"}));
    EXPECT_TRUE(waitUntil([this] { return view->mouseMode() == 5; }));
    ASSERT_TRUE(xdotool({"keyup", "Control_L"}));
    EXPECT_TRUE(waitUntil([this] { return view->mouseMode() == 6; }));
    EXPECT_NO_GL_ERROR();
}

TEST_F(NativeMenu, controlThatIsStillHeldKeepsTheTemporaryMode)
{
    whileOpen({"keydown", "Control_L", "mousedown", "1"}, {"mouseup", "1"});
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_TRUE(view->mouseModeIsTemporary());
    EXPECT_TRUE(controlIsKnownHeld());
    ASSERT_TRUE(xdotool({"keyup", "Control_L"}));
    EXPECT_TRUE(waitUntil([this] { return view->mouseMode() == 6; }));
    EXPECT_NO_GL_ERROR();
}

TEST_F(NativeMenu, aRowChosenAfterControlBeginsATemporaryRepeatPeriod)
{
    // Down goes to the first row that can be chosen, the submenu; Down again to the first colour.
    whileOpen(
        {"keydown", "Control_L", "mousedown", "1"},
        {"mouseup", "1", "keyup", "Control_L", "key", "Down", "key", "Down", "key", "Return"});
    EXPECT_EQ(titles.size(), 11);
    EXPECT_EQ(document->bracketModels().at("8")->material()->color(), Color(1, 0, 0));
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_TRUE(waitUntil([this] { return !view->repeatActionTimerIsRunning(); }, 3000));
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(NativeMenu, aPeriodEndsThoughThePointerRestsAfterTheChoice)
{
    view->setMouseMode(DXOpenGL::colorMode);
    for (const QString button : {"1", "3"}) {
        whileOpen({"mousedown", button},
                  {"mouseup", button, "key", "Down", "key", "Down", "key", "Return"});
        EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
        EXPECT_TRUE(view->repeatActionTimerIsRunning());
        EXPECT_TRUE(waitUntil([this] { return !view->repeatActionTimerIsRunning(); }, 3000));
        document->bracketModels().at("8")->setMaterial(
            HVOGLMaterial::materialWithColor(Color::whiteColor()));
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(NativeMenu, aButtonHeldWhenTheMenuClosesIsReleasedByItsRelease)
{
    view->setMouseMode(DXOpenGL::colorMode);
    whileOpen({"mousedown", "3"}, {"key", "Escape"});
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::EventTracking);
    ASSERT_TRUE(xdotool({"mouseup", "3"}));
    EXPECT_TRUE(
        waitUntil([] { return RunLoop::main().currentMode() == RunLoopMode::Default; }, 3000));
    EXPECT_NO_GL_ERROR();
}

TEST_F(NativeMenu, theMenuKeyOpensTheMenuAtThePointerAgainAndAgain)
{
    view->setMouseMode(DXOpenGL::colorMode);
    for (int i = 0; i < 2; ++i) {
        whileOpen({"key", "Menu"}, {"key", "Escape"});
        EXPECT_EQ(view->currentEventToothName(), "8");
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(NativeMenu, theMenuKeyOpensNothingWhenThePointerHasLeftTheView)
{
    view->setMouseMode(DXOpenGL::colorMode);
    ASSERT_TRUE(xdotool({"mousemove", "1270", "1010"}));
    ASSERT_TRUE(waitUntil([this] { return !view->pointerIsOverView(); }));
    bool opened = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (!openMenu()) return;
        opened = true;
        openMenu()->close();
    });
    watch.start(20);
    ASSERT_TRUE(xdotool({"key", "Menu"}));
    EXPECT_TRUE(displayIsSettled());
    EXPECT_FALSE(opened);
    EXPECT_NO_GL_ERROR();
}

} // namespace
