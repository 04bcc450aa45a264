#include "viewer/treatment/MeshFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

void copyMeshes(const QString &folder)
{
    for (const QString &name : viewer::meshFileNames())
        ASSERT_TRUE(
            QFile::copy(QDir(KELO_BUNDLE_FOLDER).filePath(name), QDir(folder).filePath(name)));
}

void appendTo(const QString &path, const QByteArray &text)
{
    QFile file(path);
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write(text);
}

} // namespace

TEST(MeshFolder, aFolderHolds28TeethBracketsAndButtonsAndTwoGums)
{
    const QStringList names = viewer::meshFileNames();
    EXPECT_EQ(names.size(), 86);
    for (const char *name : {"_tooth_2.obj", "bracket_15.obj", "button_18.obj", "_tooth_31.obj",
                             "_upper_gums.obj", "_lower_gums.obj"})
        EXPECT_TRUE(names.contains(name)) << name;
    EXPECT_FALSE(names.contains("_tooth_16.obj"));
}

TEST(MeshFolder, theSamplePatientsMeshesHaveNoProblem)
{
    EXPECT_EQ(viewer::meshFolderProblems(KELO_BUNDLE_FOLDER).join("\n").toStdString(), "");
}

TEST(MeshFolder, aMissingFolderAndAMissingFileAreNamed)
{
    const QTemporaryDir folder;
    const QString absent = folder.filePath("absent");
    EXPECT_EQ(viewer::meshFolderProblems(absent),
              QStringList{absent + ": there is no such folder"});
    copyMeshes(folder.path());
    const QString gum = folder.filePath("_lower_gums.obj");
    ASSERT_TRUE(QFile::remove(gum));
    EXPECT_EQ(viewer::meshFolderProblems(folder.path()),
              QStringList{gum + ": the file is missing"});
}

TEST(MeshFolder, aMissingSetIsAMissingToothAndAPartOfOneAProblem)
{
    const QTemporaryDir folder;
    copyMeshes(folder.path());
    for (const char *name : {"_tooth_5.obj", "bracket_5.obj", "button_5.obj"})
        ASSERT_TRUE(QFile::remove(folder.filePath(name)));
    EXPECT_EQ(viewer::missingTeeth(folder.path()), QStringList{"5"});
    EXPECT_EQ(viewer::meshFolderProblems(folder.path()), QStringList());
    const QString bracket = folder.filePath("bracket_6.obj");
    ASSERT_TRUE(QFile::remove(bracket));
    EXPECT_EQ(viewer::missingTeeth(folder.path()), QStringList{"5"});
    EXPECT_EQ(viewer::meshFolderProblems(folder.path()),
              QStringList{bracket + ": the file is missing"});
}

TEST(MeshFolder, aFolderWithoutMeshesIsNoPatientWithoutTeeth)
{
    const QTemporaryDir folder;
    EXPECT_EQ(viewer::meshFolderProblems(folder.path()),
              (QStringList{folder.path() + ": there is no tooth, bracket or button in this folder",
                           folder.filePath("_upper_gums.obj") + ": the file is missing",
                           folder.filePath("_lower_gums.obj") + ": the file is missing"}));
}

TEST(MeshFolder, filesThatAreNoMeshesAreRefusedAtOnce)
{
    const QTemporaryDir folder;
    copyMeshes(folder.path());
    const QString pipe = folder.filePath("_tooth_8.obj");
    const QString device = folder.filePath("_tooth_9.obj");
    const QString large = folder.filePath("bracket_8.obj");
    for (const QString &name : {pipe, device, large})
        ASSERT_TRUE(QFile::remove(name));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link("/dev/zero", device));
    QFile file(large);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(300'000'000));
    EXPECT_EQ(viewer::meshFolderProblems(folder.path()),
              (QStringList{pipe + ": cannot be read: not a regular file",
                           large + ": the file has 300000000 bytes; a mesh may have 268435456",
                           device + ": cannot be read: not a regular file"}));
}

TEST(MeshFolder, aFolderOfMoreBytesThanTheLimitIsNotRead)
{
    const QTemporaryDir folder;
    copyMeshes(folder.path());
    const QStringList problems = viewer::meshFolderProblems(folder.path(), 1'000'000);
    ASSERT_EQ(problems.size(), 1);
    EXPECT_TRUE(problems.first().startsWith(folder.path() + ": the meshes have "));
    EXPECT_TRUE(problems.first().endsWith(" bytes together; a folder's may have 1000000"));
    EXPECT_EQ(viewer::mostMeshFolderBytes, 1'073'741'824);
}

TEST(MeshFolder, ofManyProblemsAHundredAreToldAndTheOthersCounted)
{
    const QTemporaryDir folder;
    copyMeshes(folder.path());
    appendTo(folder.filePath("_tooth_2.obj"), QByteArray("vp\n").repeated(1000));
    appendTo(folder.filePath("_tooth_8.obj"), QByteArray("vp\n").repeated(1000));
    const QStringList problems = viewer::meshFolderProblems(folder.path());
    ASSERT_EQ(problems.size(), 101);
    EXPECT_TRUE(problems.at(99).startsWith(folder.filePath("_tooth_2.obj:")));
    EXPECT_EQ(problems.last(), "and 1900 more");
}

TEST(MeshFolder, controlCharactersOfNamesAreEscaped)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("\x1b[31m");
    EXPECT_EQ(viewer::meshFolderProblems(path),
              QStringList{folder.filePath("\\x1b[31m") + ": there is no such folder"});
}

TEST(MeshFolder, aBadFileIsNamedWithItsLineAndTheReason)
{
    const QTemporaryDir parent;
    // A name that looks like a place in a message.
    const QDir folder(parent.filePath("a%1b%2"));
    ASSERT_TRUE(folder.mkpath("."));
    copyMeshes(folder.path());
    const QString path = folder.filePath("_tooth_8.obj");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const qsizetype lineCount = file.readAll().count('\n');
    file.close();
    appendTo(path, "f 1 2 99999\n");
    const QStringList problems = viewer::meshFolderProblems(folder.path());
    ASSERT_FALSE(problems.isEmpty());
    EXPECT_TRUE(problems.first().startsWith(path + ":" + QString::number(lineCount + 1) + ": "))
        << problems.join("\n").toStdString();
}
