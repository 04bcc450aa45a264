#include "tests/keloOpenGL/treatment/HostMatrix.h"

#include "models/HVOGLMaterial.h"

#include <any>
#include <stdexcept>

namespace kelo::test {
namespace {

/// Far more calls than any operation makes, for one that would never end.
constexpr int tooManyCalls = 2000;

const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));

std::shared_ptr<MenuItem> rowWithAction(const Menu &menu, const std::string &selector)
{
    for (const auto &item : menu.items()) {
        if (item->actionName == selector) return item;
        if (!item->submenu) continue;
        if (auto row = rowWithAction(*item->submenu, selector)) return row;
    }
    return nullptr;
}

MenuItem rowFor(const std::any &representedObject)
{
    MenuItem item;
    item.representedObject = representedObject;
    return item;
}

MenuItem colorRow(const MatrixHost &host)
{
    return rowFor(host.document->availableBracketColorTypes().at(1));
}

MenuItem sizeRow(const MatrixHost &host)
{
    return rowFor(host.document->availableElasticsSizeTypes().at(1));
}

void wait(MatrixHost &host)
{
    host.loop.advance(3.5);
}

// What comes before an operation

void nothing(MatrixHost &) {}

void onTooth8(MatrixHost &host)
{
    host.view->setLastClickedToothName("8");
}

void onHiddenTooth8(MatrixHost &host)
{
    onTooth8(host);
    host.document->toggleVisibilityOfTooth("8");
    host.document->toggleVisibilityOfBracket("8");
}

void withHiddenBrackets(MatrixHost &host)
{
    host.document->setBracketVisibilities({{"7", false}, {"8", false}, {"26", false}});
}

/// The last action was done on tooth 6, whose repeat period goes on.
std::function<void(MatrixHost &)> afterAction(void (DXOpenGL::*action)(MenuItem &),
                                              std::function<void(MatrixHost &)> before)
{
    return [action, before](MatrixHost &host) {
        before(host);
        host.view->setMouseMode(DXOpenGL::colorMode);
        host.view->setRepeatActionTimerInterval(100.0);
        host.view->setLastClickedToothName("6");
        MenuItem row = colorRow(host);
        ((*host.view).*action)(row);
    };
}

void stringing(MatrixHost &host)
{
    host.view->setMouseMode(DXOpenGL::elasticsMode);
    host.view->setFirstClickedToothName("8");
    host.view->setLastClickedToothName("8");
    MenuItem row = sizeRow(host);
    host.view->startElasticColorMenuItemSelected(row);
    host.clickAt(host.placeOf("26"));
}

void onFirstElastic(MatrixHost &host)
{
    host.view->setMouseMode(DXOpenGL::elasticsMode);
    host.chooseRow("");
    const auto pixels = host.view->pickIdentifiers();
    const auto width = static_cast<std::size_t>(host.view->deviceSize().width);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (pixels[i] != 0x800000) continue;
        host.clickAt({static_cast<double>(i % width), static_cast<double>(i / width)});
        return;
    }
    ADD_FAILURE() << "the first elastic cannot be seen";
}

void inFullScreen(MatrixHost &host)
{
    host.view->enterFullScreenMode();
}

// Operations

std::function<void(MatrixHost &)> rowAction(void (DXOpenGL::*action)(MenuItem &),
                                            MenuItem (*rowOf)(const MatrixHost &))
{
    return [action, rowOf](MatrixHost &host) {
        MenuItem row = rowOf(host);
        ((*host.view).*action)(row);
    };
}

void clickTooth8(MatrixHost &host)
{
    host.clickAt(host.placeOf("8"));
}

MatrixOperation repeated(const char *name, void (DXOpenGL::*action)(MenuItem &),
                         std::function<void(MatrixHost &)> before = nothing)
{
    return {name, afterAction(action, std::move(before)), clickTooth8};
}

void pressPrintButton(MatrixHost &host)
{
    const Rect button = host.view->printButtonRect();
    const Size size = host.view->bounds().size;
    const double unit = size.height / 2.0; // the overlay is 2 high
    host.clickAt({size.width / 2.0 + unit * (button.origin.x + button.size.width / 2.0),
                  unit * (1.0 + button.origin.y + button.size.height / 2.0)});
}

