#pragma once

#include "base/Export.h"
#include "document/ModelLookup.h"

#include <memory>
#include <string>
#include <vector>

namespace kelo {

class TreatmentNoteKeys;

/// The meshes of a document, hidden ones included. The dictionaries hold no null; gums may be null.
struct ModelSet
{
    ModelDictionary teeth;
    ModelDictionary brackets;
    ModelDictionary buttons;
    std::shared_ptr<DXGLightweightModel> upperGum;
    std::shared_ptr<DXGLightweightModel> lowerGum;
};

using ModelList = std::vector<std::shared_ptr<DXGLightweightModel>>;

enum class Jaw { Upper, Lower };

/// All teeth, brackets and buttons, each in the order of their keys, then the upper and the lower
/// gum, if they are loaded.
KELO_EXPORT ModelList loadedModels(const ModelSet &models);
/// The same; throws ModelNotLoaded when a gum is not loaded.
KELO_EXPORT ModelList completeModels(const ModelSet &models);
/// Whether the mesh, given by its address, is one of them; never for null.
KELO_EXPORT bool holds(const ModelSet &models, const void *mesh);

/// The list of a jaw: its gum, then for each of its teeth (TreatmentNote) the tooth, its bracket
/// and its lingual button. The list is kept until it is forgotten or the host's keys change,
/// because views need it for every frame and pick.
class KELO_EXPORT JawList
{
public:
    explicit JawList(Jaw jaw) : jaw_(jaw) {}

    /// Without what is not loaded.
    const ModelList &loaded(const ModelSet &models);
    /// Throws ModelNotLoaded when something of it is not loaded.
    const ModelList &complete(const ModelSet &models);
    /// To be called when a mesh of the set is another one.
    void forget() { noteKeys_.reset(); }

private:
    void refuse(const ModelSet &models) const;

    Jaw jaw_;
    std::shared_ptr<const TreatmentNoteKeys> noteKeys_; ///< null while nothing is listed
    ModelList models_;
    bool isComplete_ = false;
};

} // namespace kelo
