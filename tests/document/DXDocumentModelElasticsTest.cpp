#include "tests/document/DocumentFixture.h"

namespace kelo {
namespace {

using test::Keys;
using Calls = std::vector<std::string>;
using ElasticModels = DXDocumentModel::ElasticModels;

class DXDocumentModelElastics : public test::DocumentFixture
{};

TEST_F(DXDocumentModelElastics, hidingABracketTakesItOutOfTheElasticThatStaysTheSameObject)
{
    const auto elastic = place({"3", "14", "19"});
    const std::uint32_t identifier = elastic->uniqueID();
    document->toggleVisibilityOfBracket("14");
    ASSERT_EQ(document->elasticModels(), ElasticModels{elastic});
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"3", "19"}));
    EXPECT_EQ(elastic->uniqueID(), identifier);
    EXPECT_EQ(delegate.takeCalls(), (Calls{"bracket 14 hidden", "refactored 14"}));
}

TEST_F(DXDocumentModelElastics, anElasticLeftOnOneToothIsRemovedWithoutBeingToldOneByOne)
{
    place({"8", "8l"});
    document->toggleVisibilityOfBracket("8");
    EXPECT_TRUE(document->elasticModels().empty());
    EXPECT_EQ(delegate.takeCalls(), (Calls{"bracket 8 hidden", "refactored 8"}));
}

TEST_F(DXDocumentModelElastics, anElasticLeftOnABracketAndItsOwnButtonIsRemoved)
{
    place({"9", "8", "8l"});
    document->toggleVisibilityOfBracket("9");
    EXPECT_TRUE(document->elasticModels().empty()) << "8 and 8l are one tooth";
}

TEST_F(DXDocumentModelElastics, hidingAToothRemovesAnElasticOnceAndItsButtonChangesNone)
{
    place({"8", "24"});
    document->toggleVisibilityOfTooth("24");
    EXPECT_TRUE(document->elasticModels().empty());
    EXPECT_EQ(delegate.takeCalls(), (Calls{"tooth 24 hidden", "refactored 24"}));
}

TEST_F(DXDocumentModelElastics, anElasticTwiceOverAHiddenBracketLosesBoth)
{
    const auto elastic = place({"8", "9", "8", "10"});
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"9", "10"}));
}

TEST_F(DXDocumentModelElastics, elasticsThatDoNotRunThroughTheHiddenMemberStayInTheirPlaces)
{
    const auto first = place({"3", "30"});
    place({"14", "15"});
    const auto third = place({"6", "27", "14"});
    const auto fourth = place({"14l", "19"});
    document->toggleVisibilityOfBracket("14");
    EXPECT_EQ(document->elasticModels(), (ElasticModels{first, third, fourth}));
    EXPECT_EQ(first->bracketSequence(), (Keys{"3", "30"}));
    EXPECT_EQ(third->bracketSequence(), (Keys{"6", "27"}));
    EXPECT_EQ(fourth->bracketSequence(), (Keys{"14l", "19"})) << "a button is not its bracket";
}

TEST_F(DXDocumentModelElastics, aButtonIsItsTeethsWhereverItsLetterStands)
{
    // Keys of a host that puts the letter first: teeth 9 and 8 remain.
    const auto elastic = place({"8", "l9", "l8"});
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(document->elasticModels(), DXDocumentModel::ElasticModels{elastic});
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"l9", "l8"}));
    const auto oneTooth = place({"9", "l10", "10"});
    document->toggleVisibilityOfBracket("9");
    EXPECT_EQ(document->elasticModels(), DXDocumentModel::ElasticModels{elastic})
        << "only tooth 10 remained";
}

TEST_F(DXDocumentModelElastics, refactoringAroundWhatIsNotHiddenDoesNothing)
{
    const auto elastic = place({"8", "9", "10"});
    document->refactorElasticModels("8");
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "9", "10"}));
    document->refactorElasticModels("99");
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelElastics, aButtonIsHiddenInEitherWayAndABracketByItselfOrItsToothOnly)
{
    const auto elastic = place({"8", "8l", "9", "10"});
    bracket("8")->setHiddenSecondary(true);
    document->refactorElasticModels("8");
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "8l", "9", "10"}))
        << "the secondary flag of a bracket is not asked for";
    button("8l")->setHiddenSecondary(true);
    document->refactorElasticModels("8l");
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "9", "10"}));
    tooth("8")->setHiddenPrimary(true);
    document->refactorElasticModels("8");
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"9", "10"}));
}

TEST_F(DXDocumentModelElastics, refactoringThatChangesNoElasticTellsNobody)
{
    place({"9", "10"});
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(delegate.takeCalls(), Calls{"bracket 8 hidden"});
}

TEST_F(DXDocumentModelElastics, membersWithNegativeNumbersCountAsNoTooth)
{
    place({"-5", "8", "9"});
    document->toggleVisibilityOfBracket("9");
    EXPECT_TRUE(document->elasticModels().empty()) << "-5 and 8 are one tooth";
}

TEST_F(DXDocumentModelElastics, showingAMemberAgainDoesNotBringItBack)
{
    const auto elastic = place({"8", "9", "10"});
    document->toggleVisibilityOfBracket("8");
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"9", "10"}));
}

TEST_F(DXDocumentModelElastics, anElasticIsFoundByItsIdentifierWhileItIsPlaced)
{
    const auto elastic = place({"8", "9"});
    const auto other = place({"10", "11"});
    EXPECT_EQ(document->elasticModelForUniqueID(elastic->uniqueID()), elastic);
    EXPECT_EQ(document->elasticModelForUniqueID(other->uniqueID()), other);
    document->removeElasticModel(elastic);
    EXPECT_EQ(document->elasticModelForUniqueID(elastic->uniqueID()), nullptr);
}

