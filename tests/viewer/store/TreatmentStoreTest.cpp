#include "tests/viewer/support/TreatmentStoreFixture.h"

#include <random>

namespace viewer {
namespace {

using test::day;
using test::fullRecord;
using test::OtherConnection;
using Lines = std::vector<std::string>;

class TreatmentStoreTest : public test::TreatmentStoreFixture
{};

NoteReport reportOf(const QDate &date)
{
    NoteReport report;
    report.date = date;
    return report;
}

TEST_F(TreatmentStoreTest, aTreatmentComesBackAsItWasStored)
{
    store = opened();
    const auto stored = store->addTreatment(fullRecord());
    ASSERT_TRUE(stored) << stored.sentence().toStdString();
    EXPECT_EQ(store->loadTreatment(stored.value()).value(), fullRecord());
}

TEST_F(TreatmentStoreTest, aTreatmentComesBackAfterTheStoreWasClosed)
{
    store = opened();
    treatmentID = store->addTreatment(fullRecord()).value();
    store.reset();
    EXPECT_EQ(opened()->loadTreatment(treatmentID).value(), fullRecord());
}

TEST_F(TreatmentStoreTest, aRecordOfNothingComesBackToo)
{
    store = opened();
    const qint64 stored = store->addTreatment({}).value();
    EXPECT_EQ(store->loadTreatment(stored).value(), TreatmentRecord());
}

TEST_F(TreatmentStoreTest, aHundredTreatmentsAtRandomComeBackEachAsItWasStored)
{
    std::mt19937 random(20261120);
    const auto key = [&random] { return std::to_string(2 + random() % 30); };
    const auto typeID = [&random] {
        return random() % 3 == 0 ? std::nullopt : std::optional<long>(random() % 40);
    };
    store = opened();
    std::vector<TreatmentRecord> records;
    std::vector<qint64> treatmentIDs;
    for (int i = 0; i < 100; ++i) {
        TreatmentRecord record;
        record.patient.name = QStringLiteral("Patient %1").arg(i);
        for (int dayOfMonth = 1; dayOfMonth < 30;
             dayOfMonth += 1 + static_cast<int>(random() % 9)) {
            NoteRecord note;
            note.date = day(dayOfMonth);
            for (unsigned count = random() % 8; count > 0; --count) {
                note.toothVisibilities[key()] = random() % 2 == 0;
                note.bracketVisibilities[key()] = random() % 2 == 0;
                note.buttonVisibilities[key() + "l"] = random() % 2 == 0;
                note.bracketColorTypeIDs[key()] = typeID();
                note.elastics.push_back({typeID(), typeID(), {key(), key() + "l", key()}});
            }
            record.notes.push_back(note);
        }
        records.push_back(record);
        treatmentIDs.push_back(store->addTreatment(record).value());
    }
    for (std::size_t i = 0; i < records.size(); ++i)
        EXPECT_EQ(store->loadTreatment(treatmentIDs[i]).value(), records[i]) << "treatment " << i;
}

TEST_F(TreatmentStoreTest, aColorTypeOf4999IsNoColor)
{
    TreatmentRecord record;
    record.notes.resize(1);
    record.notes[0].date = day(1);
    record.notes[0].bracketColorTypeIDs = {{"8", 4999}, {"9", std::nullopt}};
    store = opened();
    treatmentID = store->addTreatment(record).value();
    EXPECT_EQ(OtherConnection(path).rows(QStringLiteral(
                  "SELECT name_key, color_type_id FROM bracket_colors ORDER BY name_key")),
              (Lines{"8|4999", "9|4999"}));
    const auto colors = noteOf(day(1)).bracketColorTypeIDs;
    EXPECT_EQ(colors.at("8"), std::nullopt);
    EXPECT_EQ(colors.at("9"), std::nullopt);
}

TEST_F(TreatmentStoreTest, patientsAndTreatmentsAreListedInTheOrderOfTheirCreation)
{
    store = opened();
    const PatientRecord first{QStringLiteral("Z"), QStringLiteral("S-2"), std::nullopt};
    const PatientRecord second{QStringLiteral("A"), QStringLiteral("S-1"), QDate(2011, 4, 2)};
    const qint64 firstID = store->createPatient(first).value();
    const qint64 secondID = store->createPatient(second).value();
    const qint64 early = store->createTreatment(secondID, day(3)).value();
    const qint64 late = store->createTreatment(secondID).value();
    EXPECT_EQ(store->patients().value(),
              (std::vector<StoredPatient>{{firstID, first}, {secondID, second}}));
    EXPECT_EQ(store->treatments(secondID).value(),
              (std::vector<StoredTreatment>{{early, secondID, day(3), std::nullopt},
                                            {late, secondID, std::nullopt, std::nullopt}}));
    EXPECT_TRUE(store->treatments(firstID).value().empty());
}

TEST_F(TreatmentStoreTest, aTreatmentOfNobodyIsRefused)
{
    store = opened();
    const auto result = store->createTreatment(77);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.failure().problem, StoreProblem::NoSuchRecord);
    EXPECT_EQ(result.sentence(), path + ": there is no patient 77");
}

TEST_F(TreatmentStoreTest, aTreatmentThatIsNotThereIsNamed)
{
    store = opened();
    const QString sentence = path + ": there is no treatment 12";
    EXPECT_EQ(store->loadTreatment(12).sentence(), sentence);
    EXPECT_EQ(store->note(12, day(1)).sentence(), sentence);
    EXPECT_EQ(store->lastNoteBefore(12, day(1)).sentence(), sentence);
    EXPECT_EQ(store->startNote(12, day(1)).sentence(), sentence);
    EXPECT_EQ(store->write(12, reportOf(day(1))).sentence(), sentence);
    EXPECT_EQ(store->setApprovedDate(12, day(1)).sentence(), sentence);
}

TEST_F(TreatmentStoreTest, aTreatmentWithTwoNotesOfOneDateIsRefusedAsAWhole)
{
    TreatmentRecord record = fullRecord();
    record.notes[1].date = record.notes[0].date;
    store = opened();
    const auto result = store->addTreatment(record);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.failure().problem, StoreProblem::BadRecord);
    EXPECT_EQ(result.sentence(), path + ": the treatment has two notes of 2026-11-02");
    EXPECT_TRUE(store->patients().value().empty());
}

