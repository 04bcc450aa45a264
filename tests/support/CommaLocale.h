#pragma once

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace kelo::test {

/// A process locale whose decimal point is a comma, for as long as this lives. No such locale need
/// be installed: its LC_NUMERIC file is written here.
class CommaLocale
{
public:
    CommaLocale()
    {
        std::string name = std::filesystem::temp_directory_path() / "localeXXXXXX";
        _folder = ::mkdtemp(name.data());
        std::filesystem::create_directory(_folder / "comma");
        std::ofstream file(_folder / "comma" / "LC_NUMERIC", std::ios::binary);
        const auto number = [&file](std::uint32_t value) {
            file.write(reinterpret_cast<const char *>(&value), sizeof value);
        };
        // The C library's layout: magic number of the category, number of fields, their offsets,
        // the fields: decimal point, thousands separator, grouping, both as wide characters, code
        // set.
        constexpr std::uint32_t fieldCount = 6, header = 4 * (2 + fieldCount);
        number(0x20031115u ^ LC_NUMERIC);
        number(fieldCount);
        for (const std::uint32_t offset : {0u, 2u, 4u, 8u, 12u, 16u})
            number(header + offset);
        file.write(",\0.\0\3\3\0\0", 8);
        number(',');
        number('.');
        file.write("UTF-8\0\0\0", 8);
        file.close();
        ::setenv("LOCPATH", _folder.c_str(), 1);
        set = std::setlocale(LC_NUMERIC, "comma") != nullptr;
    }
    ~CommaLocale()
    {
        std::setlocale(LC_NUMERIC, "C");
        ::unsetenv("LOCPATH");
        std::filesystem::remove_all(_folder);
    }

    bool set = false;

private:
    std::filesystem::path _folder;
};

} // namespace kelo::test
