// Meshes with baked light next to them.

#include "base/Assertion.h"
#include "models/BakedLight.h"
#include "models/DXGLightweightModel.h"
#include "models/ToothModelLoader.h"
#include "platform/time/NotificationCenter.h"
#include "tests/support/CapturedOutput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace kelo {
namespace {

using test::standardErrorOf;
namespace fs = std::filesystem;

/// The last face gives the third vertex a second normal, so that the mesh has four.
const std::string creased = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvn 0 0 1\nvn 0 0 -1\n"
                            "f 1//1 2//1 3//1\nf 1//1 2//1 3//2\n";
const BakedLight light{{10, 11, 12}, {20, 21, -22}, {30, 31, 32}, {40, 41, 42}};

class ToothModelLoaderLight : public testing::Test
{
protected:
    ToothModelLoaderLight()
    {
        std::string pattern = (fs::temp_directory_path() / "kelo-lit-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the test");
        folder = pattern;
    }
    ~ToothModelLoaderLight() override { fs::remove_all(folder); }

    std::string path(const std::string &name) const { return (folder / name).string(); }
    std::string write(const std::string &name, const std::string &text) const
    {
        std::ofstream(folder / name) << text;
        return path(name);
    }
    /// A mesh with its light.
    std::string writeLit(const std::string &name) const
    {
        const std::string mesh = write(name + ".obj", creased);
        const auto model = ToothModelLoader::modelFromFile(mesh);
        EXPECT_EQ(writeBakedLight(path(name + ".light"), model->vertices(), light, 0),
                  std::nullopt);
        return mesh;
    }

    fs::path folder;
};

TEST_F(ToothModelLoaderLight, comesWithTheMeshInTheReadersOrder)
{
    const std::string mesh = writeLit("mesh");
    std::shared_ptr<DXGLightweightModel> model;
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::modelFromFile(mesh); }), "");
    ASSERT_TRUE(model);
    ASSERT_EQ(model->vertexCount(), 4u);
    EXPECT_EQ(model->vertices()[3].normal[2], -1.0f) << "the copy comes last";
    EXPECT_EQ(model->bakedLight(), light);
}

TEST_F(ToothModelLoaderLight, aMeshWithoutItIsLoadedAsEver)
{
    const std::string mesh = write("mesh.obj", creased);
    MeshFailures failures;
    std::shared_ptr<DXGLightweightModel> model;
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::modelFromFile(mesh, &failures); }),
              "");
    ASSERT_TRUE(model);
    EXPECT_EQ(model->bakedLight(), std::nullopt);
    EXPECT_TRUE(failures.empty());
}

TEST_F(ToothModelLoaderLight, whatDoesNotFitIsIgnoredWithOneLine)
{
    const std::string mesh = writeLit("mesh");
    write("mesh.obj", "v 0 0 0.5\n" + creased.substr(creased.find('\n') + 1));
    MeshFailures failures;
    std::shared_ptr<DXGLightweightModel> model;
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::modelFromFile(mesh, &failures); }),
              "Error: Ignored \"" + path("mesh.light") +
                  "\", which was made for another mesh: its vertices are not the same\n");
    ASSERT_TRUE(model);
    EXPECT_EQ(model->vertexCount(), 4u);
    EXPECT_EQ(model->bakedLight(), std::nullopt);
    EXPECT_TRUE(failures.empty()) << "the mesh itself was loaded";
}

TEST_F(ToothModelLoaderLight, theLinesOfManyMeshesComeInTheOrderOfTheirKeys)
{
    ToothModelLoader::Paths paths;
    std::string expected;
    for (const std::string key : {"2", "3", "4", "5", "6", "7"}) {
        paths.insert_or_assign(key, write("_tooth_" + key + ".obj", creased));
        write("_tooth_" + key + ".light", key);
    }
    for (const auto &[key, mesh] : paths)
        expected += "Error: Ignored \"" + path("_tooth_" + key + ".light") +
                    "\", which is no baked light: it has only 1 byte\n";
    ToothModelLoader::Models models;
    EXPECT_EQ(standardErrorOf([&] { models = ToothModelLoader::toothModelsFromFiles(paths); }),
              expected);
    EXPECT_EQ(models.size(), 6u);
}

TEST_F(ToothModelLoaderLight, aFileWithAnotherEndingHasNone)
{
    writeLit("mesh");
    fs::rename(path("mesh.obj"), path("mesh.scan"));
    EXPECT_EQ(ToothModelLoader::modelFromFile(path("mesh.scan"))->bakedLight(), std::nullopt);
}

TEST_F(ToothModelLoaderLight, aModelTakesOneElementForEachVertex)
{
    const auto model = ToothModelLoader::modelFromFile(write("mesh.obj", creased));
    EXPECT_THROW(model->setBakedLight(BakedLight(3)), AssertionFailure);
    EXPECT_EQ(model->bakedLight(), std::nullopt);
    model->setBakedLight(light);
    EXPECT_EQ(model->bakedLight(), light);
    model->setBakedLight(std::nullopt);
    EXPECT_EQ(model->bakedLight(), std::nullopt);
}

} // namespace
} // namespace kelo
