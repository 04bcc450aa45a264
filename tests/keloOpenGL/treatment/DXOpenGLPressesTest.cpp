// What a press meets: the tools before the scene, the date label, places without a pixel; what a
// release asks the host for; and the menu key, which is a press of a kind.

#include "keloOpenGL/view/SimpleTexture.h"
#include "tests/keloOpenGL/treatment/ModesFixture.h"
#include "tests/keloOpenGL/treatment/PickFixture.h"

#include <QImage>
#include <QTemporaryDir>

namespace {

using namespace kelo;

constexpr std::uint32_t elasticBit = 0x800000;
constexpr std::uint32_t labelWhite = 0xFFFFFF;

class DXOpenGLPresses : public kelo::test::DXOpenGLModes
{
protected:
    DXOpenGLPresses()
        : previousPresenter(ContextMenuPresenter::setPresenter(
              [this](const std::shared_ptr<Menu> &menu, const Event &, OpenGLView &) {
                  menus.push_back(menu->title());
              }))
    {}
    ~DXOpenGLPresses() override { ContextMenuPresenter::setPresenter(previousPresenter); }

    /// The middle one of the pixels that are picked as this, as a point of the view.
    Point pointOf(std::uint64_t identifier)
    {
        const std::vector<std::uint32_t> picture = view->pickIdentifiers();
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < picture.size(); ++i)
            if (picture[i] == identifier) places.push_back(i);
        EXPECT_FALSE(places.empty()) << std::hex << identifier;
        if (places.empty()) return background;
        const auto width = static_cast<std::size_t>(view->deviceSize().width);
        const std::size_t place = places[places.size() / 2];
        return {static_cast<double>(place % width), static_cast<double>(place / width)};
    }
    /// A pixel of the date label, in the middle at the top, that is picked as something in a range.
    Point pointOfLabel(std::uint32_t first, std::uint32_t last)
    {
        const std::vector<std::uint32_t> picture = view->pickIdentifiers();
        const auto width = static_cast<int>(kelo::test::viewWidth);
        for (int row = 260; row < 285; ++row) {
            for (int column = 150; column < 250; ++column) {
                const std::uint32_t identifier =
                    picture[static_cast<std::size_t>(row * width + column)];
                if (first <= identifier && identifier <= last)
                    return {static_cast<double>(column), static_cast<double>(row)};
            }
        }
        ADD_FAILURE() << "the label shows nothing of it";
        return background;
    }
    Point pointOfBracket(const char *key)
    {
        return pointOf(view->documentModel()->bracketModels().at(key)->uniqueID());
    }
    /// Whether a press here begins a drag that turns the jaws.
    bool pressRotates(const Point &point)
    {
        press(point);
        const bool rotates = view->isRotating();
        const auto rotation = view->worldRotation();
        drag({point.x + 10.0, point.y});
        EXPECT_EQ(view->worldRotation() != rotation, rotates);
        drag(point);
        release(point);
        return rotates;
    }
    void pressMenuKeyAt(const Point &point)
    {
        view->sendEvent(eventAt(EventType::MouseMoved, point.x, point.y));
        pressMenuKey(point);
    }
    void pressMenuKey(const Point &lastPoint)
    {
        Event key = keyEvent(std::u16string(1, FunctionKey::Menu));
        key.locationInWindow = {lastPoint.x, lastPoint.y + 1.0};
        view->sendEvent(key);
    }
    void setControlHeld(bool held)
    {
        Event event;
        event.type = EventType::FlagsChanged;
        event.modifierFlags = held ? ModifierFlag::Control : 0;
        view->sendEvent(event);
    }
    std::shared_ptr<SimpleTexture> pictureOf(int width, int height)
    {
        QImage picture(width, height, QImage::Format_ARGB32);
        picture.fill(Qt::gray);
        const QString path = folder.filePath("picture.png");
        EXPECT_TRUE(picture.save(path));
        view->openGLContext().makeCurrentContext();
        return SimpleTexture::textureWithFile(path.toStdString());
    }

    QTemporaryDir folder;
    std::vector<std::string> menus; ///< titles of those that popped up

private:
    ContextMenuPresenter::Presenter previousPresenter;
};

const std::vector<std::string> noMenus;
const std::vector<std::string> bracketMenu{"BracketColorType Menu"};
const std::vector<std::string> elasticMenu{"ElasticsSizeType Menu"};

// Tools

