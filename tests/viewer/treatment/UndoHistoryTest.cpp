#include "viewer/treatment/UndoHistory.h"

#include "tests/viewer/support/ScriptFixture.h"
#include "viewer/treatment/ChangeText.h"

#include <QCoreApplication>

#include <random>

namespace {

using namespace viewer;

/// The sample treatment, whose every action is an event.
class UndoHistoryTest : public viewer::test::ScriptFixture
{
protected:
    UndoHistoryTest()
    {
        // Neither colours nor elastics to begin with; every bracket and button is placed.
        document().setElasticModels(kelo::DXDocumentModel::ElasticModels());
        history.watch(treatment->document());
    }

    static void eventEnds() { QCoreApplication::sendPostedEvents(); }

    /// Plays the lines as one action and returns the name of the step.
    std::string nameOf(const QByteArray &lines)
    {
        play(lines);
        eventEnds();
        return history.stack().undoText().toStdString();
    }

    void undoAndRedo()
    {
        const kelo::SavedState after = kelo::savedStateOf(document());
        history.stack().undo();
        const kelo::SavedState before = kelo::savedStateOf(document());
        EXPECT_NE(before, after);
        eventEnds();
        EXPECT_TRUE(history.stack().canRedo()) << "going back is no step of its own";
        history.stack().redo();
        EXPECT_EQ(kelo::savedStateOf(document()), after);
        EXPECT_EQ(document().checkSanity(), std::vector<std::string>());
    }

