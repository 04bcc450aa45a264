#include "tools/lightbake/Occlusion.h"

#include "geometry/Matrix.h"
#include "keloOpenGL/view/MouthTransforms.h"
#include "tools/lightbake/Neighbours.h"

#include <algorithm>
#include <cmath>

namespace kelo::lightbake {
namespace {

using meshgen::dot;

/// Half of them lie above any vertex. Eight times as many change nineteen vertices in twenty by no
/// more than 3 of 255, and take eight times as long.
constexpr std::size_t directionCount = 256;

/// Off the surface, so that a ray does not meet the faces that it starts from; below the width of
/// the narrowest gap, which is the 0.03 mm between neighbours.
constexpr double startHeight = 0.01;

/// A vertex is inside of another surface when most of what it sees are backs of faces.
constexpr double buriedShare = 0.5;

/// Directions that cover the sphere evenly, along a spiral of golden angles. The same ones serve
/// every vertex: neighbours then see the same part of an obstacle, and what error there is shows no
/// spots. The spiral is turned by multiplications, whose last bits are the same in every C library.
std::vector<Vec3> evenDirections()
{
    constexpr double cosine = -0.73736887807831963;
    constexpr double sine = 0.67549029426152376;
    std::vector<Vec3> directions;
    double x = 1.0, y = 0.0;
    for (std::size_t i = 0; i < directionCount; ++i) {
        const double z =
            1.0 - (2.0 * static_cast<double>(i) + 1.0) / static_cast<double>(directionCount);
        const double radius = std::sqrt(1.0 - z * z);
        directions.push_back({radius * x, radius * y, z});
        const double turned = cosine * x - sine * y;
        y = sine * x + cosine * y;
        x = turned;
    }
    return directions;
}

const std::vector<Vec3> &directions()
{
    static const std::vector<Vec3> all = evenDirections();
    return all;
}

/// How much light something at this distance takes away: all when it touches, nothing from the
/// reach on, and without a kink there.
double taken(double distance)
{
    const double rest = 1.0 - std::min(distance / reachInMillimetres, 1.0);
    return rest * rest;
}

std::array<std::array<double, 4>, 3> rowsOf(const Matrix &matrix)
{
    std::array<std::array<double, 4>, 3> rows{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            rows[row][column] = double(matrix.m[column * 4 + row]);
    return rows;
}

Vec3 moved(const std::array<std::array<double, 4>, 3> &rows, const Vec3 &v, double w)
{
    const auto component = [&](std::size_t i) {
        return rows[i][0] * v.x + rows[i][1] * v.y + rows[i][2] * v.z + rows[i][3] * w;
    };
    return {component(0), component(1), component(2)};
}

/// The group of a part in the scene of its jaw: the gum and up to sixteen teeth.
unsigned groupOf(const Part &part)
{
    return part.kind == Kind::gum ? 0 : 1 + static_cast<unsigned>(part.toothNumber) % 16;
}

/// The distance of a hit, or `otherwise`.
double distanceOf(const std::optional<Hit> &hit, double otherwise)
{
    return hit ? hit->distance : otherwise;
}

/// The mean light of those that are known; nothing if none is.
std::optional<VertexLight> meanOf(const std::vector<VertexLight> &light,
                                  std::span<const std::uint32_t> vertices,
                                  const std::vector<bool> &isKnown)
{
    VertexLight mean{0.0, 0.0, false};
    double count = 0.0;
    for (const std::uint32_t i : vertices) {
        if (!isKnown[i]) continue;
        mean.closed += light[i].closed;
        mean.open += light[i].open;
        count += 1.0;
    }
    if (count == 0.0) return std::nullopt;
    mean.closed /= count;
    mean.open /= count;
    return mean;
}

} // namespace

Surroundings::Surroundings(const Mouth &mouth)
{
    for (const Part &part : mouth.parts) {
        if (part.kind == Kind::attachment || part.isVariant) continue;
        (part.isUpper ? upper_ : lower_).scene.add(part.vertices, part.indexes, groupOf(part));
    }
    upper_.scene.finish();
    lower_.scene.finish();
    const float angle = effectiveMouthOpenAngle(openAngleInDegrees);
    const Matrix upper = upperMouthTransform(angle, mouth.extents);
    const Matrix lower = lowerMouthTransform(angle, mouth.extents);
    upper_.fromOtherWhenOpen = rowsOf(Matrix_multiplied(Matrix_inverted(upper), lower));
    lower_.fromOtherWhenOpen = rowsOf(Matrix_multiplied(Matrix_inverted(lower), upper));
}

VertexLight Surroundings::lightAt(const OBJVertex &vertex, const Part &part,
                                  const RayScene *own) const
{
    VertexLight light;
    const Vec3 written = vecOf(vertex.normal);
    if (!(dot(written, written) > 0.0)) return light; // no face gave it a normal
    const Vec3 normal = normalized(written);
    const Jaw &jaw = part.isUpper ? upper_ : lower_;
    const Jaw &other = part.isUpper ? lower_ : upper_;
    const Vec3 origin = vecOf(vertex.position) + normal * startHeight;
    const Vec3 openOrigin = moved(other.fromOtherWhenOpen, origin, 1.0);
    // A part with a scene of its own must not meet the form that stands for it in the jaw's. What
    // is only attached to a tooth does meet the tooth.
    std::optional<unsigned> leftOut;
    if (own && part.isVariant) leftOut = groupOf(part);

    double all = 0.0, seenFromInside = 0.0, closed = 0.0, open = 0.0;
    for (const Vec3 &direction : directions()) {
        const double weight = dot(normal, direction);
        if (weight <= 0.0) continue;
        all += weight;
        double distance = reachInMillimetres;
        bool isFromInside = false;
        if (own) {
            if (const auto hit = own->nearest(origin, direction, distance))
                distance = hit->distance;
        }
        if (const auto hit = jaw.scene.nearest(origin, direction, distance, leftOut)) {
            distance = hit->distance;
            isFromInside = hit->isFromInside;
        }
        if (isFromInside) seenFromInside += weight;
        closed +=
            weight * taken(distanceOf(other.scene.nearest(origin, direction, distance), distance));
        const Vec3 openDirection = moved(other.fromOtherWhenOpen, direction, 0.0);
        open += weight * taken(distanceOf(other.scene.nearest(openOrigin, openDirection, distance),
                                          distance));
    }
    light.closed = 1.0 - closed / all;
    light.open = 1.0 - open / all;
    light.isBuried = seenFromInside > buriedShare * all;
    return light;
}

std::vector<VertexLight> Surroundings::lightOf(const Part &part) const
{
    std::optional<RayScene> own;
    if (part.kind == Kind::attachment || part.isVariant) {
        own.emplace();
        own->add(part.vertices, part.indexes, 0);
        own->finish();
    }
    std::vector<VertexLight> light;
    light.reserve(part.vertices.size());
    for (const OBJVertex &vertex : part.vertices)
        light.push_back(lightAt(vertex, part, own ? &*own : nullptr));
    evenOut(light, part.indexes);
    return light;
}

void evenOut(std::vector<VertexLight> &light, std::span<const std::uint32_t> indexes)
{
    const Neighbours neighbours(light.size(), indexes);
    std::vector<bool> isKnown;
    for (const VertexLight &vertex : light)
        isKnown.push_back(!vertex.isBuried);
    for (bool isSpreading = true; isSpreading;) {
        isSpreading = false;
        const std::vector<bool> wasKnown = isKnown;
        for (std::uint32_t i = 0; i < light.size(); ++i) {
            if (wasKnown[i]) continue;
            const auto mean = meanOf(light, neighbours.of(i), wasKnown);
            if (!mean) continue;
            light[i].closed = mean->closed;
            light[i].open = mean->open;
            isKnown[i] = isSpreading = true;
        }
    }
    const std::vector<VertexLight> before = light;
    for (std::uint32_t i = 0; i < light.size(); ++i) {
        const auto mean = meanOf(before, neighbours.of(i), isKnown);
        if (!mean) continue;
        light[i].closed = 0.5 * (before[i].closed + mean->closed);
        light[i].open = 0.5 * (before[i].open + mean->open);
    }
}

} // namespace kelo::lightbake
