#include "keloModel/NameKey.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kelo {
namespace {

/// What follows a tooth's number in the key of its lingual button.
constexpr char buttonLetter = 'l';

/// Universal numbers run along the upper arch from 1 to 16, then along the lower one.
constexpr int lastUpperTooth = 16;

} // namespace

int integerValueOfNameKey(std::string_view key)
{
    std::size_t position = key.find_first_not_of(" \t\n\v\f\r");
    if (position == std::string_view::npos) return 0;
    const bool negative = key[position] == '-';
    if (key[position] == '-' || key[position] == '+') ++position;

    constexpr std::int64_t highest = std::numeric_limits<int>::max();
    constexpr std::int64_t lowest = std::numeric_limits<int>::min();
    std::int64_t value = 0;
    for (; position < key.size() && key[position] >= '0' && key[position] <= '9'; ++position) {
        value = value * 10 + (key[position] - '0');
        // One step beyond both limits; more digits change nothing any more.
        value = std::min(value, highest + 2);
    }
    return static_cast<int>(std::clamp(negative ? -value : value, lowest, highest));
}

bool isButtonKey(std::string_view key)
{
    return key.find(buttonLetter) != std::string_view::npos;
}

std::string buttonKeyOfToothKey(std::string_view toothKey)
{
    return std::string(toothKey) + buttonLetter;
}

std::string toothKeyOfNameKey(std::string_view key)
{
    std::string toothKey(key);
    std::erase(toothKey, buttonLetter);
    return toothKey;
}

bool isUpperArchKey(std::string_view key)
{
    const int tooth = integerValueOfNameKey(key);
    return tooth >= 1 && tooth <= lastUpperTooth;
}

bool NameKeyLess::operator()(std::string_view first, std::string_view second) const
{
    const int firstNumber = integerValueOfNameKey(first);
    const int secondNumber = integerValueOfNameKey(second);
    return firstNumber != secondNumber ? firstNumber < secondNumber : first < second;
}

} // namespace kelo
