#include "models/ToothModelLoader.h"

#include "base/Assertion.h"
#include "models/BundleKey.h"
#include "models/DXGLightweightModel.h"
#include "platform/settings/ResourceBundle.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/WithoutPrivileges.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>

#include <pthread.h>

namespace kelo {
namespace {

using test::standardErrorOf;
namespace fs = std::filesystem;

const std::string oneTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

/// A resource bundle of the library's identifier in a folder of its own.
class ToothModelLoaderTest : public testing::Test
{
protected:
    ToothModelLoaderTest()
    {
        std::string pattern = (fs::temp_directory_path() / "kelo-bundle-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the test");
        folder = pattern;
        write("bundle-identifier", keloOpenGLBundleKey + "\n");
        ResourceBundle::setSearchFolder(folder.string());
    }
    ~ToothModelLoaderTest() override
    {
        ResourceBundle::setSearchFolder("");
        fs::remove_all(folder);
    }

    std::string write(const std::string &name, const std::string &text) const
    {
        std::ofstream(folder / name) << text;
        return path(name);
    }
    std::string path(const std::string &name) const { return (folder / name).string(); }

    fs::path folder;
};

TEST_F(ToothModelLoaderTest, buttonKeysGiveThePathsOfTheirTeethsButtons)
{
    write("button_8.obj", oneTriangle);
    write("button_9.obj", oneTriangle);
    EXPECT_EQ(
        ToothModelLoader::buttonModelFilesForButtonNameKeys({"8l", "9l"}),
        (ToothModelLoader::Paths{{"8l", path("button_8.obj")}, {"9l", path("button_9.obj")}}));
}

TEST_F(ToothModelLoaderTest, toothKeysGiveThePathsOfTeethAndOfBrackets)
{
    for (const char *name : {"_tooth_8.obj", "_tooth_31.obj", "bracket_8.obj", "bracket_31.obj"})
        write(name, oneTriangle);
    EXPECT_EQ(
        ToothModelLoader::toothModelFilesForToothNameKeys({"31", "8", "8"}),
        (ToothModelLoader::Paths{{"8", path("_tooth_8.obj")}, {"31", path("_tooth_31.obj")}}));
    EXPECT_EQ(
        ToothModelLoader::bracketModelFilesForToothNameKeys({"8", "31"}),
        (ToothModelLoader::Paths{{"8", path("bracket_8.obj")}, {"31", path("bracket_31.obj")}}));
}

TEST_F(ToothModelLoaderTest, aKeyWithoutItsResourceIsRefusedByName)
{
    struct Case
    {
        ToothModelLoader::Paths (*filesForKeys)(const std::vector<std::string> &);
        const char *key;
        const char *message;
    };
    const Case cases[]{
        {ToothModelLoader::toothModelFilesForToothNameKeys, "99",
         "There is no resource \"_tooth_99.obj\" for the key \"99\" in the bundle \"keloOpenGL\""},
        {ToothModelLoader::bracketModelFilesForToothNameKeys, "1",
         "There is no resource \"bracket_1.obj\" for the key \"1\" in the bundle \"keloOpenGL\""},
        {ToothModelLoader::buttonModelFilesForButtonNameKeys, "99l",
         "There is no resource \"button_99.obj\" for the key \"99l\" in the bundle \"keloOpenGL\""},
    };
    for (const Case &each : cases) {
        try {
            each.filesForKeys({each.key});
            ADD_FAILURE() << each.key << " was found";
        } catch (const MissingResource &error) {
            EXPECT_STREQ(error.what(), each.message);
        }
    }
}

TEST_F(ToothModelLoaderTest, anEmptyButtonKeyIsRefused)
{
    EXPECT_THROW(ToothModelLoader::buttonModelFilesForButtonNameKeys({""}), AssertionFailure);
}

TEST_F(ToothModelLoaderTest, aFileBecomesAModelWithAMaterialOfItsOwn)
{
    const auto model = ToothModelLoader::modelFromFile(write("mesh.obj", oneTriangle));
    ASSERT_TRUE(model);
    EXPECT_EQ(model->vertexCount(), 3u);
    EXPECT_EQ(model->indexCount(), 3u);
    EXPECT_EQ(model->extents().xMax(), 1.0);
    EXPECT_EQ(model->material()->color(), Color::whiteColor());
}

TEST_F(ToothModelLoaderTest, aFileThatIsNotThereGivesNoModelAndNoMessage)
{
    std::shared_ptr<DXGLightweightModel> model;
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::modelFromFile(path("no.obj")); }),
              "");
    EXPECT_EQ(model, nullptr);
}

