#include "tools/meshgen/Arrangement.h"

#include "tools/meshgen/ArchCurve.h"
#include "tools/meshgen/ToothShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace kelo::meshgen {

namespace {

/// A bracket with its slot and post is nearly 2 thick; a button's neck stands 0.9 off the surface.
constexpr double hookStandOff = 1.7;
constexpr double buttonStandOff = 0.9;
/// Wear has flattened where neighbours touch. Pressed into each other by this much, they meet in an
/// area of about a square millimetre; at a point, light would show through beside it.
constexpr double wantedGap = -0.05;

struct Wish
{
    Vec3 hook;
    Vec3 button;
    Vec3 middle; ///< of the labial and lingual surfaces, seen from above
};

Vec3 horizontal(const Vec3 &v)
{
    return {v.x, v.y, 0.0};
}

Wish wishOf(const HookTable &hooks, int number)
{
    const std::string key = std::to_string(number);
    const auto hook = hooks.find(key);
    const auto button = hooks.find(key + "l");
    if (hook == hooks.end() || button == hooks.end())
        throw std::runtime_error("No hook or no button for tooth " + key);
    Wish wish{hook->second.position, button->second.position, {}};
    const Vec3 across = normalized(horizontal(wish.hook - wish.button));
    wish.middle = horizontal(wish.hook + wish.button) / 2.0 +
                  across * ((buttonStandOff - hookStandOff) / 2.0);
    return wish;
}

double degrees(double angle)
{
    return angle * std::numbers::pi / 180.0;
}

/// The surface point straight labial (sign 1) or lingual (sign -1) of the axis at own height `z`,
/// or, where a fissure crosses the crown at that height, as near below as the wall begins.
Vec3 axisPoint(const Mesh &own, double z, double sign)
{
    // Through a fissure the ray meets the far cusps' inclines, which lie flatter than any wall.
    constexpr double steepest = 0.75;
    for (double depth = 0.0; depth < 2.0; depth += 0.1) {
        const auto hit = raycast(own, {0.0, 30.0 * sign, z - depth}, {0.0, -sign, 0.0});
        if (hit && hit->normal.z < steepest) return hit->position;
    }
    throw std::runtime_error("A crown is shorter than its bracket's height");
}

/// One jaw while its teeth are pushed into place.
class Arch
{
public:
    Arch(const HookTable &hooks, const PatientParameters &patient, bool upperJaw);
    std::vector<Tooth> arranged();

private:
    void lineUp();
    void place(std::size_t i);
    void closeGaps();
    void settle(std::size_t i);

