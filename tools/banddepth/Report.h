#pragma once

#include "tools/banddepth/Measurement.h"

#include <iosfwd>
#include <vector>

namespace kelo::banddepth {

/// A band that runs deeper than this, in millimetres, is seen to cut into what it should lie on.
inline constexpr double noticedDepth = 0.5;

/// The deepest that a band of the tables runs in a tooth at the closed mouth; 0 if none does.
double worstInToothAtClosedMouth(const Scene &scene, const std::vector<Band> &bands,
                                 const std::vector<Finding> &findings);

/// The findings as text: for the bands of the tables and for the named configurations, angle by
/// angle and kind by kind, the worst band, how many run inside and how far; then the worst in teeth
/// at the closed mouth, the anchors inside teeth, and the worst of all.
void writeReport(const Scene &scene, const std::vector<Band> &bands,
                 const std::vector<Finding> &findings, std::ostream &out);

} // namespace kelo::banddepth
