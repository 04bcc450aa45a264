// When changes are stored: how long the first and the last of many wait.

#include "tests/viewer/treatment/TreatmentSessionFixture.h"

namespace viewer {
namespace {

TEST_F(TreatmentSessionTest, aBurstOfChangesIsOneReportThreeSecondsAfterTheFirst)
{
    session->setNextDelegate(&delegate);
    document->toggleVisibilityOfBracket("8");
    clock->advance(2.0);
    document->bracket_setColorWithBracketColorTypeID("8", 4);
    clock->advance(0.9);
    EXPECT_TRUE(stored.empty());
    clock->advance(0.1);
    ASSERT_EQ(stored.size(), 1u);
    EXPECT_EQ(stored[0].bracketVisibilities, (DXDocumentModel::Visibilities{{"8", true}}));
    EXPECT_EQ(stored[0].bracketColorTypeIDs, (DXDocumentModel::OptionalColorTypeIDs{{"8", 4}}));
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities, stored[0].bracketVisibilities);
    EXPECT_EQ(noteOf(day(20)).bracketColorTypeIDs, stored[0].bracketColorTypeIDs);
}

TEST_F(TreatmentSessionTest, storingDoesNotBringTheDocumentsNoticeForward)
{
    session->setNextDelegate(&delegate);
    document->bracket_setColorWithBracketColorTypeID("8", 4);
    clock->advance(2.0);
    document->toggleVisibilityOfButton("8l");
    clock->advance(2.9);
    EXPECT_EQ(stored.size(), 1u);
    EXPECT_EQ(document->pendingBracketColorTypeIDUpdates(),
              (DXDocumentModel::ColorTypeIDs{{"8", 4}}));
    EXPECT_EQ(delegate.takeCalls(), Lines{"button 8l visible"});
    clock->advance(0.1);
    EXPECT_EQ(delegate.takeCalls(), (Lines{"bracket updates", "button updates"}));
    EXPECT_TRUE(document->pendingBracketColorTypeIDUpdates().empty());
    EXPECT_EQ(stored.size(), 1u) << "what was stored is not stored again";
}

TEST_F(TreatmentSessionTest, inSteadyWorkNoChangeWaitsForMoreThanThreeSeconds)
{
    // Never three seconds of quiet: the document alone reports nothing.
    for (long change = 0; change < 400; ++change) {
        document->bracket_setColorWithBracketColorTypeID(std::to_string(2 + change % 14),
                                                         1 + change % 4);
        if (change >= 2) {
            const long old = change - 2; // four seconds ago
            const auto colors = noteOf(day(20)).bracketColorTypeIDs;
            const auto found = colors.find(std::to_string(2 + old % 14));
            ASSERT_NE(found, colors.end()) << change;
            ASSERT_EQ(found->second, 1 + old % 4) << change;
        }
        clock->advance(2.0);
    }
}

TEST_F(TreatmentSessionTest, aChangeIsStoredWhileAMenuIsOpen)
{
    document->toggleVisibilityOfBracket("8");
    const kelo::RunLoop::ModeScope menu(kelo::RunLoop::main(), kelo::RunLoopMode::EventTracking);
    clock->advance(3.0);
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities, (DXDocumentModel::Visibilities{{"8", true}}));
}

TEST_F(TreatmentSessionTest, aChangeBackIsStoredToo)
{
    document->toggleVisibilityOfBracket("8");
    clock->advance(2.0);
    document->toggleVisibilityOfButton("8l");
    clock->advance(1.0);
    document->toggleVisibilityOfBracket("8");
    clock->advance(3.0);
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities, (DXDocumentModel::Visibilities{{"8", false}}));
    EXPECT_EQ(stored.size(), 2u);
}

TEST_F(TreatmentSessionTest, whatCouldNotBeStoredIsTriedAgainWithoutAFurtherChange)
{
    {
        const OtherConnection other(path);
        other.run(QStringLiteral("BEGIN IMMEDIATE"));
        document->toggleVisibilityOfTooth("5");
        clock->advance(10.0);
        EXPECT_EQ(session->keptReportCount(), 1u);
        other.run(QStringLiteral("ROLLBACK"));
    }
    clock->advance(3.0);
    EXPECT_EQ(session->keptReportCount(), 0u);
    EXPECT_EQ(noteOf(day(20)).toothVisibilities.at("5"), false);
    EXPECT_EQ(sentences.size(), 1u);
}

} // namespace
} // namespace viewer
