#include "viewer/MeshFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

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

TEST(MeshFolder, aBadFileIsNamedWithItsLineAndTheReason)
{
    const QTemporaryDir folder;
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
