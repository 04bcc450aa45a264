#include "keloOpenGL/treatment/RubberBand.h"

#include "geometry/Extents.h"
#include "keloOpenGL/view/MouthTransforms.h"
#include "tests/keloOpenGL/treatment/RubberBandReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace kelo;
using namespace kelo::test;

using Keys = std::vector<std::string>;

/// Single precision on coordinates below 64, carried through a few roots and quotients.
constexpr double agreement = 1e-4;

Matrix identity()
{
    Matrix matrix;
    Matrix_loadIdentity(&matrix);
    return matrix;
}

Matrix translation(const Vector3 &by)
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

std::vector<RubberBandNode> nodesOf(const Keys &keys, bool closeLoop, const Matrix &upper,
                                    const Matrix &lower, double angle)
{
    std::vector<RubberBandNode> nodes;
    EXPECT_EQ(calculateRubberBandNodes(keys, closeLoop, upper, lower, angle, nodes), nullptr);
    return nodes;
}

std::vector<RubberBandNode> nodesOf(const Keys &keys, bool closeLoop, double angle = 0.0)
{
    return nodesOf(keys, closeLoop, identity(), identity(), angle);
}

std::vector<RubberBandVertex> verticesOf(const std::vector<RubberBandNode> &nodes)
{
    std::vector<RubberBandVertex> vertices(nodes.size() * rubberBandVerticesPerNode);
    writeRubberBandVertices(nodes, vertices.data());
    return vertices;
}

double distance(const Vector3 &a, const Point3 &b)
{
    return std::sqrt((Point3{a.x, a.y, a.z} - b).squaredLength());
}

double distance(const Vector3 &a, const Vector3 &b)
{
    return distance(a, Point3{b.x, b.y, b.z});
}

std::string described(const Keys &keys, bool closeLoop, double angle)
{
    std::string text = closeLoop ? "closed" : "open";
    for (const std::string &key : keys)
        text += " " + key;
    return text + " at " + std::to_string(angle);
}