    UndoHistory history;
};

TEST_F(UndoHistoryTest, everyActionHasAReadableName)
{
    const struct
    {
        const char *lines;
        const char *name;
    } rows[] = {
        {"modifiers control\nclick tooth 8\nmenu \"Remove Bracket\"", "Remove bracket from 8"},
        {"advance 5\nclick tooth 8\nmenu \"Light blue\"", "Place bracket on 8, light blue"},
        {"advance 5\nclick tooth 8\nmenu \"Red\"", "Colour bracket on 8, from light blue to red"},
        {"advance 5\nclick tooth 9\nmenu \"Remove Tooth\"", "Remove tooth 9"},
        {"advance 5\nclick tooth 8\nmenu \"Remove All Brackets\"", "Remove 28 brackets"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(nameOf(row.lines), row.name);
        undoAndRedo();
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, whatHasNoColourAnyMoreIsCleared)
{
    document().bracket_setColorWithBracketColorTypeID("8", typeIDOf("Red"));
    document().bracket_setColorWithBracketColorTypeID("9", typeIDOf("Red"));
    eventEnds();
    EXPECT_EQ(history.stack().undoText().toStdString(), "Colour 2 brackets (8, 9), red");
    document().bracket_setColorWithBracketColorTypeID("8", 4999);
    eventEnds();
    EXPECT_EQ(history.stack().undoText().toStdString(), "Clear bracket on 8, red");
    undoAndRedo();
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, elasticsAreNamedByTheTeethThatTheyRunOver)
{
    play("click bracket 6\nmenu \"Start New Elastic\" > \"1/4\\\" 3.5 oz\"");
    eventEnds();
    EXPECT_FALSE(history.stack().canUndo()) << "an open placement has changed nothing yet";
    EXPECT_EQ(nameOf("click bracket 28\nclick bracket 6"),
              "Place elastic 6 \u2013 28, 1/4\" 3.5 oz");
    undoAndRedo();
    history.setNotation(ToothNotation::FDI);
    EXPECT_EQ(nameOf("click elastic 0\nmenu \"Remove Elastic\""),
              "Remove elastic 13 \u2013 44, 1/4\" 3.5 oz");
    undoAndRedo();
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, goingBackAndForthAsksForARedraw)
{
    const auto expectRedraws = [this] {
        eventEnds();
        view->setNeedsDisplay(false);
        history.stack().undo();
        EXPECT_TRUE(view->needsDisplay());
        view->setNeedsDisplay(false);
        history.stack().redo();
        EXPECT_TRUE(view->needsDisplay());
    };
    const auto size = document().availableElasticsSizeTypes().begin()->second;
    document().placeElasticModel(
        std::make_shared<kelo::ElasticModel>(nullptr, size, std::vector<std::string>{"6", "27"}));
    expectRedraws();
    document().elasticModel_setElasticsSizeType(
        document().elasticModels().front(),
        document().availableElasticsSizeTypes().rbegin()->second);
    expectRedraws();
    document().removeElasticModel(document().elasticModels().front());
    expectRedraws();
    document().toggleVisibilityOfBracket("8");
    expectRedraws();
    document().bracket_setColorWithBracketColorTypeID("9", typeIDOf("Red"));
    expectRedraws();
    view->makeCurrentContextIfNeeded();
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, aChangeOfAnElasticSaysWhichAndFromWhatToWhat)
{
    const auto &sizes = document().availableElasticsSizeTypes();
    const auto small = sizes.at(7), large = sizes.at(10);
    const auto place = [&](const auto &size, std::vector<std::string> keys) {
        document().placeElasticModel(
            std::make_shared<kelo::ElasticModel>(nullptr, size, std::move(keys)));
        return document().elasticModels().back();
    };
    const std::string fromTo = ", from " + small->typeLabel + " to " + large->typeLabel;
    const auto first = place(small, {"6", "27", "28"});
    EXPECT_EQ(nameOf(""), "Place elastic 6 \u2013 27 \u2013 28, " + small->typeLabel);
    document().elasticModel_setElasticsSizeType(first, large);
    EXPECT_EQ(nameOf(""), "Change elastic 6 \u2013 27 \u2013 28" + fromTo);
    undoAndRedo();
    document().elasticModel_setElasticsSizeType(first, small);
    eventEnds();
    const auto second = place(small, {"11", "22l"});
    eventEnds();
    for (const auto &elastic : {first, second})
        document().elasticModel_setElasticsSizeType(elastic, large);
    EXPECT_EQ(nameOf(""),
              "Change 2 elastics (6 \u2013 27 \u2013 28; 11 \u2013 22 lingual)" + fromTo);
    undoAndRedo();
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, anElasticThatHasOtherMembersIsNamedWithBoth)
{
    const auto size = document().availableElasticsSizeTypes().at(7);
    kelo::SavedState before = kelo::savedStateOf(document()), after = before;
    before.elastics = {{std::nullopt, 7, {"6", "27", "28"}}};
    after.elastics = {{std::nullopt, 7, {"6", "28"}}};
    EXPECT_EQ(changeText(before, after, document(), {}, ToothNotation::Universal).toStdString(),
              "Change elastic 6 \u2013 27 \u2013 28, 6 \u2013 28");
    const auto named = document().availableElasticsConfigTypes().front();
    after.elastics = {{named->typeID, 7, {"6", "27", "28"}}};
    EXPECT_EQ(changeText(before, after, document(), {}, ToothNotation::Universal).toStdString(),
              "Change elastic 6 \u2013 27 \u2013 28, " + named->typeLabel);
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, whatOneEventChangesIsOneStepAndTwoEventsAreTwo)
{
    document().toggleVisibilityOfTooth("9");
    document().toggleVisibilityOfBracket("8");
    EXPECT_FALSE(history.stack().canUndo()) << "the event goes on";
    eventEnds();
    EXPECT_EQ(history.stack().count(), 1);
    document().toggleVisibilityOfBracket("8");
    eventEnds();
    document().toggleVisibilityOfTooth("9");
    eventEnds();
    EXPECT_EQ(history.stack().count(), 3);
    document().toggleVisibilityOfTooth("9");
    document().toggleVisibilityOfTooth("9");
    eventEnds();
    EXPECT_EQ(history.stack().count(), 3) << "all is as before";
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, aStepCanBeEndedBeforeItsEvent)
{
    document().toggleVisibilityOfBracket("8");
    history.endStep();
    EXPECT_EQ(history.stack().undoText().toStdString(), "Remove bracket from 8");
    document().toggleVisibilityOfBracket("9");
    eventEnds();
    EXPECT_EQ(history.stack().undoText().toStdString(), "Remove bracket from 9");
    EXPECT_EQ(history.stack().count(), 2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, anotherDocumentsChangesAreNoSteps)
{
    viewer::CommandLine commandLine;
    commandLine.headless = true;
    const OpenedTreatment another(commandLine);
    another.document()->toggleVisibilityOfBracket("8");
    eventEnds();
    EXPECT_FALSE(history.stack().canUndo());
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, fewThingsAreNamedAndManyAreCounted)
{
    for (const char *key : {"2", "3", "4", "5", "6", "7"})
        document().toggleVisibilityOfButton(std::string(key) + "l");
    EXPECT_EQ(nameOf(""), "Remove 6 buttons (2, 3, 4, 5, 6, 7)");
    for (const char *key : {"8", "9", "10", "11", "12", "13", "14"})
        document().toggleVisibilityOfButton(std::string(key) + "l");
    EXPECT_EQ(nameOf(""), "Remove 7 buttons");
    document().toggleVisibilityOfTooth("8");
    document().toggleVisibilityOfTooth("9");
    EXPECT_EQ(nameOf(""), "Remove 2 teeth (8, 9)");
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, aBracketThatBringsItsToothBackIsOneStep)
{
    document().toggleVisibilityOfBracket("8");
    document().toggleVisibilityOfTooth("8");
    eventEnds();
    document().bracket_makeVisibleAndSetColorWithBracketColorTypeID("8", typeIDOf("Red"));
    eventEnds();
    EXPECT_EQ(history.stack().undoText().toStdString(), "Place bracket on 8, red");
    history.stack().undo();
    EXPECT_TRUE(bracket("8").hiddenPrimary());
    EXPECT_TRUE(document().toothModels().at("8")->hiddenPrimary());
    EXPECT_EQ(colorOf("8"), std::nullopt);
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, anElasticThatAToothTookAlongComesBackWithIt)
{
    const auto size = document().availableElasticsSizeTypes().begin()->second;
    document().placeElasticModel(std::make_shared<kelo::ElasticModel>(
        nullptr, size, std::vector<std::string>{"6", "8", "27"}));
    document().placeElasticModel(
        std::make_shared<kelo::ElasticModel>(nullptr, size, std::vector<std::string>{"8", "25"}));
    history.watch(treatment->document());
    document().toggleVisibilityOfTooth("8");
    eventEnds();
    EXPECT_EQ(history.stack().undoText().toStdString(), "Remove tooth 8");
    EXPECT_EQ(bands(), (std::vector<std::vector<std::string>>{{"6", "27"}}));
    history.stack().undo();
    EXPECT_EQ(bands(), (std::vector<std::vector<std::string>>{{"6", "8", "27"}, {"8", "25"}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, theHostHearsOfWhatIsUndone)
{
    document().toggleVisibilityOfBracket("8");
    eventEnds();
    const auto calls = treatment->callLog().calls().size();
    history.stack().undo();
    const QJsonArray told = treatment->callLog().calls();
    ASSERT_EQ(told.size(), calls + 1);
    EXPECT_EQ(told.last().toArray(), (QJsonArray{"bracket:visibilityDidChange:", "8", true}));
    EXPECT_EQ(document().pendingBracketVisibilityUpdates().at("8"), true);
    EXPECT_NO_GL_ERROR();
}

TEST_F(UndoHistoryTest, anotherDocumentBeginsAnew)
{
    document().toggleVisibilityOfBracket("8");
    eventEnds();
    EXPECT_TRUE(history.stack().canUndo());
    history.watch(treatment->document());
    EXPECT_FALSE(history.stack().canUndo());
    history.watch(nullptr);
    eventEnds();
    EXPECT_FALSE(history.stack().canUndo());
    EXPECT_NO_GL_ERROR();
}

/// One of the changes that a user can make.
void changeSomething(kelo::DXDocumentModel &document, std::mt19937 &random)
{
    const auto anyKey = [&random](const auto &dictionary) {
        return std::next(dictionary.begin(), random() % dictionary.size())->first;
    };
    const std::string bracket = anyKey(document.bracketModels());
    const long color = anyKey(document.availableBracketColorTypes());
    switch (random() % 8) {
    case 0:
        return document.toggleVisibilityOfBracket(bracket);
    case 1:
        return document.toggleVisibilityOfTooth(bracket);
    case 2:
        return document.toggleVisibilityOfButton(anyKey(document.buttonModels()));
    case 3:
        return document.bracket_setColorWithBracketColorTypeID(bracket, color);
    case 4:
        // On a bracket without colour that is no change that anybody sees.
        if (document.bracketColorsTypeIDs().contains(bracket))
            document.bracket_setColorWithBracketColorTypeID(bracket, 4999);
        return;
    case 5:
        return document.bracket_makeVisibleAndSetColorWithBracketColorTypeID(bracket, color);
    case 6:
        if (!document.elasticModels().empty()) {
            const auto elastic =
                document.elasticModels()[random() % document.elasticModels().size()];
            return document.removeElasticModel(elastic);
        }
        [[fallthrough]];
    default:
        const auto &sizes = document.availableElasticsSizeTypes();
        const auto size = std::next(sizes.begin(), random() % sizes.size())->second;
        document.placeElasticModel(std::make_shared<kelo::ElasticModel>(
            nullptr, size,
            std::vector<std::string>{bracket, anyKey(document.bracketModels()),
                                     anyKey(document.buttonModels())}));
    }
}

TEST_F(UndoHistoryTest, anHourOfChangesGoesBackAndForthStepByStep)
{
    std::mt19937 random(7);
    // The state after each number of steps.
    std::vector<kelo::SavedState> states{kelo::savedStateOf(document())};
    for (int i = 0; i < 500; ++i) {
        const auto before = static_cast<std::size_t>(history.stack().index());
        changeSomething(document(), random);
        eventEnds();
        const auto stepCount = static_cast<std::size_t>(history.stack().index());
        ASSERT_EQ(stepCount, before + (kelo::savedStateOf(document()) != states[before]));
        if (stepCount == before) continue;
        states.resize(stepCount);
        states.push_back(kelo::savedStateOf(document()));
        if (random() % 4 == 0) {
            history.stack().undo();
            ASSERT_EQ(kelo::savedStateOf(document()), states[stepCount - 1]) << i;
        }
        if (random() % 8 == 0 && history.stack().canRedo()) {
            history.stack().redo();
            ASSERT_EQ(kelo::savedStateOf(document()), states[stepCount]) << i;
        }
        ASSERT_EQ(document().checkSanity(), std::vector<std::string>()) << i;
    }
    for (int i = history.stack().index(); i > 0; --i)
        history.stack().undo();
    EXPECT_EQ(kelo::savedStateOf(document()), states[0]);
    EXPECT_NO_GL_ERROR();
}

} // namespace
