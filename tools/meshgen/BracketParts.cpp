#include "tools/meshgen/BracketParts.h"

#include "tools/meshgen/BracketSolid.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kelo::meshgen {

namespace {

/// Where the feet of a body end: inside the pad, between the tooth's surface and the pad's top.
constexpr double footDepth = 0.12;
/// At least this much of height lies between a foot and what is over it.
constexpr double leastStep = 0.05;

/// A point of one half of a section across the body: how far up the crown from the slot's middle,
/// and how high, counted down from the body's top or up from the tooth's surface.
struct SectionPoint
{
    double up;
    double height;
    enum { FromTop, FromSurface } from;
};

/// One half of the section of a wing, from the slot's floor over the wing and its undercut down to
/// the foot.
constexpr SectionPoint wingSection[] = {
    {0.5 * slotWidth, -slotDepth, SectionPoint::FromTop},
    {0.5 * slotWidth, -0.06, SectionPoint::FromTop},
    {0.5 * slotWidth + 0.06, 0.0, SectionPoint::FromTop},
    {0.78, -0.01, SectionPoint::FromTop},
    {1.12, -0.09, SectionPoint::FromTop},
    {1.34, -0.25, SectionPoint::FromTop},
    {1.42, -0.44, SectionPoint::FromTop},
    {1.37, -0.60, SectionPoint::FromTop},
    {1.22, -0.68, SectionPoint::FromTop},
    {1.00, -0.67, SectionPoint::FromTop},
    {0.86, -0.80, SectionPoint::FromTop},
    {0.88, 0.42, SectionPoint::FromSurface},
    {1.05, footDepth, SectionPoint::FromSurface},
};
constexpr double wingSectionSpan = 2.84;
/// Points nearer the slot than this keep their place when a wing is made shorter or rounded.
constexpr double wingStart = 0.82;

/// Points nearer the middle than this keep their place when a tube is scooped out between its ends.
constexpr double tubeLipStart = 0.55;

/// One half of the section of a tube's outside, from the middle of its top over a lip with a
/// shallow undercut down to the foot.
constexpr SectionPoint tubeSection[] = {
    {0.28, 0.0, SectionPoint::FromTop},           {0.66, -0.04, SectionPoint::FromTop},
    {0.96, -0.20, SectionPoint::FromTop},         {1.12, -0.46, SectionPoint::FromTop},
    {1.08, -0.66, SectionPoint::FromTop},         {0.92, -0.80, SectionPoint::FromTop},
    {0.92, 0.60, SectionPoint::FromSurface},      {1.02, 0.40, SectionPoint::FromSurface},
    {1.24, footDepth, SectionPoint::FromSurface},
};

/// One section across a body.
struct Station
{
    double along; ///< its place along the arch
    double inset; ///< how far the outline is drawn in, for a bevelled end
    double wing;  ///< what is left of the part of the wings that juts out, 1 is all
    double drop;  ///< how much the top is lowered
};

template<std::size_t N>
std::vector<Vec2> sectionOutline(const SectionPoint (&half)[N], double surfaceAbove,
                                 double surfaceBelow, double top, double lipStart, double wing)
{
    // From the top down on either side. The feet stay below what hangs from the top, also where the
    // tooth comes up to it.
    const auto side = [&](double sign) {
        const double surface = sign > 0.0 ? surfaceAbove : surfaceBelow;
        std::vector<Vec2> points;
        double lowest = top;
        for (const SectionPoint &p : half) {
            const bool fromTop = p.from == SectionPoint::FromTop;
            const double up =
                p.up <= lipStart || !fromTop ? p.up : lipStart + (p.up - lipStart) * wing;
            const double height =
                fromTop ? p.height + top : std::min(p.height + surface, lowest - leastStep);
            lowest = std::min(lowest, height);
            points.push_back({sign * up, height});
        }
        return points;
    };
    std::vector<Vec2> outline = side(1.0);
    const std::vector<Vec2> other = side(-1.0);
    outline.insert(outline.end(), other.rbegin(), other.rend());
    return outline;
}

/// Draws a clockwise outline in by `inset`, along the mean of the normals of both edges at a point.
std::vector<Vec2> drawnIn(const std::vector<Vec2> &outline, double inset)
{
    std::vector<Vec2> result = outline;
    const std::size_t count = outline.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Vec2 &before = outline[(i + count - 1) % count];
        const Vec2 &after = outline[(i + 1) % count];
        const double dx = after.x - before.x;
        const double dy = after.y - before.y;
        const double size = std::hypot(dx, dy);
        result[i].x += inset * dy / size;
        result[i].y -= inset * dx / size;
    }
    return result;
}

