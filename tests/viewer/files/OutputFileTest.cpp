#include "viewer/files/OutputFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

TEST(OutputFile, aFileIsWrittenWhole)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("out.txt");
    EXPECT_EQ(viewer::writeWholeFile(path, "content"), QString());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("content"));
}

TEST(OutputFile, anUnwritablePlaceIsNamedAndLeavesNothingBehind)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("no such folder/out.txt");
    const QString failure = viewer::writeWholeFile(path, "content");
    EXPECT_EQ(failure.toStdString(),
              path.toStdString() + ": could not be written: No such file or directory");
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(OutputFile, aFullDiskIsASentence)
{
    const QString failure = viewer::writeWholeFile("/dev/full", QByteArray(1 << 20, 'x'));
    EXPECT_EQ(failure.toStdString(), "/dev/full: could not be written: No space left on device");
}

TEST(OutputFile, aDeviceIsWrittenToAndNotReplaced)
{
    EXPECT_EQ(viewer::writeWholeFile("/dev/null", "content"), QString());
    EXPECT_FALSE(QFileInfo("/dev/null").isFile());
    EXPECT_FALSE(QFileInfo("/dev/full").isFile());
}

TEST(OutputFile, aFolderIsNotReplacedByAFile)
{
    const QTemporaryDir folder;
    EXPECT_TRUE(viewer::writeWholeFile(folder.path(), "content")
                    .startsWith(folder.path() + ": could not be written: "));
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
}

TEST(OutputFile, whatCouldNotBeMadeIsASentenceAndAnEarlierFileStays)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("page.pdf");
    ASSERT_EQ(viewer::writeWhatWasMade(path, "a page", "the page could not be made"), QString());
    EXPECT_EQ(viewer::writeWhatWasMade(path, {}, "the page could not be made").toStdString(),
              path.toStdString() + ": the page could not be made");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("a page"));
    const QString other = folder.filePath("other.pdf");
    EXPECT_EQ(viewer::writeWhatWasMade(other, {}, "the page could not be made").toStdString(),
              other.toStdString() + ": the page could not be made");
    EXPECT_FALSE(QFile::exists(other));
}

TEST(OutputFile, anEarlierFileIsReplacedAndNothingElseIsLeft)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("out.txt");
    ASSERT_EQ(viewer::writeWholeFile(path, "first"), QString());
    ASSERT_EQ(viewer::writeWholeFile(path, "second"), QString());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("second"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"out.txt"});
}
