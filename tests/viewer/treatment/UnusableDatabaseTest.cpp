// Databases that cannot be used: never an empty one, and never the sample patient in their place.

#include "tests/viewer/support/LimitedProgram.h"
#include "viewer/store/DatabaseAdvice.h"
#include "viewer/treatment/OpenedTreatment.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace viewer;
using namespace viewer::test;

namespace {

/// A connection beside that of the program.
class Connection
{
public:
    explicit Connection(const QString &path)
        : database_(QSqlDatabase::addDatabase("QSQLITE", "beside"))
    {
        database_.setDatabaseName(path);
        EXPECT_TRUE(database_.open());
    }
    ~Connection()
    {
        database_.close();
        database_ = {};
        QSqlDatabase::removeDatabase("beside");
    }
    void run(const QString &sql) const
    {
        QSqlQuery query(database_);
        EXPECT_TRUE(query.exec(sql)) << query.lastError().text().toStdString();
    }

private:
    QSqlDatabase database_;
};

class DatabaseThatCannotBeUsed : public testing::Test
{
protected:
    DatabaseThatCannotBeUsed()
    {
        QDir(folder.path()).mkdir("data");
        path = folder.filePath("data/treatments.sqlite");
        picture = folder.filePath("picture.png");
    }
    ~DatabaseThatCannotBeUsed() override
    {
        // What may not be written may not be removed either.
        const auto all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        QFile::setPermissions(folder.filePath("data"), all);
        QFile::setPermissions(path, all);
    }

    /// A treatment whose upper right canine alone has a bracket.
    void makeDatabase() const
    {
        const auto store = TreatmentStore::open(path).value();
        TreatmentRecord record;
        record.patient = {"A Patient", "P-7", std::nullopt};
        record.currentDate = QDate(2026, 11, 20);
        NoteRecord note;
        note.date = QDate(2026, 11, 20);
        note.bracketVisibilities["6"] = true;
        record.notes.push_back(note);
        ASSERT_TRUE(store->addTreatment(record));
    }

    void write(const QByteArray &bytes) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QStringList files() const
    {
        return QDir(folder.filePath("data")).entryList(QDir::Files, QDir::Name);
    }

    /// Every way to begin a session, and a script with a change.
    void expectRefused(const std::string &reason, Limit limit = Limit::None) const
    {
        const QByteArray before = contentOf(path);
        const QStringList filesBefore = files();
        for (int run = 0; run < 2; ++run) { // the second finds nothing of the first
            const Ended ended = runLimited(
                limit, {"--headless", "--database", path, "--picture", picture, "--state", "-"});
            EXPECT_EQ(ended.status, 2) << reason;
            EXPECT_EQ(ended.errors.toStdString(), path.toStdString() + ": " + reason + "\n");
            EXPECT_EQ(ended.output.toStdString(), "");
            EXPECT_FALSE(QFile::exists(picture));
            EXPECT_EQ(contentOf(path), before);
            EXPECT_EQ(files(), filesBefore);
        }
    }

    QTemporaryDir folder;
    QString path;
    QString picture;
};

} // namespace

TEST_F(DatabaseThatCannotBeUsed, thatANewerProgramWroteIsNamedAndLeftAsItIs)
{
    makeDatabase();
    Connection(path).run("PRAGMA user_version = 99");
    expectRefused("the database was written by a newer version of this program (its tables are of "
                  "version 99, this program knows version 4)");
}

TEST_F(DatabaseThatCannotBeUsed, thatIsDamagedIsNamedAndLeftAsItIs)
{
    makeDatabase();
    QByteArray bytes = contentOf(path);
    ASSERT_GT(bytes.size(), 3 * 4096);
    for (qsizetype i = 4096; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 7);
    write(bytes);
    expectRefused("the database is damaged");
}

TEST_F(DatabaseThatCannotBeUsed, thatIsLockedIsNamedAndLeftAsItIs)
{
    makeDatabase();
    Connection(path).run("PRAGMA journal_mode = DELETE");
    const QByteArray before = contentOf(path);
    Ended ended{};
    {
        // While the lock is held this process must not open the file otherwise: closing it again
        // would release the lock.
        const Connection other(path);
        other.run("BEGIN EXCLUSIVE");
        ended = runLimited(Limit::None, {"--headless", "--database", path, "--picture", picture});
        other.run("ROLLBACK");
    }
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors, path.toUtf8() + ": the database is locked by another program\n");
    EXPECT_FALSE(QFile::exists(picture));
    EXPECT_EQ(contentOf(path), before);
}

