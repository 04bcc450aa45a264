#pragma once

#include <memory>
#include <optional>
#include <string>

namespace kelo {

/// A folder of resources, found by the identifier that stands in its file `bundle-identifier`.
class ResourceBundle
{
public:
    /// Finds the bundle with this identifier. Looked at in order: the folder given to
    /// setSearchFolder, `../share/<identifier>` and `<identifier>` seen from the running program
    /// (the build tree and an installation look alike there), and the share folder of the prefix
    /// that the library was installed under. Null when none of them holds the identifier. A found
    /// bundle is kept and returned again.
    static std::shared_ptr<const ResourceBundle> bundleWithIdentifier(const std::string &identifier);

    /// A setting that comes before every other place; an empty string takes it back. Forgets the
    /// bundles found so far.
    static void setSearchFolder(const std::string &folder);

    /// A bundle of any folder, whether or not it holds an identifier; for hosts and tests.
    static std::shared_ptr<const ResourceBundle> bundleWithPath(const std::string &folder);

    const std::string &bundlePath() const { return path_; }
    const std::string &bundleIdentifier() const { return identifier_; }

    /// The path of the readable file `name.type` in the bundle, or nothing when there is none.
    std::optional<std::string> pathForResource_ofType(const std::string &name,
                                                      const std::string &type) const;

private:
    ResourceBundle(std::string path, std::string identifier);
    std::string path_;
    std::string identifier_;
};

} // namespace kelo
