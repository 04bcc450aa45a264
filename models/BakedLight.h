#pragma once

#include "base/Export.h"
#include "models/OBJReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// Light and tone that were computed for the vertices of a mesh when the mesh was made, and the
/// file next to the mesh that holds them. A mesh without such a file loses nothing else.

namespace kelo {

/// What is known about one vertex, three bytes without padding.
struct BakedVertex
{
    /// How much of the light around reaches the vertex while the jaws are closed, from 0 where
    /// everything around it is covered to 255 for 1, in the open.
    std::uint8_t closed = 255;
    /// The same with the jaws apart.
    std::uint8_t open = 255;
    /// How the colour of this place differs from that of its part as a whole, from -127 for -1 to
    /// 127 for 1. Enamel: 1 is warmer, as at the gum, -1 greyer, as at the edge. Gum: 1 is redder,
    /// as in the vestibule, -1 paler, as at the margin.
    std::int8_t tone = 0;

    bool operator==(const BakedVertex &) const = default;
};
static_assert(sizeof(BakedVertex) == 3);

/// One element for each vertex of a mesh, in the order in which `loadOBJFile` returns them.
using BakedLight = std::vector<BakedVertex>;

/// A number that two vertex arrays share only if they are the same, bit by bit and in the same
/// order.
KELO_EXPORT std::uint64_t checksumOf(std::span<const OBJVertex> vertices);

/// The file that holds the baked light of the mesh at `meshPath`: `DIR/_tooth_8.light` for
/// `DIR/_tooth_8.obj`. Empty for a path that does not end with ".obj".
KELO_EXPORT std::string bakedLightPathOf(const std::string &meshPath);

/// What became of a file with baked light. Neither light nor a refusal: there is no such file.
struct BakedLightReading
{
    std::optional<BakedLight> light;
    /// Why the file was refused, in one line of English without control characters; otherwise
    /// empty.
    std::string refusal;
    /// From what the light was computed, as the writer gave it.
    std::uint64_t sourceChecksum = 0;
};

/// Reads the baked light of a mesh with these vertices. Refuses what is no regular file (a pipe, a
/// device, a folder: at once), what is not exactly as long as these vertices need, and what was
/// made for another mesh; so no file takes more memory than its mesh. Writes no message. May run on
/// several threads at once.
KELO_EXPORT BakedLightReading readBakedLight(const std::string &path,
                                             std::span<const OBJVertex> vertices);

/// Writes the baked light of a mesh with these vertices, as many elements as vertices, under
/// another name first, so that a reader never meets half a file. Nothing on success, otherwise why
/// it cannot be written.
///
/// The file has 32 bytes and three for each vertex, numbers with the lowest byte first: "KELOBAKE",
/// the version 1 (4 bytes), the number of vertices (4), the checksum of the vertices (8),
/// `sourceChecksum` (8), then `closed`, `open` and `tone` vertex by vertex.
KELO_EXPORT std::optional<std::string> writeBakedLight(const std::string &path,
                                                       std::span<const OBJVertex> vertices,
                                                       const BakedLight &light,
                                                       std::uint64_t sourceChecksum);

} // namespace kelo
