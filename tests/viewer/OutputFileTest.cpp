#include "viewer/OutputFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
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
    EXPECT_TRUE(failure.startsWith(path + ": could not be written: ")) << failure.toStdString();
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(OutputFile, aFullDiskIsASentenceAndNoHalfFile)
{
    const QString failure = viewer::writeWholeFile("/dev/full", QByteArray(1 << 20, 'x'));
    EXPECT_TRUE(failure.startsWith("/dev/full: could not be written: ")) << failure.toStdString();
}
