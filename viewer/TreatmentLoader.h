#pragma once

#include <QString>

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
/// library's resources or from another folder of the same file names (which must hold all of them).
/// Throws std::exception with a sentence when a resource is missing.
void loadMeshes(kelo::DXDocumentModel &document, const QString &meshFolder,
                const LoadingProgress &progress = {});

/// A new document with the meshes of the library's resources.
std::shared_ptr<kelo::DXDocumentModel> samplePatientDocument();

} // namespace viewer
