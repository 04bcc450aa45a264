#include "tools/meshgen/Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace kelo::meshgen {

namespace {

/// The point of triangle abc that is nearest to p (barycentric region test).
Vec3 nearestOnTriangle(const Vec3 &p, const Vec3 &a, const Vec3 &b, const Vec3 &c)
{
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const double d1 = dot(ab, p - a);
    const double d2 = dot(ac, p - a);
    if (d1 <= 0.0 && d2 <= 0.0) return a;
    const double d3 = dot(ab, p - b);
    const double d4 = dot(ac, p - b);
    if (d3 >= 0.0 && d4 <= d3) return b;
    const double vc = d1 * d4 - d3 * d2;
    if (vc <= 0.0 && d1 >= 0.0 && d3 <= 0.0) return a + ab * (d1 / (d1 - d3));
    const double d5 = dot(ab, p - c);
    const double d6 = dot(ac, p - c);
    if (d6 >= 0.0 && d5 <= d6) return c;
    const double vb = d5 * d2 - d1 * d6;
    if (vb <= 0.0 && d2 >= 0.0 && d6 <= 0.0) return a + ac * (d2 / (d2 - d6));
    const double va = d3 * d6 - d5 * d4;
    if (va <= 0.0 && d4 - d3 >= 0.0 && d5 - d6 >= 0.0)
        return b + (c - b) * ((d4 - d3) / ((d4 - d3) + (d5 - d6)));
    const double sum = va + vb + vc;
    return a + ab * (vb / sum) + ac * (vc / sum);
}

double distanceToMesh(const Vec3 &p, const Mesh &mesh)
{
    double least = 1e9;
    for (const auto &t : mesh.triangles)
        least = std::min(
            least, distance(p, nearestOnTriangle(p, mesh.positions[t[0]], mesh.positions[t[1]],
                                                 mesh.positions[t[2]])));
    return least;
}

/// Whether p lies inside the closed mesh: the sum of the solid angles of all triangles (after van
/// Oosterom and Strackee) is 4 pi inside and 0 outside.
bool isInside(const Vec3 &p, const Mesh &mesh)
{
    double sum = 0.0;
    for (const auto &t : mesh.triangles) {
        const Vec3 a = mesh.positions[t[0]] - p;
        const Vec3 b = mesh.positions[t[1]] - p;
        const Vec3 c = mesh.positions[t[2]] - p;
        const double la = length(a);
        const double lb = length(b);
        const double lc = length(c);
        sum += 2.0 * std::atan2(dot(a, cross(b, c)),
                                la * lb * lc + dot(a, b) * lc + dot(b, c) * la + dot(c, a) * lb);
    }
    return sum > 6.0;
}

const Mesh &meshNamed(const SamplePatient &patient, const std::string &name)
{
    for (const NamedMesh &named : patient.meshes)
        if (named.name == name) return named.mesh;
    throw std::runtime_error("There is no mesh " + name);
}

template<typename... Arguments>
std::string line(const char *format, Arguments... arguments)
{
    char buffer[200];
    std::snprintf(buffer, sizeof buffer, format, arguments...);
    return buffer;
}

std::string triangleLines(const SamplePatient &patient)
{
    std::size_t teeth = 0;
    std::size_t brackets = 0;
    std::size_t buttons = 0;
    std::size_t gums = 0;
    for (const NamedMesh &named : patient.meshes) {
        const std::size_t count = named.mesh.triangles.size();
        if (named.name.starts_with("_tooth"))
            teeth += count;
        else if (named.name.starts_with("bracket"))
            brackets += count;
        else if (named.name.starts_with("button"))
            buttons += count;
        else
            gums += count;
    }
    return line("Triangles: teeth %zu, brackets %zu, buttons %zu, gums %zu, all %zu\n", teeth,
                brackets, buttons, gums, teeth + brackets + buttons + gums);
}

} // namespace

std::vector<ToothMeasures> measureTeeth(const SamplePatient &patient)
{
    std::vector<ToothMeasures> result;
    for (const Tooth &tooth : patient.teeth) {
        const ToothPlacement &placement = tooth.placement;
        const Mesh &mesh = meshNamed(patient, "_tooth_" + std::to_string(placement.number));
        Vec3 low{1e9, 1e9, 1e9};
        Vec3 high{-1e9, -1e9, -1e9};
        for (const Vec3 &p : mesh.positions) {
            const Vec3 own = placement.toOwn(p);
            low = {std::min(low.x, own.x), std::min(low.y, own.y), std::min(low.z, own.z)};
            high = {std::max(high.x, own.x), std::max(high.y, own.y), std::max(high.z, own.z)};
        }
        // Height counts from the facial cervical line, the origin of the tooth's own coordinates.
        result.push_back({placement.number, high.x - low.x, high.y - low.y, high.z});
    }
    return result;
}