/// Compares nodes and vertices with the reference's; returns the greatest deviation.
double compareWithReference(const Keys &keys, bool closeLoop, const Matrix &upper,
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

double compareWithReference(const Keys &keys, bool closeLoop, const Jaws &jaws)
{
    return compareWithReference(keys, closeLoop, jaws.upper, jaws.lower, jaws.angle);
}

/// Just below, at and just above both thresholds.
std::vector<double> anglesAroundTheThresholds()
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

TEST(RubberBand, theTableChangesAtExactlyFiveAndExactlyTwentyDegrees)
{
    const auto sizeAt = [](double angle) { return anchorSequencesForMouthOpenAngle(angle).size(); };
    EXPECT_EQ(sizeAt(0.0), 90u);
    EXPECT_EQ(sizeAt(std::nextafter(fiveDegrees, 0.0)), 90u);
    EXPECT_EQ(sizeAt(fiveDegrees), 64u);
    EXPECT_EQ(sizeAt(std::nextafter(fiveDegrees, 1.0)), 64u);
    EXPECT_EQ(sizeAt(std::nextafter(twentyDegrees, 0.0)), 64u);
    EXPECT_EQ(sizeAt(twentyDegrees), 66u);
    EXPECT_EQ(sizeAt(std::nextafter(twentyDegrees, 1.0)), 66u);
    EXPECT_EQ(sizeAt(1.0), 66u);
}

TEST(RubberBand, theMouthOpensEitherWay)
{
    for (const double angle : anglesAroundTheThresholds())
        EXPECT_EQ(anchorSequencesForMouthOpenAngle(-angle).data(),
                  anchorSequencesForMouthOpenAngle(angle).data())
            << angle;
}

TEST(RubberBand, anAngleInSinglePrecisionIsComparedInDoublePrecision)
{
    // The nearest single-precision numbers lie below both thresholds.
    ASSERT_LT(static_cast<double>(static_cast<float>(fiveDegrees)), fiveDegrees);
    ASSERT_LT(static_cast<double>(static_cast<float>(twentyDegrees)), twentyDegrees);
    EXPECT_EQ(anchorSequencesForMouthOpenAngle(static_cast<float>(fiveDegrees)).size(), 90u);
    EXPECT_EQ(anchorSequencesForMouthOpenAngle(static_cast<float>(twentyDegrees)).size(), 64u);
}

// Nodes

/// The table indices of a band's anchors, by where they are; jaws at rest.
std::vector<std::size_t> anchorsOf(const std::vector<RubberBandNode> &nodes)
{
    std::vector<std::size_t> indices;
    const auto &table = ReferenceTables::shared().anchors;
    for (const RubberBandNode &node : nodes) {
        if (!node.name.empty()) continue;
        const auto nearest = std::min_element(
            table.begin(), table.end(), [&](const ReferenceAnchor &a, const ReferenceAnchor &b) {
                return distance(node.position, a.position) < distance(node.position, b.position);
            });
        EXPECT_LT(distance(node.position, nearest->position), agreement);
        indices.push_back(static_cast<std::size_t>(nearest - table.begin()));
    }
    return indices;
}

TEST(RubberBand, anElasticFrom6To25PassesThroughAnchor2WithTheMouthClosed)
{
    EXPECT_EQ(anchorsOf(nodesOf({"6", "25"}, false, 0.0)), (std::vector<std::size_t>{2}));
    EXPECT_EQ(anchorsOf(nodesOf({"25", "6"}, false, 0.0)), (std::vector<std::size_t>{2}));
}

TEST(RubberBand, anElasticFrom6To25PassesThroughAnchors0And15FromFiveDegreesOn)
{
    for (const double angle : {fiveDegrees, 0.2, std::nextafter(twentyDegrees, 0.0)}) {
        EXPECT_EQ(anchorsOf(nodesOf({"6", "25"}, false, angle)), (std::vector<std::size_t>{0, 15}));
        EXPECT_EQ(anchorsOf(nodesOf({"25", "6"}, false, angle)), (std::vector<std::size_t>{15, 0}));
    }
}

TEST(RubberBand, anElasticFrom6To25PassesThroughAnchor16FromTwentyDegreesOn)
{
    for (const double angle : {twentyDegrees, 0.6}) {
        EXPECT_EQ(anchorsOf(nodesOf({"6", "25"}, false, angle)), (std::vector<std::size_t>{16}));
        EXPECT_EQ(anchorsOf(nodesOf({"25", "6"}, false, angle)), (std::vector<std::size_t>{16}));
    }
}

TEST(RubberBand, aClosedBandComesBackThroughTheAnchorsInReverse)
{
    const auto nodes = nodesOf({"6", "25"}, true, fiveDegrees);
    EXPECT_EQ(anchorsOf(nodes), (std::vector<std::size_t>{0, 15, 15, 0}));
    ASSERT_EQ(nodes.size(), 6u);
    EXPECT_EQ(nodes[0].name, "6");
    EXPECT_EQ(nodes[3].name, "25");
}

TEST(RubberBand, aPairOfHooksWithoutARecordIsJoinedStraight)
{
    const auto nodes = nodesOf({"3", "4", "28"}, true);
    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_EQ(nodes[0].name, "3");
    EXPECT_EQ(nodes[1].name, "4");
    EXPECT_EQ(nodes[2].name, "28");
}

TEST(RubberBand, anOpenBandHasNoAnchorsOnTheWayBack)
{
    EXPECT_EQ(nodesOf({"6", "25"}, false).size(), 3u);
    EXPECT_EQ(nodesOf({"6", "25"}, true).size(), 4u);
}

TEST(RubberBand, hooksAndAnchorsMoveWithTheirOwnJaw)
{
    const Vector3 up{1.0f, 2.0f, 3.0f};
    const Vector3 down{-4.0f, 5.0f, -6.0f};
    // 0 moves with the upper jaw, 15 with the lower.
    const Keys keys{"6", "25"};
    const auto rest = nodesOf(keys, false, fiveDegrees);
    const auto moved = nodesOf(keys, false, translation(up), translation(down), fiveDegrees);
    ASSERT_EQ(moved.size(), 4u);
    const std::vector<Vector3> shifts{up, up, down, down};
    for (std::size_t j = 0; j < moved.size(); ++j) {
        EXPECT_LT(distance(moved[j].position, Vector3_add(rest[j].position, shifts[j])), agreement);
        // A translation turns no axis.
        EXPECT_EQ(distance(moved[j].direction, rest[j].direction), 0.0) << j;
    }
}

TEST(RubberBand, anAnchorHasNoNameAndTheRadiusThatLeavesAThirtySecond)
{
    const auto nodes = nodesOf({"6", "25"}, false);
    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_TRUE(nodes[1].name.empty());
    EXPECT_EQ(nodes[1].radius, -0.46875);
    const RubberBandPoints points = rubberBandPoints(nodes[1]);
    for (const Vector3 &point : {points.entry, points.apex, points.exit})
        EXPECT_NEAR(distance(point, nodes[1].position), 0.03125, 1e-5);
}

TEST(RubberBand, theInnerEdgeOfTheBandTouchesTheHook)
{
    const auto nodes = nodesOf({"2", "5", "8"}, true);
    for (const RubberBandNode &node : nodes) {
        const RubberBandPoints points = rubberBandPoints(node);
        for (const Vector3 &point : {points.entry, points.apex, points.exit})
            EXPECT_NEAR(distance(point, node.position), node.radius + 0.5, 1e-5) << node.name;
    }
}

TEST(RubberBand, theFirstKeyWithoutAHookIsTold)
{
    std::vector<RubberBandNode> nodes;
    const Keys keys{"8", "16", "17", "9"};
    EXPECT_EQ(calculateRubberBandNodes(keys, true, identity(), identity(), 0.0, nodes), &keys[1]);
    for (const std::string &key : Keys{"", "1", "16", "17", "32", "8L", " 8", "08", "16l"}) {
        const Keys alone{key};
        EXPECT_EQ(calculateRubberBandNodes(alone, false, identity(), identity(), 0.0, nodes),
                  &alone[0])
            << key;
    }
}

TEST(RubberBand, noKeysMakeNoNodes)
{
    EXPECT_TRUE(nodesOf({}, true).empty());
    EXPECT_TRUE(nodesOf({}, false).empty());
}

TEST(RubberBand, theNodesOfAnEarlierBandAreForgotten)
{
    std::vector<RubberBandNode> nodes;
    const Keys many{"2", "3", "4", "5", "6"};
    const Keys few{"12", "13"};
    ASSERT_EQ(calculateRubberBandNodes(many, true, identity(), identity(), 0.0, nodes), nullptr);
    ASSERT_EQ(nodes.size(), 5u);
    const RubberBandNode *room = nodes.data();
    ASSERT_EQ(calculateRubberBandNodes(few, true, identity(), identity(), 0.0, nodes), nullptr);
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nodes[0].name, "12");
    EXPECT_EQ(nodes.data(), room);
}

