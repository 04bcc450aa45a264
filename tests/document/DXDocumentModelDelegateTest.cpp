#include "tests/document/DocumentFixture.h"

namespace kelo {
namespace {

using test::Keys;
using Calls = std::vector<std::string>;

/// Every operation that tells the delegate, with what makes it do so. The document has an elastic
/// through bracket 8, button 8l, and brackets 9 and 10.
struct TellingCase
{
    const char *name;
    /// Puts `action` into the operation.
    void (*install)(DXDocumentModelDelegate &, std::function<void()> action);
    /// Makes the document call the operation; gets the clock for what comes late.
    void (*provoke)(DXDocumentModel &, VirtualRunLoop &);
};

const TellingCase tellingCases[]{
    {"tooth",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.tooth_visibilityDidChange = [action](const std::string &, bool) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) { m.toggleVisibilityOfTooth("8"); }},
    {"bracket",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.bracket_visibilityDidChange = [action](const std::string &, bool) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) { m.toggleVisibilityOfBracket("8"); }},
    {"button",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.button_visibilityDidChange = [action](const std::string &, bool) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) { m.toggleVisibilityOfButton("8l"); }},
    {"makeVisible",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.bracket_visibilityDidChange = [action](const std::string &, bool) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) {
         m.setBracketVisibilities({{"8", false}});
         m.bracket_makeVisibleAndSetColorWithBracketColorTypeID("8", noBracketColorTypeID);
     }},
    {"bracketUpdates",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.bracketUpdatesAvailable = [action](DXDocumentModel &) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &clock) {
         m.toggleVisibilityOfBracket("8");
         m.toggleVisibilityOfButton("8l");
         clock.advance(3.5);
     }},
    {"flushedUpdates",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.bracketUpdatesAvailable = [action](DXDocumentModel &) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) {
         m.toggleVisibilityOfBracket("8");
         m.toggleVisibilityOfButton("8l");
         m.flushOutstandingUpdates();
     }},
    {"buttonUpdates",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.buttonUpdatesAvailable = [action](DXDocumentModel &) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &clock) {
         m.toggleVisibilityOfButton("8l");
         clock.advance(3.5);
     }},
    {"placed",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.elasticModelPlaced = [action](const std::shared_ptr<ElasticModel> &) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) {
         m.placeElasticModel(std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"8", "9"}));
     }},
    {"removed",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.elasticModelRemoved = [action](const std::shared_ptr<ElasticModel> &) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) { m.removeElasticModel(m.elasticModels()[0]); }},
    {"color",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.elasticModelColorDidChange = [action](const std::shared_ptr<ElasticModel> &) {
             action();
         };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) {
         m.elasticModel_setElasticsSizeType(m.elasticModels()[0],
                                            std::make_shared<ElasticsSizeType>());
     }},
    {"refactored",
     [](DXDocumentModelDelegate &d, std::function<void()> action) {
         d.elasticModelsRefactoredAroundBrackets = [action](const Keys &) { action(); };
     },
     [](DXDocumentModel &m, VirtualRunLoop &) { m.toggleVisibilityOfTooth("8"); }},
};

class DXDocumentModelDelegates : public test::DocumentFixture,
                                 public testing::WithParamInterface<TellingCase>
{
protected:
    DXDocumentModelDelegates()
    {
        place({"8", "8l", "9", "10"});
        document->setDelegate(nullptr);
    }
};

TEST_P(DXDocumentModelDelegates, mayLetGoOfTheLastReferenceToTheDocument)
{
    DXDocumentModelDelegate letsGo;
    int calls = 0;
    GetParam().install(letsGo, [&] {
        ++calls;
        document.reset();
    });
    document->setDelegate(&letsGo);
    const std::weak_ptr<DXDocumentModel> watched = document;
    GetParam().provoke(*document, *clock);
    clock->advance(10.0);
    EXPECT_GE(calls, 1);
    EXPECT_TRUE(watched.expired());
}

TEST_P(DXDocumentModelDelegates, mayReplaceAndDestroyItself)
{
    auto owned = std::make_unique<DXDocumentModelDelegate>();
    int calls = 0;
    GetParam().install(*owned, [&] {
        ++calls;
        document->setDelegate(&delegate);
        owned.reset();
    });
    document->setDelegate(owned.get());
    GetParam().provoke(*document, *clock);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(document->delegate(), &delegate);
    EXPECT_EQ(document->checkSanity(), Calls());
}