TEST_F(ToothModelLoaderTest, oneUnreadableFileOfThreeLeavesTwoModelsAndOneLine)
{
    const ToothModelLoader::Paths files{{"2", write("two.obj", oneTriangle)},
                                        {"3", path("missing.obj")},
                                        {"15", write("fifteen.obj", oneTriangle)}};
    ToothModelLoader::Models models;
    EXPECT_EQ(standardErrorOf([&] { models = ToothModelLoader::toothModelsFromFiles(files); }),
              "Error: Couldn't load \"" + path("missing.obj") + "\" as a model file\n");
    ASSERT_EQ(models.size(), 2u);
    ASSERT_TRUE(models.contains("2"));
    ASSERT_TRUE(models.contains("15"));
    EXPECT_EQ(models["2"]->material(), models["15"]->material());
}

TEST_F(ToothModelLoaderTest, identifiersMessagesAndProgressComeInTheOrderOfTheKeys)
{
    // Large files among small ones, so that the two threads finish out of order.
    std::string large;
    for (int i = 0; i < 20000; ++i)
        large += "v 1 2 3\n";
    ToothModelLoader::Paths files;
    std::string expectedMessages;
    for (int key = 2; key <= 31; ++key) {
        const std::string name = std::to_string(key);
        if (key % 5 == 0) {
            files[name] = path("missing" + name);
            expectedMessages += "Error: Couldn't load \"" + files[name] + "\" as a model file\n";
        } else {
            files[name] = write(name, key % 3 == 0 ? large : oneTriangle);
        }
    }
    ASSERT_EQ(files.size(), 30u);

    std::vector<std::size_t> progress;
    ToothModelLoader::Models models;
    const auto material = HVOGLMaterial::material();
    EXPECT_EQ(standardErrorOf([&] {
                  models = ToothModelLoader::modelsFromFiles_withMaterial(
                      files, material, [&](std::size_t doneCount, std::size_t fileCount) {
                          EXPECT_EQ(fileCount, 30u);
                          progress.push_back(doneCount);
                      });
              }),
              expectedMessages);

    std::vector<std::size_t> expectedProgress;
    for (std::size_t done = 1; done <= 30; ++done)
        expectedProgress.push_back(done);
    EXPECT_EQ(progress, expectedProgress);
    ASSERT_EQ(models.size(), 24u) << "6 of the 30 keys are multiples of 5";
    std::uint64_t expectedID = models.begin()->second->uniqueID();
    for (const auto &[key, model] : models) {
        EXPECT_EQ(model->uniqueID(), expectedID++) << key;
        EXPECT_EQ(model->material(), material) << key;
        EXPECT_EQ(model->vertexCount(), std::stoi(key) % 3 == 0 ? 20000u : 3u) << key;
    }
}

TEST_F(ToothModelLoaderTest, anExceptionFromTheProgressStopsTheLoading)
{
    ToothModelLoader::Paths files;
    for (int key = 2; key <= 15; ++key)
        files[std::to_string(key)] = write(std::to_string(key), oneTriangle);
    int calls = 0;
    EXPECT_THROW(ToothModelLoader::toothModelsFromFiles(files,
                                                        [&](std::size_t, std::size_t) {
                                                            ++calls;
                                                            throw std::runtime_error("stopped");
                                                        }),
                 std::runtime_error);
    EXPECT_EQ(calls, 1);
}

