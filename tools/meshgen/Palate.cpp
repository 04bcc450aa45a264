#include "tools/meshgen/Palate.h"

#include "tools/meshgen/Vec.h"

#include <algorithm>
#include <cmath>

namespace kelo::meshgen {

namespace {

double bump(double x, double centre, double width)
{
    const double d = (x - centre) / width;
    return std::exp(-d * d);
}

/// One of the transverse folds, which no two sides have alike.
struct Ruga
{
    double behind = 0.0; ///< where it begins beside the middle line
    double slant = 0.0;  ///< how much farther back it is for each millimetre outwards
    double wave = 0.0;   ///< phase of its windings
    double from = 0.0;   ///< its two ends, away from the middle line
    double to = 0.0;
    double height = 0.0;
};

constexpr Ruga rightRugae[] = {{6.2, 0.02, 0.4, 1.0, 8.6, 0.55},
                               {9.6, 0.16, 1.9, 1.2, 9.8, 0.60},
                               {13.1, 0.12, 3.1, 1.6, 9.0, 0.50},
                               {16.0, 0.24, 4.4, 2.6, 8.4, 0.32}};
constexpr Ruga leftRugae[] = {{6.0, 0.06, 1.2, 1.1, 8.2, 0.55},
                              {9.2, 0.10, 2.8, 1.0, 10.0, 0.60},
                              {12.5, 0.20, 0.2, 1.4, 9.4, 0.52},
                              {16.4, 0.14, 5.0, 2.2, 7.8, 0.34}};

double rugaAt(const Ruga &ruga, double aside, double behind)
{
    const double line =
        ruga.behind + ruga.slant * aside + 0.45 * std::sin(0.85 * aside + ruga.wave);
    const double ends = smoothstep(ruga.from - 0.6, ruga.from + 1.0, aside) *
                        (1.0 - smoothstep(ruga.to - 3.0, ruga.to, aside));
    return ruga.height * ends * bump(behind, line, 0.75);
}

} // namespace

double palateRelief(double toTheLeft, double behind)
{
    const double aside = std::abs(toTheLeft);
    double relief = 0.0;
    for (const Ruga &ruga : toTheLeft < 0.0 ? rightRugae : leftRugae)
        relief += rugaAt(ruga, aside, behind);
    // The papilla covers the incisive canal: a pear of 3 by 6 mm.
    const double papilla = 0.8 * bump(aside, 0.0, 1.5) * bump(behind, 2.6, 2.4);
    // The raphe runs from it to the rear border and gets lower.
    const double raphe = 0.30 * bump(aside, 0.0, 0.55) * smoothstep(3.0, 6.0, behind) *
                         (1.0 - 0.6 * smoothstep(20.0, 40.0, behind));
    return relief + std::max(papilla, raphe);
}

} // namespace kelo::meshgen
