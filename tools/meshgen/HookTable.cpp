#include "tools/meshgen/Arrangement.h"

#include <array>
#include <charconv>
#include <fstream>
#include <stdexcept>
#include <string_view>

namespace kelo::meshgen {

namespace {

std::vector<std::string_view> fields(std::string_view line)
{
    std::vector<std::string_view> result;
    while (true) {
        const std::size_t comma = line.find(',');
        result.push_back(line.substr(0, comma));
        if (comma == std::string_view::npos) return result;
        line.remove_prefix(comma + 1);
    }
}

} // namespace

HookTable readHooks(const std::string &path)
{
    std::ifstream file(path);
    if (!file) throw std::runtime_error("Cannot read \"" + path + "\"");
    HookTable table;
    std::string line;
    std::getline(file, line); // the heading
    for (int number = 2; std::getline(file, line); ++number) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) continue;
        const std::vector<std::string_view> columns = fields(line);
        std::array<double, 7> values{};
        bool readable = columns.size() == 8 && !columns[0].empty();
        for (std::size_t i = 0; readable && i < values.size(); ++i) {
            const std::string_view text = columns[i + 1];
            // from_chars never looks at the locale.
            const auto result = std::from_chars(text.data(), text.data() + text.size(), values[i]);
            readable = result.ec == std::errc() && result.ptr == text.data() + text.size();
        }
        if (!readable)
            throw std::runtime_error("Malformed hook on line " + std::to_string(number) + " of \"" +
                                     path + "\"");
        table[std::string(columns[0])] = {{values[0], values[1], values[2]},
                                          normalized({values[3], values[4], values[5]}),
                                          values[6]};
    }
    return table;
}

} // namespace kelo::meshgen
