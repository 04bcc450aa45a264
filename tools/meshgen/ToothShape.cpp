#include "tools/meshgen/ToothShape.h"

#include "tools/meshgen/OcclusalSurface.h"
#include "tools/meshgen/Simplify.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kelo::meshgen {

namespace {

/// Fine enough that a fissure is a line a tenth of a millimetre wide; simplified() then keeps the
/// triangles where the surface bends.
constexpr int sectorCount = 144;
constexpr int rootRings = 7;
constexpr int wallRings = 28;
constexpr int capRings = 40;
constexpr int edgeRings = 6;

/// Fissures are rounded until light falls well on their walls: no normal stands farther off a face.
constexpr double foldDegrees = 48.0;

/// As much of the root as the gum covers; nothing of it is ever seen.
constexpr double rootLength = 5.0;

/// A smooth curve through the six values of a profile (Catmull-Rom), t from 0 to 1.
double profileAt(const SideProfile &profile, double t)
{
    const double scaled = std::clamp(t, 0.0, 1.0) * 5.0;
    const int i = std::min(static_cast<int>(scaled), 4);
    const double f = scaled - i;
    const auto at = [&](int k) { return profile[static_cast<std::size_t>(std::clamp(k, 0, 5))]; };
    const double p0 = i > 0 ? at(i - 1) : 2.0 * at(0) - at(1);
    const double p1 = at(i);
    const double p2 = at(i + 1);
    const double p3 = i < 4 ? at(i + 2) : 2.0 * at(5) - at(4);
    return 0.5 * (2.0 * p1 + (p2 - p0) * f + (2.0 * p0 - 5.0 * p1 + 4.0 * p2 - p3) * f * f +
                  (3.0 * p1 - p0 - 3.0 * p2 + p3) * f * f * f);
}

double bump(double x, double centre, double width)
{
    const double d = (x - centre) / width;
    return std::exp(-d * d);
}

/// |d| with its corner rounded over about `radius`, so that tips and crests are not needles.
double softAbs(double d, double radius)
{
    // Rounding can leave a tiny negative number, of which there is no power.
    return std::max(0.0, std::sqrt(d * d + radius * radius) - radius);
}

struct Outline
{
    double mesial = 0.0, distal = 0.0; // half widths
    double centre = 0.0, half = 0.0;   // labiolingual middle and half thickness
};

/// Some points of a mesh that follow each other round the occlusal surface.
struct CapRing
{
    std::uint32_t first = 0, count = 0;
};

class Shaper
{
public:
    explicit Shaper(const ToothAnatomy &toothAnatomy)
        : anatomy(toothAnatomy),
          occlusal(toothAnatomy),
          halfWidth(toothAnatomy.dimensions.mesiodistal / 2.0),
          halfDepth(toothAnatomy.dimensions.buccolingual / 2.0),
          height(toothAnatomy.dimensions.height)
    {
        if (!anatomy.anterior) evenRim();
    }

    Mesh make();

private:
    void evenRim();
    Outline outlineAt(double t) const;
    Vec3 outlinePoint(double t, double angle) const;
    double edgeHeight(double x, double width) const;
    Vec3 wallPoint(double t, double angle) const;
    Vec3 rootPoint(double depth, double angle) const;
    void sculptFrontTooth(Vec3 &point, double t, double angle) const;
    void sculptBackTooth(Vec3 &point, double t, double angle) const;
    std::vector<std::vector<Vec3>> rings() const;
    void addCapQuad(Mesh &mesh, std::uint32_t a, std::uint32_t b, std::uint32_t c,
                    std::uint32_t d) const;
    void addCapBand(Mesh &mesh, const CapRing &outer, const CapRing &inner) const;
    void addBackCap(Mesh &mesh, const std::vector<Vec3> &rim) const;

