#pragma once

#include "viewer/DocumentState.h"
#include "viewer/ToothNotation.h"

#include <QString>

namespace viewer {

/// What the user did, in a few words: "Place bracket on 8, light blue". `document` has the
/// catalogue that names colours and sizes. Empty when the states are equal.
QString changeText(const DocumentState &before, const DocumentState &after,
                   const kelo::DXDocumentModel &document, ToothNotation notation);

} // namespace viewer
