#pragma once

#include "base/Export.h"
#include "models/MeshFailure.h"
#include "models/ToothModelLoader.h"

#include <string>
#include <vector>

namespace kelo {

class DXDocumentModel;

/// Gives the document a patient's meshes, all shown, in place of those that it has: the gums
/// ("_upper_gums.obj", "_lower_gums.obj") and, for every tooth of TreatmentNote, the tooth, its
/// bracket and its lingual button ("_tooth_8.obj", "bracket_8.obj", "button_8.obj").
///
/// A tooth of which the folder has none of the three files is one that the patient does not have,
/// and no failure. Returns what could not be loaded, and why; the rest is loaded and drawn. See
/// ToothModelLoader for which files are read and what is said on standard error. `folder` is a path
/// in the encoding of file names; `progress` counts the files of all kinds together.
KELO_EXPORT MeshFailures loadMeshFolder(DXDocumentModel &document, const std::string &folder,
                                        const ToothModelLoader::Progress &progress = {});

/// The same from the library's resources, which hold a sample patient with all teeth. A resource
/// that is missing is a failure.
KELO_EXPORT MeshFailures loadSamplePatient(DXDocumentModel &document,
                                           const ToothModelLoader::Progress &progress = {});

/// The keys of the teeth that loadMeshFolder takes for ones that the patient does not have.
KELO_EXPORT std::vector<std::string> teethMissingInFolder(const std::string &folder);

} // namespace kelo
