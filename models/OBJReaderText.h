#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kelo {

/// The most bytes of a token of a file that a message repeats: enough to find it again.
inline constexpr std::size_t longestShownToken = 40;
/// The most bytes of a path that a message repeats: as long as the system's paths may be.
inline constexpr std::size_t longestShownPath = 4096;

namespace detail {

/// How many bytes the UTF-8 character at `at` has; 0 where there is none. Surrogates and overlong
/// forms are none.
inline std::size_t lengthOfCharacter(std::string_view text, std::size_t at)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
    const auto isContinuation = [&](std::size_t i) {
        return at + i < text.size() && (byte(i) & 0xC0) == 0x80;
    };
    if (byte(0) < 0x80) return 1;
    if (byte(0) >= 0xC2 && byte(0) <= 0xDF && isContinuation(1)) return 2;
    if (byte(0) >= 0xE0 && byte(0) <= 0xEF && isContinuation(1) && isContinuation(2)) {
        if (byte(0) == 0xE0 && byte(1) < 0xA0) return 0;
        if (byte(0) == 0xED && byte(1) > 0x9F) return 0;
        return 3;
    }
    if (byte(0) >= 0xF0 && byte(0) <= 0xF4 && isContinuation(1) && isContinuation(2) &&
        isContinuation(3)) {
        if (byte(0) == 0xF0 && byte(1) < 0x90) return 0;
        if (byte(0) == 0xF4 && byte(1) > 0x8F) return 0;
        return 4;
    }
    return 0;
}

/// Whether a terminal obeys the character instead of showing it: the control characters below 32,
/// 127, and 128 to 159.
inline bool isControlCharacter(std::string_view character)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(character[i]); };
    if (character.size() == 1) return byte(0) < 0x20 || byte(0) == 0x7F;
    return character.size() == 2 && byte(0) == 0xC2 && byte(1) < 0xA0;
}

/// Whether the character turns the direction of what is written around it (U+061C, U+200E, U+200F,
/// U+202A to U+202E, U+2066 to U+2069) or begins a line of its own (U+2028, U+2029).
inline bool turnsText(std::string_view character)
{
    if (character == "\u061C") return true;
    if (character.size() != 3 || character[0] != '\xE2') return false;
    const auto second = static_cast<unsigned char>(character[1]);
    const auto third = static_cast<unsigned char>(character[2]);
    if (second == 0x81) return third >= 0xA6 && third <= 0xA9;
    return second == 0x80 && (third == 0x8E || third == 0x8F || (third >= 0xA8 && third <= 0xAE));
}

} // namespace detail

/// Text from a file, or a file's name, as a message shows it: control characters, marks
/// that turn the direction of writing and bytes that are no UTF-8 as `\x1b`, byte by byte, so that
/// they never reach a terminal, and no more than `longest` bytes of the
/// text, with "..." for the rest.
inline std::string shownText(std::string_view text, std::size_t longest)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = detail::lengthOfCharacter(text, at);
        const std::size_t taken = length == 0 ? 1 : length;
        if (at + taken > longest) return shown + "...";
        const std::string_view character = text.substr(at, taken);
        if (length != 0 && !detail::isControlCharacter(character) &&
            !detail::turnsText(character)) {
            shown += character;
        } else {
            for (const char c : character) {
                const auto byte = static_cast<unsigned char>(c);
                shown += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
            }
        }
        at += taken;
    }
    return shown;
}

} // namespace kelo
