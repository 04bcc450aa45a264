#pragma once

#include <string>
#include <vector>

namespace kelo {

/// What a click on a bracket or button does to the elastic that is being strung.
enum class PlacementStep {
    Add,      ///< the band goes on to it
    TakeBack, ///< it was the newest member: the band gives it up
    Close     ///< it was the first member: the band is placed, or given up if it has no other
};

/// An elastic that is being strung, and the rules of its clicks. A band never holds the same member
/// twice in a row, but may pass one again later.
struct ElasticPlacement
{
    std::vector<std::string> sequence; ///< the members so far, the newest last; at least one

    PlacementStep stepForClickOn(const std::string &name) const;
    /// Carries out a step; Close leaves the sequence as it is.
    void take(PlacementStep step, const std::string &name);
};

} // namespace kelo
