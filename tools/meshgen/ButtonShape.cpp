#include "tools/meshgen/ButtonShape.h"

#include "tools/meshgen/BracketSolid.h"
#include "tools/meshgen/BracketSurface.h"
#include "tools/meshgen/ButtonParts.h"

#include <algorithm>
#include <vector>

namespace kelo::meshgen {

namespace {

constexpr double buttonCreaseAngle = 50.0;
constexpr int sides = 12;

/// Half the thickness of the elastic that lies round the neck, and a little play.
constexpr double halfElastic = 0.52;

/// A foot nearer the edge than this over the lingual axis point would sit on the cusps.
constexpr double highestFoot = 1.2;

/// Where the button is bonded: under the neck's axis, or, where the axis runs into the biting
/// surface, on the lingual surface below it.
Vec3 footOf(const Mesh &tooth, const ToothPlacement &placement, const Vec3 &neck, const Vec3 &off)
{
    const Vec3 &axisPoint = placement.lingualAxisPoint;
    const auto under = raycast(tooth, neck + off * 4.0, -off);
    if (under && dot(under->position - axisPoint, placement.occlusalDirection) <= highestFoot) {
        return under->position;
    }
    const double sideways = dot(neck - axisPoint, placement.mesialDirection);
    const Vec3 outside = axisPoint + placement.mesialDirection * sideways +
                         placement.occlusalDirection * highestFoot - placement.labialNormal * 6.0;
    const auto beside = raycast(tooth, outside, placement.labialNormal);
    return beside ? beside->position : axisPoint;
}

} // namespace

Vec3 buttonOutward(const ToothPlacement &placement, const Hook &hook)
{
    return dot(hook.direction, placement.labialNormal) < 0.0 ? hook.direction : -hook.direction;
}

SurfaceFrame buttonSeat(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook)
{
    const Vec3 off = buttonOutward(placement, hook);
    const Vec3 foot = footOf(tooth, placement, hook.position, off);
    const bool underAxis = length(rejected(foot - hook.position, off)) < 1e-6;
    const Vec3 outward = underAxis ? off : -placement.labialNormal;
    return frameOnSurface(tooth, placement, foot, outward, 0.9);
}

Mesh makeButton(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook)
{
    const Vec3 off = buttonOutward(placement, hook);
    const Vec3 neckStart = hook.position - off * halfElastic;
    const SurfaceFrame frame = buttonSeat(tooth, placement, hook);
    // A neck near the tooth gets a thin pad, so that it still stands free where the elastic lies.
    const double room = dot(hook.position - frame.origin, frame.out);
    const double thickness = std::clamp(room - 0.3, 0.06, 0.3);
    Mesh button = makePad(tooth, frame, {2.9, 2.6, thickness, 2.0, 16});

    const double r = hook.radius;
    const Vec3 capStart = hook.position + off * halfElastic;
    // Where the neck starts at the pad or in the tooth, a straight stump carries it.
    const bool isNear = dot(neckStart - frame.origin, off) < 0.1;
    if (!isNear)
        append(button,
               stemWithJoint(frame.origin - frame.out * 0.25, 1.5 * r, neckStart, r, sides));
    const std::vector<RodStation> stations{
        {isNear ? neckStart - off * 0.3 : neckStart, r, off},
        {hook.position, r, off},
        {capStart, r, off},
        {capStart + off * 0.06, 1.75 * r, off},
        {capStart + off * 0.17, 1.98 * r, off},
        {capStart + off * 0.30, 1.90 * r, off},
        {capStart + off * 0.46, 1.45 * r, off},
        {capStart + off * 0.55, 0.8 * r, off},
    };
    append(button, rodThrough(stations, sides, -0.05, 0.03));
    computeSmoothNormals(button, buttonCreaseAngle);
    return button;
}

} // namespace kelo::meshgen