TEST_F(ToothModelLoaderTest, whatCouldNotBeLoadedIsReturnedWithItsReason)
{
    fs::create_directory(folder / "folder.obj");
    const ToothModelLoader::Paths files{
        {"2", write("two.obj", oneTriangle)},
        {"3", path("missing.obj")},
        {"4", path("folder.obj")},
        {"5", write("five.obj", oneTriangle + "\nf 1 2 4\n")},
        {"6", write("six.obj", oneTriangle + "f 1 2 3")},
    };
    const auto notLoaded = [&](const char *name) {
        return "Error: Couldn't load \"" + path(name) + "\" as a model file\n";
    };
    ToothModelLoader::Models models;
    MeshFailures failures;
    EXPECT_EQ(standardErrorOf(
                  [&] { models = ToothModelLoader::toothModelsFromFiles(files, {}, &failures); }),
              notLoaded("missing.obj") + notLoaded("folder.obj") + path("five.obj") +
                  ":6: vertex number 4 is out of range: the mesh has 3 vertices (5)\n" +
                  notLoaded("five.obj") + path("six.obj") +
                  ":5: no line break at the end of the file: the face never ends (6)\n" +
                  notLoaded("six.obj"));
    EXPECT_EQ(models.size(), 1u);
    EXPECT_EQ(
        failures,
        (MeshFailures{
            {"3", path("missing.obj"), 0, "cannot be read: No such file or directory"},
            {"4", path("folder.obj"), 0, "cannot be read: not a regular file"},
            {"5", path("five.obj"), 6, "vertex number 4 is out of range: the mesh has 3 vertices"},
            {"6", path("six.obj"), 5,
             "no line break at the end of the file: the face never ends"}}));
}

TEST_F(ToothModelLoaderTest, aFileLoadedWithoutAKeyFailsWithoutAMessage)
{
    MeshFailures failures;
    const std::string file = write("mesh.obj", oneTriangle + "f 1 2 0\n");
    std::shared_ptr<DXGLightweightModel> model;
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::modelFromFile(file, &failures); }),
              "");
    EXPECT_EQ(model, nullptr);
    EXPECT_EQ(
        failures,
        (MeshFailures{{"", file, 5, "vertex number 0 is out of range: the mesh has 3 vertices"}}));
    EXPECT_EQ(failures.at(0).sentence(),
              file + ":5: vertex number 0 is out of range: the mesh has 3 vertices");
}

TEST_F(ToothModelLoaderTest, aFileThatMayNotBeReadIsReturnedWithItsReason)
{
    const std::string file = write("mesh.obj", oneTriangle);
    fs::permissions(file, fs::perms::none);
    fs::permissions(folder, fs::perms::all);
    const std::string told = test::resultWithoutPrivileges([&] {
        MeshFailures failures;
        std::string messages = standardErrorOf([&] {
            (void)ToothModelLoader::bracketModelsFromFiles({{"8", file}}, {}, &failures);
        });
        return messages + (failures.empty() ? "" : failures[0].sentence());
    });
    EXPECT_EQ(told, "Error: Couldn't load \"" + file + "\" as a model file\n" + file +
                        ": cannot be read: Permission denied (8)");
}

TEST_F(ToothModelLoaderTest, namesWithControlCharactersAreEscapedInMessages)
{
    const std::string file = path("mesh\x1b[2J.obj");
    EXPECT_EQ(standardErrorOf([&] {
                  ToothModelLoader::toothModelsFromFiles({{"8", file}});
              }),
              "Error: Couldn't load \"" + path("mesh\\x1b[2J.obj") + "\" as a model file\n");
}

