// What two windows show of their document after every operation, without any further event.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/ElasticModel.h"
#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/Compositor.h"
#include "tests/support/WindowTest.h"

#include <functional>
#include <optional>
#include <vector>

namespace {

using namespace kelo;
using kelo::test::displayIsSettled;
using kelo::test::letPass;
using kelo::test::waitUntil;

/// The treatment view in a window of its own that counts its frames.
class CountingView : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;
    void drawRect(const Rect &dirtyRect) override
    {
        ++frames;
        DXOpenGL::drawRect(dirtyRect);
    }
    int frames = 0;
};

struct Window
{
    explicit Window(int x, const std::shared_ptr<DXDocumentModel> &document)
    {
        view->setDocumentModel(document);
        view->createContainer(&top)->resize(size);
        top.resize(size);
        top.move(x, 0);
        top.show();
    }
    /// Whether the screen has the picture that the view draws now.
    bool isUpToDate()
    {
        const QImage drawn = view->grabImage().convertToFormat(QImage::Format_RGB32);
        const QImage shown =
            kelo::test::screenshotOf(*view->window()).convertToFormat(QImage::Format_RGB32);
        return drawn.size() == shown.size() && drawn == shown;
    }

    static constexpr QSize size{400, 300};
    std::shared_ptr<CountingView> view =
        makeView<CountingView>(Rect{{0.0, 0.0}, {double(size.width()), double(size.height())}});
    QWidget top;
};

class ChangesOnScreen : public testing::Test
{
protected:
    ChangesOnScreen()
    {
        document->setAvailableElasticsSizeTypes(
            {{1, sizeOfColor(1, 1.0, 0.0)}, {2, sizeOfColor(2, 0.0, 1.0)}});
        // Faces that look the same way are told apart by their colours only.
        paint(document->bracketModels(), Color(1.0, 0.0, 0.0));
        paint(document->buttonModels(), Color(0.0, 0.5, 0.0));
        elastic = std::make_shared<ElasticModel>(nullptr, size(1),
                                                 std::vector<std::string>{"7", "8", "9"});
        auto blue = std::make_shared<BracketColorType>();
        blue->typeID = 1;
        blue->bracketColor = {0.0, 0.0, 1.0, 1.0};
        document->setAvailableBracketColorTypes({{1, blue}});
    }

    /// One from the front, one from behind, where the buttons are; both edit today's treatment.
    void openWindows()
    {
        front.emplace(0, document);
        behind.emplace(500, document);
        const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
        for (Window *window : windows()) {
            window->view->setCurrentDate(today);
            window->view->setDisplayedDate(today);
        }
        behind->view->setWorldRotationAngle_axis(90.0, 1.0, 0.0, 0.0);
        ASSERT_TRUE(waitUntil([this] {
            return front->view->isExposed() && behind->view->isExposed() && bothAreUpToDate();
        }));
        // The window manager may still move and size the windows.
        ASSERT_TRUE(displayIsSettled());
        ASSERT_TRUE(waitUntil([this] { return bothAreUpToDate(); }));
    }

    static void paint(const DXDocumentModel::Models &models, const Color &color)
    {
        for (const auto &[key, model] : models)
            model->setMaterial(HVOGLMaterial::materialWithColor(color));
    }

    std::vector<Window *> windows() { return {&*front, &*behind}; }
    bool bothAreUpToDate() { return front->isUpToDate() && behind->isUpToDate(); }

    static std::shared_ptr<ElasticsSizeType> sizeOfColor(long typeID, double red, double green)
    {
        auto size = std::make_shared<ElasticsSizeType>();
        size->typeID = typeID;
        size->elasticsColor = {red, green, 0.0, 1.0};
        return size;
    }
    std::shared_ptr<ElasticsSizeType> size(long typeID) const
    {
        return document->availableElasticsSizeTypes().at(typeID);
    }
    static MenuItem rowFor(const std::any &representedObject)
    {
        MenuItem row;
        row.representedObject = representedObject;
        return row;
    }

