// obj_mutations: reads many damaged OBJ files with loadOBJFile and compares every result, messages
// included, with a plain reading of the rules. To be built with sanitizers; needs no fuzzing
// engine. The same seeds give the same inputs in the same order every time.
//
//     obj_mutations [--count N]
//
// runs N distinct inputs (200000 unless told): every truncation of every seed, every byte removed,
// doubled and replaced, fragments inserted everywhere, then random mixtures of seeds and edits.
// Texts from which the reader never returns are recognised beforehand (isEndlessOBJ: the text ends
// within a face line), skipped and counted apart. Prints one line and exits 0; an input that reads
// differently is kept as obj_mutations-N.obj, and the exit status is 1.

#include "models/OBJReader.h"
#include "models/OBJReaderDetail.h"
#include "tests/models/OBJReaderReference.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace kelo {
namespace {

using namespace std::string_view_literals;

/// What the grammar reacts to, and what it should not react to.
constexpr std::array fragments = {"\0"sv,
                                  "/"sv,
                                  "//"sv,
                                  "///"sv,
                                  "-"sv,
                                  "+"sv,
                                  "\n"sv,
                                  "\r"sv,
                                  "\r\n"sv,
                                  " "sv,
                                  "\t"sv,
                                  "\v"sv,
                                  "."sv,
                                  "e"sv,
                                  "e9999"sv,
                                  "0x"sv,
                                  "inf"sv,
                                  "nan("sv,
                                  "f"sv,
                                  "f "sv,
                                  "\nf "sv,
                                  "v"sv,
                                  "\nv"sv,
                                  "\nvn "sv,
                                  "\nvt"sv,
                                  "\nvp"sv,
                                  "#"sv,
                                  "0"sv,
                                  "9"sv,
                                  "99999999999999999999"sv,
                                  "-1"sv,
                                  "4294967297"sv,
                                  "9223372036854775807"sv,
                                  "1//1"sv,
                                  "1/1/2"sv,
                                  "\xff"sv,
                                  "\x80"sv,
                                  " 1 2 3 4 5"sv,
                                  "                                "sv,
                                  "v 1 2 3\nvn 1 2 3\nf 1//1 1//2 1//1\n"sv};

/// A file in memory, whose name the reader can open.
class MemoryFile
{
public:
    explicit MemoryFile(const char *name) : descriptor(::memfd_create(name, MFD_CLOEXEC))
    {
        if (descriptor < 0) throw std::runtime_error("no file in memory");
    }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile() { ::close(descriptor); }

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }

    void setContents(std::string_view text)
    {
        if (::ftruncate(descriptor, 0) != 0 ||
            ::pwrite(descriptor, text.data(), text.size(), 0) != ssize_t(text.size()))
            throw std::runtime_error("file in memory not written");
    }

    /// What was written since the last call.
    std::string takeContents()
    {
        const off_t size = ::lseek(descriptor, 0, SEEK_END);
        std::string text(std::size_t(size), '\0');
        if (::pread(descriptor, text.data(), text.size(), 0) != size ||
            ::ftruncate(descriptor, 0) != 0 || ::lseek(descriptor, 0, SEEK_SET) != 0)
            throw std::runtime_error("file in memory not read");
        return text;
    }

    const int descriptor;
};

/// Standard error goes to a file in memory; what sanitizers report still goes where it went.
class CapturedError
{
public:
    CapturedError() : _terminal(::dup(2))
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        __sanitizer_set_report_fd(reinterpret_cast<void *>(std::intptr_t(_terminal)));
#endif
        ::dup2(_file.descriptor, 2);
    }
    CapturedError(const CapturedError &) = delete;
    CapturedError &operator=(const CapturedError &) = delete;
    ~CapturedError()
    {
        ::dup2(_terminal, 2);
    }

    std::string take()
    {
        return _file.takeContents();
    }

private:
    MemoryFile _file{"messages"};
    int _terminal;
};

class Harness
{
public:
    explicit Harness(std::size_t count) : _wanted(count) {}

    bool done() const { return _run >= _wanted; }

    /// Runs `text` unless it was run before or is endless.
    void run(const std::string &text)
    {
        if (done() || !_seen.insert(std::hash<std::string>()(text)).second) return;
        if (test::isEndlessOBJ(text)) {
            ++_endless;
            return;
        }
        ++_run;
        _input.setContents(text);
        const test::ReadMesh expected = test::ReferenceOBJReader(text, _path).mesh;
        // The second block size makes tokens, blanks and comments straddle blocks.
        if (readsAs(expected, {}) && readsAs(expected, {.blockSize = 4 + _run % 29})) return;
        ++_reports;
        std::ofstream("obj_mutations-" + std::to_string(_reports) + ".obj", std::ios::binary)
            << text;
    }

