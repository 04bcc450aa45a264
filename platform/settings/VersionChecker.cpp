#include "platform/settings/VersionChecker.h"

#include "platform/settings/SystemGeneration.h"

namespace kelo {
namespace {

SystemGeneration generation = SystemGeneration::MountainLion;

} // namespace

bool VersionChecker::isLionOrLater()
{
    return generation != SystemGeneration::BeforeLion;
}

bool VersionChecker::isMountainLionOrLater()
{
    return generation == SystemGeneration::MountainLion;
}

void setSystemGeneration(SystemGeneration newGeneration)
{
    generation = newGeneration;
}

} // namespace kelo
