#include "platform/VersionChecker.h"

namespace kelo {
namespace {

VersionChecker::Generation generation = VersionChecker::Generation::MountainLion;

} // namespace

bool VersionChecker::isLionOrLater()
{
    return generation != Generation::BeforeLion;
}

bool VersionChecker::isMountainLionOrLater()
{
    return generation == Generation::MountainLion;
}

void VersionChecker::setGeneration(Generation newGeneration)
{
    generation = newGeneration;
}

} // namespace kelo
