#include "platform/settings/ResourceBundle.h"

#include <QCoreApplication>

#include <dlfcn.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <utility>
#include <vector>

namespace kelo {
namespace {

namespace fs = std::filesystem;

std::string &searchFolder()
{
    static std::string folder;
    return folder;
}

std::string &packageFolder()
{
    static std::string folder;
    return folder;
}

std::map<std::string, std::shared_ptr<const ResourceBundle>> &foundBundles()
{
    static std::map<std::string, std::shared_ptr<const ResourceBundle>> bundles;
    return bundles;
}

/// The first line of the folder's identifier file without blanks around it; empty without a file.
std::string identifierOf(const fs::path &folder)
{
    std::ifstream file(folder / "bundle-identifier");
    std::string line;
    std::getline(file, line);
    const char *blanks = " \t\r";
    const std::size_t first = line.find_first_not_of(blanks);
    if (first == std::string::npos) return {};
    return line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

fs::path programFolder()
{
    // Works before there is an application object, and with a renamed or linked program.
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error) return program.parent_path();
    if (QCoreApplication::instance()) return QCoreApplication::applicationDirPath().toStdString();
    return {};
}

/// The share folder beside the shared library; with the static one, the program's.
fs::path shareFolderOfLibrary()
{
    Dl_info library;
    if (dladdr(reinterpret_cast<const void *>(&shareFolderOfLibrary), &library) == 0) return {};
    std::error_code error;
    // The name can be one of the links beside the library, or relative to the folder of the start.
    const fs::path file = fs::canonical(library.dli_fname, error);
    return error ? fs::path() : file.parent_path() / KELO_DATA_DIR_FROM_LIBRARY;
}

bool isPlainName(const std::string &name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
}

bool leadsOut(const fs::path &path)
{
    if (path.is_absolute()) return true;
    for (const fs::path &part : path)
        if (part == "..") return true;
    return false;
}

std::vector<fs::path> foldersToSearch(const std::string &identifier)
{
    std::vector<fs::path> folders;
    if (!searchFolder().empty()) {
        folders.emplace_back(searchFolder());
        folders.push_back(fs::path(searchFolder()) / identifier);
    }
    if (const fs::path program = programFolder(); !program.empty()) {
        folders.push_back(program.parent_path() / "share" / identifier);
        folders.push_back(program / identifier);
    }
    if (const fs::path share = shareFolderOfLibrary(); !share.empty())
        folders.push_back(share / identifier);
    if (!packageFolder().empty()) folders.emplace_back(packageFolder());
    folders.push_back(fs::path(KELO_INSTALL_DATA_DIR) / identifier);
    return folders;
}

} // namespace

ResourceBundle::ResourceBundle(std::string path, std::string identifier)
    : path_(std::move(path)), identifier_(std::move(identifier))
{}

std::shared_ptr<const ResourceBundle>
ResourceBundle::bundleWithIdentifier(const std::string &identifier)
{
    if (!isPlainName(identifier)) return nullptr;
    const auto known = foundBundles().find(identifier);
    if (known != foundBundles().end()) return known->second;
    for (const fs::path &folder : foldersToSearch(identifier)) {
        if (identifierOf(folder) != identifier) continue;
        auto bundle = bundleWithPath(folder.string());
        foundBundles()[identifier] = bundle;
        return bundle;
    }
    return nullptr;
}

void ResourceBundle::setSearchFolder(const std::string &folder)
{
    searchFolder() = folder;
    foundBundles().clear();
}

void ResourceBundle::setPackageFolder(const std::string &folder)
{
    packageFolder() = folder;
    foundBundles().clear();
}

std::shared_ptr<const ResourceBundle> ResourceBundle::bundleWithPath(const std::string &folder)
{
    std::error_code error;
    if (!fs::is_directory(folder, error)) return nullptr;
    return std::shared_ptr<const ResourceBundle>(new ResourceBundle(folder, identifierOf(folder)));
}

std::optional<std::string> ResourceBundle::pathForResource_ofType(const std::string &name,
                                                                  const std::string &type) const
{
    const fs::path file = type.empty() ? name : name + "." + type;
    if (name.empty() || leadsOut(file)) return std::nullopt;
    const fs::path path = fs::path(path_) / file;
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return std::nullopt;
    // Opening it is the only test of readability that holds for every file system and user.
    if (!std::ifstream(path)) return std::nullopt;
    return path.string();
}

} // namespace kelo
