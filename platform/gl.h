#pragma once

/// The one place that brings in OpenGL. Include it before any Qt header that brings GL of its own.
#include <epoxy/gl.h>

#include <cstddef>

namespace kelo {

/// A place in the bound buffer object, as the pointer that GL's array functions take it for.
inline const void *bufferOffset(std::size_t bytes)
{
    return reinterpret_cast<const void *>(bytes); // NOLINT(performance-no-int-to-ptr)
}

} // namespace kelo
