#pragma once

#include "base/Export.h"

/// Not installed: open to the tests of the older drawing paths.

namespace kelo {

/// What VersionChecker answers by.
enum class SystemGeneration { BeforeLion, Lion, MountainLion };

/// MountainLion at first.
KELO_EXPORT void setSystemGeneration(SystemGeneration generation);

} // namespace kelo
