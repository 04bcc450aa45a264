#include "viewer/files/InputFile.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

using viewer::readInputFile;

TEST(InputFile, aFileIsReadWholeUpToTheLimit)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("input");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(QByteArray(1024 * 1024, 'x')), 1024 * 1024);
    file.flush();
    EXPECT_EQ(readInputFile(path, 1024 * 1024).content, QByteArray(1024 * 1024, 'x'));
    EXPECT_EQ(readInputFile(path, 1024 * 1024).problem, QString());

    ASSERT_EQ(file.write("y"), 1);
    file.flush();
    EXPECT_EQ(readInputFile(path, 1024 * 1024).problem, path + ": is larger than 1 MiB");
    EXPECT_EQ(readInputFile(path, 1024 * 1024).content, QByteArray());
}

TEST(InputFile, whatIsNoRegularFileIsRefusedBeforeItIsOpened)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    // Opening a pipe that nobody writes to never ends.
    for (const QString &path : {pipe, folder.path(), QString("/dev/zero")})
        EXPECT_EQ(readInputFile(path, 100).problem, path + ": is no regular file");
}

TEST(InputFile, aFileThatIsNotThereIsNamedWithTheReason)
{
    EXPECT_EQ(readInputFile("/no such folder/input", 100).problem.toStdString(),
              "/no such folder/input: could not be read: No such file or directory");
}

TEST(InputFile, aFileThatSaysItIsEmptyIsHeldToTheLimitToo)
{
    ASSERT_EQ(QFile("/proc/self/maps").size(), 0) << "the system makes it up while it is read";
    EXPECT_GT(readInputFile("/proc/self/maps", 64 * 1024 * 1024).content.size(), 100);
    EXPECT_EQ(readInputFile("/proc/self/maps", 100).problem.toStdString(),
              "/proc/self/maps: is larger than 0 MiB");
}