TEST_F(DXOpenGLPresses, aPressOnThePresentModesToolChangesNothing)
{
    for (const long mode : {5L, 6L}) {
        view->setMouseMode(mode);
        EXPECT_FALSE(pressRotates(
            middleOf(mode == 6 ? view->elasticsToolRect() : view->bracketColorToolRect())));
        EXPECT_EQ(view->mouseMode(), mode);
    }
    EXPECT_EQ(menus, noMenus);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, thePrintButtonWinsOverAToolThatCoversIt)
{
    // Eight times as high as wide: 2 of the view's 2 units.
    view->setElasticsToolTexture(pictureOf(10, 80));
    const Point button = middleOf(view->printButtonRect());
    ASSERT_TRUE(view->elasticsToolRect().contains(
        {(button.x - 200.0) / 150.0, (button.y - 150.0) / 150.0}));
    view->setMouseMode(DXOpenGL::rotateMode);
    click(button);
    EXPECT_EQ(prints, 1);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::rotateMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, aControlPressOnTheElasticsToolIsBackInItsMode)
{
    press(middleOf(view->elasticsToolRect()), ModifierFlag::Control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    release(middleOf(view->elasticsToolRect()));
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theBracketToolPressedWithControlHeldLastsUntilControlIsLetGo)
{
    const Point tool = middleOf(view->bracketColorToolRect());
    press(tool, ModifierFlag::Control);
    release(tool, ModifierFlag::Control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_TRUE(view->mouseModeIsTemporary());
    setControlHeld(false);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, aPressOnAToolInARepeatPeriodKeepsTheTemporaryMode)
{
    view->restartRepeatActionTimer();
    view->setTemporaryMouseMode(DXOpenGL::colorMode);
    press(background);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode)
        << "the period holds the mode though Control is not held";
    release(background);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_NO_GL_ERROR();
}

// Releases

TEST_F(DXOpenGLPresses, aDoubleClickOnAToolAsksForFullScreenToo)
{
    const Point tool = middleOf(view->bracketColorToolRect());
    click(tool);
    press(tool, 0, 2);
    release(tool, 0, 2);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_EQ(fullScreenToggles, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theDragHasEndedBeforeTheHostIsAskedForFullScreen)
{
    bool rotated = true;
    delegate.toggleFullScreenMode = [&](DXOpenGL &asking) { rotated = asking.isRotating(); };
    press(background, 0, 2);
    ASSERT_TRUE(view->isRotating());
    release(background, 0, 2);
    EXPECT_FALSE(rotated);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theReleasedModifiersHaveTakenEffectBeforeThePrint)
{
    const Point button = middleOf(view->printButtonRect());
    long modeWhilePrinting = 0;
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right = [&](auto &&...) {
        modeWhilePrinting = view->mouseMode();
    };
    press(button, ModifierFlag::Control);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    release(button);
    EXPECT_EQ(modeWhilePrinting, 6);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theHostMayCloseTheViewWhenItIsAskedForFullScreen)
{
    delegate.toggleFullScreenMode = [this](DXOpenGL &) { view.reset(); };
    DXOpenGL &closing = *view;
    press(background, 0, 2);
    Event up = eventAt(EventType::LeftMouseUp, background.x, background.y);
    up.clickCount = 2;
    closing.sendEvent(up);
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
}

TEST_F(DXOpenGLPresses, theHostMayCloseTheViewWhenItIsAskedToPrint)
{
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right = [this](auto &&...) {
        view.reset();
    };
    DXOpenGL &closing = *view;
    const Point button = middleOf(view->printButtonRect());
    press(button);
    closing.sendEvent(eventAt(EventType::LeftMouseUp, button.x, button.y));
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
}

// What is picked

TEST_F(DXOpenGLPresses, aPressWhereNoPixelIsHitsNoElasticAndOpensNoMenu)
{
    kelo::test::addElastic(*view->documentModel(), {"7", "8"});
    const Point outside{-5.0, 10.0};
    ASSERT_EQ(view->pickIdentifierAtPoint(outside), 0xABCDEFu);
    EXPECT_FALSE(pressRotates(outside)) << "it reads as an elastic that there is not";
    EXPECT_EQ(view->currentEventElasticIndex(), 0u) << "as it was";
    view->setMouseMode(DXOpenGL::colorMode);
    EXPECT_TRUE(pressRotates(outside)) << "it names no tooth, bracket or button";
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
    view->setMouseMode(DXOpenGL::elasticsMode);
    beginElastic();
    EXPECT_TRUE(pressRotates(outside)) << "elastics cannot be clicked while one is strung";
    EXPECT_EQ(view->bracketSequence(), (std::vector<std::string>{"8"}));
    EXPECT_EQ(menus, noMenus);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, aPressOnTheDateLabelsWhiteHitsNoElasticAndOpensNoMenu)
{
    const Point label = pointOfLabel(labelWhite, labelWhite);
    EXPECT_FALSE(pressRotates(label)) << "white has the bit of an elastic that there is not";
    view->setMouseMode(DXOpenGL::colorMode);
    EXPECT_TRUE(pressRotates(label));
    view->setMouseMode(DXOpenGL::elasticsMode);
    beginElastic();
    EXPECT_TRUE(pressRotates(label));
    view->setMouseMode(DXOpenGL::rotateMode);
    EXPECT_TRUE(pressRotates(label));
    EXPECT_EQ(menus, noMenus);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, aPressOnADarkerPixelOfTheDateLabelIsOneOnTheBackground)
{
    // The rim of the letters: neither black nor white, and no model has such a high identifier.
    const Point rim = pointOfLabel(0x101010, elasticBit - 1);
    for (const long mode : {5L, 6L}) {
        view->setMouseMode(mode);
        EXPECT_TRUE(pressRotates(rim)) << mode;
    }
    EXPECT_EQ(menus, noMenus);
    EXPECT_NO_GL_ERROR();
}

// The menu key

TEST_F(DXOpenGLPresses, theMenuKeyOnABracketOpensTheMenuOfTheMode)
{
    const Point bracket = pointOfBracket("8");
    pressMenuKeyAt(bracket);
    EXPECT_EQ(menus, elasticMenu);
    menus.clear();
    view->setMouseMode(DXOpenGL::colorMode);
    pressMenuKeyAt(bracket);
    EXPECT_EQ(menus, bracketMenu);
    EXPECT_EQ(view->currentEventToothName(), "8");
    menus.clear();
    view->setMouseMode(DXOpenGL::rotateMode);
    pressMenuKeyAt(bracket);
    EXPECT_EQ(menus, noMenus);
    EXPECT_EQ(clock->currentMode(), RunLoopMode::Default) << "a key holds no button";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theMenuKeyOnAnElasticOpensItsMenu)
{
    kelo::test::addElastic(*view->documentModel(), {"7", "8"});
    kelo::test::addElastic(*view->documentModel(), {"9", "10"});
    pressMenuKeyAt(pointOf(elasticBit + 1));
    EXPECT_EQ(menus, elasticMenu);
    EXPECT_EQ(view->currentEventElasticIndex(), 1u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theMenuKeyOnNothingOpensNoMenuAndBeginsNoDrag)
{
    for (const long mode : {5L, 6L}) {
        view->setMouseMode(mode);
        pressMenuKeyAt(background);
        EXPECT_FALSE(view->isRotating());
        const auto rotation = view->worldRotation();
        drag({150.0, 100.0});
        EXPECT_EQ(view->worldRotation(), rotation);
    }
    EXPECT_EQ(menus, noMenus);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theMenuKeyStringsNoElastic)
{
    beginElastic();
    pressMenuKeyAt(pointOfBracket("9"));
    EXPECT_EQ(view->bracketSequence(), (std::vector<std::string>{"8"}));
    EXPECT_EQ(menus, noMenus);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theMenuKeyRepeatsNoAction)
{
    view->setMouseMode(DXOpenGL::colorMode);
    view->restartRepeatActionTimer();
    const Point bracket = pointOfBracket("8");
    const auto material = view->documentModel()->bracketModels().at("8")->material();
    pressMenuKeyAt(bracket);
    EXPECT_EQ(view->documentModel()->bracketModels().at("8")->material(), material);
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(menus, noMenus);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theMenuKeyLeavesADragGoing)
{
    view->setMouseMode(DXOpenGL::colorMode);
    const Point bracket = pointOfBracket("8");
    press(background);
    drag(bracket);
    pressMenuKey(bracket);
    EXPECT_EQ(menus, noMenus);
    EXPECT_TRUE(view->isRotating());
    const auto rotation = view->worldRotation();
    drag({bracket.x - 20.0, bracket.y});
    EXPECT_NE(view->worldRotation(), rotation);
    release(bracket);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLPresses, theMenuKeyOpensNothingWhereThePointerLeftTheView)
{
    view->setMouseMode(DXOpenGL::colorMode);
    pressMenuKey(pointOfBracket("8"));
    EXPECT_EQ(menus, noMenus) << "no pointer has come yet";
    EXPECT_FALSE(view->pointerIsOverView());
    pressMenuKeyAt(pointOfBracket("8"));
    EXPECT_EQ(menus, bracketMenu);
    EXPECT_TRUE(view->pointerIsOverView());
    EXPECT_NO_GL_ERROR();
}

} // namespace
