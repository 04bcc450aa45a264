#pragma once

#include "base/Export.h"

namespace kelo {

/// Questions about the generation of the desktop system, by which drawing code chooses between its
/// newer and its older path. Every system that this library runs on is of the newer generation, so
/// both answer true.
class KELO_EXPORT VersionChecker
{
public:
    /// The system gives backing-store sizes that differ from sizes in points.
    static bool isLionOrLater();
    /// The system draws images through drawing handlers.
    static bool isMountainLionOrLater();
};

} // namespace kelo