// Offsets: which branch, and what it gives

TEST(RubberBand, aClosedBandOverTwoUpperHooksLoopsAroundBoth)
{
    const auto nodes = nodesOf({"3", "5"}, true);
    ASSERT_EQ(nodes.size(), 2u);
    const Vector3 band = Vector3_subtract(nodes[1].position, nodes[0].position);
    for (const RubberBandNode &node : nodes) {
        for (const Vector3 &offset : {node.entryOffset, node.exitOffset}) {
            EXPECT_NEAR(Vector3_dot(offset, Vector3_normalized(band)), 0.0, 1e-6) << node.name;
            EXPECT_NEAR(Vector3_dot(offset, node.direction), 0.0, 1e-6) << node.name;
        }
        // On either side of the hook.
        EXPECT_NEAR(Vector3_dot(node.entryOffset, node.exitOffset), -1.0, 1e-6);
    }
    // Outermost on the side away from the other hook.
    EXPECT_NEAR(Vector3_dot(nodes[0].apexOffset, Vector3_normalized(band)), -1.0, 1e-6);
    EXPECT_NEAR(Vector3_dot(nodes[1].apexOffset, Vector3_normalized(band)), 1.0, 1e-6);
    // The two sides do not cross: it leaves one hook on the side where it enters the other.
    const auto sideOf = [](const Vector3 &offset, const Vector3 &other) {
        return Vector3_dot(offset, other) > 0.0f;
    };
    EXPECT_TRUE(sideOf(nodes[0].exitOffset, nodes[1].entryOffset));
    EXPECT_TRUE(sideOf(nodes[1].exitOffset, nodes[0].entryOffset));
    EXPECT_EQ(rubberBandIndexCount(nodes.size(), true), 96u);
}

TEST(RubberBand, theSameTwoHooksOpenAreOneWrapAndOneStraightSide)
{
    const auto nodes = nodesOf({"3", "5"}, false);
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(rubberBandIndexCount(nodes.size(), false), 48u);
}

