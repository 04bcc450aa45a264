#pragma once

#include "geometry/Extents.h"
#include "tools/banddepth/ClosedMesh.h"

#include <array>
#include <string>
#include <vector>

namespace kelo::banddepth {

/// What a band may run into. A lingual button counts as a bracket.
enum class Kind { tooth, bracket, gum };
inline constexpr std::array<Kind, 3> allKinds{Kind::tooth, Kind::bracket, Kind::gum};
/// "tooth", "bracket" or "gum".
const char *nameOf(Kind kind);

/// One mesh of the scene, in the model space of the jaw that it moves with.
struct Obstacle
{
    Kind kind;
    std::string name; ///< "tooth 8", "bracket 8", "button 8l", "upper gum"
    bool isUpper;
    ClosedMesh mesh;
};

struct Scene
{
    std::vector<Obstacle> obstacles; ///< sorted by the names of their files
    Extents extents; ///< hold all positions of all meshes, as the jaw hinge wants them
};

/// Reads the meshes of a folder that are named as the library's resource bundle names them:
/// "_tooth_8.obj", "bracket_8.obj", "button_8.obj", "_upper_gums.obj", "_lower_gums.obj". Throws
/// std::runtime_error with one line that names the file: when meshcheck finds a problem with a mesh
/// (an open mesh has no inside), when an OBJ file has another name, when there is none.
Scene sceneOfFolder(const std::string &folder);

} // namespace kelo::banddepth
