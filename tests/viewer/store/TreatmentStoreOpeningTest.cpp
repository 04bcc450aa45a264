#include "tests/viewer/support/TreatmentStoreFixture.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace viewer {
namespace {

using test::bytesOf;
using test::day;
using test::fullRecord;
using test::OtherConnection;
using test::writeBytes;
using Lines = std::vector<std::string>;

/// The administrator may write everything: for the time of a test, be somebody else.
class WithoutPrivileges
{
public:
    WithoutPrivileges() : privileged_(::geteuid() == 0)
    {
        constexpr uid_t nobody = 65534;
        if (privileged_) {
            EXPECT_EQ(::seteuid(nobody), 0);
        }
    }
    ~WithoutPrivileges()
    {
        if (privileged_) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }

private:
    bool privileged_;
};

/// No file may grow beyond a size, as on a disk that has just run full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int) = nullptr;
};

class TreatmentStoreOpening : public test::TreatmentStoreFixture
{
protected:
    /// A database of several pages, closed.
    void makeDatabase()
    {
        store = opened();
        for (int i = 0; i < 20; ++i)
            treatmentID = store->addTreatment(fullRecord()).value();
        store.reset();
    }

    /// Opening must fail; returns why.
    StoreFailure refusal()
    {
        const auto result = TreatmentStore::open(path);
        EXPECT_FALSE(result);
        return result ? StoreFailure{} : result.failure();
    }

    Lines filesInFolder() const
    {
        Lines names;
        for (const QString &name : QDir(folder.path()).entryList(QDir::Files, QDir::Name))
            names.push_back(name.toStdString());
        return names;
    }
};

TEST_F(TreatmentStoreOpening, aMissingFileBecomesANewDatabaseOfThePresentVersion)
{
    opened();
    EXPECT_EQ(OtherConnection(path).rows(QStringLiteral("PRAGMA user_version")), Lines{"4"});
}

TEST_F(TreatmentStoreOpening, anEmptyFileBecomesANewDatabase)
{
    writeBytes(path, {});
    EXPECT_TRUE(opened()->patients().value().empty());
}

TEST_F(TreatmentStoreOpening, aMissingFolderIsASentence)
{
    path = folder.filePath(QStringLiteral("missing/treatments.db"));
    const StoreFailure failure = refusal();
    EXPECT_EQ(failure.problem, StoreProblem::NotReachable);
    EXPECT_EQ(failure.sentence, path + ": the database could not be opened");
}

TEST_F(TreatmentStoreOpening, aNewerDatabaseIsRefusedAndLeftByteForByte)
{
    makeDatabase();
    OtherConnection(path).run(QStringLiteral("PRAGMA user_version = 99"));
    const QByteArray before = bytesOf(path);
    const Lines files = filesInFolder();
    const StoreFailure failure = refusal();
    EXPECT_EQ(failure.problem, StoreProblem::NewerVersion);
    EXPECT_EQ(failure.sentence,
              path + ": the database was written by a newer version of this program (its tables "
                     "are of version 99, this program knows version 4)");
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_EQ(filesInFolder(), files);
}

TEST_F(TreatmentStoreOpening, aNewerDatabaseThatWasNotClosedIsLeftByteForByteToo)
{
    makeDatabase();
    const QString killed = folder.filePath(QStringLiteral("killed.db"));
    {
        // The version is in the write-ahead log alone; copied as a killed program leaves it.
        const OtherConnection newer(path);
        newer.run(QStringLiteral("PRAGMA user_version = 99"));
        ASSERT_TRUE(QFile::copy(path, killed));
        ASSERT_TRUE(QFile::copy(path + "-wal", killed + "-wal"));
    }
    path = killed;
    const QByteArray before = bytesOf(killed);
    const QByteArray logBefore = bytesOf(killed + "-wal");
    ASSERT_FALSE(logBefore.isEmpty());
    EXPECT_EQ(refusal().problem, StoreProblem::NewerVersion);
    EXPECT_EQ(bytesOf(killed), before);
    EXPECT_EQ(bytesOf(killed + "-wal"), logBefore);
}

