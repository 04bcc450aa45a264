#pragma once

#include "tools/meshgen/Mesh.h"
#include "tools/meshgen/PatientFile.h"
#include "tools/meshgen/ToothAnatomy.h"

#include <map>
#include <string>
#include <vector>

namespace kelo::meshgen {

/// Where elastics are hung: the hook of a bracket or the neck of a lingual button.
struct Hook
{
    Vec3 position;       ///< the middle of the post or neck
    Vec3 direction;      ///< unit vector along the post or neck, away from the crown's occlusal end
    double radius = 0.0; ///< of the post or neck
};

/// Hooks by key: a tooth number ("8") for a bracket, with an `l` after it ("8l") for a button.
using HookTable = std::map<std::string, Hook>;

/// Reads `hooks.csv` (a heading line, then key,px,py,pz,dx,dy,dz,radius). Throws std::runtime_error
/// with path and line number when the file cannot be opened or a line cannot be read.
HookTable readHooks(const std::string &path);

/// A tooth's own frame in the jaw. Labial normal, occlusal and mesial direction are unit vectors
/// perpendicular to each other.
struct ToothPlacement
{
    int number = 0;     ///< universal tooth number, 2 to 15 or 18 to 31
    bool upper = false; ///< whether the tooth is in the upper jaw
    Vec3 archNormal;    ///< level, out of the mouth where the tooth stands, however it is turned
    Vec3 labialNormal;  ///< out of the mouth: towards lip or cheek
    Vec3 occlusalDirection; ///< along the crown from the cervical line to its edge or cusps
    Vec3 mesialDirection;   ///< along the arch towards the midline of the face
    Vec3 facialAxisPoint;   ///< on the labial surface: where the middle of a bracket's slot stands
    Vec3 lingualAxisPoint;  ///< on the lingual surface: where a lingual button stands
    Vec3 cervicalCenter;    ///< on the crown's axis at the height of the facial cervical line; the
                            ///< origin of the tooth's own coordinates
    double crownHeight = 0.0; ///< from the facial cervical line to the edge or highest cusp tip

    /// A point given in the tooth's own coordinates (mesial, labial, occlusal), as a point of the
    /// jaw.
    Vec3 toJaw(const Vec3 &own) const
    {
        return cervicalCenter + mesialDirection * own.x + labialNormal * own.y +
               occlusalDirection * own.z;
    }
    /// A point of the jaw in the tooth's own coordinates (mesial, labial, occlusal).
    Vec3 toOwn(const Vec3 &jaw) const
    {
        const Vec3 offset = jaw - cervicalCenter;
        return {dot(offset, mesialDirection), dot(offset, labialNormal),
                dot(offset, occlusalDirection)};
    }
};

/// One tooth of the patient: its anatomy, its surface in its own coordinates and where it stands.
struct Tooth
{
    ToothAnatomy anatomy;
    Mesh ownMesh; ///< as makeTooth() gives it (fine)
    ToothPlacement placement;
};

/// `mesh` moved from the tooth's own coordinates into the jaw, normals included and still wound
/// outwards (teeth of one side have left-handed axes).
Mesh inJaw(const Mesh &mesh, const ToothPlacement &placement);

/// Both arches: teeth 2 to 15, then 18 to 31. Every tooth stands between its bracket's hook and its
/// lingual button as `patient` has it; neighbours touch.
std::vector<Tooth> arrangeTeeth(const HookTable &hooks, const PatientParameters &patient);

/// The clearance of two neighbours along the arch, in millimetres: the shortest way, parallel to
/// the line through their axes, from one crown to the other. Negative where they overlap.
double contactGap(const Tooth &mesialTooth, const Tooth &distalTooth);

} // namespace kelo::meshgen