    struct Operation
    {
        const char *name;
        std::function<void()> act;
    };
    std::vector<Operation> operationsOfTheDocument();
    std::vector<Operation> operationsOfTheView();

    /// After every operation at least one picture is another one, and the screen has both.
    void expectToSee(const std::vector<Operation> &operations)
    {
        for (const Operation &operation : operations) {
            const QImage frontBefore = front->view->grabImage();
            const QImage behindBefore = behind->view->grabImage();
            operation.act();
            EXPECT_TRUE(waitUntil([this] { return bothAreUpToDate(); }, 3000)) << operation.name;
            EXPECT_TRUE(front->view->grabImage() != frontBefore ||
                        behind->view->grabImage() != behindBefore)
                << operation.name << " changes nothing that can be seen";
        }
    }

    kelo::test::TestSurface surface{SurfaceKind::Window};
    std::shared_ptr<DXDocumentModel> document = kelo::test::boxDocument();
    std::shared_ptr<ElasticModel> elastic;
    std::optional<Window> front;
    std::optional<Window> behind;
};

std::vector<ChangesOnScreen::Operation> ChangesOnScreen::operationsOfTheDocument()
{
    using Elements = DXDocumentModel::ElasticModels;
    return {
        {"remove a bracket", [this] { document->toggleVisibilityOfBracket("8"); }},
        {"place a bracket", [this] { document->toggleVisibilityOfBracket("8"); }},
        {"remove a button", [this] { document->toggleVisibilityOfButton("8l"); }},
        {"place a button", [this] { document->toggleVisibilityOfButton("8l"); }},
        {"remove a tooth", [this] { document->toggleVisibilityOfTooth("8"); }},
        {"place a tooth", [this] { document->toggleVisibilityOfTooth("8"); }},
        {"colour a bracket", [this] { document->bracket_setColorWithBracketColorTypeID("8", 1); }},
        {"restore colours",
         [this] {
             document->setBracketColorTypeIDs({{"8", std::nullopt}});
         }},
        {"restore teeth",
         [this] {
             document->setToothVisibilities({{"9", false}});
         }},
        {"restore all teeth",
         [this] {
             document->setToothVisibilities({{"9", true}});
         }},
        {"restore brackets",
         [this] {
             document->setBracketVisibilities({{"9", false}});
         }},
        {"show and colour a bracket",
         [this] { document->bracket_makeVisibleAndSetColorWithBracketColorTypeID("9", 1); }},
        {"restore buttons",
         [this] {
             document->setButtonVisibilities({{"9l", false}});
         }},
        {"place an elastic", [this] { document->placeElasticModel(elastic); }},
        {"recolour an elastic",
         [this] { document->elasticModel_setElasticsSizeType(elastic, size(2)); }},
        {"shorten an elastic", [this] { document->toggleVisibilityOfBracket("9"); }},
        {"remove an elastic", [this] { document->removeElasticModel(elastic); }},
        {"restore elastics", [this] { document->setElasticModels(Elements{elastic}); }},
        {"restore no elastics", [this] { document->setElasticModels(Elements{}); }},
        {"change the list",
         [this] {
             document->elasticModels().push_back(elastic);
             document->postDocumentModelChangedNotification();
         }},
        {"change a mesh",
         [this] {
             document->toothModels().at("8")->setMaterial(
                 HVOGLMaterial::materialWithColor(Color(1.0, 0.0, 0.0)));
         }},
    };
}

