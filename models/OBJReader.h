#pragma once

#include "base/Export.h"

#include <cstdint>

/// Reader of the Wavefront OBJ subset that tooth, gum, bracket and button meshes are written in:
/// vertex positions (`v`), vertex normals (`vn`) and faces (`f`). Every other line is skipped.

namespace kelo {

/// One interleaved vertex, 24 bytes without padding, ready for a vertex buffer.
struct OBJVertex
{
    /// Position x, y, z, as the `v` line gives it (millimetres in the meshes of this system).
    float position[3];
    /// Normal x, y, z of the `vn` line that a face assigned, as written there (not normalised);
    /// (0, 0, 0) as long as no face assigned one.
    float normal[3];
};
static_assert(sizeof(OBJVertex) == 24);

/// Reads the OBJ file at `path` into a vertex array and an array of 0-based triangle indexes.
///
/// \param path        file-system path, a zero-terminated byte string
/// \param vertices    receives the vertex array
/// \param vertexCount receives the number of vertices
/// \param indexes     receives the index array, three indexes a triangle
/// \param indexCount  receives the number of indexes
///
/// Both arrays come from the C allocator and belong to the caller, who releases them with `free`;
/// they are never null after success, not even when they hold nothing.
///
/// **Result.** True when the file could be opened and its size taken, whatever its contents: an
/// empty file is a mesh of no vertices. False, without a message, when it could not (also for a
/// directory, and for a pipe, which has no size). False with one line on standard error when there
/// is not enough memory, when a count would pass 4294967295, or when the bytes cannot be read or
/// the file became shorter meanwhile. After false the outputs are as they were.
///
/// **Lines.** A carriage return ends a line and a line feed ends a line, so the lines of a file
/// with CR LF line ends are numbered 1, 3, 5 ... in messages. Blanks are space and tab. The text
/// ends with the size that the file had when it was opened, not at a zero byte inside it; such a
/// byte is an ordinary character that no number contains.
///
/// **Numbers** are converted as `strtof` and `strtol` do in the "C" locale, whatever the locale of
/// the process. What follows a number in its token is ignored, and so are further numbers of a
/// line.
///
/// **Faces** become fans: `f 1 2 3 4` gives 0, 1, 2, 0, 2, 3. A face assigns its normals to its
/// vertices; a vertex that already carries another normal is copied to the end of the array, one
/// copy for every such use. A normal number beyond the normals read so far is ignored. Faces of one
/// or two vertices leave their indexes in the array.
///
/// **Bad data** is reported on standard error and reading goes on:
/// `Malformed number on line %u of %s` drops a position or normal line, or one vertex or normal of
/// a face; `Malformed obj file %s: Line %u starts with invalid sequence "v%c"` skips the line.
///
/// **What the caller must see to.** Vertex numbers are not checked and negative ones are not
/// relative: the index is the number - 1 modulo 2^32, which may lie outside the vertex array (the
/// array itself is only touched for vertices already read). And every mesh file must end with a
/// line break: a face on a last line without one never ends, the reader keeps reporting a malformed
/// number and does not return. Nor is there a limit to the size of a file or the number of
/// messages, and a message repeats what the file has, control characters included. ToothModelLoader
/// refuses such files; `meshcheck` finds them before anything is loaded.
///
/// Keeps no state between calls; may run on several threads at once.
KELO_EXPORT bool loadOBJFile(const char *path, OBJVertex **vertices, std::uint32_t *vertexCount,
                             std::uint32_t **indexes, std::uint32_t *indexCount);

} // namespace kelo
