#include "tools/meshgen/Gums.h"

#include "tools/meshgen/Palate.h"
#include "tools/meshgen/Simplify.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace kelo::meshgen {

namespace {

/// Rows run along the arch from right to left. An even number per tooth makes the row between the
/// central incisors the middle one.
constexpr int rowsPerTooth = 20;
constexpr int endRows = 12;
/// Points of a row: outer side, over the crest, inner side; then base or palate.
constexpr int sidePoints = 28;
constexpr int crestPoints = 6;
constexpr int palatePoints = 28;

constexpr double marginAboveCervicalLine = 1.0;
/// Of the crown's height over the margin's zenith.
constexpr double papillaOfVisibleHeight = 0.42;
/// The free margin stands this far off the crown: thin, but thicker than the drawing's depth step.
constexpr double gumThickness = 0.5;
constexpr double endLength = 6.0;
/// The bases are trimmed level, like a study model's, just clear of the palate's vault and of the
/// deepest vestibule.
constexpr double upperBase = 17.0;
constexpr double lowerBase = -21.5;
/// Where the base begins below the vestibule, as a fraction of the way from margin to base, and how
/// far it stands out there.
constexpr double baseBegins = 0.60;
constexpr double baseStep = 2.2;
/// Points of the base's level face by their distance from its edge: close together at the edge, so
/// that it stays crisp.
constexpr double basePlaces[] = {0.15, 0.4, 0.8};
/// The part of a tooth's half width on which its rows stand; beyond lies the papilla's.
constexpr double lastRow = 0.93;

Vec3 mixed(const Vec3 &a, const Vec3 &b, double f)
{
    return a * (1.0 - f) + b * f;
}

/// A smooth curve through equally spaced values; beyond the ends it runs on straight.
Vec3 along(const std::vector<Vec3> &values, double at)
{
    const auto last = static_cast<double>(values.size() - 1);
    if (at <= 0.0) return values[0] + (values[1] - values[0]) * at;
    if (at >= last)
        return values.back() + (values.back() - values[values.size() - 2]) * (at - last);
    const auto i = static_cast<std::size_t>(at);
    const double f = at - static_cast<double>(i);
    const Vec3 p1 = values[i];
    const Vec3 p2 = values[i + 1];
    const Vec3 p0 = i > 0 ? values[i - 1] : p1 * 2.0 - p2;
    const Vec3 p3 = i + 2 < values.size() ? values[i + 2] : p2 * 2.0 - p1;
    return 0.5 * (2.0 * p1 + (p2 - p0) * f + (2.0 * p0 - 5.0 * p1 + 4.0 * p2 - p3) * (f * f) +
                  (3.0 * p1 - p0 - 3.0 * p2 + p3) * (f * f * f));
}

/// Every value as the parabola nearest to it and its two neighbours on either side has it: takes
/// the zigzag out of a curve and leaves its bend (after Savitzky and Golay). The ends stay.
std::vector<Vec3> evened(const std::vector<Vec3> &values)
{
    std::vector<Vec3> result = values;
    for (std::size_t i = 2; i + 2 < values.size(); ++i)
        result[i] = (values[i] * 17.0 + (values[i - 1] + values[i + 1]) * 12.0 -
                     (values[i - 2] + values[i + 2]) * 3.0) /
                    35.0;
    return result;
}

/// Where a row crosses the arch.
struct Row
{
    double place = 0.0;   ///< in teeth from the right end; x.5 lies between two teeth
    double between = 0.0; ///< 0 on a tooth's axis, 1 between two teeth
    double shrink = 0.0;  ///< 0 within the arch, up to 1 at the end behind the last tooth
    Vec3 outerMargin, innerMargin;
    Vec3 outerCourse, innerCourse; ///< the margins, evened out over some rows
};

class GumShaper
{
public:
    GumShaper(const std::vector<Tooth> &allTeeth, bool upperJaw);
    Mesh make() const;

private:
    double marginHeight(const Tooth &tooth, double u) const;
    Vec3 marginPoint(const Tooth &tooth, double u, double side) const;
    std::vector<Row> rows() const;
    Vec3 keptBesideNeighbours(std::size_t tooth, const Vec3 &margin) const;
    void fillEmbrasure(Row &row) const;
    void evenOut(std::vector<Row> &all) const;
    void addEndRows(std::vector<Row> &result, bool right) const;
    std::vector<Vec3> sideOf(const Row &row, bool outer) const;
    std::vector<Vec3> crestOf(const Row &row) const;
    std::vector<Vec3> rowPoints(const Row &row) const;
    Vec3 spinePoint(const Row &right, const Row &left, bool base) const;
    std::vector<Vec3> palateOf(const std::vector<Vec3> &side, const Row &row,
                               const Vec3 &spine) const;
    Vec3 palateFold(const Vec3 &point) const;
    void shrinkEnd(const Row &row, std::vector<Vec3> &points) const;
    Mesh upperMesh(const std::vector<Row> &all) const;
    Mesh lowerMesh(const std::vector<Row> &all) const;

