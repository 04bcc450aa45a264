#pragma once

#include "geometry/Extents.h"
#include "models/OBJReader.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kelo::lightbake {

enum class Kind {
    tooth,
    gum,
    attachment ///< a bracket or a lingual button
};

/// One mesh of a folder, in the order that the reader gives its vertices and indexes.
struct Part
{
    std::string path;
    Kind kind = Kind::tooth;
    bool isUpper = true;
    int toothNumber = 0; ///< of the tooth itself or the one that carries the part; 0 for a gum
    /// Another form of a tooth, such as `_tooth_8_fine.obj`: it receives light, but it is the
    /// tooth's own form that casts shadows on others.
    bool isVariant = false;
    std::vector<OBJVertex> vertices;
    std::vector<std::uint32_t> indexes;
};

struct Mouth
{
    std::vector<Part> parts; ///< sorted by the names of their files
    Extents extents;         ///< hold all vertices, as the hinge of the jaws wants them
};

/// Reads the meshes of a folder that are named as the library's resource bundle names them:
/// "_tooth_8.obj", "bracket_8.obj", "button_8.obj", "_upper_gums.obj", "_lower_gums.obj". Throws
/// std::runtime_error with one line that names the file: when the library's loader would refuse a
/// mesh, when an OBJ file has another name, when there is none.
Mouth mouthOfFolder(const std::string &folder);

} // namespace kelo::lightbake