TEST(RubberBand, anOpenBandHasTheOffsetsOfItsCyclicNeighbours)
{
    const auto open = nodesOf({"3", "5", "8"}, false);
    const auto closed = nodesOf({"3", "5", "8"}, true);
    ASSERT_EQ(open.size(), closed.size());
    for (std::size_t j = 0; j < open.size(); ++j) {
        EXPECT_EQ(distance(open[j].entryOffset, closed[j].entryOffset), 0.0);
        EXPECT_EQ(distance(open[j].apexOffset, closed[j].apexOffset), 0.0);
        EXPECT_EQ(distance(open[j].exitOffset, closed[j].exitOffset), 0.0);
    }
}

TEST(RubberBand, twoAnchorsOnEitherSideOfAHookCountAsEqualNames)
{
    // "25" stands between two anchors at different places, so its neighbours are equal only in
    // that they have no name.
    const Keys keys{"6", "25", "8"};
    const auto nodes = nodesOf(keys, true);
    const auto hook = std::find_if(nodes.begin(), nodes.end(),
                                   [](const RubberBandNode &node) { return node.name == "25"; });
    ASSERT_TRUE(hook != nodes.begin() && hook + 1 < nodes.end());
    ASSERT_TRUE((hook - 1)->name.empty() && (hook + 1)->name.empty());
    ASSERT_GT(distance((hook - 1)->position, (hook + 1)->position), 1.0);
    EXPECT_NEAR(Vector3_dot(hook->entryOffset, hook->direction), 0.0, 1e-6);
    EXPECT_NEAR(Vector3_dot(hook->exitOffset, hook->direction), 0.0, 1e-6);
    EXPECT_NEAR(
        Vector3_dot(hook->entryOffset, Vector3_subtract(hook->position, (hook + 1)->position)), 0.0,
        1e-4);
    compareWithReference(keys, true, identity(), identity(), 0.0);
}

TEST(RubberBand, neighboursOfDifferentNamesPullStraight)
{
    const auto nodes = nodesOf({"3", "6", "10"}, true);
    ASSERT_EQ(nodes.size(), 3u);
    const auto away = [&](std::size_t from, std::size_t to) {
        return Vector3_normalized(Vector3_subtract(nodes[from].position, nodes[to].position));
    };
    EXPECT_LT(distance(nodes[1].entryOffset, away(1, 2)), 1e-6);
    EXPECT_LT(distance(nodes[1].exitOffset, away(1, 0)), 1e-6);
    EXPECT_LT(
        distance(nodes[1].apexOffset, Vector3_normalized(Vector3_add(away(1, 2), away(1, 0)))),
        1e-6);
}

/// The upper jaw moved so that the hook of "8" stands at `along` times its own axis, and `aside`
/// across it, from the hook of "20": no record joins these two.
Matrix hook8OnItsAxisFromHook20(float along, float aside)
{
    const bracketHookInfo &eight = bracketHookPositions().at("8");
    const bracketHookInfo &twenty = bracketHookPositions().at("20");
    const Vector3 across =
        Vector3_normalized(Vector3_cross(eight.direction, Vector3{1.0f, 0.0f, 0.0f}));
    return translation(Vector3_subtract(
        Vector3_add(twenty.position, Vector3_add(Vector3_multiplyScalar(eight.direction, along),
                                                 Vector3_multiplyScalar(across, aside))),
        eight.position));
}

TEST(RubberBand, aBandAlongTheHooksAxisTakesItsOwnDirectionInsteadOfTheShortCrossProduct)
{
    // 2 to the power of -8 is 0.00390625: the length that a cross product must have.
    for (const float aside : {0.0f, 0.003f}) {
        const Matrix upper = hook8OnItsAxisFromHook20(3.0f, aside);
        const auto nodes = nodesOf({"8", "20"}, true, upper, identity(), 0.0);
        ASSERT_EQ(nodes.size(), 2u);
        const Vector3 dn = Vector3_subtract(nodes[0].position, nodes[1].position);
        ASSERT_LT(Vector3_magnitudeSquared(Vector3_cross(dn, nodes[0].direction)),
                  1.52587890625e-05f);
        EXPECT_LT(distance(nodes[0].entryOffset, Vector3_normalized(dn)), 1e-6);
        EXPECT_LT(distance(nodes[0].exitOffset, Vector3_normalized(dn)), 1e-6);
        EXPECT_LT(distance(nodes[0].apexOffset, Vector3_normalized(dn)), 1e-6);
        compareWithReference({"8", "20"}, true, upper, identity(), 0.0);
    }
}

