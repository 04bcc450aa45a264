#pragma once

#include "base/Export.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kelo {

/// A mesh that could not be loaded, and why.
struct KELO_EXPORT MeshFailure
{
    /// The name key that the mesh was to be loaded for, or "upper gums" or "lower gums"; empty for
    /// a file that was loaded without one.
    std::string key;
    /// The path, as it was given.
    std::string file;
    /// The line as an editor counts, where it is known; 0 if it concerns the file as a whole.
    std::size_t line = 0;
    /// What is wrong, in one line of English: "cannot be read: No such file or directory".
    std::string reason;

    /// `FILE:LINE: REASON (KEY)`, without what is empty or 0, and with control characters escaped.
    std::string sentence() const;

    bool operator==(const MeshFailure &) const = default;
};

/// In the order in which the meshes were to be loaded.
using MeshFailures = std::vector<MeshFailure>;

} // namespace kelo
