#include "models/ToothModelLoader.h"

#include "base/Assertion.h"
#include "models/BakedLight.h"
#include "models/BundleKey.h"
#include "models/DXGLightweightModel.h"
#include "models/OBJReaderFile.h"
#include "models/OBJReaderText.h"
#include "platform/settings/ResourceBundle.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace kelo {
namespace {

const char meshType[] = "obj";

void sayNotLoaded(const std::string &path)
{
    std::fprintf(stderr, "Error: Couldn't load \"%s\" as a model file\n",
                 shownText(path, longestShownPath).c_str());
}

/// Says that a mesh could not be loaded and appends it to `failures`. A file that is not there
/// needs no line of its own for the reason.
void addFailure(MeshFailure failure, bool saysReason, MeshFailures *failures)
{
    if (saysReason) std::fprintf(stderr, "%s\n", failure.sentence().c_str());
    sayNotLoaded(failure.file);
    if (failures) failures->push_back(std::move(failure));
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

/// What became of one file: its arrays, or why it was refused.
struct MeshReading
{
    std::optional<MeshArrays> arrays;
    MeshFileRefusal refusal;
    BakedLightReading bakedLight;
};

MeshReading readMesh(const std::string &path)
{
    MeshArrays arrays;
    OBJVertex *vertices = nullptr;
    std::uint32_t *indexes = nullptr;
    if (auto refusal = readMeshFile(path, MeshFileLimits(), &vertices, &arrays.vertexCount,
                                    &indexes, &arrays.indexCount))
        return {std::nullopt, std::move(*refusal), {}};
    arrays.vertices.reset(vertices);
    arrays.indexes.reset(indexes);
    BakedLightReading bakedLight;
    if (const std::string lightPath = bakedLightPathOf(path); !lightPath.empty())
        bakedLight = readBakedLight(lightPath, {vertices, arrays.vertexCount});
    return {std::move(arrays), {}, std::move(bakedLight)};
}

MeshFailure failureOf(const std::string &key, const std::string &path,
                      const MeshFileRefusal &refusal)
{
    return {key, path, refusal.line, refusal.reason};
}

/// The model of a file whose arrays were read; says why its baked light cannot be used.
std::shared_ptr<DXGLightweightModel> modelFromReading(const std::string &path, MeshReading reading)
{
    const MeshArrays &arrays = *reading.arrays;
    auto model = std::make_shared<DXGLightweightModel>(arrays.vertices.get(), arrays.vertexCount,
                                                       arrays.indexes.get(), arrays.indexCount);
    if (!reading.bakedLight.refusal.empty())
        std::fprintf(stderr, "Error: Ignored \"%s\", which %s\n",
                     shownText(bakedLightPathOf(path), longestShownPath).c_str(),
                     reading.bakedLight.refusal.c_str());
    if (reading.bakedLight.light) model->setBakedLight(std::move(reading.bakedLight.light));
    return model;
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
            result.reading = readMesh(*paths_[index]);
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

    /// What became of a file that is read, once.
    MeshReading takeReading(std::size_t index)
    {
        if (results_[index].error) std::rethrow_exception(results_[index].error);
        return std::exchange(results_[index].reading, {});
    }

    /// No further file is begun.
    void stop() { next_.store(paths_.size()); }

private:
    struct Result
    {
        MeshReading reading;
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
    explicit SecondReader(MeshFiles &files) : files_(files)
    {
        try {
            thread_ = std::thread([&files] {
                while (files.readNext()) {
                }
            });
        } catch (const std::system_error &) {
            // Without a second thread the first one reads all files alone.
        }
    }
    ~SecondReader()
    {
        files_.stop();
        if (thread_.joinable()) thread_.join();
    }
    SecondReader(const SecondReader &) = delete;
    SecondReader &operator=(const SecondReader &) = delete;

private:
    MeshFiles &files_;
    std::thread thread_;
};

std::shared_ptr<DXGLightweightModel> gumsModel(const std::string &resource, const std::string &key,
                                               MeshFailures *failures)
{
    const std::optional<std::string> path = pathForMesh(resource);
    if (!path) {
        addFailure({key, resource + "." + meshType, 0, "the resource is missing"}, false, failures);
        return nullptr;
    }
    MeshReading reading = readMesh(*path);
    if (!reading.arrays) {
        addFailure(failureOf(key, *path, reading.refusal), reading.refusal.wasOpened, failures);
        return nullptr;
    }
    auto model = modelFromReading(*path, std::move(reading));
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

std::shared_ptr<DXGLightweightModel> ToothModelLoader::modelFromFile(const std::string &path,
                                                                     MeshFailures *failures)
{
    MeshReading reading = readMesh(path);
    if (reading.arrays) return modelFromReading(path, std::move(reading));
    if (failures) failures->push_back(failureOf({}, path, reading.refusal));
    return nullptr;
}

ToothModelLoader::Models
ToothModelLoader::modelsFromFiles_withMaterial(const Paths &files,
                                               const std::shared_ptr<HVOGLMaterial> &material,
                                               const Progress &progress, MeshFailures *failures)
{
    Models models;
    MeshFiles meshFiles(files);
    auto file = files.begin();
    std::size_t doneCount = 0;
    // Makes the models of what is read so far, strictly in the order of the keys.
    const auto takeRead = [&] {
        for (; file != files.end() && meshFiles.isRead(doneCount); ++file) {
            const auto &[key, path] = *file;
            MeshReading reading = meshFiles.takeReading(doneCount);
            if (reading.arrays) {
                auto model = modelFromReading(path, std::move(reading));
                model->setMaterial(material);
                models.insert_or_assign(key, std::move(model));
            } else {
                addFailure(failureOf(key, path, reading.refusal), reading.refusal.wasOpened,
                           failures);
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
                                                                const Progress &progress,
                                                                MeshFailures *failures)
{
    return modelsFromFiles_withMaterial(files, toothModelMaterial(), progress, failures);
}

ToothModelLoader::Models ToothModelLoader::bracketModelsFromFiles(const Paths &files,
                                                                  const Progress &progress,
                                                                  MeshFailures *failures)
{
    return modelsFromFiles_withMaterial(files, bracketModelMaterial(), progress, failures);
}

ToothModelLoader::Models ToothModelLoader::buttonModelsFromFiles(const Paths &files,
                                                                 const Progress &progress,
                                                                 MeshFailures *failures)
{
    return modelsFromFiles_withMaterial(files, buttonModelMaterial(), progress, failures);
}

std::shared_ptr<DXGLightweightModel>
ToothModelLoader::standardUpperGumsModel(MeshFailures *failures)
{
    return gumsModel("_upper_gums", "upper gums", failures);
}

std::shared_ptr<DXGLightweightModel>
ToothModelLoader::standardLowerGumsModel(MeshFailures *failures)
{
    return gumsModel("_lower_gums", "lower gums", failures);
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
