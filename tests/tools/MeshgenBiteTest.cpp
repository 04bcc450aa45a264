// How the teeth of both jaws meet when the mouth is closed, and the distances it is measured with.

#include "tests/tools/MeshgenSolids.h"
#include "tools/meshgen/Bite.h"
#include "tools/meshgen/MeshDistance.h"
#include "tools/meshgen/PatientMeshes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace kelo::meshgen {
namespace {

const Patient &patient()
{
    static const Patient made = makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv");
    return made;
}

const std::vector<BiteMeasure> &bite()
{
    static const std::vector<BiteMeasure> measured = biteOfTeeth(patient());
    return measured;
}

TEST(MeshgenDistance, aPointBesideABoxIsAsFarAsItsNearestFaceEdgeOrCorner)
{
    const MeshDistance distances(test::box({0.0, 0.0, 0.0}, {2.0, 4.0, 6.0}));
    EXPECT_DOUBLE_EQ(distances.signedDistance({1.0, 1.0, 9.0}), 3.0);
    EXPECT_DOUBLE_EQ(distances.signedDistance({-3.0, 8.0, 3.0}), 5.0);
    EXPECT_DOUBLE_EQ(distances.signedDistance({3.0, 6.0, 8.0}), 3.0);
}

TEST(MeshgenDistance, aPointInsideABoxHasItsDepthAsANegativeDistance)
{
    const MeshDistance distances(test::box({0.0, 0.0, 0.0}, {2.0, 4.0, 6.0}));
    EXPECT_DOUBLE_EQ(distances.signedDistance({1.5, 2.0, 3.0}), -0.5);
    EXPECT_TRUE(distances.isInside({0.1, 0.1, 0.1}));
    EXPECT_FALSE(distances.isInside({-0.1, 0.1, 0.1}));
}

TEST(MeshgenDistance, aDistanceBeyondTheLimitIsTheLimit)
{
    const MeshDistance distances(test::box({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0}));
    EXPECT_DOUBLE_EQ(distances.distanceWithin({0.5, 0.5, 3.0}, 1.5), 1.5);
    EXPECT_DOUBLE_EQ(distances.distanceWithin({0.5, 0.5, 3.0}, 2.5), 2.0);
    EXPECT_FALSE(distances.isNear({0.5, 0.5, 3.0}, 1.5));
    EXPECT_TRUE(distances.isNear({0.5, 0.5, 3.0}, 2.0));
}

TEST(MeshgenDistance, theTreeFindsTheSameDistancesAsAllTrianglesOneByOne)
{
    const Mesh &tooth = patient().meshes.front().mesh;
    const MeshDistance distances(tooth);
    const Vec3 middle = patient().teeth.front().placement.toJaw({0.0, 0.0, 3.0});
    int inside = 0;
    for (int i = 0; i < 200; ++i) {
        // A spiral from the crown's middle out to 12 mm.
        const double r = 0.06 * i;
        const Vec3 p = middle + Vec3{r * std::cos(1.7 * i), r * std::sin(1.7 * i),
                                     0.3 * r * std::sin(0.9 * i)};
        double least = 1e9;
        for (const auto &t : tooth.triangles)
            least = std::min(least, distance(p, nearestOnTriangle(p, tooth.positions[t[0]],
                                                                  tooth.positions[t[1]],
                                                                  tooth.positions[t[2]])));
        EXPECT_NEAR(std::abs(distances.signedDistance(p)), least, 1e-12) << i;
        inside += distances.isInside(p) ? 1 : 0;
    }
    EXPECT_GT(inside, 20);
    EXPECT_LT(inside, 180);
}

TEST(MeshgenBite, aCornerThatPokesIntoABoxOverlapsByItsDepth)
{
    const Mesh upper = test::box({0.0, 0.0, 0.0}, {4.0, 4.0, 4.0});
    const Mesh lower = test::box({1.0, 1.0, -2.0}, {2.0, 2.0, 0.3});
    const BiteMeasure measure = measureBite(upper, lower, 1.0);
    EXPECT_DOUBLE_EQ(measure.overlap, 0.3);
    EXPECT_DOUBLE_EQ(measure.clearance, 0.0);
}

TEST(MeshgenBite, boxesApartHaveTheShortestWayBetweenThemAsClearance)
{
    const Mesh upper = test::box({0.0, 0.0, 0.0}, {4.0, 4.0, 4.0});
    const Mesh lower = test::box({1.0, 1.0, -2.0}, {2.0, 2.0, -0.25});
    const BiteMeasure measure = measureBite(upper, lower, 1.0);
    EXPECT_DOUBLE_EQ(measure.overlap, 0.0);
    EXPECT_DOUBLE_EQ(measure.clearance, 0.25);
    const Mesh far = test::box({1.0, 1.0, -9.0}, {2.0, 2.0, -8.0});
    EXPECT_DOUBLE_EQ(measureBite(upper, far, 1.0).clearance, 1.0);
}

TEST(MeshgenBite, noUpperToothRunsIntoALowerOneByMoreThanThreeTenths)
{
    EXPECT_GE(bite().size(), 14U);
    for (const BiteMeasure &pair : bite())
        EXPECT_LE(pair.overlap, 0.3) << pair.upper << " and " << pair.lower;
}

TEST(MeshgenBite, everyMolarAndPremolarIsInContactWithAToothOfTheOtherJaw)
{
    // A tenth of a millimetre is what articulating foil bridges.
    for (const int number : {2, 3, 4, 5, 12, 13, 14, 15, 18, 19, 20, 21, 28, 29, 30, 31}) {
        const std::string name = "_tooth_" + std::to_string(number);
        double clearance = 1e9;
        for (const BiteMeasure &pair : bite())
            if (pair.upper == name || pair.lower == name)
                clearance = std::min(clearance, pair.clearance);
        EXPECT_LE(clearance, 0.1) << name;
    }
}

TEST(MeshgenBite, noBracketOrButtonTouchesTheOtherJaw)
{
    const std::vector<BiteMeasure> pairs = biteOfAttachments(patient());
    EXPECT_FALSE(pairs.empty());
    for (const BiteMeasure &pair : pairs)
        EXPECT_GE(pair.clearance, 0.2) << pair.upper << " and " << pair.lower;
}

TEST(MeshgenBite, everyButtonsNeckStandsFreeOfItsTooth)
{
    const HookTable hooks = readHooks(KELO_MESH_TABLES "/hooks.csv");
    for (const NamedMesh &named : patient().meshes) {
        if (!named.name.starts_with("_tooth_")) continue;
        const Hook &neck = hooks.at(named.name.substr(7) + "l");
        // The middle of the neck is outside by its radius and the thickness of a base.
        EXPECT_GE(MeshDistance(named.mesh).signedDistance(neck.position), neck.radius + 0.15)
            << named.name;
    }
}

TEST(MeshgenBite, everyHookStandsFreeOfItsTooth)
{
    const HookTable hooks = readHooks(KELO_MESH_TABLES "/hooks.csv");
    for (const NamedMesh &named : patient().meshes) {
        if (!named.name.starts_with("_tooth_")) continue;
        const Hook &hook = hooks.at(named.name.substr(7));
        EXPECT_GE(MeshDistance(named.mesh).signedDistance(hook.position), hook.radius + 0.5)
            << named.name;
    }
}

} // namespace
} // namespace kelo::meshgen
