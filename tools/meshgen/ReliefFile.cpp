#include "tools/meshgen/ParameterTable.h"
#include "tools/meshgen/Relief.h"
#include "tools/meshgen/TableCells.h"

#include <cmath>
#include <filesystem>

namespace kelo::meshgen {

namespace {

using ReliefColumn = ParameterColumn<Relief>;

constexpr ReliefColumn reliefColumns[] = {
    {"tooth", 2.0, 31.0, true, [](Relief &r, double v) { r.tooth = static_cast<int>(v); }},
    {"x", -50.0, 50.0, true, [](Relief &r, double v) { r.place.x = v; }},
    {"y", -50.0, 50.0, true, [](Relief &r, double v) { r.place.y = v; }},
    {"z", -50.0, 50.0, true, [](Relief &r, double v) { r.place.z = v; }},
    {"dx", -1.0, 1.0, true, [](Relief &r, double v) { r.direction.x = v; }},
    {"dy", -1.0, 1.0, true, [](Relief &r, double v) { r.direction.y = v; }},
    {"dz", -1.0, 1.0, true, [](Relief &r, double v) { r.direction.z = v; }},
    {"cover", 0.0, 1.0, false, [](Relief &r, double v) { r.cover = v; }},
    {"blend", 0.1, 2.0, false, [](Relief &r, double v) { r.blend = v; }},
    {"radius", 1.0, 10.0, false, [](Relief &r, double v) { r.radius = v; }},
};

} // namespace

std::vector<Relief> readReliefs(const std::string &path)
{
    std::vector<Relief> reliefs;
    readParameterTable(path, rulesOf(reliefColumns), [&](const ParameterRow &row) {
        Relief relief;
        row.storeIn(relief, reliefColumns);
        // The table rounds to hundredths, so that a unit vector is one only nearly.
        const double size = length(relief.direction);
        if (!(std::abs(size - 1.0) <= 0.05))
            row.fail("the direction's length is " + plain(std::round(size * 100.0) / 100.0) +
                     " instead of 1");
        relief.direction = normalized(relief.direction);
        reliefs.push_back(relief);
    });
    return reliefs;
}

std::string reliefPathOf(const std::string &patientFile)
{
    const std::filesystem::path path(patientFile);
    return (path.parent_path() / (path.stem().string() + "-relief" + path.extension().string()))
        .string();
}

} // namespace kelo::meshgen
