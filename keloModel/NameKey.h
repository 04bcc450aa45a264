#pragma once

#include "base/Export.h"

#include <map>
#include <string>
#include <string_view>

namespace kelo {

/// Name keys are what teeth, brackets and lingual buttons go by in every dictionary and in every
/// elastic's bracket sequence. A tooth's key is its universal number as a decimal text, "2" to "15"
/// in the upper arch and "18" to "31" in the lower; a bracket has the key of its tooth; a lingual
/// button has the key of its tooth followed by the letter l, as in "8l".

/// The number at the start of the key: blanks, then an optional sign, then digits, whatever
/// follows. 0 when there is none; held at the limits of int when it lies beyond them. A button
/// counts as its tooth: "8l" is 8.
KELO_EXPORT int integerValueOfNameKey(std::string_view key);

/// True for a key that holds the letter l anywhere.
KELO_EXPORT bool isButtonKey(std::string_view key);

/// The key of the lingual button on this tooth.
KELO_EXPORT std::string buttonKeyOfToothKey(std::string_view toothKey);

/// The key without any letter l: a button's tooth, and of any other key the key itself.
KELO_EXPORT std::string toothKeyOfNameKey(std::string_view key);

/// Whether the number of the key is one of the upper arch's: 1 to 16.
KELO_EXPORT bool isUpperArchKey(std::string_view key);

/// The natural order of keys: by number first and by text among equal numbers, so that "2" comes
/// before "15" and "8" before "8l" before "9".
struct KELO_EXPORT NameKeyLess
{
    using is_transparent = void;
    bool operator()(std::string_view first, std::string_view second) const;
};

/// A dictionary from name keys, always walked in the natural order of its keys.
template<class T>
using NameKeyDictionary = std::map<std::string, T, NameKeyLess>;

} // namespace kelo