std::vector<ChangesOnScreen::Operation> ChangesOnScreen::operationsOfTheView()
{
    DXOpenGL *view = front->view.get();
    const auto configuration = std::make_shared<ElasticsConfigType>();
    configuration->typeLabel = "Across";
    configuration->bracketSequence = "7,8";
    const auto start = [this, view](const std::string &key) {
        view->setFirstClickedToothName(key);
        view->setLastClickedToothName(key);
        MenuItem row = rowFor(size(1));
        view->startElasticColorMenuItemSelected(row);
    };
    const auto act = [view](void (DXOpenGL::*operation)(MenuItem &), MenuItem row) {
        return [=]() mutable { (view->*operation)(row); };
    };
    const auto press = [view](const std::string &key) {
        const auto identifier = view->documentModel()->bracketModels().at(key)->uniqueID();
        const auto pixels = view->pickIdentifiers();
        const auto found = std::find(pixels.begin(), pixels.end(), identifier) - pixels.begin();
        Event event;
        event.type = EventType::LeftMouseDown;
        const auto width = static_cast<std::ptrdiff_t>(view->deviceSize().width);
        event.locationInWindow = {static_cast<double>(found % width),
                                  static_cast<double>(found / width) + 1.0};
        view->elasticsMouseDown(event);
    };
    return {
        {"start an elastic", [=] { start("7"); }},
        {"go on with it", [=] { press("8"); }},
        {"give it up", [view] { view->endElasticPlacement(); }},
        {"start another", [=] { start("7"); }},
        {"string it", [=] { press("9"); }},
        {"close it", [=] { press("7"); }},
        {"recolour all", act(&DXOpenGL::markAllElasticsSelected, rowFor(size(2)))},
        {"remove all", act(&DXOpenGL::removeAllElasticsSelected, {})},
        {"place a configuration",
         act(&DXOpenGL::placeSelectedElasticsConfigType, rowFor(configuration))},
        {"remove a bracket and its elastic",
         [=, this] { document->toggleVisibilityOfBracket("7"); }},
        {"place a configuration whose bracket is hidden",
         act(&DXOpenGL::placeSelectedElasticsConfigType, rowFor(configuration))},
        {"remove all brackets", act(&DXOpenGL::removeAllBracketsSelected, {})},
        {"place all brackets", act(&DXOpenGL::placeAllBracketsSelected,
                                   rowFor(document->availableBracketColorTypes().at(1)))},
        {"approve", [view] { view->setApprovedDate(QDateTime(QDate(2026, 11, 20), QTime(0, 0))); }},
        {"take the approval back", [view] { view->setApprovedDate({}); }},
        {"leave the gums out", [view] { view->setShowsScenePart(ScenePart::Gums, false); }},
        {"show another date",
         [view] { view->setDisplayedDate(QDateTime(QDate(2026, 11, 19), QTime(0, 0))); }},
    };
}

TEST_F(ChangesOnScreen, everyChangeOfTheDocumentIsSeenInBothOfItsViews)
{
    openWindows();
    expectToSee(operationsOfTheDocument());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ChangesOnScreen, everyActionInOneViewIsSeenInBoth)
{
    openWindows();
    expectToSee(operationsOfTheView());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ChangesOnScreen, everyChangeIsSeenUnderACompositorToo)
{
    const kelo::test::Compositor compositor;
    ASSERT_TRUE(compositor.isRunning());
    openWindows();
    expectToSee(operationsOfTheDocument());
    document->setElasticModels(DXDocumentModel::ElasticModels());
    document->setBracketVisibilities({{"7", true}, {"8", true}, {"9", true}});
    ASSERT_TRUE(waitUntil([this] { return bothAreUpToDate(); }));
    expectToSee(operationsOfTheView());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ChangesOnScreen, aViewOfAnotherDocumentIsNotDrawn)
{
    openWindows();
    behind->view->setDocumentModel(kelo::test::boxDocument());
    ASSERT_TRUE(waitUntil([this] { return bothAreUpToDate(); }));
    ASSERT_TRUE(displayIsSettled());
    const int framesBefore = behind->view->frames;
    for (const Operation &operation : operationsOfTheDocument()) {
        operation.act();
        EXPECT_TRUE(waitUntil([this] { return front->isUpToDate(); }, 3000)) << operation.name;
        EXPECT_FALSE(behind->view->needsDisplay()) << operation.name;
    }
    letPass(50); // a frame would come within 5 ms
    EXPECT_EQ(behind->view->frames, framesBefore);
    EXPECT_NO_GL_ERROR();
}

} // namespace
