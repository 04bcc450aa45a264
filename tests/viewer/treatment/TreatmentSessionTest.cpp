#include "tests/viewer/treatment/TreatmentSessionFixture.h"

#include <random>

namespace viewer {
namespace {

/// What a user sees of two documents is the same.
void expectSameState(const DXDocumentModel &first, const DXDocumentModel &second)
{
    EXPECT_EQ(first.toothVisibilities(), second.toothVisibilities());
    EXPECT_EQ(first.bracketVisibilities(), second.bracketVisibilities());
    EXPECT_EQ(first.buttonVisibilities(), second.buttonVisibilities());
    EXPECT_EQ(first.bracketColorsTypeIDs(), second.bracketColorsTypeIDs());
    ASSERT_EQ(first.elasticModels().size(), second.elasticModels().size());
    for (std::size_t i = 0; i < first.elasticModels().size(); ++i) {
        const auto &one = *first.elasticModels()[i];
        const auto &other = *second.elasticModels()[i];
        EXPECT_EQ(one.bracketSequence(), other.bracketSequence());
        EXPECT_EQ(one.elasticsSizeType()->typeID, other.elasticsSizeType()->typeID);
    }
}

TEST_F(TreatmentSessionTest, anElasticOfAnotherProgramStaysWhenThisOneStores)
{
    const auto first = placed({"6", "30"});
    const auto byOther = [&](const char *from, const char *to) {
        NoteReport report;
        report.date = day(20);
        report.elastics =
            ElasticsReport{ElasticsEvent::Placed, "", {{std::nullopt, 1, {from, to}}}, {}};
        ASSERT_TRUE(store->write(treatmentID, report));
    };
    byOther("8", "25");
    placed({"3", "19"});
    document->elasticModel_setElasticsSizeType(first, document->availableElasticsSizeTypes().at(1));
    EXPECT_EQ(noteOf(day(20)).elastics,
              (std::vector<kelo::SavedElastic>{{std::nullopt, 1, {"6", "30"}},
                                               {std::nullopt, 1, {"8", "25"}},
                                               {std::nullopt, 3, {"3", "19"}}}));
    document->removeElasticModel(first);
    EXPECT_EQ(noteOf(day(20)).elastics,
              (std::vector<kelo::SavedElastic>{{std::nullopt, 1, {"8", "25"}},
                                               {std::nullopt, 3, {"3", "19"}}}));
    ASSERT_TRUE(session->openNote(day(20)));
    EXPECT_EQ(document->elasticModels().size(), 2u) << "opened again, it is shown";
}

TEST_F(TreatmentSessionTest, colorsAndVisibilitiesOfBracketsAreStoredTogetherOrNotAtAll)
{
    document->bracket_makeVisibleAndSetColorWithBracketColorTypeID("8", 4);
    {
        // The colour is written after the visibility; it fails, and takes the visibility with it.
        const OtherConnection other(path);
        other.run(QStringLiteral("CREATE TRIGGER refusal BEFORE INSERT ON bracket_colors"
                                 " BEGIN SELECT RAISE(ABORT, 'refused'); END"));
        clock->advance(3.0);
        EXPECT_EQ(other.rows(QStringLiteral("SELECT count(*) FROM visibilities")), Lines{"0"});
        EXPECT_EQ(other.rows(QStringLiteral("SELECT count(*) FROM changes")), Lines{"0"});
        EXPECT_EQ(session->keptReportCount(), 1u);
        other.run(QStringLiteral("DROP TRIGGER refusal"));
    }
    ASSERT_TRUE(session->storeKeptReports());
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities.at("8"), true);
    EXPECT_EQ(noteOf(day(20)).bracketColorTypeIDs.at("8"), 4);
}

TEST_F(TreatmentSessionTest, buttonsAreStoredThreeSecondsAfterTheChange)
{
    document->toggleVisibilityOfButton("8l");
    clock->advance(2.9);
    EXPECT_TRUE(stored.empty());
    clock->advance(0.1);
    EXPECT_EQ(noteOf(day(20)).buttonVisibilities, (DXDocumentModel::Visibilities{{"8l", true}}));
}

TEST_F(TreatmentSessionTest, aToothIsStoredAtOnce)
{
    document->toggleVisibilityOfTooth("5");
    EXPECT_EQ(noteOf(day(20)).toothVisibilities, (DXDocumentModel::Visibilities{{"5", false}}));
}

TEST_F(TreatmentSessionTest, elasticsAreStoredAtOnceInPlacingOrder)
{
    const auto first = placed({"6", "30"});
    const auto second = placed({"3l", "14", "19"}, 2);
    EXPECT_EQ(noteOf(day(20)).elastics,
              (std::vector<kelo::SavedElastic>{{std::nullopt, 3, {"6", "30"}},
                                               {std::nullopt, 2, {"3l", "14", "19"}}}));
    document->elasticModel_setElasticsSizeType(second,
                                               document->availableElasticsSizeTypes().at(1));
    EXPECT_EQ(noteOf(day(20)).elastics[1].elasticsSizeTypeID, 1);
    document->removeElasticModel(first);
    EXPECT_EQ(noteOf(day(20)).elastics,
              (std::vector<kelo::SavedElastic>{{std::nullopt, 1, {"3l", "14", "19"}}}));
}

TEST_F(TreatmentSessionTest, aRefactoringStoresShortenedAndDropsRemovedElastics)
{
    document->setBracketVisibilities({{"14", true}, {"3", true}, {"19", true}});
    placed({"3", "14", "19"});
    placed({"14", "19"});
    document->toggleVisibilityOfBracket("14");
    EXPECT_EQ(noteOf(day(20)).elastics,
              (std::vector<kelo::SavedElastic>{{std::nullopt, 3, {"3", "19"}}}));
    const StoredChange last = store->changes(treatmentID).value().back();
    EXPECT_EQ(last.what, "elastics refactored");
    EXPECT_EQ(last.key, "14");
}

TEST_F(TreatmentSessionTest, aRemovedColorIsStoredAs4999AndRestoredWithoutAMessage)
{
    document->bracket_setColorWithBracketColorTypeID("8", 4);
    clock->advance(3.0);
    document->bracket_setColorWithBracketColorTypeID("8", std::nullopt);
    clock->advance(3.0);
    EXPECT_EQ(OtherConnection(path).rows(
                  QStringLiteral("SELECT name_key, color_type_id FROM bracket_colors")),
              Lines{"8|4999"});
    const auto reopened = anotherDocument();
    TreatmentSession second(store, treatmentID, reopened);
    EXPECT_EQ(standardErrorOf([&] { EXPECT_TRUE(second.openNote(day(20))); }), "");
    EXPECT_TRUE(reopened->bracketColorsTypeIDs().empty());
}

TEST_F(TreatmentSessionTest, closingStoresTheLastThreeSeconds)
{
    document->toggleVisibilityOfBracket("8");
    document->toggleVisibilityOfButton("9l");
    clock->advance(1.0);
    EXPECT_TRUE(session->close());
    EXPECT_EQ(document->delegate(), nullptr);
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities.at("8"), true);
    EXPECT_EQ(noteOf(day(20)).buttonVisibilities.at("9l"), true);
}