TEST_F(TreatmentStoreOpening, aDatabaseOfAnotherProgramIsRefusedAndLeftByteForByte)
{
    OtherConnection(path).run(QStringLiteral("CREATE TABLE bookmarks (url TEXT)"));
    const QByteArray before = bytesOf(path);
    const StoreFailure failure = refusal();
    EXPECT_EQ(failure.problem, StoreProblem::Foreign);
    EXPECT_EQ(failure.sentence, path + ": the database belongs to another program");
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_EQ(filesInFolder(), Lines{"treatments.db"});
}

TEST_F(TreatmentStoreOpening, aFileThatIsNoDatabaseIsRefusedAndLeftByteForByte)
{
    for (const QByteArray &content :
         {QByteArray("{\"format\": \"treatment\"}"), QByteArray(10000, 'x'), QByteArray("S")}) {
        writeBytes(path, content);
        const StoreFailure failure = refusal();
        EXPECT_EQ(failure.problem, StoreProblem::NotADatabase);
        EXPECT_EQ(failure.sentence, path + ": the file is not a database");
        EXPECT_EQ(bytesOf(path), content);
        EXPECT_EQ(filesInFolder(), Lines{"treatments.db"});
    }
}

TEST_F(TreatmentStoreOpening, aFolderIsNoDatabase)
{
    path = folder.path();
    EXPECT_EQ(refusal().problem, StoreProblem::NotReachable);
}

TEST_F(TreatmentStoreOpening, aPipeAndADeviceAreNoDatabases)
{
    ASSERT_EQ(::mkfifo(path.toUtf8().constData(), 0666), 0);
    EXPECT_EQ(refusal().sentence, path + ": the file is not a database");
    path = QStringLiteral("/dev/zero");
    EXPECT_EQ(refusal().problem, StoreProblem::NotADatabase);
}

TEST_F(TreatmentStoreOpening, aDatabaseOfGarbagePagesIsASentence)
{
    makeDatabase();
    QByteArray bytes = bytesOf(path);
    ASSERT_GT(bytes.size(), 20 * 4096 / 2);
    for (qsizetype i = 4096; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 7);
    writeBytes(path, bytes);
    store = opened();
    const QString sentence = path + ": the database is damaged";
    EXPECT_EQ(store->patients().sentence(), sentence);
    EXPECT_EQ(store->loadTreatment(treatmentID).sentence(), sentence);
    NoteReport report;
    report.date = day(2);
    report.toothVisibilities = {{"5", true}};
    const auto written = store->write(treatmentID, report);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.failure().problem, StoreProblem::Damaged);
    store.reset();
    EXPECT_EQ(bytesOf(path), bytes);
}

TEST_F(TreatmentStoreOpening, aTruncatedDatabaseIsASentence)
{
    makeDatabase();
    const QByteArray bytes = bytesOf(path);
    // Every length: opening or reading must end in a sentence, and never in a wrong treatment.
    for (qsizetype pages = bytes.size() / 4096 - 1; pages > 0; --pages) {
        QFile::remove(path + "-wal");
        QFile::remove(path + "-shm");
        writeBytes(path, bytes.first(pages * 4096));
        const auto result = TreatmentStore::open(path);
        if (!result) {
            EXPECT_EQ(result.sentence(), path + ": the database is damaged");
            continue;
        }
        const auto record = result.value()->loadTreatment(treatmentID);
        if (record)
            EXPECT_EQ(record.value(), fullRecord()) << pages << " pages";
        else
            EXPECT_EQ(record.sentence(), path + ": the database is damaged");
    }
}

