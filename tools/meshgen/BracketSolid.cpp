#include "tools/meshgen/BracketSolid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>

namespace kelo::meshgen {

namespace {

using Triangle = std::array<std::uint32_t, 3>;

double cross2(const Vec2 &a, const Vec2 &b, const Vec2 &c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double twiceArea(const std::vector<Vec2> &polygon)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Vec2 &a = polygon[i];
        const Vec2 &b = polygon[(i + 1) % polygon.size()];
        sum += a.x * b.y - a.y * b.x;
    }
    return sum;
}

/// How good an ear is: the sine of its sharpest corner, so that slivers are cut last; negative
/// when it is no ear (a reflex corner, or another corner lies within).
double earQuality(const std::vector<Vec2> &polygon, const std::vector<std::uint32_t> &left,
                  std::size_t tip)
{
    const std::size_t count = left.size();
    const Vec2 &a = polygon[left[(tip + count - 1) % count]];
    const Vec2 &b = polygon[left[tip]];
    const Vec2 &c = polygon[left[(tip + 1) % count]];
    const double area = cross2(a, b, c);
    if (area <= 1e-12) return -1.0;
    for (std::size_t k = 2; k + 1 < count; ++k) {
        const Vec2 &p = polygon[left[(tip + k) % count]];
        const bool within =
            cross2(a, b, p) >= 0.0 && cross2(b, c, p) >= 0.0 && cross2(c, a, p) >= 0.0;
        if (within) return -1.0;
    }
    const double ab = std::hypot(b.x - a.x, b.y - a.y);
    const double bc = std::hypot(c.x - b.x, c.y - b.y);
    const double ca = std::hypot(a.x - c.x, a.y - c.y);
    return area / (std::max(ab, std::max(bc, ca)) * (ab + bc + ca));
}

void addPoints(Mesh &mesh, const std::vector<Ring> &rings)
{
    for (const Ring &ring : rings) {
        mesh.positions.insert(mesh.positions.end(), ring.begin(), ring.end());
    }
}

void addBand(Mesh &mesh, std::uint32_t first, std::uint32_t second, std::uint32_t count)
{
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t j = (i + 1) % count;
        mesh.triangles.push_back({first + i, first + j, second + j});
        mesh.triangles.push_back({first + i, second + j, second + i});
    }
}

void addBands(Mesh &mesh, const std::vector<Ring> &rings)
{
    const auto count = static_cast<std::uint32_t>(rings.front().size());
    for (std::uint32_t ring = 0; ring + 1 < rings.size(); ++ring) {
        addBand(mesh, ring * count, (ring + 1) * count, count);
    }
}

} // namespace

double sixfoldVolume(const Mesh &mesh)
{
    double sum = 0.0;
    const Vec3 origin = mesh.positions.empty() ? Vec3{} : mesh.positions.front();
    for (const Triangle &t : mesh.triangles) {
        sum += dot(mesh.positions[t[0]] - origin,
                   cross(mesh.positions[t[1]] - origin, mesh.positions[t[2]] - origin));
    }
    return sum;
}

void orientOutward(Mesh &mesh)
{
    if (sixfoldVolume(mesh) >= 0.0) return;
    for (Triangle &t : mesh.triangles)
        std::swap(t[1], t[2]);
}

std::vector<Triangle> triangulatePolygon(const std::vector<Vec2> &polygon)
{
    std::vector<std::uint32_t> left(polygon.size());
    std::iota(left.begin(), left.end(), 0u);
    if (twiceArea(polygon) < 0.0) std::reverse(left.begin(), left.end());
    std::vector<Triangle> triangles;
    while (left.size() >= 3) {
        std::size_t best = 0;
        double bestQuality = -2.0;
        for (std::size_t tip = 0; tip < left.size(); ++tip) {
            const double quality = earQuality(polygon, left, tip);
            if (quality <= bestQuality) continue;
            bestQuality = quality;
            best = tip;
        }
        const std::size_t count = left.size();
        triangles.push_back(
            {left[(best + count - 1) % count], left[best], left[(best + 1) % count]});
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(best));
    }
    return triangles;
}

Mesh solidFromRings(const std::vector<Ring> &rings, const std::vector<Vec2> &capOutline)
{
    Mesh mesh;
    addPoints(mesh, rings);
    addBands(mesh, rings);
    const auto last = static_cast<std::uint32_t>((rings.size() - 1) * rings.front().size());
    // The bands run round the outline as it is listed; the caps must run against them.
    const bool counterClockwise = twiceArea(capOutline) > 0.0;
    for (const Triangle &t : triangulatePolygon(capOutline)) {
        const Triangle along = counterClockwise ? t : Triangle{t[0], t[2], t[1]};
        mesh.triangles.push_back({along[0], along[2], along[1]});
        mesh.triangles.push_back({last + along[0], last + along[1], last + along[2]});
    }
    orientOutward(mesh);
    return mesh;
}

Mesh solidFromRings(const std::vector<Ring> &rings, const Vec3 &firstPole, const Vec3 &lastPole)
{
    Mesh mesh;
    addPoints(mesh, rings);
    addBands(mesh, rings);
    const auto count = static_cast<std::uint32_t>(rings.front().size());
    const auto last = static_cast<std::uint32_t>(mesh.positions.size()) - count;
    const auto pole = static_cast<std::uint32_t>(mesh.positions.size());
    mesh.positions.push_back(firstPole);
    mesh.positions.push_back(lastPole);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t j = (i + 1) % count;
        mesh.triangles.push_back({pole, j, i});
        mesh.triangles.push_back({pole + 1, last + i, last + j});
    }
    orientOutward(mesh);
    return mesh;
}

