// Folders of meshes: the sample patient's, and ones made for a test.

#include "models/BakedLight.h"
#include "tools/lightbake/Bake.h"
#include "tools/lightbake/CommandLine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelo::lightbake {
namespace {

namespace fs = std::filesystem;

/// The last face gives the third vertex a second normal, so that the mesh has four.
const std::string crease = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvn 0 0 1\nvn 0 0 -1\n"
                           "f 1//1 2//1 3//1\nf 1//1 2//1 3//2\n";

struct Outcome
{
    int status;
    std::string output, errors;
    bool operator==(const Outcome &) const = default;
};

/// For a message of gtest.
void PrintTo(const Outcome &run, std::ostream *out)
{
    *out << run.status << '\n' << run.output << run.errors;
}

class LightbakeFolder : public testing::Test
{
protected:
    LightbakeFolder()
    {
        std::string pattern = (fs::temp_directory_path() / "kelo-bake-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the test");
        folder = pattern;
    }
    ~LightbakeFolder() override { fs::remove_all(folder); }

    std::string path(const std::string &name) const { return (folder / name).string(); }
    void write(const std::string &name, const std::string &text) const
    {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    std::string bytesOf(const std::string &name) const
    {
        std::ifstream file(folder / name, std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        return bytes.str();
    }
    static Outcome run(const std::vector<std::string> &arguments)
    {
        std::ostringstream output, errors;
        const int status = runLightbake(arguments, output, errors);
        return {status, output.str(), errors.str()};
    }
    Outcome bake() const { return run({folder.string()}); }

    fs::path folder;
};

TEST_F(LightbakeFolder, everyMeshOfTheBundleHasItsLight)
{
    std::size_t count = 0;
    for (const Part &part : mouthOfFolder(KELO_BUNDLE).parts) {
        const BakedLightReading reading =
            readBakedLight(bakedLightPathOf(part.path), part.vertices);
        EXPECT_EQ(reading.refusal, "") << part.path;
        ASSERT_TRUE(reading.light) << part.path;
        ++count;
        const auto [darkest, brightest] =
            std::minmax_element(reading.light->begin(), reading.light->end(),
                                [](const auto &a, const auto &b) { return a.closed < b.closed; });
        EXPECT_LT(darkest->closed, 160) << part.path << " has crevices or meets another part";
        EXPECT_GT(brightest->closed, 230) << part.path << " has places in the open";
    }
    EXPECT_EQ(count, 86u);
}

TEST_F(LightbakeFolder, theBundlesBytesComeAgainOnAnotherNumberOfThreads)
{
    const Mouth mouth = mouthOfFolder(KELO_BUNDLE);
    const std::vector<BakedLight> baked = bakedLightOf(mouth, 3);
    ASSERT_EQ(baked.size(), mouth.parts.size());
    for (std::size_t i = 0; i < mouth.parts.size(); ++i) {
        const Part &part = mouth.parts[i];
        EXPECT_TRUE(readBakedLight(bakedLightPathOf(part.path), part.vertices).light == baked[i])
            << part.path;
    }
}

TEST_F(LightbakeFolder, theFileIsInTheOrderOfTheReader)
{
    write("_tooth_8.obj", crease);
    EXPECT_EQ(bake(), (Outcome{0, "baked light: 1 file\n", ""}));
    const Part part = mouthOfFolder(folder.string()).parts.at(0);
    ASSERT_EQ(part.vertices.size(), 4u);
    const BakedLightReading reading = readBakedLight(path("_tooth_8.light"), part.vertices);
    EXPECT_EQ(reading.refusal, "");
    ASSERT_TRUE(reading.light);
    EXPECT_EQ(reading.light->size(), 4u);
}

TEST_F(LightbakeFolder, meshesThatDidNotChangeAreLeftAlone)
{
    write("_tooth_8.obj", crease);
    write("bracket_8.obj", crease);
    EXPECT_EQ(bake(), (Outcome{0, "baked light: 2 files\n", ""}));
    const std::string first = bytesOf("_tooth_8.light");
    EXPECT_EQ(bake(), (Outcome{0, "baked light: nothing has changed\n", ""}));
    EXPECT_EQ(bytesOf("_tooth_8.light"), first);
    fs::remove(path("bracket_8.light"));
    EXPECT_EQ(bake(), (Outcome{0, "baked light: 2 files\n", ""}));
    EXPECT_EQ(bytesOf("_tooth_8.light"), first) << "the same bytes again";
    write("bracket_8.obj", crease + "f 1//1 3//1 2//1\n");
    EXPECT_EQ(bake(), (Outcome{0, "baked light: 2 files\n", ""}))
        << "other faces, the same vertices";
    fs::rename(path("bracket_8.obj"), path("bracket_9.obj"));
    fs::rename(path("bracket_8.light"), path("bracket_9.light"));
    EXPECT_EQ(bake(), (Outcome{0, "baked light: 2 files\n", ""})) << "another place";
}

TEST_F(LightbakeFolder, theNameTellsWhatAMeshIs)
{
    for (const char *name : {"_lower_gums", "_tooth_18", "_tooth_8", "_tooth_8_fine", "_upper_gums",
                             "bracket_31", "button_2"})
        write(std::string(name) + ".obj", crease);
    const Mouth mouth = mouthOfFolder(folder.string());
    const struct
    {
        Kind kind;
        bool isUpper;
        int toothNumber;
        bool isVariant;
    } expected[]{{Kind::gum, false, 0, false},      {Kind::tooth, false, 18, false},
                 {Kind::tooth, true, 8, false},     {Kind::tooth, true, 8, true},
                 {Kind::gum, true, 0, false},       {Kind::attachment, false, 31, false},
                 {Kind::attachment, true, 2, false}};
    ASSERT_EQ(mouth.parts.size(), std::size(expected));
    for (std::size_t i = 0; i < mouth.parts.size(); ++i) {
        EXPECT_EQ(mouth.parts[i].kind, expected[i].kind) << mouth.parts[i].path;
        EXPECT_EQ(mouth.parts[i].isUpper, expected[i].isUpper) << mouth.parts[i].path;
        EXPECT_EQ(mouth.parts[i].toothNumber, expected[i].toothNumber) << mouth.parts[i].path;
        EXPECT_EQ(mouth.parts[i].isVariant, expected[i].isVariant) << mouth.parts[i].path;
    }
}

TEST_F(LightbakeFolder, whatCannotBeBakedIsSaidInALine)
{
    EXPECT_EQ(
        bake(),
        (Outcome{1, "", "lightbake: " + folder.string() + ": no mesh files in this folder\n"}));
    EXPECT_EQ(run({path("none")}),
              (Outcome{1, "", "lightbake: " + path("none") + ": No such file or directory\n"}));
    for (const std::string name : {"scan", "_tooth_0", "_tooth_33", "_tooth_8fine", "bracket_x"}) {
        write(name + ".obj", crease);
        EXPECT_EQ(bake(), (Outcome{1, "",
                                   "lightbake: " + path(name + ".obj") +
                                       ": no tooth, bracket, button or gum by its name\n"}));
        fs::remove(path(name + ".obj"));
    }
    write("_tooth_8.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 9\n");
    const Outcome bad = bake();
    EXPECT_EQ(bad.status, 1);
    EXPECT_TRUE(bad.errors.starts_with("lightbake: " + path("_tooth_8.obj") + ":4: "))
        << bad.errors;
    write("_tooth_8.obj", crease);
    fs::create_directories(path("_tooth_8.light/inside"));
    EXPECT_EQ(bake(), (Outcome{1, "",
                               "lightbake: " + path("_tooth_8.light") +
                                   ": cannot be written: Is a directory\n"}));
}

TEST_F(LightbakeFolder, wrongUseIsAnsweredWithTheUsage)
{
    const Outcome wrong{2, "", "lightbake: one folder of meshes is needed\nusage: lightbake DIR\n"};
    EXPECT_EQ(run({}), wrong);
    EXPECT_EQ(run({"a", "b"}), wrong);
    EXPECT_EQ(run({"--meshes"}), wrong);
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.starts_with("usage: lightbake DIR\n")) << help.output;
}

} // namespace
} // namespace kelo::lightbake
