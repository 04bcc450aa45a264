#include "tests/viewer/support/TreatmentStoreFixture.h"
#include "viewer/store/TreatmentSchemaVersions.h"

namespace viewer {
namespace {

using test::bytesOf;
using test::day;
using test::OtherConnection;
using Lines = std::vector<std::string>;

/// Every version of the database has a file in tests/viewer/store/versions, with the tables as the
/// program of that time made them. They stay as they are.
class TreatmentStoreVersions : public test::TreatmentStoreFixture
{
protected:
    /// The stored database of a version, with more statements at its end.
    void makeVersion(int version, const QString &more = {}) const
    {
        const OtherConnection connection(path);
        const QString file = QStringLiteral(KELO_STORED_VERSIONS "/version%1.sql").arg(version);
        const QString text = QString::fromUtf8(bytesOf(file)) + more;
        for (const QString &statement : text.split(QStringLiteral(";\n"))) {
            if (!statement.trimmed().isEmpty()) connection.run(statement);
        }
    }

    /// Opening must fail; returns why.
    StoreFailure refusal() const
    {
        const auto result = TreatmentStore::open(path);
        EXPECT_FALSE(result);
        return result ? StoreFailure{} : result.failure();
    }

    static Lines schemaOf(const QString &file)
    {
        return OtherConnection(file).rows(QStringLiteral(
            "SELECT type, name, tbl_name, sql FROM sqlite_schema ORDER BY type, name"));
    }

