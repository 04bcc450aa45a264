#include "document/DocumentMeshes.h"

#include "document/DXDocumentModel.h"
#include "models/BundleKey.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "platform/settings/ResourceBundle.h"
#include "tests/support/CapturedOutput.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <utility>

namespace kelo {
namespace {

using test::standardErrorOf;

/// A folder with the meshes of teeth 2 and 18 and with the upper gum.
class DocumentMeshes : public testing::Test
{
protected:
    DocumentMeshes()
    {
        for (const char *name : {"_upper_gums.obj", "_tooth_2.obj", "bracket_2.obj", "button_2.obj",
                                 "_tooth_18.obj", "bracket_18.obj", "button_18.obj"})
            write(name, "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    }
    ~DocumentMeshes() override { ResourceBundle::setSearchFolder(""); }

    std::string path(const std::string &name) const
    {
        return folder.path().toStdString() + "/" + name;
    }
    void write(const std::string &name, const std::string &text) const
    {
        std::ofstream(path(name)) << text;
    }

    QTemporaryDir folder;
    DXDocumentModel document;
};

TEST_F(DocumentMeshes, ofAFolderAreLoadedInOneCallWithTheGums)
{
    write("_lower_gums.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_EQ(loadMeshFolder(document, folder.path().toStdString()), MeshFailures{});
    EXPECT_EQ(document.loadedModels().size(), 8u);
    EXPECT_TRUE(document.toothModels().contains("18"));
    EXPECT_TRUE(document.buttonModels().contains("18l"));
    ASSERT_TRUE(document.upperGumModel() && document.lowerGumModel());
    EXPECT_EQ(document.lowerGumModel()->material()->frontDiffuseColor(),
              ToothModelLoader::gumModelMaterial()->frontDiffuseColor());
    EXPECT_TRUE(document.checkSanity().empty());
}

TEST_F(DocumentMeshes, thatCannotBeLoadedAreReturnedAndTheRestIsLoaded)
{
    std::filesystem::remove(path("bracket_2.obj"));
    MeshFailures failures;
    standardErrorOf([&] { failures = loadMeshFolder(document, folder.path().toStdString()); });
    ASSERT_EQ(failures.size(), 2u);
    EXPECT_EQ(failures[0].sentence(),
              path("bracket_2.obj") + ": cannot be read: No such file or directory (2)");
    EXPECT_EQ(failures[1].sentence(),
              path("_lower_gums.obj") + ": cannot be read: No such file or directory");
    EXPECT_EQ(document.loadedModels().size(), 6u);
}

TEST_F(DocumentMeshes, ofTeethWithoutAnyFileAreNoFailures)
{
    const auto missing = teethMissingInFolder(folder.path().toStdString());
    EXPECT_EQ(missing.size(), 26u);
    EXPECT_EQ(missing.front(), "3");
    write("button_3.obj", "");
    EXPECT_EQ(teethMissingInFolder(folder.path().toStdString()).front(), "4");
}

TEST_F(DocumentMeshes, areCountedOverAllKindsOfFiles)
{
    std::vector<std::pair<std::size_t, std::size_t>> steps;
    standardErrorOf([&] {
        loadMeshFolder(document, folder.path().toStdString(),
                       [&](std::size_t doneCount, std::size_t fileCount) {
                           steps.emplace_back(doneCount, fileCount);
                       });
    });
    // Two of each kind, then the gums together.
    EXPECT_EQ(steps, (std::vector<std::pair<std::size_t, std::size_t>>{
                         {1, 8}, {2, 8}, {3, 8}, {4, 8}, {5, 8}, {6, 8}, {8, 8}}));
}

TEST_F(DocumentMeshes, ofTheSamplePatientAreComplete)
{
    EXPECT_EQ(loadSamplePatient(document), MeshFailures{});
    EXPECT_EQ(document.models().size(), 86u);
}

TEST_F(DocumentMeshes, ofTheSamplePatientThatAreMissingAreTold)
{
    write("bundle-identifier", keloOpenGLBundleKey + "\n");
    ResourceBundle::setSearchFolder(folder.path().toStdString());
    MeshFailures failures;
    standardErrorOf([&] { failures = loadSamplePatient(document); });
    // Of each kind 26, and a gum.
    ASSERT_EQ(failures.size(), 79u);
    EXPECT_EQ(failures.front().sentence(),
              "There is no resource \"_tooth_3.obj\" for the key \"3\" in the bundle "
              "\"keloOpenGL\"");
    EXPECT_EQ(document.loadedModels().size(), 7u);
}

} // namespace
} // namespace kelo
