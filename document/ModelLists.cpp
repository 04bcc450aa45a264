#include "document/ModelLists.h"

#include "base/Assertion.h"
#include "document/ModelNotLoaded.h"
#include "keloModel/TreatmentNote.h"

#include <utility>

namespace kelo {
namespace {

void appendLoaded(ModelList &list, std::shared_ptr<DXGLightweightModel> model)
{
    if (model) list.push_back(std::move(model));
}

[[noreturn]] void refuseList(const std::string &listName, const std::string &modelName)
{
    throw ModelNotLoaded("The " + listName + " need the " + modelName + ", which is not loaded");
}

/// The button at an index belongs to the tooth at that index.
struct JawKeys
{
    std::vector<std::string> teeth;
    std::vector<std::string> buttons;
};

JawKeys keysOfJaw(Jaw jaw)
{
    if (jaw == Jaw::Upper)
        return {TreatmentNote::upperToothNameKeys(), TreatmentNote::upperLingualButtonNameKeys()};
    return {TreatmentNote::lowerToothNameKeys(), TreatmentNote::lowerLingualButtonNameKeys()};
}

const std::shared_ptr<DXGLightweightModel> &gumOfJaw(const ModelSet &models, Jaw jaw)
{
    return jaw == Jaw::Upper ? models.upperGum : models.lowerGum;
}

} // namespace

ModelList loadedModels(const ModelSet &models)
{
    ModelList list;
    list.reserve(models.teeth.size() + models.brackets.size() + models.buttons.size() + 2);
    for (const ModelDictionary *dictionary : {&models.teeth, &models.brackets, &models.buttons}) {
        for (const auto &[key, model] : *dictionary)
            list.push_back(model);
    }
    appendLoaded(list, models.upperGum);
    appendLoaded(list, models.lowerGum);
    return list;
}

ModelList completeModels(const ModelSet &models)
{
    if (!models.upperGum) refuseList("models", "upper gum");
    if (!models.lowerGum) refuseList("models", "lower gum");
    return loadedModels(models);
}

bool holds(const ModelSet &models, const void *mesh)
{
    if (mesh == models.upperGum.get() || mesh == models.lowerGum.get()) return mesh != nullptr;
    for (const ModelDictionary *dictionary : {&models.teeth, &models.brackets, &models.buttons}) {
        for (const auto &[key, model] : *dictionary) {
            if (model.get() == mesh) return true;
        }
    }
    return false;
}

const ModelList &JawList::loaded(const ModelSet &models)
{
    const auto noteKeys = TreatmentNote::keys();
    if (noteKeys_ == noteKeys) return models_;
    const JawKeys keys = keysOfJaw(jaw_);
    assertThat(keys.teeth.size() == keys.buttons.size(),
               "The lists of teeth and of lingual buttons are parallel");
    ModelList list;
    list.reserve(1 + 3 * keys.teeth.size());
    appendLoaded(list, gumOfJaw(models, jaw_));
    for (std::size_t i = 0; i < keys.teeth.size(); ++i) {
        appendLoaded(list, modelUnderKey(models.teeth, keys.teeth[i]));
        appendLoaded(list, modelUnderKey(models.brackets, keys.teeth[i]));
        appendLoaded(list, modelUnderKey(models.buttons, keys.buttons[i]));
    }
    isComplete_ = list.size() == 1 + 3 * keys.teeth.size();
    models_ = std::move(list);
    noteKeys_ = noteKeys;
    return models_;
}

const ModelList &JawList::complete(const ModelSet &models)
{
    const ModelList &list = loaded(models);
    if (!isComplete_) refuse(models);
    return list;
}

void JawList::refuse(const ModelSet &models) const
{
    // The texts of the refusal are only made here, not for every frame.
    const std::string jawName = jaw_ == Jaw::Upper ? "upper" : "lower";
    const std::string listName = jawName + " models";
    const JawKeys keys = keysOfJaw(jaw_);
    if (!gumOfJaw(models, jaw_)) refuseList(listName, jawName + " gum");
    const auto require = [&](const ModelDictionary &dictionary, const char *kind,
                             const std::string &key) {
        if (!modelUnderKey(dictionary, key)) refuseList(listName, kind + (" \"" + key) + '"');
    };
    for (std::size_t i = 0; i < keys.teeth.size(); ++i) {
        require(models.teeth, "tooth", keys.teeth[i]);
        require(models.brackets, "bracket", keys.teeth[i]);
        require(models.buttons, "button", keys.buttons[i]);
    }
}

} // namespace kelo
