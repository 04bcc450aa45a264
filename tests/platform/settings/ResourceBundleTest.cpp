#include "platform/settings/ResourceBundle.h"

#include "tests/support/WithoutPrivileges.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <string>

using namespace kelo;

namespace {

namespace fs = std::filesystem;

class ResourceBundleTest : public testing::Test
{
protected:
    ResourceBundleTest() { ResourceBundle::setSearchFolder(folder.string()); }
    ~ResourceBundleTest() override { ResourceBundle::setSearchFolder(""); }

    static void write(const fs::path &path, const std::string &text)
    {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    QTemporaryDir temporary_;
    fs::path folder = temporary_.path().toStdString();
};

} // namespace

TEST_F(ResourceBundleTest, aBundleIsFoundByTheIdentifierInItsFile)
{
    write(folder / "bundle-identifier", "orthodontics.sample\n");
    const auto bundle = ResourceBundle::bundleWithIdentifier("orthodontics.sample");
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->bundlePath(), folder.string());
    EXPECT_EQ(bundle->bundleIdentifier(), "orthodontics.sample");
}

TEST_F(ResourceBundleTest, aBundleInTheSearchFolderIsFoundUnderItsName)
{
    write(folder / "sample" / "bundle-identifier", "sample\n");
    const auto bundle = ResourceBundle::bundleWithIdentifier("sample");
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->bundlePath(), (folder / "sample").string());
}

TEST_F(ResourceBundleTest, aFolderOfTheRightNameWithAnotherIdentifierDoesNotCount)
{
    write(folder / "sample" / "bundle-identifier", "another\n");
    EXPECT_EQ(ResourceBundle::bundleWithIdentifier("sample"), nullptr);
}

TEST_F(ResourceBundleTest, aResourceThatExistsAndMayNotBeReadIsNotFound)
{
    write(folder / "bundle-identifier", "sample\n");
    write(folder / "open.txt", "text");
    write(folder / "closed.txt", "text");
    fs::permissions(folder, fs::perms::all);
    fs::permissions(folder / "closed.txt", fs::perms::none);
    const auto found = [this](const char *name) {
        return kelo::test::resultWithoutPrivileges([&] {
            const auto bundle = ResourceBundle::bundleWithIdentifier("sample");
            return bundle ? bundle->pathForResource_ofType(name, "txt").value_or("not found")
                          : std::string("no bundle");
        });
    };
    EXPECT_EQ(found("open"), (folder / "open.txt").string());
    EXPECT_EQ(found("closed"), "not found");
}

TEST_F(ResourceBundleTest, aFolderWithoutAnIdentifierFileDoesNotCount)
{
    fs::create_directories(folder / "sample");
    EXPECT_EQ(ResourceBundle::bundleWithIdentifier("sample"), nullptr);
}

TEST_F(ResourceBundleTest, blanksAndFurtherLinesOfTheIdentifierFileDoNotMatter)
{
    write(folder / "bundle-identifier", "  sample \t\r\nsecond line\n");
    EXPECT_NE(ResourceBundle::bundleWithIdentifier("sample"), nullptr);
}

TEST_F(ResourceBundleTest, anIdentifierThatIsNoFolderNameIsNeverFound)
{
    write(folder / "bundle-identifier", "../sample\n");
    for (const char *identifier : {"", ".", "..", "../sample", "/"})
        EXPECT_EQ(ResourceBundle::bundleWithIdentifier(identifier), nullptr) << identifier;
}

TEST_F(ResourceBundleTest, aFoundBundleIsKeptAndANewSearchFolderForgetsIt)
{
    write(folder / "bundle-identifier", "sample\n");
    const auto bundle = ResourceBundle::bundleWithIdentifier("sample");
    fs::remove(folder / "bundle-identifier");
    EXPECT_EQ(ResourceBundle::bundleWithIdentifier("sample"), bundle);
    ResourceBundle::setSearchFolder(folder.string());
    EXPECT_EQ(ResourceBundle::bundleWithIdentifier("sample"), nullptr);
}

