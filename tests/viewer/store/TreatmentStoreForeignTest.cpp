#include "tests/viewer/support/TreatmentStoreFixture.h"
#include "viewer/store/TreatmentStoreConnection.h"

#include <chrono>

namespace viewer {
namespace {

using test::bytesOf;
using test::day;
using test::fullRecord;
using test::OtherConnection;
using Lines = std::vector<std::string>;

/// Databases that another program has changed.
class TreatmentStoreForeign : public test::TreatmentStoreFixture
{
protected:
    /// A database with one treatment, closed, and then changed by another program.
    void makeChanged(const QStringList &statements)
    {
        store = opened();
        treatmentID = store->addTreatment(fullRecord()).value();
        store.reset();
        const OtherConnection other(path);
        for (const QString &statement : statements)
            other.run(statement);
    }

    std::string damaged() const { return path.toStdString() + ": the database is damaged"; }
};

struct Intrusion
{
    const char *statement;
    const char *sentence; ///< after the path
};

TEST_F(TreatmentStoreForeign, whatIsNotInTheProgramsOwnTablesIsRefusedAndNeverRun)
{
    const Intrusion intrusions[] = {
        {"CREATE TRIGGER spy AFTER INSERT ON changes BEGIN DELETE FROM patients; END",
         "trigger \"spy\""},
        {"CREATE VIEW more AS SELECT * FROM patients", "view \"more\""},
        {"CREATE TABLE more (id INTEGER)", "table \"more\""},
        {"CREATE INDEX more ON notes (approved_date)", "index \"more\""},
        {"ALTER TABLE patients ADD COLUMN more TEXT", "table \"patients\""},
        {"DROP TABLE named_elastics", "table \"named_elastics\""},
        {"DROP INDEX changes_of_treatment", "index \"changes_of_treatment\""},
        {"CREATE TABLE \"a\nb\x1b[2J\" (id INTEGER)", "table \"a?b?[2J\""},
    };
    int number = 0;
    for (const Intrusion &intrusion : intrusions) {
        SCOPED_TRACE(intrusion.statement);
        path = folder.filePath(QStringLiteral("%1.db").arg(++number));
        makeChanged({QString::fromUtf8(intrusion.statement)});
        const QByteArray before = bytesOf(path);
        const auto refused = TreatmentStore::open(path);
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.failure().problem, StoreProblem::Foreign);
        EXPECT_EQ(refused.sentence().toStdString(),
                  path.toStdString() + ": the database was changed by another program (" +
                      intrusion.sentence + " is not as this program makes it)");
        EXPECT_EQ(bytesOf(path), before);
    }
}

TEST_F(TreatmentStoreForeign, aLongTableNameIsToldWithItsFirst80Characters)
{
    makeChanged({QStringLiteral("CREATE TABLE %1 (id INTEGER)").arg(QString(81, 'k'))});
    const auto refused = TreatmentStore::open(path);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.sentence().toStdString(),
              path.toStdString() + ": the database was changed by another program (table \"" +
                  std::string(80, 'k') + "\" is not as this program makes it)");
}

TEST_F(TreatmentStoreForeign, aViewThatNeverEndsInATablesPlaceIsRefused)
{
    makeChanged({QStringLiteral("DROP TABLE named_elastics"),
                 QStringLiteral("CREATE VIEW named_elastics AS WITH RECURSIVE n (type_id) AS"
                                " (SELECT 1 UNION ALL SELECT type_id + 1 FROM n)"
                                " SELECT type_id, '' AS label, 0 AS display_order,"
                                " 0 AS size_type_id, '' AS bracket_sequence FROM n")});
    const auto refused = TreatmentStore::open(path);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.failure().problem, StoreProblem::Foreign);
}

TEST_F(TreatmentStoreForeign, theStatisticsOfSQLiteItselfAreNoIntrusion)
{
    makeChanged({QStringLiteral("ANALYZE")});
    EXPECT_EQ(opened()->loadTreatment(treatmentID).value(), fullRecord());
}

TEST_F(TreatmentStoreForeign, theDatabasesOwnDefinitionsAreNotTrusted)
{
    store = opened();
    const auto connection = QSqlDatabase::database(store->connectionName());
    EXPECT_EQ(OtherConnection::rowsIn(connection, QStringLiteral("PRAGMA trusted_schema")),
              Lines{"0"});
    OtherConnection::rowsIn(connection, QStringLiteral("PRAGMA writable_schema = ON"));
    QSqlQuery rewriting(connection);
    EXPECT_FALSE(rewriting.exec(QStringLiteral("DELETE FROM sqlite_schema")));
}

