#include "keloOpenGL/menus/ToothNaming.h"

#include <utility>

namespace kelo {
namespace {

ToothNaming::Naming &namingSlot()
{
    static ToothNaming::Naming naming;
    return naming;
}

} // namespace

std::string ToothNaming::nameOf(const std::string &toothKey)
{
    // A copy: the naming may be replaced while it is asked.
    const Naming naming = namingSlot();
    return naming ? naming(toothKey) : toothKey;
}

ToothNaming::Naming ToothNaming::setNaming(Naming naming)
{
    return std::exchange(namingSlot(), std::move(naming));
}

} // namespace kelo
