#include "tools/meshgen/ButtonShape.h"

#include "tools/meshgen/BracketSolid.h"
#include "tools/meshgen/BracketSurface.h"

#include <algorithm>
#include <cmath>

namespace kelo::meshgen {

namespace {

constexpr double creaseAngle = 50.0;
constexpr int sides = 14;

// Half the thickness of the elastic that lies round the neck, and a little play.
constexpr double halfElastic = 0.52;

} // namespace

Mesh makeButton(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook)
{
    // The table's direction may point into or off the tooth; the cap sits on the side off it.
    const bool pointsOff = dot(hook.direction, placement.labialNormal) < 0.0;
    const Vec3 off = pointsOff ? hook.direction : -hook.direction;
    const Vec3 neckStart = hook.position - off * halfElastic;
    const auto hit = raycast(tooth, hook.position + off * 4.0, -off);
    const Vec3 foot = hit ? hit->position : placement.lingualAxisPoint;
    const SurfaceFrame frame = frameOnSurface(tooth, placement, foot, off, 0.9);
    Mesh button = makePad(tooth, frame, {2.9, 2.6, 0.3, 2.0, 16});

    const double r = hook.radius;
    const Vec3 capStart = hook.position + off * halfElastic;
    // The neck swells into the pad at its foot; where the tooth is near, the swelling starts in it.
    const double run = std::max(distance(foot, neckStart), 0.3);
    std::vector<RodStation> stations{
        {neckStart - off * run, 1.5 * r, off},
        {neckStart - off * (0.6 * run), 1.25 * r, off},
        {neckStart - off * (0.25 * run), 1.06 * r, off},
        {neckStart, r, off},
        {capStart, r, off},
        {capStart + off * 0.06, 1.75 * r, off},
        {capStart + off * 0.17, 1.98 * r, off},
        {capStart + off * 0.30, 1.90 * r, off},
        {capStart + off * 0.46, 1.45 * r, off},
        {capStart + off * 0.55, 0.8 * r, off},
    };
    append(button, rodThrough(stations, sides, -0.05, 0.03));
    computeSmoothNormals(button, creaseAngle);
    return button;
}

} // namespace kelo::meshgen
