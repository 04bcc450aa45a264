#include "tools/meshgen/ParameterTable.h"

#include "tools/meshgen/TableCells.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace kelo::meshgen {

namespace {

class TableReader
{
public:
    TableReader(const std::string &path, const std::vector<ColumnRule> &rules) : rules_(rules)
    {
        row_.path = path;
    }
    void read(const std::function<void(const ParameterRow &)> &take);

private:
    void readHeading(std::string_view line);
    void readValues(std::string_view line);
    double valueOf(std::string_view cell, const ColumnRule &rule) const;

    const std::vector<ColumnRule> &rules_;
    ParameterRow row_;
    std::vector<std::size_t> heading_; ///< of each cell, the index of its rule
};

void TableReader::read(const std::function<void(const ParameterRow &)> &take)
{
    std::ifstream file(row_.path);
    if (!file) throw std::runtime_error(row_.path + ": cannot be read: " + std::strerror(errno));
    std::string text;
    while (std::getline(file, text)) {
        ++row_.lineNumber;
        const std::string_view line = trimmed(text);
        if (line.empty() || line.front() == '#') continue;
        if (heading_.empty()) {
            readHeading(line);
        } else {
            readValues(line);
            take(row_);
        }
    }
    if (heading_.empty()) throw std::runtime_error(row_.path + ": there is no heading line");
}

void TableReader::readHeading(std::string_view line)
{
    const std::vector<std::string_view> names = cellsOf(line);
    for (const std::string_view name : names) {
        const auto rule = std::find_if(rules_.begin(), rules_.end(),
                                       [&](const ColumnRule &one) { return one.name == name; });
        if (rule == rules_.end()) row_.fail("unknown column " + inQuotes(name));
        if (std::count(names.begin(), names.end(), name) > 1)
            row_.fail("column " + inQuotes(name) + " stands here twice");
        heading_.push_back(static_cast<std::size_t>(rule - rules_.begin()));
    }
    for (const ColumnRule &rule : rules_)
        if (rule.isRequired && std::find(names.begin(), names.end(), rule.name) == names.end())
            row_.fail("column " + inQuotes(rule.name) + " is missing");
}

void TableReader::readValues(std::string_view line)
{
    const std::vector<std::string_view> cells = cellsOf(line);
    if (cells.size() != heading_.size())
        row_.fail(std::to_string(cells.size()) + " cells instead of " +
                  std::to_string(heading_.size()));
    row_.values.assign(rules_.size(), std::nullopt);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const ColumnRule &rule = rules_[heading_[i]];
        if (!cells[i].empty())
            row_.values[heading_[i]] = valueOf(cells[i], rule);
        else if (rule.isRequired)
            row_.fail("column " + inQuotes(rule.name) + " is empty");
    }
}

double TableReader::valueOf(std::string_view cell, const ColumnRule &rule) const
{
    const std::optional<double> value = numberOf(cell);
    if (!value)
        row_.fail("malformed number " + inQuotes(cell) + " in column " + inQuotes(rule.name));
    if (rule.name == "tooth" && !isToothNumber(*value))
        row_.fail("there is no tooth " + std::string(cell) + ": 2 to 15 or 18 to 31");
    // Written so that "not a number" is refused too.
    if (!(*value >= rule.least && *value <= rule.greatest))
        row_.fail(std::string(cell) + " in column " + inQuotes(rule.name) + " is not between " +
                  plain(rule.least) + " and " + plain(rule.greatest));
    return *value;
}

} // namespace

void ParameterRow::fail(const std::string &reason) const
{
    throw std::runtime_error(path + ':' + std::to_string(lineNumber) + ": " + reason);
}

void readParameterTable(const std::string &path, const std::vector<ColumnRule> &rules,
                        const std::function<void(const ParameterRow &)> &take)
{
    TableReader(path, rules).read(take);
}

} // namespace kelo::meshgen