TEST_P(DXDocumentModelDelegates, mayCallTheDocumentBack)
{
    DXDocumentModelDelegate callsBack;
    int depth = 0;
    GetParam().install(callsBack, [&] {
        if (++depth > 1) return;
        document->toggleVisibilityOfTooth("9");
        document->toggleVisibilityOfBracket("8");
        document->toggleVisibilityOfButton("8l");
        document->setElasticModels({});
        (void)document->bracketVisibilityUpdates();
        document->flushOutstandingUpdates();
        document->bracket_setColorWithBracketColorTypeID("10", std::nullopt);
    });
    document->setDelegate(&callsBack);
    GetParam().provoke(*document, *clock);
    document->setDelegate(nullptr);
    EXPECT_GE(depth, 1);
    EXPECT_TRUE(document->elasticModels().empty());
    EXPECT_EQ(document->checkSanity(), Calls());
}

TEST_P(DXDocumentModelDelegates, mayTakeEveryModelAway)
{
    DXDocumentModelDelegate takesAway;
    int calls = 0;
    GetParam().install(takesAway, [&] {
        ++calls;
        document->setToothModels({});
        document->setBracketModels({});
        document->setButtonModels({});
    });
    document->setDelegate(&takesAway);
    GetParam().provoke(*document, *clock);
    EXPECT_GE(calls, 1);
    EXPECT_TRUE(document->bracketModels().empty());
}

INSTANTIATE_TEST_SUITE_P(InEveryCall, DXDocumentModelDelegates, testing::ValuesIn(tellingCases),
                         [](const testing::TestParamInfo<TellingCase> &each) {
                             return std::string(each.param.name);
                         });

class DXDocumentModelDelegateTest : public test::DocumentFixture
{};

TEST_F(DXDocumentModelDelegateTest, aDelegateThatShowsTheBracketAgainSavesItsElastics)
{
    const auto elastic = place({"8", "9", "10"});
    DXDocumentModelDelegate showsAgain;
    showsAgain.bracket_visibilityDidChange = [&](const std::string &key, bool visible) {
        if (!visible) document->toggleVisibilityOfBracket(key);
    };
    document->setDelegate(&showsAgain);
    document->toggleVisibilityOfBracket("8");
    EXPECT_TRUE(document->bracketVisibilities().at("8"));
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "9", "10"}));
}

TEST_F(DXDocumentModelDelegateTest, aKeyThatStandsInWhatTheDelegateTakesApartIsStillTold)
{
    place({"8", "9", "10"});
    Calls calls;
    DXDocumentModelDelegate takesApart;
    takesApart.bracket_visibilityDidChange = [&](const std::string &key, bool) {
        document->elasticModels()[0]->setBracketSequence({"24", "25"});
        calls.push_back(key);
    };
    document->setDelegate(&takesApart);
    document->toggleVisibilityOfBracket(document->elasticModels()[0]->bracketSequence()[0]);
    EXPECT_EQ(calls, Calls{"8"});
    EXPECT_FALSE(document->bracketVisibilities().at("8"));
}

TEST_F(DXDocumentModelDelegateTest, theDocumentOffersItself)
{
    const DXDocumentModel *offered = nullptr;
    DXDocumentModelDelegate takes;
    DXDocumentModel::Visibilities taken;
    takes.bracketUpdatesAvailable = [&](DXDocumentModel &model) {
        offered = &model;
        taken = model.bracketVisibilityUpdates();
    };
    document->setDelegate(&takes);
    document->toggleVisibilityOfBracket("8");
    clock->advance(3.5);
    EXPECT_EQ(offered, document.get());
    EXPECT_EQ(taken, (DXDocumentModel::Visibilities{{"8", false}}));
}

TEST_F(DXDocumentModelDelegateTest, changesMadeWhileUpdatesAreOfferedStartANewQuietTime)
{
    DXDocumentModelDelegate changes;
    int offers = 0;
    changes.bracketUpdatesAvailable = [&](DXDocumentModel &model) {
        if (++offers == 1) model.toggleVisibilityOfBracket("9");
    };
    document->setDelegate(&changes);
    document->toggleVisibilityOfBracket("8");
    clock->advance(3.5);
    EXPECT_EQ(offers, 1);
    clock->advance(3.0);
    EXPECT_EQ(offers, 2);
}

} // namespace
} // namespace kelo
