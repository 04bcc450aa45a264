#include "keloOpenGL/treatment/ElasticPlacement.h"

namespace kelo {

PlacementStep ElasticPlacement::stepForClickOn(const std::string &name) const
{
    if (name == first) return PlacementStep::Close;
    return name == last ? PlacementStep::TakeBack : PlacementStep::Add;
}

void ElasticPlacement::take(PlacementStep step, const std::string &name)
{
    switch (step) {
    case PlacementStep::Add:
        sequence.push_back(name);
        last = name;
        break;
    case PlacementStep::TakeBack:
        sequence.pop_back();
        last = sequence.empty() ? first : sequence.back();
        break;
    case PlacementStep::Close:
        last = name;
        break;
    }
}

} // namespace kelo