TEST_F(TreatmentStoreTest, aNoteWithoutADateIsRefused)
{
    startTreatment();
    const auto result = store->write(treatmentID, reportOf(QDate()));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.failure().problem, StoreProblem::BadRecord);
    EXPECT_EQ(result.sentence(), path + ": a date to store is no date of the years 0 to 9999");
}

TEST_F(TreatmentStoreTest, theLastEarlierNoteIsFoundByDate)
{
    store = opened();
    treatmentID = store->addTreatment(fullRecord()).value();
    EXPECT_EQ(store->lastNoteBefore(treatmentID, day(2)).value(), std::nullopt);
    EXPECT_EQ(store->lastNoteBefore(treatmentID, day(20)).value(), fullRecord().notes[0]);
    EXPECT_EQ(store->lastNoteBefore(treatmentID, day(21)).value(), fullRecord().notes[1]);
    EXPECT_EQ(store->note(treatmentID, day(3)).value(), std::nullopt);
    EXPECT_EQ(store->note(treatmentID, day(2)).value(), fullRecord().notes[0]);
}

TEST_F(TreatmentStoreTest, aNewNoteStartsAsTheLastEarlierOneStandsButNotApproved)
{
    startTreatment();
    NoteReport report = reportOf(day(5));
    report.bracketVisibilities = {{"8", true}};
    report.bracketColorTypeIDs = {{"8", 4}, {"9", std::nullopt}};
    report.elastics = ElasticsReport{ElasticsEvent::Placed, "6,30", {{1, 3, {"6", "30"}}}, {}};
    report.approval = ApprovalReport{day(6)};
    ASSERT_TRUE(store->write(treatmentID, report));
    NoteRecord expected = noteOf(day(5));
    EXPECT_EQ(expected.approvedDate, day(6));
    expected.date = day(9);
    expected.approvedDate.reset();
    EXPECT_EQ(store->startNote(treatmentID, day(9)).value(), expected);
    EXPECT_EQ(noteOf(day(9)), expected);
    EXPECT_EQ(log().back(), "note started 2026-11-05: (none) -> 2026-11-09");
}

TEST_F(TreatmentStoreTest, startingANoteThatIsThereLeavesItAsItIs)
{
    store = opened();
    treatmentID = store->addTreatment(fullRecord()).value();
    EXPECT_EQ(store->startNote(treatmentID, day(2)).value(), fullRecord().notes[0]);
    EXPECT_TRUE(log().empty());
}

