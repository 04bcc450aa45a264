#include "models/ToothModelLoader.h"

#include "models/BundleKey.h"
#include "models/DXGLightweightModel.h"
#include "models/OBJReader.h"
#include "platform/Assertion.h"
#include "platform/ResourceBundle.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <thread>
#include <utility>

namespace kelo {
namespace {

const char meshType[] = "obj";

void sayNotLoaded(const std::string &path)
{
    std::fprintf(stderr, "Error: Couldn't load \"%s\" as a model file\n", path.c_str());
}

/// The path of a mesh in the library's bundle, or nothing.
std::optional<std::string> pathForMesh(const std::string &resource)
{
    const auto bundle = ResourceBundle::bundleWithIdentifier(keloOpenGLBundleKey);
    if (!bundle) return std::nullopt;
    return bundle->pathForResource_ofType(resource, meshType);
}

std::string existingPathForMesh(const std::string &resource, const std::string &key)
{
    if (auto path = pathForMesh(resource)) return *path;
    throw MissingResource("There is no resource \"" + resource + "." + meshType +
                          "\" for the key \"" + key + "\" in the bundle \"" + keloOpenGLBundleKey +
                          "\"");
}

ToothModelLoader::Paths pathsForKeys(const std::vector<std::string> &keys,
                                     const std::string &resourcePrefix)
{
    ToothModelLoader::Paths paths;
    for (const std::string &key : keys)
        paths.insert_or_assign(key, existingPathForMesh(resourcePrefix + key, key));
    return paths;
}

struct FreeDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};

/// The arrays of one file as the reader returns them, released with free.
struct MeshArrays
{
    std::unique_ptr<OBJVertex, FreeDeleter> vertices;
    std::unique_ptr<std::uint32_t, FreeDeleter> indexes;
    std::uint32_t vertexCount = 0;
    std::uint32_t indexCount = 0;
};

std::optional<MeshArrays> readMesh(const std::string &path)
{
    MeshArrays arrays;
    OBJVertex *vertices = nullptr;
    std::uint32_t *indexes = nullptr;
    if (!loadOBJFile(path.c_str(), &vertices, &arrays.vertexCount, &indexes, &arrays.indexCount))
        return std::nullopt;
    arrays.vertices.reset(vertices);
    arrays.indexes.reset(indexes);
    return arrays;
}

std::shared_ptr<DXGLightweightModel> modelFromArrays(const MeshArrays &arrays)
{
    return std::make_shared<DXGLightweightModel>(arrays.vertices.get(), arrays.vertexCount,
                                                 arrays.indexes.get(), arrays.indexCount);
}

/// Files that two threads read, each taking the next one that nobody has taken.
class MeshFiles
{
public:
    explicit MeshFiles(const ToothModelLoader::Paths &files) : results_(files.size())
    {
        for (const auto &[key, path] : files)
            paths_.push_back(&path);
    }

    /// Reads one file; false when all are taken.
    bool readNext()
    {
        const std::size_t index = next_.fetch_add(1);
        if (index >= paths_.size()) return false;
        Result &result = results_[index];
        try {
            result.arrays = readMesh(*paths_[index]);
        } catch (...) {
            result.error = std::current_exception();
        }
        result.isRead.store(true, std::memory_order_release);
        return true;
    }

    bool isRead(std::size_t index) const
    {
        return results_[index].isRead.load(std::memory_order_acquire);
    }

    /// The arrays of a file that is read, once; nothing when it could not be loaded.
    std::optional<MeshArrays> takeArrays(std::size_t index)
    {
        if (results_[index].error) std::rethrow_exception(results_[index].error);
        return std::exchange(results_[index].arrays, std::nullopt);
    }

    /// No further file is begun.
    void stop() { next_.store(paths_.size()); }

private:
    struct Result
    {
        std::optional<MeshArrays> arrays;
        std::exception_ptr error;
        std::atomic<bool> isRead{false};
    };
    std::vector<const std::string *> paths_;
    std::vector<Result> results_;
    std::atomic<std::size_t> next_{0};
};

/// The second reading thread, joined at the end of its life; left early, by an exception, it ends
/// after the file that it is at.
class SecondReader
{
public:
    explicit SecondReader(MeshFiles &files)
        : files_(files), thread_([&files] {
              while (files.readNext()) {
              }
          })
    {}
    ~SecondReader()
    {
        files_.stop();
        thread_.join();
    }
    SecondReader(const SecondReader &) = delete;
    SecondReader &operator=(const SecondReader &) = delete;

private:
    MeshFiles &files_;
    std::thread thread_;
};

std::shared_ptr<DXGLightweightModel> gumsModel(const std::string &resource)
{
    const std::optional<std::string> path = pathForMesh(resource);
    auto model = path ? ToothModelLoader::modelFromFile(*path) : nullptr;
    if (!model) {
        sayNotLoaded(path.value_or(resource + "." + meshType));
        return nullptr;
    }
    model->setMaterial(ToothModelLoader::gumModelMaterial());
    return model;
}

} // namespace

