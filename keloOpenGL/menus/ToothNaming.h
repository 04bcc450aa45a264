#pragma once

#include "base/Export.h"

#include <functional>
#include <string>

namespace kelo {

/// How the treatment view's sentences write a tooth. Keys are universal numbers; the users of a
/// host may know another notation. One for the process, like the presenters of alerts and menus.
/// Main thread only.
class KELO_EXPORT ToothNaming
{
public:
    using Naming = std::function<std::string(const std::string &toothKey)>;

    /// The name of the tooth with this key: what the host's naming gives, at first the key itself.
    static std::string nameOf(const std::string &toothKey);
    /// Replaces the naming and returns the one before it (empty for the first); an empty function
    /// brings the first back.
    static Naming setNaming(Naming naming);
};

} // namespace kelo
