#include "keloOpenGL/editing/ElasticEditor.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

using ElasticMembers = ElasticEditor::Members;

ElasticHit hitOnMember(const std::string &name, bool isShown)
{
    return {std::nullopt, false, name, isShown};
}

bool nothingIsHidden(const std::string &)
{
    return false;
}

/// One that has strung these members.
ElasticEditor stringing(const ElasticMembers &members)
{
    ElasticEditor editor;
    editor.begin(members.front(), 5);
    for (std::size_t i = 1; i < members.size(); ++i)
        EXPECT_TRUE(editor.take(PlacementStep::Add, members[i]));
    return editor;
}

TEST(ElasticEditor, aPressWithoutAnElasticBeingStrungOpensAMenu)
{
    const ElasticEditor editor;
    EXPECT_EQ(editor.press({3, true, std::nullopt, false}), ElasticPress::OpenElasticMenu);
    EXPECT_EQ(editor.press(hitOnMember("8", true)), ElasticPress::OpenMemberMenu);
    EXPECT_EQ(editor.press({3, false, std::nullopt, false}), ElasticPress::Nothing)
        << "an elastic beyond the list";
}

TEST(ElasticEditor, aPressOnNothingOrOnWhatIsHiddenTurnsTheJaws)
{
    for (const ElasticEditor &editor : {ElasticEditor(), stringing({"8"})}) {
        EXPECT_EQ(editor.press({}), ElasticPress::TurnJaws);
        EXPECT_EQ(editor.press(hitOnMember("8", false)), ElasticPress::TurnJaws);
    }
}

TEST(ElasticEditor, whileOneIsStrungPlacedOnesCannotBeClicked)
{
    const ElasticEditor editor = stringing({"8"});
    EXPECT_EQ(editor.press({3, true, std::nullopt, false}), ElasticPress::TurnJaws);
    EXPECT_EQ(editor.press(hitOnMember("9", true)), ElasticPress::GoOn);
}

TEST(ElasticEditor, theSequenceIsThereExactlyWhileOneIsBeingStrung)
{
    ElasticEditor editor;
    EXPECT_FALSE(editor.isStringing());
    EXPECT_EQ(editor.sizeTypeID(), std::nullopt);
    editor.begin("8", 5);
    EXPECT_EQ(editor.sequence(), ElasticMembers{"8"});
    EXPECT_EQ(editor.sizeTypeID(), 5);
    editor.end();
    EXPECT_EQ(editor.sequence(), std::nullopt);
    EXPECT_EQ(editor.sizeTypeID(), 5) << "that of the last one";
}

TEST(ElasticEditor, stepsGoAsTheClicksMean)
{
    ElasticEditor editor = stringing({"8", "9"});
    EXPECT_EQ(editor.stepForClickOn("10"), PlacementStep::Add);
    EXPECT_EQ(editor.stepForClickOn("8"), PlacementStep::Close);
    ASSERT_EQ(editor.stepForClickOn("9"), PlacementStep::TakeBack);
    EXPECT_TRUE(editor.take(PlacementStep::TakeBack, "9"));
    EXPECT_EQ(editor.sequence(), ElasticMembers{"8"});
}

TEST(ElasticEditor, aStepThatTheClickDoesNotMeanAnyMoreIsNotTaken)
{
    ElasticEditor editor = stringing({"8", "9"});
    editor.end();
    EXPECT_FALSE(editor.take(PlacementStep::Add, "10"));
    EXPECT_EQ(editor.sequence(), std::nullopt) << "what has ended stays so";
    editor.begin("9", 5);
    EXPECT_FALSE(editor.take(PlacementStep::TakeBack, "9")) << "it would leave none";
    EXPECT_EQ(editor.sequence(), ElasticMembers{"9"});
}

TEST(ElasticEditor, twoMembersArePlacedOneIsNot)
{
    ElasticEditor none;
    EXPECT_EQ(none.beginPlacing(nothingIsHidden), std::nullopt);
    ElasticEditor one = stringing({"8"});
    EXPECT_EQ(one.beginPlacing(nothingIsHidden), std::nullopt);
    ElasticEditor two = stringing({"8", "9"});
    EXPECT_EQ(two.beginPlacing(nothingIsHidden), (ElasticMembers{"8", "9"}));
    EXPECT_TRUE(two.isStringing()) << "until it is ended";
}

TEST(ElasticEditor, whatIsHiddenMeanwhileIsLeftOutAndNoMemberComesTwiceInARow)
{
    const auto isNine = [](const std::string &member) { return member == "9"; };
    ElasticEditor editor = stringing({"8", "10", "9", "10"});
    EXPECT_EQ(editor.beginPlacing(isNine), (ElasticMembers{"8", "10"}));
    ElasticEditor left = stringing({"8", "9"});
    EXPECT_EQ(left.beginPlacing(isNine), std::nullopt);
}

TEST(ElasticEditor, anElasticThatIsBeingPlacedIsNotPlacedOnceMore)
{
    ElasticEditor editor = stringing({"8", "9"});
    ASSERT_TRUE(editor.beginPlacing(nothingIsHidden));
    EXPECT_EQ(editor.beginPlacing(nothingIsHidden), std::nullopt);
    editor.notePlaced();
    EXPECT_TRUE(editor.beginPlacing(nothingIsHidden));
}

} // namespace
