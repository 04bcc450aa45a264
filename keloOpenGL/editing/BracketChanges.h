#pragma once

#include "base/Export.h"
#include "document/DXDocumentModel.h"
#include "keloOpenGL/editing/BracketEditor.h"

#include <string>

namespace kelo {

// Changes of brackets, buttons and teeth in a document. The document's delegate hears of each one
// by one, and may change the document, or clear it, while it does: what is changed is looked up
// when its turn comes. The caller holds the document.

KELO_EXPORT void carryOut(const ToothChange &change, DXDocumentModel &document);

/// What a repeated click goes by; models that are missing count as shown. isLastClickedTooth is the
/// caller's to set.
KELO_EXPORT RepeatTarget repeatTarget(const DXDocumentModel &document, const std::string &tooth);

/// Shows those that are not placed and whose tooth is there, in a colour.
KELO_EXPORT void placeAllBrackets(DXDocumentModel &document, long colorTypeID);
/// Hidden ones too, which stay hidden.
KELO_EXPORT void colorAllBrackets(DXDocumentModel &document, long colorTypeID);
/// Hides those that are placed, whether or not their tooth is there, and removes all colours.
KELO_EXPORT void removeAllBrackets(DXDocumentModel &document);
KELO_EXPORT void removeAllBracketColors(DXDocumentModel &document);

} // namespace kelo
