#pragma once

#include "keloModel/NameKey.h"
#include "models/DXGLightweightModel.h"

#include <memory>
#include <string>

namespace kelo {

using ModelDictionary = NameKeyDictionary<std::shared_ptr<DXGLightweightModel>>;

/// The model under the key, or null. The caller gets its own reference, because an observer of a
/// change to the model may replace the whole dictionary.
inline std::shared_ptr<DXGLightweightModel> modelUnderKey(const ModelDictionary &models,
                                                          const std::string &key)
{
    const auto model = models.find(key);
    return model == models.end() ? nullptr : model->second;
}

/// A missing model is hidden in neither way, and setting its flags does nothing.
inline bool isHiddenPrimary(const std::shared_ptr<DXGLightweightModel> &model)
{
    return model && model->hiddenPrimary();
}

inline bool isHiddenSecondary(const std::shared_ptr<DXGLightweightModel> &model)
{
    return model && model->hiddenSecondary();
}

/// Whether the model under the key is hidden, for whatever reason.
inline bool isHidden(const ModelDictionary &models, const std::string &key)
{
    const auto model = modelUnderKey(models, key);
    return isHiddenPrimary(model) || isHiddenSecondary(model);
}

inline void setHiddenPrimary(const std::shared_ptr<DXGLightweightModel> &model, bool hidden)
{
    if (model) model->setHiddenPrimary(hidden);
}

inline void setHiddenSecondary(const std::shared_ptr<DXGLightweightModel> &model, bool hidden)
{
    if (model) model->setHiddenSecondary(hidden);
}

} // namespace kelo