std::vector<AnchorMeasure> measureAnchors(const SamplePatient &patient,
                                          const std::string &parameters)
{
    std::ifstream file(parameters + "/anchors.csv");
    if (!file) throw std::runtime_error("Cannot read \"" + parameters + "/anchors.csv\"");
    std::vector<AnchorMeasure> result;
    std::string text;
    std::getline(file, text);
    while (std::getline(file, text)) {
        std::replace(text.begin(), text.end(), ',', ' ');
        std::istringstream columns(text);
        columns.imbue(std::locale::classic());
        AnchorMeasure measure;
        Vec3 p;
        Vec3 direction;
        std::string jaw;
        if (!(columns >> measure.index >> p.x >> p.y >> p.z >> direction.x >> direction.y >>
              direction.z >> jaw))
            throw std::runtime_error("Malformed anchor in \"" + parameters + "/anchors.csv\"");
        measure.upper = jaw == "yes";
        measure.toothDistance = 1e9;
        double bracketDistance = 1e9;
        for (const Tooth &tooth : patient.teeth) {
            if (tooth.placement.upper != measure.upper) continue;
            const std::string key = std::to_string(tooth.placement.number);
            const Mesh &mesh = meshNamed(patient, "_tooth_" + key);
            double d = distanceToMesh(p, mesh);
            if (d < 8.0 && isInside(p, mesh)) d = -d;
            if (d < measure.toothDistance) {
                measure.toothDistance = d;
                measure.nearestTooth = tooth.placement.number;
            }
            bracketDistance =
                std::min(bracketDistance, distanceToMesh(p, meshNamed(patient, "bracket_" + key)));
        }
        measure.surfaceDistance = std::min(measure.toothDistance, bracketDistance);
        result.push_back(measure);
    }
    return result;
}

std::string report(const SamplePatient &patient, const std::string &parameters)
{
    std::string text = triangleLines(patient);
    const HookTable hooks = readHooks(parameters + "/hooks.csv");
    text += "\nTooth: mesiodistal, buccolingual, height (mm); in brackets the difference from the "
            "tables' widths in %; hook and button: distance from the crown\n";
    const std::vector<ToothMeasures> measures = measureTeeth(patient);
    for (std::size_t i = 0; i < measures.size(); ++i) {
        const ToothMeasures &m = measures[i];
        const CrownDimensions table = toothAnatomy(m.number).dimensions;
        const std::string key = std::to_string(m.number);
        const Mesh &mesh = meshNamed(patient, "_tooth_" + key);
        text += line("%2d: %5.2f (%+.1f) %5.2f (%+.1f) %5.2f (%+.1f); hook %.2f, button %.2f\n",
                     m.number, m.mesiodistal, 100.0 * (m.mesiodistal / table.mesiodistal - 1.0),
                     m.buccolingual, 100.0 * (m.buccolingual / table.buccolingual - 1.0), m.height,
                     100.0 * (m.height / table.height - 1.0),
                     distanceToMesh(hooks.at(key).position, mesh),
                     distanceToMesh(hooks.at(key + "l").position, mesh));
    }
    text += "\nGaps between neighbours (mm, negative: overlap)\n";
    for (std::size_t i = 0; i + 1 < patient.teeth.size(); ++i)
        if (patient.teeth[i].placement.upper == patient.teeth[i + 1].placement.upper)
            text += line("%2d-%2d: %+.3f\n", patient.teeth[i].placement.number,
                         patient.teeth[i + 1].placement.number,
                         contactGap(patient.teeth[i], patient.teeth[i + 1]));
    text += "\nAnchors: distance from the nearest tooth (negative: inside) and surface (mm)\n";
    for (const AnchorMeasure &m : measureAnchors(patient, parameters)) {
        const bool good = m.toothDistance > 0.0 && m.surfaceDistance <= 2.0;
        text += line("%3d %s %2d: %+.2f %+.2f%s\n", m.index, m.upper ? "upper" : "lower",
                     m.nearestTooth, m.toothDistance, m.surfaceDistance, good ? "" : " !");
    }
    return text;
}

} // namespace kelo::meshgen
