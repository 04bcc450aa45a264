#include "tools/meshgen/OcclusalSurface.h"

#include "tools/meshgen/Vec.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kelo::meshgen {

namespace {

/// 1/mm: where two lobes meet, the valley is rounded over a tenth of a millimetre. Softer, cusps
/// melt into each other.
constexpr double sharpness = 10.0;
/// Cusps and crests are rounded over this radius, so that none is a needle.
constexpr double tipRadius = 0.3;
/// Below 2 the four ridges of a cusp stand out of a cone.
constexpr double ridgePower = 1.3;
/// The deepest floor of a fossa below the highest cusp.
constexpr double fossaDrop = 3.2;

/// |d| with its corner rounded over about `radius`.
double softAbs(double d, double radius)
{
    // Rounding can leave a tiny negative number, of which there is no power.
    return std::max(0.0, std::sqrt(d * d + radius * radius) - radius);
}

/// A fissure's bottom is rounded over this radius: about what the fine mesh can follow.
constexpr double fissureBottom = 0.10;

/// The cross-section of a fissure, 1 at its line and 0 from its half width on: a V whose walls get
/// steeper towards the line, which is what makes a fissure read as a line and not as a dent.
double fissureProfile(double distance, double halfWidth)
{
    const double rest = 1.0 - softAbs(distance, fissureBottom) / halfWidth;
    return rest <= 0.0 ? 0.0 : std::pow(rest, 1.6);
}

} // namespace

OcclusalSurface::OcclusalSurface(const ToothAnatomy &toothAnatomy)
    : anatomy(toothAnatomy),
      halfWidth(toothAnatomy.dimensions.mesiodistal / 2.0),
      halfDepth(toothAnatomy.dimensions.buccolingual / 2.0),
      height(toothAnatomy.dimensions.height)
{}

double OcclusalSurface::cuspAt(const Cusp &cusp, double x, double y) const
{
    const double turn = cusp.turn * std::numbers::pi / 180.0;
    const double px = x - cusp.x * halfWidth;
    const double py = y - cusp.y * halfDepth;
    // The triangular ridge runs from the tip straight inwards, turned by the cusp's own angle.
    const double dx = px * std::cos(turn) - py * std::sin(turn);
    const double dy = px * std::sin(turn) + py * std::cos(turn);
    const bool outwards = dy * cusp.y > 0.0;
    const double along = cusp.ridgeSlope * softAbs(dx, tipRadius);
    const double across = (outwards ? cusp.outerSlope : cusp.innerSlope) * softAbs(dy, tipRadius);
    const double fall =
        std::pow(std::pow(along, ridgePower) + std::pow(across, ridgePower), 1.0 / ridgePower);
    // A lobe is a mound: it falls the faster the farther it is from its tip.
    return height - cusp.drop - fall - cusp.bulge * fall * fall;
}

double OcclusalSurface::distanceTo(double x, double y, const OcclusalLine &line) const
{
    const Vec3 p{x, y, 0.0};
    double least = 1e9;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        const Vec3 a{line[i].x * halfWidth, line[i].y * halfDepth, 0.0};
        const Vec3 b{line[i + 1].x * halfWidth, line[i + 1].y * halfDepth, 0.0};
        const double f = std::clamp(dot(p - a, b - a) / dot(b - a, b - a), 0.0, 1.0);
        least = std::min(least, distance(p, a + f * (b - a)));
    }
    return least;
}

double OcclusalSurface::lobesAt(double x, double y) const
{
    // A smooth maximum: each point belongs to the highest of the forms over it.
    double sum = 0.0;
    const auto raise = [&](double z) { sum += std::exp(sharpness * (z - height)); };
    raise(height - fossaDrop);
    for (const Cusp &cusp : anatomy.cusps)
        raise(cuspAt(cusp, x, y));
    for (const Ridge &ridge : anatomy.ridges) {
        const double fall = ridge.slope * softAbs(distanceTo(x, y, ridge.line), 0.35);
        raise(height - ridge.drop - fall - 0.12 * fall * fall);
    }
    return height + anatomy.cuspHeight * std::log(sum) / sharpness;
}

double OcclusalSurface::heightAt(double x, double y) const
{
    // Where fissures meet, the deepest counts: added up, they would dig a hole.
    double deepest = 0.0;
    for (const Groove &groove : anatomy.grooves)
        deepest = std::max(deepest, groove.depth * fissureProfile(distanceTo(x, y, groove.line),
                                                                  groove.halfWidth));
    return lobesAt(x, y) - anatomy.grooveDepth * deepest;
}

} // namespace kelo::meshgen
