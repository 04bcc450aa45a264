#include "tests/house/SourceTree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace kelo::test {
namespace {

const std::filesystem::path &root()
{
    static const std::filesystem::path path = KELO_SOURCE_DIR;
    return path;
}

bool isLeftOut(const std::filesystem::path &relative)
{
    for (const char *folder : {".git", ".cache", "build", "out", "shared"})
        if (*relative.begin() == folder) return true;
    return false;
}

} // namespace

std::vector<std::string> sourceFiles()
{
    std::vector<std::string> files;
    for (auto it = std::filesystem::recursive_directory_iterator(root());
         it != std::filesystem::recursive_directory_iterator(); ++it) {
        const std::filesystem::path relative = it->path().lexically_relative(root());
        if (isLeftOut(relative)) {
            if (it->is_directory()) it.disable_recursion_pending();
            continue;
        }
        if (it->is_regular_file()) files.push_back(relative.generic_string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool existsInSourceTree(const std::string &path)
{
    return std::filesystem::exists(root() / path);
}

std::string contentOfSourceFile(const std::string &path)
{
    std::ifstream file(root() / path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

bool contains(const std::vector<std::string> &list, const std::string &wanted)
{
    return std::find(list.begin(), list.end(), wanted) != list.end();
}

std::vector<std::string> linesOf(const std::string &text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

bool startsWith(const std::string &text, const std::string &start)
{
    return text.compare(0, start.size(), start) == 0;
}

bool endsWith(const std::string &text, const std::string &end)
{
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace kelo::test