TEST_F(TreatmentStoreForeign, aStatementThatNeverEndsIsBrokenOff)
{
    const std::chrono::milliseconds limit(50);
    TreatmentStoreConnection connection(path, TreatmentStoreConnection::Mode::ReadAndWrite, limit);
    const auto start = std::chrono::steady_clock::now();
    try {
        StoreStatement rows(connection, "WITH RECURSIVE n (x) AS (SELECT 1 UNION ALL"
                                        " SELECT x + 1 FROM n) SELECT count(*) FROM n");
        rows.next();
        ADD_FAILURE() << "it ended";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.failure().sentence, path + ": the database takes too long to answer");
    }
    EXPECT_GE(std::chrono::steady_clock::now() - start, limit);
    // The next statement has its time again.
    EXPECT_TRUE(StoreStatement(connection, "SELECT 1").next());
}

TEST_F(TreatmentStoreForeign, aTextBeyondSixtyFourMebibytesIsDamage)
{
    makeChanged({QStringLiteral("UPDATE patients SET name = zeroblob(67108865)")});
    EXPECT_EQ(opened()->loadTreatment(treatmentID).sentence().toStdString(), damaged());
}

TEST_F(TreatmentStoreForeign, aDateInOtherWordsIsDamage)
{
    const char *const dates[] = {
        "'2026-11-20T10:00:00'",   "'20261120'",    "'2026-11-2'", "' 2026-11-20'",
        "x'323032362d31312d3230'", "'12026-11-20'", "''",          "'x'"};
    makeChanged({});
    for (const char *date : dates) {
        SCOPED_TRACE(date);
        OtherConnection(path).run(
            QStringLiteral("UPDATE notes SET date = %1 WHERE id = 2").arg(QLatin1String(date)));
        store = opened();
        EXPECT_EQ(store->loadTreatment(treatmentID).sentence().toStdString(), damaged());
        const auto started = store->startNote(treatmentID, day(30));
        if (!started) {
            EXPECT_EQ(started.sentence().toStdString(), damaged());
        }
        EXPECT_TRUE(store->allTreatments());
        store.reset();
    }
}

TEST_F(TreatmentStoreForeign, everyColumnOfDatesIsChecked)
{
    const char *const columns[][2] = {{"patients", "birth_date"},
                                      {"treatments", "shown_date"},
                                      {"treatments", "approved_date"},
                                      {"notes", "approved_date"}};
    for (const auto &[table, column] : columns) {
        SCOPED_TRACE(column);
        path = folder.filePath(QLatin1String(table) + QLatin1String(column));
        makeChanged({QStringLiteral("UPDATE %1 SET %2 = '2026-11-20T10:00'")
                         .arg(QLatin1String(table), QLatin1String(column))});
        EXPECT_EQ(opened()->loadTreatment(treatmentID).sentence().toStdString(), damaged());
    }
}

TEST_F(TreatmentStoreForeign, aTextInTheColumnOfANumberIsDamage)
{
    makeChanged({QStringLiteral("UPDATE elastics SET size_type_id = 'large'")});
    EXPECT_EQ(opened()->loadTreatment(treatmentID).sentence().toStdString(), damaged());
}

TEST_F(TreatmentStoreForeign, oneBadRowHidesNoOtherTreatment)
{
    store = opened();
    const qint64 bad = store->addTreatment(fullRecord()).value();
    const qint64 good = store->addTreatment(fullRecord()).value();
    store.reset();
    OtherConnection(path).run(
        QStringLiteral("UPDATE treatments SET shown_date = 'x' WHERE id = %1").arg(bad));
    store = opened();
    const auto all = store->allTreatments().value();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].treatment.treatmentID, bad);
    EXPECT_EQ(all[0].problem.toStdString(), damaged());
    EXPECT_EQ(all[0].treatment.currentDate, std::nullopt);
    EXPECT_EQ(all[1].problem, QString());
    EXPECT_EQ(store->loadTreatment(good).value(), fullRecord());
    EXPECT_EQ(store->loadTreatment(bad).sentence().toStdString(), damaged());
}

TEST_F(TreatmentStoreForeign, aPathThatLooksLikeAnAddressIsAPath)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    path = QStringLiteral("file:treatments.db?mode=memory");
    treatmentID = opened()->addTreatment(fullRecord()).value();
    EXPECT_EQ(opened()->loadTreatment(treatmentID).value(), fullRecord());
    EXPECT_TRUE(QFile::exists(folder.filePath(path)));
    QDir::setCurrent(before);
}

} // namespace
} // namespace viewer
