#include "models/OBJReader.h"

#include "models/OBJReaderDetail.h"
#include "tests/models/OBJReaderMesh.h"
#include "tests/models/OBJReaderReference.h"
#include "tests/support/CapturedOutput.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace kelo {
namespace {

using test::TemporaryFile;

struct Mesh : test::ReadMesh
{
    bool read = false;
    std::string path;

    std::vector<float> position(std::size_t i) const
    {
        return {vertices.at(i).position, vertices.at(i).position + 3};
    }
    std::vector<float> normal(std::size_t i) const
    {
        return {vertices.at(i).normal, vertices.at(i).normal + 3};
    }
    std::string malformedNumberOnLine(unsigned line) const
    {
        return "Malformed number on line " + std::to_string(line) + " of " + path + "\n";
    }
};

Mesh meshOf(const std::string &text, const detail::OBJReadingLimits &limits = {})
{
    const TemporaryFile file(text);
    Mesh mesh;
    mesh.path = file.path;
    OBJVertex *vertices = nullptr;
    std::uint32_t *indexes = nullptr;
    std::uint32_t vertexCount = 0, indexCount = 0;
    mesh.messages = test::standardErrorOf([&] {
        mesh.read = detail::loadOBJFile(file.path.c_str(), limits, &vertices, &vertexCount,
                                        &indexes, &indexCount);
    });
    if (mesh.read) {
        mesh.vertices.assign(vertices, vertices + vertexCount);
        mesh.indexes.assign(indexes, indexes + indexCount);
    }
    std::free(vertices);
    std::free(indexes);
    return mesh;
}

using FloatList = std::vector<float>;
using Indexes = std::vector<std::uint32_t>;

TEST(OBJReader, threePositionsAndAFaceAreOneTriangleWithoutNormals)
{
    const Mesh mesh = meshOf("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_TRUE(mesh.read);
    ASSERT_EQ(mesh.vertices.size(), 3u);
    EXPECT_EQ(mesh.position(1), (FloatList{1, 0, 0}));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(mesh.normal(i), (FloatList{0, 0, 0}));
    EXPECT_EQ(mesh.indexes, (Indexes{0, 1, 2}));
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, aQuadBecomesAFanOfTwoTriangles)
{
    EXPECT_EQ(meshOf("f 1 2 3 4\n").indexes, (Indexes{0, 1, 2, 0, 2, 3}));
}

TEST(OBJReader, aPentagonAfterATriangleFansFromItsOwnFirstVertex)
{
    EXPECT_EQ(meshOf("f 1 2 3\nf 5 6 7 8 9\n").indexes,
              (Indexes{0, 1, 2, 4, 5, 6, 4, 6, 7, 4, 7, 8}));
}

TEST(OBJReader, aVertexThatCarriesAnotherNormalIsCopiedForEveryUse)
{
    const std::string start =
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nvn 0 0 1\nvn 0 1 0\nf 1//1 2//1 3//1\n";
    const Mesh mesh = meshOf(start + "f 1//2 3//2 4//2\n");
    ASSERT_EQ(mesh.vertices.size(), 6u);
    EXPECT_EQ(mesh.indexes, (Indexes{0, 1, 2, 4, 5, 3}));
    EXPECT_EQ(mesh.normal(0), (FloatList{0, 0, 1}));
    EXPECT_EQ(mesh.normal(3), (FloatList{0, 1, 0}));
    EXPECT_EQ(mesh.position(4), mesh.position(0));
    EXPECT_EQ(mesh.normal(4), (FloatList{0, 1, 0}));
    EXPECT_EQ(mesh.position(5), mesh.position(2));
    EXPECT_EQ(mesh.normal(5), (FloatList{0, 1, 0}));

    const Mesh again = meshOf(start + "f 1//2 3//2 4//2\nf 1//2 3//2 4//2\n");
    EXPECT_EQ(again.vertices.size(), 8u) << "no earlier copy is looked for";
    EXPECT_EQ(again.indexes, (Indexes{0, 1, 2, 4, 5, 3, 6, 7, 3}));
}

TEST(OBJReader, aCopyCanBeNamedByItsNumberAndIsCopiedInItsTurn)
{
    const Mesh mesh =
        meshOf("v 1 2 3\nvn 0 0 1\nvn 0 1 0\nvn 1 0 0\nf 1//1 1//2 2//2\nf 2//3 1 1\n");
    ASSERT_EQ(mesh.vertices.size(), 3u);
    EXPECT_EQ(mesh.indexes, (Indexes{0, 1, 1, 2, 0, 0}));
    EXPECT_EQ(mesh.normal(2), (FloatList{1, 0, 0}));
    EXPECT_EQ(mesh.position(2), (FloatList{1, 2, 3}));
}

TEST(OBJReader, theTextureNumberIsIgnoredAndTheNormalBehindItIsRead)
{
    const Mesh mesh = meshOf("v 0 0 0\nvn 0 0 1\nf 1/5/1 1/x/1 1//1\n");
    EXPECT_EQ(mesh.indexes, (Indexes{0, 0, 0}));
    EXPECT_EQ(mesh.vertices.size(), 1u);
    EXPECT_EQ(mesh.normal(0), (FloatList{0, 0, 1}));
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, aFaceWithTextureNumbersOnlyHasNoNormals)
{
    const Mesh mesh = meshOf("v 0 0 0\nv 1 0 0\nv 0 1 0\nvn 0 0 1\nf 1/5 2/5 3/5\n");
    EXPECT_EQ(mesh.indexes, (Indexes{0, 1, 2}));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(mesh.normal(i), (FloatList{0, 0, 0}));
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, aTextureCoordinateLineIsSkippedSilently)
{
    const Mesh mesh = meshOf("vt 0.5 0.5\nvt\nv 1 2 3\n");
    EXPECT_EQ(mesh.vertices.size(), 1u);
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, anUnknownVSequenceIsReportedWithItsLetterAndSkipped)
{
    const Mesh mesh = meshOf("v 1 2 3\nvp 1 2\nv 4 5 6\n");
    EXPECT_TRUE(mesh.read);
    EXPECT_EQ(mesh.messages,
              "Malformed obj file " + mesh.path + ": Line 2 starts with invalid sequence \"vp\"\n");
    EXPECT_EQ(mesh.vertices.size(), 2u);
}

TEST(OBJReader, aLoneVIsReportedAndTheNextLineIsRead)
{
    const Mesh mesh = meshOf("v\nv 4 5 6\n");
    EXPECT_EQ(mesh.messages, "Malformed obj file " + mesh.path +
                                 ": Line 1 starts with invalid sequence \"v\n\"\n");
    EXPECT_EQ(mesh.vertices.size(), 1u);
}

TEST(OBJReader, aLoneVAtTheEndOfTheTextIsReportedWithTheTerminatingZero)
{
    const Mesh mesh = meshOf("v");
    EXPECT_EQ(mesh.messages, "Malformed obj file " + mesh.path +
                                 ": Line 1 starts with invalid sequence \"v" + '\0' + "\"\n");
}

TEST(OBJReader, aNormalBeyondThoseReadKeepsTheVertexAndItsNormal)
{
    const Mesh mesh =
        meshOf("v 1 2 3\nvn 0 0 1\nf 1//1 1//2 1//0\nf 1//-1 1//9223372036854775807 1\nvn 0 1 0\n");
    EXPECT_EQ(mesh.indexes, (Indexes{0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(mesh.vertices.size(), 1u);
    EXPECT_EQ(mesh.normal(0), (FloatList{0, 0, 1}));
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, anEmptyFileIsAMeshOfNothing)
{
    const TemporaryFile file("");
    OBJVertex *vertices = nullptr;
    std::uint32_t *indexes = nullptr;
    std::uint32_t vertexCount = 7, indexCount = 7;
    EXPECT_TRUE(loadOBJFile(file.path.c_str(), &vertices, &vertexCount, &indexes, &indexCount));
    EXPECT_EQ(vertexCount, 0u);
    EXPECT_EQ(indexCount, 0u);
    EXPECT_NE(vertices, nullptr);
    EXPECT_NE(indexes, nullptr);
    std::free(vertices);
    std::free(indexes);
}

TEST(OBJReader, aCarriageReturnAndALineFeedAreTwoLineEnds)
{
    const Mesh mesh = meshOf("v x 0 0\r\nv 1 0 0\r\nv 0 y 0\r\nvq\r\n");
    EXPECT_EQ(mesh.messages, mesh.malformedNumberOnLine(1) + mesh.malformedNumberOnLine(5) +
                                 "Malformed obj file " + mesh.path +
                                 ": Line 7 starts with invalid sequence \"vq\"\n");
    EXPECT_EQ(mesh.vertices.size(), 1u);
}

TEST(OBJReader, aMalformedNumberDropsThePositionOrNormalLineWithOneMessage)
{
    struct Case
    {
        const char *name, *line;
    };
    const Case cases[] = {{"no numbers", "v \n"},
                          {"one number missing", "v 1 2\n"},
                          {"a word", "v 1 two 3\n"},
                          {"all words", "v one two three\n"},
                          {"a lone sign", "v 1 - 3\n"},
                          {"a lone point", "v . 2 3\n"},
                          {"a lone exponent", "v e5 2 3\n"},
                          {"a German word", "v 1 2 \xc3\xbc\n"},
                          {"vn alone", "vn\n"},
                          {"vn with a word behind it", "vnx 1 2 3\n"},
                          {"a normal cut short", "vn 1 2 \n"}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const Mesh mesh = meshOf(std::string(c.line) + "v 0 0 0\nf 1//1 1 1\n");
        EXPECT_EQ(mesh.messages, mesh.malformedNumberOnLine(1));
        EXPECT_EQ(mesh.vertices.size(), 1u);
        EXPECT_EQ(mesh.position(0), (FloatList{0, 0, 0}));
        EXPECT_EQ(mesh.normal(0), (FloatList{0, 0, 0}));
    }
}

TEST(OBJReader, aFaceKeepsTheVerticesAroundAMalformedNumber)
{
    struct Case
    {
        const char *name, *face;
        Indexes indexes;
        int messages;
    };
    const Case cases[] = {
        {"a word", "f 1 x 3 4\n", {0, 2, 3}, 1},
        {"a word with slashes is one token", "f 1 x/1/1 3 4\n", {0, 2, 3}, 1},
        {"a token of slashes", "f 1 //1 3 4\n", {0, 2, 3}, 1},
        {"a malformed normal leaves the vertex without one", "f 1//x 2 3\n", {0, 1, 2}, 1},
        {"a missing normal", "f 1// 2 3\n", {0, 1, 2}, 1},
        {"a third slash begins another token", "f 1//1/7 2 3\n", {0, 1, 2}, 1},
        {"a number with letters behind it", "f 1a 2 3\n", {0, 1, 2}, 0},
        {"digits on the letter", "f1 2 3\n", {0, 1, 2}, 0},
        {"a word that begins with f", "foo 1 2 3\n", {0, 1, 2}, 1},
        {"blanks at the end", "f 1 2 3 \t \n", {0, 1, 2}, 0},
        {"nothing", "f\n", {}, 0},
        {"nothing but a blank", "f \n", {}, 1},
        {"a word before blanks at the end", "f 1 x \n", {0}, 2},
        {"a texture number of its own", "f 1/ 2/ 3/\n", {0, 1, 2}, 0},
        {"one vertex", "f 4\n", {3}, 0},
        {"two vertices", "f 4 5\n", {3, 4}, 0},
        {"tabs", "\t f\t1\t2\t3\n", {0, 1, 2}, 0}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const Mesh mesh = meshOf(c.face);
        EXPECT_EQ(mesh.indexes, c.indexes);
        std::string expected;
        for (int i = 0; i < c.messages; ++i)
            expected += mesh.malformedNumberOnLine(1);
        EXPECT_EQ(mesh.messages, expected);
    }
}

TEST(OBJReader, theFourthNumberOfALineIsIgnored)
{
    const Mesh mesh = meshOf("v 1 2 3 4 five\nvn 0 0 1 x\n");
    EXPECT_EQ(mesh.position(0), (FloatList{1, 2, 3}));
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, otherLinesAreSkippedSilently)
{
    const Mesh mesh =
        meshOf("# f 1 2 3\n\n   \no name\ng v\nusemtl f\ns off\n1 2 3\n/f\n\v v 1 2 3\n"
               "mtllib v.mtl\nV 1 2 3\nF 1 2 3\n");
    EXPECT_TRUE(mesh.read);
    EXPECT_TRUE(mesh.vertices.empty());
    EXPECT_TRUE(mesh.indexes.empty());
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, aLastPositionLineWithoutALineBreakIsRead)
{
    EXPECT_EQ(meshOf("v 1 2 3").position(0), (FloatList{1, 2, 3}));
    const Mesh cut = meshOf("v 1 2");
    EXPECT_EQ(cut.messages, cut.malformedNumberOnLine(1));
    EXPECT_TRUE(cut.vertices.empty());
    EXPECT_EQ(meshOf("f 1 2 3\n  # f 1").indexes, (Indexes{0, 1, 2}));
    EXPECT_EQ(meshOf("f 1 2 3\r").indexes, (Indexes{0, 1, 2}));
}

TEST(OBJReader, vertexNumbersAreNotCheckedAndWrapTo32Bits)
{
    const Mesh mesh = meshOf("v 0 0 0\nvn 0 0 1\n"
                             "f 0//1 -1//1 5//1\n"
                             "f 4294967295//1 4294967296//1 4294967297//1\n"
                             "f 99999999999999999999//1 -99999999999999999999//1 +1\n");
    EXPECT_EQ(mesh.indexes,
              (Indexes{4294967295u, 4294967294u, 4, 4294967294u, 4294967295u, 0,
                       // the largest number - 1 and the smallest number - 1, modulo 2^32
                       4294967294u, 4294967295u, 0}));
    EXPECT_EQ(mesh.vertices.size(), 1u);
    EXPECT_EQ(mesh.normal(0), (FloatList{0, 0, 0}));
    EXPECT_EQ(mesh.messages, "");
}

TEST(OBJReader, aFaceBeforeItsVerticesLeavesTheirNormalsToLaterFaces)
{
    const Mesh mesh = meshOf("vn 0 0 1\nf 1//1 2//1 3//1\nv 1 2 3\nf 1//1 1//1 1//1\n");
    ASSERT_EQ(mesh.vertices.size(), 1u);
    EXPECT_EQ(mesh.normal(0), (FloatList{0, 0, 1}));
    EXPECT_EQ(mesh.indexes, (Indexes{0, 1, 2, 0, 0, 0}));
}

TEST(OBJReader, aZeroByteIsAnOrdinaryCharacterAndDoesNotEndTheText)
{
    using namespace std::string_literals;
    const Mesh mesh = meshOf("#\0\nv 1\0 2\0x 3\nf 1\0 2 3\0\nf \0 1 2 3\n\0\nv 4 5 6\n"s);
    ASSERT_EQ(mesh.vertices.size(), 2u);
    EXPECT_EQ(mesh.position(0), (FloatList{1, 2, 3}));
    EXPECT_EQ(mesh.position(1), (FloatList{4, 5, 6}));
    EXPECT_EQ(mesh.indexes, (Indexes{0, 1, 2, 0, 1, 2}));
    EXPECT_EQ(mesh.messages, mesh.malformedNumberOnLine(4));
}

TEST(OBJReader, normalsAreCopiedAsWrittenWhenAFaceAssignsThem)
{
    // More vertices than the first capacity, so that grown memory is checked as well.
    std::string text = "vn 0 0 7\n";
    for (int i = 0; i < 3000; ++i)
        text += "v 1 2 3\n";
    for (int i = 1; i <= 3000; ++i)
        text += "f " + std::to_string(i) + "//1\n";
    const Mesh mesh = meshOf(text);
    ASSERT_EQ(mesh.vertices.size(), 3000u);
    for (std::size_t i = 0; i < 3000; ++i) {
        ASSERT_EQ(mesh.indexes[i], i);
        ASSERT_EQ(mesh.normal(i), (FloatList{0, 0, 7}));
    }
}

TEST(OBJReader, aFaceOfManyVerticesOutgrowsEveryBuffer)
{
    const std::uint32_t corners = 200'000;
    std::string text = "f";
    for (std::uint32_t i = 1; i <= corners; ++i)
        text += " " + std::to_string(i);
    const Mesh mesh = meshOf(text + "\n");
    ASSERT_GT(text.size(), detail::OBJReadingLimits().blockSize);
    ASSERT_EQ(mesh.indexes.size(), 3 * (corners - 2));
    for (std::uint32_t i = 0; i < corners - 2; ++i) {
        ASSERT_EQ(mesh.indexes[3 * i], 0u);
        ASSERT_EQ(mesh.indexes[3 * i + 1], i + 1);
        ASSERT_EQ(mesh.indexes[3 * i + 2], i + 2);
    }
}

TEST(OBJReader, tokensThatStraddleBlocksReadAsInOnePiece)
{
    const std::string text = "# a comment that is longer than most of the blocks\n"
                             "       \t        v -1.25 2.5e-3 1234.5678\r\n"
                             "vt a texture line that goes on and on and on\n"
                             "v 0x1.8p3 inf -nan\nvn 0.1 0.2 0.3\nvn 3 2 1\n"
                             "f 1//1 2/17/2 1/2/2 4 99999999999999999999\n"
                             "vp unknown and long enough to make the buffer grow\nf 1 x//2 2//\n"
                             "v 1 2\nv 7 8 9";
    for (std::size_t blockSize = 1; blockSize < 70; ++blockSize) {
        const Mesh mesh = meshOf(text, {.blockSize = blockSize});
        const test::ReadMesh expected = test::ReferenceOBJReader(text, mesh.path).mesh;
        ASSERT_TRUE(test::sameArrays(mesh, expected)) << "blocks of " << blockSize;
        ASSERT_EQ(mesh.messages, expected.messages) << "blocks of " << blockSize;
    }
}

TEST(OBJReader, everyStoredFileReadsAsTheRulesSayInEveryBlockSize)
{
    const std::filesystem::path root = KELO_SOURCE_DIR;
    int files = 0, endless = 0;
    for (const char *folder : {"tests/models/obj", "fuzz/seeds"}) {
        for (const auto &entry : std::filesystem::directory_iterator(root / folder)) {
            SCOPED_TRACE(entry.path());
            std::ifstream stream(entry.path(), std::ios::binary);
            std::ostringstream bytes;
            bytes << stream.rdbuf();
            const std::string text = bytes.str();
            ++files;
            if (test::isEndlessOBJ(text)) {
                ++endless;
                continue;
            }
            for (const std::size_t blockSize : {4u, 7u, 64u, 262144u}) {
                const Mesh mesh = meshOf(text, {.blockSize = blockSize});
                const test::ReadMesh expected = test::ReferenceOBJReader(text, mesh.path).mesh;
                EXPECT_TRUE(test::sameArrays(mesh, expected));
                EXPECT_EQ(mesh.messages, expected.messages);
            }
        }
    }
    EXPECT_GE(files, 12);
    EXPECT_EQ(endless, 1) << "one stored file is the face without an end";
}

} // namespace
} // namespace kelo
