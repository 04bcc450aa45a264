#include "viewer/treatment/TreatmentLoader.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/treatment/MeshFolder.h"

#include <QDir>
#include <QFile>

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

/// Looks the keys up one by one, so that one missing resource does not cost the others.
template<class FilesForKeys>
kelo::ToothModelLoader::Paths pathsOfKeys(const std::vector<std::string> &keys,
                                          FilesForKeys &&filesForKeys, QStringList &failures)
{
    kelo::ToothModelLoader::Paths paths;
    for (const std::string &key : keys) {
        try {
            paths.merge(filesForKeys({key}));
        } catch (const kelo::MissingResource &missing) {
            failures << QString::fromStdString(missing.what());
        }
    }
    return paths;
}

MeshPaths pathsInResources(const std::vector<std::string> &toothKeys,
                           const std::vector<std::string> &buttonKeys, QStringList &failures)
{
    using Loader = kelo::ToothModelLoader;
    return {pathsOfKeys(toothKeys, Loader::toothModelFilesForToothNameKeys, failures),
            pathsOfKeys(toothKeys, Loader::bracketModelFilesForToothNameKeys, failures),
            pathsOfKeys(buttonKeys, Loader::buttonModelFilesForButtonNameKeys, failures)};
}

MeshPaths pathsInFolder(const QDir &folder, const std::vector<std::string> &toothKeys,
                        const std::vector<std::string> &buttonKeys)
{
    const auto path = [&folder](const std::string &name) {
        return QFile::encodeName(folder.filePath(QString::fromStdString(name))).toStdString();
    };
    const QStringList missing = missingTeeth(folder.path());
    const auto isMissing = [&missing](const std::string &toothKey) {
        return missing.contains(QString::fromStdString(toothKey));
    };
    MeshPaths paths;
    for (const std::string &key : toothKeys) {
        if (isMissing(key)) continue;
        paths.teeth[key] = path("_tooth_" + key + ".obj");
        paths.brackets[key] = path("bracket_" + key + ".obj");
    }
    for (const std::string &key : buttonKeys) {
        const std::string tooth = kelo::toothKeyOfNameKey(key);
        if (!isMissing(tooth)) paths.buttons[key] = path("button_" + tooth + ".obj");
    }
    return paths;
}

std::shared_ptr<kelo::DXGLightweightModel> gumInFolder(const QDir &folder, const QString &name,
                                                       kelo::MeshFailures &failures)
{
    auto gum = kelo::ToothModelLoader::modelFromFile(
        QFile::encodeName(folder.filePath(name)).toStdString(), &failures);
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

QStringList loadMeshes(kelo::DXDocumentModel &document, const QString &meshFolder,
                       const LoadingProgress &progress)
{
    using kelo::ToothModelLoader;
    using kelo::TreatmentNote;
    auto toothKeys = TreatmentNote::upperToothNameKeys();
    append(toothKeys, TreatmentNote::lowerToothNameKeys());
    auto buttonKeys = TreatmentNote::upperLingualButtonNameKeys();
    append(buttonKeys, TreatmentNote::lowerLingualButtonNameKeys());

    const QDir folder(meshFolder);
    QStringList sentences;
    kelo::MeshFailures failures;
    const MeshPaths paths = meshFolder.isEmpty()
                                ? pathsInResources(toothKeys, buttonKeys, sentences)
                                : pathsInFolder(folder, toothKeys, buttonKeys);
    SummedProgress summed(progress,
                          paths.teeth.size() + paths.brackets.size() + paths.buttons.size() + 2);
    document.setToothModels(ToothModelLoader::toothModelsFromFiles(
        paths.teeth, summed.next(paths.teeth.size()), &failures));
    document.setBracketModels(ToothModelLoader::bracketModelsFromFiles(
        paths.brackets, summed.next(paths.brackets.size()), &failures));
    document.setButtonModels(ToothModelLoader::buttonModelsFromFiles(
        paths.buttons, summed.next(paths.buttons.size()), &failures));
    if (meshFolder.isEmpty()) {
        const kelo::MeshFailures gums = document.loadUpperAndLowerGumModels();
        failures.insert(failures.end(), gums.begin(), gums.end());
    } else {
        document.setUpperGumModel(gumInFolder(folder, QStringLiteral("_upper_gums.obj"), failures));
        document.setLowerGumModel(gumInFolder(folder, QStringLiteral("_lower_gums.obj"), failures));
    }
    summed.report(paths.teeth.size() + paths.brackets.size() + paths.buttons.size() + 2);
    for (const kelo::MeshFailure &failure : failures)
        sentences << QString::fromStdString(failure.sentence());
    return sentences;
}

std::shared_ptr<kelo::DXDocumentModel> samplePatientDocument()
{
    auto document = std::make_shared<kelo::DXDocumentModel>();
    loadMeshes(*document, QString());
    return document;
}

} // namespace viewer
