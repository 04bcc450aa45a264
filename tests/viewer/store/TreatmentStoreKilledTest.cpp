#include "tests/viewer/store/TreatmentStoreReports.h"
#include "tests/viewer/support/TreatmentStoreFixture.h"

#include <QProcess>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <random>

namespace viewer {
namespace {

using test::OtherConnection;
using test::reportOfNumber;

/// The notes as they stand after a report, worked out without the store.
class ExpectedNotes
{
public:
    void add(const NoteReport &report)
    {
        if (notes_.empty() || notes_.back().date != report.date) {
            notes_.push_back(notes_.empty() ? NoteRecord() : notes_.back());
            notes_.back().date = report.date;
        }
        NoteRecord &note = notes_.back();
        for (const auto &[key, visible] : report.toothVisibilities)
            note.toothVisibilities[key] = visible;
        for (const auto &[key, visible] : report.bracketVisibilities)
            note.bracketVisibilities[key] = visible;
        for (const auto &[key, visible] : report.buttonVisibilities)
            note.buttonVisibilities[key] = visible;
        for (const auto &[key, typeID] : report.bracketColorTypeIDs)
            note.bracketColorTypeIDs[key] = typeID;
        if (report.elastics) note.elastics = report.elastics->elastics;
    }
    const std::vector<NoteRecord> &notes() const { return notes_; }

private:
    std::vector<NoteRecord> notes_;
};

class TreatmentStoreKilled : public test::TreatmentStoreFixture
{
protected:
    /// Lets the writer confirm its first report and go on for a while, and kills it. Returns the
    /// last number that it confirmed.
    int confirmedBeforeTheKill(int first, unsigned microseconds)
    {
        QProcess writer;
        writer.start(QStringLiteral(KELO_KILLED_WRITER),
                     {path, QString::number(treatmentID), QString::number(first),
                      QString::number(first + 100000)});
        EXPECT_TRUE(writer.waitForReadyRead(30000)) << writer.readAllStandardError().toStdString();
        QThread::usleep(microseconds); // the kill is to come at any time
        writer.kill();
        EXPECT_TRUE(writer.waitForFinished());
        EXPECT_EQ(writer.exitStatus(), QProcess::CrashExit) << "it ended before it was killed";
        const QList<QByteArray> lines = writer.readAllStandardOutput().trimmed().split('\n');
        EXPECT_EQ(lines.first().toInt(), first);
        return lines.last().toInt();
    }
};

TEST_F(TreatmentStoreKilled, aProgramKilledAHundredTimesLosesNothingConfirmed)
{
    startTreatment();
    store.reset();
    std::mt19937 random(20261120);
    ExpectedNotes expected;
    int stored = 0;
    int oneMore = 0;
    for (int kill = 0; kill < 100; ++kill) {
        const int confirmed = confirmedBeforeTheKill(stored + 1, random() % 30000);
        ASSERT_GT(confirmed, stored);
        while (stored < confirmed)
            expected.add(reportOfNumber(++stored));

        store = opened();
        ASSERT_TRUE(store);
        const auto notes = store->loadTreatment(treatmentID).value().notes;
        if (notes != expected.notes()) {
            // Stored, and killed before it could say so.
            expected.add(reportOfNumber(++stored));
            ++oneMore;
        }
        ASSERT_EQ(notes, expected.notes()) << "kill " << kill << ", confirmed " << confirmed;
        for (const StoredChange &change : store->changes(treatmentID).value())
            ASSERT_LE(change.changedAt, stored);
        store.reset();
        ASSERT_EQ(OtherConnection(path).rows(QStringLiteral("PRAGMA quick_check")),
                  std::vector<std::string>{"ok"});
    }
    std::printf("%d reports in 100 bursts; %d were stored and not confirmed\n", stored, oneMore);
}

TEST_F(TreatmentStoreKilled, aDiskThatFillsUpInABurstIsASentenceAndLosesNothing)
{
    // A disk of a quarter of a megabyte, which only its own process sees.
    startTreatment();
    store.reset();
    const QString disk = folder.filePath(QStringLiteral("disk"));
    const QString rescued = folder.filePath(QStringLiteral("rescued"));
    ASSERT_TRUE(QDir().mkdir(disk) && QDir().mkdir(rescued));
    QProcess shell;
    shell.start(QStringLiteral("unshare"),
                {QStringLiteral("-Urm"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("mount -t tmpfs -o size=256k tmpfs \"$1\" || exit 77;"
                                "cp \"$2\" \"$1/full.db\" && \"$3\" \"$1/full.db\" \"$4\" 1 100000;"
                                "status=$?; cp \"$1\"/full.db* \"$5\";"
                                "exit $status"),
                 QStringLiteral("sh"), disk, path, QStringLiteral(KELO_KILLED_WRITER),
                 QString::number(treatmentID), rescued});
    if (!shell.waitForStarted() || !shell.waitForFinished(60000) || shell.exitCode() == 77 ||
        shell.exitCode() == 1)
        GTEST_SKIP() << "this system lets nobody make a small disk";
    ASSERT_EQ(shell.exitCode(), 3);
    EXPECT_EQ(shell.readAllStandardError().toStdString(),
              disk.toStdString() + "/full.db: the disk is full\n");

    const int confirmed = shell.readAllStandardOutput().trimmed().split('\n').last().toInt();
    ASSERT_GT(confirmed, 0);
    ExpectedNotes expected;
    for (int number = 1; number <= confirmed; ++number)
        expected.add(reportOfNumber(number));
    path = rescued + QStringLiteral("/full.db");
    EXPECT_EQ(opened()->loadTreatment(treatmentID).value().notes, expected.notes());
}

} // namespace
} // namespace viewer