TEST_F(TreatmentStoreOpening, aDateThatIsNoneIsDamage)
{
    makeDatabase();
    OtherConnection(path).run(QStringLiteral("UPDATE notes SET date = 'soon' WHERE id = 1"));
    EXPECT_EQ(opened()->loadTreatment(1).sentence(), path + ": the database is damaged");
}

TEST_F(TreatmentStoreOpening, aGapInTheElasticsIsDamage)
{
    makeDatabase();
    OtherConnection(path).run(
        QStringLiteral("DELETE FROM elastics WHERE note_id = 1 AND position = 1"));
    EXPECT_EQ(opened()->loadTreatment(1).sentence(), path + ": the database is damaged");
}

TEST_F(TreatmentStoreOpening, aReadOnlyFileIsReadAndNotWritten)
{
    makeDatabase();
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0777), 0);
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0444), 0);
    const QByteArray before = bytesOf(path);
    {
        const WithoutPrivileges nobody;
        store = opened();
        ASSERT_TRUE(store);
        EXPECT_EQ(store->readOnlyReason()->sentence,
                  path + ": the database cannot be written to; it is open for reading only");
        EXPECT_EQ(store->readOnlyReason()->problem, StoreProblem::ReadOnly);
        EXPECT_EQ(store->loadTreatment(treatmentID).value(), fullRecord());
        NoteReport report;
        report.date = day(2);
        report.toothVisibilities = {{"5", true}};
        const auto written = store->write(treatmentID, report);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.failure().problem, StoreProblem::ReadOnly);
        EXPECT_EQ(written.sentence(), path + ": the database cannot be written to");
        EXPECT_EQ(store->loadTreatment(treatmentID).value(), fullRecord());
        store.reset();
    }
    EXPECT_EQ(bytesOf(path), before);
}

TEST_F(TreatmentStoreOpening, aDatabaseInAReadOnlyFolderIsReadAndSaysSo)
{
    makeDatabase();
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0444), 0);
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0555), 0);
    const QByteArray before = bytesOf(path);
    {
        const WithoutPrivileges nobody;
        store = opened();
        ASSERT_TRUE(store);
        ASSERT_TRUE(store->readOnlyReason());
        EXPECT_TRUE(store->readOnlyReason()->sentence.startsWith(path + ": the database c"))
            << store->readOnlyReason()->sentence.toStdString();
        EXPECT_TRUE(store->readOnlyReason()->sentence.endsWith("; it is open for reading only"))
            << store->readOnlyReason()->sentence.toStdString();
        EXPECT_EQ(store->loadTreatment(treatmentID).value(), fullRecord());
        EXPECT_FALSE(store->startNote(treatmentID, day(30)));
        store.reset();
    }
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0777), 0);
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_EQ(filesInFolder(), Lines{"treatments.db"});
}

TEST_F(TreatmentStoreOpening, forReadingOnlyNothingIsWritten)
{
    makeDatabase();
    const QByteArray before = bytesOf(path);
    store = TreatmentStore::open(path, StoreAccess::ReadOnly).value();
    EXPECT_EQ(store->readOnlyReason()->sentence,
              path + ": another window of the program works with the database; it is open for "
                     "reading only");
    EXPECT_EQ(store->readOnlyReason()->problem, StoreProblem::Locked);
    EXPECT_EQ(store->loadTreatment(treatmentID).value(), fullRecord());
    const auto written = store->startNote(treatmentID, day(30));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.failure().problem, StoreProblem::ReadOnly);
    store.reset();
    EXPECT_EQ(bytesOf(path), before);
}

TEST_F(TreatmentStoreOpening, forReadingOnlyAMissingFileIsNotMade)
{
    const auto result = TreatmentStore::open(path, StoreAccess::ReadOnly);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.sentence(), path + ": the database could not be opened");
    EXPECT_EQ(filesInFolder(), Lines());
}

