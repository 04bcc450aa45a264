#include "tests/tools/BandDepthShapes.h"
#include "tools/banddepth/CentreLine.h"
#include "tools/banddepth/ClosedMesh.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <stdexcept>
#include <vector>

namespace kelo::banddepth {
namespace {

using test::box;
using test::sphere;
using test::Surface;
using test::unitBox;

constexpr double spacing = 0.1;

Immersion immersionOfLine(const Vec3 &from, const Vec3 &to, const ClosedMesh &mesh)
{
    const std::array<Vec3, 2> corners{from, to};
    return immersionOf(sampledLine(corners, false, spacing), mesh);
}

/// Whether a surface winds round a point, by the solid angles of all its triangles.
bool isInsideBySolidAngles(const Surface &surface, const Vec3 &point)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < surface.corners.size(); i += 3) {
        const Vec3 a = surface.positions[surface.corners[i]] - point,
                   b = surface.positions[surface.corners[i + 1]] - point,
                   c = surface.positions[surface.corners[i + 2]] - point;
        const double la = length(a), lb = length(b), lc = length(c);
        sum += 2.0 * std::atan2(dot(a, cross(b, c)),
                                la * lb * lc + dot(a, b) * lc + dot(b, c) * la + dot(c, a) * lb);
    }
    return sum > 2.0 * std::numbers::pi;
}

TEST(ClosedMesh, theMiddleOfAUnitBoxLiesHalfAUnitDeep)
{
    const ClosedMesh mesh = unitBox().mesh();
    EXPECT_EQ(mesh.triangleCount(), 12u);
    EXPECT_TRUE(mesh.contains({0.5, 0.5, 0.5}));
    EXPECT_DOUBLE_EQ(mesh.depthOf({0.5, 0.5, 0.5}), 0.5);
}

TEST(ClosedMesh, theNearestFaceCountsForTheDepth)
{
    const ClosedMesh mesh = box({-1, -2, -3}, {4, 5, 6}).mesh();
    EXPECT_NEAR(mesh.depthOf({-0.75, 1, 1}), 0.25, 1e-12);
    EXPECT_NEAR(mesh.depthOf({1, 4.5, 1}), 0.5, 1e-12);
    EXPECT_NEAR(mesh.depthOf({1, 1, -2.125}), 0.875, 1e-12);
}

TEST(ClosedMesh, aPointOutsideHasADistanceFromFaceEdgeOrCornerAndNoDepth)
{
    const ClosedMesh mesh = unitBox().mesh();
    struct Case
    {
        const char *name;
        Vec3 point;
        double distance;
    };
    for (const Case &c :
         {Case{"beyond a face", {0.3, 0.6, 3.0}, 2.0}, Case{"beyond an edge", {4.0, 5.0, 0.5}, 5.0},
          Case{"beyond a corner", {-1.0, -2.0, 3.0}, 3.0}}) {
        EXPECT_FALSE(mesh.contains(c.point)) << c.name;
        EXPECT_NEAR(mesh.distanceTo(c.point), c.distance, 1e-12) << c.name;
        EXPECT_EQ(mesh.depthOf(c.point), 0.0) << c.name;
    }
}

TEST(ClosedMesh, pointsOnARoundGridAreInsideABoxExactlyBetweenItsFaces)
{
    const ClosedMesh mesh = unitBox().mesh();
    const auto isWithin = [](double t) { return t > 0.0 && t < 1.0; };
    // Points in the planes of the faces are neither, so the grid leaves them out.
    for (double x = -0.875; x < 2.0; x += 0.25)
        for (double y = -0.875; y < 2.0; y += 0.25)
            for (double z = -0.875; z < 2.0; z += 0.25)
                EXPECT_EQ(mesh.contains({x, y, z}), isWithin(x) && isWithin(y) && isWithin(z))
                    << x << ' ' << y << ' ' << z;
}

TEST(ClosedMesh, depthsInASphereAreTheRadiusLessTheDistanceFromItsMiddle)
{
    const Vec3 centre{1, -2, 3};
    const ClosedMesh mesh = sphere(centre, 2.0, 6).mesh();
    EXPECT_EQ(mesh.triangleCount(), 8u * 4096u);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-2.5, 2.5);
    int insideCount = 0;
    for (int i = 0; i < 2000; ++i) {
        const Vec3 offset{coordinate(random), coordinate(random), coordinate(random)};
        const double depth = 2.0 - length(offset);
        // Edges of 1/32 of a quarter circle leave facets at most 0.002 below the sphere.
        if (std::abs(depth) < 0.002) continue;
        insideCount += depth > 0.0;
        ASSERT_EQ(mesh.contains(centre + offset), depth > 0.0);
        ASSERT_NEAR(mesh.depthOf(centre + offset), std::max(depth, 0.0), 0.002);
        ASSERT_NEAR(mesh.distanceTo(centre + offset), std::abs(depth), 0.002);
    }
    EXPECT_GT(insideCount, 400);
    EXPECT_LT(insideCount, 800);
}

