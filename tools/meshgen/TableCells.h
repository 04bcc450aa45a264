#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::meshgen {

/// Without the blanks and carriage returns at both ends.
inline std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// What stands between the commas of a line, trimmed.
inline std::vector<std::string_view> cellsOf(std::string_view line)
{
    std::vector<std::string_view> cells;
    while (true) {
        const std::size_t comma = line.find(',');
        cells.push_back(trimmed(line.substr(0, comma)));
        if (comma == std::string_view::npos) return cells;
        line.remove_prefix(comma + 1);
    }
}

/// The number that a cell consists of, whatever the locale; nothing if it is no number.
inline std::optional<double> numberOf(std::string_view cell)
{
    double value = 0.0;
    const auto result = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    if (result.ec != std::errc() || result.ptr != cell.data() + cell.size()) return std::nullopt;
    return value;
}

inline std::string inQuotes(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

/// A number as a person writes it: without zeros after the last significant digit.
inline std::string plain(double value)
{
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return {text, result.ptr};
}

/// Whether it is the universal number of a tooth that a patient has: no wisdom tooth.
inline bool isToothNumber(double value)
{
    const bool upper = value >= 2.0 && value <= 15.0;
    const bool lower = value >= 18.0 && value <= 31.0;
    return (upper || lower) && value == static_cast<int>(value);
}

} // namespace kelo::meshgen