TEST_F(TreatmentSessionTest, aSessionThatEndsStoresTheLastThreeSeconds)
{
    document->toggleVisibilityOfBracket("8");
    session.reset();
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities.at("8"), true);
    document->toggleVisibilityOfTooth("5");
    EXPECT_FALSE(noteOf(day(20)).toothVisibilities.contains("5"));
}

TEST_F(TreatmentSessionTest, aDocumentWithAnotherDelegateIsNotTheSessionsAnyMore)
{
    document->setDelegate(&delegate);
    document->toggleVisibilityOfBracket("8");
    session.reset();
    EXPECT_EQ(document->delegate(), &delegate);
    EXPECT_TRUE(document->pendingBracketVisibilityUpdates().contains("8"));
    EXPECT_EQ(store->note(treatmentID, day(20)).value(), std::nullopt);
}

TEST_F(TreatmentSessionTest, aReopenedTreatmentLooksAsItWasLeft)
{
    std::mt19937 random(20261120);
    const Keys teeth = kelo::test::joined(kelo::TreatmentNote::upperToothNameKeys(),
                                          kelo::TreatmentNote::lowerToothNameKeys());
    const auto anyKey = [&] { return teeth[random() % teeth.size()]; };
    const auto anySize = [&] {
        return document->availableElasticsSizeTypes().at(1 + static_cast<long>(random() % 4));
    };
    for (int step = 0; step < 600; ++step) {
        const auto &elastics = document->elasticModels();
        switch (random() % 8) {
        case 0:
            document->toggleVisibilityOfTooth(anyKey());
            break;
        case 1:
            document->toggleVisibilityOfBracket(anyKey());
            break;
        case 2:
            document->toggleVisibilityOfButton(anyKey() + "l");
            break;
        case 3:
            document->bracket_setColorWithBracketColorTypeID(
                anyKey(), random() % 3 ? std::optional<long>(2) : std::nullopt);
            break;
        case 4:
            document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(anyKey(), 3);
            break;
        case 5:
            document->placeElasticModel(std::make_shared<ElasticModel>(
                nullptr, anySize(), Keys{anyKey(), anyKey() + "l", anyKey()}));
            break;
        case 6:
            if (elastics.empty()) break;
            if (random() % 2)
                document->removeElasticModel(elastics[random() % elastics.size()]);
            else
                document->elasticModel_setElasticsSizeType(elastics[random() % elastics.size()],
                                                           anySize());
            break;
        default:
            clock->advance(0.5 * static_cast<double>(random() % 8));
            break;
        }
    }
    ASSERT_TRUE(session->close());
    const auto reopened = anotherDocument();
    TreatmentSession second(TreatmentStore::open(path).value(), treatmentID, reopened);
    EXPECT_EQ(standardErrorOf([&] { EXPECT_TRUE(second.openNote(day(20)).value().isEmpty()); }),
              "");
    expectSameState(*document, *reopened);
    EXPECT_EQ(reopened->checkSanity(), Lines());
    EXPECT_TRUE(sentences.empty());
}

