#include "tests/document/DocumentFixture.h"

#include "platform/time/NotificationCenter.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace kelo {
namespace {

using test::Keys;

/// Counts what a document announces, and looks at it then.
class DXDocumentModelChanges : public test::DocumentFixture
{
protected:
    DXDocumentModelChanges()
    {
        auto blue = std::make_shared<BracketColorType>();
        blue->typeID = 1;
        blue->bracketColor = {0.0, 0.0, 1.0, 1.0};
        document->setAvailableBracketColorTypes({{1, blue}});
        NotificationCenter::defaultCenter().addObserver(
            this,
            [this](const Notification &notification) {
                ++announcements;
                EXPECT_EQ(notification.object, document.get());
                if (whenAnnounced) whenAnnounced();
            },
            documentModelChangedNotification, document.get());
    }
    ~DXDocumentModelChanges() override { NotificationCenter::defaultCenter().removeObserver(this); }

    int announcementsOf(const std::function<void()> &action)
    {
        announcements = 0;
        action();
        return announcements;
    }

    int announcements = 0;
    std::function<void()> whenAnnounced;
};

TEST_F(DXDocumentModelChanges, theNotificationIsCalledByItsName)
{
    EXPECT_STREQ(documentModelChangedNotification, "documentModelChangedNotification");
}

TEST_F(DXDocumentModelChanges, everyChangeOfAVisibilityIsAnnouncedOnce)
{
    EXPECT_EQ(announcementsOf([&] { document->toggleVisibilityOfBracket("8"); }), 1);
    EXPECT_EQ(announcementsOf([&] { document->toggleVisibilityOfButton("8l"); }), 1);
    EXPECT_EQ(announcementsOf([&] { document->toggleVisibilityOfTooth("8"); }), 1)
        << "the tooth, its bracket and its button are one change";
    EXPECT_EQ(announcementsOf([&] { document->toggleVisibilityOfTooth("99"); }), 1)
        << "the delegate is told of it too";
    EXPECT_EQ(announcementsOf([&] {
                  document->setToothVisibilities({{"8", true}, {"9", false}});
              }),
              1);
    EXPECT_EQ(announcementsOf([&] { document->setBracketVisibilities({{"8", false}}); }), 1);
    EXPECT_EQ(announcementsOf([&] { document->setButtonVisibilities({{"8l", false}}); }), 1);
}

TEST_F(DXDocumentModelChanges, everyChangeOfAColorIsAnnouncedOnce)
{
    EXPECT_EQ(announcementsOf([&] { document->setBracketColorTypeIDs({{"8", 1}, {"9", 1}}); }), 1);
    EXPECT_EQ(announcementsOf(
                  [&] { document->bracket_setColorWithBracketColorTypeID("8", std::nullopt); }),
              1);
    EXPECT_EQ(announcementsOf([&] { document->bracket_setColorWithBracketColorTypeID("99", 1); }),
              1)
        << "a colour is stored without a mesh too";
    EXPECT_EQ(announcementsOf(
                  [&] { document->bracket_makeVisibleAndSetColorWithBracketColorTypeID("9", 1); }),
              1);
}

TEST_F(DXDocumentModelChanges, everyChangeOfAnElasticIsAnnouncedOnce)
{
    const auto elastic = std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"3", "14", "19"});
    const auto size = std::make_shared<ElasticsSizeType>();
    EXPECT_EQ(announcementsOf([&] { document->placeElasticModel(elastic); }), 1);
    EXPECT_EQ(announcementsOf([&] { document->elasticModel_setElasticsSizeType(elastic, size); }),
              1);
    const auto configuration = std::make_shared<ElasticsConfigType>();
    EXPECT_EQ(announcementsOf(
                  [&] { document->elasticModel_setElasticsConfigType(elastic, configuration); }),
              1);
    EXPECT_EQ(elastic->elasticsConfigType(), configuration);
    EXPECT_EQ(announcementsOf([&] { document->toggleVisibilityOfBracket("14"); }), 2)
        << "the bracket, and the elastic that ran through it";
    EXPECT_EQ(announcementsOf([&] { document->removeElasticModel(elastic); }), 1);
    EXPECT_EQ(announcementsOf(
                  [&] { document->setElasticModels(DXDocumentModel::ElasticModels{elastic}); }),
              1);
    EXPECT_EQ(announcementsOf([&] {
                  document->setElasticModels(
                      std::vector<DXDocumentModel::ElasticModelElement>{ElasticModelDictionary{}});
              }),
              1);
}