/// The death test's fresh process is where the process's first elastic has identifier 0.
TEST(DXDocumentModelElasticsDeathTest, identifier0FindsTheFirstElasticOfTheProcess)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            const auto document = std::make_shared<DXDocumentModel>();
            const auto first = std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"8", "9"});
            document->placeElasticModel(std::make_shared<ElasticModel>(nullptr, nullptr, Keys()));
            document->placeElasticModel(first);
            const bool found = document->elasticModelForUniqueID(0) == first;
            document->removeElasticModel(first);
            const bool gone = document->elasticModelForUniqueID(0) == nullptr;
            std::exit(found && gone ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DXDocumentModelElastics, settingElasticsTakesElasticsAndDictionariesAndDropsTheRest)
{
    const auto elastic = std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"8", "9"});
    const auto size = std::make_shared<ElasticsSizeType>();
    const auto named = std::make_shared<ElasticsConfigType>();
    const std::vector<DXDocumentModel::ElasticModelElement> elements{
        elastic, ElasticModelDictionary{named, size, Keys{"10", "11l"}}, std::string("text")};
    document->setElasticModels(elements);
    ASSERT_EQ(document->elasticModels().size(), 2u);
    EXPECT_EQ(document->elasticModels()[0], elastic);
    const auto made = document->elasticModels()[1];
    EXPECT_EQ(made->elasticsConfigType(), named);
    EXPECT_EQ(made->elasticsSizeType(), size);
    EXPECT_EQ(made->bracketSequence(), (Keys{"10", "11l"}));
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelElastics, aDictionaryWithoutEntriesStillMakesAnElastic)
{
    document->setElasticModels(
        std::vector<DXDocumentModel::ElasticModelElement>{ElasticModelDictionary{}, {}});
    ASSERT_EQ(document->elasticModels().size(), 1u);
    EXPECT_EQ(document->elasticModels()[0]->elasticsSizeType(), nullptr);
    EXPECT_TRUE(document->elasticModels()[0]->bracketSequence().empty());
}

TEST_F(DXDocumentModelElastics, settingElasticsReplacesTheListAlsoWithItself)
{
    const auto elastic = place({"8", "9"});
    document->setElasticModels(document->elasticModels());
    EXPECT_EQ(document->elasticModels(), ElasticModels{elastic});
    document->setElasticModels({});
    EXPECT_TRUE(document->elasticModels().empty());
}

TEST_F(DXDocumentModelElastics, theListIsTheModelsOwn)
{
    place({"8", "9"});
    document->elasticModels().clear();
    EXPECT_TRUE(document->elasticModels().empty());
}

TEST_F(DXDocumentModelElastics, placingTellsTheDelegateTheElastic)
{
    const auto elastic = std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"8", "9"});
    document->placeElasticModel(elastic);
    EXPECT_EQ(delegate.takeCalls(), Calls{"placed"});
    EXPECT_EQ(delegate.lastElastic, elastic);
    document->placeElasticModel(nullptr);
    EXPECT_EQ(document->elasticModels().size(), 1u);
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelElastics, anElasticPlacedTwiceIsListedTwiceAndRemovedAtOnce)
{
    const auto elastic = place({"8", "9"});
    document->placeElasticModel(elastic);
    EXPECT_EQ(document->elasticModels(), (ElasticModels{elastic, elastic}));
    delegate.calls.clear();
    document->removeElasticModel(elastic);
    EXPECT_TRUE(document->elasticModels().empty());
    EXPECT_EQ(delegate.takeCalls(), Calls{"removed"});
    EXPECT_EQ(delegate.lastElastic, elastic);
}

TEST_F(DXDocumentModelElastics, anElasticThatIsNotPlacedIsNeitherRemovedNorRecolored)
{
    const auto elastic = std::make_shared<ElasticModel>(nullptr, nullptr, Keys{"8", "9"});
    document->removeElasticModel(elastic);
    document->elasticModel_setElasticsSizeType(elastic, std::make_shared<ElasticsSizeType>());
    document->removeElasticModel(nullptr);
    EXPECT_EQ(elastic->elasticsSizeType(), nullptr);
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelElastics, recoloringSetsTheSizeAndTellsTheDelegate)
{
    const auto elastic = place({"8", "9"});
    const auto size = std::make_shared<ElasticsSizeType>();
    document->elasticModel_setElasticsSizeType(elastic, size);
    EXPECT_EQ(elastic->elasticsSizeType(), size);
    EXPECT_EQ(delegate.takeCalls(), Calls{"color"});
    EXPECT_EQ(delegate.lastElastic, elastic);
}

TEST_F(DXDocumentModelElastics, anElasticGivenByItsPlaceInTheListIsRemovedAndToldWhole)
{
    place({"8", "9"});
    std::weak_ptr<ElasticModel> watched = document->elasticModels()[0];
    document->removeElasticModel(document->elasticModels()[0]);
    EXPECT_TRUE(document->elasticModels().empty());
    ASSERT_TRUE(delegate.lastElastic) << "alive until the delegate had it";
    EXPECT_EQ(delegate.lastElastic->bracketSequence(), (Keys{"8", "9"}));
    delegate.lastElastic.reset();
    EXPECT_TRUE(watched.expired());
}

} // namespace
} // namespace kelo