    int summary() const
    {
        std::printf("%zu inputs, %zu endless by rule, %zu reports\n", _run, _endless, _reports);
        return _reports == 0 && done() ? 0 : 1;
    }

private:
    bool readsAs(const test::ReadMesh &expected, const detail::OBJReadingLimits &limits)
    {
        OBJVertex *vertices = nullptr;
        std::uint32_t *indexes = nullptr;
        std::uint32_t vertexCount = 0, indexCount = 0;
        if (!detail::loadOBJFile(_path.c_str(), limits, &vertices, &vertexCount, &indexes,
                                 &indexCount))
            return false;
        // Copying reads every element, so a count beyond its array is a sanitizer's report.
        test::ReadMesh mesh;
        mesh.vertices.assign(vertices, vertices + vertexCount);
        mesh.indexes.assign(indexes, indexes + indexCount);
        mesh.messages = _error.take();
        std::free(vertices);
        std::free(indexes);
        return test::sameArrays(mesh, expected) && mesh.messages == expected.messages;
    }

    MemoryFile _input{"input.obj"};
    const std::string _path = _input.path();
    CapturedError _error;
    std::unordered_set<std::size_t> _seen;
    std::size_t _wanted;
    std::size_t _run = 0, _endless = 0, _reports = 0;
};

void runEditsOfEveryPlace(Harness &harness, const std::string &seed)
{
    harness.run(seed);
    for (std::size_t at = 0; at <= seed.size(); ++at) {
        harness.run(seed.substr(0, at));
        harness.run(seed.substr(at));
        for (const std::string_view fragment : fragments)
            harness.run(std::string(seed).insert(at, fragment));
        if (at == seed.size()) break;
        harness.run(std::string(seed).erase(at, 1));
        harness.run(std::string(seed).insert(at, 1, seed[at]));
        for (const std::string_view fragment : fragments)
            harness.run(std::string(seed).replace(at, 1, fragment));
        for (int bit = 0; bit < 8; ++bit) {
            std::string flipped = seed;
            flipped[at] = char(flipped[at] ^ (1 << bit));
            harness.run(flipped);
        }
    }
}

void runRandomMixtures(Harness &harness, const std::vector<std::string> &seeds)
{
    std::mt19937 random(1);
    const auto below = [&random](std::size_t bound) { return bound ? random() % bound : 0; };
    while (!harness.done()) {
        std::string text = seeds[below(seeds.size())];
        if (below(3) == 0) {
            const std::string &other = seeds[below(seeds.size())];
            text = text.substr(0, below(text.size())) + other.substr(below(other.size()));
        }
        for (std::size_t edits = 1 + below(8); edits != 0; --edits) {
            const std::size_t at = below(text.size() + 1);
            switch (below(4)) {
            case 0:
                text.insert(at, fragments[below(fragments.size())]);
                break;
            case 1:
                text.erase(at, 1 + below(6));
                break;
            case 2:
                if (at < text.size()) text[at] = char(random());
                break;
            default:
                text.insert(at, text.substr(below(text.size() + 1), below(40)));
                break;
            }
        }
        if (below(4) != 0) text += '\n'; // or half of the mixtures would be endless
        harness.run(text);
    }
}

std::vector<std::string> seedsIn(const std::vector<std::string> &folders)
{
    std::vector<std::filesystem::path> paths;
    for (const std::string &folder : folders)
        for (const auto &entry : std::filesystem::directory_iterator(folder))
            if (entry.path().extension() == ".obj") paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> seeds;
    for (const auto &path : paths) {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        seeds.push_back(bytes.str());
    }
    return seeds;
}

int run(int argumentCount, char **arguments)
{
    std::size_t count = 200'000;
    if (argumentCount == 3 && std::strcmp(arguments[1], "--count") == 0)
        count = std::strtoul(arguments[2], nullptr, 10);
    else if (argumentCount != 1)
        count = 0;
    if (count == 0) {
        std::fprintf(stderr, "usage: obj_mutations [--count N]\n");
        return 2;
    }
    const std::vector<std::string> seeds = seedsIn({KELO_SEED_FOLDERS});
    if (seeds.empty()) throw std::runtime_error("no seeds");
    Harness harness(count);
    for (const std::string &seed : seeds)
        runEditsOfEveryPlace(harness, seed);
    runRandomMixtures(harness, seeds);
    return harness.summary();
}

} // namespace
} // namespace kelo

int main(int argumentCount, char **arguments)
{
    try {
        return kelo::run(argumentCount, arguments);
    } catch (const std::exception &error) {
        std::printf("obj_mutations: %s\n", error.what());
        return 2;
    }
}