TEST(RubberBand, aCrossProductJustLongEnoughIsTaken)
{
    const Matrix upper = hook8OnItsAxisFromHook20(3.0f, 0.005f);
    const auto nodes = nodesOf({"8", "20"}, true, upper, identity(), 0.0);
    ASSERT_EQ(nodes.size(), 2u);
    const Vector3 dn = Vector3_subtract(nodes[0].position, nodes[1].position);
    const Vector3 product = Vector3_cross(dn, nodes[0].direction);
    ASSERT_GT(Vector3_magnitudeSquared(product), 1.52587890625e-05f);
    ASSERT_LT(Vector3_magnitudeSquared(product), 4e-5f);
    EXPECT_LT(distance(nodes[0].entryOffset, Vector3_normalized(product)), 1e-6);
    EXPECT_NEAR(Vector3_dot(nodes[0].entryOffset, nodes[0].exitOffset), -1.0, 1e-6);
    // The sum of the two is then too short, and the outermost point lies away from the other hook.
    EXPECT_LT(distance(nodes[0].apexOffset, Vector3_normalized(dn)), 1e-6);
}

/// The lower jaw moved so that the hook of "20" stands between those of "7" and "10", a third of
/// the way from "7", and `aside` upwards. No record joins these.
Matrix hook20Between7And10(float aside)
{
    const Vector3 seven = bracketHookPositions().at("7").position;
    const Vector3 ten = bracketHookPositions().at("10").position;
    Vector3 place = Vector3_interpolate(seven, ten, 1.0f / 3.0f);
    place.z += aside;
    return translation(Vector3_subtract(place, bracketHookPositions().at("20").position));
}

TEST(RubberBand, opposedOffsetsTakeTheSumOfTheDifferencesForTheOutermostPoint)
{
    const Keys keys{"7", "20", "10"};
    const auto nodes = nodesOf(keys, true, identity(), hook20Between7And10(0.0f), 0.0);
    ASSERT_EQ(nodes.size(), 3u);
    const RubberBandNode &middle = nodes[1];
    ASSERT_LT(Vector3_magnitudeSquared(Vector3_add(middle.entryOffset, middle.exitOffset)),
              1.52587890625e-05f);
    // "10" is twice as far as "7", so the sum points away from it.
    const Vector3 awayFrom10 =
        Vector3_normalized(Vector3_subtract(middle.position, nodes[2].position));
    EXPECT_LT(distance(middle.apexOffset, awayFrom10), 1e-5);
}

TEST(RubberBand, offsetsThatAreNotQuiteOpposedTakeTheirOwnSum)
{
    const Keys keys{"7", "20", "10"};
    // At distances of about 8.6 and 17.2 the two offsets add up to about 0.026 times 1.
    const auto nodes = nodesOf(keys, true, identity(), hook20Between7And10(0.15f), 0.0);
    ASSERT_EQ(nodes.size(), 3u);
    const RubberBandNode &middle = nodes[1];
    const Vector3 sum = Vector3_add(middle.entryOffset, middle.exitOffset);
    ASSERT_GT(Vector3_magnitudeSquared(sum), 1.52587890625e-05f);
    EXPECT_LT(distance(middle.apexOffset, Vector3_normalized(sum)), 1e-6);
    EXPECT_GT(middle.apexOffset.z, 0.99f);
}

TEST(RubberBand, aSingleKeyMakesABandWithoutExtent)
{
    for (const bool closeLoop : {false, true}) {
        const auto nodes = nodesOf({"9"}, closeLoop);
        ASSERT_EQ(nodes.size(), 1u);
        // A zero vector stays one when it is normalised.
        for (const Vector3 &offset :
             {nodes[0].entryOffset, nodes[0].apexOffset, nodes[0].exitOffset})
            EXPECT_EQ(Vector3_magnitude(offset), 0.0f);
        for (const RubberBandVertex &vertex : verticesOf(nodes)) {
            EXPECT_EQ(distance(vertex.position, nodes[0].position), 0.0);
            EXPECT_EQ(Vector3_magnitude(vertex.normal), 0.0f);
        }
    }
    EXPECT_EQ(rubberBandIndexCount(1, true), 48u);
    EXPECT_EQ(rubberBandIndexCount(1, false), 0u);
}

