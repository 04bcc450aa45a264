#pragma once

#include "tools/meshgen/Arrangement.h"
#include "tools/meshgen/Mesh.h"

#include <string>
#include <vector>

namespace kelo::meshgen {

/// A finished mesh and the name of its file without folder and `.obj`.
struct NamedMesh
{
    std::string name;
    Mesh mesh;
};

/// A patient: the teeth as they stand and the 86 meshes of teeth, brackets, buttons and gums, in
/// the order of their names' kinds and numbers.
struct Patient
{
    std::vector<Tooth> teeth;
    std::vector<NamedMesh> meshes;
};

/// Makes the whole patient from the tables in the folder `tables` (hooks.csv) and from the
/// patient's file `patientFile` (see readPatient()), with the reliefs of the file at reliefPathOf()
/// if there is one. The result is the same in every run. Throws std::runtime_error when one of them
/// cannot be read.
Patient makePatient(const std::string &tables, const std::string &patientFile);

/// Writes every mesh as OBJ into the folder `output`, which is made if need be.
/// Throws std::runtime_error when a file cannot be written.
void writeMeshes(const Patient &patient, const std::string &output);

} // namespace kelo::meshgen
