#pragma once

#include "keloOpenGL/view/WindowProjection.h"

namespace kelo {

/// By the matrices and the viewport of the current OpenGL context.
WindowProjection currentWindowProjection();

} // namespace kelo