TEST_F(TreatmentStoreTest, aReportStartsTheNoteOfItsDate)
{
    startTreatment();
    NoteReport report = reportOf(day(5));
    report.toothVisibilities = {{"5", false}};
    ASSERT_TRUE(store->write(treatmentID, report));
    EXPECT_EQ(noteOf(day(5)).toothVisibilities.at("5"), false);
    EXPECT_EQ(log(), (Lines{"note started : (none) -> 2026-11-05",
                            "tooth visibility 5: (none) -> hidden"}));
}

TEST_F(TreatmentStoreTest, aReportChangesNoOtherNote)
{
    store = opened();
    treatmentID = store->addTreatment(fullRecord()).value();
    NoteReport report = reportOf(day(20));
    report.bracketVisibilities = {{"8", true}};
    ASSERT_TRUE(store->write(treatmentID, report));
    EXPECT_EQ(noteOf(day(2)), fullRecord().notes[0]);
}

TEST_F(TreatmentStoreTest, everyKindOfChangeIsWrittenAndLogged)
{
    startTreatment();
    NoteReport report = reportOf(day(5));
    report.changedAt = 1795132800123;
    report.toothVisibilities = {{"5", false}};
    report.bracketVisibilities = {{"8", true}};
    report.buttonVisibilities = {{"8l", true}};
    report.bracketColorTypeIDs = {{"8", 4}, {"9", std::nullopt}};
    report.elastics =
        ElasticsReport{ElasticsEvent::Placed, "6,30", {{std::nullopt, 3, {"6", "30"}}}, {}};
    report.approval = ApprovalReport{day(6)};
    ASSERT_TRUE(store->write(treatmentID, report));
    report.toothVisibilities = {{"5", true}};
    report.bracketVisibilities = {{"8", false}};
    report.buttonVisibilities = {{"8l", false}};
    report.bracketColorTypeIDs = {{"8", std::nullopt}, {"9", 2}};
    report.elastics =
        ElasticsReport{ElasticsEvent::Removed, "6,30", {}, {{std::nullopt, 3, {"6", "30"}}}};
    report.approval = ApprovalReport{};
    ASSERT_TRUE(store->write(treatmentID, report));

    const std::string elastic =
        R"([{"bracketSequence":["6","30"],"elasticsConfigTypeID":null,"elasticsSizeTypeID":3}])";
    EXPECT_EQ(
        log(),
        (Lines{"note started : (none) -> 2026-11-05", "tooth visibility 5: (none) -> hidden",
               "bracket visibility 8: (none) -> visible", "button visibility 8l: (none) -> visible",
               "bracket color 8: (none) -> 4", "bracket color 9: (none) -> 4999",
               "elastic placed 6,30: [] -> " + elastic, "note approval : (none) -> 2026-11-06",
               "tooth visibility 5: hidden -> visible", "bracket visibility 8: visible -> hidden",
               "button visibility 8l: visible -> hidden", "bracket color 8: 4 -> 4999",
               "bracket color 9: 4999 -> 2", "elastic removed 6,30: " + elastic + " -> []",
               "note approval : 2026-11-06 -> (none)"}));
    for (const StoredChange &change : store->changes(treatmentID).value()) {
        EXPECT_EQ(change.changedAt, 1795132800123);
        EXPECT_EQ(change.noteDate, day(5));
    }
    const NoteRecord note = noteOf(day(5));
    EXPECT_EQ(note.bracketColorTypeIDs,
              (kelo::NameKeyDictionary<std::optional<long>>{{"8", std::nullopt}, {"9", 2}}));
    EXPECT_TRUE(note.elastics.empty());
    EXPECT_EQ(note.approvedDate, std::nullopt);
}

TEST_F(TreatmentStoreTest, theLogTellsWhatHappenedToElastics)
{
    startTreatment();
    for (const auto &[event, what] :
         {std::pair{ElasticsEvent::Recolored, "elastic color"},
          std::pair{ElasticsEvent::Refactored, "elastics refactored"}}) {
        NoteReport report = reportOf(day(5));
        report.elastics = ElasticsReport{
            event, "14", {{std::nullopt, static_cast<long>(event), {"3", "14", "19"}}}, {}};
        ASSERT_TRUE(store->write(treatmentID, report));
        EXPECT_EQ(store->changes(treatmentID).value().back().what.toStdString(), what);
        EXPECT_EQ(store->changes(treatmentID).value().back().key, "14");
    }
}

