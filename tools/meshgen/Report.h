#pragma once

#include "tools/meshgen/PatientMeshes.h"

#include <string>
#include <vector>

namespace kelo::meshgen {

/// Measured widths of one finished tooth, in millimetres along its own axes.
struct ToothMeasures
{
    int number = 0;
    double mesiodistal = 0.0, buccolingual = 0.0, height = 0.0;
};

/// A point where a band turns round a crown, as anchors.csv lists it.
struct AnchorMeasure
{
    int index = 0;
    bool upper = false;
    int nearestTooth = 0;         ///< the tooth whose surface is nearest
    double toothDistance = 0.0;   ///< from the nearest tooth of its own jaw; negative inside one
    double surfaceDistance = 0.0; ///< from the nearest tooth or bracket of its own jaw
};

std::vector<ToothMeasures> measureTeeth(const Patient &patient);

/// Throws std::runtime_error when `tables`/anchors.csv cannot be read.
std::vector<AnchorMeasure> measureAnchors(const Patient &patient, const std::string &tables);

/// All measures as text: triangles, sizes beside the tables', stand-offs, contacts, the bite,
/// anchors.
std::string report(const Patient &patient, const std::string &tables);

} // namespace kelo::meshgen