    const PatientParameters &parameters;
    bool upper;
    std::vector<Tooth> teeth; // from the patient's right to the left
    std::vector<Wish> wishes;
    std::vector<double> stations;
    std::vector<double> offsets; // outwards from the curve, to each tooth's middle
    ArchCurve curve;
};

std::vector<int> numbersFromRight(bool upper)
{
    std::vector<int> numbers;
    for (int i = 0; i < 14; ++i)
        numbers.push_back(upper ? 2 + i : 31 - i);
    return numbers;
}

std::vector<Vec3> middles(const HookTable &hooks, bool upper)
{
    std::vector<Vec3> points;
    for (const int number : numbersFromRight(upper))
        points.push_back(wishOf(hooks, number).middle);
    return points;
}

Arch::Arch(const HookTable &hooks, const PatientParameters &patient, bool upperJaw)
    : parameters(patient), upper(upperJaw), curve(middles(hooks, upperJaw))
{
    for (const int number : numbersFromRight(upper)) {
        Tooth tooth;
        tooth.anatomy = patient.at(number).anatomy;
        tooth.placement.number = number;
        tooth.placement.upper = upper;
        teeth.push_back(std::move(tooth));
        wishes.push_back(wishOf(hooks, number));
    }
    lineUp();
    for (Tooth &tooth : teeth)
        tooth.ownMesh = makeTooth(tooth.anatomy);
    offsets.assign(teeth.size(), 0.0);
}

/// Puts the teeth side by side, with the whole row where hooks and buttons want it.
void Arch::lineUp()
{
    double station = 0.0;
    double error = 0.0;
    for (std::size_t i = 0; i < teeth.size(); ++i) {
        const double width = teeth[i].anatomy.dimensions.mesiodistal;
        if (i > 0) station += (width + teeth[i - 1].anatomy.dimensions.mesiodistal) / 2.0;
        stations.push_back(station);
        error += curve.stationOf(wishes[i].middle) - station;
    }
    for (double &s : stations)
        s += error / static_cast<double>(stations.size());
}

/// Sets the frame and origin of one tooth from its station on the curve.
void Arch::place(std::size_t i)
{
    Tooth &tooth = teeth[i];
    ToothPlacement &placement = tooth.placement;
    const ToothParameters &stance = parameters.at(placement.number);
    const Vec3 vertical{0.0, 0.0, upper ? -1.0 : 1.0};
    // At its ends the curve turns with whatever the last hook asks for; second molars stand as the
    // row before them leads to.
    const double inRow = std::clamp(stations[i], 6.0, curve.length() - 6.0);
    const Vec3 outward = curve.outwardAt(inRow);
    const Vec3 mesial = curve.tangentAt(inRow) * (isRightSide(placement.number) ? 1.0 : -1.0);
    placement.archNormal = outward;
    placement.occlusalDirection = normalized(vertical + outward * std::tan(degrees(stance.torque)) +
                                             mesial * std::tan(degrees(stance.tip)));
    placement.labialNormal = normalized(rejected(outward, placement.occlusalDirection));
    placement.mesialDirection =
        normalized(rejected(rejected(mesial, placement.occlusalDirection), placement.labialNormal));
    const Vec3 straightLabial = placement.labialNormal;
    const Vec3 straightMesial = placement.mesialDirection;
    const double turn = degrees(stance.rotation);
    placement.labialNormal = straightLabial * std::cos(turn) - straightMesial * std::sin(turn);
    placement.mesialDirection = straightMesial * std::cos(turn) + straightLabial * std::sin(turn);
    placement.crownHeight = tooth.anatomy.dimensions.height;
    placement.cervicalCenter = {};
    double highest = -1e9;
    for (const Vec3 &p : tooth.ownMesh.positions)
        highest = std::max(highest, dot(placement.toJaw(p), vertical));
    const double height = placement.crownHeight;
    const Vec3 labial =
        axisPoint(tooth.ownMesh, height - tooth.anatomy.dimensions.bracketHeight, 1.0);
    const Vec3 lingual = axisPoint(tooth.ownMesh, 0.5 * height, -1.0);
    const Vec3 reference{0.0, (labial.y + lingual.y) / 2.0, 0.6 * height};
    placement.cervicalCenter =
        curve.pointAt(stations[i]) + outward * offsets[i] - horizontal(placement.toJaw(reference));
    placement.cervicalCenter += vertical * (stance.edge * vertical.z - highest);
    placement.facialAxisPoint = placement.toJaw(labial);
    const double neck = placement.toOwn(wishes[i].button).z;
    placement.lingualAxisPoint = placement.toJaw(
        axisPoint(tooth.ownMesh, std::clamp(neck, 0.25 * height, 0.8 * height), -1.0));
}

/// Moves one tooth outwards or inwards to where its own hook and button want it, most of the way:
/// the rest of the way would make the row look crooked.
void Arch::settle(std::size_t i)
{
    const ToothPlacement &placement = teeth[i].placement;
    const Vec3 outward = curve.outwardAt(stations[i]);
    const double hookError =
        dot(wishes[i].hook - placement.facialAxisPoint, outward) - hookStandOff;
    const double buttonError =
        dot(wishes[i].button - placement.lingualAxisPoint, outward) + buttonStandOff;
    offsets[i] += 0.6 * (hookError + buttonError) / 2.0 + parameters.at(placement.number).outward;
    place(i);
}

void Arch::closeGaps()
{
    double shift = 0.0;
    double error = 0.0;
    std::vector<double> gaps;
    for (std::size_t i = 0; i + 1 < teeth.size(); ++i)
        gaps.push_back(contactGap(teeth[i], teeth[i + 1]));
    for (std::size_t i = 0; i < teeth.size(); ++i) {
        if (i > 0) shift -= gaps[i - 1] - wantedGap;
        stations[i] += shift;
        error += curve.stationOf(wishes[i].middle) - stations[i];
    }
    for (std::size_t i = 0; i < teeth.size(); ++i) {
        stations[i] += error / static_cast<double>(teeth.size());
        place(i);
    }
}

std::vector<Tooth> Arch::arranged()
{
    for (std::size_t i = 0; i < teeth.size(); ++i)
        place(i);
    closeGaps();
    for (std::size_t i = 0; i < teeth.size(); ++i)
        settle(i);
    // Every round leaves a tenth or less of the gap that the one before left.
    for (int round = 0; round < 5; ++round)
        closeGaps();
    if (!upper) std::reverse(teeth.begin(), teeth.end());
    return std::move(teeth);
}

/// How far a crown reaches in one direction, cell by cell over the plane across that direction.
class DepthMap
{
public:
    DepthMap(const Tooth &tooth, const Vec3 &direction, const Vec3 &origin)
        : depth(static_cast<std::size_t>(size * size), -1e9)
    {
        const Vec3 up{0.0, 0.0, 1.0};
        const Vec3 side = cross(up, direction);
        std::vector<Vec3> projected;
        projected.reserve(tooth.ownMesh.positions.size());
        for (const Vec3 &p : tooth.ownMesh.positions) {
            const Vec3 q = tooth.placement.toJaw(p) - origin;
            projected.push_back({dot(q, side), dot(q, up), dot(q, direction)});
        }
        for (const auto &t : tooth.ownMesh.triangles) {
            // Roots taper and lie in the gum; only crowns touch.
            if (std::min({tooth.ownMesh.positions[t[0]].z, tooth.ownMesh.positions[t[1]].z,
                          tooth.ownMesh.positions[t[2]].z}) < 0.0)
                continue;
            addTriangle(projected[t[0]], projected[t[1]], projected[t[2]]);
        }
    }