Mesh solidWithPassage(const std::vector<Ring> &outside, const std::vector<Ring> &passage,
                      const std::vector<Vec2> &outsideOutline,
                      const std::vector<Vec2> &passageOutline)
{
    Mesh mesh;
    addPoints(mesh, outside);
    addPoints(mesh, passage);
    const auto count = static_cast<std::uint32_t>(outsideOutline.size());
    const auto firstInside = static_cast<std::uint32_t>(outside.size()) * count;
    addBands(mesh, outside);
    for (std::uint32_t ring = 0; ring + 1 < passage.size(); ++ring)
        addBand(mesh, firstInside + (ring + 1) * count, firstInside + ring * count, count);
    // An end is a polygon, round the outside and back round the passage, and the strip between the
    // first and the last points that it leaves open.
    std::vector<Vec2> polygon = outsideOutline;
    polygon.insert(polygon.end(), passageOutline.rbegin(), passageOutline.rend());
    const auto corner = [&](std::uint32_t i) {
        return i < count ? i : firstInside + 2 * count - 1 - i;
    };
    const auto flat = [&](std::uint32_t v) {
        return v < firstInside ? outsideOutline[v] : passageOutline[v - firstInside];
    };
    std::vector<Triangle> end;
    for (const Triangle &t : triangulatePolygon(polygon))
        end.push_back({corner(t[0]), corner(t[1]), corner(t[2])});
    end.push_back({0, count - 1, firstInside});
    end.push_back({count - 1, firstInside + count - 1, firstInside});
    // All the same way round; which way the outside's first band tells: neighbours run against each
    // other along an edge.
    bool againstBand = false;
    for (Triangle &t : end) {
        if (cross2(flat(t[0]), flat(t[1]), flat(t[2])) < 0.0) std::swap(t[1], t[2]);
        for (std::size_t k = 0; k < 3; ++k)
            againstBand |= t[k] == 1 && t[(k + 1) % 3] == 0;
    }
    const std::uint32_t toLast = static_cast<std::uint32_t>(outside.size() - 1) * count;
    const std::uint32_t toLastInside = static_cast<std::uint32_t>(passage.size() - 1) * count;
    const auto atLast = [&](std::uint32_t v) {
        return v < firstInside ? v + toLast : v + toLastInside;
    };
    for (const Triangle &t : end) {
        const Triangle first = againstBand ? t : Triangle{t[0], t[2], t[1]};
        mesh.triangles.push_back(first);
        mesh.triangles.push_back({atLast(first[0]), atLast(first[2]), atLast(first[1])});
    }
    orientOutward(mesh);
    return mesh;
}

Mesh rodThrough(const std::vector<RodStation> &stations, int sides, double firstPole,
                double lastPole)
{
    std::vector<Ring> rings;
    // Any first direction across serves; each further one is the former with the part along the
    // rod taken out, which keeps the sections from twisting.
    const Vec3 &axis = stations.front().direction;
    Vec3 across = std::abs(axis.z) < 0.7 ? Vec3{0.0, 0.0, 1.0} : Vec3{1.0, 0.0, 0.0};
    for (const RodStation &station : stations) {
        across = normalized(rejected(across, station.direction));
        const Vec3 other = cross(station.direction, across);
        Ring ring;
        for (int i = 0; i < sides; ++i) {
            const double angle = 2.0 * std::numbers::pi * i / sides;
            ring.push_back(station.center + across * (station.radius * std::cos(angle)) +
                           other * (station.radius * std::sin(angle)));
        }
        rings.push_back(std::move(ring));
    }
    return solidFromRings(rings, stations.front().center + stations.front().direction * firstPole,
                          stations.back().center + stations.back().direction * lastPole);
}

bool bendsTooSharply(const std::vector<RodStation> &stations)
{
    for (std::size_t i = 0; i + 1 < stations.size(); ++i) {
        const RodStation &a = stations[i];
        const RodStation &b = stations[i + 1];
        const Vec3 between = b.center - a.center;
        // How far the rim of a tilted section reaches before or behind its middle.
        const double tilt = length(cross(a.direction, b.direction));
        if (dot(between, a.direction) < 1.1 * b.radius * tilt) return true;
        if (dot(between, b.direction) < 1.1 * a.radius * tilt) return true;
    }
    return false;
}

Mesh stemWithJoint(const Vec3 &from, double fromRadius, const Vec3 &to, double toRadius, int sides)
{
    const Vec3 d = normalized(to - from);
    constexpr double degree = std::numbers::pi / 180.0;
    std::vector<RodStation> stations{{from, fromRadius, d}, {to, toRadius, d}};
    for (const double angle : {35.0 * degree, 65.0 * degree})
        stations.push_back({to + d * (toRadius * std::sin(angle)), toRadius * std::cos(angle), d});
    return rodThrough(stations, sides, -0.05, toRadius * (1.0 - std::sin(65.0 * degree)));
}

} // namespace kelo::meshgen
