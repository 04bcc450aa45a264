#include "tools/meshgen/PatientFile.h"

#include "tools/meshgen/TableCells.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace kelo::meshgen {

namespace {

/// One column: the least and greatest value that make a tooth, and where the value goes.
struct Column
{
    std::string_view name;
    double least = 0.0;
    double greatest = 0.0;
    bool isRequired = false;
    void (*store)(ToothParameters &tooth, double value) = nullptr;
};

constexpr Column columns[] = {
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

class PatientReader
{
public:
    explicit PatientReader(const std::string &file) : path(file) {}
    PatientParameters read();

private:
    [[noreturn]] void fail(const std::string &reason) const
    {
        throw std::runtime_error(path + ':' + std::to_string(lineNumber) + ": " + reason);
    }
    void readHeading(std::string_view line);
    void readTooth(std::string_view line);
    double number(std::string_view cell, std::string_view column) const;

    const std::string &path;
    int lineNumber = 0;
    std::size_t toothCell = 0;
    std::vector<const Column *> heading; // nullptr for the tooth's own number
    PatientParameters teeth;
    std::map<int, int> lines; // on which a tooth stands
};

PatientParameters PatientReader::read()
{
    std::ifstream file(path);
    if (!file) throw std::runtime_error(path + ": cannot be read: " + std::strerror(errno));
    std::string text;
    while (std::getline(file, text)) {
        ++lineNumber;
        const std::string_view line = trimmed(text);
        if (line.empty() || line.front() == '#') continue;
        heading.empty() ? readHeading(line) : readTooth(line);
    }
    if (heading.empty()) throw std::runtime_error(path + ": there is no heading line");
    for (int tooth = 2; tooth <= 31; ++tooth)
        if (isToothNumber(tooth) && !teeth.contains(tooth))
            throw std::runtime_error(path + ": tooth " + std::to_string(tooth) + " is missing");
    return std::move(teeth);
}

void PatientReader::readHeading(std::string_view line)
{
    std::vector<std::string_view> names = cellsOf(line);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto column = std::find_if(std::begin(columns), std::end(columns),
                                         [&](const Column &c) { return c.name == names[i]; });
        const bool isTooth = names[i] == "tooth";
        if (!isTooth && column == std::end(columns)) fail("unknown column " + inQuotes(names[i]));
        if (std::count(names.begin(), names.end(), names[i]) > 1)
            fail("column " + inQuotes(names[i]) + " stands here twice");
        if (isTooth) toothCell = i;
        heading.push_back(isTooth ? nullptr : &*column);
    }
    const auto require = [&](std::string_view name) {
        if (std::find(names.begin(), names.end(), name) == names.end())
            fail("column " + inQuotes(name) + " is missing");
    };
    require("tooth");
    for (const Column &column : columns)
        if (column.isRequired) require(column.name);
}

double PatientReader::number(std::string_view cell, std::string_view column) const
{
    const std::optional<double> value = numberOf(cell);
    if (!value) fail("malformed number " + inQuotes(cell) + " in column " + inQuotes(column));
    return *value;
}

void PatientReader::readTooth(std::string_view line)
{
    const std::vector<std::string_view> cells = cellsOf(line);
    if (cells.size() != heading.size())
        fail(std::to_string(cells.size()) + " cells instead of " + std::to_string(heading.size()));
    ToothParameters tooth;
    const double named = number(cells[toothCell], "tooth");
    if (!isToothNumber(named))
        fail("there is no tooth " + std::string(cells[toothCell]) + ": 2 to 15 or 18 to 31");
    tooth.number = static_cast<int>(named);
    const auto [other, isNew] = lines.try_emplace(tooth.number, lineNumber);
    if (!isNew)
        fail("tooth " + std::to_string(tooth.number) + " stands on line " +
             std::to_string(other->second) + " already");
    tooth.anatomy = toothAnatomy(tooth.number);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (!heading[i]) continue;
        const Column &column = *heading[i];
        if (cells[i].empty() && column.isRequired)
            fail("column " + inQuotes(column.name) + " is empty");
        if (cells[i].empty()) continue;
        const double value = number(cells[i], column.name);
        // Written so that "not a number" is refused too.
        if (!(value >= column.least && value <= column.greatest))
            fail(std::string(cells[i]) + " in column " + inQuotes(column.name) +
                 " is not between " + plain(column.least) + " and " + plain(column.greatest));
        column.store(tooth, value);
    }
    teeth.emplace(tooth.number, std::move(tooth));
}

} // namespace

PatientParameters readPatient(const std::string &path)
{
    return PatientReader(path).read();
}

} // namespace kelo::meshgen
