#include "tools/banddepth/Scene.h"

#include "keloOpenGL/bands/RubberBandTables.h"
#include "models/OBJReader.h"
#include "tools/meshcheck/MeshCheck.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <utility>

namespace kelo::banddepth {
namespace {

struct Title
{
    Kind kind;
    std::string name;
    bool isUpper;
};

/// What follows `start` in a name that begins so, if it is the key of a hook.
std::string keyBehind(const std::string &start, const std::string &name)
{
    if (!name.starts_with(start)) return {};
    std::string key = name.substr(start.size());
    return bracketHookPositions().contains(key) && !key.ends_with('l') ? key : std::string();
}

Title titleOf(const std::filesystem::path &file)
{
    const std::string name = file.stem().string();
    if (name == "_upper_gums") return {Kind::gum, "upper gum", true};
    if (name == "_lower_gums") return {Kind::gum, "lower gum", false};
    if (const std::string key = keyBehind("_tooth_", name); !key.empty())
        return {Kind::tooth, "tooth " + key, isUpperToothName(key)};
    if (const std::string key = keyBehind("bracket_", name); !key.empty())
        return {Kind::bracket, "bracket " + key, isUpperToothName(key)};
    if (const std::string key = keyBehind("button_", name); !key.empty())
        return {Kind::bracket, "button " + key + "l", isUpperToothName(key)};
    throw std::runtime_error(file.string() + ": no tooth, bracket, button or gum by its name");
}

struct Released
{
    void operator()(void *memory) const { std::free(memory); }
};

ClosedMesh meshOfFile(const std::string &file, MutableExtents &extents)
{
    // The reader trusts a file that meshcheck has nothing against, and so does the inside test.
    const std::vector<MeshProblem> problems = checkMeshFile(file);
    if (!problems.empty())
        throw std::runtime_error(file + ":" + std::to_string(problems[0].line) + ": " +
                                 problems[0].reason);
    OBJVertex *readVertices = nullptr;
    std::uint32_t *readIndexes = nullptr;
    std::uint32_t vertexCount = 0, indexCount = 0;
    if (!loadOBJFile(file.c_str(), &readVertices, &vertexCount, &readIndexes, &indexCount))
        throw std::runtime_error(file + ":0: cannot be read");
    const std::unique_ptr<OBJVertex, Released> vertices(readVertices);
    const std::unique_ptr<std::uint32_t, Released> indexes(readIndexes);

    std::vector<Vec3> positions;
    positions.reserve(vertexCount);
    for (std::uint32_t i = 0; i < vertexCount; ++i) {
        const auto &[x, y, z] = readVertices[i].position;
        extents.absorb(double(x), double(y), double(z));
        positions.push_back({double(x), double(y), double(z)});
    }
    return {positions, std::vector<std::uint32_t>(readIndexes, readIndexes + indexCount)};
}

} // namespace

const char *nameOf(Kind kind)
{
    switch (kind) {
    case Kind::tooth:
        return "tooth";
    case Kind::bracket:
        return "bracket";
    case Kind::gum:
        return "gum";
    }
    return "";
}

Scene sceneOfFolder(const std::string &folder)
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

    Scene scene;
    MutableExtents extents;
    scene.obstacles.reserve(files.size());
    for (const fs::path &file : files) {
        Title title = titleOf(file);
        scene.obstacles.push_back(
            {title.kind, std::move(title.name), title.isUpper, meshOfFile(file.string(), extents)});
    }
    scene.extents = extents;
    return scene;
}

} // namespace kelo::banddepth
