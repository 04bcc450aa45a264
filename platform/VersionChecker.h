#pragma once

#include "keloOpenGL/Export.h"

namespace kelo {

/// Questions about the generation of the desktop system, by which drawing code chooses between its
/// newer and its older path. Every system that this library runs on is of the newer generation, so
/// both answer true until a test asks for the older path.
class KELO_EXPORT VersionChecker
{
public:
    /// The system gives backing-store sizes that differ from sizes in points.
    static bool isLionOrLater();
    /// The system draws images through drawing handlers.
    static bool isMountainLionOrLater();

    enum class Generation { BeforeLion, Lion, MountainLion };
    /// For tests of the older paths.
    static void setGeneration(Generation generation);
};

} // namespace kelo
