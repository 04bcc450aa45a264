#pragma once

#include "tools/meshgen/SampleMeshes.h"

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

std::vector<ToothMeasures> measureTeeth(const SamplePatient &patient);

/// Throws std::runtime_error when `parameters`/anchors.csv cannot be read.
std::vector<AnchorMeasure> measureAnchors(const SamplePatient &patient,
                                          const std::string &parameters);

/// All measures as text: triangles, sizes beside the table's, contacts, stand-offs, anchors.
std::string report(const SamplePatient &patient, const std::string &parameters);

} // namespace kelo::meshgen