TEST(RubberBand, theSameHookTwiceStaysFinite)
{
    for (const RubberBandVertex &vertex : verticesOf(nodesOf({"9", "9"}, true))) {
        EXPECT_TRUE(std::isfinite(Vector3_magnitude(vertex.position)));
        EXPECT_TRUE(std::isfinite(Vector3_magnitude(vertex.normal)));
    }
}

// The whole shape against the reference

TEST(RubberBandShape, everyRecordAgreesWithTheReferenceForwardsAndBackwardsOpenAndClosed)
{
    double greatest = 0.0;
    int bandCount = 0;
    for (const double angle : anglesAroundTheThresholds()) {
        const Jaws jaws(angle);
        for (const ReferenceRecord &record :
             ReferenceTables::shared().records.at(tableForAngle(angle))) {
            for (const Keys &keys : {Keys{record.from, record.to}, Keys{record.to, record.from}}) {
                for (const bool closeLoop : {false, true}) {
                    const std::size_t ways = closeLoop ? 2 : 1;
                    ASSERT_EQ(nodesOf(keys, closeLoop, angle).size(),
                              2 + ways * record.anchors.size());
                    greatest = std::max(greatest, compareWithReference(keys, closeLoop, jaws));
                    ++bandCount;
                }
            }
        }
    }
    // 90 records once, 64 three times, 66 twice; two directions, open and closed.
    EXPECT_EQ(bandCount, (90 + 3 * 64 + 2 * 66) * 4);
    RecordProperty("greatestDeviation", std::to_string(greatest));
}

TEST(RubberBandShape, everyRecordAgreesWithTheReferenceWhenTheUpperJawOpens)
{
    for (const double angle : anglesAroundTheThresholds()) {
        const Jaws jaws(-angle);
        for (const ReferenceRecord &record :
             ReferenceTables::shared().records.at(tableForAngle(angle)))
            compareWithReference({record.from, record.to}, true, jaws);
    }
}

TEST(RubberBandShape, bandsOverManyHooksAgreeWithTheReference)
{
    Keys all;
    for (const auto &[key, hook] : ReferenceTables::shared().hooks)
        all.push_back(key);
    std::mt19937 random(57u);
    std::uniform_int_distribution<std::size_t> count(2, 7);
    std::uniform_real_distribution<double> angle(-0.9, 0.9);
    for (int i = 0; i < 500; ++i) {
        std::shuffle(all.begin(), all.end(), random);
        const Keys keys(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count(random)));
        const Jaws jaws(angle(random));
        compareWithReference(keys, true, jaws);
        compareWithReference(keys, false, jaws);
    }
}

// Cross-sections, by hand

RubberBandNode nodeAt(const Vector3 &position, double radius, const Vector3 &entry,
                      const Vector3 &apex, const Vector3 &exit)
{
    return {{}, position, {0.0f, 0.0f, 1.0f}, radius, entry, apex, exit};
}

constexpr Vector3 left{-1.0f, 0.0f, 0.0f}, right{1.0f, 0.0f, 0.0f};
constexpr Vector3 down{0.0f, -1.0f, 0.0f}, up{0.0f, 1.0f, 0.0f};

/// A loop around two posts that stand on z at x = 0 and x = 8, with the radius 1.5 each.
std::vector<RubberBandNode> loopAroundTwoPosts()
{
    return {nodeAt({0.0f, 0.0f, 0.0f}, 1.5, up, left, down),
            nodeAt({8.0f, 0.0f, 0.0f}, 1.5, down, right, up)};
}

void expectSection(const RubberBandVertex *vertices, const Vector3 &middle, const Vector3 &u,
                   const Vector3 &v)
{
    const std::vector<std::pair<Vector3, float>> corners{
        {u, -1.0f}, {v, -1.0f}, {u, 1.0f}, {v, 1.0f}};
    for (std::size_t corner = 0; corner < corners.size(); ++corner) {
        const auto &[direction, sign] = corners[corner];
        const Vector3 normal = Vector3_multiplyScalar(direction, sign);
        EXPECT_LT(distance(vertices[corner].normal, normal), 1e-6) << corner;
        EXPECT_LT(distance(vertices[corner].position,
                           Vector3_add(middle, Vector3_multiplyScalar(normal, 0.5f))),
                  1e-6)
            << corner;
    }
}

