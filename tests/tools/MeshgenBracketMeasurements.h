#pragma once

#include "tools/meshgen/Arrangement.h"
#include "tools/meshgen/BracketSurface.h"
#include "tools/meshgen/Mesh.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>

namespace kelo::meshgen::test {

/// What a measurement of a round rod across its axis finds.
struct Section
{
    Vec3 center;
    double radius = 0.0;
};

/// Feels for the rod's wall all round from the point on the hook's axis that lies `along` past its
/// position. The radius is that of the rod's corners, the centre the mean of the wall all round.
inline std::optional<Section> sectionOfRod(const Mesh &mesh, const Hook &hook, double along)
{
    const Vec3 middle = hook.position + hook.direction * along;
    const Vec3 across =
        normalized(cross(hook.direction, std::abs(hook.direction.x) < 0.7 ? Vec3{1.0, 0.0, 0.0}
                                                                          : Vec3{0.0, 1.0, 0.0}));
    constexpr int feelers = 360;
    Section section;
    for (int i = 0; i < feelers; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / feelers;
        const auto hit = raycast(mesh, middle, rotated(across, hook.direction, angle));
        if (!hit) return std::nullopt;
        section.center += hit->position / feelers;
        section.radius = std::max(section.radius, hit->distance);
    }
    return section;
}

/// Measures the rod at three places, given in millimetres along the hook's direction past its
/// position: the middle one is compared with the position, the outer two with the direction.
inline void expectRodAlongHook(const Mesh &mesh, const Hook &hook, const std::string &key,
                               const std::array<double, 3> &places)
{
    std::array<Section, 3> sections;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto section = sectionOfRod(mesh, hook, places[i]);
        ASSERT_TRUE(section) << key;
        sections[i] = *section;
        EXPECT_NEAR(section->radius, hook.radius, 0.01 * hook.radius) << key;
    }
    EXPECT_LE(distance(sections[1].center, hook.position + hook.direction * places[1]), 0.05)
        << key;
    const double cosine = dot(normalized(sections[2].center - sections[0].center), hook.direction);
    EXPECT_GE(cosine, std::cos(std::numbers::pi / 180.0)) << key;
}

/// Places on a bracket's post, before, at and after the position.
inline constexpr std::array<double, 3> placesOnPost{-0.3, 0.01, 0.3};

/// Places on a button's neck from the position towards the cap: below it, the neck of some teeth
/// is already in the pad.
inline std::array<double, 3> placesOnNeck(const ToothPlacement &placement, const Hook &neck)
{
    if (dot(neck.direction, placement.labialNormal) < 0.0) return {0.05, 0.25, 0.45};
    return {-0.45, -0.25, -0.05};
}

/// How far the ball or cap that follows the rod stands out: its greatest radius about the axis.
inline double endRadius(const Mesh &mesh, const Hook &hook, double sense)
{
    double greatest = 0.0;
    for (const Vec3 &p : mesh.positions) {
        const Vec3 offset = p - hook.position;
        const double along = sense * dot(offset, hook.direction);
        const double radius = length(rejected(offset, hook.direction));
        if (along > 0.5 && along < 1.6 && radius < 1.3) greatest = std::max(greatest, radius);
    }
    return greatest;
}

/// Looks from inside the tooth at the underside of a pad on its surface: the greatest gap between
/// both on a grid of `width` by `height`, and how much of the grid the pad covers.
struct Contact
{
    double gap = -1.0;
    double covered = 0.0; ///< the fraction of the asked places
};

inline Contact contactOf(const Mesh &mesh, const Mesh &tooth, const SurfaceFrame &frame,
                         double width, double height)
{
    Contact contact;
    constexpr int steps = 8;
    int covered = 0;
    int asked = 0;
    for (int i = -steps; i <= steps; ++i) {
        for (int j = -steps; j <= steps; ++j) {
            const double x = 0.5 * width * i / steps;
            const double y = 0.5 * height * j / steps;
            // Beyond the pad's rounded corners the wings stand free over the tooth.
            if (std::pow(x / (0.5 * width), 4.0) + std::pow(y / (0.5 * height), 4.0) > 0.8)
                continue;
            ++asked;
            const auto surface = surfaceHeight(tooth, frame, x, y);
            if (!surface) continue;
            const auto hit = raycast(mesh, frame.point(x, y, *surface - 0.6), frame.out);
            if (!hit) continue;
            ++covered;
            contact.gap = std::max(contact.gap, hit->distance - 0.6);
        }
    }
    contact.covered = static_cast<double>(covered) / asked;
    return contact;
}

} // namespace kelo::meshgen::test