void pressEscape(MatrixHost &host)
{
    Event key;
    key.type = EventType::KeyDown;
    key.characters = std::u16string(1, FunctionKey::Escape);
    host.view->sendEvent(key);
}

void appendDocumentOperations(std::vector<MatrixOperation> &list)
{
    list.push_back({"toggleTooth", nothing, [](MatrixHost &host) {
                        host.document->toggleVisibilityOfTooth("8");
                        wait(host);
                    }});
    list.push_back({"toggleBracket", nothing, [](MatrixHost &host) {
                        host.document->toggleVisibilityOfBracket("8");
                        wait(host);
                    }});
    list.push_back({"toggleButton", nothing, [](MatrixHost &host) {
                        host.document->toggleVisibilityOfButton("8l");
                        wait(host);
                    }});
    list.push_back({"makeVisible", onHiddenTooth8, [](MatrixHost &host) {
                        host.document->bracket_makeVisibleAndSetColorWithBracketColorTypeID("8", 1);
                    }});
    list.push_back({"updates",
                    [](MatrixHost &host) {
                        host.document->toggleVisibilityOfBracket("8");
                        host.document->toggleVisibilityOfButton("8l");
                    },
                    wait});
    list.push_back({"flushedUpdates",
                    [](MatrixHost &host) {
                        host.document->toggleVisibilityOfBracket("8");
                        host.document->toggleVisibilityOfButton("8l");
                    },
                    [](MatrixHost &host) { host.document->flushOutstandingUpdates(); }});
    list.push_back({"placeElastic", nothing, [](MatrixHost &host) { host.place({"7", "26"}); }});
    list.push_back({"removeElastic", nothing, [](MatrixHost &host) {
                        host.document->removeElasticModel(host.document->elasticModels().front());
                    }});
    list.push_back({"resizeElastic", nothing, [](MatrixHost &host) {
                        host.document->elasticModel_setElasticsSizeType(
                            host.document->elasticModels().front(),
                            host.document->availableElasticsSizeTypes().at(2));
                    }});
    list.push_back({"refactor",
                    [](MatrixHost &host) {
                        host.document->setBracketVisibilities({{"8", false}});
                    },
                    [](MatrixHost &host) { host.document->refactorElasticModels("8"); }});
}

void appendBracketOperations(std::vector<MatrixOperation> &list)
{
    using View = DXOpenGL;
    list.push_back({"colorBracketRow", onHiddenTooth8,
                    rowAction(&View::bracketColorMenuItemSelected, colorRow)});
    list.push_back(
        {"placeBracketRow", onHiddenTooth8, rowAction(&View::placeBracketSelected, colorRow)});
    list.push_back(
        {"removeBracketRow", onTooth8, rowAction(&View::removeBracketSelected, colorRow)});
    list.push_back({"placeButtonRow", onTooth8, rowAction(&View::placeButtonSelected, colorRow)});
    list.push_back({"removeButtonRow", onTooth8, rowAction(&View::removeButtonSelected, colorRow)});
    list.push_back(
        {"placeToothRow", onHiddenTooth8, rowAction(&View::placeToothSelected, colorRow)});
    list.push_back({"removeToothRow", onTooth8, rowAction(&View::removeToothSelected, colorRow)});
    list.push_back({"placeAllBrackets", withHiddenBrackets, [](MatrixHost &host) {
                        MenuItem row = colorRow(host);
                        host.view->placeAllBracketsSelected(row);
                        wait(host);
                    }});
    list.push_back({"markAllBrackets", nothing, [](MatrixHost &host) {
                        MenuItem row = colorRow(host);
                        host.view->markAllBracketsSelected(row);
                        wait(host);
                    }});
    list.push_back(
        {"removeAllBrackets", nothing, rowAction(&View::removeAllBracketsSelected, colorRow)});
    list.push_back({"clearAllBrackets", nothing, [](MatrixHost &host) {
                        MenuItem row;
                        host.view->clearAllBracketsSelected(row);
                        wait(host);
                    }});
    list.push_back(repeated("repeatColor", &View::bracketColorMenuItemSelected, onHiddenTooth8));
    list.push_back(repeated("repeatPlaceBracket", &View::placeBracketSelected, withHiddenBrackets));
    list.push_back(repeated("repeatRemoveBracket", &View::removeBracketSelected));
    list.push_back(repeated("repeatPlaceButton", &View::placeButtonSelected, [](MatrixHost &host) {
        host.document->setButtonVisibilities({{"6l", false}, {"8l", false}});
    }));
    list.push_back(repeated("repeatRemoveButton", &View::removeButtonSelected));
    list.push_back(repeated("repeatPlaceTooth", &View::placeToothSelected, [](MatrixHost &host) {
        host.document->setToothVisibilities({{"6", false}, {"8", false}});
    }));
    list.push_back(repeated("repeatRemoveTooth", &View::removeToothSelected));
    list.push_back({"rowOfTheBracketMenu",
                    [](MatrixHost &host) { host.view->setMouseMode(DXOpenGL::colorMode); },
                    [](MatrixHost &host) {
                        host.chooseRow("removeBracketSelected:");
                        clickTooth8(host);
                    }});
}

