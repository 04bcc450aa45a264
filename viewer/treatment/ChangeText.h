#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/text/ToothNotation.h"
#include "viewer/treatment/ConfigurationsSeen.h"

#include <QString>

namespace viewer {

/// What the user did, in a few words, to what, and from what to what: "Place bracket on 8, light
/// blue", "Change elastic 6 – 30, from 1/4" 3.5 oz to 3/16" 4.5 oz". Several things of a kind are
/// counted, and named as long as they are few. `document` has the catalogue that names colours and
/// sizes; configurations that it offers no longer are named as `configurations` has them. Empty
/// when the states are equal.
QString changeText(const kelo::SavedState &before, const kelo::SavedState &after,
                   const kelo::DXDocumentModel &document, const ConfigurationsSeen &configurations,
                   ToothNotation notation);

} // namespace viewer
