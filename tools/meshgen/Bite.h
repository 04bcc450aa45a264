#pragma once

#include "tools/meshgen/Mesh.h"

#include <string>
#include <vector>

namespace kelo::meshgen {

struct Patient;

/// How two things of opposite jaws stand to each other when the mouth is closed, in millimetres.
struct BiteMeasure
{
    std::string upper, lower; ///< names of the two meshes
    double overlap = 0.0;     ///< how deep one runs into the other, 0 where they are apart
    double clearance = 0.0;   ///< the shortest way between them, 0 where they overlap
};

/// Both figures for two closed meshes. Looked at from the vertices and the middles of the faces of
/// either. Two meshes more than `horizon` apart count as `horizon` apart.
BiteMeasure measureBite(const Mesh &upper, const Mesh &lower, double horizon);

/// All pairs of an upper and a lower tooth that are less than a millimetre apart, by their numbers.
std::vector<BiteMeasure> biteOfTeeth(const Patient &patient);

/// All pairs of a bracket or button and a tooth, bracket or button of the other jaw that are less
/// than a millimetre apart.
std::vector<BiteMeasure> biteOfAttachments(const Patient &patient);

} // namespace kelo::meshgen
