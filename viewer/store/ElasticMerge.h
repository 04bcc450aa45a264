#pragma once

#include "viewer/store/TreatmentRecord.h"

#include <vector>

namespace viewer {

/// The stored elastics of a note with the changes of one who showed `before` and shows `after` now.
/// What others stored meanwhile stays: their elastics are kept, those that they removed stay
/// removed, in the stored order; new ones come behind.
///
/// Elastics are told apart by their values. What both placed, or both removed, counts once: two
/// equal bands would lie one upon the other, and a report that comes twice changes nothing. An
/// elastic that was given another size, name or members is replaced in its place; where others
/// changed the same elastic too, each of these values is the changed one, and the later one where
/// both changed it. An elastic that one changed and the other removed stays.
std::vector<kelo::SavedElastic> mergedElastics(const std::vector<kelo::SavedElastic> &before,
                                               const std::vector<kelo::SavedElastic> &after,
                                               const std::vector<kelo::SavedElastic> &stored);

} // namespace viewer