TEST(RubberBandShape, theSectionsOfALoopAroundTwoPosts)
{
    const auto vertices = verticesOf(loopAroundTwoPosts());
    ASSERT_EQ(vertices.size(), 24u);
    const float half = std::sqrt(0.5f);
    // The posts' radius and half the band's thickness: everything is 2 from a post. For a run in
    // the x-y plane u is (run x y) = plus or minus z by the run's x.
    const Vector3 front{0.0f, 0.0f, 1.0f}, back{0.0f, 0.0f, -1.0f};
    // A(0): from (8, 1) to (0, 1), so the run is -x: u = -z, v = u x run = y.
    expectSection(&vertices[0], {0.0f, 2.0f, 0.0f}, back, up);
    // B(0): from (-2, 0) to (0, -2), the run (1, -1): u = z, v = z x (1, -1) = (1, 1).
    expectSection(&vertices[4], {-2.0f, 0.0f, 0.0f}, front, {half, half, 0.0f});
    // C(0): from (0, -2) to (8, -2): u = z, v = y.
    expectSection(&vertices[8], {0.0f, -2.0f, 0.0f}, front, up);
    // A(1) keeps the section of the run that arrives.
    expectSection(&vertices[12], {8.0f, -2.0f, 0.0f}, front, up);
    // B(1): from (10, 0) to (8, 2), the run (-1, 1): u = -z, v = -z x (-1, 1) = (1, 1).
    expectSection(&vertices[16], {10.0f, 0.0f, 0.0f}, back, {half, half, 0.0f});
    // C(1): from (8, 2) to (0, 2).
    expectSection(&vertices[20], {8.0f, 2.0f, 0.0f}, back, up);
}

TEST(RubberBandShape, aRunAlongYTakesItsSectionFromTheXAxis)
{
    // From C(0) = (0, 2, 0) to A(1) = (0, 6, 0): the run's product with y is 0, with x it is
    // y x x = -z; then v = -z x y = x.
    const auto vertices =
        verticesOf({nodeAt({0.0f, 0.0f, 0.0f}, 1.5, right, {0.0f, 0.0f, 1.0f}, up),
                    nodeAt({0.0f, 8.0f, 0.0f}, 1.5, down, {0.0f, 0.0f, 1.0f}, right)});
    const Vector3 u{0.0f, 0.0f, -1.0f};
    expectSection(&vertices[8], {0.0f, 2.0f, 0.0f}, u, right);
    expectSection(&vertices[12], {0.0f, 6.0f, 0.0f}, u, right);
}

TEST(RubberBandShape, aRunAlmostAlongYTakesItsSectionFromTheXAxisToo)
{
    const auto sectionForRun = [](float aside) {
        // From C(0) = (0, 2, 0) to A(1) = (aside, 6, 0).
        return verticesOf({nodeAt({0.0f, 0.0f, 0.0f}, 1.5, right, {0.0f, 0.0f, 1.0f}, up),
                           nodeAt({aside, 8.0f, 0.0f}, 1.5, down, {0.0f, 0.0f, 1.0f}, right)})[10]
            .normal;
    };
    // run x y is (0, 0, aside) here, and counts from 0.00390625 on.
    EXPECT_LT(distance(sectionForRun(0.0039f), Vector3{0.0f, 0.0f, -1.0f}), 1e-6);
    EXPECT_LT(distance(sectionForRun(0.00390625f), Vector3{0.0f, 0.0f, 1.0f}), 1e-6);
}

TEST(RubberBandShape, theFirstSectionGoesByUnitOffsets)
{
    // By unit offsets the run into A(0) goes from (8, 1) to (1, 0); by the path's distances it
    // would go from (8, 4.5) to (2, 0).
    const auto vertices = verticesOf({nodeAt({0.0f, 0.0f, 0.0f}, 1.5, right, left, down),
                                      nodeAt({8.0f, 0.0f, 0.0f}, 4.0, down, right, up)});
    const float length = std::sqrt(50.0f);
    // The run is (-7, -1): u = -z, v = -z x (-7, -1) = (-1, 7), unit.
    expectSection(&vertices[0], {2.0f, 0.0f, 0.0f}, {0.0f, 0.0f, -1.0f},
                  {-1.0f / length, 7.0f / length, 0.0f});
    // While C(1) looks along the path: from (8, 4.5) to (2, 0), the run (-6, -4.5) of length 7.5.
    expectSection(&vertices[20], {8.0f, 4.5f, 0.0f}, {0.0f, 0.0f, -1.0f}, {-0.6f, 0.8f, 0.0f});
}

