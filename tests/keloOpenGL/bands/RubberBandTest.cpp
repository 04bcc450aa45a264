#include "tests/keloOpenGL/bands/RubberBandFixture.h"

#include <random>

namespace {

using namespace kelo;
using namespace kelo::test;

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

TEST(RubberBand, from5DegreesOnTheElastic6To25HasAnchors0And15)
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
    const Keys keys{"6", "25"}; // nodes refer to the names in it
    const auto nodes = nodesOf(keys, true, fiveDegrees);
    EXPECT_EQ(anchorsOf(nodes), (std::vector<std::size_t>{0, 15, 15, 0}));
    ASSERT_EQ(nodes.size(), 6u);
    EXPECT_EQ(nodes[0].name, "6");
    EXPECT_EQ(nodes[3].name, "25");
}

TEST(RubberBand, aPairOfHooksWithoutARecordIsJoinedStraight)
{
    const Keys keys{"3", "4", "28"};
    const auto nodes = nodesOf(keys, true);
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

/// The upper jaw moved so that the hook of "8" is at `along` times its own axis, and `aside`
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

TEST(RubberBand, aBandAlongTheHooksAxisTakesItsOwnDirection)
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

} // namespace