TEST(ClosedMesh, theInsideAgreesWithTheSumOfSolidAnglesOnABentShape)
{
    // Two spheres and a box that overlap: edges, a waist and hidden surfaces.
    Surface surface = sphere({0, 0, 0}, 1.0, 3);
    surface.add(sphere({1.5, 0.25, 0}, 0.75, 3));
    surface.add(box({-0.25, -0.25, -2}, {0.25, 0.25, 2}));
    const ClosedMesh mesh = surface.mesh();
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(-2.2, 2.4);
    int insideCount = 0;
    for (int i = 0; i < 3000; ++i) {
        const Vec3 point{coordinate(random), coordinate(random), coordinate(random)};
        const bool isInside = isInsideBySolidAngles(surface, point);
        insideCount += isInside;
        ASSERT_EQ(mesh.contains(point), isInside) << point.x << ' ' << point.y << ' ' << point.z;
    }
    EXPECT_GT(insideCount, 100);
}

TEST(ClosedMesh, aPointInEitherOfTwoOverlappingShellsIsInside)
{
    Surface surface = box({0, 0, 0}, {2, 2, 2});
    surface.add(box({1, 0.5, 0.5}, {3, 1.5, 1.5}));
    const ClosedMesh mesh = surface.mesh();
    EXPECT_TRUE(mesh.contains({0.5, 1, 1}));
    EXPECT_TRUE(mesh.contains({1.5, 1, 1}));
    EXPECT_TRUE(mesh.contains({2.5, 1, 1}));
    EXPECT_FALSE(mesh.contains({3.5, 1, 1}));
}

TEST(ClosedMesh, aHollowThatIsWoundInwardsIsOutside)
{
    Surface surface = box({0, 0, 0}, {4, 4, 4});
    surface.add(box({1, 1, 1}, {3, 3, 3}).turnedInsideOut());
    const ClosedMesh mesh = surface.mesh();
    EXPECT_FALSE(mesh.contains({2, 2, 2}));
    EXPECT_EQ(mesh.depthOf({2, 2, 2}), 0.0);
    EXPECT_NEAR(mesh.depthOf({0.6, 2, 2}), 0.4, 1e-12);
}

TEST(ClosedMesh, aMeshWithoutTrianglesContainsNothingAndIsInfinitelyFar)
{
    const ClosedMesh mesh({}, {});
    EXPECT_FALSE(mesh.contains({0, 0, 0}));
    EXPECT_EQ(mesh.distanceTo({0, 0, 0}), std::numeric_limits<double>::infinity());
    EXPECT_EQ(mesh.depthOf({0, 0, 0}), 0.0);
}

TEST(ClosedMesh, cornersThatMakeNoTrianglesAreRefused)
{
    const auto messageOf = [](const std::vector<std::uint32_t> &corners) -> std::string {
        try {
            ClosedMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, corners);
        } catch (const std::invalid_argument &refusal) {
            return refusal.what();
        }
        return "accepted";
    };
    EXPECT_EQ(messageOf({0, 1, 2}), "accepted");
    EXPECT_EQ(messageOf({0, 1}), "a triangle has three corners");
    EXPECT_EQ(messageOf({0, 1, 3}), "a corner lies beyond the positions");
}

TEST(BandDepthLine, aLineThroughTheMiddleOfAUnitBoxIsHalfAUnitDeep)
{
    const Immersion immersion = immersionOfLine({-1, 0.5, 0.5}, {2, 0.5, 0.5}, unitBox().mesh());
    EXPECT_NEAR(immersion.depth, 0.5, 1e-9);
    EXPECT_NEAR(immersion.length, 1.0, spacing);
    // All of its middle is equally far from a face: from 0.5 to 0.5.
    EXPECT_NEAR(immersion.deepest.x, 0.5, 1e-9);
    EXPECT_NEAR(immersion.deepest.y, 0.5, 1e-9);
}

TEST(BandDepthLine, aLineJustUnderAFaceIsAsDeepAsItLiesUnderIt)
{
    const Immersion immersion = immersionOfLine({-1, 0.5, 0.95}, {2, 0.5, 0.95}, unitBox().mesh());
    EXPECT_NEAR(immersion.depth, 0.05, 1e-9);
    EXPECT_NEAR(immersion.length, 1.0, spacing);
}

TEST(BandDepthLine, aLineAlongTheDiagonalOfABoxIsInsideForTheDiagonalsLength)
{
    const Immersion immersion = immersionOfLine({-1, -1, -1}, {2, 2, 2}, unitBox().mesh());
    // The deepest sample lies at most half a spacing from the middle.
    EXPECT_NEAR(immersion.depth, 0.5, spacing / 2.0);
    EXPECT_NEAR(immersion.length, std::sqrt(3.0), spacing);
}