    static constexpr int size = 200;
    static constexpr double cell = 0.1;
    std::vector<double> depth;

private:
    void addTriangle(const Vec3 &a, const Vec3 &b, const Vec3 &c)
    {
        const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
        if (std::abs(area) < 1e-12) return;
        const auto index = [](double v) {
            return static_cast<int>(std::floor(v / cell)) + size / 2;
        };
        const int x0 = std::max(0, index(std::min({a.x, b.x, c.x})));
        const int x1 = std::min(size - 1, index(std::max({a.x, b.x, c.x})));
        const int y0 = std::max(0, index(std::min({a.y, b.y, c.y})));
        const int y1 = std::min(size - 1, index(std::max({a.y, b.y, c.y})));
        for (int y = y0; y <= y1; ++y)
            for (int x = x0; x <= x1; ++x) {
                const double px = (x - size / 2 + 0.5) * cell;
                const double py = (y - size / 2 + 0.5) * cell;
                const double wa = ((b.x - px) * (c.y - py) - (c.x - px) * (b.y - py)) / area;
                const double wb = ((c.x - px) * (a.y - py) - (a.x - px) * (c.y - py)) / area;
                const double wc = 1.0 - wa - wb;
                if (wa < 0.0 || wb < 0.0 || wc < 0.0) continue;
                double &d = depth[static_cast<std::size_t>(y * size + x)];
                d = std::max(d, wa * a.z + wb * b.z + wc * c.z);
            }
    }
};

} // namespace

Mesh inJaw(const Mesh &mesh, const ToothPlacement &placement)
{
    Mesh result = mesh;
    for (Vec3 &p : result.positions)
        p = placement.toJaw(p);
    for (Vec3 &n : result.normals)
        n = normalized(placement.mesialDirection * n.x + placement.labialNormal * n.y +
                       placement.occlusalDirection * n.z);
    const bool leftHanded = dot(cross(placement.mesialDirection, placement.labialNormal),
                                placement.occlusalDirection) < 0.0;
    if (leftHanded)
        for (auto &triangle : result.triangles)
            std::swap(triangle[1], triangle[2]);
    return result;
}

double contactGap(const Tooth &mesialTooth, const Tooth &distalTooth)
{
    const auto middle = [](const Tooth &tooth) {
        return tooth.placement.toJaw({0.0, 0.0, 0.6 * tooth.placement.crownHeight});
    };
    const Vec3 a = middle(mesialTooth);
    const Vec3 b = middle(distalTooth);
    const Vec3 direction = normalized(horizontal(b - a));
    const Vec3 origin = (a + b) / 2.0;
    const DepthMap from(mesialTooth, direction, origin);
    const DepthMap to(distalTooth, -direction, origin);
    double gap = 1e9;
    for (int y = 0; y < DepthMap::size; ++y)
        for (int x = 0; x < DepthMap::size; ++x) {
            // Seen from the other side, right and left are exchanged.
            const double near = from.depth[static_cast<std::size_t>(y * DepthMap::size + x)];
            const double far =
                to.depth[static_cast<std::size_t>(y * DepthMap::size + DepthMap::size - 1 - x)];
            if (near > -1e8 && far > -1e8) gap = std::min(gap, -far - near);
        }
    return gap;
}

std::vector<Tooth> arrangeTeeth(const HookTable &hooks, const PatientParameters &patient)
{
    std::vector<Tooth> teeth = Arch(hooks, patient, true).arranged();
    for (Tooth &tooth : Arch(hooks, patient, false).arranged())
        teeth.push_back(std::move(tooth));
    return teeth;
}

} // namespace kelo::meshgen
