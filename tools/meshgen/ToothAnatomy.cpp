#include "tools/meshgen/ToothForms.h"

#include <stdexcept>
#include <string>

namespace kelo::meshgen {

int positionFromMidline(int toothNumber)
{
    if (toothNumber >= 2 && toothNumber <= 8) return 9 - toothNumber;
    if (toothNumber >= 9 && toothNumber <= 15) return toothNumber - 8;
    if (toothNumber >= 18 && toothNumber <= 24) return 25 - toothNumber;
    if (toothNumber >= 25 && toothNumber <= 31) return toothNumber - 24;
    throw std::out_of_range("There is no tooth " + std::to_string(toothNumber));
}

bool isRightSide(int toothNumber)
{
    return toothNumber <= 8 || toothNumber >= 25;
}

ToothAnatomy toothAnatomy(int toothNumber)
{
    using Maker = ToothAnatomy (*)();
    static constexpr std::array<Maker, 7> upper = {
        upperCentralIncisor, upperLateralIncisor, upperCanine,     upperFirstPremolar,
        upperSecondPremolar, upperFirstMolar,     upperSecondMolar};
    static constexpr std::array<Maker, 7> lower = {
        lowerCentralIncisor, lowerLateralIncisor, lowerCanine,     lowerFirstPremolar,
        lowerSecondPremolar, lowerFirstMolar,     lowerSecondMolar};
    const auto index = static_cast<std::size_t>(positionFromMidline(toothNumber) - 1);
    return toothNumber <= 15 ? upper[index]() : lower[index]();
}

} // namespace kelo::meshgen