ToothModelLoader::Paths
ToothModelLoader::toothModelFilesForToothNameKeys(const std::vector<std::string> &keys)
{
    return pathsForKeys(keys, "_tooth_");
}

ToothModelLoader::Paths
ToothModelLoader::bracketModelFilesForToothNameKeys(const std::vector<std::string> &keys)
{
    return pathsForKeys(keys, "bracket_");
}

ToothModelLoader::Paths
ToothModelLoader::buttonModelFilesForButtonNameKeys(const std::vector<std::string> &keys)
{
    Paths paths;
    for (const std::string &key : keys) {
        assertThat(!key.empty(), "A button key has at least one character");
        const std::string resource = "button_" + key.substr(0, key.size() - 1);
        paths.insert_or_assign(key, existingPathForMesh(resource, key));
    }
    return paths;
}

std::shared_ptr<DXGLightweightModel> ToothModelLoader::modelFromFile(const std::string &path)
{
    const auto arrays = readMesh(path);
    return arrays ? modelFromArrays(*arrays) : nullptr;
}

ToothModelLoader::Models ToothModelLoader::modelsFromFiles_withMaterial(
    const Paths &files, const std::shared_ptr<HVOGLMaterial> &material, const Progress &progress)
{
    Models models;
    MeshFiles meshFiles(files);
    auto file = files.begin();
    std::size_t doneCount = 0;
    // Makes the models of what is read so far, strictly in the order of the keys.
    const auto takeRead = [&] {
        for (; file != files.end() && meshFiles.isRead(doneCount); ++file) {
            const auto &[key, path] = *file;
            if (const auto arrays = meshFiles.takeArrays(doneCount)) {
                auto model = modelFromArrays(*arrays);
                model->setMaterial(material);
                models.insert_or_assign(key, std::move(model));
            } else {
                sayNotLoaded(path);
            }
            ++doneCount;
            if (progress) progress(doneCount, files.size());
        }
    };

    if (files.size() > 1) {
        const SecondReader secondReader(meshFiles);
        while (meshFiles.readNext())
            takeRead();
    } else {
        meshFiles.readNext();
    }
    takeRead();
    return models;
}

ToothModelLoader::Models ToothModelLoader::toothModelsFromFiles(const Paths &files,
                                                                const Progress &progress)
{
    return modelsFromFiles_withMaterial(files, toothModelMaterial(), progress);
}

ToothModelLoader::Models ToothModelLoader::bracketModelsFromFiles(const Paths &files,
                                                                  const Progress &progress)
{
    return modelsFromFiles_withMaterial(files, bracketModelMaterial(), progress);
}

ToothModelLoader::Models ToothModelLoader::buttonModelsFromFiles(const Paths &files,
                                                                 const Progress &progress)
{
    return modelsFromFiles_withMaterial(files, buttonModelMaterial(), progress);
}

std::shared_ptr<DXGLightweightModel> ToothModelLoader::standardUpperGumsModel()
{
    return gumsModel("_upper_gums");
}

std::shared_ptr<DXGLightweightModel> ToothModelLoader::standardLowerGumsModel()
{
    return gumsModel("_lower_gums");
}

std::shared_ptr<HVOGLMaterial> ToothModelLoader::gumModelMaterial()
{
    const Color pink(0.75, 0.375, 0.5, 1.0);
    auto material = HVOGLMaterial::materialWithColor_shininess(pink, 16.0);
    material->setFrontAmbientColor(pink.blendedColorWithFraction_ofColor(0.2, Color::blackColor()));
    material->setFrontSpecularColor(
        pink.blendedColorWithFraction_ofColor(0.75, Color::blackColor()));
    return material;
}

std::shared_ptr<HVOGLMaterial> ToothModelLoader::toothModelMaterial()
{
    auto material = HVOGLMaterial::material();
    const Color color = material->color().value_or(Color::whiteColor());
    material->setFrontAmbientColor(
        color.blendedColorWithFraction_ofColor(0.375, Color::blackColor()));
    material->setFrontSpecularColor(
        color.blendedColorWithFraction_ofColor(0.85, Color::whiteColor()));
    return material;
}

std::shared_ptr<HVOGLMaterial> ToothModelLoader::bracketModelMaterial()
{
    return standardMaterialForColor(Color::whiteColor());
}

std::shared_ptr<HVOGLMaterial> ToothModelLoader::buttonModelMaterial()
{
    return standardMaterialForColor(Color::whiteColor());
}

std::shared_ptr<HVOGLMaterial>
ToothModelLoader::standardMaterialForColor(const std::optional<Color> &color)
{
    auto material = HVOGLMaterial::materialWithColor(color);
    material->setFrontAmbientColor(Color::blackColor());
    material->setFrontSpecularColor(Color::whiteColor());
    return material;
}

} // namespace kelo