TEST_F(DXDocumentModelChanges, whatChangesNothingIsNotAnnounced)
{
    const auto stranger = std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"3", "14"});
    EXPECT_EQ(announcementsOf([&] {
                  document->placeElasticModel(nullptr);
                  document->removeElasticModel(stranger);
                  document->elasticModel_setElasticsSizeType(stranger, nullptr);
                  document->elasticModel_setElasticsConfigType(
                      stranger, std::make_shared<ElasticsConfigType>());
                  document->refactorElasticModels("14");
              }),
              0);
    EXPECT_EQ(stranger->elasticsConfigType(), nullptr);
    document->setBracketVisibilities({{"14", false}});
    EXPECT_EQ(announcementsOf([&] { document->refactorElasticModels("14"); }), 0)
        << "no elastic runs through it";
    EXPECT_EQ(announcementsOf([&] {
                  document->setToothModels(test::emptyModels({"8"}));
                  document->setUpperGumModel(test::emptyModel());
                  document->setAvailableElasticsSizeTypes({});
              }),
              0)
        << "the setters of models and catalogues announce nothing";
}

TEST_F(DXDocumentModelChanges, anAnnouncementComesAfterTheChangeBeforeTheDelegate)
{
    bool hidesAll = false;
    std::vector<std::string> calls;
    whenAnnounced = [&] {
        hidesAll = tooth("8")->hiddenPrimary() && bracket("8")->hiddenSecondary() &&
                   button("8l")->hiddenSecondary();
        calls = delegate.calls;
    };
    document->toggleVisibilityOfTooth("8");
    EXPECT_TRUE(hidesAll);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(delegate.calls, std::vector<std::string>{"tooth 8 hidden"});

    const auto elastic = std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"3", "14"});
    std::size_t elasticCount = 0;
    delegate.calls.clear();
    whenAnnounced = [&] {
        elasticCount = document->elasticModels().size();
        calls = delegate.calls;
    };
    document->placeElasticModel(elastic);
    EXPECT_EQ(elasticCount, 1u);
    EXPECT_TRUE(calls.empty());
}

TEST_F(DXDocumentModelChanges, aMeshThatSomebodyElseChangesIsAnnouncedByItsOwnDocumentOnly)
{
    const auto other = std::make_shared<DXDocumentModel>();
    other->setToothModels(test::emptyModels({"8"}));
    EXPECT_EQ(announcementsOf([&] { document->upperGumModel()->setHiddenPrimary(true); }), 1);
    EXPECT_EQ(announcementsOf([&] { tooth("8")->setHiddenPrimary(true); }), 1);
    EXPECT_EQ(announcementsOf([&] { bracket("8")->setMaterial(HVOGLMaterial::material()); }), 1);
    EXPECT_EQ(announcementsOf([&] { button("8l")->setHiddenSecondary(true); }), 1);
    EXPECT_EQ(announcementsOf([&] {
                  other->toothModels().at("8")->setHiddenPrimary(true);
                  other->placeElasticModel(
                      std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"3", "14"}));
                  test::emptyModel()->setHiddenPrimary(true);
              }),
              0);
    const auto former = tooth("8");
    document->setToothModels({});
    EXPECT_EQ(announcementsOf([&] { former->setHiddenPrimary(false); }), 0)
        << "it is the document's no longer";
}