void appendElasticOperations(std::vector<MatrixOperation> &list)
{
    using View = DXOpenGL;
    list.push_back(
        {"finishStringing", stringing, [](MatrixHost &host) { host.view->finishOperations(); }});
    list.push_back({"closeByClick", stringing, clickTooth8});
    list.push_back({"placeConfiguration", withHiddenBrackets, [](MatrixHost &host) {
                        MenuItem row = rowFor(host.configuration);
                        host.view->placeSelectedElasticsConfigType(row);
                    }});
    list.push_back({"placeConfigurationAgain",
                    [](MatrixHost &host) {
                        host.place({"7", "26"});
                    },
                    [](MatrixHost &host) {
                        MenuItem row = rowFor(host.configuration);
                        host.view->placeSelectedElasticsConfigType(row);
                    }});
    list.push_back({"colorElasticRow", onFirstElastic,
                    rowAction(&View::updateElasticColorMenuItemSelected, sizeRow)});
    list.push_back(
        {"markAllElastics", nothing, rowAction(&View::markAllElasticsSelected, sizeRow)});
    list.push_back(
        {"removeElasticRow", onFirstElastic, rowAction(&View::removeElasticSelected, sizeRow)});
    list.push_back(
        {"removeAllElastics", nothing, rowAction(&View::removeAllElasticsSelected, sizeRow)});
    list.push_back(
        {"nameElastic", onFirstElastic, rowAction(&View::nameSelectedElasticsModel, sizeRow)});
    list.push_back({"nameElasticInFullScreen",
                    [](MatrixHost &host) {
                        onFirstElastic(host);
                        inFullScreen(host);
                    },
                    rowAction(&View::nameSelectedElasticsModel, sizeRow)});
    list.push_back({"rowOfTheElasticMenu", onFirstElastic, [](MatrixHost &host) {
                        host.chooseRow("removeAllElasticsSelected:");
                        clickTooth8(host);
                    }});
}

void appendViewOperations(std::vector<MatrixOperation> &list)
{
    list.push_back({"doubleClick",
                    [](MatrixHost &host) { host.view->setMouseMode(DXOpenGL::rotateMode); },
                    [](MatrixHost &host) { host.clickAt(host.placeOf("8"), 2); }});
    list.push_back({"escape", inFullScreen, pressEscape});
    list.push_back({"printButton", nothing, pressPrintButton});
    list.push_back({"print", nothing, [](MatrixHost &host) { host.view->submitPrintRequest(); }});
    list.push_back({"printInFullScreen", inFullScreen,
                    [](MatrixHost &host) { host.view->submitPrintRequest(); }});
}

// Reactions

void dropView(MatrixHost &host)
{
    host.view.reset();
}

void dropDocument(MatrixHost &host)
{
    if (host.view) host.view->setDocumentModel(nullptr);
    host.document.reset();
}

void dropDelegates(MatrixHost &host)
{
    if (host.document) host.document->setDelegate(nullptr);
    if (host.view) host.view->setDelegate(nullptr);
    host.documentDelegate.reset();
    host.viewDelegate.reset();
}

