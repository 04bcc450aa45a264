#include "tools/meshgen/BracketSurface.h"

#include "tools/meshgen/BracketSolid.h"

#include <cmath>
#include <numbers>

namespace kelo::meshgen {

namespace {

/// Far enough out to stand outside any crown's bulge, near enough to stay clear of the next tooth.
constexpr double rayStart = 8.0;

/// A pad may follow a surface down to this depth under its middle; beyond, the crown turns away to
/// its neighbour and a pad would wrap round it as no bracket base does.
constexpr double deepestFollowed = 1.1;

/// How far the underside is sunk into the tooth. Between its points the pad is flat and the tooth
/// is not; a few hundredths keep light from showing under the rim.
constexpr double sunk = 0.05;

double signedPower(double base, double exponent)
{
    return base < 0.0 ? -std::pow(-base, exponent) : std::pow(base, exponent);
}

Vec2 outlinePoint(const PadSize &size, double angle)
{
    const double exponent = 2.0 / size.roundness;
    return {0.5 * size.width * signedPower(std::cos(angle), exponent),
            0.5 * size.height * signedPower(std::sin(angle), exponent)};
}

/// The part of the way to the outline point over which the tooth carries the pad.
double carriedPart(const Mesh &tooth, const SurfaceFrame &frame, const Vec2 &outline)
{
    for (double part = 1.0; part > 0.3; part -= 0.05) {
        const std::optional<double> height =
            surfaceHeight(tooth, frame, outline.x * part, outline.y * part);
        if (height && std::abs(*height) <= deepestFollowed) return part;
    }
    return 0.3;
}

Ring padRing(const Mesh &tooth, const SurfaceFrame &frame, const std::vector<Vec2> &outline,
             double scale, double offset)
{
    Ring ring;
    for (const Vec2 &p : outline) {
        const double x = p.x * scale;
        const double y = p.y * scale;
        const double height = surfaceHeight(tooth, frame, x, y).value_or(0.0);
        ring.push_back(frame.point(x, y, height + offset));
    }
    return ring;
}

} // namespace

SurfaceFrame frameOnSurface(const Mesh &tooth, const ToothPlacement &placement, const Vec3 &near,
                            const Vec3 &outward, double radius)
{
    SurfaceFrame frame;
    frame.out = outward;
    frame.up = normalized(rejected(placement.occlusalDirection, frame.out));
    frame.along = normalized(rejected(rejected(placement.mesialDirection, frame.out), frame.up));
    frame.origin = near;
    if (const auto hit = raycast(tooth, near + outward * rayStart, -outward)) {
        frame.origin = hit->position;
    }
    Vec3 normal;
    constexpr int steps = 3;
    for (int i = -steps; i <= steps; ++i) {
        for (int j = -steps; j <= steps; ++j) {
            const double x = radius * i / steps;
            const double y = radius * j / steps;
            const auto hit = raycast(tooth, frame.point(x, y, rayStart), -outward);
            if (hit) normal += hit->normal;
        }
    }
    if (dot(normal, outward) <= 0.0) return frame;
    frame.out = normalized(normal);
    frame.up = normalized(rejected(placement.occlusalDirection, frame.out));
    frame.along = normalized(rejected(rejected(placement.mesialDirection, frame.out), frame.up));
    return frame;
}

std::optional<double> surfaceHeight(const Mesh &tooth, const SurfaceFrame &frame, double x,
                                    double y)
{
    const auto hit = raycast(tooth, frame.point(x, y, rayStart), -frame.out);
    if (!hit) return std::nullopt;
    return rayStart - hit->distance;
}

Mesh makePad(const Mesh &tooth, const SurfaceFrame &frame, const PadSize &size)
{
    std::vector<Vec2> outline;
    for (int i = 0; i < size.corners; ++i) {
        // Half a step of turn puts the points in mirror pairs and one at every rounded corner.
        const double angle = 2.0 * std::numbers::pi * (i + 0.5) / size.corners;
        const Vec2 full = outlinePoint(size, angle);
        const double part = carriedPart(tooth, frame, full);
        outline.push_back({full.x * part, full.y * part});
    }
    const auto ring = [&](double scale, double offset) {
        return padRing(tooth, frame, outline, scale, offset);
    };
    const double top = size.thickness;
    const std::vector<Ring> rings{ring(0.5, -sunk), ring(1.0, -sunk), ring(1.0, 0.5 * top),
                                  ring(0.95, 0.85 * top), ring(0.5, top)};
    const double middle = surfaceHeight(tooth, frame, 0.0, 0.0).value_or(0.0);
    return solidFromRings(rings, frame.point(0.0, 0.0, middle - sunk),
                          frame.point(0.0, 0.0, middle + top));
}

} // namespace kelo::meshgen
