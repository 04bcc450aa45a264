#pragma once

#include "models/OBJReader.h"

#include <cstddef>
#include <cstdint>

/// Inside of the OBJ reader, open to its tests only.

namespace kelo::detail {

/// What the reader takes from its surroundings.
struct OBJReadingLimits
{
    /// Bytes taken from the file at a time, at least 4. 256 KiB stay in the second-level cache
    /// while they are parsed, and the pages are paid for once and not once per page of the file.
    std::size_t blockSize = 256 * 1024;
    /// The most vertices, normals and indexes; what the 32-bit counts hold.
    std::uint32_t maximumCount = UINT32_MAX;
    /// Has the meaning of `realloc`; what it returns can be released with `free`.
    void *(*reallocate)(void *memory, std::size_t byteCount) = nullptr;
};

/// `loadOBJFile` with other limits; a null `reallocate` stands for the C allocator's.
bool loadOBJFile(const char *path, const OBJReadingLimits &limits, OBJVertex **vertices,
                 std::uint32_t *vertexCount, std::uint32_t **indexes, std::uint32_t *indexCount);

} // namespace kelo::detail
