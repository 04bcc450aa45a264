#include "viewer/treatment/TreatmentLoader.h"

#include "keloOpenGL/keloOpenGL.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <utility>
#include <vector>

TEST(TreatmentLoader, theSamplePatientHas28TeethBracketsAndButtonsAndBothGums)
{
    kelo::DXDocumentModel document;
    viewer::loadMeshes(document, QString());
    EXPECT_EQ(document.toothModels().size(), 28u);
    EXPECT_EQ(document.bracketModels().size(), 28u);
    EXPECT_EQ(document.buttonModels().size(), 28u);
    EXPECT_TRUE(document.upperGumModel());
    EXPECT_TRUE(document.lowerGumModel());
    EXPECT_EQ(document.models().size(), 86u);
    EXPECT_TRUE(document.checkSanity().empty());
}

TEST(TreatmentLoader, progressCountsEveryFileOnceUpToAllOfThem)
{
    std::vector<std::pair<std::size_t, std::size_t>> steps;
    kelo::DXDocumentModel document;
    viewer::loadMeshes(document, QString(), [&steps](std::size_t doneCount, std::size_t fileCount) {
        steps.emplace_back(doneCount, fileCount);
    });
    ASSERT_FALSE(steps.empty());
    // The gums are reported together, after the last button.
    std::size_t before = 0;
    for (const auto &[doneCount, fileCount] : steps) {
        EXPECT_EQ(fileCount, 86u);
        EXPECT_GT(doneCount, before);
        before = doneCount;
    }
    EXPECT_EQ(steps.size(), 85u);
    EXPECT_EQ(before, 86u);
}

TEST(TreatmentLoader, meshesOfAnotherFolderAreTakenFromThere)
{
    const QTemporaryDir folder;
    const QDir bundle(QStringLiteral(KELO_BUNDLE_FOLDER));
    for (const QString &name : bundle.entryList({"*.obj"}))
        ASSERT_TRUE(QFile::copy(bundle.filePath(name), folder.filePath(name)));
    // Tooth 9 in the place of tooth 8 shows which folder was read.
    ASSERT_TRUE(QFile::remove(folder.filePath("_tooth_8.obj")));
    ASSERT_TRUE(QFile::copy(bundle.filePath("_tooth_9.obj"), folder.filePath("_tooth_8.obj")));
    kelo::DXDocumentModel document;
    viewer::loadMeshes(document, folder.path());
    EXPECT_EQ(document.models().size(), 86u);
    EXPECT_EQ(document.toothModels().at("8")->extents().description(),
              document.toothModels().at("9")->extents().description());
}

TEST(TreatmentLoader, aToothWithoutFilesIsMissingAndABadFileIsReturned)
{
    const QTemporaryDir folder;
    const QDir bundle(QStringLiteral(KELO_BUNDLE_FOLDER));
    for (const QString &name : bundle.entryList({"*.obj"}))
        ASSERT_TRUE(QFile::copy(bundle.filePath(name), folder.filePath(name)));
    for (const char *name :
         {"_tooth_5.obj", "bracket_5.obj", "button_5.obj", "button_9.obj", "_upper_gums.obj"})
        ASSERT_TRUE(QFile::remove(folder.filePath(name)));
    QFile bad(folder.filePath("button_9.obj"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("v 0 0 0\nf 1 1 2\n");
    bad.close();
    kelo::DXDocumentModel document;
    EXPECT_EQ(viewer::loadMeshes(document, folder.path()),
              (QStringList{folder.filePath("button_9.obj") +
                               ":2: vertex number 2 is out of range: the mesh has 1 vertex (9l)",
                           folder.filePath("_upper_gums.obj") +
                               ": cannot be read: No such file or directory"}));
    EXPECT_FALSE(document.toothModels().contains("5"));
    EXPECT_FALSE(document.buttonModels().contains("5l"));
    EXPECT_EQ(document.loadedModels().size(), 86u - 5u);
}

TEST(TreatmentLoader, aMissingResourceCostsNoOther)
{
    const QTemporaryDir folder;
    const QDir bundle(QStringLiteral(KELO_BUNDLE_FOLDER));
    for (const QString &name : bundle.entryList({"*.obj", "bundle-identifier"}))
        ASSERT_TRUE(QFile::copy(bundle.filePath(name), folder.filePath(name)));
    ASSERT_TRUE(QFile::remove(folder.filePath("bracket_8.obj")));
    kelo::ResourceBundle::setSearchFolder(folder.path().toStdString());
    kelo::DXDocumentModel document;
    const QStringList failures = viewer::loadMeshes(document, QString());
    kelo::ResourceBundle::setSearchFolder("");
    EXPECT_EQ(failures,
              QStringList{"There is no resource \"bracket_8.obj\" for the key \"8\" in the bundle "
                          "\"keloOpenGL\""});
    EXPECT_EQ(document.loadedModels().size(), 85u);
}
