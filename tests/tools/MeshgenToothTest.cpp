// Single teeth against the tables of dental anatomy.

#include "tests/tools/MeshgenBracketCrown.h"
#include "tools/meshgen/Report.h"
#include "tools/meshgen/Simplify.h"
#include "tools/meshgen/ToothShape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <set>
#include <stdexcept>
#include <vector>

namespace {

using namespace kelo::meshgen;

struct TableRow
{
    int right, left;
    double height, mesiodistal, buccolingual;
};

/// Crown dimensions of permanent teeth (Wheeler/Ash), mm.
constexpr std::array<TableRow, 14> table = {{
    {8, 9, 10.5, 8.5, 7.0},
    {7, 10, 9.0, 6.5, 6.0},
    {6, 11, 10.0, 7.5, 8.0},
    {5, 12, 8.5, 7.0, 9.0},
    {4, 13, 8.5, 7.0, 9.0},
    {3, 14, 7.5, 10.0, 11.0},
    {2, 15, 7.0, 9.0, 11.0},
    {25, 24, 9.0, 5.0, 6.0},
    {26, 23, 9.5, 5.5, 6.5},
    {27, 22, 11.0, 7.0, 7.5},
    {28, 21, 8.5, 7.0, 7.5},
    {29, 20, 8.0, 7.0, 8.0},
    {30, 19, 7.5, 11.0, 10.5},
    {31, 18, 7.0, 10.5, 10.0},
}};

/// The height of a tooth's surface over a point of its own base plane.
double heightAt(const Mesh &tooth, double x, double y)
{
    const auto hit = raycast(tooth, {x, y, 50.0}, {0.0, 0.0, -1.0});
    return hit ? hit->position.z : -1e9;
}

TEST(MeshgenTooth, everyCrownIsWithinEightPercentOfTheTables)
{
    const Patient patient = makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv");
    const std::vector<ToothMeasures> measures = measureTeeth(patient);
    ASSERT_EQ(measures.size(), 28U);
    for (const ToothMeasures &m : measures) {
        const auto row = std::find_if(table.begin(), table.end(), [&](const TableRow &r) {
            return r.right == m.number || r.left == m.number;
        });
        ASSERT_NE(row, table.end()) << m.number;
        EXPECT_NEAR(m.height, row->height, 0.08 * row->height) << m.number;
        EXPECT_NEAR(m.mesiodistal, row->mesiodistal, 0.08 * row->mesiodistal) << m.number;
        EXPECT_NEAR(m.buccolingual, row->buccolingual, 0.08 * row->buccolingual) << m.number;
    }
}

TEST(MeshgenTooth, rightAndLeftDifferByNoMoreThanAFewTenths)
{
    const PatientParameters patient = readPatient(KELO_PATIENTS "/sample.csv");
    int different = 0;
    for (const TableRow &row : table) {
        const CrownDimensions right = patient.at(row.right).anatomy.dimensions;
        const CrownDimensions left = patient.at(row.left).anatomy.dimensions;
        EXPECT_NEAR(right.mesiodistal, left.mesiodistal, 0.3) << row.right;
        EXPECT_NEAR(right.height, left.height, 0.3) << row.right;
        different += right.mesiodistal != left.mesiodistal ? 1 : 0;
    }
    EXPECT_GT(different, 7);
}

TEST(MeshgenTooth, theAnatomyHasTheSizesOfTheTables)
{
    for (const TableRow &row : table)
        for (const int number : {row.right, row.left}) {
            const CrownDimensions sizes = toothAnatomy(number).dimensions;
            EXPECT_DOUBLE_EQ(sizes.height, row.height) << number;
            EXPECT_DOUBLE_EQ(sizes.mesiodistal, row.mesiodistal) << number;
            EXPECT_DOUBLE_EQ(sizes.buccolingual, row.buccolingual) << number;
        }
}

TEST(MeshgenTooth, anIncisorIsAWedgeThatThinsTowardsItsEdge)
{
    for (const int number : {8, 7, 25, 26}) {
        const ToothAnatomy anatomy = toothAnatomy(number);
        const Mesh tooth = makeTooth(anatomy);
        const auto thickness = [&](double z) {
            const auto labial = raycast(tooth, {0.0, 30.0, z}, {0.0, -1.0, 0.0});
            const auto lingual = raycast(tooth, {0.0, -30.0, z}, {0.0, 1.0, 0.0});
            return labial && lingual ? labial->position.y - lingual->position.y : 0.0;
        };
        const double height = anatomy.dimensions.height;
        EXPECT_GT(thickness(0.25 * height), 1.5 * thickness(0.55 * height)) << number;
        EXPECT_GT(thickness(0.55 * height), 1.3 * thickness(0.9 * height)) << number;
        EXPECT_GT(thickness(0.9 * height), 0.5) << number;
    }
}

TEST(MeshgenTooth, anUpperCentralIncisorHasALingualFossaBetweenMarginalRidges)
{
    const ToothAnatomy anatomy = toothAnatomy(8);
    const Mesh tooth = makeTooth(anatomy);
    const double z = 0.55 * anatomy.dimensions.height;
    const auto lingual = [&](double u) {
        const double x = u * anatomy.dimensions.mesiodistal / 2.0;
        return raycast(tooth, {x, -30.0, z}, {0.0, 1.0, 0.0})->position.y;
    };
    // Lingual is towards smaller y: the ridges stand out farther than the middle.
    EXPECT_LT(lingual(0.7), lingual(0.0) - 0.1);
    EXPECT_LT(lingual(-0.7), lingual(0.0) - 0.1);
}

TEST(MeshgenTooth, anUpperCentralsDistalCornerIsRounderThanTheMesial)
{
    const ToothAnatomy anatomy = toothAnatomy(8);
    const Mesh tooth = makeTooth(anatomy);
    const auto edgeHeightAt = [&](double u) {
        double highest = -1e9;
        for (const Vec3 &p : tooth.positions)
            if (std::abs(p.x - u * anatomy.dimensions.mesiodistal / 2.0) < 0.1)
                highest = std::max(highest, p.z);
        return highest;
    };
    EXPECT_GT(edgeHeightAt(0.9), edgeHeightAt(-0.9) + 0.2);
}

TEST(MeshgenTooth, molarsHaveTheirCuspsAroundAFossa)
{
    for (const int number : {2, 3, 18, 19, 30, 31}) {
        const ToothAnatomy anatomy = toothAnatomy(number);
        const Mesh tooth = makeTooth(anatomy);
        const double halfWidth = anatomy.dimensions.mesiodistal / 2.0;
        const double halfDepth = anatomy.dimensions.buccolingual / 2.0;
        double fossa = 1e9;
        for (const double x : {-0.4, -0.2, 0.0, 0.2, 0.4})
            for (const double y : {-0.2, 0.0, 0.2})
                fossa = std::min(fossa, heightAt(tooth, x * halfWidth, y * halfDepth));
        ASSERT_GE(anatomy.cusps.size(), 4U) << number;
        for (std::size_t i = 0; i < 4; ++i) {
            const Cusp &cusp = anatomy.cusps[i];
            EXPECT_GT(heightAt(tooth, cusp.x * halfWidth, cusp.y * halfDepth), fossa + 0.5)
                << number << " cusp " << i;
        }
    }
}

/// How deep the middle of a fissure's stretch lies under the lobes 0.9 mm to either side of it.
double fissureDepth(const ToothAnatomy &anatomy, const Mesh &tooth, OcclusalPoint from,
                    OcclusalPoint to)
{
    const double halfWidth = anatomy.dimensions.mesiodistal / 2.0;
    const double halfDepth = anatomy.dimensions.buccolingual / 2.0;
    const Vec3 a{from.x * halfWidth, from.y * halfDepth, 0.0};
    const Vec3 b{to.x * halfWidth, to.y * halfDepth, 0.0};
    const Vec3 middle = (a + b) / 2.0;
    const Vec3 across = normalized(Vec3{a.y - b.y, b.x - a.x, 0.0}) * 0.9;
    const double left = heightAt(tooth, middle.x + across.x, middle.y + across.y);
    const double right = heightAt(tooth, middle.x - across.x, middle.y - across.y);
    return (left + right) / 2.0 - heightAt(tooth, middle.x, middle.y);
}

TEST(MeshgenTooth, theMainFissuresAreSixTenthsToFiveQuartersDeep)
{
    for (const int number : {2, 3, 4, 5, 29, 30, 31}) {
        const ToothAnatomy anatomy = toothAnatomy(number);
        const Mesh tooth = makeTooth(anatomy);
        int main = 0;
        for (const Groove &groove : anatomy.grooves) {
            if (groove.depth < 0.6) continue;
            // The stretch that begins at the central pit: others end in the walls.
            ++main;
            const double depth = fissureDepth(anatomy, tooth, groove.line[0], groove.line[1]);
            EXPECT_GE(depth, 0.6) << number << " fissure " << main;
            EXPECT_LE(depth, 1.25) << number << " fissure " << main;
        }
        EXPECT_GE(main, 1) << number;
    }
}

TEST(MeshgenTooth, anUpperFirstMolarsObliqueRidgePartsTwoFossae)
{
    const ToothAnatomy anatomy = toothAnatomy(3);
    const Mesh tooth = makeTooth(anatomy);
    const auto at = [&](double x, double y) {
        return heightAt(tooth, x * anatomy.dimensions.mesiodistal / 2.0,
                        y * anatomy.dimensions.buccolingual / 2.0);
    };
    const double ridge = at(-0.10, -0.06);
    EXPECT_GT(ridge, at(0.12, 0.02) + 0.5);
    EXPECT_GT(ridge, at(-0.52, -0.04) + 0.5);
}

TEST(MeshgenTooth, molarsDifferInTheNumberAndSizeOfTheirCusps)
{
    EXPECT_EQ(toothAnatomy(3).cusps.size(), 5U);
    EXPECT_EQ(toothAnatomy(2).cusps.size(), 4U);
    EXPECT_EQ(toothAnatomy(30).cusps.size(), 5U);
    EXPECT_EQ(toothAnatomy(31).cusps.size(), 4U);
    EXPECT_EQ(toothAnatomy(29).cusps.size(), 3U);
    // The distolingual cusp of the upper second molar is the reduced one.
    EXPECT_GT(toothAnatomy(2).cusps[3].drop, toothAnatomy(3).cusps[3].drop + 0.5);
}

TEST(MeshgenTooth, anIncisorsEdgeHasAFacetThatUppersWearTowardsLingual)
{
    const auto labialIsHigher = [](int number) {
        const ToothAnatomy anatomy = toothAnatomy(number);
        const Mesh tooth = makeTooth(anatomy);
        const double z = 0.93 * anatomy.dimensions.height;
        const double labial = raycast(tooth, {0.0, 30.0, z}, {0.0, -1.0, 0.0})->position.y;
        const double lingual = raycast(tooth, {0.0, -30.0, z}, {0.0, 1.0, 0.0})->position.y;
        EXPECT_GT(labial - lingual, 0.6) << number;
        const auto facetAt = [&](double part) {
            return heightAt(tooth, 0.0, lingual + part * (labial - lingual));
        };
        return facetAt(0.7) - facetAt(0.3);
    };
    EXPECT_GT(labialIsHigher(8), 0.03);
    EXPECT_LT(labialIsHigher(25), -0.03);
}

TEST(MeshgenTooth, theLingualCuspOfAnUpperFirstPremolarIsAboutAMillimetreLower)
{
    const ToothAnatomy anatomy = toothAnatomy(5);
    const Mesh tooth = makeTooth(anatomy);
    double buccal = -1e9;
    double lingual = -1e9;
    for (const Vec3 &p : tooth.positions)
        (p.y > 0.0 ? buccal : lingual) = std::max(p.y > 0.0 ? buccal : lingual, p.z);
    EXPECT_NEAR(buccal - lingual, 1.0, 0.35);
}

TEST(MeshgenTooth, simplifyingKeepsTheSurfaceClosedAndItsSize)
{
    const Mesh tooth = makeTooth(toothAnatomy(30));
    const Mesh simple = simplified(tooth, 2000);
    EXPECT_LE(simple.triangles.size(), 2200U);
    EXPECT_LT(simple.triangles.size(), tooth.triangles.size());
    EXPECT_TRUE(meshDefects(simple).empty());
}

TEST(MeshgenTooth, simplifyingKeepsTheNormalsOfTheFineSurface)
{
    const Mesh tooth = makeTooth(toothAnatomy(30));
    const Mesh simple = simplified(tooth, 3500);
    std::set<std::uint32_t> used;
    for (const auto &t : simple.triangles)
        used.insert(t.begin(), t.end());
    std::size_t kept = 0;
    for (const std::uint32_t v : used) {
        EXPECT_EQ(simple.positions[v], tooth.positions[v]);
        kept += simple.normals[v] == tooth.normals[v] ? 1 : 0;
    }
    // Only where no face would be shaded well is a normal turned.
    EXPECT_GT(static_cast<double>(kept), 0.98 * static_cast<double>(used.size()));
}

TEST(MeshgenTooth, whatIsUnimportantGivesItsTrianglesToTheRest)
{
    const Mesh tooth = makeTooth(toothAnatomy(30));
    std::vector<double> importance;
    for (const Vec3 &p : tooth.positions)
        importance.push_back(p.z < 0.0 ? 0.03 : 1.0);
    const auto rootTriangles = [](const Mesh &mesh) {
        return std::count_if(mesh.triangles.begin(), mesh.triangles.end(), [&](const auto &t) {
            return mesh.positions[t[0]].z < 0.0 && mesh.positions[t[1]].z < 0.0 &&
                   mesh.positions[t[2]].z < 0.0;
        });
    };
    EXPECT_LT(rootTriangles(simplified(tooth, 2000, importance)),
              rootTriangles(simplified(tooth, 2000)));
}

/// The least cosine between a face and the normals of its corners.
double worstShading(const Mesh &mesh)
{
    double least = 1.0;
    for (const auto &t : mesh.triangles) {
        const Vec3 &a = mesh.positions[t[0]];
        const Vec3 face = normalized(cross(mesh.positions[t[1]] - a, mesh.positions[t[2]] - a));
        for (const std::uint32_t v : t)
            least = std::min(least, dot(face, mesh.normals[v]));
    }
    return least;
}

TEST(MeshgenTooth, simplifyingTurnsNoFaceMoreThanSixtyDegreesOffItsNormals)
{
    for (const int number : {8, 5, 30}) {
        const Mesh simple = simplified(makeTooth(toothAnatomy(number)), 1000);
        EXPECT_LE(simple.triangles.size(), 1000U) << number;
        EXPECT_GE(worstShading(simple), 0.5) << number;
        EXPECT_TRUE(meshDefects(simple).empty()) << number;
    }
}

TEST(MeshgenTooth, relaxingRoundsASpikeUntilItsNormalsStandOnItsFaces)
{
    Mesh mesh = test::ellipsoid({}, {4.0, 0.0, 0.0}, {0.0, 4.0, 0.0}, {0.0, 0.0, 4.0});
    const std::size_t pulled = 300;
    const Vec3 before = mesh.positions[pulled];
    mesh.positions[pulled] = before * 2.0;
    computeSmoothNormals(mesh, 180.0);
    EXPECT_LT(worstShading(mesh), 0.3);
    const auto opposite = [&](const Vec3 &a, const Vec3 &b) {
        return dot(a, before) < dot(b, before);
    };
    const Vec3 far = *std::min_element(mesh.positions.begin(), mesh.positions.end(), opposite);
    relaxFolds(mesh, 45.0);
    EXPECT_GE(worstShading(mesh), std::cos(45.0 * 3.14159265358979 / 180.0));
    // What lies far from the spike stays as it is.
    EXPECT_EQ(*std::min_element(mesh.positions.begin(), mesh.positions.end(), opposite), far);
}

TEST(MeshgenTooth, thereAreNoWisdomTeeth)
{
    for (const int number : {1, 16, 17, 32})
        EXPECT_THROW(toothAnatomy(number), std::out_of_range) << number;
}

} // namespace