Ring placed(const SurfaceFrame &frame, const std::vector<Vec2> &outline, double along)
{
    Ring ring;
    for (const Vec2 &p : outline)
        ring.push_back(frame.point(along, p.x, p.y));
    return ring;
}

double heightOr(const Mesh &tooth, const SurfaceFrame &frame, double x, double y, double otherwise)
{
    return surfaceHeight(tooth, frame, x, y).value_or(otherwise);
}

/// One of the two halves, between `from` and `to` along the arch.
Mesh makeWing(const Mesh &tooth, const SurfaceFrame &frame, double wingSpan, double from, double to,
              double top)
{
    const double full = (0.5 * wingSpan - wingStart) / (0.5 * wingSectionSpan - wingStart);
    const Station stations[] = {
        {from, 0.06, 0.50 * full, 0.02},      {from + 0.05, 0.01, 0.70 * full, 0.0},
        {from + 0.16, 0.0, 0.92 * full, 0.0}, {from + 0.32, 0.0, full, 0.0},
        {to - 0.32, 0.0, full, 0.0},          {to - 0.16, 0.0, 0.92 * full, 0.0},
        {to - 0.05, 0.01, 0.70 * full, 0.0},  {to, 0.06, 0.50 * full, 0.02},
    };
    std::vector<Ring> rings;
    std::vector<Vec2> cap;
    for (const Station &s : stations) {
        const double above = heightOr(tooth, frame, s.along, 0.95, 0.0);
        const double below = heightOr(tooth, frame, s.along, -0.95, 0.0);
        const std::vector<Vec2> outline =
            drawnIn(sectionOutline(wingSection, above, below, top, wingStart, s.wing), s.inset);
        if (cap.empty()) cap = outline;
        rings.push_back(placed(frame, outline, s.along));
    }
    return solidFromRings(rings, cap);
}

/// The low block that joins both halves; it ends a little below the slot's floor.
Mesh makeCore(const Mesh &tooth, const SurfaceFrame &frame, double halfLength, double top)
{
    const double floor = top - slotDepth - 0.04;
    std::vector<Ring> rings;
    std::vector<Vec2> cap;
    for (const double along : {-halfLength, halfLength}) {
        const double above = heightOr(tooth, frame, along, 0.8, 0.0) + footDepth;
        const double below = heightOr(tooth, frame, along, -0.8, 0.0) + footDepth;
        cap = {{0.55, floor},  {0.76, floor - 0.16},  {0.80, above},
               {-0.80, below}, {-0.76, floor - 0.16}, {-0.55, floor}};
        rings.push_back(placed(frame, cap, along));
    }
    return solidFromRings(rings, cap);
}

/// The bend of a hook's arm from its root to the start of its post.
std::vector<RodStation> armStations(const Vec3 &root, const Vec3 &rootDirection,
                                    const Vec3 &postStart, const Hook &hook)
{
    const Vec3 d = hook.direction;
    const double span = distance(root, postStart);
    // A cubic curve that leaves the body along its direction and arrives along the post's.
    const Vec3 c1 = root + rootDirection * (0.4 * span);
    const Vec3 c2 = postStart - d * (0.4 * span);
    std::vector<RodStation> stations;
    constexpr int bends = 5;
    for (int i = 0; i < bends; ++i) {
        const double t = static_cast<double>(i) / bends;
        const double s = 1.0 - t;
        const Vec3 center = root * (s * s * s) + c1 * (3.0 * s * s * t) + c2 * (3.0 * s * t * t) +
                            postStart * (t * t * t);
        const Vec3 tangent =
            (c1 - root) * (s * s) + (c2 - c1) * (2.0 * s * t) + (postStart - c2) * (t * t);
        // Stouter at the root, as a cast hook is.
        stations.push_back({center, hook.radius * (1.0 + 0.25 * s), normalized(tangent)});
    }
    stations.push_back({postStart, hook.radius, d});
    return stations;
}

/// The passage's outline with as many points as the tube's outside, each opposite its partner.
std::vector<Vec2> passageOutline(std::size_t count, double floor, double flare)
{
    const double u = 0.5 * slotWidth + flare;
    const double low = floor - flare;
    const double high = floor + slotDepth + flare;
    const std::size_t half = count / 2;
    std::vector<Vec2> outline(count);
    for (std::size_t i = 0; i < half; ++i) {
        // Points 1 and half - 2 are the corners; the others lie evenly on the three edges.
        const auto corner = half - 2;
        Vec2 p{u, low};
        if (i == 0) p = {0.5 * u, high};
        if (i >= 1 && i <= corner) {
            const double part = static_cast<double>(i - 1) / static_cast<double>(corner - 1);
            p = {u, high + (low - high) * part};
        }
        if (i == half - 1) p = {0.5 * u, low};
        outline[i] = p;
        outline[count - 1 - i] = {-p.x, p.y};
    }
    return outline;
}

} // namespace

