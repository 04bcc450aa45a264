#include "models/OBJReader.h"
#include "models/OBJReaderDetail.h"
#include "tests/models/OBJReaderMesh.h"
#include "tests/support/CapturedOutput.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define KELO_SANITIZED 1
#endif

namespace kelo {
namespace {

using test::TemporaryFile;

/// One call with outputs that show whether they were written.
struct FailingCall
{
    OBJVertex vertexMark{};
    std::uint32_t indexMark = 0;
    OBJVertex *vertices = &vertexMark;
    std::uint32_t *indexes = &indexMark;
    std::uint32_t vertexCount = 4711, indexCount = 4712;
    bool read = false;
    std::string messages;

    explicit FailingCall(const std::string &path, const detail::OBJReadingLimits &limits = {})
    {
        messages = test::standardErrorOf([&] {
            read = detail::loadOBJFile(path.c_str(), limits, &vertices, &vertexCount, &indexes,
                                       &indexCount);
        });
    }
    FailingCall(const FailingCall &) = delete;
    FailingCall &operator=(const FailingCall &) = delete;
    ~FailingCall()
    {
        if (vertices != &vertexMark) std::free(vertices);
        if (indexes != &indexMark) std::free(indexes);
    }

    bool untouched() const
    {
        return vertices == &vertexMark && indexes == &indexMark && vertexCount == 4711 &&
               indexCount == 4712;
    }
};

TEST(OBJReaderFailure, aMissingFileIsFalseWithoutAMessageAndWithoutOutputs)
{
    const FailingCall call("/no/such/folder/tooth.obj");
    EXPECT_FALSE(call.read);
    EXPECT_TRUE(call.untouched());
    EXPECT_EQ(call.messages, "");
}

TEST(OBJReaderFailure, aDirectoryIsFalseWithoutAMessage)
{
    const FailingCall call(std::filesystem::temp_directory_path());
    EXPECT_FALSE(call.read);
    EXPECT_TRUE(call.untouched());
    EXPECT_EQ(call.messages, "");
}

TEST(OBJReaderFailure, aPipeHasNoSizeAndIsNotWaitedFor)
{
    std::string folder = std::filesystem::temp_directory_path() / "pipeXXXXXX";
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    const std::string path = folder + "/pipe.obj";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const FailingCall call(path);
    EXPECT_FALSE(call.read);
    EXPECT_TRUE(call.untouched());
    EXPECT_EQ(call.messages, "");
    std::filesystem::remove_all(folder);
}

TEST(OBJReaderFailure, devicesOfSizeZeroAreEmptyMeshes)
{
    for (const char *path : {"/dev/null", "/dev/zero"}) {
        SCOPED_TRACE(path);
        const FailingCall call(path);
        EXPECT_TRUE(call.read);
        EXPECT_EQ(call.vertexCount, 0u);
        EXPECT_EQ(call.indexCount, 0u);
        EXPECT_EQ(call.messages, "");
    }
}

TEST(OBJReaderFailure, aFileOfFiveGigabytesOfHolesIsReadWithoutHoldingIt)
{
    // In memory, where holes take no pages: on a disk they would fill the page cache.
    const int descriptor = ::memfd_create("holes.obj", MFD_CLOEXEC);
    const std::string start = "v 1 2 3\nf 1 1 1\n";
    ASSERT_EQ(::write(descriptor, start.data(), start.size()), ssize_t(start.size()));
    ASSERT_EQ(::ftruncate(descriptor, 5'000'000'000), 0);
    rusage before{}, after{};
    ::getrusage(RUSAGE_SELF, &before);
    const FailingCall call("/proc/self/fd/" + std::to_string(descriptor));
    ::getrusage(RUSAGE_SELF, &after);
    ::close(descriptor);
    EXPECT_TRUE(call.read);
    EXPECT_EQ(call.vertexCount, 1u);
    EXPECT_EQ(call.indexCount, 3u);
    EXPECT_EQ(call.messages, "");
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 64 * 1024) << "KiB";
}

TEST(OBJReaderFailure, countsBeyondTheirRangeAreAMessageAndFalse)
{
    struct Case
    {
        const char *name, *text;
        bool fits;
    };
    const Case cases[] = {
        {"eight vertices",
         "v 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\n", true},
        {"nine vertices",
         "v 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\nv 1 2 3\n",
         false},
        {"nine normals",
         "vn 1 2 3\nvn 1 2 3\nvn 1 2 3\nvn 1 2 3\nvn 1 2 3\nvn 1 2 3\nvn 1 2 3\nvn 1 2 3\nvn 1 2 "
         "3\n",
         false},
        {"copies of vertices",
         "v 1 2 3\nvn 0 0 1\nvn 0 1 0\nf 1//1 1//2 1//2\nf 1//2 1//2 1//2\n"
         "f 1//2 1//2\nf 1//2 1//2\n",
         false},
        {"eight indexes", "f 1 2 3\nf 1 2 3\nf 1 2\n", true},
        {"nine indexes", "f 1 2 3\nf 1 2 3\nf 1 2 3\n", false},
        {"a fan of nine indexes", "f 1 2 3 4 5\n", false}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const TemporaryFile file(c.text);
        const FailingCall call(file.path, {.maximumVertexCount = 8, .maximumIndexCount = 8});
        EXPECT_EQ(call.read, c.fits);
        EXPECT_EQ(call.untouched(), !c.fits);
        EXPECT_EQ(call.messages,
                  c.fits ? "" : "Too many vertices, normals or indexes in " + file.path + "\n");
    }
}

int allocationsLeft = 0;

void *failingReallocate(void *memory, std::size_t byteCount)
{
    return allocationsLeft-- > 0 ? std::realloc(memory, byteCount) : nullptr;
}

TEST(OBJReaderFailure, everyAllocationThatFailsIsAMessageAndFalseWithoutOutputs)
{
    std::string text = "vn 0 0 1\nvn 0 1 0\n";
    for (int i = 0; i < 2500; ++i)
        text += "v 1 2 3\nvn 1 0 0\nf 1//1 1//2 1//1\n";
    const TemporaryFile file(text + "# " + std::string(100, 'x') + "\nf" +
                             std::string(50'000, ' ') + "1" + std::string(9'000, ' ') + "\n");
    int failures = 0;
    for (int allowed = 0;; ++allowed) {
        allocationsLeft = allowed;
        const FailingCall call(file.path, {.blockSize = 4096, .reallocate = failingReallocate});
        if (call.read) break;
        ++failures;
        EXPECT_TRUE(call.untouched());
        EXPECT_EQ(call.messages, "Not enough memory to read " + file.path + "\n");
        ASSERT_LT(failures, 100);
    }
    // Five arrays at the start; two doublings of normals and vertices with their slots at least (to
    // 4096 and beyond, the copies included), three of the indexes.
    EXPECT_GE(failures, 5 + 2 + 2 * 3 + 3);
}

#ifndef KELO_SANITIZED // a sanitizer's own memory is neither limited nor measured in a useful way

/// Runs `action` in a child process; what it returns is the exit status.
int statusOfChild(const std::function<int()> &action, rusage *usage = nullptr)
{
    const pid_t child = ::fork();
    if (child == 0) ::_exit(action());
    int status = 0;
    rusage ignored{};
    ::wait4(child, &status, 0, usage ? usage : &ignored);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(OBJReaderFailure, aProcessWithoutMemoryGetsAMessageAndFalse)
{
    // One face line of 400 MB in a file of holes: the buffer has to hold it.
    const TemporaryFile file("f 1 2 3");
    ASSERT_EQ(::truncate(file.path.c_str(), 400'000'000), 0);
    const std::string messages = test::standardErrorOf([&] {
        const int status = statusOfChild([&file] {
            const rlimit limit{256u << 20, 256u << 20};
            if (::setrlimit(RLIMIT_AS, &limit) != 0) return 9;
            OBJVertex *vertices = nullptr;
            std::uint32_t *indexes = nullptr;
            std::uint32_t vertexCount = 1, indexCount = 2;
            const bool read =
                loadOBJFile(file.path.c_str(), &vertices, &vertexCount, &indexes, &indexCount);
            const bool untouched = !vertices && !indexes && vertexCount == 1 && indexCount == 2;
            return read ? 1 : untouched ? 0 : 2;
        });
        EXPECT_EQ(status, 0);
    });
    EXPECT_EQ(messages, "Not enough memory to read " + file.path + "\n");
}

TEST(OBJReaderFailure, aMillionTrianglesTakeLessThanTwiceTheirOutputsAndTheFile)
{
    const test::TorusMesh mesh;
    std::size_t fileSize = 0;
    const auto written = [&] {
        const std::string text = mesh.text();
        fileSize = text.size();
        return TemporaryFile(text);
    };
    const TemporaryFile file = written();
    const std::size_t outputs = mesh.vertexCount() * sizeof(OBJVertex) + mesh.triangleCount() * 12;
    // A program of its own would be cleaner to measure than a fork, which starts with the pages of
    // this one; so they are subtracted by a child that does nothing.
    rusage idle{}, reading{};
    ASSERT_EQ(statusOfChild([] { return 0; }, &idle), 0);
    const int status = statusOfChild(
        [&] {
            OBJVertex *vertices = nullptr;
            std::uint32_t *indexes = nullptr;
            std::uint32_t vertexCount = 0, indexCount = 0;
            const bool read =
                loadOBJFile(file.path.c_str(), &vertices, &vertexCount, &indexes, &indexCount);
            return read && vertexCount == mesh.vertexCount() &&
                           indexCount == 3 * mesh.triangleCount()
                       ? 0
                       : 1;
        },
        &reading);
    ASSERT_EQ(status, 0);
    const double peak = 1024.0 * double(reading.ru_maxrss);
    const double ratio = peak / double(outputs + fileSize);
    RecordProperty("peakBytes", std::to_string(peak));
    RecordProperty("ratio", std::to_string(ratio));
    std::printf("peak %.1f MB (idle child %.1f MB), outputs %.1f MB, file %.1f MB: ratio %.2f\n",
                peak / 1e6, 1024e-6 * double(idle.ru_maxrss), double(outputs) / 1e6,
                double(fileSize) / 1e6, ratio);
    EXPECT_GT(peak, double(outputs)) << "the measurement sees the arrays";
    EXPECT_LE(ratio, 2.2);
}

#endif

/// The first bytes that a child running `action` writes to standard error before it is killed.
std::string firstErrorOutput(std::size_t byteCount, const std::function<void()> &action,
                             bool &ended)
{
    int ends[2];
    if (::pipe(ends) != 0) return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], 2);
        ::close(ends[0]);
        ::close(ends[1]);
        action();
        ::_exit(0);
    }
    ::close(ends[1]);
    std::string text(byteCount, '\0');
    std::size_t used = 0;
    for (ssize_t got;
         used < byteCount && (got = ::read(ends[0], &text[used], byteCount - used)) > 0;)
        used += std::size_t(got);
    text.resize(used);
    int status = 0;
    ended = ::waitpid(child, &status, WNOHANG) == child;
    if (!ended) {
        ::kill(child, SIGKILL);
        ::waitpid(child, &status, 0);
    }
    ::close(ends[0]);
    return text;
}

TEST(OBJReaderFailure, aFaceOnALastLineWithoutALineBreakIsReportedForEver)
{
    struct Case
    {
        const char *name, *text;
        unsigned line;
    };
    for (const Case &c :
         {Case{"behind a vertex", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3", 4},
          Case{"behind a blank", "f 1 2 3 ", 1}, Case{"behind the letter", "f", 1},
          Case{"behind a slash", "\r\nf 1/", 3}, Case{"behind the texture number", " \tf 1/2", 1},
          Case{"behind two slashes", "f 1//", 1}, Case{"behind a normal", "f 1//1", 1}}) {
        SCOPED_TRACE(c.name);
        const TemporaryFile file(c.text);
        const std::string message =
            "Malformed number on line " + std::to_string(c.line) + " of " + file.path + "\n";
        std::string expected;
        while (expected.size() < 200'000)
            expected += message;
        bool ended = false;
        const std::string output = firstErrorOutput(
            expected.size(),
            [&file] {
                OBJVertex *vertices = nullptr;
                std::uint32_t *indexes = nullptr;
                std::uint32_t vertexCount = 0, indexCount = 0;
                loadOBJFile(file.path.c_str(), &vertices, &vertexCount, &indexes, &indexCount);
            },
            ended);
        EXPECT_EQ(output, expected);
        EXPECT_FALSE(ended);
    }
}

std::string fileToCut;

/// Called for the working arrays, after the size was taken and before anything is read.
void *cuttingReallocate(void *memory, std::size_t byteCount)
{
    return ::truncate(fileToCut.c_str(), 20) == 0 ? std::realloc(memory, byteCount) : nullptr;
}

TEST(OBJReaderFailure, aFileThatBecomesShorterIsAMessageAndFalse)
{
    const TemporaryFile file("v 1 2 3\nv 1 2 3\nf 1 2 1\nf 1 2 1\n");
    fileToCut = file.path;
    const FailingCall call(file.path, {.reallocate = cuttingReallocate});
    EXPECT_FALSE(call.read);
    EXPECT_TRUE(call.untouched());
    EXPECT_EQ(call.messages, "Cannot read " + file.path + ": it became shorter\n");
}

/// The same, with the file becoming longer.
void *appendingReallocate(void *memory, std::size_t byteCount)
{
    std::ofstream(fileToCut, std::ios::app) << "v 7 8 9\n";
    return std::realloc(memory, byteCount);
}

TEST(OBJReaderFailure, aFileThatBecomesLongerEndsWhereItsSizeWas)
{
    const TemporaryFile file("v 1 2 3\nv 4 5 6\n");
    fileToCut = file.path;
    const FailingCall call(file.path, {.reallocate = appendingReallocate});
    EXPECT_TRUE(call.read);
    EXPECT_EQ(call.vertexCount, 2u);
    EXPECT_GT(std::filesystem::file_size(file.path), 16u);
}

TEST(OBJReaderFailure, aFileThatShrinksAndGrowsWhileItIsReadNeverBreaksTheReader)
{
    std::string text;
    for (int i = 0; i < 40'000; ++i)
        text += "v 1.5 2.5 3.5\n";
    const TemporaryFile file(text);
    const int descriptor = ::open(file.path.c_str(), O_WRONLY);
    ASSERT_GE(descriptor, 0);
    std::atomic<bool> stop = false;
    std::thread writer([&] {
        while (!stop) {
            if (::ftruncate(descriptor, 14) != 0) break;
            if (::pwrite(descriptor, text.data(), text.size(), 0) < 0) break;
        }
    });
    for (int i = 0; i < 200; ++i) {
        const FailingCall call(file.path, {.blockSize = 4096});
        if (call.read) {
            EXPECT_LE(call.vertexCount, 40'000u);
            EXPECT_EQ(call.indexCount, 0u);
        } else {
            EXPECT_TRUE(call.untouched());
            EXPECT_NE(call.messages.find("Cannot read " + file.path + ": it became shorter\n"),
                      std::string::npos);
        }
    }
    stop = true;
    writer.join();
    ::close(descriptor);
}

TEST(OBJReaderFailure, severalThreadsReadAtOnce)
{
    const test::TorusMesh mesh{40, 20};
    const TemporaryFile file(mesh.text());
    std::atomic<int> right = 0;
    const auto read = [&] {
        for (int i = 0; i < 20; ++i) {
            OBJVertex *vertices = nullptr;
            std::uint32_t *indexes = nullptr;
            std::uint32_t vertexCount = 0, indexCount = 0;
            if (loadOBJFile(file.path.c_str(), &vertices, &vertexCount, &indexes, &indexCount) &&
                vertexCount == mesh.vertexCount() && indexCount == 3 * mesh.triangleCount())
                ++right;
            std::free(vertices);
            std::free(indexes);
        }
    };
    std::thread other(read);
    read();
    other.join();
    EXPECT_EQ(right, 40);
}

} // namespace
} // namespace kelo
