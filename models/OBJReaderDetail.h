#pragma once

#include "models/OBJReader.h"

#include <cstddef>
#include <cstdint>

/// Inside of the OBJ reader, open to its tests.

namespace kelo::detail {

/// What the reader takes from its surroundings.
struct OBJReadingLimits
{
    /// Bytes taken from the file at a time, at least 4. 256 KiB stay in the second-level cache
    /// while they are parsed, and the pages are paid for once and not once per page of the file.
    std::size_t blockSize = 256 * 1024;
    /// The most vertices (and normals) and the most indexes; what the 32-bit counts hold.
    std::uint32_t maximumVertexCount = UINT32_MAX;
    std::uint32_t maximumIndexCount = UINT32_MAX;
    /// Has the meaning of `realloc`; what it returns can be released with `free`.
    void *(*reallocate)(void *memory, std::size_t byteCount) = nullptr;
    /// Throws UnendingFace for a face on a last line without a line end, instead of reporting it
    /// for ever.
    bool refusesUnendingFaces = false;
    /// Paths and characters of the file are escaped in messages; otherwise they are written as they
    /// are.
    bool escapesMessages = false;
    /// The most messages about malformed lines; then one that counts the others.
    std::size_t maximumReports = SIZE_MAX;
};

/// Reads the text of an open file of `size` bytes. Throws std::bad_alloc, TooManyElements,
/// UnreadableBytes and UnendingFace, and then leaves the outputs as they are.
void readOBJ(const char *path, int file, std::uint64_t size, const OBJReadingLimits &limits,
             OBJVertex **vertices, std::uint32_t *vertexCount, std::uint32_t **indexes,
             std::uint32_t *indexCount);

/// `loadOBJFile` with other limits; a null `reallocate` means the C allocator's.
bool loadOBJFile(const char *path, const OBJReadingLimits &limits, OBJVertex **vertices,
                 std::uint32_t *vertexCount, std::uint32_t **indexes, std::uint32_t *indexCount);

} // namespace kelo::detail
