#pragma once

#include <cstdint>

namespace kelo {

/// The actions on one bracket, button or tooth that a click can repeat; the numbers are those that
/// a view reports as its last action.
enum class ActionType : std::int64_t {
    ColorBracket = 0,
    PlaceBracket = 1,
    RemoveBracket = 2,
    PlaceButton = 3,
    RemoveButton = 4,
    PlaceTooth = 5,
    RemoveTooth = 6
};

} // namespace kelo
