#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::test {

/// A row of a table file, its cells as they are written.
using TableRow = std::vector<std::string>;

/// The rows of a file of tests/keloOpenGL/bands/data, without the line of titles.
inline std::vector<TableRow> rowsOfTable(const std::string &fileName)
{
    std::ifstream file(std::string(KELO_BAND_TABLES) + "/" + fileName);
    EXPECT_TRUE(file.is_open()) << fileName;
    std::vector<TableRow> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        TableRow row;
        std::size_t begin = 0;
        for (std::size_t comma = 0; comma != std::string::npos; begin = comma + 1) {
            comma = line.find(',', begin);
            row.push_back(line.substr(begin, comma - begin));
        }
        rows.push_back(row);
    }
    return rows;
}

/// The number in a whole cell, rounded once to the type asked for.
template<class Number>
Number numberOf(std::string_view cell)
{
    Number number{};
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    EXPECT_EQ(error, std::errc()) << cell;
    EXPECT_EQ(end, cell.data() + cell.size()) << cell;
    return number;
}

} // namespace kelo::test
