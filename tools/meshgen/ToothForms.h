#pragma once

#include "tools/meshgen/ToothAnatomy.h"

/// The kinds of teeth, in the sizes of the tables of dental anatomy.
namespace kelo::meshgen {

ToothAnatomy upperCentralIncisor();
ToothAnatomy upperLateralIncisor();
ToothAnatomy upperCanine();
ToothAnatomy upperFirstPremolar();
ToothAnatomy upperSecondPremolar();
ToothAnatomy upperFirstMolar();
ToothAnatomy upperSecondMolar();
ToothAnatomy lowerCentralIncisor();
ToothAnatomy lowerLateralIncisor();
ToothAnatomy lowerCanine();
ToothAnatomy lowerFirstPremolar();
ToothAnatomy lowerSecondPremolar();
ToothAnatomy lowerFirstMolar();
ToothAnatomy lowerSecondMolar();

} // namespace kelo::meshgen
