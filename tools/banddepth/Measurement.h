#pragma once

#include "tools/banddepth/Bands.h"
#include "tools/banddepth/CentreLine.h"
#include "tools/banddepth/Scene.h"

#include <array>
#include <cstddef>
#include <vector>

namespace kelo::banddepth {

/// How far apart a centre line's samples are, in millimetres.
inline constexpr double sampleSpacing = 0.1;

/// The openings that are measured, in degrees by which the jaws are turned: 0 with the mouth
/// closed, above 0 turning mostly the lower jaw, below 0 mostly the upper. The view's stored angle
/// is 10 degrees (its dead zone) further from 0, so that 45 is as far as it opens.
inline constexpr std::array<int, 11> measuredAngles{0, 8, -8, 15, -15, 25, -25, 35, -35, 45, -45};

/// One band that runs inside one mesh at one opening.
struct Finding
{
    std::size_t band = 0;     ///< an index of the bands
    std::size_t obstacle = 0; ///< an index of the scene's obstacles
    int angle = 0;            ///< one of measuredAngles
    bool isStraight = false;  ///< no anchor lies on the way at this opening
    Immersion immersion;      ///< `deepest` in the model space of the obstacle's jaw
};

/// All meshes that a band runs into at one opening, in the scene's order. The band is closed, as it
/// is drawn once it is placed; both jaws are turned as the drawn view turns them.
std::vector<Finding> findingsOf(const Scene &scene, const std::vector<Band> &bands,
                                std::size_t band, int angle);

/// The same for all bands at all measured angles, angle by angle and band by band. Uses as many
/// threads as the machine has cores; the result does not depend on them.
std::vector<Finding> allFindings(const Scene &scene, const std::vector<Band> &bands);

/// An anchor that lies inside a tooth of either jaw while the mouth is closed: every band that is
/// led through it then runs in that tooth, wherever it leads afterwards.
struct AnchorFinding
{
    std::size_t anchor = 0;   ///< an index of `anchors`
    std::size_t obstacle = 0; ///< a tooth
    double depth = 0.0;
};

/// All of them, deepest first.
std::vector<AnchorFinding> anchorsInTeeth(const Scene &scene);

} // namespace kelo::banddepth