TEST_F(TreatmentSessionTest, twoReportsWhileTheDatabaseIsLockedAreStoredWithTheNextOne)
{
    {
        const OtherConnection other(path);
        other.run(QStringLiteral("BEGIN IMMEDIATE"));
        document->toggleVisibilityOfTooth("5");
        placed({"6", "30"});
        EXPECT_EQ(session->keptReportCount(), 2u);
        EXPECT_EQ(
            sentences,
            Lines{"The changes could not be stored and are kept in memory for the next try: " +
                  path.toStdString() + ": the database is locked by another program"});
        EXPECT_TRUE(stored.empty());
        EXPECT_EQ(store->note(treatmentID, day(20)).value(), std::nullopt);
        other.run(QStringLiteral("ROLLBACK"));
    }
    EXPECT_FALSE(document->toothVisibilities().at("5")) << "the document goes on";
    document->toggleVisibilityOfTooth("12");
    EXPECT_EQ(session->keptReportCount(), 0u);
    EXPECT_EQ(stored.size(), 3u);
    EXPECT_EQ(noteOf(day(20)).toothVisibilities,
              (DXDocumentModel::Visibilities{{"5", false}, {"12", false}}));
    EXPECT_EQ(noteOf(day(20)).elastics.size(), 1u);
    EXPECT_EQ(sentences.size(), 1u);
}

