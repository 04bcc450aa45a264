#pragma once

#include "base/Export.h"
#include "document/ModelLists.h"

#include <memory>
#include <string>

namespace kelo {

/// By hiddenPrimary alone.
KELO_EXPORT NameKeyDictionary<bool> visibilitiesOf(const ModelDictionary &models);

/// Sets hiddenPrimary. Keys without a model are skipped; models without a key stay as they are.
KELO_EXPORT void setVisibilities(const ModelDictionary &models,
                                 const NameKeyDictionary<bool> &visibilities);
/// The same for teeth, with hiddenSecondary of each tooth's bracket and button.
KELO_EXPORT void setToothVisibilities(const ModelSet &models,
                                      const NameKeyDictionary<bool> &visibilities);

/// Flips hiddenPrimary and returns whether the model is visible now. Null changes nothing and is
/// visible.
KELO_EXPORT bool toggle(const std::shared_ptr<DXGLightweightModel> &model);
/// The same for a tooth, with hiddenSecondary of its bracket and button.
KELO_EXPORT bool toggleTooth(const ModelSet &models, const std::string &toothKey);

/// Whether what elastics hook to under this key is hidden: the bracket, the button, or their tooth.
KELO_EXPORT bool isHiddenUnderKey(const ModelSet &models, const std::string &key);

} // namespace kelo
