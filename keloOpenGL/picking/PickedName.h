#pragma once

#include "base/Export.h"
#include "document/DXDocumentModel.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kelo {

/// The key of a tooth, bracket or button that was picked.
struct PickedName
{
    std::string key;
    bool isLingualButton = false;
};

/// What of the document has this identifier: a bracket, a button, or, where teeth are included, a
/// tooth. Nothing for gums, elastics and the background.
KELO_EXPORT std::optional<PickedName> pickedName(const DXDocumentModel &document,
                                                 std::uint32_t identifier, bool includesTeeth);

} // namespace kelo
