#pragma once

#include "models/OBJReader.h"
#include "tools/meshgen/Vec.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace kelo::lightbake {

using meshgen::Vec3;

inline Vec3 vecOf(const float (&components)[3])
{
    return {double(components[0]), double(components[1]), double(components[2])};
}

/// Where a ray meets a surface first.
struct Hit
{
    double distance;   ///< in lengths of the ray's direction
    bool isFromInside; ///< at the back of a face: the ray started inside of a closed surface
};

/// Meshes that rays are traced against. The same rays give the same hits in every run and on every
/// processor of one architecture, however many threads ask.
class RayScene
{
public:
    /// Throws std::runtime_error when the ray tracer cannot be started.
    RayScene();
    ~RayScene();
    RayScene(const RayScene &) = delete;
    RayScene &operator=(const RayScene &) = delete;

    /// `group` is from 0 to 31. Indexes are three per triangle, counter-clockwise seen from
    /// outside, and within the vertices.
    void add(std::span<const OBJVertex> vertices, std::span<const std::uint32_t> indexes,
             unsigned group);
    /// Needed once, after the last mesh and before the first ray.
    void finish();

    /// The nearest hit no farther than `farthest`, without the meshes of `leftOutGroup`. May be
    /// asked on several threads at once.
    std::optional<Hit> nearest(const Vec3 &origin, const Vec3 &direction, double farthest,
                               std::optional<unsigned> leftOutGroup = std::nullopt) const;

private:
    struct Handles;
    std::unique_ptr<Handles> handles_;
};

} // namespace kelo::lightbake