    const ToothAnatomy &anatomy;
    OcclusalSurface occlusal;
    double halfWidth;
    double halfDepth;
    double height;
    std::vector<double> rimHeights; ///< of a back tooth's rim, a value a sector, notches evened out
};

void Shaper::evenRim()
{
    // About the angle between a groove and the tip of the cusp beside it.
    constexpr double spread = 20.0 / 360.0 * sectorCount;
    std::vector<double> heights;
    for (int i = 0; i < sectorCount; ++i) {
        const Vec3 rim = outlinePoint(1.0, 2.0 * std::numbers::pi * i / sectorCount);
        heights.push_back(occlusal.lobesAt(rim.x, rim.y));
    }
    for (int i = 0; i < sectorCount; ++i) {
        double sum = 0.0;
        double weights = 0.0;
        for (int k = -sectorCount / 4; k <= sectorCount / 4; ++k) {
            const double weight = std::exp(-k * k / (2.0 * spread * spread));
            sum += weight * heights[static_cast<std::size_t>((i + k + sectorCount) % sectorCount)];
            weights += weight;
        }
        rimHeights.push_back(sum / weights);
    }
}

Outline Shaper::outlineAt(double t) const
{
    Outline outline;
    outline.mesial = halfWidth * profileAt(anatomy.mesial, t);
    outline.distal = halfWidth * profileAt(anatomy.distal, t);
    const double labial = halfDepth * profileAt(anatomy.labial, t);
    const double lingual = halfDepth * profileAt(anatomy.lingual, t);
    outline.centre = (labial - lingual) / 2.0 + anatomy.lean * t;
    outline.half = (labial + lingual) / 2.0;
    return outline;
}

/// A point of the cross-section: two half superellipses that meet at the mesial and distal ends.
Vec3 Shaper::outlinePoint(double t, double angle) const
{
    const Outline outline = outlineAt(t);
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double power = s >= 0.0 ? anatomy.labialSquareness : anatomy.lingualSquareness;
    const double reach =
        std::pow(std::pow(std::abs(c), power) + std::pow(std::abs(s), power), -1.0 / power);
    double x = (c >= 0.0 ? outline.mesial : outline.distal) * c * reach;
    const double y = outline.half * s * reach;
    // The middle heights converge towards the lingual side; cervix and edge do so less.
    const double taper =
        anatomy.lingualTaper * (anatomy.anterior ? std::sin(std::numbers::pi * t) : t);
    x *= 1.0 + taper * y / outline.half * 0.5;
    x += anatomy.rhomboid * y * smoothstep(0.0, 0.5, t);
    return {x, y + outline.centre, 0.0};
}

/// Height of a front tooth's edge at `x` when the tooth is `width` wide on that side.
double Shaper::edgeHeight(double x, double width) const
{
    const double u = std::clamp(x / width - anatomy.tipShift, -1.2, 1.2);
    const double drop = u >= 0.0 ? anatomy.mesialCornerDrop : anatomy.distalCornerDrop;
    const double reach = u >= 0.0 ? 1.0 - anatomy.tipShift : 1.0 + anatomy.tipShift;
    const double rounded =
        anatomy.cornerPower < 2.0 ? softAbs(u / reach, 0.12) : std::abs(u) / reach;
    const double lobes = anatomy.mamelons * (std::cos(3.0 * std::numbers::pi * u) - 1.0) / 2.0 *
                         (1.0 - smoothstep(0.8, 1.0, std::abs(u)));
    return height - drop * std::pow(rounded, anatomy.cornerPower) + lobes;
}

/// Lingual fossa between marginal ridges, cingulum, and the labial face's three lobes.
void Shaper::sculptFrontTooth(Vec3 &point, double t, double angle) const
{
    const Outline outline = outlineAt(t);
    const double u = point.x / (point.x >= 0.0 ? outline.mesial : outline.distal);
    const double side = std::sin(angle);
    if (side < 0.0) {
        const double across = 1.0 - smoothstep(0.25, 0.78, std::abs(u));
        const double along = smoothstep(0.28, 0.46, t) * (1.0 - smoothstep(0.72, 0.96, t));
        const double rim = bump(std::abs(u), 0.74, 0.15) * smoothstep(0.22, 0.4, t) *
                           (1.0 - smoothstep(0.78, 0.97, t));
        const double cingulum = bump(t, 0.22, 0.10) * (1.0 - smoothstep(0.1, 0.75, std::abs(u)));
        point.y += 0.75 * anatomy.fossaDepth * along * across - anatomy.marginalRidges * rim -
                   anatomy.cingulum * cingulum;
    } else {
        // The two furrows between the lobes are deepest towards the edge and fade half-way up.
        const double faces = smoothstep(0.25, 0.7, t) * (1.0 - 0.5 * smoothstep(0.95, 1.0, t));
        const double middle = bump(u, anatomy.tipShift, 0.26);
        const double furrows = bump(u, 0.36, 0.15) + bump(u, -0.38, 0.15);
        point.y += anatomy.labialRidge * faces * (0.6 * middle - 0.8 * furrows) * side;
    }
}

/// The buccal ridge of premolars, and the furrows in which fissures run out over the walls.
void Shaper::sculptBackTooth(Vec3 &point, double t, double angle) const
{
    const Outline outline = outlineAt(t);
    const double width = point.x >= 0.0 ? outline.mesial : outline.distal;
    const double side = std::sin(angle);
    const double ridge = side > 0.0 ? 1.0 : 0.4;
    double depth = ridge * anatomy.labialRidge * bump(point.x / width, 0.0, 0.35) *
                   smoothstep(0.2, 0.7, t) * side;
    for (const WallFurrow &furrow : anatomy.furrows) {
        if (furrow.side * side <= 0.0) continue;
        depth -= furrow.side * furrow.depth * smoothstep(furrow.from, 1.0, t) *
                 bump(point.x, furrow.x * halfWidth, furrow.halfWidth) *
                 smoothstep(0.0, 0.5, std::abs(side));
    }
    point.y += depth;
}

Vec3 Shaper::wallPoint(double t, double angle) const
{
    Vec3 point = outlinePoint(t, angle);
    const Outline outline = outlineAt(t);
    const double width = point.x >= 0.0 ? outline.mesial : outline.distal;
    const double bottom = cervicalLine(anatomy, point.x / width);
    double top = 0.0;
    if (anatomy.anterior) {
        top = edgeHeight(point.x, width);
        sculptFrontTooth(point, t, angle);
    } else {
        Vec3 rim = outlinePoint(1.0, angle);
        sculptBackTooth(rim, 1.0, angle);
        top = occlusal.heightAt(rim.x, rim.y);
        sculptBackTooth(point, t, angle);
    }
    // Where a fissure lowers the rim, the wall below it stays smooth: a bracket stands there. The
    // deeper the notch, the farther down it must reach, or the wall would hang over.
    const double sector = angle / (2.0 * std::numbers::pi) * sectorCount;
    const double level =
        anatomy.anterior ? top : rimHeights[static_cast<std::size_t>(std::lround(sector))];
    const double notch = std::max(level - top, 1e-6);
    const double power = std::clamp(0.8 * (level - bottom) / notch, 1.0, 2.2);
    point.z = bottom + (level - bottom) * t + (top - level) * std::pow(t, power);
    return point;
}

Vec3 Shaper::rootPoint(double depth, double angle) const
{
    const Vec3 cervical = wallPoint(0.0, angle);
    const double f = depth / rootLength;
    const double scale = (1.0 - 0.30 * f) * std::sqrt(std::max(0.0, 1.0 - std::pow(f, 8.0)));
    return {cervical.x * scale, cervical.y * scale, cervical.z * (1.0 - f) - depth};
}

/// All rings from the root's end to the edge or rim, each `sectorCount` points.
std::vector<std::vector<Vec3>> Shaper::rings() const
{
    std::vector<std::vector<Vec3>> rings;
    const auto add = [&](auto &&pointAt) {
        std::vector<Vec3> ring;
        for (int i = 0; i < sectorCount; ++i)
            ring.push_back(pointAt(2.0 * std::numbers::pi * i / sectorCount));
        rings.push_back(std::move(ring));
    };
    for (int k = rootRings; k >= 1; --k) {
        // Closer together near the end, where the root is rounded off.
        const double f = std::sin(0.97 * std::numbers::pi / 2.0 * k / rootRings);
        add([&](double angle) { return rootPoint(rootLength * f, angle); });
    }
    for (int k = 0; k <= wallRings; ++k) {
        const double t = static_cast<double>(k) / wallRings;
        add([&](double angle) { return wallPoint(t, angle); });
    }
    if (!anatomy.anterior) return rings;
    // The edge has thickness: its two borders are rounded, and between them lies a facet, which
    // upper incisors wear towards lingual and lower ones towards labial.
    const double half = outlineAt(1.0).half;
    const double centre = outlineAt(1.0).centre;
    for (int k = 1; k <= edgeRings; ++k) {
        const double turn = 0.94 * std::numbers::pi / 2.0 * k / edgeRings;
        add([&](double angle) {
            Vec3 point = wallPoint(1.0, angle);
            point.y = centre + (point.y - centre) * std::pow(std::cos(turn), 0.7);
            point.x *= 1.0 - 0.35 * half / halfWidth * (1.0 - std::cos(turn));
            point.z += 0.45 * half * std::pow(std::sin(turn), 0.8) +
                       anatomy.wearTilt * (point.y - centre) * std::sin(turn);
            return point;
        });
    }
    return rings;
}

/// Two triangles, divided along the diagonal that keeps to the surface: across a fissure, the other
/// one would be a dam.
void Shaper::addCapQuad(Mesh &mesh, std::uint32_t a, std::uint32_t b, std::uint32_t c,
                        std::uint32_t d) const
{
    const auto at = [&](std::uint32_t i) -> const Vec3 & { return mesh.positions[i]; };
    const Vec3 alongAC = (at(a) + at(c)) / 2.0;
    const Vec3 alongBD = (at(b) + at(d)) / 2.0;
    const auto error = [&](const Vec3 &p) { return std::abs(p.z - occlusal.heightAt(p.x, p.y)); };
    if (error(alongAC) <= error(alongBD)) {
        mesh.triangles.push_back({a, b, c});
        mesh.triangles.push_back({a, c, d});
    } else {
        mesh.triangles.push_back({a, b, d});
        mesh.triangles.push_back({b, c, d});
    }
}

/// Joins a ring with the one inside it, which has as many points or half of them.
void Shaper::addCapBand(Mesh &mesh, const CapRing &outer, const CapRing &inner) const
{
    const auto outerAt = [&](std::uint32_t i) { return outer.first + i % outer.count; };
    const auto innerAt = [&](std::uint32_t i) { return inner.first + i % inner.count; };
    for (std::uint32_t i = 0; i < inner.count; ++i) {
        if (outer.count == inner.count) {
            addCapQuad(mesh, outerAt(i), outerAt(i + 1), innerAt(i + 1), innerAt(i));
            continue;
        }
        mesh.triangles.push_back({outerAt(2 * i), outerAt(2 * i + 1), innerAt(i)});
        addCapQuad(mesh, outerAt(2 * i + 1), outerAt(2 * i + 2), innerAt(i + 1), innerAt(i));
    }
}

void Shaper::addBackCap(Mesh &mesh, const std::vector<Vec3> &rim) const
{
    Vec3 centre;
    for (const Vec3 &point : rim)
        centre += point / static_cast<double>(rim.size());
    // `rim` is already in the mesh as its last ring.
    const auto n = static_cast<std::uint32_t>(rim.size());
    CapRing last{static_cast<std::uint32_t>(mesh.positions.size()) - n, n};
    std::uint32_t stride = 1;
    for (int k = 1; k < capRings; ++k) {
        const double f = 1.0 - static_cast<double>(k) / capRings;
        // Towards the middle rings have fewer points, so that faces stay about as long as wide.
        if (f * stride < 0.5 && n % (2 * stride) == 0) stride *= 2;
        const CapRing next{static_cast<std::uint32_t>(mesh.positions.size()), n / stride};
        for (std::uint32_t i = 0; i < n; i += stride) {
            Vec3 inner = centre + (rim[i] - centre) * f;
            inner.z = occlusal.heightAt(inner.x, inner.y);
            mesh.positions.push_back(inner);
        }
        addCapBand(mesh, last, next);
        last = next;
    }
    const auto pole = static_cast<std::uint32_t>(mesh.positions.size());
    mesh.positions.push_back({centre.x, centre.y, occlusal.heightAt(centre.x, centre.y)});
    for (std::uint32_t i = 0; i < last.count; ++i)
        mesh.triangles.push_back({last.first + i, last.first + (i + 1) % last.count, pole});
}

/// Closes a thin outline by joining its labial half with its lingual half.
void zip(Mesh &mesh, std::uint32_t first, std::uint32_t n)
{
    for (std::uint32_t i = 0; i < n / 2; ++i) {
        const std::uint32_t a = first + i;
        const std::uint32_t b = first + i + 1;
        const std::uint32_t c = first + (n - i - 1) % n;
        const std::uint32_t d = first + (n - i) % n;
        if (i > 0) mesh.triangles.push_back({a, b, d});
        if (i + 1 < n / 2) mesh.triangles.push_back({b, c, d});
        if (i == 0) continue;
    }
}

/// Stretches the crown so that its extents are exactly the table's.
void fitToDimensions(Mesh &mesh, const CrownDimensions &dimensions)
{
    Vec3 low{1e9, 1e9, 1e9};
    Vec3 high{-1e9, -1e9, -1e9};
    for (const Vec3 &p : mesh.positions) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    const double sx = dimensions.mesiodistal / (high.x - low.x);
    const double sy = dimensions.buccolingual / (high.y - low.y);
    const double sz = dimensions.height / high.z;
    const double middle = (high.x + low.x) / 2.0;
    for (Vec3 &p : mesh.positions)
        p = {(p.x - middle) * sx, p.y * sy, p.z > 0.0 ? p.z * sz : p.z};
}

Mesh Shaper::make()
{
    Mesh mesh;
    const std::vector<std::vector<Vec3>> all = rings();
    const auto n = static_cast<std::uint32_t>(sectorCount);
    for (std::size_t k = 0; k < all.size(); ++k) {
        const auto first = static_cast<std::uint32_t>(mesh.positions.size());
        mesh.positions.insert(mesh.positions.end(), all[k].begin(), all[k].end());
        for (std::uint32_t i = 0; k > 0 && i < n; ++i) {
            const std::uint32_t j = (i + 1) % n;
            mesh.triangles.push_back({first - n + i, first - n + j, first + j});
            mesh.triangles.push_back({first - n + i, first + j, first + i});
        }
    }
    if (anatomy.anterior)
        zip(mesh, static_cast<std::uint32_t>(mesh.positions.size()) - n, n);
    else
        addBackCap(mesh, all.back());
    Vec3 end;
    for (const Vec3 &point : all.front())
        end += point / static_cast<double>(sectorCount);
    const auto pole = static_cast<std::uint32_t>(mesh.positions.size());
    mesh.positions.push_back({end.x, end.y, end.z - 0.15});
    for (std::uint32_t i = 0; i < n; ++i)
        mesh.triangles.push_back({(i + 1) % n, i, pole});
    relax(mesh, 2, 0.5);
    fitToDimensions(mesh, anatomy.dimensions);
    relaxFolds(mesh, foldDegrees);
    return mesh;
}

} // namespace

double cervicalLine(const ToothAnatomy &anatomy, double x)
{
    // The mesial curve is the deeper one by about a millimetre in front teeth.
    const double depth = anatomy.dimensions.cervicalCurve;
    const double rise = x >= 0.0 ? depth : depth * 0.7;
    return rise * std::pow(std::min(std::abs(x), 1.0), 2.2);
}

Mesh makeTooth(const ToothAnatomy &anatomy)
{
    return Shaper(anatomy).make();
}

} // namespace kelo::meshgen
