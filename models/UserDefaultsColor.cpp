#include "models/UserDefaultsColor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace kelo {
namespace {

constexpr std::array<std::uint8_t, 4> tag{'R', 'G', 'B', 'A'};
constexpr std::size_t byteCount = tag.size() + 4 * sizeof(double);

void appendDouble(UserDefaults::Bytes &bytes, double value)
{
    const auto bits = std::bit_cast<std::uint64_t>(value);
    for (int shift = 0; shift < 64; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
}

double doubleAt(const UserDefaults::Bytes &bytes, std::size_t position)
{
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < 8; ++i)
        bits |= std::uint64_t{bytes[position + i]} << (8 * i);
    return std::bit_cast<double>(bits);
}

} // namespace

void UserDefaults_setColor_forKey(UserDefaults &defaults, const std::optional<Color> &color,
                                  const std::string &key)
{
    if (!color) {
        defaults.removeObjectForKey(key);
        return;
    }
    UserDefaults::Bytes bytes(tag.begin(), tag.end());
    bytes.reserve(byteCount);
    for (const double component : {color->red, color->green, color->blue, color->alpha})
        appendDouble(bytes, component);
    defaults.setData_forKey(bytes, key);
}

std::optional<Color> UserDefaults_colorForKey(const UserDefaults &defaults, const std::string &key)
{
    const std::optional<UserDefaults::Bytes> bytes = defaults.dataForKey(key);
    if (!bytes || bytes->size() != byteCount || !std::equal(tag.begin(), tag.end(), bytes->begin()))
        return std::nullopt;
    std::array<double, 4> components{};
    for (std::size_t i = 0; i < components.size(); ++i) {
        components[i] = doubleAt(*bytes, tag.size() + i * sizeof(double));
        if (!std::isfinite(components[i])) return std::nullopt;
    }
    return Color(components);
}

} // namespace kelo
