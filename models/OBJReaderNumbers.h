#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <locale.h>
#include <new>
#include <stdlib.h>

/// The numbers of OBJ text, shared by the reader and by the tools that judge a file before it is
/// read. All functions expect text in which a carriage return or line feed follows, so that no
/// token runs out of the buffer.

namespace kelo::obj {

inline bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}
inline bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

/// Ends a coordinate.
inline bool endsNumber(char c)
{
    return isBlank(c) || isLineEnd(c);
}

/// Ends one number of a face's `vertex/texture/normal`.
inline bool endsFaceNumber(char c)
{
    return c == '/' || endsNumber(c);
}

template<class Character>
Character *skippedBlanks(Character *p)
{
    while (isBlank(*p))
        ++p;
    return p;
}

/// The "C" locale for `strtof_l`, made when it is first needed.
class CLocale
{
public:
    CLocale() = default;
    CLocale(const CLocale &) = delete;
    CLocale &operator=(const CLocale &) = delete;
    ~CLocale()
    {
        if (_locale) freelocale(_locale);
    }

    /// Throws std::bad_alloc when it cannot be made.
    locale_t get()
    {
        if (!_locale) _locale = newlocale(LC_ALL_MASK, "C", nullptr);
        if (!_locale) throw std::bad_alloc();
        return _locale;
    }

private:
    locale_t _locale = nullptr;
};

/// The numbers' common result: how much of the token converted.
struct Conversion
{
    /// Something converted. Without it the value is not written.
    bool any = false;
    /// The whole token converted: nothing follows the number.
    bool whole = false;
};

/// Converts the token [p, end) as `strtof` does in the "C" locale. `*end` is overwritten for the
/// moment, because `strtof` needs a zero there.
inline Conversion convertFloatToken(char *p, char *end, float &value, CLocale &locale)
{
    const char delimiter = *end;
    *end = 0;
    char *stopped = p;
    const float converted = strtof_l(p, &stopped, locale.get());
    *end = delimiter;
    if (stopped != p) value = converted;
    return {stopped != p, stopped != p && stopped == end};
}

/// The number that `mantissa` and a power of ten make, if one rounding to double and one to float
/// give what `strtof` gives; otherwise false.
///
/// Up to 2^53 the digits are one exact double, and so are the powers of ten up to 10^22; a single
/// division or multiplication is then the correctly rounded double. Rounding that again to
/// float is right unless the double lies exactly in the middle of two floats (only there can the
/// first rounding have moved the number across the border, since rounding is monotonic and the
/// middles are doubles). The range 10^-22 to 2^53 * 10^22 lies within the normal floats.
inline bool makeFloat(std::uint64_t mantissa, std::ptrdiff_t exponent, bool negative, float &value)
{
    static constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                             1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::uint64_t largestExact = std::uint64_t(1) << 53;
    if (mantissa > largestExact || exponent < -22 || exponent > 22) return false;
    const auto exact = static_cast<double>(static_cast<std::int64_t>(mantissa));
    const double magnitude =
        exponent < 0 ? exact / powersOfTen[-exponent] : exact * powersOfTen[exponent];
    std::uint64_t bits;
    std::memcpy(&bits, &magnitude, sizeof bits);
    constexpr std::uint64_t belowFloat = (std::uint64_t(1) << 29) - 1; // 52 - 23 bits
    constexpr std::uint64_t middle = std::uint64_t(1) << 28;
    if ((bits & belowFloat) == middle) return false;
    bits |= std::uint64_t(negative) << 63; // signs come at random: no branch
    double number;
    std::memcpy(&number, &bits, sizeof number);
    value = static_cast<float>(number);
    return true;
}

/// The value of the decimal digit `c`; 10 or more if it is none.
inline unsigned digitValue(char c)
{
    return static_cast<unsigned>(static_cast<unsigned char>(c)) - unsigned('0');
}

/// A number, and where its token ends. Returned by value: an address taken of the caller's
/// variables would keep them in memory on the fast path too.
template<class Character, class Value>
struct NumberAndEnd
{
    Character *end;
    Value value;
    Conversion conversion;
};