TEST_F(TreatmentSessionTest, aKeptReportIsLoggedWithTheTimeOfTheChange)
{
    const auto time = std::make_shared<qint64>(100); // the session asks when it ends, too
    store->setClock([time] { return *time; });
    {
        const OtherConnection other(path);
        other.run(QStringLiteral("BEGIN IMMEDIATE"));
        document->toggleVisibilityOfTooth("5");
        other.run(QStringLiteral("ROLLBACK"));
    }
    *time = 200;
    ASSERT_TRUE(session->storeKeptReports());
    EXPECT_EQ(store->changes(treatmentID).value().back().changedAt, 100);
}

TEST_F(TreatmentSessionTest, aSecondOutageIsToldAgain)
{
    for (int outage = 0; outage < 2; ++outage) {
        const OtherConnection other(path);
        other.run(QStringLiteral("BEGIN IMMEDIATE"));
        document->toggleVisibilityOfTooth("5");
        other.run(QStringLiteral("ROLLBACK"));
        ASSERT_TRUE(session->storeKeptReports());
    }
    EXPECT_EQ(sentences.size(), 2u);
}

TEST_F(TreatmentSessionTest, aFailureHandlerMayBringTheNextReport)
{
    session->failureHandler = [this](const QString &) { document->toggleVisibilityOfTooth("6"); };
    {
        const OtherConnection other(path);
        other.run(QStringLiteral("BEGIN IMMEDIATE"));
        document->toggleVisibilityOfTooth("5");
        other.run(QStringLiteral("ROLLBACK"));
    }
    EXPECT_EQ(session->keptReportCount(), 2u);
    ASSERT_TRUE(session->close());
    EXPECT_EQ(noteOf(day(20)).toothVisibilities,
              (DXDocumentModel::Visibilities{{"5", false}, {"6", false}}));
}

TEST_F(TreatmentSessionTest, closingWhileTheDatabaseIsLockedFailsAndMayBeTriedAgain)
{
    document->toggleVisibilityOfBracket("8");
    {
        const OtherConnection other(path);
        other.run(QStringLiteral("BEGIN IMMEDIATE"));
        const auto closed = session->close();
        ASSERT_FALSE(closed);
        EXPECT_EQ(closed.failure().problem, StoreProblem::Locked);
        other.run(QStringLiteral("ROLLBACK"));
    }
    EXPECT_TRUE(session->close());
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities.at("8"), true);
}

TEST_F(TreatmentSessionTest, openingANoteStoresNothing)
{
    EXPECT_EQ(store->note(treatmentID, day(20)).value(), std::nullopt);
    EXPECT_TRUE(store->changes(treatmentID).value().empty());
}

TEST_F(TreatmentSessionTest, aNoteOfAnotherDateTakesTheChangesFromThenOn)
{
    document->toggleVisibilityOfBracket("8");
    ASSERT_TRUE(session->openNote(day(25)));
    EXPECT_EQ(noteOf(day(20)).bracketVisibilities.at("8"), true)
        << "what was not reported yet belongs to the date before";
    EXPECT_EQ(document->bracketVisibilities().at("8"), true) << "starts from the earlier note";
    EXPECT_EQ(store->note(treatmentID, day(25)).value(), std::nullopt);
    document->toggleVisibilityOfTooth("5");
    EXPECT_EQ(noteOf(day(25)).toothVisibilities.at("5"), false);
    EXPECT_EQ(noteOf(day(25)).bracketVisibilities.at("8"), true);
    EXPECT_TRUE(noteOf(day(20)).toothVisibilities.empty());
    ASSERT_TRUE(session->openNote(day(20)));
    EXPECT_EQ(document->toothVisibilities().at("5"), true);
    ASSERT_TRUE(session->openNote(day(1)));
    EXPECT_EQ(document->bracketVisibilities().at("8"), false) << "no earlier note: nothing placed";
}