TEST_F(TreatmentStoreTest, whatDoesNotDifferIsNotLoggedAgain)
{
    startTreatment();
    NoteReport report = reportOf(day(5));
    report.bracketVisibilities = {{"8", true}};
    report.bracketColorTypeIDs = {{"8", std::nullopt}};
    report.elastics = ElasticsReport{ElasticsEvent::Placed, "6,30", {{1, 3, {"6", "30"}}}, {}};
    report.approval = ApprovalReport{day(6)};
    ASSERT_TRUE(store->write(treatmentID, report));
    const Lines before = log();
    ASSERT_TRUE(store->write(treatmentID, report));
    EXPECT_EQ(log(), before);
}

TEST_F(TreatmentStoreTest, theLogReplayedGivesTheNote)
{
    startTreatment();
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i) {
        NoteReport report = reportOf(day(5));
        const std::string key = std::to_string(2 + random() % 14);
        report.bracketVisibilities[key] = random() % 2 == 0;
        report.bracketColorTypeIDs[key] =
            random() % 3 ? std::optional<long>(random() % 9) : std::nullopt;
        ASSERT_TRUE(store->write(treatmentID, report));
    }
    NoteRecord replayed;
    replayed.date = day(5);
    for (const StoredChange &change : store->changes(treatmentID).value()) {
        if (change.what == "bracket visibility")
            replayed.bracketVisibilities[change.key] = change.newValue == "visible";
        if (change.what == "bracket color")
            replayed.bracketColorTypeIDs[change.key] =
                change.newValue == "4999" ? std::nullopt
                                          : std::optional<long>(change.newValue->toLong());
    }
    EXPECT_EQ(noteOf(day(5)), replayed);
}

TEST_F(TreatmentStoreTest, theApprovalOfATreatmentIsStoredAndLoggedOnce)
{
    startTreatment();
    ASSERT_TRUE(store->setApprovedDate(treatmentID, day(6)));
    ASSERT_TRUE(store->setApprovedDate(treatmentID, day(6)));
    EXPECT_EQ(store->loadTreatment(treatmentID).value().approvedDate, day(6));
    ASSERT_TRUE(store->setApprovedDate(treatmentID, std::nullopt));
    EXPECT_EQ(store->loadTreatment(treatmentID).value().approvedDate, std::nullopt);
    EXPECT_EQ(log(), (Lines{"treatment approval : (none) -> 2026-11-06",
                            "treatment approval : 2026-11-06 -> (none)"}));
    EXPECT_EQ(store->changes(treatmentID).value().front().changedAt, time);
}

TEST_F(TreatmentStoreTest, theTablesGuardWhatBelongsTogether)
{
    startTreatment();
    ASSERT_TRUE(store->startNote(treatmentID, day(5)));
    const auto settings = QSqlDatabase::database(store->connectionName());
    EXPECT_EQ(OtherConnection::rowsIn(settings, QStringLiteral("PRAGMA foreign_keys")), Lines{"1"});
    EXPECT_EQ(OtherConnection::rowsIn(settings, QStringLiteral("PRAGMA journal_mode")),
              Lines{"wal"});
    EXPECT_EQ(OtherConnection::rowsIn(settings, QStringLiteral("PRAGMA synchronous")), Lines{"2"});
    QSqlQuery orphan(settings);
    EXPECT_FALSE(orphan.exec(QStringLiteral("INSERT INTO bracket_colors VALUES (999, '8', 4)")));
}

TEST(TreatmentStore, aDatabaseInMemoryKeepsNothing)
{
    auto store = TreatmentStore::open(QStringLiteral(":memory:")).value();
    const qint64 treatmentID = store->addTreatment(fullRecord()).value();
    EXPECT_EQ(store->loadTreatment(treatmentID).value(), fullRecord());
    store = TreatmentStore::open(QStringLiteral(":memory:")).value();
    EXPECT_TRUE(store->patients().value().empty());
    EXPECT_FALSE(QFile::exists(QStringLiteral(":memory:")));
}

TEST_F(TreatmentStoreTest, twoStoresOnOneFileSeeEachOthersReports)
{
    startTreatment();
    const auto second = opened();
    NoteReport report = reportOf(day(5));
    report.toothVisibilities = {{"5", false}};
    ASSERT_TRUE(store->write(treatmentID, report));
    EXPECT_EQ(second->note(treatmentID, day(5)).value(), noteOf(day(5)));
    report.toothVisibilities = {{"5", true}};
    ASSERT_TRUE(second->write(treatmentID, report));
    EXPECT_EQ(noteOf(day(5)).toothVisibilities.at("5"), true);
}

} // namespace
} // namespace viewer
