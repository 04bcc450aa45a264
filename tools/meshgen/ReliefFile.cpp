#include "tools/meshgen/Relief.h"
#include "tools/meshgen/TableCells.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace kelo::meshgen {

namespace {

/// One column: the least and greatest value, and where the value goes.
struct Column
{
    std::string_view name;
    double least = 0.0;
    double greatest = 0.0;
    bool isRequired = true;
    void (*store)(Relief &relief, double value) = nullptr;
};

constexpr Column columns[] = {
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

class ReliefReader
{
public:
    explicit ReliefReader(const std::string &file) : path(file) {}
    std::vector<Relief> read();

private:
    [[noreturn]] void fail(const std::string &reason) const
    {
        throw std::runtime_error(path + ':' + std::to_string(lineNumber) + ": " + reason);
    }
    void readHeading(std::string_view line);
    Relief reliefOf(std::string_view line) const;
    double value(std::string_view cell, const Column &column) const;

    const std::string &path;
    int lineNumber = 0;
    std::vector<const Column *> heading;
};

std::vector<Relief> ReliefReader::read()
{
    std::ifstream file(path);
    if (!file) throw std::runtime_error(path + ": cannot be read: " + std::strerror(errno));
    std::vector<Relief> reliefs;
    std::string text;
    while (std::getline(file, text)) {
        ++lineNumber;
        const std::string_view line = trimmed(text);
        if (line.empty() || line.front() == '#') continue;
        if (heading.empty())
            readHeading(line);
        else
            reliefs.push_back(reliefOf(line));
    }
    if (heading.empty()) throw std::runtime_error(path + ": there is no heading line");
    return reliefs;
}

void ReliefReader::readHeading(std::string_view line)
{
    const std::vector<std::string_view> names = cellsOf(line);
    for (const std::string_view name : names) {
        const auto column = std::find_if(std::begin(columns), std::end(columns),
                                         [&](const Column &c) { return c.name == name; });
        if (column == std::end(columns)) fail("unknown column " + inQuotes(name));
        if (std::count(names.begin(), names.end(), name) > 1)
            fail("column " + inQuotes(name) + " stands here twice");
        heading.push_back(&*column);
    }
    for (const Column &column : columns)
        if (column.isRequired && std::find(names.begin(), names.end(), column.name) == names.end())
            fail("column " + inQuotes(column.name) + " is missing");
}

double ReliefReader::value(std::string_view cell, const Column &column) const
{
    const std::optional<double> number = numberOf(cell);
    if (!number) fail("malformed number " + inQuotes(cell) + " in column " + inQuotes(column.name));
    if (column.name == "tooth" && !isToothNumber(*number))
        fail("there is no tooth " + std::string(cell) + ": 2 to 15 or 18 to 31");
    // Written so that "not a number" is refused too.
    if (!(*number >= column.least && *number <= column.greatest))
        fail(std::string(cell) + " in column " + inQuotes(column.name) + " is not between " +
             plain(column.least) + " and " + plain(column.greatest));
    return *number;
}

Relief ReliefReader::reliefOf(std::string_view line) const
{
    const std::vector<std::string_view> cells = cellsOf(line);
    if (cells.size() != heading.size())
        fail(std::to_string(cells.size()) + " cells instead of " + std::to_string(heading.size()));
    Relief relief;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const Column &column = *heading[i];
        if (cells[i].empty() && column.isRequired)
            fail("column " + inQuotes(column.name) + " is empty");
        if (!cells[i].empty()) column.store(relief, value(cells[i], column));
    }
    // The table rounds to hundredths, so that a unit vector is one only nearly.
    const double size = length(relief.direction);
    if (!(std::abs(size - 1.0) <= 0.05))
        fail("the direction's length is " + plain(std::round(size * 100.0) / 100.0) +
             " instead of 1");
    relief.direction = normalized(relief.direction);
    return relief;
}

} // namespace

std::vector<Relief> readReliefs(const std::string &path)
{
    return ReliefReader(path).read();
}

std::string reliefPathOf(const std::string &patientFile)
{
    const std::filesystem::path path(patientFile);
    return (path.parent_path() / (path.stem().string() + "-relief" + path.extension().string()))
        .string();
}

} // namespace kelo::meshgen
