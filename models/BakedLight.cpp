#include "models/BakedLight.h"

#include "base/Assertion.h"
#include "models/OBJReaderInput.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <system_error>

namespace kelo {
namespace {

constexpr std::string_view magic = "KELOBAKE";
constexpr std::uint32_t formatVersion = 1;
constexpr std::size_t headerSize = 32;
constexpr std::string_view meshEnding = ".obj";
constexpr std::string_view lightEnding = ".light";

using Header = std::array<unsigned char, headerSize>;

template<class Number>
Number numberAt(const Header &header, std::size_t offset)
{
    Number number = 0;
    for (std::size_t i = sizeof(Number); i-- > 0;)
        number = static_cast<Number>(number << 8 | header[offset + i]);
    return number;
}

template<class Number>
void putNumber(Header &header, std::size_t offset, Number number)
{
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        header[offset + i] = static_cast<unsigned char>(number >> 8 * i);
}

std::string counted(std::uint64_t count, const char *one, const char *many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string unreadable(int error)
{
    return "cannot be read: " +
           (error ? std::generic_category().message(error) : std::string("it became shorter"));
}

/// False with the error number, 0 for a file that ended early, in `error`.
bool readBytes(int file, void *bytes, std::size_t byteCount, int &error)
{
    auto *at = static_cast<unsigned char *>(bytes);
    while (byteCount > 0) {
        const ssize_t got = ::read(file, at, byteCount);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) {
            error = got < 0 ? errno : 0;
            return false;
        }
        at += got;
        byteCount -= static_cast<std::size_t>(got);
    }
    return true;
}

/// Why a file that begins so does not fit the mesh; empty if it does.
std::string misfit(const Header &header, std::span<const OBJVertex> vertices)
{
    if (std::memcmp(header.data(), magic.data(), magic.size()) != 0)
        return "is no baked light: it does not begin with KELOBAKE";
    const auto version = numberAt<std::uint32_t>(header, 8);
    if (version != formatVersion)
        return "has version " + std::to_string(version) + " of the format; only version " +
               std::to_string(formatVersion) + " is known";
    const auto count = numberAt<std::uint32_t>(header, 12);
    if (count != vertices.size())
        return "was made for another mesh: for " + counted(count, "vertex", "vertices") +
               " instead of " + std::to_string(vertices.size());
    if (numberAt<std::uint64_t>(header, 16) != checksumOf(vertices))
        return "was made for another mesh: its vertices are not the same";
    return {};
}

} // namespace

std::uint64_t checksumOf(std::span<const OBJVertex> vertices)
{
    // FNV-1a over 64-bit words instead of bytes: eight times as fast, and a mesh is loaded with it.
    // The last step brings the high bits down, which a multiplication alone never does.
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const OBJVertex &vertex : vertices) {
        std::uint64_t words[sizeof(OBJVertex) / sizeof(std::uint64_t)];
        std::memcpy(words, &vertex, sizeof vertex);
        for (const std::uint64_t word : words) {
            sum = (sum ^ word) * 0x100000001B3;
            sum ^= sum >> 32;
        }
    }
    return sum;
}

std::string bakedLightPathOf(const std::string &meshPath)
{
    if (!meshPath.ends_with(meshEnding)) return {};
    return meshPath.substr(0, meshPath.size() - meshEnding.size()) + std::string(lightEnding);
}

BakedLightReading readBakedLight(const std::string &path, std::span<const OBJVertex> vertices)
{
    const auto refused = [](std::string reason) {
        return BakedLightReading{std::nullopt, std::move(reason), 0};
    };
    const detail::File file(path.c_str());
    if (file.descriptor < 0 && (errno == ENOENT || errno == ENOTDIR)) return {};
    if (file.descriptor < 0) return refused(unreadable(errno));
    if (!file.isRegular()) return refused("cannot be read: not a regular file");
    const std::int64_t size = file.size();
    if (size < 0) return refused(unreadable(errno));
    if (static_cast<std::uint64_t>(size) < headerSize)
        return refused("is no baked light: it has only " +
                       counted(static_cast<std::uint64_t>(size), "byte", "bytes"));

    int error = 0;
    Header header;
    if (!readBytes(file.descriptor, header.data(), header.size(), error))
        return refused(unreadable(error));
    if (std::string reason = misfit(header, vertices); !reason.empty())
        return refused(std::move(reason));
    const std::uint64_t wanted = headerSize + sizeof(BakedVertex) * vertices.size();
    if (static_cast<std::uint64_t>(size) != wanted)
        return refused("has " + std::to_string(size) + " bytes instead of " +
                       std::to_string(wanted));
    BakedLight light(vertices.size());
    if (!readBytes(file.descriptor, light.data(), sizeof(BakedVertex) * light.size(), error))
        return refused(unreadable(error));
    return {std::move(light), {}, numberAt<std::uint64_t>(header, 24)};
}

std::optional<std::string> writeBakedLight(const std::string &path,
                                           std::span<const OBJVertex> vertices,
                                           const BakedLight &light, std::uint64_t sourceChecksum)
{
    assertThat(light.size() == vertices.size(), "Every vertex has its baked light");
    Header header{};
    std::memcpy(header.data(), magic.data(), magic.size());
    putNumber(header, 8, formatVersion);
    putNumber(header, 12, static_cast<std::uint32_t>(vertices.size()));
    putNumber(header, 16, checksumOf(vertices));
    putNumber(header, 24, sourceChecksum);

    const std::string unfinished = path + ".part";
    const auto cannotBeWritten = [](int error) {
        return "cannot be written: " + std::generic_category().message(error);
    };
    std::FILE *file = std::fopen(unfinished.c_str(), "wb");
    if (!file) return cannotBeWritten(errno);
    const bool isWritten =
        std::fwrite(header.data(), 1, header.size(), file) == header.size() &&
        std::fwrite(light.data(), sizeof(BakedVertex), light.size(), file) == light.size();
    int error = isWritten ? 0 : errno;
    if (std::fclose(file) != 0 && error == 0) error = errno;
    if (error == 0 && std::rename(unfinished.c_str(), path.c_str()) != 0) error = errno;
    if (error == 0) return std::nullopt;
    std::remove(unfinished.c_str());
    return cannotBeWritten(error);
}

} // namespace kelo