/// `readFloat` for everything but plain digits. `exponentDigits` follows the `e` of a number in
/// scientific notation, whose digits so far are `mantissa` times ten to the power `exponent`;
/// otherwise null.
[[gnu::noinline]] inline NumberAndEnd<char, float>
readUnusualFloat(char *p, const char *exponentDigits, std::uint64_t mantissa,
                 std::ptrdiff_t exponent, CLocale &locale)
{
    NumberAndEnd<char, float> number{p, 0, {}};
    while (!endsNumber(*number.end))
        ++number.end;
    if (exponentDigits) {
        const char *q = exponentDigits;
        const bool down = *q == '-';
        if (down || *q == '+') ++q;
        const char *first = q;
        std::ptrdiff_t written = 0;
        // Four digits already say 0 or infinity; that is left to the conversion below.
        for (unsigned digit; (digit = digitValue(*q)) < 10 && q - first < 4; ++q)
            written = written * 10 + static_cast<std::ptrdiff_t>(digit);
        if (q != first && q == number.end &&
            makeFloat(mantissa, exponent + (down ? -written : written), *p == '-', number.value)) {
            number.conversion = {true, true};
            return number;
        }
    }
    number.conversion = convertFloatToken(p, number.end, number.value, locale);
    return number;
}

/// Reads the number at `p`, which is the token's first character, and moves `p` past the
/// token. Bit for bit the value of `strtof` in the "C" locale: plain digits by `makeFloat`,
/// everything else (and the digits that it declines) by the C library.
[[gnu::always_inline]] inline Conversion readFloat(char *&p, float &value, CLocale &locale)
{
    constexpr std::ptrdiff_t safeDigits = 19; // 10^19 fits into 64 bits
    char *q = p;
    const bool negative = *q == '-';
    q += int(negative) | int(*q == '+');
    std::uint64_t mantissa = 0;
    char *first = q;
    for (unsigned digit; (digit = digitValue(*q)) < 10; ++q)
        mantissa = mantissa * 10 + digit;
    std::ptrdiff_t digitCount = q - first;
    std::ptrdiff_t exponent = 0;
    if (*q == '.') {
        first = ++q;
        for (unsigned digit; (digit = digitValue(*q)) < 10; ++q)
            mantissa = mantissa * 10 + digit;
        exponent = first - q;
        digitCount -= exponent;
    }
    const bool plain = digitCount > 0 && digitCount <= safeDigits;
    if (plain && endsNumber(*q) && makeFloat(mantissa, exponent, negative, value)) [[likely]] {
        p = q;
        return {true, true};
    }
    const bool scientific = plain && (*q == 'e' || *q == 'E');
    const auto number =
        readUnusualFloat(p, scientific ? q + 1 : nullptr, mantissa, exponent, locale);
    p = number.end;
    if (number.conversion.any) value = number.value;
    return number.conversion;
}

/// Converts the token [p, end) as `strtol` base 10 does in the "C" locale on a machine with 64-bit
/// `long`: white space, a sign, digits, saturating at both ends.
inline Conversion convertIntegerToken(const char *p, const char *end, std::int64_t &value)
{
    while (p != end && (isBlank(*p) || *p == '\v' || *p == '\f'))
        ++p;
    const bool negative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+')) ++p;
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    const std::uint64_t limit = negative ? most + 1 : most;
    std::uint64_t magnitude = 0;
    const char *digits = p;
    for (; p != end && *p >= '0' && *p <= '9'; ++p) {
        const auto digit = static_cast<std::uint64_t>(*p - '0');
        magnitude = magnitude > (limit - digit) / 10 ? limit : magnitude * 10 + digit;
    }
    if (p == digits) return {};
    value = static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
    return {true, p == end};
}

/// `readFaceNumber` for everything but a few plain digits.
template<class Character>
[[gnu::noinline]] NumberAndEnd<Character, std::int64_t> readUnusualFaceNumber(Character *p)
{
    NumberAndEnd<Character, std::int64_t> number{p, 0, {}};
    while (!endsFaceNumber(*number.end))
        ++number.end;
    number.conversion = convertIntegerToken(p, number.end, number.value);
    return number;
}

/// Reads the number of a face at `p`, which is the token's first character, and moves `p` to
/// the delimiter after it.
template<class Character>
[[gnu::always_inline]] inline Conversion readFaceNumber(Character *&p, std::int64_t &value)
{
    constexpr std::ptrdiff_t safeDigits = 18; // 10^18 fits into 63 bits
    Character *q = p;
    std::uint64_t digits = 0;
    for (unsigned digit; (digit = digitValue(*q)) < 10; ++q)
        digits = digits * 10 + digit;
    if (q != p && q - p <= safeDigits && endsFaceNumber(*q)) [[likely]] {
        value = static_cast<std::int64_t>(digits);
        p = q;
        return {true, true};
    }
    const auto number = readUnusualFaceNumber(p);
    p = number.end;
    if (number.conversion.any) value = number.value;
    return number.conversion;
}

} // namespace kelo::obj
