#pragma once

#include "geometry/Extents.h"
#include "keloOpenGL/bands/RubberBand.h"
#include "keloOpenGL/view/MouthTransforms.h"
#include "tests/keloOpenGL/bands/RubberBandReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

/// What the tests of bands share: nodes, vertices, and the comparison with the reference.
namespace kelo::test {

using Keys = std::vector<std::string>;

/// Single precision on coordinates below 64, carried through a few roots and quotients.
constexpr double agreement = 1e-4;

inline Matrix identity()
{
    Matrix matrix;
    Matrix_loadIdentity(&matrix);
    return matrix;
}

inline Matrix translation(const Vector3 &by)
{
    return Matrix_translated(identity(), by.x, by.y, by.z);
}

/// Both jaws of a mouth that is open by an angle, in a scene of the sample patient's size.
struct Jaws
{
    explicit Jaws(double angleInRadians) : angle(angleInRadians)
    {
        MutableExtents scene;
        scene.absorb(-34.0, -26.0, -24.0);
        scene.absorb(34.0, 30.0, 24.0);
        upper = upperMouthTransform(static_cast<float>(angle), scene);
        lower = lowerMouthTransform(static_cast<float>(angle), scene);
    }
    double angle;
    Matrix upper{}, lower{};
};

inline std::vector<RubberBandNode> nodesOf(const Keys &keys, bool closeLoop, const Matrix &upper,
                                           const Matrix &lower, double angle)
{
    std::vector<RubberBandNode> nodes;
    EXPECT_EQ(calculateRubberBandNodes(keys, closeLoop, upper, lower, angle, nodes), nullptr);
    return nodes;
}

inline std::vector<RubberBandNode> nodesOf(const Keys &keys, bool closeLoop, double angle = 0.0)
{
    return nodesOf(keys, closeLoop, identity(), identity(), angle);
}

inline std::vector<RubberBandVertex> verticesOf(const std::vector<RubberBandNode> &nodes)
{
    std::vector<RubberBandVertex> vertices(nodes.size() * rubberBandVerticesPerNode);
    writeRubberBandVertices(nodes, vertices.data());
    return vertices;
}

inline double distance(const Vector3 &a, const Point3 &b)
{
    return std::sqrt((Point3{a.x, a.y, a.z} - b).squaredLength());
}

inline double distance(const Vector3 &a, const Vector3 &b)
{
    return distance(a, Point3{b.x, b.y, b.z});
}

inline std::string described(const Keys &keys, bool closeLoop, double angle)
{
    std::string text = closeLoop ? "closed" : "open";
    for (const std::string &key : keys)
        text += " " + key;
    return text + " at " + std::to_string(angle);
}

/// Compares nodes and vertices with the reference's; returns the greatest deviation.
inline double compareWithReference(const Keys &keys, bool closeLoop, const Matrix &upper,
                                   const Matrix &lower, double angle)
{
    SCOPED_TRACE(described(keys, closeLoop, angle));
    const ReferenceBand band = referenceBand(keys, closeLoop, upper, lower, angle);
    const auto nodes = nodesOf(keys, closeLoop, upper, lower, angle);
    EXPECT_EQ(nodes.size(), band.nodes.size());
    if (nodes.size() != band.nodes.size()) return HUGE_VAL;
    double greatest = 0.0;
    const auto note = [&greatest](double deviation) {
        // A NaN must not pass for a small deviation.
        greatest = deviation <= greatest ? greatest : deviation;
        if (!(deviation <= HUGE_VAL)) greatest = HUGE_VAL;
    };
    for (std::size_t j = 0; j < nodes.size(); ++j) {
        const ReferenceNode &expected = band.nodes[j];
        EXPECT_EQ(nodes[j].name, expected.name) << j;
        EXPECT_EQ(nodes[j].radius, expected.radius) << j;
        note(distance(nodes[j].position, expected.position));
        note(distance(nodes[j].direction, expected.axis));
        note(distance(nodes[j].entryOffset, expected.entry));
        note(distance(nodes[j].apexOffset, expected.apex));
        note(distance(nodes[j].exitOffset, expected.exit));
    }
    const auto vertices = verticesOf(nodes);
    for (std::size_t section = 0; section < 3 * nodes.size(); ++section) {
        const auto expected = band.section(section);
        for (std::size_t corner = 0; corner < 4; ++corner) {
            const RubberBandVertex &vertex = vertices[4 * section + corner];
            note(distance(vertex.position, expected[corner].position));
            note(distance(vertex.normal, expected[corner].normal));
        }
    }
    EXPECT_LE(greatest, agreement);
    return greatest;
}

inline double compareWithReference(const Keys &keys, bool closeLoop, const Jaws &jaws)
{
    return compareWithReference(keys, closeLoop, jaws.upper, jaws.lower, jaws.angle);
}

/// Just below, at and just above both thresholds.
inline std::vector<double> anglesAroundTheThresholds()
{
    std::vector<double> angles;
    for (const double threshold : {fiveDegrees, twentyDegrees}) {
        angles.push_back(std::nextafter(threshold, 0.0));
        angles.push_back(threshold);
        angles.push_back(std::nextafter(threshold, 1.0));
    }
    return angles;
}

// The tables by angle

} // namespace kelo::test
