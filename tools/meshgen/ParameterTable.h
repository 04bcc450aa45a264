#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::meshgen {

/// What a column of a parameter file holds, and where the value goes. The column "tooth" holds
/// universal tooth numbers.
template<class Record>
struct ParameterColumn
{
    std::string_view name;
    double least = 0.0;
    double greatest = 0.0;
    bool isRequired = false;
    void (*store)(Record &record, double value) = nullptr;
};

/// The same without the record.
struct ColumnRule
{
    std::string_view name;
    double least = 0.0;
    double greatest = 0.0;
    bool isRequired = false;
};

template<class Record, std::size_t count>
std::vector<ColumnRule> rulesOf(const ParameterColumn<Record> (&columns)[count])
{
    std::vector<ColumnRule> rules;
    for (const auto &column : columns)
        rules.push_back({column.name, column.least, column.greatest, column.isRequired});
    return rules;
}

/// One line of a parameter file.
struct ParameterRow
{
    int lineNumber = 0;
    /// In the order of the rules; nothing where the file leaves the value out.
    std::vector<std::optional<double>> values;
    std::string path;

    /// Throws std::runtime_error with the file, the line and the reason.
    [[noreturn]] void fail(const std::string &reason) const;

    template<class Record, std::size_t count>
    void storeIn(Record &record, const ParameterColumn<Record> (&columns)[count]) const
    {
        for (std::size_t i = 0; i < count; ++i)
            if (values[i]) columns[i].store(record, *values[i]);
    }
};

/// Reads a file of parameters: cells divided by commas, under a heading line that names the columns
/// in any order; lines that are empty or begin with # do not count. Every line is handed on as soon
/// as it is read. Throws std::runtime_error with the file, the line and the reason for whatever
/// breaks the rules.
void readParameterTable(const std::string &path, const std::vector<ColumnRule> &rules,
                        const std::function<void(const ParameterRow &)> &take);

} // namespace kelo::meshgen
