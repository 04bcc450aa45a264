// Files from elsewhere that never end, are too large or name themselves oddly.

#include "tests/viewer/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <sys/stat.h>

using namespace viewer::test;

namespace {

/// A file that says to have this many bytes and takes no room on the disk.
void makeSparse(const QString &path, qint64 bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(bytes));
}

void expectRefusal(const QStringList &arguments, const QString &message)
{
    const Ended ended = run(QStringList{"--headless"} + arguments);
    EXPECT_EQ(ended.status, 2) << message.toStdString();
    EXPECT_EQ(ended.errors.toStdString(), message.toStdString() + "\n");
}

} // namespace

TEST(ProgramLimits, filesThatAreTooLargeAreRefused)
{
    const QTemporaryDir folder;
    const QString large = folder.filePath("large");
    makeSparse(large, 4ll * 1024 * 1024 * 1024);
    expectRefusal({large}, large + ": is larger than 64 MiB");
    expectRefusal({"--play", large}, large + ": is larger than 4 MiB");
}

TEST(ProgramLimits, whatNeverEndsIsRefused)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    for (const QString &path : {pipe, QString("/dev/zero")}) {
        expectRefusal({path}, path + ": is no regular file");
        expectRefusal({"--play", path}, path + ": is no regular file");
    }
}

TEST(ProgramLimits, aMessageDoesNotSteerTheTerminal)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("\x1b[2Jpatient.json");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_GT(file.write(R"({"format": "treatment", "version": 1, "\u001b]0;title\u0007": 1,
                             "patient": {"name": "A", "id": "1"}})"),
              0);
    file.close();
    const QString shown = folder.filePath("\\x1b[2Jpatient.json");
    expectRefusal({path}, shown + ": \\x1b]0;title\\x07: there is no such member");
}