    static Lines versionOf(const QString &file)
    {
        return OtherConnection(file).rows(QStringLiteral("PRAGMA user_version"));
    }
};

/// What the files of version 2 and later have of treatment 7.
TreatmentRecord sampleSinceVersion2()
{
    TreatmentRecord sample;
    sample.patient = {QStringLiteral("Sample Patient"), QStringLiteral("S-1"), QDate(2011, 4, 2)};
    sample.currentDate = QDate(2025, 6, 10);
    sample.notes.resize(2);
    sample.notes[0].date = QDate(2025, 5, 2);
    sample.notes[0].toothVisibilities = {{"5", true}};
    sample.notes[1].date = QDate(2025, 6, 10);
    sample.notes[1].approvedDate = QDate(2025, 6, 11);
    sample.notes[1].toothVisibilities = {{"5", false}};
    sample.notes[1].bracketVisibilities = {{"8", true}, {"9", false}};
    sample.notes[1].buttonVisibilities = {{"8l", true}};
    sample.notes[1].bracketColorTypeIDs = {{"8", 4}, {"9", std::nullopt}};
    sample.notes[1].elastics = {{1, 3, {"6", "30"}},
                                {std::nullopt, std::nullopt, {"3l", "14", "19"}}};
    return sample;
}

/// And of treatment 8.
TreatmentRecord otherSinceVersion2()
{
    TreatmentRecord other;
    other.patient = {QStringLiteral("Other Patient"), QStringLiteral("S-2"), std::nullopt};
    other.approvedDate = QDate(2025, 7, 1);
    other.notes.resize(1);
    other.notes[0].date = QDate(2025, 6, 30);
    other.notes[0].elastics = {{std::nullopt, 2, {"8", "25"}}};
    return other;
}

TEST_F(TreatmentStoreVersions, aDatabaseOfVersion1IsMigratedWithAllItsContent)
{
    makeVersion(1);
    store = opened();

    TreatmentRecord expected;
    expected.patient = {QStringLiteral("Sample Patient"), QStringLiteral("S-1"), std::nullopt};
    expected.notes.resize(2);
    expected.notes[0].date = QDate(2024, 1, 15);
    expected.notes[0].toothVisibilities = {{"5", true}};
    expected.notes[1].date = QDate(2024, 3, 1);
    expected.notes[1].toothVisibilities = {{"5", false}, {"12", true}};
    expected.notes[1].bracketVisibilities = {{"7", false}, {"8", true}, {"9", true}};
    expected.notes[1].bracketColorTypeIDs = {{"7", std::nullopt}, {"8", 4}, {"9", std::nullopt}};
    expected.notes[1].elastics = {{std::nullopt, std::nullopt, {"3l", "14", "19"}},
                                  {std::nullopt, 3, {"6", "30"}}};
    EXPECT_EQ(store->loadTreatment(7).value(), expected);

    TreatmentRecord other;
    other.patient = {QStringLiteral("Other Patient"), QStringLiteral("S-2"), std::nullopt};
    other.approvedDate = QDate(2024, 5, 1);
    other.notes.resize(1);
    other.notes[0].date = QDate(2024, 2, 2);
    other.notes[0].elastics = {{std::nullopt, 1, {}}};
    EXPECT_EQ(store->loadTreatment(8).value(), other);
}

TEST_F(TreatmentStoreVersions, theContentOfEveryLaterVersionIsKept)
{
    for (int version = 2; version <= currentSchemaVersion; ++version) {
        SCOPED_TRACE(version);
        path = folder.filePath(QStringLiteral("version%1.db").arg(version));
        makeVersion(version);
        store = opened();
        EXPECT_EQ(store->loadTreatment(7).value(), sampleSinceVersion2());
        EXPECT_EQ(store->loadTreatment(8).value(), otherSinceVersion2());
        const auto changes = store->changes(7).value();
        ASSERT_EQ(changes.size(), 2u);
        EXPECT_EQ(changes[1], (StoredChange{1749550001000, QDate(2025, 6, 10),
                                            QStringLiteral("tooth visibility"), "5",
                                            QStringLiteral("visible"), QStringLiteral("hidden")}));
        const auto named = store->namedElastics().value();
        ASSERT_EQ(named.size(), version >= 3 ? 1u : 0u);
        if (version >= 3) {
            EXPECT_EQ(named[0].typeID, 1000);
            EXPECT_EQ(named[0].typeLabel, "Class II, light");
            EXPECT_EQ(named[0].displayOrder, 40);
            EXPECT_EQ(named[0].elasticsSizeTypeID, 3);
            EXPECT_EQ(named[0].bracketSequence, "6,30");
        }
        EXPECT_EQ(store->catalogue(7).value(), QByteArray());
        EXPECT_EQ(store->catalogue(8).value(),
                  version >= 4 ? QByteArray("{\"elasticsSizeTypes\": []}") : QByteArray());
    }
}

TEST_F(TreatmentStoreVersions, everyVersionIsStoredInAFile)
{
    for (int version = 1; version <= currentSchemaVersion; ++version) {
        path = folder.filePath(QStringLiteral("version%1.db").arg(version));
        makeVersion(version);
        EXPECT_EQ(versionOf(path), Lines{std::to_string(version)});
    }
}

TEST_F(TreatmentStoreVersions, theTablesWrittenDownOfAVersionAreThoseOfItsFile)
{
    for (int version = 1; version <= currentSchemaVersion; ++version) {
        SCOPED_TRACE(version);
        path = folder.filePath(QStringLiteral("version%1.db").arg(version));
        makeVersion(version);
        const QString made = folder.filePath(QStringLiteral("made%1.db").arg(version));
        for (const QString &definition : schemaDefinitions(version))
            OtherConnection(made).run(definition);
        EXPECT_EQ(schemaOf(made), schemaOf(path));
    }
}

TEST_F(TreatmentStoreVersions, eachStepLeadsToTheTablesOfTheNextVersion)
{
    for (int version = 1; version < currentSchemaVersion; ++version) {
        SCOPED_TRACE(version);
        path = folder.filePath(QStringLiteral("version%1.db").arg(version));
        makeVersion(version);
        for (const QString &statement : schemaStep(version + 1))
            OtherConnection(path).run(statement);
        const QString made = folder.filePath(QStringLiteral("made%1.db").arg(version));
        for (const QString &definition : schemaDefinitions(version + 1))
            OtherConnection(made).run(definition);
        EXPECT_EQ(schemaOf(path), schemaOf(made));
    }
}

TEST_F(TreatmentStoreVersions, aMigratedDatabaseHasTheTablesOfANewOne)
{
    const QString fresh = folder.filePath(QStringLiteral("new.db"));
    ASSERT_TRUE(TreatmentStore::open(fresh));
    const Lines present = schemaOf(fresh);
    // Ten tables, two indexes, and the one that SQLite makes for notes being unique.
    EXPECT_EQ(present.size(), 13u);
    for (int version = 1; version <= currentSchemaVersion; ++version) {
        SCOPED_TRACE(version);
        path = folder.filePath(QStringLiteral("version%1.db").arg(version));
        makeVersion(version);
        opened();
        EXPECT_EQ(versionOf(path), Lines{std::to_string(currentSchemaVersion)});
        EXPECT_EQ(OtherConnection(path).rows(QStringLiteral("PRAGMA integrity_check")),
                  Lines{"ok"});
        EXPECT_EQ(schemaOf(path), present);
    }
}

TEST_F(TreatmentStoreVersions, aMigratedDatabaseTakesReports)
{
    makeVersion(1);
    store = opened();
    treatmentID = 7;
    NoteReport report;
    report.date = day(20);
    report.buttonVisibilities = {{"8l", true}};
    ASSERT_TRUE(store->write(treatmentID, report));
    EXPECT_EQ(noteOf(day(20)).buttonVisibilities.at("8l"), true);
    EXPECT_EQ(noteOf(day(20)).bracketColorTypeIDs.at("8"), 4);
}

TEST_F(TreatmentStoreVersions, aMigrationThatFailsLeavesVersion1AsItWas)
{
    makeVersion(1, QStringLiteral("INSERT INTO tooth_visibilities VALUES (10, '6', 7);\n"));
    const Lines before = schemaOf(path);
    EXPECT_TRUE(refusal().sentence.startsWith(path + ": "));
    EXPECT_EQ(schemaOf(path), before);
    const OtherConnection connection(path);
    EXPECT_EQ(connection.rows(QStringLiteral("PRAGMA user_version")), Lines{"1"});
    EXPECT_EQ(connection.rows(QStringLiteral("SELECT count(*) FROM tooth_visibilities")),
              Lines{"4"});
}

TEST_F(TreatmentStoreVersions, openingALockedDatabaseOfVersion1IsASentenceAndChangesNothing)
{
    makeVersion(1);
    const OtherConnection other(path);
    other.run(QStringLiteral("BEGIN EXCLUSIVE"));
    EXPECT_EQ(refusal().sentence, path + ": the database is locked by another program");
    other.run(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(other.rows(QStringLiteral("PRAGMA user_version")), Lines{"1"});
}

} // namespace
} // namespace viewer
