#include "tools/meshgen/BracketShape.h"

#include "tools/meshgen/BracketParts.h"

#include <algorithm>
#include <cmath>

namespace kelo::meshgen {

namespace {

// Metal parts have crisp bevels; the facets of rods and rounded wings stay smooth.
constexpr double creaseAngle = 42.0;

// The lowest and highest a body stands over its tooth: room for the slot and an undercut below it,
// and the bulk that cheeks bear.
constexpr double lowestTop = 1.6;
constexpr double highestTop = 2.2;

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

Mesh makeBracket(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook)
{
    const BracketMeasures measures = bracketMeasures(placement.number);
    const SurfaceFrame frame =
        frameOnSurface(tooth, placement, placement.facialAxisPoint, placement.labialNormal, 1.2);
    // The wing's thickness lies between its top and 0.68 below: the post leaves from the middle.
    const double postHeight = frame.own(hook.position - hook.direction * 0.55).z;
    const double top = std::clamp(postHeight + 0.4, lowestTop, highestTop);
    Mesh bracket = makePad(tooth, frame, measures.pad);
    append(bracket, measures.tube ? makeTubeBody(tooth, frame, measures, top)
                                  : makeTwinBody(tooth, frame, measures, top));
    const Root root =
        measures.tube ? tubeRoot(frame, measures, top, hook) : twinRoot(frame, measures, top, hook);
    append(bracket, makeHookArm(root.point, root.direction, hook));
    computeSmoothNormals(bracket, creaseAngle);
    return bracket;
}

} // namespace kelo::meshgen
