#include "keloOpenGL/bands/RubberBand.h"

#include <array>
#include <cmath>

namespace kelo {
namespace {

constexpr double fiveDegrees = 0.08726646259971647;
constexpr double twentyDegrees = 0.3490658503988659;

/// Half of the band's thickness: from its middle to a corner of its square section.
constexpr float halfThickness = 0.5f;

/// Below this squared length (2^-16) a cross product has no direction to rely on.
constexpr float shortSquared = 1.52587890625e-05f;

/// The unit vector, or where the vector is too short that of another.
Vector3 unitOrElse(Vector3 vector, Vector3 other)
{
    return Vector3_normalized(Vector3_magnitudeSquared(vector) < shortSquared ? other : vector);
}

void appendHook(std::string_view key, const bracketHookInfo &hook, const Matrix &jaw,
                std::vector<RubberBandNode> &nodes)
{
    nodes.push_back({key,
                     Matrix_multiplyVector3(jaw, hook.position),
                     Matrix_multiplyVector3_rotationOnly(jaw, hook.direction),
                     hook.radius,
                     {},
                     {},
                     {}});
}

void appendAnchor(std::int64_t index, const Matrix &upper, const Matrix &lower,
                  std::vector<RubberBandNode> &nodes)
{
    if (index == -1) return;
    const BandAnchor &anchor = anchors()[static_cast<std::size_t>(index)];
    const Matrix &jaw = anchor.isUpperJaw ? upper : lower;
    nodes.push_back({{},
                     Matrix_multiplyVector3(jaw, anchor.position),
                     Matrix_multiplyVector3_rotationOnly(jaw, anchor.direction),
                     rubberBandAnchorRadius,
                     {},
                     {},
                     {}});
}

/// The anchors between two hooks; the first record that names the pair, either way round, counts.
void appendAnchorsBetween(std::string_view current, std::string_view next,
                          std::span<const AnchorSequence> sequences, const Matrix &upper,
                          const Matrix &lower, std::vector<RubberBandNode> &nodes)
{
    for (const AnchorSequence &sequence : sequences) {
        if (current == sequence.from && next == sequence.to) {
            appendAnchor(sequence.firstAnchor, upper, lower, nodes);
            appendAnchor(sequence.secondAnchor, upper, lower, nodes);
            return;
        }
        if (current == sequence.to && next == sequence.from) {
            appendAnchor(sequence.secondAnchor, upper, lower, nodes);
            appendAnchor(sequence.firstAnchor, upper, lower, nodes);
            return;
        }
    }
}

void calculateOffsets(const RubberBandNode &previous, RubberBandNode &node,
                      const RubberBandNode &next)
{
    Vector3 fromNext = Vector3_subtract(node.position, next.position);
    const Vector3 fromPrevious = Vector3_subtract(node.position, previous.position);
    if (next.name == previous.name) {
        // The band comes back the way it went: the offsets stand on either side of the hook, across
        // the band, so that it turns around the hook.
        node.entryOffset = unitOrElse(Vector3_cross(fromNext, node.direction), fromNext);
        node.exitOffset = unitOrElse(Vector3_cross(node.direction, fromPrevious), fromPrevious);
        fromNext = fromPrevious; // the fallback below is then the unit of fromPrevious, on purpose
    } else {
        node.entryOffset = Vector3_normalized(fromNext);
        node.exitOffset = Vector3_normalized(fromPrevious);
    }
    node.apexOffset = unitOrElse(Vector3_add(node.entryOffset, node.exitOffset),
                                 Vector3_add(fromNext, fromPrevious));
}

/// Two directions across the band.
struct Frame
{
    Vector3 u, v;
};

Frame frameOf(Vector3 along)
{
    Vector3 u = Vector3_cross(along, {0.0f, 1.0f, 0.0f});
    if (Vector3_magnitudeSquared(u) < shortSquared) u = Vector3_cross(along, {1.0f, 0.0f, 0.0f});
    u = Vector3_normalized(u);
    return {u, Vector3_normalized(Vector3_cross(u, along))};
}

float pathDistance(const RubberBandNode &node)
{
    return static_cast<float>(node.radius) + halfThickness;
}

/// From the apex of a node's path to its exit. Not as the difference of those two points: beside an
/// anchor they are 1/32 apart at coordinates of some tens, and their rounding would turn the
/// section by some ten-thousandths.
Vector3 fromApexToExit(const RubberBandNode &node)
{
    return Vector3_multiplyScalar(Vector3_subtract(node.exitOffset, node.apexOffset),
                                  pathDistance(node));
}

/// A square standing on one corner, seen along the band.
void writeSection(Vector3 middle, const Frame &frame, RubberBandVertex *vertices)
{
    const auto corner = [&middle](Vector3 direction) {
        return RubberBandVertex{
            Vector3_add(middle, Vector3_multiplyScalar(direction, halfThickness)), direction};
    };
    vertices[0] = corner(Vector3_multiplyScalar(frame.u, -1.0f));
    vertices[1] = corner(Vector3_multiplyScalar(frame.v, -1.0f));
    vertices[2] = corner(frame.u);
    vertices[3] = corner(frame.v);
}

} // namespace

std::span<const AnchorSequence> anchorSequencesForMouthOpenAngle(double angleInRadians)
{
    const double angle = std::abs(angleInRadians);
    if (angle < fiveDegrees) return anchorSequences0();
    if (angle < twentyDegrees) return anchorSequences1();
    return anchorSequences2();
}

const std::string *calculateRubberBandNodes(std::span<const std::string> keys, bool closeLoop,
                                            const Matrix &upperMouthTransform,
                                            const Matrix &lowerMouthTransform,
                                            double mouthOpenAngleInRadians,
                                            std::vector<RubberBandNode> &nodes)
{
    const auto sequences = anchorSequencesForMouthOpenAngle(mouthOpenAngleInRadians);
    nodes.clear();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::string &key = keys[i];
        const auto hook = bracketHookPositions().find(key);
        if (hook == bracketHookPositions().end()) return &key;
        appendHook(key, hook->second,
                   isUpperToothName(key) ? upperMouthTransform : lowerMouthTransform, nodes);
        if (!closeLoop && i + 1 == keys.size()) break;
        appendAnchorsBetween(key, keys[(i + 1) % keys.size()], sequences, upperMouthTransform,
                             lowerMouthTransform, nodes);
    }
    const std::size_t count = nodes.size();
    for (std::size_t i = 0; i < count; ++i)
        calculateOffsets(nodes[(i + count - 1) % count], nodes[i], nodes[(i + 1) % count]);
    return nullptr;
}

