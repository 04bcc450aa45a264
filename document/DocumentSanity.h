#pragma once

#include "base/Export.h"
#include "document/BracketPaint.h"
#include "document/ElasticList.h"
#include "document/ModelLists.h"

#include <string>
#include <vector>

namespace kelo {

/// @name What is wrong with the parts of a document, one sentence each
/// See DXDocumentModel::checkSanity.
/// @{
KELO_EXPORT std::vector<std::string> complaintsAboutModels(const ModelSet &models);
KELO_EXPORT std::vector<std::string> complaintsAboutColors(const BracketPaint &paint,
                                                           const ModelDictionary &brackets);
KELO_EXPORT std::vector<std::string> complaintsAboutElastics(const ElasticList &elastics,
                                                             const ModelSet &models);
/// @}

} // namespace kelo
