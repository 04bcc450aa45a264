#include "document/ModelVisibility.h"

#include "keloModel/TreatmentNote.h"

namespace kelo {
namespace {

void hideWithTooth(const ModelSet &models, const std::string &toothKey, bool hidden)
{
    setHiddenSecondary(modelUnderKey(models.brackets, toothKey), hidden);
    setHiddenSecondary(
        modelUnderKey(models.buttons, TreatmentNote::buttonNameForToothName(toothKey)), hidden);
}

} // namespace

NameKeyDictionary<bool> visibilitiesOf(const ModelDictionary &models)
{
    NameKeyDictionary<bool> visibilities;
    for (const auto &[key, model] : models)
        visibilities.emplace(key, !model->hiddenPrimary());
    return visibilities;
}

void setVisibilities(const ModelDictionary &models, const NameKeyDictionary<bool> &visibilities)
{
    for (const auto &[key, visible] : visibilities)
        setHiddenPrimary(modelUnderKey(models, key), !visible);
}

void setToothVisibilities(const ModelSet &models, const NameKeyDictionary<bool> &visibilities)
{
    for (const auto &[key, visible] : visibilities) {
        setHiddenPrimary(modelUnderKey(models.teeth, key), !visible);
        hideWithTooth(models, key, !visible);
    }
}

bool toggle(const std::shared_ptr<DXGLightweightModel> &model)
{
    setHiddenPrimary(model, !isHiddenPrimary(model));
    return !isHiddenPrimary(model);
}

bool toggleTooth(const ModelSet &models, const std::string &toothKey)
{
    const bool visible = toggle(modelUnderKey(models.teeth, toothKey));
    hideWithTooth(models, toothKey, !visible);
    return visible;
}

bool isHiddenUnderKey(const ModelSet &models, const std::string &key)
{
    const auto button = modelUnderKey(models.buttons, key);
    return isHiddenPrimary(modelUnderKey(models.teeth, key)) ||
           isHiddenPrimary(modelUnderKey(models.brackets, key)) || isHiddenPrimary(button) ||
           isHiddenSecondary(button);
}

} // namespace kelo