TEST(RubberBandShape, normalsPointOutOfTheTube)
{
    const auto nodes = nodesOf({"2", "31", "6", "10l"}, true);
    const auto vertices = verticesOf(nodes);
    for (std::size_t section = 0; section < 3 * nodes.size(); ++section) {
        Vector3 middle{};
        for (std::size_t corner = 0; corner < 4; ++corner)
            middle = Vector3_add(
                middle, Vector3_multiplyScalar(vertices[4 * section + corner].position, 0.25f));
        for (std::size_t corner = 0; corner < 4; ++corner) {
            const RubberBandVertex &vertex = vertices[4 * section + corner];
            const Vector3 outwards = Vector3_subtract(vertex.position, middle);
            EXPECT_NEAR(Vector3_magnitude(outwards), 0.5, 1e-5);
            EXPECT_NEAR(Vector3_dot(outwards, vertex.normal), 0.5, 1e-5);
        }
    }
}

// Indices

TEST(RubberBandIndices, eachSectionIsJoinedToTheNextByFourQuadrilaterals)
{
    std::vector<std::uint32_t> indices(2 * rubberBandIndicesPerNode);
    writeRubberBandIndices(2, indices.data());
    for (std::uint32_t section = 0; section + 1 < 6; ++section) {
        const std::uint32_t b = 4 * section;
        const std::vector<std::uint32_t> expected{b,     b + 4, b + 5, b + 1, b + 1, b + 5,
                                                  b + 6, b + 2, b + 2, b + 6, b + 7, b + 3,
                                                  b + 3, b + 7, b + 4, b};
        const auto first = indices.begin() + 16 * section;
        EXPECT_EQ(std::vector<std::uint32_t>(first, first + 16), expected) << section;
    }
}

TEST(RubberBandIndices, theLastSectionIsJoinedToTheFirst)
{
    for (const std::size_t nodeCount : {1u, 2u, 5u}) {
        std::vector<std::uint32_t> indices(nodeCount * rubberBandIndicesPerNode);
        writeRubberBandIndices(nodeCount, indices.data());
        const auto b = static_cast<std::uint32_t>(12 * nodeCount - 4);
        const std::vector<std::uint32_t> expected{b,     0, 1, b + 1, b + 1, 1, 2, b + 2,
                                                  b + 2, 2, 3, b + 3, b + 3, 3, 0, b};
        EXPECT_EQ(std::vector<std::uint32_t>(indices.end() - 16, indices.end()), expected);
    }
}

TEST(RubberBandIndices, anOpenBandEndsAtTheFirstSectionOfItsLastNode)
{
    constexpr std::size_t nodeCount = 4;
    EXPECT_EQ(rubberBandIndexCount(nodeCount, true), 48u * nodeCount);
    EXPECT_EQ(rubberBandIndexCount(nodeCount, false), 48u * (nodeCount - 1));
    std::vector<std::uint32_t> indices(nodeCount * rubberBandIndicesPerNode);
    writeRubberBandIndices(nodeCount, indices.data());
    const auto drawn =
        indices.begin() + static_cast<std::ptrdiff_t>(rubberBandIndexCount(nodeCount, false));
    EXPECT_EQ(*std::max_element(indices.begin(), drawn), 12u * (nodeCount - 1) + 3u);
    EXPECT_EQ(rubberBandIndexCount(0, true), 0u);
    EXPECT_EQ(rubberBandIndexCount(0, false), 0u);
}

TEST(RubberBandIndices, theTubeIsClosedAndItsQuadrilateralsTurnOneWay)
{
    constexpr std::size_t nodeCount = 3;
    std::vector<std::uint32_t> indices(nodeCount * rubberBandIndicesPerNode);
    writeRubberBandIndices(nodeCount, indices.data());
    std::vector<std::pair<std::uint32_t, std::uint32_t>> edges;
    for (std::size_t i = 0; i < indices.size(); ++i)
        edges.emplace_back(indices[i], indices[i % 4 == 3 ? i - 3 : i + 1]);
    std::sort(edges.begin(), edges.end());
    EXPECT_EQ(std::adjacent_find(edges.begin(), edges.end()), edges.end());
    for (const auto &[from, to] : edges)
        EXPECT_TRUE(std::binary_search(edges.begin(), edges.end(), std::pair{to, from}));
}

} // namespace
