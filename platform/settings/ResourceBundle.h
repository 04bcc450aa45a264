#pragma once

#include "base/Export.h"

#include <memory>
#include <optional>
#include <string>

namespace kelo {

/// The library's own bundle: meshes, images, interface files. Hosts call it keloOpenGLBundleKey.
inline constexpr char libraryBundleIdentifier[] = "keloOpenGL";

/// A folder of resources, found by the identifier that stands in its file `bundle-identifier`.
class KELO_EXPORT ResourceBundle
{
public:
    /// Finds the bundle with this identifier. Looked at in order: the folder given to
    /// setSearchFolder and `<identifier>` in it; `../share/<identifier>` and `<identifier>` seen
    /// from the folder of the running program (the build tree and an installation look alike
    /// there); `<identifier>` in the share folder beside the shared library; the folder given to
    /// setPackageFolder; and `<identifier>` in the share folder of the prefix that the library was
    /// configured for. A folder counts when the first line of `bundle-identifier` is the identifier
    /// (blanks around it do not matter). Null when none counts. A found bundle is kept and returned
    /// again. An identifier that is empty, or is no plain folder name, is never found.
    static std::shared_ptr<const ResourceBundle>
    bundleWithIdentifier(const std::string &identifier);

    /// A setting that comes before every other place; an empty string takes it back. Forgets the
    /// bundles found so far.
    static void setSearchFolder(const std::string &folder);

    /// The folder of the library's own bundle as find_package found it. The package calls this in
    /// hosts of the static library, before main; a host has no need to.
    static void setPackageFolder(const std::string &folder);

    /// A bundle of any folder, whether or not it holds an identifier; for hosts and tests. Null
    /// when there is no such folder.
    static std::shared_ptr<const ResourceBundle> bundleWithPath(const std::string &folder);

    const std::string &bundlePath() const { return path_; }
    const std::string &bundleIdentifier() const { return identifier_; }

    /// The path of the readable file `name.type` (`name`, when the type is empty) in the bundle, or
    /// nothing when there is none. The name may lead into folders of the bundle, not out of it.
    std::optional<std::string> pathForResource_ofType(const std::string &name,
                                                      const std::string &type) const;

private:
    ResourceBundle(std::string path, std::string identifier);
    std::string path_;
    std::string identifier_;
};

} // namespace kelo