void clearDocument(MatrixHost &host)
{
    if (!host.document) return;
    host.document->setElasticModels(DXDocumentModel::ElasticModels());
    host.document->setToothModels({});
    host.document->setBracketModels({});
    host.document->setButtonModels({});
    host.document->setBracketColorTypeIDs({});
    host.document->setAvailableBracketColorTypes({});
    host.document->setAvailableElasticsSizeTypes({});
    host.document->setAvailableElasticsConfigTypes({});
}

void showOtherDocument(MatrixHost &host)
{
    if (host.document) host.document->setDelegate(nullptr);
    host.document = boxDocument();
    if (host.view) host.view->setDocumentModel(host.document);
}

void removeElastics(MatrixHost &host)
{
    while (host.document && !host.document->elasticModels().empty())
        host.document->removeElasticModel(host.document->elasticModels().front());
}

void placeElastic(MatrixHost &host)
{
    if (host.document && host.document->bracketModels().contains("9")) host.place({"9", "10"});
}

} // namespace

MatrixHost::MatrixHost(VirtualRunLoop &runLoop)
    : loop(runLoop),
      document(boxDocument()),
      view(makeView<DXOpenGL>(Rect{{0.0, 0.0}, {160.0, 120.0}})),
      documentDelegate(std::make_unique<DXDocumentModelDelegate>()),
      viewDelegate(std::make_unique<DXOpenGLDelegate>()),
      configuration(std::make_shared<ElasticsConfigType>()),
      keptPresenter_(ContextMenuPresenter::setPresenter(
          [](const std::shared_ptr<Menu> &, const Event &, OpenGLView &) {}))
{
    auto color = std::make_shared<BracketColorType>();
    color->typeID = 1;
    color->bracketColor = {1.0, 0.0, 0.0, 1.0};
    document->setAvailableBracketColorTypes({{1, color}});
    auto small = std::make_shared<ElasticsSizeType>();
    small->typeID = 1;
    auto large = std::make_shared<ElasticsSizeType>();
    large->typeID = 2;
    document->setAvailableElasticsSizeTypes({{1, small}, {2, large}});
    configuration->typeLabel = "Class II";
    configuration->bracketSequence = "7,26";
    document->setAvailableElasticsConfigTypes({configuration});
    place({"8", "9", "25"});
    place({"8", "8l", "9"});
    place({"11", "22"});
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    view->setDocumentModel(document);
}

MatrixHost::~MatrixHost()
{
    ContextMenuPresenter::setPresenter(keptPresenter_);
    dropDelegates(*this);
}

void MatrixHost::reactTo(int call, std::function<void(MatrixHost &)> reaction)
{
    reactingCall_ = call;
    reaction_ = std::move(reaction);
    const auto told = [this](const auto &...) { wasTold(); };
    documentDelegate->tooth_visibilityDidChange = told;
    documentDelegate->bracket_visibilityDidChange = told;
    documentDelegate->button_visibilityDidChange = told;
    documentDelegate->bracketUpdatesAvailable = told;
    documentDelegate->buttonUpdatesAvailable = told;
    documentDelegate->elasticModelPlaced = told;
    documentDelegate->elasticModelRemoved = told;
    documentDelegate->elasticModelColorDidChange = told;
    documentDelegate->elasticModelsRefactoredAroundBrackets = told;
    viewDelegate->DXOpenGL_willUpdateDocumentModel = told;
    viewDelegate->DXOpenGL_didUpdateDocumentModel = told;
    viewDelegate->toggleFullScreenMode = told;
    viewDelegate->printImagesLeft_front_right_forDate_elasticsLeft_front_right = told;
    viewDelegate->launchElasticsConfigAssociationSheetWithElasticModel_namingAction = told;
    viewDelegate->mayPlaceAgain = [this](const auto &) {
        wasTold();
        return true;
    };
    document->setDelegate(documentDelegate.get());
    view->setDelegate(viewDelegate.get());
}

