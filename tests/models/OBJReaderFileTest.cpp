#include "models/OBJReaderFile.h"

#include "models/OBJReader.h"
#include "tests/models/OBJReaderMesh.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/WithoutPrivileges.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace kelo {
namespace {

using test::standardErrorOf;
using test::TemporaryFile;

/// One call with outputs that show whether they were written.
struct FileCall
{
    OBJVertex vertexMark{};
    std::uint32_t indexMark = 0;
    OBJVertex *vertices = &vertexMark;
    std::uint32_t *indexes = &indexMark;
    std::uint32_t vertexCount = 4711, indexCount = 4712;
    std::optional<MeshFileRefusal> refusal;
    std::string messages;

    explicit FileCall(const std::string &path, const MeshFileLimits &limits = {})
    {
        messages = standardErrorOf([&] {
            refusal = readMeshFile(path, limits, &vertices, &vertexCount, &indexes, &indexCount);
        });
    }
    FileCall(const FileCall &) = delete;
    FileCall &operator=(const FileCall &) = delete;
    ~FileCall()
    {
        if (vertices != &vertexMark) std::free(vertices);
        if (indexes != &indexMark) std::free(indexes);
    }

    bool untouched() const
    {
        return vertices == &vertexMark && indexes == &indexMark && vertexCount == 4711 &&
               indexCount == 4712;
    }
    std::string reason() const { return refusal ? refusal->reason : "no refusal"; }
};

const std::string triangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

TEST(OBJReaderFile, aFileInOrderIsReadAsTheReaderReadsIt)
{
    const TemporaryFile file("v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nvn 0 0 1\nvn 0 1 0\n"
                             "f 1//1 2//1 3//1\nf 1//2 3//2 4//2\n");
    const FileCall call(file.path);
    EXPECT_FALSE(call.refusal);
    EXPECT_EQ(call.vertexCount, 6u);
    EXPECT_EQ(call.indexCount, 6u);
    EXPECT_EQ(call.messages, "");
}

TEST(OBJReaderFile, aFaceMayNameVerticesThatComeLater)
{
    const TemporaryFile file("f 1 2 3\nv 0 0 0\nv 1 0 0\nv 0 1 0\n");
    EXPECT_EQ(FileCall(file.path).reason(), "no refusal");
}

TEST(OBJReaderFile, aVertexThatIsNotInTheFileIsRefusedWithTheLine)
{
    struct Case
    {
        const char *name;
        std::string text;
        std::size_t line;
        const char *reason;
    };
    const Case cases[] = {
        {"one beyond the last", triangle + "# a remark\nf 1 2 4\n", 6,
         "vertex number 4 is out of range: the mesh has 3 vertices"},
        {"zero", "v 0 0 0\nf 1 1 0\n", 2, "vertex number 0 is out of range: the mesh has 1 vertex"},
        {"relative", triangle + "f 1 2 -1\n", 5,
         "vertex number -1 is out of range: the mesh has 3 vertices"},
        {"the first of several", triangle + "f 1 2 3\nf 9//1 8 7\nf 10 1 1\n", 6,
         "vertex number 9 is out of range: the mesh has 3 vertices"},
        {"behind a token without a number", triangle + "f 1 x/2 5/1/1 3\n", 5,
         "vertex number 5 is out of range: the mesh has 3 vertices"},
        {"in a file with CR LF", "v 0 0 0\r\nv 1 0 0\r\n\r\nf 1 2 3\r\n", 4,
         "vertex number 3 is out of range: the mesh has 2 vertices"},
        {"in a file with CR", "v 0 0 0\rv 1 0 0\r\rf 1 2 3\r", 4,
         "vertex number 3 is out of range: the mesh has 2 vertices"},
        {"without any vertex", "f 1 1 1\n", 1,
         "vertex number 1 is out of range: the mesh has 0 vertices"}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const TemporaryFile file(c.text);
        const FileCall call(file.path);
        ASSERT_TRUE(call.refusal);
        EXPECT_EQ(call.refusal->line, c.line);
        EXPECT_EQ(call.refusal->reason, c.reason);
        EXPECT_TRUE(call.refusal->wasOpened);
        EXPECT_TRUE(call.untouched());
    }
}

TEST(OBJReaderFile, theLineIsCountedAcrossTheBlocksThatAreRead)
{
    // More than the 256 KiB of a block, so that CR LF pairs lie on both sides of a border.
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += i % 3 == 0 ? "\r\n" : "# x\r\n";
    const TemporaryFile file(text + "v 0 0 0\r\nf 1 1 2\r\n");
    const FileCall call(file.path);
    ASSERT_TRUE(call.refusal);
    EXPECT_EQ(call.refusal->line, 100'002u);
}

TEST(OBJReaderFile, aFaceWithoutALineBreakIsRefusedAndNotReportedForEver)
{
    for (const char *end : {"f 1 2 3", "f 1 2 3 ", "f", "f 1/", "f 1//1"}) {
        SCOPED_TRACE(end);
        const TemporaryFile file(triangle + "\r\n" + end);
        const FileCall call(file.path);
        ASSERT_TRUE(call.refusal);
        EXPECT_EQ(call.refusal->line, 6u);
        EXPECT_EQ(call.refusal->reason,
                  "no line break at the end of the file: the face never ends");
        EXPECT_TRUE(call.untouched());
        EXPECT_EQ(call.messages, "");
    }
    const TemporaryFile comment(triangle + "# no line break");
    EXPECT_EQ(FileCall(comment.path).reason(), "no refusal");
}

TEST(OBJReaderFile, whatIsNoRegularFileIsRefusedAtOnce)
{
    std::string folder = std::filesystem::temp_directory_path() / "meshesXXXXXX";
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    const std::string pipe = folder + "/pipe.obj";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string &path :
         {pipe, folder, std::string("/dev/zero"), std::string("/dev/null")}) {
        SCOPED_TRACE(path);
        const FileCall call(path);
        ASSERT_TRUE(call.refusal);
        EXPECT_EQ(call.refusal->reason, "cannot be read: not a regular file");
        EXPECT_FALSE(call.refusal->wasOpened);
        EXPECT_TRUE(call.untouched());
        EXPECT_EQ(call.messages, "");
    }
    const FileCall missing(folder + "/missing.obj");
    ASSERT_TRUE(missing.refusal);
    EXPECT_EQ(missing.refusal->reason, "cannot be read: No such file or directory");
    EXPECT_FALSE(missing.refusal->wasOpened);
    std::filesystem::remove_all(folder);
}

TEST(OBJReaderFile, aFileThatExistsAndMayNotBeReadIsRefused)
{
    const TemporaryFile file(triangle);
    ASSERT_EQ(::chmod(file.path.c_str(), 0), 0);
    const std::string reason =
        test::resultWithoutPrivileges([&] { return FileCall(file.path).reason(); });
    EXPECT_EQ(reason, "cannot be read: Permission denied");
    // loadOBJFile says false about it, and nothing else.
    const std::string loaded = test::resultWithoutPrivileges([&] {
        OBJVertex *vertices = nullptr;
        std::uint32_t *indexes = nullptr;
        std::uint32_t vertexCount = 1, indexCount = 2;
        bool read = true;
        const std::string messages = standardErrorOf([&] {
            read = loadOBJFile(file.path.c_str(), &vertices, &vertexCount, &indexes, &indexCount);
        });
        const bool untouched = !vertices && !indexes && vertexCount == 1 && indexCount == 2;
        return std::string(read ? "read" : "not read") + (untouched ? "" : ", touched") + messages;
    });
    EXPECT_EQ(loaded, "not read");
    ASSERT_EQ(::chmod(file.path.c_str(), 0600), 0);
}

TEST(OBJReaderFile, whatIsBeyondTheLimitsIsRefused)
{
    const MeshFileLimits limits{
        .byteCount = 100, .vertexCount = 4, .triangleCount = 3, .reportedLineCount = 2};
    struct Case
    {
        const char *name;
        std::string text;
        const char *reason;
    };
    const std::string vertex = "v 0 0 0\n", normal = "vn 0 0 1\n";
    const std::string normals = normal + "vn 0 1 0\n";
    const Case cases[] = {
        {"as many bytes as may be", vertex + "# " + std::string(89, 'x') + "\n", "no refusal"},
        {"one more byte", vertex + "# " + std::string(90, 'x') + "\n",
         "the file has 101 bytes; a mesh may have 100"},
        {"as many vertices as may be", vertex + vertex + vertex + vertex, "no refusal"},
        {"one more vertex", vertex + vertex + vertex + vertex + vertex, "more than 4 vertices"},
        {"copies of a vertex", vertex + normals + "f 1//1 1//2 1//2\nf 1//2 1//2 1//1\n",
         "more than 4 vertices"},
        {"one more normal", normal + normal + normal + normal + normal, "more than 4 normals"},
        {"as many triangles as may be", vertex + "f 1 1 1 1 1\n", "no refusal"},
        {"one more triangle", vertex + "f 1 1 1 1\nf 1 1 1 1\n", "more than 3 triangles"}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const TemporaryFile file(c.text);
        const FileCall call(file.path, limits);
        EXPECT_EQ(call.reason(), c.reason);
        EXPECT_EQ(call.refusal.has_value(), call.untouched());
        EXPECT_EQ(call.messages, "");
    }
}

TEST(OBJReaderFile, aFileOfFourGigabytesIsRefusedBeforeItIsRead)
{
    const TemporaryFile file(triangle);
    ASSERT_EQ(::truncate(file.path.c_str(), 4'294'967'296), 0);
    EXPECT_EQ(FileCall(file.path).reason(),
              "the file has 4294967296 bytes; a mesh may have 268435456");
}

TEST(OBJReaderFile, ofManyMalformedLinesTheFirstAreReportedAndTheOthersCounted)
{
    std::string text = triangle, expected;
    for (int i = 0; i < 250; ++i)
        text += "v 1 2 x\n";
    const TemporaryFile file(text);
    for (int line = 5; line < 105; ++line)
        expected += "Malformed number on line " + std::to_string(line) + " of " + file.path + "\n";
    const FileCall call(file.path);
    EXPECT_FALSE(call.refusal);
    EXPECT_EQ(call.messages, expected + "and 150 more problems in " + file.path + "\n");
}

TEST(OBJReaderFile, controlCharactersOfNamesAndLinesAreEscapedInMessages)
{
    const std::string path = std::filesystem::temp_directory_path() / "mesh\x1b[31m.obj";
    std::ofstream(path) << "v\x1b 1 2\nv 1 2\n" << triangle;
    const FileCall call(path);
    std::filesystem::remove(path);
    const std::string shown = std::filesystem::temp_directory_path() / "mesh\\x1b[31m.obj";
    EXPECT_FALSE(call.refusal);
    EXPECT_EQ(call.messages, "Malformed obj file " + shown +
                                 ": Line 1 starts with invalid sequence \"v\\x1b\"\n"
                                 "Malformed number on line 2 of " +
                                 shown + "\n");
}

} // namespace
} // namespace kelo