/// No thread can be started while one of these lives: none has room for a stack of that size.
class NoFurtherThreads
{
public:
    NoFurtherThreads()
    {
        pthread_getattr_default_np(&_before);
        pthread_attr_t huge = _before;
        pthread_attr_setstacksize(&huge, std::size_t(1) << 47);
        pthread_setattr_default_np(&huge);
    }
    ~NoFurtherThreads() { pthread_setattr_default_np(&_before); }
    NoFurtherThreads(const NoFurtherThreads &) = delete;
    NoFurtherThreads &operator=(const NoFurtherThreads &) = delete;

private:
    pthread_attr_t _before{};
};

TEST_F(ToothModelLoaderTest, withoutASecondThreadAllFilesAreReadByTheFirst)
{
    ToothModelLoader::Paths files;
    for (int key = 2; key <= 15; ++key)
        files[std::to_string(key)] = write(std::to_string(key), oneTriangle);
    const NoFurtherThreads none;
    EXPECT_THROW(std::thread([] {}).join(), std::system_error);
    std::size_t done = 0;
    const auto models = ToothModelLoader::toothModelsFromFiles(
        files, [&](std::size_t doneCount, std::size_t) { done = doneCount; });
    EXPECT_EQ(models.size(), 14u);
    EXPECT_EQ(done, 14u);
}

TEST_F(ToothModelLoaderTest, noFilesGiveNoModels)
{
    EXPECT_TRUE(ToothModelLoader::toothModelsFromFiles({}).empty());
}

TEST_F(ToothModelLoaderTest, everySetHasItsStandardMaterial)
{
    const ToothModelLoader::Paths files{{"8", write("mesh.obj", oneTriangle)}};
    const auto tooth = ToothModelLoader::toothModelsFromFiles(files).at("8")->material();
    EXPECT_EQ(tooth->frontAmbientColor(), Color(0.625, 0.625, 0.625, 1.0));
    for (const auto &models : {ToothModelLoader::bracketModelsFromFiles(files),
                               ToothModelLoader::buttonModelsFromFiles(files)}) {
        const auto material = models.at("8")->material();
        EXPECT_EQ(material->color(), Color::whiteColor());
        EXPECT_EQ(material->frontAmbientColor(), Color::blackColor());
    }
}

TEST_F(ToothModelLoaderTest, theGumsAreLoadedWithTheirMaterial)
{
    write("_upper_gums.obj", oneTriangle);
    write("_lower_gums.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nf 1 2 3\n");
    const auto upper = ToothModelLoader::standardUpperGumsModel();
    const auto lower = ToothModelLoader::standardLowerGumsModel();
    ASSERT_TRUE(upper && lower);
    EXPECT_EQ(upper->vertexCount(), 3u);
    EXPECT_EQ(lower->vertexCount(), 4u);
    EXPECT_EQ(upper->material()->color(), Color(0.75, 0.375, 0.5, 1.0));
    EXPECT_NE(upper->material(), lower->material());
}

TEST_F(ToothModelLoaderTest, missingGumsGiveNoModelAndOneErrorLine)
{
    std::shared_ptr<DXGLightweightModel> model;
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::standardUpperGumsModel(); }),
              "Error: Couldn't load \"_upper_gums.obj\" as a model file\n");
    EXPECT_EQ(model, nullptr);
    MeshFailures failures;
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::standardLowerGumsModel(&failures); }),
              "Error: Couldn't load \"_lower_gums.obj\" as a model file\n");
    EXPECT_EQ(model, nullptr);
    EXPECT_EQ(failures,
              (MeshFailures{{"lower gums", "_lower_gums.obj", 0, "the resource is missing"}}));

    write("_upper_gums.obj", oneTriangle + "f 1 2 7\n");
    failures.clear();
    EXPECT_EQ(standardErrorOf([&] { model = ToothModelLoader::standardUpperGumsModel(&failures); }),
              path("_upper_gums.obj") +
                  ":5: vertex number 7 is out of range: the mesh has 3 vertices (upper gums)\n"
                  "Error: Couldn't load \"" +
                  path("_upper_gums.obj") + "\" as a model file\n");
    EXPECT_EQ(model, nullptr);
    EXPECT_EQ(failures.size(), 1u);
}

