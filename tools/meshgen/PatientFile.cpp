#include "tools/meshgen/PatientFile.h"

#include "tools/meshgen/ParameterTable.h"
#include "tools/meshgen/TableCells.h"

#include <map>
#include <stdexcept>
#include <utility>

namespace kelo::meshgen {

namespace {

using ToothColumn = ParameterColumn<ToothParameters>;

constexpr ToothColumn toothColumns[] = {
    // First, so that what the patient does not say is the anatomy of that tooth.
    {"tooth", 2.0, 31.0, true,
     [](ToothParameters &t, double v) {
         t.number = static_cast<int>(v);
         t.anatomy = toothAnatomy(t.number);
     }},
    {"edge", -25.0, 25.0, true, [](ToothParameters &t, double v) { t.edge = v; }},
    {"torque", -45.0, 45.0, true, [](ToothParameters &t, double v) { t.torque = v; }},
    {"tip", -45.0, 45.0, true, [](ToothParameters &t, double v) { t.tip = v; }},
    {"rotation", -90.0, 90.0, false, [](ToothParameters &t, double v) { t.rotation = v; }},
    {"outward", -6.0, 6.0, false, [](ToothParameters &t, double v) { t.outward = v; }},
    {"height", 4.0, 16.0, false,
     [](ToothParameters &t, double v) { t.anatomy.dimensions.height = v; }},
    {"mesiodistal", 3.0, 14.0, false,
     [](ToothParameters &t, double v) { t.anatomy.dimensions.mesiodistal = v; }},
    {"buccolingual", 4.0, 14.0, false,
     [](ToothParameters &t, double v) { t.anatomy.dimensions.buccolingual = v; }},
    {"bracket", 2.0, 7.0, false,
     [](ToothParameters &t, double v) { t.anatomy.dimensions.bracketHeight = v; }},
    {"mamelons", 0.0, 0.5, false, [](ToothParameters &t, double v) { t.anatomy.mamelons = v; }},
    {"fossa", 0.0, 1.5, false, [](ToothParameters &t, double v) { t.anatomy.fossaDepth = v; }},
    {"ridge", 0.0, 0.8, false, [](ToothParameters &t, double v) { t.anatomy.labialRidge = v; }},
    {"cusps", 0.3, 1.3, false, [](ToothParameters &t, double v) { t.anatomy.cuspHeight = v; }},
    {"grooves", 0.0, 2.0, false, [](ToothParameters &t, double v) { t.anatomy.grooveDepth = v; }},
};

} // namespace

PatientParameters readPatient(const std::string &path)
{
    PatientParameters teeth;
    std::map<int, int> lines; // on which a tooth stands
    readParameterTable(path, rulesOf(toothColumns), [&](const ParameterRow &row) {
        ToothParameters tooth;
        row.storeIn(tooth, toothColumns);
        const auto [other, isNew] = lines.try_emplace(tooth.number, row.lineNumber);
        if (!isNew)
            row.fail("tooth " + std::to_string(tooth.number) + " stands on line " +
                     std::to_string(other->second) + " already");
        teeth.emplace(tooth.number, std::move(tooth));
    });
    for (int tooth = 2; tooth <= 31; ++tooth)
        if (isToothNumber(tooth) && !teeth.contains(tooth))
            throw std::runtime_error(path + ": tooth " + std::to_string(tooth) + " is missing");
    return teeth;
}

} // namespace kelo::meshgen
