#include "keloOpenGL/editing/ElasticPlacement.h"

namespace kelo {

PlacementStep ElasticPlacement::stepForClickOn(const std::string &name) const
{
    // The first member is asked for first: a band of one closes and is never left empty.
    if (name == sequence.front()) return PlacementStep::Close;
    return name == sequence.back() ? PlacementStep::TakeBack : PlacementStep::Add;
}

void ElasticPlacement::take(PlacementStep step, const std::string &name)
{
    switch (step) {
    case PlacementStep::Add:
        sequence.push_back(name);
        break;
    case PlacementStep::TakeBack:
        sequence.pop_back();
        break;
    case PlacementStep::Close:
        break;
    }
}

} // namespace kelo