void MatrixHost::wasTold()
{
    if (++calls > tooManyCalls) throw std::runtime_error("the operation does not end");
    if (!reaction_ || (reactingCall_ != 0 && reactingCall_ != calls)) return;
    // The reaction ignores what it causes itself.
    const auto reaction = std::exchange(reaction_, nullptr);
    reaction(*this);
    if (reactingCall_ == 0) reaction_ = reaction;
}

std::shared_ptr<ElasticModel> MatrixHost::place(const std::vector<std::string> &sequence) const
{
    auto elastic = std::make_shared<ElasticModel>(nullptr, nullptr, sequence);
    document->placeElasticModel(elastic);
    return elastic;
}

void MatrixHost::clickAt(const Point &point, int clickCount) const
{
    // As the platform does it: it holds no reference, and forgets a view that ends.
    OpenGLView *const clicked = view.get();
    const std::weak_ptr<DXOpenGL> watched = view;
    Event event;
    event.locationInWindow = {point.x, point.y + 1.0};
    event.clickCount = clickCount;
    for (const EventType type : {EventType::LeftMouseDown, EventType::LeftMouseUp}) {
        event.type = type;
        if (!watched.expired()) clicked->sendEvent(event);
    }
}

Point MatrixHost::placeOf(const std::string &toothKey) const
{
    const auto tooth = document->toothModels().at(toothKey)->uniqueID();
    const auto bracket = document->bracketModels().at(toothKey)->uniqueID();
    const auto pixels = view->pickIdentifiers();
    const auto width = static_cast<std::size_t>(view->deviceSize().width);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (pixels[i] == tooth || pixels[i] == bracket)
            return {static_cast<double>(i % width), static_cast<double>(i / width)};
    }
    ADD_FAILURE() << "tooth " << toothKey << " cannot be seen";
    return {};
}

void MatrixHost::chooseRow(const std::string &selector)
{
    ContextMenuPresenter::setPresenter(
        [selector](const std::shared_ptr<Menu> &menu, const Event &, OpenGLView &) {
            menu->close(rowWithAction(*menu, selector));
        });
}

const std::vector<MatrixOperation> &matrixOperations()
{
    static const std::vector<MatrixOperation> operations = [] {
        std::vector<MatrixOperation> all;
        appendDocumentOperations(all);
        appendBracketOperations(all);
        appendElasticOperations(all);
        appendViewOperations(all);
        return all;
    }();
    return operations;
}

const std::vector<MatrixReaction> &matrixReactions()
{
    static const std::vector<MatrixReaction> reactions{
        {"drops the view", dropView},
        {"drops the view and then the view's delegate",
         [](MatrixHost &host) {
             dropView(host);
             host.viewDelegate.reset();
         }},
        {"drops the document", dropDocument},
        {"drops its own reference to the document",
         [](MatrixHost &host) { host.document.reset(); }},
        {"drops the delegates", dropDelegates},
        {"drops everything",
         [](MatrixHost &host) {
             dropDelegates(host);
             dropView(host);
             dropDocument(host);
         }},
        {"clears the document", clearDocument},
        {"clears the document and drops the view",
         [](MatrixHost &host) {
             clearDocument(host);
             dropView(host);
         }},
        {"shows another document", showOtherDocument},
        {"places an elastic", placeElastic},
        {"places an elastic and drops the view",
         [](MatrixHost &host) {
             placeElastic(host);
             dropView(host);
         }},
        {"removes the elastics", removeElastics},
        {"finishes what is being strung",
         [](MatrixHost &host) {
             if (host.view) host.view->finishOperations();
         }},
        {"changes the mode",
         [](MatrixHost &host) {
             if (host.view) host.view->setMouseMode(DXOpenGL::rotateMode);
         }},
        {"draws",
         [](MatrixHost &host) {
             if (host.view) host.view->display();
         }},
        {"loses the context",
         [](MatrixHost &host) {
             if (host.view) host.view->loseContext();
         }},
        {"removes everything that the clinician placed",
         [](MatrixHost &host) {
             MenuItem row;
             if (host.view) host.view->removeAllElasticsSelected(row);
             if (host.view) host.view->removeAllBracketsSelected(row);
         }},
    };
    return reactions;
}

} // namespace kelo::test
