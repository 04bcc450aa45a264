#pragma once

#include "keloOpenGL/treatment/DXOpenGLDelegate.h"

#include <QJsonArray>

namespace viewer {

/// A list as JSON: [{"color": [r, g, b, a], "name": "...", "brackets": ["6", "30"]}].
QJsonArray elasticsAsJSON(const kelo::ElasticDescriptions &elastics);

} // namespace viewer