    bool upper;
    std::vector<const Tooth *> teeth; // from right to left
    /// One value a tooth, to be looked up with along():
    std::vector<Vec3> outward, apical, outerZenith, innerZenith;
};

GumShaper::GumShaper(const std::vector<Tooth> &allTeeth, bool upperJaw) : upper(upperJaw)
{
    for (const Tooth &tooth : allTeeth)
        if (tooth.placement.upper == upper) teeth.push_back(&tooth);
    std::sort(teeth.begin(), teeth.end(), [&](const Tooth *a, const Tooth *b) {
        const bool ascending = a->placement.number < b->placement.number;
        return upper ? ascending : !ascending && a != b;
    });
    const Vec3 down{0.0, 0.0, upper ? 1.0 : -1.0}; // apically
    for (const Tooth *tooth : teeth) {
        const ToothPlacement &placement = tooth->placement;
        outward.push_back(placement.archNormal);
        // The bone follows the roots less than half of the way.
        apical.push_back(normalized(down * 1.5 - placement.occlusalDirection));
        outerZenith.push_back(marginPoint(*tooth, 0.0, 1.0));
        innerZenith.push_back(marginPoint(*tooth, 0.0, -1.0));
    }
    // The bone follows a crowded row of teeth only by half.
    outerZenith = evened(outerZenith);
    innerZenith = evened(innerZenith);
}

/// Own height of the free margin at the fraction `u` (-1 distal to 1 mesial) of the half width.
double GumShaper::marginHeight(const Tooth &tooth, double u) const
{
    const int position = positionFromMidline(tooth.placement.number);
    // Upper centrals and laterals carry the margin's deepest point distal of their axis.
    const double zenith = !upper || position > 2 ? 0.0 : position == 1 ? -1.0 : -0.4;
    const double u0 = zenith / (tooth.anatomy.dimensions.mesiodistal / 2.0);
    // The last row beside a contact has the papilla's full height already: its tip is round.
    const double v =
        std::min(1.0, (u >= u0 ? (u - u0) / (1.0 - u0) : (u0 - u) / (1.0 + u0)) / lastRow);
    const double power = position <= 3 ? 2.2 : position <= 5 ? 2.7 : 3.5;
    // Round at the zenith, steepest half-way to the papilla's tip.
    const double rise = std::pow(v, power);
    const double visible = tooth.anatomy.dimensions.height - marginAboveCervicalLine;
    return marginAboveCervicalLine +
           papillaOfVisibleHeight * visible *
               (0.35 * v * v + 0.65 * (1.0 - std::cos(std::numbers::pi * rise)) / 2.0);
}

/// The free margin on the labial (side 1) or lingual (side -1) surface, as a point of the jaw.
Vec3 GumShaper::marginPoint(const Tooth &tooth, double u, double side) const
{
    const double z = marginHeight(tooth, u);
    double x = u * tooth.anatomy.dimensions.mesiodistal / 2.0;
    // Towards the contacts a crown may be narrower at this height than it is at its widest.
    for (int attempt = 0; attempt < 20; ++attempt, x *= 0.94) {
        const auto hit = raycast(tooth.ownMesh, {x, 30.0 * side, z}, {0.0, -side, 0.0});
        if (hit) return tooth.placement.toJaw(hit->position);
    }
    return tooth.placement.toJaw({x, 0.0, z});
}

std::vector<Row> GumShaper::rows() const
{
    std::vector<Row> result;
    for (std::size_t i = 0; i < teeth.size(); ++i) {
        const Tooth &tooth = *teeth[i];
        const double towardsLeft = isRightSide(tooth.placement.number) ? 1.0 : -1.0;
        if (i > 0) {
            Row papilla;
            papilla.place = static_cast<double>(i) - 0.5;
            papilla.between = 1.0;
            result.push_back(papilla);
        }
        for (int k = 0; k < rowsPerTooth; ++k) {
            // Closer together towards the contacts, where the margin is steep.
            const double f = 2.0 * (k + 0.5) / rowsPerTooth - 1.0;
            const double u = lastRow * std::sin(f * 1.25) / std::sin(1.25);
            Row row;
            row.place = static_cast<double>(i) + 0.5 * u;
            row.between = (1.0 - std::cos(std::numbers::pi * std::abs(u))) / 2.0;
            row.outerMargin = keptBesideNeighbours(i, marginPoint(tooth, u * towardsLeft, 1.0));
            row.innerMargin = keptBesideNeighbours(i, marginPoint(tooth, u * towardsLeft, -1.0));
            result.push_back(row);
        }
    }
    for (std::size_t r = 1; r + 1 < result.size(); ++r) {
        if (result[r].between < 1.0) continue;
        // A papilla's tip stands above the last rows of the two teeth beside it.
        const Vec3 rise = along(apical, result[r].place) * -0.7;
        result[r].outerMargin =
            (result[r - 1].outerMargin + result[r + 1].outerMargin) / 2.0 + rise;
        result[r].innerMargin =
            (result[r - 1].innerMargin + result[r + 1].innerMargin) / 2.0 + rise;
    }
    for (Row &row : result)
        fillEmbrasure(row);
    std::vector<Row> right;
    addEndRows(right, true);
    std::reverse(right.begin(), right.end());
    addEndRows(result, false);
    result.insert(result.begin(), right.begin(), right.end());
    evenOut(result);
    return result;
}

/// A margin point of a tooth, drawn back where it reaches past the contact with a neighbour, as
/// those of turned and overlapping teeth do: rows must not cross each other.
Vec3 GumShaper::keptBesideNeighbours(std::size_t tooth, const Vec3 &margin) const
{
    const auto middle = [&](std::size_t i) {
        const Vec3 p = teeth[i]->placement.toJaw({0.0, 0.0, 0.6 * teeth[i]->placement.crownHeight});
        return Vec3{p.x, p.y, 0.0};
    };
    const auto width = [&](std::size_t i) { return teeth[i]->anatomy.dimensions.mesiodistal; };
    constexpr double halfContact = 0.06;
    Vec3 kept = margin;
    const auto keepFrom = [&](std::size_t neighbour) {
        const Vec3 here = middle(tooth);
        const Vec3 way = middle(neighbour) - here;
        const Vec3 contact = here + way * (width(tooth) / (width(tooth) + width(neighbour)));
        const double beyond = dot(kept - contact, normalized(way)) + halfContact;
        if (beyond > 0.0) kept -= normalized(way) * beyond;
    };
    if (tooth > 0) keepFrom(tooth - 1);
    if (tooth + 1 < teeth.size()) keepFrom(tooth + 1);
    return kept;
}

/// A papilla fills the space between two crowns nearly out to their faces: the margin must not
/// follow the crowns all the way in.
void GumShaper::fillEmbrasure(Row &row) const
{
    const Vec3 out = normalized(along(outward, row.place));
    const auto fill = [&](Vec3 &margin, const Vec3 &zenith, double sign) {
        const double depth = dot(zenith - margin, out) * sign;
        const double allowed = 0.9;
        if (depth > allowed) margin += out * (sign * 0.7 * (depth - allowed));
    };
    fill(row.outerMargin, along(outerZenith, row.place), 1.0);
    fill(row.innerMargin, along(innerZenith, row.place), -1.0);
}

/// Means over five rows to either side, near rows counting more.
void GumShaper::evenOut(std::vector<Row> &all) const
{
    const auto count = static_cast<int>(all.size());
    for (int r = 0; r < count; ++r) {
        Vec3 outer;
        Vec3 inner;
        double weights = 0.0;
        for (int k = -5; k <= 5; ++k) {
            const Row &row = all[static_cast<std::size_t>(std::clamp(r + k, 0, count - 1))];
            const double weight = std::exp(-k * k / 8.0);
            outer += row.outerMargin * weight;
            inner += row.innerMargin * weight;
            weights += weight;
        }
        all[static_cast<std::size_t>(r)].outerCourse = outer / weights;
        all[static_cast<std::size_t>(r)].innerCourse = inner / weights;
    }
}

/// The ridge behind the last tooth (tuberosity, retromolar pad).
void GumShaper::addEndRows(std::vector<Row> &result, bool right) const
{
    const Tooth &tooth = right ? *teeth.front() : *teeth.back();
    const ToothPlacement &placement = tooth.placement;
    const double half = tooth.anatomy.dimensions.mesiodistal / 2.0;
    const Vec3 outer = placement.toOwn(marginPoint(tooth, -0.93, 1.0));
    const Vec3 inner = placement.toOwn(marginPoint(tooth, -0.93, -1.0));
    const double first = half * 0.98;
    for (int k = 1; k <= endRows; ++k) {
        const double f = static_cast<double>(k) / endRows;
        Row row;
        row.shrink = f;
        const double reach = endLength * std::sin(f * std::numbers::pi / 2.0);
        row.between = 1.0 - smoothstep(0.0, 0.5, f);
        row.place = (0.5 + reach / (2.0 * half)) * (right ? -1.0 : 1.0) + (right ? 0.0 : 13.0);
        const double lift = 0.5 * std::sin(std::min(1.0, f * 2.0) * std::numbers::pi);
        row.outerMargin = placement.toJaw(
            {-(first + reach), outer.y * (1.0 - 0.1 * f), outer.z + lift - 1.2 * f * f});
        row.innerMargin = placement.toJaw(
            {-(first + reach), inner.y * (1.0 - 0.1 * f), inner.z + lift - 1.2 * f * f});
        result.push_back(row);
    }
}

/// How far the outer side stands out of its tooth's zenith at the fraction `f` of its way to the
/// base: a little over the attached gum, back into the vestibule, then out onto the base.
double outerFlare(double f)
{
    return 0.45 * smoothstep(0.05, 0.3, f) - 0.35 * smoothstep(0.35, baseBegins - 0.02, f) +
           baseStep * smoothstep(baseBegins - 0.02, baseBegins + 0.16, f);
}

/// One side of a row from the margin down: first it keeps to the margin, then it goes over into the
/// smooth form of the jaw, prominent over roots and hollow between them, and ends at the base.
std::vector<Vec3> GumShaper::sideOf(const Row &row, bool outer) const
{
    const Vec3 out = normalized(along(outward, row.place)) * (outer ? 1.0 : -1.0);
    const Vec3 down = normalized(along(apical, row.place));
    const Vec3 margin = outer ? row.outerMargin : row.innerMargin;
    const Vec3 course = outer ? row.outerCourse : row.innerCourse;
    const Vec3 zenith = along(outer ? outerZenith : innerZenith, row.place);
    const double toBase = ((upper ? upperBase : lowerBase) - zenith.z) / down.z;
    const double depth = upper && !outer ? 2.6 : toBase;
    std::vector<Vec3> points;
    for (int k = 0; k <= sidePoints; ++k) {
        const double f = std::pow(static_cast<double>(k) / sidePoints, 1.6);
        const double d = depth * f;
        // The free margin is a thin roll; a faint furrow parts it from the attached gum.
        const double stand = (gumThickness + 0.12) * (1.0 - std::exp(-d / 0.30)) - 0.12 -
                             0.10 * std::exp(-(d - 1.7) * (d - 1.7) / 0.35);
        const double hollow = outer ? 0.65 : 0.3;
        const double recess =
            row.shrink > 0.0 ? 0.0 : hollow * row.between * (1.0 - smoothstep(0.35, 0.6, f));
        const double flare =
            (1.0 - 0.8 * row.shrink) * (outer ? outerFlare(f) : 0.5 * smoothstep(0.2, 0.9, f));
        // The thin margin keeps to the crown; what lies below it knows no single wrinkle.
        const Vec3 from = mixed(margin, course, smoothstep(0.15, 1.4, d));
        const Vec3 near = from + down * d + out * stand;
        const Vec3 far = zenith + down * d + out * (stand + flare - recess);
        points.push_back(mixed(near, far, smoothstep(0.0, std::min(5.0, 0.95 * depth), d)));
    }
    return points;
}

/// From the outer margin over into the inner one: through the tooth, or over the saddle between
/// two.
std::vector<Vec3> GumShaper::crestOf(const Row &row) const
{
    const Vec3 down = normalized(along(apical, row.place));
    const double openness = row.shrink > 0.0 ? 0.0 : 1.0 - std::pow(row.between, 2.0);
    const double dip = 0.5 + 1.6 * openness - 1.2 * smoothstep(0.0, 0.4, row.shrink);
    std::vector<Vec3> points;
    for (int k = 1; k < crestPoints; ++k) {
        const double f = static_cast<double>(k) / crestPoints;
        const double sag = std::pow(std::sin(f * std::numbers::pi), 0.6);
        points.push_back(mixed(row.outerMargin, row.innerMargin, f) + down * (dip * sag));
    }
    return points;
}

/// The row from the outer base over the crest to the inner base.
std::vector<Vec3> GumShaper::rowPoints(const Row &row) const
{
    std::vector<Vec3> points = sideOf(row, true);
    std::reverse(points.begin(), points.end());
    for (const Vec3 &point : crestOf(row))
        points.push_back(point);
    for (const Vec3 &point : sideOf(row, false))
        points.push_back(point);
    return points;
}

/// Rounds the jaw off behind the last tooth: rows get lower and narrower.
void GumShaper::shrinkEnd(const Row &row, std::vector<Vec3> &points) const
{
    if (row.shrink <= 0.0) return;
    const double keep = std::sqrt(std::max(0.0, 1.0 - std::pow(row.shrink, 4.0))) * 0.75 + 0.25;
    const Vec3 out = normalized(along(outward, row.place));
    const Vec3 middle = (row.outerMargin + row.innerMargin) / 2.0;
    const double outerBase = points.front().z;
    const double innerBase = points.back().z;
    for (std::size_t k = 0; k < points.size(); ++k) {
        Vec3 &point = points[k];
        const double f = static_cast<double>(k) / static_cast<double>(points.size() - 1);
        const double base = outerBase * (1.0 - f) + innerBase * f;
        point -= out * (dot(point - middle, out) * (1.0 - keep));
        point.z = base + (point.z - base) * keep;
    }
}

/// The middle line of the palate, or of the base over it, between two rows opposite each other.
Vec3 GumShaper::spinePoint(const Row &right, const Row &left, bool base) const
{
    const double front = innerZenith[6].y;
    const double back = innerZenith[0].y + 9.0;
    // The smooth inner outline, not the scalloped margin, spaces the points evenly.
    const Vec3 middle = (along(innerZenith, right.place) + along(innerZenith, left.place)) / 2.0;
    const double y = middle.y;
    const double f = std::clamp((y - front) / (back - front), 0.0, 1.0);
    const double x = middle.x;
    const double vault = 6.2 + 9.2 * smoothstep(-0.12, 0.6, f);
    const double set = 6.5 * (1.0 - f);
    // The palate's rear border is rounded up to the base instead of ending in an edge.
    const double rear = std::clamp((right.shrink - 0.4) / 0.6, 0.0, 1.0);
    const double rounding = 1.0 - std::sqrt(1.0 - 0.96 * rear * rear);
    return {x, y + set, base ? upperBase : vault + (upperBase - vault) * rounding};
}

/// Where the palate's points lie on the way to the middle line, 0 to 1: closer together towards it,
/// where the raphe is.
double palatePlace(int k)
{
    return std::pow(static_cast<double>(k) / palatePoints, 0.85);
}

/// From the end of a side to the middle line: first on in the side's direction, then level.
std::vector<Vec3> GumShaper::palateOf(const std::vector<Vec3> &side, const Row &row,
                                      const Vec3 &spine) const
{
    const Vec3 start = side.back();
    const Vec3 inwards = normalized(along(outward, row.place)) * -1.0;
    const double rise = spine.z - start.z;
    const Vec3 flat{spine.x - start.x, spine.y - start.y, 0.0};
    const Vec3 handle = start + Vec3{0.0, 0.0, 0.6 * rise} + inwards * (0.15 * length(flat));
    const Vec3 level = spine - flat * 0.45;
    std::vector<Vec3> points;
    for (int k = 1; k < palatePoints; ++k) {
        const double f = palatePlace(k);
        const double g = 1.0 - f;
        points.push_back(start * (g * g * g) + handle * (3.0 * g * g * f) +
                         level * (3.0 * g * f * f) + spine * (f * f * f));
    }
    // The folds begin above the teeth's own gum and end before the rear border.
    for (std::size_t k = 0; k < points.size(); ++k) {
        const double f = static_cast<double>(k + 1) / palatePoints;
        points[k] += palateFold(points[k]) * smoothstep(0.05, 0.3, f) * (1.0 - row.shrink);
    }
    return points;
}

/// What rugae, papilla and raphe add to a point of the vault.
Vec3 GumShaper::palateFold(const Vec3 &point) const
{
    const double behind = point.y - innerZenith[6].y;
    const double middle = (innerZenith[6].x + innerZenith[7].x) / 2.0;
    // Behind the incisors the vault is a slope, farther back a ceiling.
    const Vec3 towardsMouth = normalized({0.0, 0.8 * (1.0 - smoothstep(4.0, 20.0, behind)), -1.0});
    return towardsMouth * palateRelief(point.x - middle, behind);
}

/// Joins the two halves of an open or closed chain of points, folded at its middle.
void closeEnd(Mesh &mesh, const std::vector<std::uint32_t> &chain, bool flipped)
{
    const auto add = [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        if (a == b || b == c || a == c) return;
        if (flipped) std::swap(b, c);
        mesh.triangles.push_back({a, b, c});
    };
    std::size_t low = 0;
    std::size_t high = chain.size() - 1;
    while (low + 1 < high) {
        add(chain[low], chain[low + 1], chain[high]);
        if (low + 1 < high - 1) add(chain[low + 1], chain[high - 1], chain[high]);
        ++low;
        --high;
    }
}

void joinRows(Mesh &mesh, const std::vector<std::uint32_t> &a, const std::vector<std::uint32_t> &b,
              bool closed)
{
    const std::size_t n = a.size();
    for (std::size_t k = 0; k + (closed ? 0 : 1) < n; ++k) {
        const std::size_t next = (k + 1) % n;
        mesh.triangles.push_back({a[k], a[next], b[next]});
        mesh.triangles.push_back({a[k], b[next], b[k]});
    }
}

/// The points of a level face between two of its edges.
std::vector<Vec3> baseBetween(const Vec3 &from, const Vec3 &to)
{
    std::vector<Vec3> points;
    const Vec3 way = normalized(to - from);
    for (const double place : basePlaces)
        points.push_back(from + way * place);
    points.push_back((from + to) / 2.0);
    for (auto place = std::rbegin(basePlaces); place != std::rend(basePlaces); ++place)
        points.push_back(to - way * *place);
    return points;
}

/// The level face of the upper base from the middle line to its outer edge: as many points as the
/// palate under it has, so that the two close up behind face to face.
std::vector<Vec3> upperBaseBetween(const Vec3 &middle, const Vec3 &edge)
{
    std::vector<Vec3> points;
    constexpr int atEdge = std::size(basePlaces);
    const Vec3 way = middle - edge;
    for (int k = palatePoints - 1; k > atEdge; --k)
        points.push_back(edge + way * palatePlace(k));
    for (int k = atEdge; k > 0; --k)
        points.push_back(edge + normalized(way) * basePlaces[k - 1]);
    return points;
}

Mesh GumShaper::lowerMesh(const std::vector<Row> &all) const
{
    Mesh mesh;
    std::vector<std::vector<std::uint32_t>> chains;
    for (const Row &row : all) {
        std::vector<Vec3> points = rowPoints(row);
        shrinkEnd(row, points);
        for (const Vec3 &point : baseBetween(points.back(), points.front()))
            points.push_back(point);
        std::vector<std::uint32_t> chain;
        for (const Vec3 &point : points) {
            chain.push_back(static_cast<std::uint32_t>(mesh.positions.size()));
            mesh.positions.push_back(point);
        }
        if (!chains.empty()) joinRows(mesh, chains.back(), chain, true);
        chains.push_back(std::move(chain));
    }
    // Turned so that the chain's fold lies on the crest: the ends are closed from below upwards.
    for (const bool first : {true, false}) {
        std::vector<std::uint32_t> chain = first ? chains.front() : chains.back();
        std::rotate(chain.begin(), chain.end() - std::ssize(basePlaces) - 1, chain.end());
        closeEnd(mesh, chain, first);
    }
    return mesh;
}

Mesh GumShaper::upperMesh(const std::vector<Row> &all) const
{
    Mesh mesh;
    const std::size_t count = all.size();
    std::vector<std::vector<std::uint32_t>> chains(count);
    const auto add = [&](const Vec3 &point) {
        mesh.positions.push_back(point);
        return static_cast<std::uint32_t>(mesh.positions.size() - 1);
    };
    for (std::size_t r = 0; r < count; ++r) {
        const std::size_t opposite = count - 1 - r;
        const Row &right = all[std::min(r, opposite)];
        const Row &left = all[std::max(r, opposite)];
        std::vector<Vec3> middle = rowPoints(all[r]);
        shrinkEnd(all[r], middle);
        const Vec3 vault = spinePoint(right, left, false);
        const Vec3 roof = spinePoint(right, left, true);
        const std::vector<Vec3> palate = palateOf(middle, all[r], vault);
        std::vector<std::uint32_t> &chain = chains[r];
        // Opposite rows share their points on the middle line.
        const bool shared = opposite < r;
        chain.push_back(shared ? chains[opposite].front() : add(roof));
        for (const Vec3 &point : upperBaseBetween(roof, middle.front()))
            chain.push_back(add(point));
        for (const Vec3 &point : middle)
            chain.push_back(add(point));
        for (const Vec3 &point : palate)
            chain.push_back(add(point));
        chain.push_back(shared ? chains[opposite].back() : add(vault));
        if (r > 0) joinRows(mesh, chains[r - 1], chain, false);
    }
    closeEnd(mesh, chains.front(), true);
    closeEnd(mesh, chains.back(), false);
    return mesh;
}

double signedVolume(const Mesh &mesh)
{
    double volume = 0.0;
    for (const auto &t : mesh.triangles)
        volume += dot(mesh.positions[t[0]], cross(mesh.positions[t[1]], mesh.positions[t[2]]));
    return volume / 6.0;
}

Mesh GumShaper::make() const
{
    const std::vector<Row> all = rows();
    Mesh mesh = upper ? upperMesh(all) : lowerMesh(all);
    // Rows crowd together at the papillae's tips and in the bends; this evens them out.
    relax(mesh, 4, 0.5);
    if (signedVolume(mesh) < 0.0)
        for (auto &triangle : mesh.triangles)
            std::swap(triangle[1], triangle[2]);
    // Blades between two crowns and creases at the base are rounded until light falls on them well.
    relaxFolds(mesh, 42.0);
    return mesh;
}

} // namespace

Mesh makeGums(const std::vector<Tooth> &teeth, bool upper)
{
    return GumShaper(teeth, upper).make();
}

} // namespace kelo::meshgen
