#pragma once

#include "base/Export.h"
#include "document/DXDocumentModel.h"
#include "keloOpenGL/editing/ElasticEditor.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class ElasticModel;
struct ElasticsConfigType;
struct ElasticsSizeType;

// What stringing looks up in a document, and the changes of its elastics. The document's delegate
// hears of each change one by one, and may change the document, or clear it, while it does. The
// caller holds the document.

/// Whether the bracket or button of this key is hidden, for whatever reason.
KELO_EXPORT bool isHiddenMember(const DXDocumentModel &document, const std::string &key);

/// The hit of a press that read this identifier (PickIdentifier.h), which is an elastic's or stands
/// for this name: a lingual button's, a bracket's, or a tooth's, which counts as its bracket's.
/// Without a document nothing is shown.
KELO_EXPORT ElasticHit elasticHit(const DXDocumentModel *document, std::uint32_t identifier,
                                  const std::optional<std::string> &name, bool isLingualButton);

/// The elastic at this place in the list, or null. A reference of its own: a host may change the
/// list meanwhile.
KELO_EXPORT std::shared_ptr<ElasticModel> elasticAt(const DXDocumentModel &document,
                                                    std::uint64_t index);

/// The size type of this number, or null.
KELO_EXPORT std::shared_ptr<ElasticsSizeType> elasticsSizeType(const DXDocumentModel &document,
                                                               std::optional<long> typeID);

/// The elastic that has been strung, to be placed; null where there is nothing to place
/// (ElasticEditor::beginPlacing).
KELO_EXPORT std::shared_ptr<ElasticModel> strungElastic(ElasticEditor &editor,
                                                        const DXDocumentModel &document);

/// @name Named configurations
/// @{
/// The hidden teeth that a configuration needs, each once, in the order of its members: while there
/// are any it cannot be placed.
KELO_EXPORT std::vector<std::string> missingTeeth(const DXDocumentModel &document,
                                                  const ElasticsConfigType &configuration);
/// Whether a band over the same members is placed, which would hide this one.
KELO_EXPORT bool isCovered(const DXDocumentModel &document,
                           const ElasticsConfigType &configuration);
/// Shows the brackets and buttons that it needs, brackets without a colour, and places it.
KELO_EXPORT void placeConfiguration(DXDocumentModel &document,
                                    const std::shared_ptr<ElasticsConfigType> &configuration);
/// @}

/// @name All elastics
/// Those that are there when it begins: elastics that a host places meanwhile stay as they are.
/// @{
KELO_EXPORT void setSizeOfAllElastics(DXDocumentModel &document,
                                      const std::shared_ptr<ElasticsSizeType> &size);
KELO_EXPORT void removeAllElastics(DXDocumentModel &document);
/// @}

} // namespace kelo
