#pragma once

#include "tools/meshgen/ToothAnatomy.h"

#include <map>
#include <string>

namespace kelo::meshgen {

/// How one tooth of a patient stands and how it differs from the anatomy of its kind.
struct ToothParameters
{
    int number = 0;        ///< universal tooth number, 2 to 15 or 18 to 31
    double edge = 0.0;     ///< height z in the jaw of the edge or of the highest cusp, mm
    double outward = 0.0;  ///< towards lip or cheek, off the place between hook and button, mm
    double torque = 0.0;   ///< lean of the crown outwards, degrees
    double tip = 0.0;      ///< lean of the crown towards the midline, degrees
    double rotation = 0.0; ///< about the tooth's axis, its mesial side outwards, degrees
    ToothAnatomy anatomy;  ///< with this tooth's own sizes and forms
};

/// The teeth of a patient by their numbers.
using PatientParameters = std::map<int, ToothParameters>;

/// Reads a patient's file: comment lines that start with `#`, a heading line with the names of the
/// columns, a line a tooth. docs/meshes.md tells the columns. Throws std::runtime_error whose text
/// is `path:line: reason` (no line where the whole file is meant) for everything that is wrong.
PatientParameters readPatient(const std::string &path);

} // namespace kelo::meshgen
