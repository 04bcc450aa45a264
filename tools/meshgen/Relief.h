#pragma once

#include "tools/meshgen/Arrangement.h"

#include <string>
#include <vector>

namespace kelo::meshgen {

/// A shallow hollow that wear has left in a crown, where a band lies against it.
struct Relief
{
    int tooth = 0;       ///< universal number
    Vec3 place;          ///< a point of the band's middle, in the jaw's coordinates
    Vec3 direction;      ///< unit vector from there to the nearest surface of the crown
    double cover = 0.42; ///< how far the surface stands off `place` when it is carved, mm
    double radius = 3.0; ///< of the hollow, mm
    double blend = 0.4;  ///< how far up and down its rim is rounded, mm
};

/// Reads a table of reliefs: comment lines that start with `#`, a heading line with the names of
/// the columns, a line a relief. docs/meshes.md tells the columns. Throws std::runtime_error whose
/// text is `path:line: reason` (no line where the whole file is meant) for everything that is
/// wrong.
std::vector<Relief> readReliefs(const std::string &path);

/// The path of the reliefs that belong to a patient's file: the same with `-relief` before its
/// extension.
std::string reliefPathOf(const std::string &patientFile);

/// Carves one relief into the tooth's own mesh. What stands out of the relief's sphere, whose
/// surface passes the place at a distance of `cover` and bulges inwards, is pressed down to it
/// along the direction. The hollow's rim is rounded: where crown and sphere are at the same height
/// that takes off a quarter of `blend`. Parts of the crown that face away from the direction stay.
/// The normals are those of before.
void carve(Tooth &tooth, const Relief &relief);

/// Carves all reliefs into the teeth that they name, and renews their normals. The teeth stay where
/// they stand.
void carveAll(std::vector<Tooth> &teeth, const std::vector<Relief> &reliefs);

} // namespace kelo::meshgen
