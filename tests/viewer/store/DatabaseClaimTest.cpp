#include "viewer/store/DatabaseClaim.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>

#include <thread>

namespace viewer {
namespace {

class DatabaseClaims : public testing::Test
{
protected:
    DatabaseClaims() : path(folder.filePath(QStringLiteral("treatments.sqlite"))) {}

    /// A program that claims the database and then hangs.
    void startOther()
    {
        other.start(QStringLiteral(KELO_SESSION_WRITER),
                    {QStringLiteral("claim"), path, QStringLiteral("-"), QStringLiteral("-")});
        ASSERT_TRUE(other.waitForReadyRead(30000)) << other.readAllStandardError().toStdString();
    }
    ~DatabaseClaims() override
    {
        other.kill();
        other.waitForFinished();
    }

    QTemporaryDir folder;
    QString path;
    QProcess other;
};

TEST_F(DatabaseClaims, aDatabaseIsTheFirstOnesForAsLongAsItRuns)
{
    {
        const DatabaseClaim first(path);
        EXPECT_FALSE(first.isElsewhere());
        EXPECT_TRUE(DatabaseClaim(path).isElsewhere());
        EXPECT_TRUE(DatabaseClaim(path).isElsewhere()) << "asking takes nothing away";
    }
    EXPECT_FALSE(DatabaseClaim(path).isElsewhere());
}

TEST_F(DatabaseClaims, eachDatabaseIsClaimedForItself)
{
    const DatabaseClaim first(path);
    EXPECT_FALSE(DatabaseClaim(folder.filePath(QStringLiteral("other.sqlite"))).isElsewhere());
    const DatabaseClaim memory(QStringLiteral(":memory:"));
    EXPECT_FALSE(DatabaseClaim(QStringLiteral(":memory:")).isElsewhere());
}

TEST_F(DatabaseClaims, everyWayToWriteItsPathIsTheSameDatabase)
{
    const DatabaseClaim first(path);
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("in")));
    EXPECT_TRUE(
        DatabaseClaim(folder.filePath(QStringLiteral("in/../treatments.sqlite"))).isElsewhere());
    const QString link = folder.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(folder.path(), link));
    EXPECT_TRUE(DatabaseClaim(link + QStringLiteral("/treatments.sqlite")).isElsewhere());
}

TEST_F(DatabaseClaims, aSecondProgramsRequestComesWithItsFile)
{
    DatabaseClaim first(path);
    QEventLoop loop;
    QStringList wanted;
    QObject::connect(&first, &DatabaseClaim::wanted, &loop, [&](const QString &file) {
        wanted << file;
        if (wanted.size() == 2) loop.quit();
    });
    bool answered[2] = {false, false};
    std::thread second([&] {
        const DatabaseClaim claim(path);
        answered[0] = claim.bringOtherForward({});
        answered[1] = claim.bringOtherForward(QStringLiteral("/a folder/\"file\".json"));
    });
    loop.exec();
    second.join();
    EXPECT_TRUE(answered[0]);
    EXPECT_TRUE(answered[1]);
    EXPECT_EQ(wanted, (QStringList{QString(), QStringLiteral("/a folder/\"file\".json")}));
}

TEST_F(DatabaseClaims, aRequestOfMoreThan32KiBIsNotAnswered)
{
    DatabaseClaim first(path);
    QEventLoop loop;
    QStringList wanted;
    QObject::connect(&first, &DatabaseClaim::wanted, &loop,
                     [&](const QString &file) { wanted << file; });
    // A line of JSON: {"file":"..."} and the line break.
    constexpr int around = 12;
    const QString longest = QLatin1Char('/') + QString(32 * 1024 - around - 1, QLatin1Char('a'));
    bool answered[2] = {false, true};
    std::thread second([&] {
        const DatabaseClaim claim(path);
        answered[0] = claim.bringOtherForward(longest);
        answered[1] = claim.bringOtherForward(longest + QStringLiteral("aa"));
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    second.join();
    EXPECT_TRUE(answered[0]);
    EXPECT_FALSE(answered[1]);
    EXPECT_EQ(wanted, QStringList{longest});
}

TEST_F(DatabaseClaims, aProgramThatHangsDoesNotAnswer)
{
    startOther();
    EXPECT_EQ(other.readLine(), QByteArray("ours\n"));
    const DatabaseClaim claim(path);
    EXPECT_TRUE(claim.isElsewhere());
    EXPECT_FALSE(claim.bringOtherForward({}, 50));
}

TEST_F(DatabaseClaims, aProgramThatCrashedBlocksNobody)
{
    startOther();
    other.kill();
    ASSERT_TRUE(other.waitForFinished());
    DatabaseClaim claim(path);
    EXPECT_FALSE(claim.isElsewhere());
    // The socket that the crash left behind does not matter either.
    QEventLoop loop;
    QObject::connect(&claim, &DatabaseClaim::wanted, &loop, &QEventLoop::quit);
    bool answered = false;
    std::thread second([&] { answered = DatabaseClaim(path).bringOtherForward({}); });
    loop.exec();
    second.join();
    EXPECT_TRUE(answered);
}

} // namespace
} // namespace viewer
