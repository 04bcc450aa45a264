#pragma once

#include "models/OBJReaderFile.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Tells what is wrong with a mesh file before anything loads it.

namespace kelo {

/// One thing that is wrong with a mesh file.
struct MeshProblem
{
    /// The file, as it was named to the check.
    std::string file;
    /// The line as an editor counts: CR LF, CR or LF end a line. 0 if it concerns the whole file.
    std::size_t line = 0;
    /// What is wrong, in one line of English.
    std::string reason;

    bool operator==(const MeshProblem &) const = default;
};

/// How much is asked of a mesh.
enum class Strictness {
    usual, ///< that it loads as its maker meant it and that its surface is closed
    strict ///< moreover that a picture of it shows nothing that its surface does not have
};

/// The most problems that a check, or a check of many files, lists. Nobody reads more, and a file
/// that is none of ours would give one a line.
inline constexpr std::size_t mostListedProblems = 100;

/// Checks OBJ text; `file` is only copied into the problems. The problems are in the order of
/// lines, at most mostListedProblems of them; `unlistedCount`, where it is given, becomes the
/// number of the others. Tokens of the text are shown without control characters, and shortened.
///
/// **Size**: no more vertices, normals and triangles than docs/limits.md has; what is behind is not
/// checked.
///
/// **Text**: numbers that are malformed or not finite, `v` sequences that the reader does not know,
/// vertex and normal numbers that are zero, negative or beyond what was read so far, faces of fewer
/// than three vertices, positions that the reader numbers differently because copies of vertices
/// came before them, no faces at all, no line break at the end of the file.
///
/// **Shape**, judged once the text is in order: vertices at exactly the same position are one, so
/// that copies for the sake of normals do not tear the surface. Faces whose corners coincide, edges
/// of more than two faces, neighbours that are wound in opposite directions, holes (open edges, one
/// problem for each connected run), and closed surfaces that are wound inwards (negative volume,
/// the sum of a . (b x c) / 6 over the triangles).
///
/// **Surface**, when `strict` and nothing else is wrong: faces without area (a height of less than
/// a ten-thousandth of the longest side), faces that cross another face of the same surface, faces
/// folded flat onto their neighbour, and normals more than 60 degrees off their face. Faces that
/// hang together by edges are one surface; a mesh may consist of several that run into each other.
///
/// Returns for every text, in time proportional to n log n of its size; the search for crossings
/// takes the longer the more faces lie over the same x coordinate, up to a limit.
std::vector<MeshProblem> checkMeshText(std::string_view text, const std::string &file,
                                       Strictness strictness = Strictness::usual,
                                       std::size_t *unlistedCount = nullptr,
                                       const MeshFileLimits &limits = {});

/// Checks the file at `path`. What cannot be read is a problem like others; only regular files of
/// no more bytes than docs/limits.md has are read, so a pipe is not waited for.
std::vector<MeshProblem> checkMeshFile(const std::string &path,
                                       Strictness strictness = Strictness::usual,
                                       std::size_t *unlistedCount = nullptr,
                                       const MeshFileLimits &limits = {});

/// `file:line: reason`, or `file: reason` where it concerns the whole file, with control characters
/// escaped.
std::string sentenceOf(const MeshProblem &problem);

/// The OBJ files at `path`: the file itself, whatever its name, or those in the folder and its
/// folders whose name ends with `.obj` (in any case), sorted. Empty for a folder without any.
std::vector<std::string> meshFilesAt(const std::string &path);

} // namespace kelo