Mesh makeTwinBody(const Mesh &tooth, const SurfaceFrame &frame, const BracketMeasures &measures,
                  double top)
{
    const double outer = 0.5 * measures.width;
    const double inner = 0.5 * measures.split;
    Mesh body = makeWing(tooth, frame, measures.wingSpan, inner, outer, top);
    append(body, makeWing(tooth, frame, measures.wingSpan, -outer, -inner, top));
    append(body, makeCore(tooth, frame, 0.5 * (inner + outer), top));
    return body;
}

Mesh makeTubeBody(const Mesh &tooth, const SurfaceFrame &frame, const BracketMeasures &measures,
                  double top)
{
    const double end = 0.5 * measures.width;
    const Station outside[] = {
        {-end, 0.07, 0.85, 0.03},       {-end + 0.09, 0.0, 1.0, 0.0},  {-0.42 * end, 0.0, 1.0, 0.0},
        {-0.28 * end, 0.0, 0.62, 0.12}, {0.28 * end, 0.0, 0.62, 0.12}, {0.42 * end, 0.0, 1.0, 0.0},
        {end - 0.09, 0.0, 1.0, 0.0},    {end, 0.07, 0.85, 0.03},
    };
    // The wall over the passage; the passage lies that far under the body's top.
    constexpr double wall = 0.36;
    constexpr double flare = 0.12;
    const double floor = top - wall - slotDepth;
    // The feet stand below the passage's widened mouth, also where the tooth comes up beside it.
    const double highestSurface = floor - flare - footDepth - 0.08;
    std::vector<Ring> rings;
    std::vector<Vec2> endOutline;
    for (const Station &s : outside) {
        const double above = std::min(heightOr(tooth, frame, s.along, 1.1, 0.0), highestSurface);
        const double below = std::min(heightOr(tooth, frame, s.along, -1.1, 0.0), highestSurface);
        const std::vector<Vec2> outline = drawnIn(
            sectionOutline(tubeSection, above, below, top - s.drop, tubeLipStart, s.wing), s.inset);
        if (endOutline.empty()) endOutline = outline;
        rings.push_back(placed(frame, outline, s.along));
    }
    const std::size_t count = rings.front().size();
    const std::vector<Vec2> mouth = passageOutline(count, floor, flare);
    const std::vector<Vec2> bore = passageOutline(count, floor, 0.0);
    const std::vector<Ring> passage{placed(frame, mouth, -end), placed(frame, bore, -end + 0.35),
                                    placed(frame, bore, end - 0.35), placed(frame, mouth, end)};
    return solidWithPassage(rings, passage, endOutline, mouth);
}

Mesh makeHookArm(const Vec3 &root, const Vec3 &rootDirection, const Hook &hook)
{
    // Half the thickness of the elastic that lies on the post, and a little play.
    constexpr double halfElastic = 0.55;
    const Vec3 d = hook.direction;
    const Vec3 postStart = hook.position - d * halfElastic;
    const Vec3 postEnd = hook.position + d * halfElastic;
    const int sides = hook.radius < 0.3 ? 10 : 14;
    std::vector<RodStation> stations = armStations(root, rootDirection, postStart, hook);
    Mesh arm;
    if (bendsTooSharply(stations)) {
        // The joint's ball stays clear of where the elastic lies.
        const double back = std::max(halfElastic, 0.35 + 1.1 * hook.radius);
        const Vec3 joint = hook.position - d * back;
        stations = {{joint, hook.radius, d}};
        arm = stemWithJoint(root, 1.25 * hook.radius, joint, hook.radius, sides);
    }
    // A section at the position itself: who measures the post there finds it, corner by corner.
    stations.push_back({hook.position, hook.radius, d});
    stations.push_back({postEnd, hook.radius, d});
    const double ball = std::max(1.4 * hook.radius, hook.radius + 0.08);
    const double neckAngle = std::asin(hook.radius / ball);
    const Vec3 ballCenter = postEnd + d * (ball * std::cos(neckAngle));
    for (const double degrees : {120.0, 85.0, 50.0, 22.0}) {
        const double angle = degrees * std::numbers::pi / 180.0;
        stations.push_back({ballCenter + d * (ball * std::cos(angle)), ball * std::sin(angle), d});
    }
    const double cap = ball * (1.0 - std::cos(22.0 * std::numbers::pi / 180.0));
    append(arm, rodThrough(stations, sides, -0.2 * hook.radius, cap));
    return arm;
}

} // namespace kelo::meshgen
