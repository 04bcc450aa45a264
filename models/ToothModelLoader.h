#pragma once

#include "base/Export.h"
#include "keloModel/NameKey.h"
#include "models/HVOGLMaterial.h"
#include "models/MeshFailure.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelo {

class DXGLightweightModel;

/// Thrown for a name key whose mesh is not in the resource bundle; the text names both.
class KELO_EXPORT MissingResource : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Loads the standard sets of meshes (gums, teeth, brackets, lingual buttons) by name key from the
/// library's resource bundle, and makes their standard materials. Main thread only; a second thread
/// that reads files lives no longer than the call.
class KELO_EXPORT ToothModelLoader
{
public:
    using Paths = NameKeyDictionary<std::string>;
    using Models = NameKeyDictionary<std::shared_ptr<DXGLightweightModel>>;
    /// Told after every file of a call, in the order of the keys: how many files are done (loaded
    /// or not) and how many there are.
    using Progress = std::function<void(std::size_t doneCount, std::size_t fileCount)>;

    /// @name Paths of mesh files, by name key
    /// The resources are "_tooth_8", "bracket_8" and, for the button key "8l", "button_8", all of
    /// type "obj". A key without its resource throws MissingResource, an empty button key
    /// AssertionFailure.
    /// @{
    static Paths toothModelFilesForToothNameKeys(const std::vector<std::string> &keys);
    static Paths bracketModelFilesForToothNameKeys(const std::vector<std::string> &keys);
    static Paths buttonModelFilesForButtonNameKeys(const std::vector<std::string> &keys);
    /// @}

    /// @name Meshes from files
    /// A file that cannot be loaded is left out, with a line on standard error:
    ///     Error: Couldn't load "PATH" as a model file
    /// and is appended to `failures`, where a caller gives one, with the reason. Only regular files
    /// within the limits of docs/limits.md are read; one whose faces name vertices that it does not
    /// have, or whose last line is a face without a line break, is refused. Where a file was opened
    /// and refused, a line with the failure's sentence precedes the line above.
    ///
    /// All meshes of one call share one material. Files are read on two threads, or on one where a
    /// second cannot be had; identifiers, progress and these lines come in the order of the keys
    /// all the same. (What the reader itself says about a malformed line names its file and comes
    /// while that file is read, so that the lines of two bad files may be mixed.)
    ///
    /// With a mesh comes its baked light (models/BakedLight.h), where there is a file of it. One
    /// that does not fit the mesh is ignored, with a line on standard error:
    ///     Error: Ignored "PATH", which REASON
    /// @{
    /// A new mesh with a default material; null, without a message, for a file that cannot be
    /// loaded.
    static std::shared_ptr<DXGLightweightModel> modelFromFile(const std::string &path,
                                                              MeshFailures *failures = nullptr);
    static Models modelsFromFiles_withMaterial(const Paths &files,
                                               const std::shared_ptr<HVOGLMaterial> &material,
                                               const Progress &progress = {},
                                               MeshFailures *failures = nullptr);
    static Models toothModelsFromFiles(const Paths &files, const Progress &progress = {},
                                       MeshFailures *failures = nullptr);
    static Models bracketModelsFromFiles(const Paths &files, const Progress &progress = {},
                                         MeshFailures *failures = nullptr);
    static Models buttonModelsFromFiles(const Paths &files, const Progress &progress = {},
                                        MeshFailures *failures = nullptr);
    /// The gums, "_upper_gums" and "_lower_gums" of type "obj"; null, with the line above, when the
    /// file is missing (the line then names it without a folder) or cannot be loaded.
    static std::shared_ptr<DXGLightweightModel>
    standardUpperGumsModel(MeshFailures *failures = nullptr);
    static std::shared_ptr<DXGLightweightModel>
    standardLowerGumsModel(MeshFailures *failures = nullptr);
    /// @}

    /// @name Standard materials, a new one at every call
    /// @{
    /// Pink (0.75, 0.375, 0.5), shininess 16; front ambient blended 0.2 and front specular 0.75
    /// toward black.
    static std::shared_ptr<HVOGLMaterial> gumModelMaterial();
    /// The default material; front ambient blended 0.375 toward black, front specular 0.85 toward
    /// white.
    static std::shared_ptr<HVOGLMaterial> toothModelMaterial();
    /// standardMaterialForColor of white.
    static std::shared_ptr<HVOGLMaterial> bracketModelMaterial();
    static std::shared_ptr<HVOGLMaterial> buttonModelMaterial();
    /// The material of one colour, with front ambient black and front specular white. No colour
    /// gives a material of no colour, which draws as white.
    static std::shared_ptr<HVOGLMaterial>
    standardMaterialForColor(const std::optional<Color> &color);
    /// @}
};

} // namespace kelo
