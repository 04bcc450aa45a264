#include "document/SavedState.h"

#include "document/DocumentCatalogue.h"
#include "tests/document/DocumentFixture.h"
#include "tests/support/CapturedOutput.h"

#include <array>

namespace kelo {
namespace {

using test::standardErrorOf;

/// A document that offers one size, one colour and one configuration.
class SavedStates : public test::DocumentFixture
{
protected:
    SavedStates()
    {
        Catalogue catalogue;
        catalogue.bracketColorTypes.push_back(std::make_shared<BracketColorType>());
        catalogue.bracketColorTypes.front()->typeID = 5;
        catalogue.bracketColorTypes.front()->bracketColor = std::array<double, 4>{1, 0, 0, 1};
        catalogue.elasticsSizeTypes.push_back(std::make_shared<ElasticsSizeType>());
        catalogue.elasticsSizeTypes.front()->typeID = 6;
        catalogue.elasticsConfigTypes.push_back(std::make_shared<ElasticsConfigType>());
        catalogue.elasticsConfigTypes.front()->typeID = 7;
        offerCatalogue(*document, catalogue);
    }

    SavedState changed() const
    {
        SavedState state = savedStateOf(*document);
        state.toothVisibilities["9"] = false;
        state.bracketVisibilities["27"] = false;
        state.buttonVisibilities["3l"] = false;
        state.bracketColorTypeIDs["8"] = 5;
        state.elastics = {{7, 6, {"6", "28"}}, {std::nullopt, std::nullopt, {"8", "3l"}}};
        return state;
    }
};

TEST_F(SavedStates, areGivenBackAsTheyWereRestored)
{
    const SavedState state = changed();
    EXPECT_TRUE(restoreState(*document, state).empty());
    EXPECT_EQ(savedStateOf(*document), state);
    EXPECT_TRUE(bracket("9")->hiddenSecondary());
    EXPECT_EQ(document->elasticModels().front()->elasticsSizeType(),
              document->availableElasticsSizeTypes().at(6));
    EXPECT_TRUE(document->checkSanity().empty());
    EXPECT_TRUE(delegate.takeCalls().empty());
    EXPECT_TRUE(document->pendingBracketVisibilityUpdates().empty());
}

TEST_F(SavedStates, replaceAllThatWasThere)
{
    restoreState(*document, changed());
    EXPECT_TRUE(restoreState(*document, {}).empty());
    const SavedState state = savedStateOf(*document);
    EXPECT_TRUE(state.toothVisibilities.at("9"));
    // What is left out is not placed.
    EXPECT_FALSE(state.bracketVisibilities.at("8"));
    EXPECT_FALSE(state.buttonVisibilities.at("8l"));
    EXPECT_TRUE(state.bracketColorTypeIDs.empty());
    EXPECT_TRUE(state.elastics.empty());
}

TEST_F(SavedStates, takeTheNumberOfNoColourForNone)
{
    SavedState state = changed();
    state.bracketColorTypeIDs["8"] = noBracketColorTypeID;
    EXPECT_EQ(standardErrorOf([&] { restoreState(*document, state); }), "");
    EXPECT_FALSE(document->bracketColorsTypeIDs().contains("8"));
}

TEST_F(SavedStates, tellWhatIsUnknownOfTheirElastics)
{
    SavedState state = changed();
    state.elastics = {{7, 6, {"6", "40"}}, {71, 61, {"6", "28"}}};
    const auto problems = restoreState(*document, state);
    using Kind = ElasticProblem::Kind;
    EXPECT_EQ(problems, (std::vector<ElasticProblem>{{Kind::UnknownMember, 0, "40", 0},
                                                     {Kind::UnknownSize, 1, "", 61},
                                                     {Kind::UnknownConfiguration, 1, "", 71}}));
    std::vector<std::string> sentences;
    for (const ElasticProblem &problem : problems)
        sentences.push_back(problem.sentence(state));
    EXPECT_EQ(sentences, (std::vector<std::string>{
                             "elastic 6,40 is left out: 40 is no bracket or button",
                             "elastic 6,28 has no colour: the size 61 is not in the catalogue",
                             "elastic 6,28: the configuration 71 is not in the catalogue"}));
    // The numbers are not lost.
    EXPECT_EQ(savedStateOf(*document).elastics, (std::vector<SavedElastic>{state.elastics[1]}));
}

} // namespace
} // namespace kelo
