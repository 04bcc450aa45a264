#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <memory>

namespace kelo {
class DXDocumentModel;
}

namespace viewer {

/// Told how many of the mesh files are loaded.
using LoadingProgress = std::function<void(std::size_t doneCount, std::size_t fileCount)>;

/// Gives a document a patient's meshes: gums, teeth, brackets and buttons, all shown, from the
/// library's resources or from another folder of the same file names. A tooth of which that folder
/// has no file at all is not loaded. Returns what could not be loaded, one sentence each; the rest
/// is loaded.
QStringList loadMeshes(kelo::DXDocumentModel &document, const QString &meshFolder,
                       const LoadingProgress &progress = {});

/// A new document with the meshes of the library's resources.
std::shared_ptr<kelo::DXDocumentModel> samplePatientDocument();

} // namespace viewer
