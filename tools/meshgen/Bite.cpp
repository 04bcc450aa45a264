#include "tools/meshgen/Bite.h"

#include "tools/meshgen/MeshDistance.h"
#include "tools/meshgen/PatientMeshes.h"

#include <algorithm>
#include <cstdlib>

namespace kelo::meshgen {

namespace {

/// What is farther apart than this has nothing to do with each other in the bite.
constexpr double horizonOfBite = 1.0;

struct Part
{
    const NamedMesh *named = nullptr;
    MeshDistance distances;
};

/// The tooth number at the end of a mesh's name; 0 for a gum.
int numberIn(const std::string &name)
{
    const std::size_t digits = name.find_first_of("0123456789");
    return digits == std::string::npos ? 0 : std::atoi(name.c_str() + digits);
}

bool isTooth(const std::string &name)
{
    return name.starts_with("_tooth_");
}

/// The teeth, brackets and buttons of one jaw.
std::vector<Part> partsOf(const Patient &patient, bool upper)
{
    std::vector<Part> parts;
    for (const NamedMesh &named : patient.meshes) {
        const int number = numberIn(named.name);
        if (number > 0 && (number <= 15) == upper)
            parts.push_back({&named, MeshDistance(named.mesh)});
    }
    return parts;
}

/// Looks at `distances` from every vertex and face of `mesh`.
void look(const Mesh &mesh, const MeshDistance &distances, double horizon, BiteMeasure &measure)
{
    const auto at = [&](const Vec3 &point) {
        if (!distances.isNear(point, measure.clearance)) return;
        const bool inside = distances.isInside(point);
        const double reach = distances.distanceWithin(point, inside ? 1e15 : horizon);
        if (inside)
            measure.overlap = std::max(measure.overlap, reach);
        else
            measure.clearance = std::min(measure.clearance, reach);
    };
    for (const Vec3 &point : mesh.positions)
        at(point);
    for (const auto &t : mesh.triangles)
        at((mesh.positions[t[0]] + mesh.positions[t[1]] + mesh.positions[t[2]]) / 3.0);
}

BiteMeasure measured(const Mesh &upper, const MeshDistance &upperDistances, const Mesh &lower,
                     const MeshDistance &lowerDistances, double horizon)
{
    BiteMeasure measure;
    measure.clearance = horizon;
    look(upper, lowerDistances, horizon, measure);
    look(lower, upperDistances, horizon, measure);
    if (measure.overlap > 0.0) measure.clearance = 0.0;
    return measure;
}

std::vector<BiteMeasure> pairsOf(const Patient &patient, bool teeth)
{
    const std::vector<Part> uppers = partsOf(patient, true);
    const std::vector<Part> lowers = partsOf(patient, false);
    std::vector<BiteMeasure> result;
    for (const Part &upper : uppers)
        for (const Part &lower : lowers) {
            const bool bothTeeth = isTooth(upper.named->name) && isTooth(lower.named->name);
            if (bothTeeth != teeth) continue;
            BiteMeasure measure = measured(upper.named->mesh, upper.distances, lower.named->mesh,
                                           lower.distances, horizonOfBite);
            if (measure.clearance >= horizonOfBite) continue;
            measure.upper = upper.named->name;
            measure.lower = lower.named->name;
            result.push_back(std::move(measure));
        }
    return result;
}

} // namespace

BiteMeasure measureBite(const Mesh &upper, const Mesh &lower, double horizon)
{
    return measured(upper, MeshDistance(upper), lower, MeshDistance(lower), horizon);
}

std::vector<BiteMeasure> biteOfTeeth(const Patient &patient)
{
    return pairsOf(patient, true);
}

std::vector<BiteMeasure> biteOfAttachments(const Patient &patient)
{
    return pairsOf(patient, false);
}

} // namespace kelo::meshgen