RubberBandPoints rubberBandPoints(const RubberBandNode &node)
{
    const float distance = pathDistance(node);
    const auto at = [&](Vector3 offset) {
        return Vector3_add(node.position, Vector3_multiplyScalar(offset, distance));
    };
    return {at(node.entryOffset), at(node.apexOffset), at(node.exitOffset)};
}

void writeRubberBandVertices(std::span<const RubberBandNode> nodes, RubberBandVertex *vertices)
{
    const RubberBandNode &first = nodes.front();
    const RubberBandNode &last = nodes.back();
    // The first section alone goes by unit offsets instead of the distances of the path: a
    // shortcut of the design that is kept.
    Frame arriving = frameOf(Vector3_subtract(Vector3_add(first.position, first.entryOffset),
                                              Vector3_add(last.position, last.exitOffset)));
    const Vector3 start = rubberBandPoints(first).entry;
    RubberBandPoints points = rubberBandPoints(first);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const bool isLast = i + 1 == nodes.size();
        const RubberBandPoints nextPoints = isLast ? points : rubberBandPoints(nodes[i + 1]);
        const Vector3 nextEntry = isLast ? start : nextPoints.entry;
        const Frame leaving = frameOf(Vector3_subtract(nextEntry, points.exit));
        writeSection(points.entry, arriving, vertices);
        writeSection(points.apex, frameOf(fromApexToExit(nodes[i])), vertices + 4);
        writeSection(points.exit, leaving, vertices + 8);
        // The straight run keeps its section to the end.
        arriving = leaving;
        points = nextPoints;
        vertices += rubberBandVerticesPerNode;
    }
}

void writeRubberBandIndices(std::size_t nodeCount, std::uint32_t *indices)
{
    static constexpr std::array<std::uint32_t, 16> quadrilaterals{0, 4, 5, 1, 1, 5, 6, 2,
                                                                  2, 6, 7, 3, 3, 7, 4, 0};
    const auto vertexCount = static_cast<std::uint32_t>(nodeCount * rubberBandVerticesPerNode);
    for (std::uint32_t section = 0; section < vertexCount; section += 4) {
        for (const std::uint32_t corner : quadrilaterals)
            *indices++ = (section + corner) % vertexCount;
    }
}

std::size_t rubberBandIndexCount(std::size_t nodeCount, bool closeLoop)
{
    if (nodeCount == 0) return 0;
    return rubberBandIndicesPerNode * (closeLoop ? nodeCount : nodeCount - 1);
}

} // namespace kelo
