// Reliefs: the file that has them, and the hollows that they leave in crowns.

#include "tests/tools/ParameterFileTest.h"
#include "tools/meshgen/PatientMeshes.h"
#include "tools/meshgen/Relief.h"
#include "tools/meshgen/ToothShape.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

namespace kelo::meshgen {
namespace {

const std::string reliefHeading = "tooth,x,y,z,dx,dy,dz\n";

using MeshgenReliefFile = test::ParameterFileTest<&readReliefs>;

TEST_F(MeshgenReliefFile, everyLineIsAReliefInTheOrderOfTheFile)
{
    const std::vector<Relief> reliefs =
        read("# worn\n\n radius, tooth,x,y,z,dx,dy,dz,cover,blend\r\n"
             "5,8,-3.25,-18,-6,0.6,0.8,0,0.45,0.8\n,31,1,2,3,0,0,-1,,\n");
    ASSERT_EQ(reliefs.size(), 2U);
    EXPECT_EQ(reliefs[0].tooth, 8);
    EXPECT_EQ(reliefs[0].place, (Vec3{-3.25, -18.0, -6.0}));
    EXPECT_NEAR(distance(reliefs[0].direction, {0.6, 0.8, 0.0}), 0.0, 1e-15);
    EXPECT_DOUBLE_EQ(reliefs[0].cover, 0.45);
    EXPECT_DOUBLE_EQ(reliefs[0].radius, 5.0);
    EXPECT_DOUBLE_EQ(reliefs[0].blend, 0.8);
    EXPECT_EQ(reliefs[1].tooth, 31);
    EXPECT_DOUBLE_EQ(reliefs[1].cover, 0.42);
    EXPECT_DOUBLE_EQ(reliefs[1].radius, 3.0);
    EXPECT_DOUBLE_EQ(reliefs[1].blend, 0.4);
}

TEST_F(MeshgenReliefFile, aDirectionRoundedToHundredthsBecomesAUnitVector)
{
    const std::vector<Relief> reliefs = read(reliefHeading + "8,0,0,0,0.58,0.58,0.58\n");
    EXPECT_DOUBLE_EQ(length(reliefs.at(0).direction), 1.0);
}

TEST_F(MeshgenReliefFile, aHeadingWithoutLinesMeansNoReliefs)
{
    EXPECT_TRUE(read(reliefHeading).empty());
}

TEST_F(MeshgenReliefFile, everyFaultIsToldWithItsLineAndReason)
{
    struct Case
    {
        const char *name;
        std::string input;
        std::string expected;
    };
    const Case cases[] = {
        {"nothing", "", ": there is no heading line"},
        {"unknown column", "tooth,x,y,z,dx,dy,dz,depth\n", ":1: unknown column \"depth\""},
        {"column twice", "tooth,x,y,z,dx,dy,dz,x\n", ":1: column \"x\" stands here twice"},
        {"needed column", "# a\ntooth,x,y,z,dx,dz\n", ":2: column \"dy\" is missing"},
        {"too few cells", reliefHeading + "8,1,2\n", ":2: 3 cells instead of 7"},
        {"wisdom tooth", reliefHeading + "17,0,0,0,1,0,0\n",
         ":2: there is no tooth 17: 2 to 15 or 18 to 31"},
        {"a word", reliefHeading + "8,left,0,0,1,0,0\n",
         ":2: malformed number \"left\" in column \"x\""},
        {"empty cell", reliefHeading + "8,0,0,,1,0,0\n", ":2: column \"z\" is empty"},
        {"far away", reliefHeading + "8,0,0,51,1,0,0\n",
         ":2: 51 in column \"z\" is not between -50 and 50"},
        {"not a number", reliefHeading + "8,0,nan,0,1,0,0\n",
         ":2: nan in column \"y\" is not between -50 and 50"},
        {"too wide", "tooth,x,y,z,dx,dy,dz,radius\n8,0,0,0,1,0,0,10.5\n",
         ":2: 10.5 in column \"radius\" is not between 1 and 10"},
        {"too sharp", "tooth,x,y,z,dx,dy,dz,blend\n8,0,0,0,1,0,0,0\n",
         ":2: 0 in column \"blend\" is not between 0.1 and 2"},
        {"no unit vector", reliefHeading + "8,0,0,0,0.5,0.5,0\n",
         ":2: the direction's length is 0.71 instead of 1"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(messageFor(c.input), c.expected);
    }
}

TEST_F(MeshgenReliefFile, aFileThatCannotBeReadIsNamed)
{
    try {
        readReliefs("/nowhere/a-relief.csv");
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(),
                     "/nowhere/a-relief.csv: cannot be read: No such file or directory");
    }
}

TEST(MeshgenReliefPath, theFileStandsBesideThePatients)
{
    EXPECT_EQ(reliefPathOf("patients/sample.csv"), "patients/sample-relief.csv");
    EXPECT_EQ(reliefPathOf("own.csv"), "own-relief.csv");
}

/// A tooth whose own axes are the jaw's.
Tooth toothAtTheOrigin(int number)
{
    Tooth tooth;
    tooth.anatomy = toothAnatomy(number);
    tooth.ownMesh = makeTooth(tooth.anatomy);
    tooth.placement.number = number;
    tooth.placement.mesialDirection = {1.0, 0.0, 0.0};
    tooth.placement.labialNormal = {0.0, 1.0, 0.0};
    tooth.placement.occlusalDirection = {0.0, 0.0, 1.0};
    return tooth;
}

/// From `place` to the surface along `direction`.
double wayOut(const Tooth &tooth, const Vec3 &place, const Vec3 &direction)
{
    const auto hit = raycast(tooth.ownMesh, place, direction);
    return hit ? hit->distance : std::numeric_limits<double>::infinity();
}

class MeshgenRelief : public ::testing::Test
{
protected:
    MeshgenRelief()
    {
        // A point 0.8 under the labial face of a lower premolar.
        const Vec3 deep{0.0, 0.0, 4.0};
        relief.tooth = 28;
        relief.direction = {0.0, 1.0, 0.0};
        relief.place = deep + relief.direction * (wayOut(tooth, deep, relief.direction) - 0.8);
    }

