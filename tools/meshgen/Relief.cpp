#include "tools/meshgen/Relief.h"

#include "tools/meshgen/Simplify.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace kelo::meshgen {

namespace {

/// Where a hollow's side meets a crest, light would fall badly on faces that stand farther than
/// this off their points' normals.
constexpr double foldDegrees = 40.0;

/// The lesser of both, rounded where they are about the same: never more than either, and less by
/// a quarter of `width` where they are equal (a quadratic smooth minimum).
double softMinimum(double a, double b, double width)
{
    const double nearness = std::max(width - std::abs(a - b), 0.0) / width;
    return std::min(a, b) - nearness * nearness * width / 4.0;
}

Vec3 directionToOwn(const ToothPlacement &placement, const Vec3 &jaw)
{
    return {dot(jaw, placement.mesialDirection), dot(jaw, placement.labialNormal),
            dot(jaw, placement.occlusalDirection)};
}

} // namespace

void carve(Tooth &tooth, const Relief &relief)
{
    const Vec3 place = tooth.placement.toOwn(relief.place);
    const Vec3 direction = directionToOwn(tooth.placement, relief.direction);
    for (std::size_t i = 0; i < tooth.ownMesh.positions.size(); ++i) {
        Vec3 &position = tooth.ownMesh.positions[i];
        const double height = dot(position - place, direction);
        const double aside = length(rejected(position - place, direction));
        if (aside >= relief.radius) continue;
        const double sphere =
            relief.cover + relief.radius - std::sqrt(relief.radius * relief.radius - aside * aside);
        // Pressed along the direction, a surface that faces away from it would come out of the
        // crown on the other side.
        const double facing = smoothstep(0.0, 0.35, dot(tooth.ownMesh.normals[i], direction));
        position += direction * (facing * (softMinimum(height, sphere, relief.blend) - height));
    }
}

void carveAll(std::vector<Tooth> &teeth, const std::vector<Relief> &reliefs)
{
    std::set<int> carved;
    for (const Relief &relief : reliefs)
        for (Tooth &tooth : teeth)
            if (tooth.placement.number == relief.tooth) {
                carve(tooth, relief);
                carved.insert(relief.tooth);
            }
    for (Tooth &tooth : teeth)
        if (carved.contains(tooth.placement.number)) relaxFolds(tooth.ownMesh, foldDegrees);
}

} // namespace kelo::meshgen
