#include "tools/lightbake/Mouth.h"

#include "models/OBJReaderFile.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace kelo::lightbake {
namespace {

constexpr int firstLowerTooth = 17;
constexpr int lastTooth = 32;

/// A part named by `start`, a tooth number and, if there is one, a variant: "_tooth_8_fine".
std::optional<Part> partOfTooth(std::string_view name, std::string_view start, Kind kind)
{
    if (!name.starts_with(start)) return std::nullopt;
    name.remove_prefix(start.size());
    Part part;
    part.kind = kind;
    const char *const end = name.data() + name.size();
    const auto [stopped, error] = std::from_chars(name.data(), end, part.toothNumber);
    if (error != std::errc() || part.toothNumber < 1 || part.toothNumber > lastTooth)
        return std::nullopt;
    if (stopped != end && *stopped != '_') return std::nullopt;
    part.isVariant = stopped != end;
    part.isUpper = part.toothNumber < firstLowerTooth;
    return part;
}

Part partNamed(const std::filesystem::path &file)
{
    const std::string name = file.stem().string();
    if (name == "_upper_gums" || name == "_lower_gums") {
        Part part;
        part.kind = Kind::gum;
        part.isUpper = name == "_upper_gums";
        return part;
    }
    if (auto tooth = partOfTooth(name, "_tooth_", Kind::tooth)) return *tooth;
    if (auto bracket = partOfTooth(name, "bracket_", Kind::attachment)) return *bracket;
    if (auto button = partOfTooth(name, "button_", Kind::attachment)) return *button;
    throw std::runtime_error(file.string() + ": no tooth, bracket, button or gum by its name");
}

struct Released
{
    void operator()(void *memory) const { std::free(memory); }
};

void readArrays(Part &part)
{
    OBJVertex *readVertices = nullptr;
    std::uint32_t *readIndexes = nullptr;
    std::uint32_t vertexCount = 0, indexCount = 0;
    if (const auto refusal = readMeshFile(part.path, MeshFileLimits(), &readVertices, &vertexCount,
                                          &readIndexes, &indexCount))
        throw std::runtime_error(part.path + ":" + std::to_string(refusal->line) + ": " +
                                 refusal->reason);
    const std::unique_ptr<OBJVertex, Released> vertices(readVertices);
    const std::unique_ptr<std::uint32_t, Released> indexes(readIndexes);
    part.vertices.assign(readVertices, readVertices + vertexCount);
    part.indexes.assign(readIndexes, readIndexes + indexCount);
}

} // namespace

Mouth mouthOfFolder(const std::string &folder)
{
    namespace fs = std::filesystem;
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == ".obj") files.push_back(entry->path());
    if (error) throw std::runtime_error(folder + ": " + error.message());
    if (files.empty()) throw std::runtime_error(folder + ": no mesh files in this folder");
    std::sort(files.begin(), files.end());

    Mouth mouth;
    MutableExtents extents;
    for (const fs::path &file : files) {
        Part part = partNamed(file);
        part.path = file.string();
        readArrays(part);
        for (const OBJVertex &vertex : part.vertices) {
            const auto &[x, y, z] = vertex.position;
            extents.absorb(double(x), double(y), double(z));
        }
        mouth.parts.push_back(std::move(part));
    }
    mouth.extents = extents;
    return mouth;
}

} // namespace kelo::lightbake
