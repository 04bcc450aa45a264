#pragma once

#include "base/Export.h"
#include "keloModel/Catalogue.h"

namespace kelo {

class DXDocumentModel;

/// The catalogue that comes with the library: "catalogue.json" of its resources, read anew at every
/// call. Its problems say which file is wrong, or that the resources could not be found.
KELO_EXPORT CatalogueReading standardCatalogue();

/// Makes the catalogue the one that this document offers, and the one in which menus look records
/// up: sets the document's colours, sizes and named elastics and fills
/// QKTypeManager::typeManager(). Records are shared with the catalogue, not copied. Announces
/// nothing; set it before the state is restored, which names records of it.
KELO_EXPORT void setCatalogue(DXDocumentModel &document, const Catalogue &catalogue);

/// The same without the type manager, for a host that has several documents with catalogues of
/// their own: it fills the type manager (Catalogue::fill) when the user turns to a document.
KELO_EXPORT void offerCatalogue(DXDocumentModel &document, const Catalogue &catalogue);

} // namespace kelo
