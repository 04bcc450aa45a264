#include "viewer/TreatmentLoader.h"

#include "keloOpenGL/keloOpenGL.h"

#include <QDir>

#include <string>
#include <vector>

namespace viewer {
namespace {

template<class Keys>
void append(Keys &keys, const Keys &more)
{
    keys.insert(keys.end(), more.begin(), more.end());
}

/// The keys of both jaws and where their meshes are.
struct MeshPaths
{
    kelo::ToothModelLoader::Paths teeth;
    kelo::ToothModelLoader::Paths brackets;
    kelo::ToothModelLoader::Paths buttons;
};

MeshPaths pathsInResources(const std::vector<std::string> &toothKeys,
                           const std::vector<std::string> &buttonKeys)
{
    using Loader = kelo::ToothModelLoader;
    return {Loader::toothModelFilesForToothNameKeys(toothKeys),
            Loader::bracketModelFilesForToothNameKeys(toothKeys),
            Loader::buttonModelFilesForButtonNameKeys(buttonKeys)};
}

MeshPaths pathsInFolder(const QDir &folder, const std::vector<std::string> &toothKeys,
                        const std::vector<std::string> &buttonKeys)
{
    const auto path = [&folder](const std::string &name) {
        return folder.filePath(QString::fromStdString(name)).toStdString();
    };
    MeshPaths paths;
    for (const std::string &key : toothKeys) {
        paths.teeth[key] = path("_tooth_" + key + ".obj");
        paths.brackets[key] = path("bracket_" + key + ".obj");
    }
    for (const std::string &key : buttonKeys)
        paths.buttons[key] = path("button_" + key.substr(0, key.size() - 1) + ".obj");
    return paths;
}

std::shared_ptr<kelo::DXGLightweightModel> gumInFolder(const QDir &folder, const QString &name)
{
    auto gum = kelo::ToothModelLoader::modelFromFile(folder.filePath(name).toStdString());
    if (gum) gum->setMaterial(kelo::ToothModelLoader::gumModelMaterial());
    return gum;
}

/// One progress through several calls that each count from 0.
class SummedProgress
{
public:
    SummedProgress(const LoadingProgress &progress, std::size_t fileCount)
        : progress_(progress), fileCount_(fileCount)
    {}

    kelo::ToothModelLoader::Progress next(std::size_t callFileCount)
    {
        const std::size_t before = before_;
        before_ += callFileCount;
        return [this, before](std::size_t doneCount, std::size_t) { report(before + doneCount); };
    }

    void report(std::size_t doneCount) const
    {
        if (progress_) progress_(doneCount, fileCount_);
    }

private:
    const LoadingProgress &progress_;
    std::size_t fileCount_;
    std::size_t before_ = 0;
};

} // namespace

void loadMeshes(kelo::DXDocumentModel &document, const QString &meshFolder,
                const LoadingProgress &progress)
{
    using kelo::ToothModelLoader;
    using kelo::TreatmentNote;
    auto toothKeys = TreatmentNote::upperToothNameKeys();
    append(toothKeys, TreatmentNote::lowerToothNameKeys());
    auto buttonKeys = TreatmentNote::upperLingualButtonNameKeys();
    append(buttonKeys, TreatmentNote::lowerLingualButtonNameKeys());

    const QDir folder(meshFolder);
    const MeshPaths paths = meshFolder.isEmpty() ? pathsInResources(toothKeys, buttonKeys)
                                                 : pathsInFolder(folder, toothKeys, buttonKeys);
    SummedProgress summed(progress,
                          paths.teeth.size() + paths.brackets.size() + paths.buttons.size() + 2);
    document.setToothModels(
        ToothModelLoader::toothModelsFromFiles(paths.teeth, summed.next(paths.teeth.size())));
    document.setBracketModels(ToothModelLoader::bracketModelsFromFiles(
        paths.brackets, summed.next(paths.brackets.size())));
    document.setButtonModels(
        ToothModelLoader::buttonModelsFromFiles(paths.buttons, summed.next(paths.buttons.size())));
    if (meshFolder.isEmpty()) {
        document.loadUpperAndLowerGumModels();
    } else {
        document.setUpperGumModel(gumInFolder(folder, QStringLiteral("_upper_gums.obj")));
        document.setLowerGumModel(gumInFolder(folder, QStringLiteral("_lower_gums.obj")));
    }
    summed.report(paths.teeth.size() + paths.brackets.size() + paths.buttons.size() + 2);
}

std::shared_ptr<kelo::DXDocumentModel> samplePatientDocument()
{
    auto document = std::make_shared<kelo::DXDocumentModel>();
    loadMeshes(*document, QString());
    return document;
}

} // namespace viewer
