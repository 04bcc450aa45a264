#include "tools/meshgen/Report.h"

#include "tools/meshgen/Bite.h"
#include "tools/meshgen/MeshDistance.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace kelo::meshgen {

namespace {

const Mesh &meshNamed(const Patient &patient, const std::string &name)
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

std::string triangleLines(const Patient &patient)
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

std::vector<ToothMeasures> measureTeeth(const Patient &patient)
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

std::vector<AnchorMeasure> measureAnchors(const Patient &patient, const std::string &tables)
{
    std::ifstream file(tables + "/anchors.csv");
    if (!file) throw std::runtime_error("Cannot read \"" + tables + "/anchors.csv\"");
    struct Bonded
    {
        const ToothPlacement *placement = nullptr;
        MeshDistance tooth, bracket;
    };
    std::vector<Bonded> all;
    for (const Tooth &tooth : patient.teeth) {
        const std::string key = std::to_string(tooth.placement.number);
        all.push_back({&tooth.placement, MeshDistance(meshNamed(patient, "_tooth_" + key)),
                       MeshDistance(meshNamed(patient, "bracket_" + key))});
    }
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
            throw std::runtime_error("Malformed anchor in \"" + tables + "/anchors.csv\"");
        measure.upper = jaw == "yes";
        measure.toothDistance = 1e9;
        double bracketDistance = 1e9;
        for (const Bonded &bonded : all) {
            if (bonded.placement->upper != measure.upper) continue;
            const double d = bonded.tooth.signedDistance(p);
            if (d < measure.toothDistance) {
                measure.toothDistance = d;
                measure.nearestTooth = bonded.placement->number;
            }
            bracketDistance = std::min(bracketDistance, bonded.bracket.distanceWithin(p, 1e9));
        }
        measure.surfaceDistance = std::min(measure.toothDistance, bracketDistance);
        result.push_back(measure);
    }
    return result;
}

namespace {

std::string sizeLines(const Patient &patient, const HookTable &hooks)
{
    std::string text =
        "\nTooth: mesiodistal, buccolingual, height (mm); in brackets the difference from the "
        "tables' widths in %; hook and button: distance from the crown\n";
    for (const ToothMeasures &m : measureTeeth(patient)) {
        const CrownDimensions table = toothAnatomy(m.number).dimensions;
        const std::string key = std::to_string(m.number);
        const MeshDistance tooth(meshNamed(patient, "_tooth_" + key));
        text += line("%2d: %5.2f (%+.1f) %5.2f (%+.1f) %5.2f (%+.1f); hook %.2f, button %.2f\n",
                     m.number, m.mesiodistal, 100.0 * (m.mesiodistal / table.mesiodistal - 1.0),
                     m.buccolingual, 100.0 * (m.buccolingual / table.buccolingual - 1.0), m.height,
                     100.0 * (m.height / table.height - 1.0),
                     tooth.signedDistance(hooks.at(key).position),
                     tooth.signedDistance(hooks.at(key + "l").position));
    }
    return text;
}

std::string contactLines(const Patient &patient)
{
    std::string text = "\nGaps between neighbours (mm, negative: overlap)\n";
    for (std::size_t i = 0; i + 1 < patient.teeth.size(); ++i)
        if (patient.teeth[i].placement.upper == patient.teeth[i + 1].placement.upper)
            text += line("%2d-%2d: %+.3f\n", patient.teeth[i].placement.number,
                         patient.teeth[i + 1].placement.number,
                         contactGap(patient.teeth[i], patient.teeth[i + 1]));
    return text;
}

std::string biteLines(const char *heading, const std::vector<BiteMeasure> &pairs)
{
    std::string text = heading;
    for (const BiteMeasure &m : pairs)
        text += m.upper + ' ' + m.lower + line(": %+.2f\n", m.clearance - m.overlap);
    return text;
}

} // namespace

std::string report(const Patient &patient, const std::string &tables)
{
    std::string text = triangleLines(patient);
    text += sizeLines(patient, readHooks(tables + "/hooks.csv"));
    text += contactLines(patient);
    text +=
        biteLines("\nThe bite: distances of teeth (mm, negative: overlap)\n", biteOfTeeth(patient));
    text += biteLines("\nThe bite: distances of brackets and buttons (mm, negative: overlap)\n",
                      biteOfAttachments(patient));
    text += "\nAnchors: distance from the nearest tooth (negative: inside) and surface (mm)\n";
    for (const AnchorMeasure &m : measureAnchors(patient, tables)) {
        const bool good = m.toothDistance >= -0.2 && m.surfaceDistance <= 2.0;
        text += line("%3d %s %2d: %+.2f %+.2f%s\n", m.index, m.upper ? "upper" : "lower",
                     m.nearestTooth, m.toothDistance, m.surfaceDistance, good ? "" : " !");
    }
    return text;
}

} // namespace kelo::meshgen