void expectColor(const std::optional<Color> &color, const Color &expected)
{
    ASSERT_TRUE(color.has_value());
    EXPECT_NEAR(color->red, expected.red, 1e-15);
    EXPECT_NEAR(color->green, expected.green, 1e-15);
    EXPECT_NEAR(color->blue, expected.blue, 1e-15);
    EXPECT_NEAR(color->alpha, expected.alpha, 1e-15);
}

TEST(ToothModelLoader, theGumMaterialIsPinkWithShininess16)
{
    const auto gum = ToothModelLoader::gumModelMaterial();
    EXPECT_EQ(gum->color(), Color(0.75, 0.375, 0.5, 1.0));
    EXPECT_EQ(gum->shininess(), 16.0);
    expectColor(gum->frontAmbientColor(), Color(0.6, 0.3, 0.4, 1.0));
    expectColor(gum->frontSpecularColor(), Color(0.1875, 0.09375, 0.125, 1.0));
    // What the material derives from its colour stays at the back: 0.3 of it and 0.7 of black.
    expectColor(gum->backAmbientColor(), Color(0.225, 0.1125, 0.15, 1.0));
}

TEST(ToothModelLoader, theToothMaterialIsTheDefaultWithItsOwnAmbientAndSpecular)
{
    const auto tooth = ToothModelLoader::toothModelMaterial();
    EXPECT_EQ(tooth->color(), Color::whiteColor());
    EXPECT_EQ(tooth->shininess(), 32.0);
    expectColor(tooth->frontAmbientColor(), Color(0.625, 0.625, 0.625, 1.0));
    expectColor(tooth->frontSpecularColor(), Color::whiteColor());
    EXPECT_EQ(tooth->frontDiffuseColor(), Color::whiteColor());
}

TEST(ToothModelLoader, theStandardMaterialOfAColorHasBlackAmbientAndWhiteSpecular)
{
    const Color color(0.1, 0.2, 0.3, 1.0);
    const auto material = ToothModelLoader::standardMaterialForColor(color);
    EXPECT_EQ(material->color(), color);
    EXPECT_EQ(material->frontDiffuseColor(), color);
    EXPECT_EQ(material->frontAmbientColor(), Color::blackColor());
    EXPECT_EQ(material->frontSpecularColor(), Color::whiteColor());
    EXPECT_EQ(material->shininess(), 32.0);
}

TEST(ToothModelLoader, bracketsAndButtonsAreWhite)
{
    for (const auto &material :
         {ToothModelLoader::bracketModelMaterial(), ToothModelLoader::buttonModelMaterial()}) {
        EXPECT_EQ(material->color(), Color::whiteColor());
        EXPECT_EQ(material->frontAmbientColor(), Color::blackColor());
        EXPECT_EQ(material->frontSpecularColor(), Color::whiteColor());
    }
}

TEST(ToothModelLoader, twoToothMaterialsAreDistinctObjectsOfEqualValues)
{
    const auto one = ToothModelLoader::toothModelMaterial();
    const auto other = ToothModelLoader::toothModelMaterial();
    EXPECT_NE(one, other);
    for (const std::string &key : HVOGLMaterial::parameterNames())
        EXPECT_EQ(one->valueForKey(key), other->valueForKey(key)) << key;
}

TEST(ToothModelLoader, noColorGivesAMaterialOfNoColor)
{
    const auto material = ToothModelLoader::standardMaterialForColor(std::nullopt);
    EXPECT_EQ(material->color(), std::nullopt);
    EXPECT_EQ(material->frontDiffuseColor(), std::nullopt);
    EXPECT_EQ(material->frontAmbientColor(), Color::blackColor());
    EXPECT_EQ(material->frontSpecularColor(), Color::whiteColor());
}

} // namespace
} // namespace kelo
