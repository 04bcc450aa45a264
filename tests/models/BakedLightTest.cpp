#include "models/BakedLight.h"

#include "base/Assertion.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace kelo {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const std::vector<OBJVertex> corners{
    {{0, 0, 0}, {0, 0, 1}}, {{1, 0, 0}, {0, 0, 1}}, {{0, 1, 0}, {0, 0, 1}}};
const BakedLight cornerLight{{0, 1, 2}, {128, 200, -127}, {255, 254, 127}};

/// A folder of its own.
class BakedLightTest : public testing::Test
{
protected:
    BakedLightTest()
    {
        std::string pattern = (fs::temp_directory_path() / "kelo-light-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the test");
        folder = pattern;
    }
    ~BakedLightTest() override { fs::remove_all(folder); }

    std::string path(const std::string &name) const { return (folder / name).string(); }
    std::string write(const std::string &name, const std::string &bytes) const
    {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return path(name);
    }
    std::string writtenBytes() const
    {
        EXPECT_EQ(writeBakedLight(path("made.light"), corners, cornerLight, 0x0102030405060708),
                  std::nullopt);
        std::ifstream file(path("made.light"), std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        return bytes.str();
    }
    std::string refusalOf(const std::string &bytes) const
    {
        const BakedLightReading reading = readBakedLight(write("some.light", bytes), corners);
        EXPECT_FALSE(reading.light);
        return reading.refusal;
    }

    fs::path folder;
};

TEST_F(BakedLightTest, whatIsWrittenIsReadBack)
{
    writtenBytes();
    const BakedLightReading reading = readBakedLight(path("made.light"), corners);
    EXPECT_EQ(reading.refusal, "");
    EXPECT_EQ(reading.light, cornerLight);
    EXPECT_EQ(reading.sourceChecksum, 0x0102030405060708u);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1)
        << "nothing unfinished is left";
}

TEST_F(BakedLightTest, theFileHasItsNumbersWithTheLowestByteFirst)
{
    const std::string bytes = writtenBytes();
    ASSERT_EQ(bytes.size(), 32u + 9u);
    EXPECT_EQ(bytes.substr(0, 16), "KELOBAKE\1\0\0\0\3\0\0\0"s);
    EXPECT_EQ(bytes.substr(24), "\10\7\6\5\4\3\2\1\0\1\2\200\310\201\377\376\177"s);
}

TEST_F(BakedLightTest, aMeshWithoutVerticesHasAFileToo)
{
    EXPECT_EQ(writeBakedLight(path("empty.light"), {}, {}, 0), std::nullopt);
    EXPECT_EQ(readBakedLight(path("empty.light"), {}).light, BakedLight());
}

TEST_F(BakedLightTest, aFileThatIsNotThereIsNeitherReadNorRefused)
{
    for (const std::string &name : {"none.light"s, "none/none.light"s}) {
        const BakedLightReading reading = readBakedLight(path(name), corners);
        EXPECT_FALSE(reading.light);
        EXPECT_EQ(reading.refusal, "");
    }
}

TEST_F(BakedLightTest, malformedFilesAreRefusedWithTheReason)
{
    const std::string good = writtenBytes();
    const auto changed = [&](std::size_t at, char byte) {
        std::string bytes = good;
        bytes[at] = byte;
        return bytes;
    };
    const struct
    {
        const char *name;
        std::string bytes;
        const char *refusal;
    } cases[]{
        {"empty", "", "is no baked light: it has only 0 bytes"},
        {"one byte", "K", "is no baked light: it has only 1 byte"},
        {"half a header", good.substr(0, 31), "is no baked light: it has only 31 bytes"},
        {"a mesh", std::string(99, 'v'), "is no baked light: it does not begin with KELOBAKE"},
        {"version", changed(8, 2), "has version 2 of the format; only version 1 is known"},
        {"great version", changed(11, '\x80'),
         "has version 2147483649 of the format; only version 1 is known"},
        {"fewer vertices", changed(12, 1), "was made for another mesh: for 1 vertex instead of 3"},
        {"too many vertices", changed(15, '\xFF'),
         "was made for another mesh: for 4278190083 vertices instead of 3"},
        {"checksum", changed(16, static_cast<char>(good[16] ^ 1)),
         "was made for another mesh: its vertices are not the same"},
        {"checksum's end", changed(23, static_cast<char>(good[23] ^ 1)),
         "was made for another mesh: its vertices are not the same"},
        {"cut off", good.substr(0, 40), "has 40 bytes instead of 41"},
        {"header only", good.substr(0, 32), "has 32 bytes instead of 41"},
        {"too long", good + "x", "has 42 bytes instead of 41"},
    };
    for (const auto &each : cases)
        EXPECT_EQ(refusalOf(each.bytes), each.refusal) << each.name;
    EXPECT_EQ(readBakedLight(write("some.light", good), corners).light, cornerLight);
}

TEST_F(BakedLightTest, noByteOfTheHeaderIsWithoutMeaning)
{
    const std::string good = writtenBytes();
    for (std::size_t at = 0; at < 24; ++at) {
        std::string bytes = good;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x10);
        EXPECT_NE(refusalOf(bytes), "") << at;
    }
}

TEST_F(BakedLightTest, whatIsNoRegularFileIsRefusedAtOnce)
{
    fs::create_directory(path("folder.light"));
    ASSERT_EQ(mkfifo(path("pipe.light").c_str(), 0600), 0);
    for (const std::string &name :
         {path("folder.light"), path("pipe.light"), std::string("/dev/zero")})
        EXPECT_EQ(readBakedLight(name, corners).refusal, "cannot be read: not a regular file")
            << name;
}

TEST_F(BakedLightTest, everyBitOfTheVerticesCountsAndSoDoesTheirOrder)
{
    const std::uint64_t sum = checksumOf(corners);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            std::vector<OBJVertex> others = corners;
            others[i].position[k] += 1e-5f;
            EXPECT_NE(checksumOf(others), sum) << i << " " << k;
            others = corners;
            others[i].normal[k] = -others[i].normal[k] - 0.5f;
            EXPECT_NE(checksumOf(others), sum) << i << " " << k;
        }
    }
    EXPECT_NE(checksumOf(std::vector<OBJVertex>{corners[1], corners[0], corners[2]}), sum);
    EXPECT_NE(checksumOf(std::vector<OBJVertex>{corners[0], corners[1]}), sum);
    EXPECT_EQ(checksumOf(std::vector<OBJVertex>(corners)), sum);
}

TEST_F(BakedLightTest, theFileIsNextToTheMesh)
{
    EXPECT_EQ(bakedLightPathOf("a.b/_tooth_8.obj"), "a.b/_tooth_8.light");
    EXPECT_EQ(bakedLightPathOf(".obj"), ".light");
    EXPECT_EQ(bakedLightPathOf("a.obj/mesh"), "");
    EXPECT_EQ(bakedLightPathOf("mesh.OBJ"), "");
    EXPECT_EQ(bakedLightPathOf(""), "");
}

TEST_F(BakedLightTest, whatCannotBeWrittenIsSaid)
{
    EXPECT_EQ(writeBakedLight(path("none/made.light"), corners, cornerLight, 0),
              "cannot be written: No such file or directory");
    fs::create_directories(path("taken.light/inside"));
    EXPECT_EQ(writeBakedLight(path("taken.light"), corners, cornerLight, 0),
              "cannot be written: Is a directory");
    EXPECT_FALSE(fs::exists(path("taken.light.part")));
    EXPECT_THROW(writeBakedLight(path("made.light"), corners, {}, 0), AssertionFailure);
}

} // namespace
} // namespace kelo
