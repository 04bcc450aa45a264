// Whatever a host does in an operation of a delegate, whichever call told it: the document and the
// view go on with what is left, and release what was dropped. Run under the address sanitizer
// this shows that nothing is used after its end.

#include "tests/keloOpenGL/treatment/HostMatrix.h"

#include "base/TellDelegate.h"

#include <algorithm>
#include <ostream>

namespace kelo::test {

void PrintTo(const MatrixOperation &operation, std::ostream *stream)
{
    *stream << operation.name;
}

} // namespace kelo::test

namespace {

using namespace kelo;
using namespace kelo::test;

class HostMatrix : public ViewFixture, public testing::WithParamInterface<MatrixOperation>
{
protected:
    /// Runs the operation; returns how many calls of delegates it made.
    int callsWith(int reactingCall, const MatrixReaction &reaction)
    {
        SCOPED_TRACE(std::string(reaction.name) + " in call " + std::to_string(reactingCall));
        MatrixHost host(*clock);
        GetParam().prepare(host);
        const std::weak_ptr<DXOpenGL> view = host.view;
        const std::weak_ptr<DXDocumentModel> document = host.document;
        host.reactTo(reactingCall, reaction.run);
        EXPECT_NO_THROW(GetParam().run(host));
        const int calls = host.calls;
        EXPECT_TRUE(host.view || view.expired()) << "the dropped view is alive";
        const bool isShown = host.view && host.view->documentModel() == document.lock();
        EXPECT_TRUE(host.document || isShown || document.expired())
            << "the dropped document is alive";
        clock->advance(10.0);
        if (host.view) {
            host.view->display();
            EXPECT_NO_GL_ERROR();
        }
        if (host.document && !host.document->toothModels().empty()) {
            EXPECT_EQ(host.document->checkSanity(), std::vector<std::string>());
        }
        return calls;
    }
};

TEST_P(HostMatrix, survivesWhatTheHostDoesInAnyCall)
{
    const int calls = callsWith(-1, {"nothing happens", nullptr});
    EXPECT_GE(calls, 1) << "an operation that tells nobody proves nothing";
    // The later calls of an operation on every bracket are like the first ones and the last.
    std::vector<int> reactingCalls{1, 2, 3, calls};
    std::erase_if(reactingCalls, [calls](int call) { return call > calls; });
    reactingCalls.erase(std::unique(reactingCalls.begin(), reactingCalls.end()),
                        reactingCalls.end());
    for (const MatrixReaction &reaction : matrixReactions()) {
        for (const int call : reactingCalls)
            callsWith(call, reaction);
        callsWith(0, reaction);
    }
}

INSTANTIATE_TEST_SUITE_P(Operation, HostMatrix, testing::ValuesIn(matrixOperations()),
                         [](const auto &operation) { return std::string(operation.param.name); });

class HostInTheMatrix : public ViewFixture
{};

TEST_F(HostInTheMatrix, elasticsPlacedOnRemovalStayAndEndTheRemoval)
{
    MatrixHost host(*clock);
    const std::size_t before = host.document->elasticModels().size();
    host.reactTo(0, [](MatrixHost &told) { told.place({"9", "10"}); });
    MenuItem row;
    host.view->removeAllElasticsSelected(row);
    ASSERT_EQ(host.document->elasticModels().size(), before);
    for (const auto &elastic : host.document->elasticModels())
        EXPECT_EQ(elastic->bracketSequence(), (std::vector<std::string>{"9", "10"}));
    host.view->display();
    EXPECT_NO_GL_ERROR();
}

TEST_F(HostInTheMatrix, finishingInTheReportPlacesTheElasticOnce)
{
    MatrixHost host(*clock);
    for (const auto &operation : matrixOperations()) {
        if (std::string(operation.name) == "finishStringing") operation.prepare(host);
    }
    const std::size_t before = host.document->elasticModels().size();
    host.reactTo(0, [](MatrixHost &told) { told.view->finishOperations(); });
    host.view->finishOperations();
    EXPECT_EQ(host.document->elasticModels().size(), before + 1);
    EXPECT_EQ(host.view->bracketSequence(), std::nullopt);
    EXPECT_EQ(host.calls, 1);
    EXPECT_NO_GL_ERROR();
}

TEST_F(HostInTheMatrix, aMenuThatOutlivesItsViewDoesNothing)
{
    MatrixHost host(*clock);
    std::shared_ptr<Menu> kept;
    ContextMenuPresenter::setPresenter(
        [&kept](const std::shared_ptr<Menu> &menu, const Event &, OpenGLView &) { kept = menu; });
    host.view->setMouseMode(DXOpenGL::colorMode);
    host.clickAt(host.placeOf("8"));
    ASSERT_NE(kept, nullptr);
    host.view.reset();
    const auto visible = host.document->bracketVisibilities();
    for (const auto &item : kept->items()) {
        if (item->hasAction()) kept->close(item);
    }
    EXPECT_EQ(kept->delegate, nullptr);
    EXPECT_EQ(host.document->bracketVisibilities(), visible);
}

TEST_F(HostInTheMatrix, theViewOfAnOperationLivesUntilItReturns)
{
    MatrixHost host(*clock);
    host.reactTo(-1, nullptr);
    std::weak_ptr<DXOpenGL> watched = host.view;
    bool wasAlive = false;
    host.viewDelegate->toggleFullScreenMode = [&](DXOpenGL &told) {
        host.view.reset();
        wasAlive = !watched.expired() && told.mouseMode() == 2;
    };
    host.view->setMouseMode(DXOpenGL::rotateMode);
    host.clickAt(host.placeOf("8"), 2);
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(watched.expired());
}

TEST(TellDelegate, tellsWhetherTheTellerLivesOn)
{
    struct Delegate
    {
        std::function<void(int)> operation;
    };
    Delegate delegate;
    auto owner = std::make_shared<int>(1);
    const Teller teller{owner, owner};
    EXPECT_TRUE(tellDelegate(teller, static_cast<Delegate *>(nullptr), &Delegate::operation, 1));
    EXPECT_TRUE(tellDelegate(teller, &delegate, &Delegate::operation, 1)) << "it has none";
    int told = 0;
    delegate.operation = [&](int number) { told = number; };
    EXPECT_TRUE(tellDelegate(teller, &delegate, &Delegate::operation, 2));
    EXPECT_EQ(told, 2);
    delegate.operation = [&](int) {
        owner.reset();
        told = teller.self.expired() ? 0 : 3;
    };
    EXPECT_FALSE(tellDelegate(teller, &delegate, &Delegate::operation, 4));
    EXPECT_EQ(told, 3) << "alive until the operation has returned";
}

} // namespace
