#pragma once

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace viewer {

/// How teeth are written for people. Keys inside the program are always universal numbers.
enum class ToothNotation {
    Universal, ///< 1 to 32, from the upper right wisdom tooth round to the lower right one
    FDI,       ///< quadrant and tooth from the midline: 11 is the upper right central incisor
    Palmer     ///< jaw, side and tooth from the midline in letters: UR1
};

/// The name of the tooth, bracket or lingual button with this key ("8", "8l") in a notation; a
/// button is followed by "lingual". A key that is none is returned unchanged.
QString toothName(const std::string &key, ToothNotation notation);

/// The names of these keys one after the other; as an elastic runs over them: "6 – 30".
QString toothNames(const std::vector<std::string> &keys, ToothNotation notation,
                   const QString &separator = QStringLiteral(" \u2013 "));

/// "universal", "fdi" or "palmer", as options and settings have it; nothing for any other name.
std::optional<ToothNotation> toothNotationFromName(const QString &name);
QString nameOfToothNotation(ToothNotation notation);

} // namespace viewer
