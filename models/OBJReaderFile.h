#pragma once

#include "models/OBJReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

/// Reading mesh files that may come from anywhere: within limits, and with a reason where one is
/// refused. `loadOBJFile` itself asks for nothing of the kind.

namespace kelo {

/// The most that a mesh file may hold. A scan of a whole jaw has about 300,000 triangles in 25 MB
/// of text; ten times that, and no file takes the machine's memory. The same limits hold for the
/// loader of the library and for `meshcheck`.
struct MeshFileLimits
{
    std::uint64_t byteCount = 256 * 1024 * 1024;
    /// Counts the copies that the reader makes of vertices with a second normal. As many normals.
    std::uint32_t vertexCount = 2'000'000;
    /// Triangles, after polygons were divided.
    std::uint32_t triangleCount = 4'000'000;
    /// Malformed lines that are reported one by one; the others are only counted.
    std::size_t reportedLineCount = 100;
};

/// Why a mesh file was refused.
struct MeshFileRefusal
{
    /// As an editor counts: CR LF, CR or LF end a line. 0 if it concerns the whole file.
    std::size_t line = 0;
    /// One line of English without control characters.
    std::string reason;
    /// False when there was no file to read: it is not there, may not be read, or is no regular
    /// file.
    bool wasOpened = true;
};

/// Why a mesh is too large.
inline std::string tooManyBytesReason(std::uint64_t byteCount, const MeshFileLimits &limits)
{
    return "the file has " + std::to_string(byteCount) + " bytes; a mesh may have " +
           std::to_string(limits.byteCount);
}
inline std::string tooManyVerticesReason(const MeshFileLimits &limits)
{
    return "more than " + std::to_string(limits.vertexCount) + " vertices";
}
inline std::string tooManyNormalsReason(const MeshFileLimits &limits)
{
    return "more than " + std::to_string(limits.vertexCount) + " normals";
}
inline std::string tooManyTrianglesReason(const MeshFileLimits &limits)
{
    return "more than " + std::to_string(limits.triangleCount) + " triangles";
}

/// Reads a mesh file as `loadOBJFile` does, arrays and messages about malformed lines included, but
/// refuses what is no regular file (a pipe, a device, a folder: at once), what is beyond `limits`,
/// a face on a last line without a line break, and faces whose vertices are not in the file.
/// Control characters of file names and lines are escaped in messages, and of malformed lines no
/// more than the limit are reported: then one line "and N more malformed lines in PATH".
///
/// Returns nothing on success. A refusal writes no message of its own and leaves the outputs as
/// they are.
std::optional<MeshFileRefusal> readMeshFile(const std::string &path, const MeshFileLimits &limits,
                                            OBJVertex **vertices, std::uint32_t *vertexCount,
                                            std::uint32_t **indexes, std::uint32_t *indexCount);

} // namespace kelo