TEST_F(TreatmentStoreOpening, aReaderSeesWhatAnotherProgramStores)
{
    startTreatment();
    const auto reader = TreatmentStore::open(path, StoreAccess::ReadOnly).value();
    ASSERT_TRUE(store->startNote(treatmentID, day(30)));
    EXPECT_TRUE(reader->note(treatmentID, day(30)).value());
    EXPECT_FALSE(store->readOnlyReason());
}

TEST_F(TreatmentStoreOpening, anUnreadableFileIsASentence)
{
    makeDatabase();
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0777), 0);
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0), 0);
    const WithoutPrivileges nobody;
    EXPECT_EQ(refusal().sentence, path + ": the database could not be opened");
}

TEST_F(TreatmentStoreOpening, aLockedDatabaseIsReadAndTakesReportsOnceItIsFree)
{
    startTreatment();
    NoteReport report;
    report.date = day(2);
    report.toothVisibilities = {{"5", false}};
    {
        const OtherConnection other(path);
        other.run(QStringLiteral("BEGIN IMMEDIATE"));
        const auto written = store->write(treatmentID, report);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.failure().problem, StoreProblem::Locked);
        EXPECT_EQ(written.sentence(), path + ": the database is locked by another program");
        EXPECT_EQ(store->note(treatmentID, day(2)).value(), std::nullopt);
        other.run(QStringLiteral("ROLLBACK"));
    }
    ASSERT_TRUE(store->write(treatmentID, report));
    EXPECT_EQ(noteOf(day(2)).toothVisibilities.at("5"), false);
}

TEST_F(TreatmentStoreOpening, aFullDatabaseTakesNothingOfAReport)
{
    store = opened();
    treatmentID = store->addTreatment(fullRecord()).value();
    const auto connection = QSqlDatabase::database(store->connectionName());
    const auto pages = OtherConnection::rowsIn(connection, QStringLiteral("PRAGMA page_count"));
    OtherConnection::rowsIn(
        connection,
        QStringLiteral("PRAGMA max_page_count = %1").arg(QString::fromStdString(pages.at(0))));
    NoteReport large;
    large.date = day(2);
    for (int i = 0; i < 1000; ++i)
        large.toothVisibilities["tooth " + std::to_string(i)] = true;
    const auto written = store->write(treatmentID, large);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.failure().problem, StoreProblem::DiskFull);
    EXPECT_EQ(written.sentence(), path + ": the disk is full");
    EXPECT_EQ(store->loadTreatment(treatmentID).value(), fullRecord());
    EXPECT_TRUE(store->changes(treatmentID).value().empty());

    OtherConnection::rowsIn(connection, QStringLiteral("PRAGMA max_page_count = 100000"));
    EXPECT_TRUE(store->write(treatmentID, large));
    EXPECT_EQ(store->changes(treatmentID).value().size(), 1000u);
}

TEST_F(TreatmentStoreOpening, aDiskThatRefusesToWriteTakesNothingOfAReport)
{
    store = opened();
    treatmentID = store->addTreatment(fullRecord()).value();
    NoteReport report;
    report.date = day(2);
    report.toothVisibilities = {{"5", true}};
    const auto logSize = static_cast<rlim_t>(QFileInfo(path + "-wal").size());
    ASSERT_GT(logSize, 0u);
    StoreFailure failure;
    {
        // Room for half a page of the write-ahead log.
        const FileSizeLimit limit(logSize + 2000);
        const auto written = store->write(treatmentID, report);
        ASSERT_FALSE(written);
        failure = written.failure();
    }
    EXPECT_EQ(failure.problem, StoreProblem::NotReachable);
    EXPECT_TRUE(failure.sentence.startsWith(path + ": the database could not be read or written ("))
        << failure.sentence.toStdString();
    EXPECT_EQ(store->loadTreatment(treatmentID).value(), fullRecord());
    EXPECT_TRUE(store->write(treatmentID, report));
    EXPECT_EQ(noteOf(day(2)).toothVisibilities.at("5"), true);
}

} // namespace
} // namespace viewer
