#include "tools/banddepth/CentreLine.h"

#include <cmath>

namespace kelo::banddepth {
namespace {

Vec3 widened(const Vector3 &point)
{
    return {double(point.x), double(point.y), double(point.z)};
}

} // namespace

std::vector<Vec3> centreLineCorners(std::span<const RubberBandNode> nodes)
{
    std::vector<Vec3> corners;
    corners.reserve(3 * nodes.size());
    for (const RubberBandNode &node : nodes) {
        const RubberBandPoints points = rubberBandPoints(node);
        for (const Vector3 &point : {points.entry, points.apex, points.exit})
            corners.push_back(widened(point));
    }
    return corners;
}

std::vector<Sample> sampledLine(std::span<const Vec3> corners, bool closed, double spacing)
{
    std::vector<Sample> samples;
    if (corners.size() < 2) return samples;
    samples.push_back({corners[0], 0.0});
    const std::size_t stretches = closed ? corners.size() : corners.size() - 1;
    for (std::size_t i = 0; i < stretches; ++i) {
        const Vec3 &from = corners[i], &to = corners[(i + 1) % corners.size()];
        const double length = meshgen::distance(from, to);
        const auto parts = std::max(1.0, std::ceil(length / spacing));
        for (double part = 1.0; part <= parts; ++part) {
            samples.back().length += 0.5 * length / parts;
            samples.push_back({from + (to - from) * (part / parts), 0.5 * length / parts});
        }
    }
    if (closed) {
        samples.front().length += samples.back().length;
        samples.pop_back();
    }
    return samples;
}

std::vector<Sample> inModelSpace(std::span<const Sample> samples, const Matrix &jawTransform)
{
    const float *const m = jawTransform.m;
    const Vec3 x{double(m[0]), double(m[1]), double(m[2])};
    const Vec3 y{double(m[4]), double(m[5]), double(m[6])};
    const Vec3 z{double(m[8]), double(m[9]), double(m[10])};
    const Vec3 origin{double(m[12]), double(m[13]), double(m[14])};
    std::vector<Sample> seen;
    seen.reserve(samples.size());
    for (const Sample &sample : samples) {
        const Vec3 offset = sample.position - origin;
        seen.push_back({{dot(x, offset), dot(y, offset), dot(z, offset)}, sample.length});
    }
    return seen;
}

Immersion immersionOf(std::span<const Sample> samples, const ClosedMesh &mesh)
{
    Immersion immersion;
    for (const Sample &sample : samples) {
        if (!mesh.contains(sample.position)) continue;
        immersion.length += sample.length;
        const double depth = mesh.distanceTo(sample.position);
        if (depth <= immersion.depth) continue;
        immersion.depth = depth;
        immersion.deepest = sample.position;
    }
    return immersion;
}

} // namespace kelo::banddepth
