// Which views ask for a redraw when a document changes.

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/ElasticModel.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <functional>

namespace {

using namespace kelo;

class DocumentChanges : public kelo::test::ViewFixture
{
protected:
    DocumentChanges()
    {
        view->setDocumentModel(document);
        secondView->setDocumentModel(document);
        otherView->setDocumentModel(otherDocument);
    }

    static std::shared_ptr<DXOpenGL> makeSmallView()
    {
        return makeView<DXOpenGL>(Rect{{0.0, 0.0}, {100.0, 80.0}});
    }

    /// Which of the three ask for a redraw after the action: "12" for the two of the document.
    std::string redrawnBy(const std::function<void()> &action)
    {
        for (const auto &each : {view, secondView, otherView})
            each->setNeedsDisplay(false);
        action();
        std::string redrawn;
        if (view->needsDisplay()) redrawn += '1';
        if (secondView->needsDisplay()) redrawn += '2';
        if (otherView->needsDisplay()) redrawn += '3';
        return redrawn;
    }

    std::shared_ptr<DXDocumentModel> document = kelo::test::boxDocument();
    std::shared_ptr<DXDocumentModel> otherDocument = kelo::test::boxDocument();
    std::shared_ptr<DXOpenGL> view = makeSmallView();
    std::shared_ptr<DXOpenGL> secondView = makeSmallView();
    std::shared_ptr<DXOpenGL> otherView = makeSmallView();
};

TEST_F(DocumentChanges, bothViewsOfADocumentAskForARedrawAndAnothersDoesNot)
{
    const auto elastic =
        std::make_shared<ElasticModel>(nullptr, nullptr, std::vector<std::string>{"7", "8", "9"});
    const std::vector<std::function<void()>> operations{
        [&] { document->toggleVisibilityOfBracket("8"); },
        [&] { document->toggleVisibilityOfButton("8l"); },
        [&] { document->toggleVisibilityOfTooth("8"); },
        [&] { document->bracket_setColorWithBracketColorTypeID("8", std::nullopt); },
        [&] { document->placeElasticModel(elastic); },
        [&] { document->elasticModel_setElasticsSizeType(elastic, nullptr); },
        [&] { document->elasticModel_setElasticsConfigType(elastic, nullptr); },
        [&] { document->removeElasticModel(elastic); },
        [&] { document->setElasticModels(DXDocumentModel::ElasticModels{elastic}); },
        [&] {
            document->setToothVisibilities({{"8", true}});
        },
        [&] { document->upperGumModel()->setMaterial(nullptr); },
    };
    for (std::size_t i = 0; i < operations.size(); ++i)
        EXPECT_EQ(redrawnBy(operations[i]), "12") << "operation " << i;
    EXPECT_EQ(redrawnBy([&] { otherDocument->setElasticModels(DXDocumentModel::ElasticModels()); }),
              "3");
    EXPECT_EQ(redrawnBy([&] { otherDocument->upperGumModel()->setHiddenPrimary(true); }), "3");
    EXPECT_EQ(
        redrawnBy([&] {
            kelo::test::boxModel({0.0f, 0.0f, 0.0f}, {1.0f, 1.0f, 1.0f})->setHiddenPrimary(true);
        }),
        "")
        << "a mesh of no document";
    view->makeCurrentContextIfNeeded();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DocumentChanges, aViewFollowsTheDocumentThatItShowsNow)
{
    const auto toggle = [](const std::shared_ptr<DXDocumentModel> &changed) {
        return [changed] { changed->toggleVisibilityOfTooth("8"); };
    };
    secondView->setDocumentModel(otherDocument);
    EXPECT_EQ(redrawnBy(toggle(document)), "1");
    EXPECT_EQ(redrawnBy(toggle(otherDocument)), "23");
    secondView->setDocumentModel(nullptr);
    EXPECT_EQ(redrawnBy(toggle(otherDocument)), "3");
    secondView->setDocumentModel(document);
    secondView->setDocumentModel(document);
    EXPECT_EQ(redrawnBy(toggle(document)), "12");
    view.reset();
    document->toggleVisibilityOfTooth("8"); // nobody is told who is gone
    secondView->makeCurrentContextIfNeeded();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DocumentChanges, theApprovalBringsAndTakesTheToolsAndAsksForARedraw)
{
    const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
    EXPECT_EQ(redrawnBy([&] { view->setApprovedDate(today); }), "1");
    EXPECT_EQ(redrawnBy([&] { view->setApprovedDate({}); }), "1");
    view->makeCurrentContextIfNeeded();
    EXPECT_NO_GL_ERROR();
}

TEST_F(DocumentChanges, aPictureOfTheOverlayThatIsSetAsksForARedraw)
{
    const auto picture = view->printButtonTexture();
    EXPECT_EQ(redrawnBy([&] { view->setBracketToolTexture(picture); }), "1");
    EXPECT_EQ(redrawnBy([&] { view->setBracketToolSelectedTexture(picture); }), "1");
    EXPECT_EQ(redrawnBy([&] { view->setElasticsToolTexture(picture); }), "1");
    EXPECT_EQ(redrawnBy([&] { view->setElasticsToolSelectedTexture(picture); }), "1");
    EXPECT_EQ(redrawnBy([&] { view->setPrintButtonTexture(picture); }), "1");
    EXPECT_EQ(redrawnBy([&] { view->setDateStringTexture(nullptr); }), "1");
    view->makeCurrentContextIfNeeded();
    EXPECT_NO_GL_ERROR();
}

} // namespace