TEST_F(TreatmentSessionTest, aNoteShowsWhatIsKeptAndNotStoredYet)
{
    const OtherConnection other(path);
    other.run(QStringLiteral("BEGIN IMMEDIATE"));
    document->toggleVisibilityOfTooth("5");
    session->setApprovedDate(day(20));
    ASSERT_TRUE(session->openNote(day(22)));
    EXPECT_EQ(document->toothVisibilities().at("5"), false) << "from the kept earlier note";
    EXPECT_EQ(session->approvedDate(), std::nullopt);
    document->toggleVisibilityOfTooth("6");
    ASSERT_TRUE(session->openNote(day(20)));
    EXPECT_EQ(document->toothVisibilities().at("5"), false);
    EXPECT_EQ(document->toothVisibilities().at("6"), true);
    EXPECT_EQ(session->approvedDate(), day(20));
    other.run(QStringLiteral("ROLLBACK"));
    ASSERT_TRUE(session->close());
    EXPECT_EQ(noteOf(day(22)).toothVisibilities,
              (DXDocumentModel::Visibilities{{"5", false}, {"6", false}}));
}

TEST_F(TreatmentSessionTest, anApprovalIsStoredWithTheNote)
{
    session->setApprovedDate(day(21));
    EXPECT_EQ(noteOf(day(20)).approvedDate, day(21));
    session->setApprovedDate(std::nullopt);
    EXPECT_EQ(noteOf(day(20)).approvedDate, std::nullopt);
}

TEST_F(TreatmentSessionTest, aNoteThatLeavesKeysOutShowsTeethAndNoBrackets)
{
    document->setToothVisibilities({{"5", false}});
    document->setBracketVisibilities({{"8", true}});
    document->setButtonVisibilities({{"8l", true}});
    document->setBracketColorTypeIDs({{"8", 4}});
    placed({"6", "30"});
    ASSERT_TRUE(session->openNote(day(1)));
    for (const auto &[key, visible] : document->toothVisibilities())
        EXPECT_TRUE(visible) << key;
    for (const auto &[key, visible] : document->bracketVisibilities())
        EXPECT_FALSE(visible) << key;
    for (const auto &[key, visible] : document->buttonVisibilities())
        EXPECT_FALSE(visible) << key;
    EXPECT_TRUE(document->bracketColorsTypeIDs().empty());
    EXPECT_TRUE(document->elasticModels().empty());
    EXPECT_EQ(bracket("8")->material()->color(), kelo::Color::whiteColor());
}

TEST_F(TreatmentSessionTest, elasticsAreRestoredWithTheRecordsOfTheCatalogue)
{
    treatmentID = store->addTreatment(fullRecord()).value();
    startSession();
    ASSERT_TRUE(session->openNote(day(2)).value().isEmpty());
    ASSERT_EQ(document->elasticModels().size(), 3u);
    EXPECT_EQ(document->elasticModels()[0]->elasticsSizeType(),
              document->availableElasticsSizeTypes().at(3));
    EXPECT_EQ(document->elasticModels()[0]->elasticsConfigType(), nullptr);
    EXPECT_EQ(document->elasticModels()[1]->elasticsConfigType(),
              document->availableElasticsConfigTypes()[0]);
    EXPECT_EQ(document->elasticModels()[1]->bracketSequence(), (Keys{"3l", "14", "3l", "19"}));
    EXPECT_EQ(document->elasticModels()[2]->elasticsSizeType(), nullptr);
}

TEST_F(TreatmentSessionTest, ofWhatIsUnknownAHundredAreToldAndTheRestCounted)
{
    TreatmentRecord record;
    record.notes.resize(1);
    record.notes[0].date = day(20);
    // Every other one repeats the one before it, which is no further sentence.
    for (long typeID = 1001; typeID <= 1150; ++typeID) {
        record.notes[0].elastics.push_back({typeID, std::nullopt, {"6", "30"}});
        record.notes[0].elastics.push_back({typeID, std::nullopt, {"6", "30"}});
    }
    treatmentID = store->addTreatment(record).value();
    startSession();
    const QStringList told = session->openNote(day(20)).value();
    ASSERT_EQ(told.size(), 101);
    EXPECT_EQ(told[0], "The elastic configuration 1001 is not in the catalogue");
    EXPECT_EQ(told[99], "The elastic configuration 1100 is not in the catalogue");
    EXPECT_EQ(told[100], "and 50 more");
    EXPECT_EQ(document->elasticModels().size(), 300u);
}

