#pragma once

/// The one place that brings in OpenGL. Include it before any Qt header that brings GL of its own.
#include <epoxy/gl.h>