TEST_F(ResourceBundleTest, aBundleThatComesLaterIsFoundLater)
{
    EXPECT_EQ(ResourceBundle::bundleWithIdentifier("sample"), nullptr);
    write(folder / "bundle-identifier", "sample\n");
    EXPECT_NE(ResourceBundle::bundleWithIdentifier("sample"), nullptr);
}

TEST_F(ResourceBundleTest, withoutASettingTheBundleIsFoundBesideTheProgram)
{
    ResourceBundle::setSearchFolder("");
    const fs::path program = QCoreApplication::applicationDirPath().toStdString();
    const std::string name =
        "bundle-of-the-platform-tests-" + std::to_string(QCoreApplication::applicationPid());
    const fs::path beside = program / name;
    const fs::path inShare = program.parent_path() / "share" / name;
    write(beside / "bundle-identifier", name);
    const auto besideBundle = ResourceBundle::bundleWithIdentifier(name);
    ResourceBundle::setSearchFolder("");
    write(inShare / "bundle-identifier", name);
    const auto sharedBundle = ResourceBundle::bundleWithIdentifier(name);
    fs::remove_all(beside);
    fs::remove_all(inShare);
    ASSERT_NE(besideBundle, nullptr);
    EXPECT_EQ(fs::path(besideBundle->bundlePath()), beside);
    ASSERT_NE(sharedBundle, nullptr);
    EXPECT_EQ(fs::path(sharedBundle->bundlePath()), inShare) << "the share folder comes first";
}

TEST_F(ResourceBundleTest, theSearchFolderComesBeforeThePlacesBesideTheProgram)
{
    const fs::path program = QCoreApplication::applicationDirPath().toStdString();
    const std::string name =
        "first-bundle-of-the-platform-tests-" + std::to_string(QCoreApplication::applicationPid());
    write(program / name / "bundle-identifier", name);
    write(folder / name / "bundle-identifier", name);
    const auto bundle = ResourceBundle::bundleWithIdentifier(name);
    fs::remove_all(program / name);
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(fs::path(bundle->bundlePath()), folder / name);
}

TEST_F(ResourceBundleTest, anyFolderCanBeABundle)
{
    const auto bundle = ResourceBundle::bundleWithPath(folder.string());
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->bundleIdentifier(), "");
    EXPECT_EQ(ResourceBundle::bundleWithPath((folder / "missing").string()), nullptr);
}

TEST_F(ResourceBundleTest, aResourceIsAReadableFileOfItsNameAndType)
{
    write(folder / "tooth 8.obj", "v 0 0 0\n");
    write(folder / "notes", "text");
    write(folder / "images" / "printer.png", "png");
    fs::create_directories(folder / "folder.obj");
    const auto bundle = ResourceBundle::bundleWithPath(folder.string());
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->pathForResource_ofType("tooth 8", "obj"), (folder / "tooth 8.obj").string());
    EXPECT_EQ(bundle->pathForResource_ofType("notes", ""), (folder / "notes").string());
    EXPECT_EQ(bundle->pathForResource_ofType("images/printer", "png"),
              (folder / "images" / "printer.png").string());
    EXPECT_FALSE(bundle->pathForResource_ofType("tooth 9", "obj"));
    EXPECT_FALSE(bundle->pathForResource_ofType("tooth 8", "png"));
    EXPECT_FALSE(bundle->pathForResource_ofType("folder", "obj")) << "a folder is no resource";
    EXPECT_FALSE(bundle->pathForResource_ofType("", "obj"));
}

TEST_F(ResourceBundleTest, aResourceNameDoesNotLeadOutOfTheBundle)
{
    write(folder / "secret.txt", "outside");
    write(folder / "bundle" / "inside.txt", "inside");
    const auto bundle = ResourceBundle::bundleWithPath((folder / "bundle").string());
    ASSERT_NE(bundle, nullptr);
    EXPECT_FALSE(bundle->pathForResource_ofType("../secret", "txt"));
    EXPECT_FALSE(bundle->pathForResource_ofType((folder / "secret").string(), "txt"));
    EXPECT_TRUE(bundle->pathForResource_ofType("inside", "txt"));
}