TEST_F(DatabaseThatCannotBeUsed, thatHasNoRoomOnTheDiskIsNamed)
{
    const Ended ended =
        runLimited(Limit::FileSize, {"--headless", "--database", path, "--state", "-"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_TRUE(
        ended.errors.startsWith(path.toUtf8() + ": the database could not be read or written ("))
        << ended.errors.toStdString();
    EXPECT_EQ(ended.errors.count('\n'), 1);
    EXPECT_EQ(ended.output.toStdString(), "");
    EXPECT_EQ(contentOf(path), QByteArray());
}

TEST_F(DatabaseThatCannotBeUsed, thatMayNotBeReadIsNamedAndLeftAsItIs)
{
    makeDatabase();
    const QByteArray before = contentOf(path);
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    const Ended ended =
        runLimited(Limit::Permissions, {"--headless", "--database", path, "--state", "-"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors, path.toUtf8() + ": the database could not be opened\n");
    EXPECT_EQ(ended.output.toStdString(), "");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_EQ(contentOf(path), before);
}

TEST_F(DatabaseThatCannotBeUsed, thatIsAFolderOrInNoneIsNamed)
{
    path = folder.filePath("data");
    expectRefused("the database could not be opened");
    path = folder.filePath("missing/treatments.sqlite");
    expectRefused("the database could not be opened");
    EXPECT_FALSE(QFile::exists(folder.filePath("missing")));
}

TEST_F(DatabaseThatCannotBeUsed, thatIsNoneOrAnotherProgramsIsNamedAndLeftAsItIs)
{
    write(QByteArray(4096, 'x'));
    expectRefused("the file is not a database");
    QFile::remove(path);
    Connection(path).run("CREATE TABLE bookmarks (url TEXT)");
    expectRefused("the database belongs to another program");
}

TEST_F(DatabaseThatCannotBeUsed, doesNotTakeTheTreatmentOfAFileEither)
{
    const QString file = folder.filePath("patient.json");
    QFile patient(file);
    ASSERT_TRUE(patient.open(QIODevice::WriteOnly));
    patient.write(R"({"format": "treatment", "version": 1, "patient": {"name": "A", "id": "1"}})");
    patient.close();
    write(QByteArray(4096, 'x'));
    const Ended ended =
        runLimited(Limit::None, {"--headless", "--database", path, "--picture", picture, file});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors, path.toUtf8() + ": the file is not a database\n");
    EXPECT_FALSE(QFile::exists(picture));
}

TEST_F(DatabaseThatCannotBeUsed, forABadRowIsNamedAndGetsNoSamplePatient)
{
    makeDatabase();
    Connection(path).run("UPDATE treatments SET shown_date = 'x'");
    expectRefused("the database is damaged");
}

TEST_F(DatabaseThatCannotBeUsed, forWritingIsOpenedForReading)
{
    makeDatabase();
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    ASSERT_TRUE(QFile::setPermissions(folder.filePath("data"), QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray before = contentOf(path);
    const Ended ended =
        runLimited(Limit::Permissions, {"--headless", "--database", path, "--state", "-"});
    EXPECT_EQ(ended.status, 0);
    const QJsonObject state = QJsonDocument::fromJson(ended.output).object();
    const QJsonObject brackets = state["bracketVisibilities"].toObject();
    EXPECT_TRUE(brackets["6"].toBool());
    EXPECT_FALSE(brackets["7"].toBool(true)) << "the sample patient has all of them";
    EXPECT_TRUE(ended.errors.startsWith(path.toUtf8() + ": ")) << ended.errors.toStdString();
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(files(), QStringList("treatments.sqlite"));
}

TEST_F(DatabaseThatCannotBeUsed, everyKindComesWithWhatCanBeDone)
{
    const std::pair<StoreProblem, const char *> rows[] = {
        {StoreProblem::Locked,
         "Close the other program that works with the database, then try again."},
        {StoreProblem::ReadOnly, "Ask for permission to write to the file and its folder."},
        {StoreProblem::DiskFull, "Make room on the disk, then try again."},
        {StoreProblem::NotReachable,
         "Check that the folder is there, that you may read and write the file, and that there is "
         "room on the disk, then try again."},
        {StoreProblem::Damaged,
         "Keep a copy of the file as it is, and put the last backup in its place."},
        {StoreProblem::BadRecord,
         "Keep a copy of the file as it is, and put the last backup in its place."},
        {StoreProblem::NotADatabase, "Start the program with another file: --database FILE."},
        {StoreProblem::Foreign, "Start the program with another file: --database FILE."},
        {StoreProblem::NewerVersion, "Install the newer version of this program."},
        {StoreProblem::NoSuchRecord, "Nothing was changed in the file."},
        {StoreProblem::Other, "Nothing was changed in the file."},
    };
    for (const auto &[problem, advice] : rows)
        EXPECT_EQ(adviceOn(problem).toStdString(), advice);
    EXPECT_TRUE(isWorthAnotherTry(StoreProblem::Locked));
    EXPECT_FALSE(isWorthAnotherTry(StoreProblem::Damaged));
}