TEST(BandDepthLine, aChordOfASphereIsAsDeepAndLongAsGeometrySays)
{
    const Immersion immersion =
        immersionOfLine({-5, 1.2, 0.5}, {5, 1.2, 0.5}, sphere({0, 0, 0}, 2.0, 6).mesh());
    // At the distance 1.3 from the middle: 2 - 1.3 deep, 2 sqrt(4 - 1.69) long.
    EXPECT_NEAR(immersion.depth, 0.7, 0.003);
    EXPECT_NEAR(immersion.length, 2.0 * std::sqrt(2.31), spacing);
    EXPECT_NEAR(immersion.deepest.x, 0.0, 1e-9);
}

TEST(BandDepthLine, aLineBesideAMeshIsNotInside)
{
    const Immersion immersion = immersionOfLine({-1, 1.01, 0.5}, {2, 1.01, 0.5}, unitBox().mesh());
    EXPECT_EQ(immersion.depth, 0.0);
    EXPECT_EQ(immersion.length, 0.0);
}

TEST(BandDepthLine, samplesAreAtMostTheSpacingApartAndHoldEveryCorner)
{
    const std::array<Vec3, 3> corners{Vec3{0, 0, 0}, Vec3{1.03, 0, 0}, Vec3{1.03, 0.04, 0}};
    const auto samples = sampledLine(corners, false, spacing);
    // 1.03 needs 11 stretches and 0.04 one: 12 stretches have 13 ends.
    ASSERT_EQ(samples.size(), 13u);
    for (std::size_t i = 1; i < samples.size(); ++i)
        EXPECT_LE(meshgen::distance(samples[i - 1].position, samples[i].position), spacing + 1e-12);
    EXPECT_EQ(samples[0].position, corners[0]);
    EXPECT_EQ(samples[11].position, corners[1]);
    EXPECT_EQ(samples[12].position, corners[2]);
}

TEST(BandDepthLine, theLengthsOfTheSamplesAddUpToTheLine)
{
    const std::array<Vec3, 3> corners{Vec3{0, 0, 0}, Vec3{3, 0, 0}, Vec3{3, 4, 0}};
    const auto lengthOf = [&corners](bool closed) {
        double sum = 0.0;
        for (const Sample &sample : sampledLine(corners, closed, spacing))
            sum += sample.length;
        return sum;
    };
    EXPECT_NEAR(lengthOf(false), 7.0, 1e-9);
    EXPECT_NEAR(lengthOf(true), 12.0, 1e-9);
    // Closed, the first corner is not repeated: 30, 40 and 50 stretches, and as many points.
    EXPECT_EQ(sampledLine(corners, true, spacing).size(), 120u);
}

TEST(BandDepthLine, coincidingCornersAreALineOfNoLength)
{
    const std::array<Vec3, 2> corners{Vec3{1, 2, 3}, Vec3{1, 2, 3}};
    for (const Sample &sample : sampledLine(corners, false, spacing))
        EXPECT_EQ(sample.length, 0.0);
    EXPECT_TRUE(sampledLine(std::span(corners).first(1), true, spacing).empty());
}

TEST(BandDepthLine, theLineRunsThroughEntryApexAndExitOfEveryNode)
{
    RubberBandNode node;
    node.position = {10, 20, 30};
    node.radius = 1.5; // with half a band's thickness 2
    node.entryOffset = {1, 0, 0};
    node.apexOffset = {0, 1, 0};
    node.exitOffset = {0, 0, -1};
    const std::array<RubberBandNode, 1> nodes{node};
    const auto corners = centreLineCorners(nodes);
    ASSERT_EQ(corners.size(), 3u);
    EXPECT_EQ(corners[0], (Vec3{12, 20, 30}));
    EXPECT_EQ(corners[1], (Vec3{10, 22, 30}));
    EXPECT_EQ(corners[2], (Vec3{10, 20, 28}));
}

TEST(BandDepthLine, modelSpaceIsWhereTheJawsTransformTakesThePointFrom)
{
    Matrix jaw;
    Matrix_loadIdentity(&jaw);
    Matrix_translate(&jaw, 1.0f, -30.0f, 5.0f);
    Matrix_rotate(&jaw, Vector3{1.0f, 0.0f, 0.0f}, 0.6f);
    Matrix_translate(&jaw, 0.0f, 30.0f, 0.0f);
    const Vector3 point{3.0f, -20.0f, 7.0f};
    const Vector3 moved = Matrix_multiplyVector3(jaw, point);
    ASSERT_GT(std::abs(moved.z - point.z), 1.0f);
    const std::array<Sample, 1> samples{
        Sample{{double(moved.x), double(moved.y), double(moved.z)}, 0.25}};
    const auto seen = inModelSpace(samples, jaw);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_NEAR(seen[0].position.x, 3.0, 1e-5);
    EXPECT_NEAR(seen[0].position.y, -20.0, 1e-5);
    EXPECT_NEAR(seen[0].position.z, 7.0, 1e-5);
    EXPECT_EQ(seen[0].length, 0.25);
}

} // namespace
} // namespace kelo::banddepth
