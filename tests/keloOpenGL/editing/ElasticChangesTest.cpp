#include "keloOpenGL/editing/ElasticChanges.h"

#include "document/ElasticModel.h"
#include "models/PickIdentifier.h"
#include "tests/document/DocumentFixture.h"

namespace {

using namespace kelo;
using namespace kelo::test;

class ElasticChanges : public DocumentFixture
{
protected:
    static std::shared_ptr<ElasticsSizeType> sizeOfType(long typeID)
    {
        auto size = std::make_shared<ElasticsSizeType>();
        size->typeID = typeID;
        return size;
    }
    static std::shared_ptr<ElasticsConfigType> configurationOver(const std::string &members)
    {
        auto configuration = std::make_shared<ElasticsConfigType>();
        configuration->bracketSequence = members;
        return configuration;
    }
};

TEST_F(ElasticChanges, aHitKnowsWhetherTheElasticOrTheMemberIsThere)
{
    place({"8", "9"});
    const ElasticHit elastic =
        elasticHit(document.get(), pickIdentifierOfElastic(0), std::nullopt, false);
    EXPECT_EQ(elastic.elasticIndex, 0u);
    EXPECT_TRUE(elastic.elasticExists);
    EXPECT_FALSE(
        elasticHit(document.get(), pickIdentifierOfElastic(1), std::nullopt, false).elasticExists);

    EXPECT_TRUE(elasticHit(document.get(), 1, "8", false).memberIsShown);
    bracket("8")->setHiddenSecondary(true);
    const ElasticHit hidden = elasticHit(document.get(), 1, "8", false);
    EXPECT_EQ(hidden.member, "8");
    EXPECT_FALSE(hidden.memberIsShown);
    button("8l")->setHiddenPrimary(true);
    EXPECT_FALSE(elasticHit(document.get(), 1, "8l", true).memberIsShown);
}

TEST_F(ElasticChanges, anElasticBeyondTheListIsNone)
{
    const auto elastic = place({"8", "9"});
    EXPECT_EQ(elasticAt(*document, 0), elastic);
    EXPECT_EQ(elasticAt(*document, 1), nullptr);
    EXPECT_EQ(elasticAt(*document, ~std::uint64_t{0}), nullptr);
}

TEST_F(ElasticChanges, withoutADocumentAHitIsOnNothingThatIsShown)
{
    const ElasticHit hit = elasticHit(nullptr, noPixelPickIdentifier, std::nullopt, false);
    EXPECT_TRUE(hit.elasticIndex) << "a point outside reads as an elastic beyond any list";
    EXPECT_FALSE(hit.elasticExists);
    EXPECT_FALSE(hit.memberIsShown);
}

TEST_F(ElasticChanges, theStrungElasticHasTheSizeAndTheShownMembers)
{
    document->setAvailableElasticsSizeTypes({{4, sizeOfType(4)}});
    ElasticEditor editor;
    EXPECT_EQ(strungElastic(editor, *document), nullptr);
    editor.begin("8", 4);
    for (const char *member : {"9", "25l", "26"})
        editor.take(PlacementStep::Add, member);
    bracket("9")->setHiddenPrimary(true);
    button("25l")->setHiddenPrimary(true);
    const auto elastic = strungElastic(editor, *document);
    ASSERT_NE(elastic, nullptr);
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "26"}));
    EXPECT_EQ(elastic->elasticsSizeType(), document->availableElasticsSizeTypes().at(4));
    EXPECT_EQ(elastic->elasticsConfigType(), nullptr);
    EXPECT_EQ(elasticsSizeType(*document, 5), nullptr);
    EXPECT_EQ(elasticsSizeType(*document, std::nullopt), nullptr);
}

TEST_F(ElasticChanges, missingTeethAreToldOnceInTheOrderOfTheMembers)
{
    const auto configuration = configurationOver("25,8,8l,9");
    EXPECT_EQ(missingTeeth(*document, *configuration), Keys());
    tooth("8")->setHiddenPrimary(true);
    tooth("25")->setHiddenSecondary(true);
    EXPECT_EQ(missingTeeth(*document, *configuration), (Keys{"25", "8"}));
}

TEST_F(ElasticChanges, aConfigurationIsCoveredByABandOverTheSameMembersAlone)
{
    const auto configuration = configurationOver("8,9");
    place({"9", "8"});
    place({"8", "9", "10"});
    EXPECT_FALSE(isCovered(*document, *configuration));
    place({"8", "9"});
    EXPECT_TRUE(isCovered(*document, *configuration));
}

TEST_F(ElasticChanges, placingAConfigurationShowsWhatItNeeds)
{
    bracket("8")->setHiddenPrimary(true);
    button("9l")->setHiddenPrimary(true);
    const auto configuration = configurationOver("8,9l,10");
    placeConfiguration(*document, configuration);
    EXPECT_FALSE(isHiddenMember(*document, "8"));
    EXPECT_FALSE(isHiddenMember(*document, "9l"));
    ASSERT_EQ(document->elasticModels().size(), 1u);
    EXPECT_EQ(document->elasticModels()[0]->elasticsConfigType(), configuration);
    EXPECT_EQ(document->elasticModels()[0]->bracketSequence(), (Keys{"8", "9l", "10"}));
}

TEST_F(ElasticChanges, allThatWereThereGetTheSizeOrGo)
{
    place({"8", "9"});
    place({"25", "26"});
    const auto size = sizeOfType(4);
    setSizeOfAllElastics(*document, size);
    for (const auto &elastic : document->elasticModels())
        EXPECT_EQ(elastic->elasticsSizeType(), size);
    bool hasPlaced = false;
    delegate.elasticModelRemoved = [&](const std::shared_ptr<ElasticModel> &) {
        if (!std::exchange(hasPlaced, true)) place({"10", "11"});
    };
    removeAllElastics(*document);
    ASSERT_EQ(document->elasticModels().size(), 1u) << "the one that the host placed meanwhile";
    EXPECT_EQ(document->elasticModels()[0]->bracketSequence(), (Keys{"10", "11"}));
}

} // namespace
