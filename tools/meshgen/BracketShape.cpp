#include "tools/meshgen/BracketShape.h"

#include "tools/meshgen/BracketParts.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kelo::meshgen {

namespace {

/// Metal parts have crisp bevels; the facets of rods and rounded wings stay smooth.
constexpr double bracketCreaseAngle = 42.0;

/// The lowest and highest a body stands over its tooth: room for the slot and an undercut below it,
/// and the bulk that cheeks bear.
constexpr double lowestTop = 1.7;
constexpr double highestTop = 2.2;

/// The mean normal of this much surface round the middle of the base gives its direction.
constexpr double seatRadius = 1.2;

/// The frame with its slot turned level, as the torque built into a twin bracket's base does for a
/// tooth that leans outwards.
SurfaceFrame levelled(SurfaceFrame frame, const ToothPlacement &placement)
{
    const Vec3 gingival{0.0, 0.0, placement.upper ? 1.0 : -1.0};
    constexpr double greatest = 15.0 * std::numbers::pi / 180.0;
    const double lean = std::asin(std::clamp(dot(frame.out, gingival), -1.0, 1.0));
    const double angle = std::clamp(lean, 0.0, greatest);
    const Vec3 out = frame.out;
    frame.out = out * std::cos(angle) + frame.up * std::sin(angle);
    frame.up = frame.up * std::cos(angle) - out * std::sin(angle);
    return frame;
}

BracketSeat seatAt(const Mesh &tooth, const ToothPlacement &placement, const Vec3 &middle,
                   bool tube)
{
    BracketSeat seat;
    seat.pad = frameOnSurface(tooth, placement, middle, placement.labialNormal, seatRadius);
    seat.body = tube ? seat.pad : levelled(seat.pad, placement);
    return seat;
}

/// Where in the body the hook's arm is rooted, and which way it leaves.
struct Root
{
    Vec3 point;
    Vec3 direction;
};

Root twinRoot(const SurfaceFrame &frame, const BracketMeasures &measures, double top,
              const Hook &hook)
{
    const Vec3 start = frame.own(hook.position - hook.direction * 0.55);
    const double inner = 0.5 * measures.split + 0.3;
    const double outer = 0.5 * measures.width - 0.3;
    const double side = start.x < 0.0 ? -1.0 : 1.0;
    const double along = side * std::clamp(std::abs(start.x), std::min(inner, outer), outer);
    // In the thick of the gingival wing, on the line that the post comes from if that lies there.
    const double height = std::clamp(start.z, top - 0.5, top - 0.3);
    return {frame.point(along, -0.85, height),
            normalized(frame.up * -1.0 + frame.along * (0.4 * (start.x - along)))};
}

Root tubeRoot(const SurfaceFrame &frame, const BracketMeasures &measures, double top,
              const Hook &hook)
{
    const Vec3 start = frame.own(hook.position - hook.direction * 0.55);
    const double reach = 0.5 * measures.width - 0.6;
    const double along = std::clamp(start.x, -reach, reach);
    return {frame.point(along, -0.55, top - 0.75), normalized(frame.up * -1.0 + frame.out * 0.35)};
}

} // namespace

BracketMeasures bracketMeasures(int toothNumber)
{
    // The same from the midline to either side: 1 is a central incisor, 7 a second molar.
    const bool upper = toothNumber <= 16;
    const double middle = upper ? 8.5 : 24.5;
    const int place = static_cast<int>(std::lround(std::abs(toothNumber - middle) + 0.5));
    const auto twin = [](double padWidth, double padHeight, double width, double span) {
        return BracketMeasures{
            {padWidth, padHeight, 0.32, 4.5, 20}, width, 0.3 * width, span, false};
    };
    const auto tube = [](double padWidth, double width) {
        return BracketMeasures{{padWidth, 3.2, 0.36, 4.0, 24}, width, 0.0, 0.0, true};
    };
    switch (place) {
    case 1:
        return upper ? twin(3.7, 3.3, 3.3, 2.84) : twin(2.7, 3.0, 2.4, 2.7);
    case 2:
        return upper ? twin(3.2, 3.2, 2.9, 2.84) : twin(2.7, 3.0, 2.4, 2.7);
    case 3:
        return upper ? twin(3.4, 3.4, 3.0, 2.9) : twin(3.2, 3.3, 2.9, 2.84);
    case 4:
    case 5:
        return upper ? twin(3.3, 3.2, 2.95, 2.84) : twin(3.2, 3.1, 2.85, 2.8);
    case 6:
        return tube(5.0, 4.4);
    default:
        return tube(4.5, 4.0);
    }
}

BracketSeat bracketSeat(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook)
{
    const BracketMeasures measures = bracketMeasures(placement.number);
    const Vec3 middle = placement.facialAxisPoint;
    const BracketSeat seat = seatAt(tooth, placement, middle, measures.tube);
    const Vec3 own = seat.body.own(hook.position);
    // Clear of the wing tips by half an elastic.
    const double wanted = measures.tube ? 0.0 : 0.5 * measures.wingSpan + 0.5;
    const double upwards = std::clamp(wanted + own.y, 0.0, measures.tube ? 0.0 : 0.7);
    const double most = measures.tube ? 0.9 : 0.3;
    const double beside = std::max(std::abs(own.x) - 0.5 * measures.width, 0.0);
    const double sideways = std::copysign(std::min(beside, most), own.x);
    if (upwards == 0.0 && sideways == 0.0) return seat;
    const Vec3 moved =
        middle + placement.occlusalDirection * upwards + placement.mesialDirection * sideways;
    return seatAt(tooth, placement, moved, measures.tube);
}

Mesh makeBracket(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook)
{
    const BracketMeasures measures = bracketMeasures(placement.number);
    const BracketSeat seat = bracketSeat(tooth, placement, hook);
    const SurfaceFrame &frame = seat.body;
    // The wing's thickness lies between its top and 0.68 below: the post leaves from the middle.
    const double postHeight = frame.own(hook.position - hook.direction * 0.55).z;
    const double top = std::clamp(postHeight + 0.4, lowestTop, highestTop);
    Mesh bracket = makePad(tooth, seat.pad, measures.pad);
    append(bracket, measures.tube ? makeTubeBody(tooth, frame, measures, top)
                                  : makeTwinBody(tooth, frame, measures, top));
    const Root root =
        measures.tube ? tubeRoot(frame, measures, top, hook) : twinRoot(frame, measures, top, hook);
    append(bracket, makeHookArm(root.point, root.direction, hook));
    computeSmoothNormals(bracket, bracketCreaseAngle);
    return bracket;
}

} // namespace kelo::meshgen