TEST_F(TreatmentSessionTest, anUnknownSizeIsToldAndKept)
{
    TreatmentRecord record;
    record.notes.resize(1);
    record.notes[0].date = day(20);
    record.notes[0].elastics = {{9, 77, {"6", "30"}}, {std::nullopt, 77, {"3", "19"}}};
    treatmentID = store->addTreatment(record).value();
    startSession();
    const QStringList told = session->openNote(day(20)).value();
    EXPECT_EQ(told, (QStringList{"The elastic size 77 is not in the catalogue; elastics of this "
                                 "size are shown without colour",
                                 "The elastic configuration 9 is not in the catalogue"}));
    placed({"8", "25"}, 1);
    EXPECT_EQ(noteOf(day(20)).elastics,
              (std::vector<kelo::SavedElastic>{{9, 77, {"6", "30"}},
                                               {std::nullopt, 77, {"3", "19"}},
                                               {std::nullopt, 1, {"8", "25"}}}));
}

TEST_F(TreatmentSessionTest, anElasticOnWhatIsNotLoadedIsToldAndKept)
{
    TreatmentRecord record;
    record.notes.resize(1);
    record.notes[0].date = day(20);
    record.notes[0].elastics = {{std::nullopt, 3, {"6", "99"}}};
    treatmentID = store->addTreatment(record).value();
    startSession();
    EXPECT_EQ(session->openNote(day(20)).value(),
              QStringList{"The elastic 6,99 is not shown: 99 is no bracket or button of this "
                          "document"});
    EXPECT_TRUE(document->elasticModels().empty());
    placed({"8", "25"}, 1);
    EXPECT_EQ(noteOf(day(20)).elastics,
              (std::vector<kelo::SavedElastic>{{std::nullopt, 1, {"8", "25"}},
                                               {std::nullopt, 3, {"6", "99"}}}));
}

TEST_F(TreatmentSessionTest, aNoteThatCannotBeReadLeavesTheDocumentAsItIs)
{
    document->toggleVisibilityOfTooth("5");
    OtherConnection(path).run(QStringLiteral("DROP TABLE elastic_members"));
    const auto opened = session->openNote(day(20));
    ASSERT_FALSE(opened);
    EXPECT_TRUE(opened.sentence().startsWith(path + ": ")) << opened.sentence().toStdString();
    EXPECT_FALSE(document->toothVisibilities().at("5"));
    EXPECT_EQ(session->date(), day(20));
}

TEST_F(TreatmentSessionTest, theNextDelegateHearsAllThatTheDocumentTells)
{
    session->setNextDelegate(&delegate);
    document->toggleVisibilityOfTooth("5");
    document->toggleVisibilityOfBracket("8");
    document->toggleVisibilityOfButton("8l");
    const auto elastic = placed({"8", "25"});
    document->elasticModel_setElasticsSizeType(elastic,
                                               document->availableElasticsSizeTypes().at(1));
    document->toggleVisibilityOfBracket("8");
    clock->advance(3.0);
    const auto other = placed({"6", "30"});
    document->removeElasticModel(other);
    EXPECT_EQ(delegate.takeCalls(),
              (Lines{"tooth 5 hidden", "bracket 8 visible", "button 8l visible", "placed", "color",
                     "bracket 8 hidden", "refactored 8", "bracket updates", "button updates",
                     "placed", "removed"}));
}

} // namespace
} // namespace viewer
