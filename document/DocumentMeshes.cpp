#include "document/DocumentMeshes.h"

#include "document/DXDocumentModel.h"
#include "keloModel/NameKey.h"
#include "keloModel/TreatmentNote.h"
#include "models/DXGLightweightModel.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <system_error>

namespace kelo {
namespace {

using Keys = std::vector<std::string>;
using Progress = ToothModelLoader::Progress;

Keys joined(Keys first, const Keys &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Keys toothKeys()
{
    return joined(TreatmentNote::upperToothNameKeys(), TreatmentNote::lowerToothNameKeys());
}

Keys buttonKeys()
{
    return joined(TreatmentNote::upperLingualButtonNameKeys(),
                  TreatmentNote::lowerLingualButtonNameKeys());
}

std::string toothFile(const std::string &toothKey)
{
    return "_tooth_" + toothKey + ".obj";
}

std::string bracketFile(const std::string &toothKey)
{
    return "bracket_" + toothKey + ".obj";
}

std::string buttonFile(const std::string &toothKey)
{
    return "button_" + toothKey + ".obj";
}

std::string pathIn(const std::string &folder, const std::string &name)
{
    return (std::filesystem::path(folder) / name).string();
}

bool hasFile(const std::string &folder, const std::string &name)
{
    std::error_code unreadable;
    return std::filesystem::exists(pathIn(folder, name), unreadable);
}

struct MeshPaths
{
    ToothModelLoader::Paths teeth;
    ToothModelLoader::Paths brackets;
    ToothModelLoader::Paths buttons;
};

/// Looks the keys up one by one, so that one missing resource does not cost the others.
template<class FilesForKeys>
ToothModelLoader::Paths pathsOfKeys(const Keys &keys, FilesForKeys &&filesForKeys,
                                    MeshFailures &failures)
{
    ToothModelLoader::Paths paths;
    for (const std::string &key : keys) {
        try {
            paths.merge(filesForKeys({key}));
        } catch (const MissingResource &missing) {
            failures.push_back({"", "", 0, missing.what()});
        }
    }
    return paths;
}

MeshPaths pathsInResources(MeshFailures &failures)
{
    using Loader = ToothModelLoader;
    const Keys teeth = toothKeys();
    // One by one: the failures come in this order.
    MeshPaths paths;
    paths.teeth = pathsOfKeys(teeth, Loader::toothModelFilesForToothNameKeys, failures);
    paths.brackets = pathsOfKeys(teeth, Loader::bracketModelFilesForToothNameKeys, failures);
    paths.buttons = pathsOfKeys(buttonKeys(), Loader::buttonModelFilesForButtonNameKeys, failures);
    return paths;
}

MeshPaths pathsInFolder(const std::string &folder)
{
    const Keys missing = teethMissingInFolder(folder);
    const auto isMissing = [&missing](const std::string &toothKey) {
        return std::find(missing.begin(), missing.end(), toothKey) != missing.end();
    };
    MeshPaths paths;
    for (const std::string &key : toothKeys()) {
        if (isMissing(key)) continue;
        paths.teeth[key] = pathIn(folder, toothFile(key));
        paths.brackets[key] = pathIn(folder, bracketFile(key));
    }
    for (const std::string &key : buttonKeys()) {
        const std::string tooth = toothKeyOfNameKey(key);
        if (!isMissing(tooth)) paths.buttons[key] = pathIn(folder, buttonFile(tooth));
    }
    return paths;
}

std::shared_ptr<DXGLightweightModel> gumInFolder(const std::string &folder, const std::string &name,
                                                 MeshFailures &failures)
{
    auto gum = ToothModelLoader::modelFromFile(pathIn(folder, name), &failures);
    if (gum) gum->setMaterial(ToothModelLoader::gumModelMaterial());
    return gum;
}

/// Loads what the paths name and lets `loadGums` load the gums; one progress through all of it.
template<class LoadGums>
void loadMeshes(DXDocumentModel &document, const MeshPaths &paths, LoadGums &&loadGums,
                const Progress &progress, MeshFailures &failures)
{
    const std::size_t fileCount =
        paths.teeth.size() + paths.brackets.size() + paths.buttons.size() + 2;
    const auto progressAfter = [&](std::size_t before) -> Progress {
        if (!progress) return {};
        return [&progress, fileCount, before](std::size_t doneCount, std::size_t) {
            progress(before + doneCount, fileCount);
        };
    };
    document.setToothModels(
        ToothModelLoader::toothModelsFromFiles(paths.teeth, progressAfter(0), &failures));
    std::size_t doneCount = paths.teeth.size();
    document.setBracketModels(ToothModelLoader::bracketModelsFromFiles(
        paths.brackets, progressAfter(doneCount), &failures));
    doneCount += paths.brackets.size();
    document.setButtonModels(ToothModelLoader::buttonModelsFromFiles(
        paths.buttons, progressAfter(doneCount), &failures));
    loadGums();
    if (progress) progress(fileCount, fileCount);
}

} // namespace

MeshFailures loadMeshFolder(DXDocumentModel &document, const std::string &folder,
                            const Progress &progress)
{
    MeshFailures failures;
    const auto loadGums = [&] {
        document.setUpperGumModel(gumInFolder(folder, "_upper_gums.obj", failures));
        document.setLowerGumModel(gumInFolder(folder, "_lower_gums.obj", failures));
    };
    loadMeshes(document, pathsInFolder(folder), loadGums, progress, failures);
    return failures;
}

MeshFailures loadSamplePatient(DXDocumentModel &document, const Progress &progress)
{
    MeshFailures failures;
    const MeshPaths paths = pathsInResources(failures);
    const auto loadGums = [&] {
        const MeshFailures gums = document.loadUpperAndLowerGumModels();
        failures.insert(failures.end(), gums.begin(), gums.end());
    };
    loadMeshes(document, paths, loadGums, progress, failures);
    return failures;
}

std::vector<std::string> teethMissingInFolder(const std::string &folder)
{
    Keys missing;
    for (const std::string &key : toothKeys()) {
        if (!hasFile(folder, toothFile(key)) && !hasFile(folder, bracketFile(key)) &&
            !hasFile(folder, buttonFile(key)))
            missing.push_back(key);
    }
    return missing;
}

} // namespace kelo