    Tooth tooth = toothAtTheOrigin(28);
    Relief relief;
};

TEST_F(MeshgenRelief, theSurfaceComesAsNearToThePlaceAsItsCoverSays)
{
    ASSERT_NEAR(wayOut(tooth, relief.place, relief.direction), 0.8, 1e-9);
    carve(tooth, relief);
    // 0.38 above the hollow's bottom the rounding of its rim takes off no more than a hundredth.
    EXPECT_LE(wayOut(tooth, relief.place, relief.direction), relief.cover + 0.01);
    EXPECT_GE(wayOut(tooth, relief.place, relief.direction), relief.cover - 0.02);
}

TEST_F(MeshgenRelief, noPointComesOutAndNoneFartherThanTheRadiusMoves)
{
    const Mesh before = tooth.ownMesh;
    carve(tooth, relief);
    int moved = 0;
    for (std::size_t i = 0; i < before.positions.size(); ++i) {
        const Vec3 way = tooth.ownMesh.positions[i] - before.positions[i];
        if (length(way) == 0.0) continue;
        ++moved;
        EXPECT_LT(dot(way, relief.direction), 0.0);
        EXPECT_NEAR(length(rejected(way, relief.direction)), 0.0, 1e-12);
        EXPECT_LT(length(rejected(before.positions[i] - relief.place, relief.direction)),
                  relief.radius);
    }
    EXPECT_GT(moved, 20);
}

TEST_F(MeshgenRelief, theOtherSideOfTheCrownStays)
{
    const double before = wayOut(tooth, relief.place, -relief.direction);
    carve(tooth, relief);
    EXPECT_EQ(wayOut(tooth, relief.place, -relief.direction), before);
}

TEST_F(MeshgenRelief, aPlaceWithLessOverItThanItsCoverLeavesTheCrownNearlyAsItIs)
{
    relief.place += relief.direction * 0.6;
    carve(tooth, relief);
    // 0.2 is over it already, 0.22 less than the cover: the rounded rim takes off
    // (0.4 - 0.22)^2 / (4 * 0.4) = 0.02.
    EXPECT_NEAR(wayOut(tooth, relief.place, relief.direction), 0.18, 0.01);
}

TEST_F(MeshgenRelief, onlyTheNamedToothIsCarvedAndItsNormalsAreRenewed)
{
    std::vector<Tooth> teeth{tooth, toothAtTheOrigin(29)};
    const Mesh other = teeth[1].ownMesh;
    carveAll(teeth, {relief});
    EXPECT_LE(wayOut(teeth[0], relief.place, relief.direction), relief.cover + 0.01);
    EXPECT_EQ(teeth[1].ownMesh.positions, other.positions);
    EXPECT_EQ(teeth[1].ownMesh.normals, other.normals);
    EXPECT_NE(teeth[0].ownMesh.normals, tooth.ownMesh.normals);
    EXPECT_TRUE(meshDefects(teeth[0].ownMesh).empty());
}

} // namespace
} // namespace kelo::meshgen