TEST_F(DXDocumentModelChanges, aChangeThatAMeshesObserverMakesIsAnnouncedToo)
{
    bool isNested = false;
    NotificationCenter::defaultCenter().addObserver(
        &isNested,
        [&](const Notification &) {
            if (std::exchange(isNested, true)) return;
            document->placeElasticModel(
                std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"3", "14"}));
        },
        modelChangedNotification, bracket("8").get());
    std::size_t elasticCount = 0;
    whenAnnounced = [&] { elasticCount = document->elasticModels().size(); };
    EXPECT_EQ(announcementsOf([&] { document->toggleVisibilityOfBracket("8"); }), 1)
        << "with the change that it belongs to";
    EXPECT_EQ(elasticCount, 1u);
    NotificationCenter::defaultCenter().removeObserver(&isNested);
}

TEST_F(DXDocumentModelChanges, anObserverMayLetGoOfTheDocument)
{
    DXDocumentModel &kept = *document;
    NotificationCenter::defaultCenter().removeObserver(this);
    NotificationCenter::defaultCenter().addObserver(
        this, [this](const Notification &) { document.reset(); }, documentModelChangedNotification,
        &kept);
    kept.toggleVisibilityOfBracket("8");
    EXPECT_EQ(document, nullptr);
    EXPECT_EQ(delegate.calls, std::vector<std::string>{"bracket 8 hidden"})
        << "the document lives until its operation returns";
}

TEST_F(DXDocumentModelChanges, aListThatSomebodyChangedIsAnnouncedWhenTheySaySo)
{
    EXPECT_EQ(announcementsOf([&] { document->elasticModels().clear(); }), 0);
    EXPECT_EQ(announcementsOf([&] { document->postDocumentModelChangedNotification(); }), 1);
}

TEST_F(DXDocumentModelChanges, theListsOfAJawFollowTheModelsThatAreSet)
{
    const auto holds = [](const DXDocumentModel::ModelList &list, const auto &model) {
        return std::find(list.begin(), list.end(), model) != list.end();
    };
    ASSERT_EQ(document->upperModels(), document->upperModels());
    auto teeth = document->toothModels();
    const auto formerTooth = std::exchange(teeth["8"], test::emptyModel());
    document->setToothModels(teeth);
    EXPECT_TRUE(holds(document->upperModels(), teeth["8"]));
    EXPECT_FALSE(holds(document->upperModels(), formerTooth));
    auto brackets = document->bracketModels();
    brackets["24"] = test::emptyModel();
    document->setBracketModels(brackets);
    EXPECT_TRUE(holds(document->lowerModels(), brackets["24"]));
    auto buttons = document->buttonModels();
    buttons["24l"] = test::emptyModel();
    document->setButtonModels(buttons);
    EXPECT_TRUE(holds(document->lowerModels(), buttons["24l"]));
    document->setUpperGumModel(test::emptyModel());
    EXPECT_EQ(document->upperModels().front(), document->upperGumModel());
    document->setLowerGumModel(test::emptyModel());
    EXPECT_EQ(document->lowerModels().front(), document->lowerGumModel());
}

TEST_F(DXDocumentModelChanges, theListsOfAJawFollowTheChartOfTheHost)
{
    struct OneTooth : TreatmentNoteKeys
    {
        std::vector<std::string> upperToothNameKeys() const override { return {"8"}; }
    };
    ASSERT_EQ(document->upperModels().size(), 43u);
    TreatmentNote::setKeys(std::make_shared<OneTooth>());
    EXPECT_EQ(document->upperModels(),
              (DXDocumentModel::ModelList{document->upperGumModel(), tooth("8"), bracket("8"),
                                          button("8l")}));
    TreatmentNote::setKeys(nullptr);
    EXPECT_EQ(document->upperModels().size(), 43u);
}

} // namespace
} // namespace kelo
