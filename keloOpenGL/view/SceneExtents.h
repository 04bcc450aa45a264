#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"

#include <memory>

namespace kelo {

class DXDocumentModel;

/// The union of the extents of all models of a document; null for no document, for one without
/// models or with empty ones only, and for one that is not whole: a scene that lacks a gum has the
/// frame of an unknown one.
KELO_EXPORT std::shared_ptr<const Extents> extentsOfWholeScene(const DXDocumentModel *document);

/// A box of half-size 100 about the origin.
KELO_EXPORT std::shared_ptr<const Extents> extentsOfUnknownScene();

} // namespace kelo
