#include "tools/meshgen/Mesh.h"
#include "tests/tools/MeshgenBracketCrown.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>

namespace kelo::meshgen {
namespace {

namespace fs = std::filesystem;

using Sentences = std::vector<std::string>;

Mesh cube(double size, const Vec3 &corner = {})
{
    Mesh mesh;
    for (int i = 0; i < 8; ++i) {
        mesh.positions.push_back(
            corner + Vec3{(i & 1) * size, ((i >> 1) & 1) * size, ((i >> 2) & 1) * size});
    }
    mesh.triangles = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                      {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
    return mesh;
}

std::string contentOf(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class MeshgenFiles : public ::testing::Test
{
protected:
    void SetUp() override
    {
        folder = fs::temp_directory_path() /
                 (std::string("kelo-meshgen-") +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    fs::path folder;
};

TEST(MeshgenMesh, aCubeWithACreaseAngleOf30GetsThreeVerticesAtEveryCorner)
{
    Mesh mesh = cube(2.0);
    computeSmoothNormals(mesh, 30.0);
    ASSERT_EQ(mesh.positions.size(), 24u);
    for (std::size_t i = 0; i < 24; ++i) {
        const Vec3 &n = mesh.normals[i];
        EXPECT_DOUBLE_EQ(std::abs(n.x) + std::abs(n.y) + std::abs(n.z), 1.0) << i;
        EXPECT_GT(dot(n, mesh.positions[i] - Vec3{1.0, 1.0, 1.0}), 0.0) << i;
    }
    EXPECT_EQ(meshDefects(mesh), Sentences{});
}

TEST(MeshgenMesh, aCubeWithACreaseAngleOf180HasEightDiagonalNormals)
{
    Mesh mesh = cube(2.0);
    computeSmoothNormals(mesh, 180.0);
    ASSERT_EQ(mesh.positions.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i) {
        // Each face weighs its area times its angle: two triangles of 45 degrees weigh as much as
        // one of 90, so all three sides weigh the same.
        const Vec3 diagonal = (mesh.positions[i] - Vec3{1.0, 1.0, 1.0}) / std::sqrt(3.0);
        EXPECT_NEAR(distance(mesh.normals[i], diagonal), 0.0, 1e-12) << i;
    }
}

TEST(MeshgenMesh, appendingKeepsBothMeshesApart)
{
    Mesh mesh = cube(1.0);
    append(mesh, cube(1.0, {5.0, 0.0, 0.0}));
    ASSERT_EQ(mesh.positions.size(), 16u);
    ASSERT_EQ(mesh.triangles.size(), 24u);
    EXPECT_EQ(mesh.triangles[12], (std::array<std::uint32_t, 3>{8, 10, 9}));
    computeSmoothNormals(mesh, 30.0);
    EXPECT_EQ(meshDefects(mesh), Sentences{});
}

TEST(MeshgenMesh, vertexCacheOrderKeepsTheSurfaceAndDropsTheUnused)
{
    Mesh mesh = test::ellipsoid({}, {3.0, 0.0, 0.0}, {0.0, 2.0, 0.0}, {0.0, 0.0, 1.0});
    const std::size_t vertices = mesh.positions.size();
    const std::size_t triangles = mesh.triangles.size();
    mesh.positions.push_back({9.0, 9.0, 9.0});
    mesh.normals.push_back({0.0, 0.0, 1.0});
    optimizeOrder(mesh);
    EXPECT_EQ(mesh.positions.size(), vertices);
    EXPECT_EQ(mesh.triangles.size(), triangles);
    EXPECT_EQ(mesh.triangles[0], (std::array<std::uint32_t, 3>{0, 1, 2}));
    EXPECT_EQ(meshDefects(mesh), Sentences{});
    for (std::size_t i = 0; i < vertices; ++i) {
        const Vec3 &p = mesh.positions[i];
        EXPECT_NEAR(p.x * p.x / 9.0 + p.y * p.y / 4.0 + p.z * p.z, 1.0, 1e-12);
        // The normal came along: it leans as the ellipsoid's gradient does.
        EXPECT_GT(dot(mesh.normals[i], normalized({p.x / 9.0, p.y / 4.0, p.z})), 0.98);
    }
}

TEST(MeshgenMesh, aRayMeetsTheNearestFaceFromEitherSide)
{
    const Mesh mesh = cube(2.0);
    const auto outside = raycast(mesh, {0.5, 0.7, 5.0}, {0.0, 0.0, -2.0});
    ASSERT_TRUE(outside);
    EXPECT_DOUBLE_EQ(outside->distance, 1.5);
    EXPECT_EQ(outside->position, (Vec3{0.5, 0.7, 2.0}));
    EXPECT_EQ(outside->normal, (Vec3{0.0, 0.0, 1.0}));
    const auto inside = raycast(mesh, {0.5, 0.7, 1.5}, {0.0, 0.0, -1.0});
    ASSERT_TRUE(inside);
    EXPECT_DOUBLE_EQ(inside->distance, 1.5);
    EXPECT_EQ(inside->normal, (Vec3{0.0, 0.0, -1.0}));
}

TEST(MeshgenMesh, aRayBesideOrAwayFromTheMeshMeetsNothing)
{
    const Mesh mesh = cube(2.0);
    EXPECT_FALSE(raycast(mesh, {3.0, 0.7, 5.0}, {0.0, 0.0, -1.0}));
    EXPECT_FALSE(raycast(mesh, {0.5, 0.7, 5.0}, {0.0, 0.0, 1.0}));
    EXPECT_FALSE(raycast(Mesh{}, {0.5, 0.7, 5.0}, {0.0, 0.0, 1.0}));
}

TEST(MeshgenMesh, aRayThroughAnEdgeDoesNotSlipBetweenItsFaces)
{
    const Mesh mesh = cube(2.0);
    for (int i = 1; i < 20; ++i) {
        const double along = 0.1 * i;
        // The diagonal that divides the upper side runs where x + y = 2.
        EXPECT_TRUE(raycast(mesh, {along, 2.0 - along, 5.0}, {0.0, 0.0, -1.0})) << along;
    }
}

TEST(MeshgenMesh, everyDefectIsNamedWithItsCount)
{
    struct Case
    {
        const char *what;
        Mesh mesh;
        Sentences expected;
    };
    const auto smooth = [](Mesh mesh) {
        computeSmoothNormals(mesh, 30.0);
        return mesh;
    };
    std::vector<Case> cases;
    cases.push_back({"nothing at all", Mesh{}, {"no triangles"}});
    Mesh open = cube(1.0);
    open.triangles.pop_back();
    cases.push_back({"a hole", smooth(open), {"3 edges belong to one face only"}});
    Mesh turned = cube(1.0);
    std::swap(turned.triangles[0][1], turned.triangles[0][2]);
    cases.push_back(
        {"a face turned over", smooth(turned), {"3 edges have faces wound against each other"}});
    Mesh inverted = cube(1.0);
    for (auto &t : inverted.triangles)
        std::swap(t[1], t[2]);
    cases.push_back({"inside out", smooth(inverted), {"1 shell has no positive volume"}});
    Mesh hidden = cube(9.0, {2.0, 0.0, 0.0});
    append(hidden, inverted);
    cases.push_back(
        {"inside out beside a larger shell", smooth(hidden), {"1 shell has no positive volume"}});
    Mesh crowded = cube(1.0);
    append(crowded, cube(1.0, {1.0, 1.0, 0.0}));
    cases.push_back({"two cubes with a common edge",
                     smooth(crowded),
                     {"1 edge belongs to more than two faces"}});
    Mesh bare = cube(1.0);
    cases.push_back({"no normals", bare, {"8 vertices but 0 normals"}});
    Mesh longNormal = smooth(cube(1.0));
    longNormal.normals[3] *= 1.001;
    cases.push_back({"a long normal", longNormal, {"1 normal is not of length 1"}});
    for (const Case &c : cases)
        EXPECT_EQ(meshDefects(c.mesh), c.expected) << c.what;
}

TEST(MeshgenMesh, aTriangleThatCollapsesWhenWrittenIsADefect)
{
    Mesh mesh = cube(1.0);
    // A corner is split by a millionth of a millimetre: one point in the file.
    mesh.positions.push_back(mesh.positions[3] + Vec3{1e-6, 0.0, 0.0});
    mesh.triangles.push_back({3, 8, 1});
    computeSmoothNormals(mesh, 30.0);
    const Sentences defects = meshDefects(mesh);
    ASSERT_FALSE(defects.empty());
    EXPECT_EQ(defects.front(), "1 triangle has no area");
}

TEST_F(MeshgenFiles, aMeshIsWrittenWithFiveDecimalsAndOneBasedIndices)
{
    Mesh mesh;
    mesh.positions = {{0.0, -0.000001, 1.5}, {-0.25, 12.0, 0.000014}, {-31.6937, 7.0, 100.999996}};
    mesh.normals = {{0.0, 0.0, 1.0}, {-1.0, 0.0, 0.0}, {0.6, -0.8, 0.0}};
    mesh.triangles = {{0, 1, 2}};
    std::string error = "untouched";
    ASSERT_TRUE(writeOBJ((folder / "a.obj").string(), mesh, &error));
    EXPECT_EQ(error, "untouched");
    EXPECT_EQ(contentOf(folder / "a.obj"), "v 0.00000 0.00000 1.50000\n"
                                           "v -0.25000 12.00000 0.00001\n"
                                           "v -31.69370 7.00000 101.00000\n"
                                           "vn 0.00000 0.00000 1.00000\n"
                                           "vn -1.00000 0.00000 0.00000\n"
                                           "vn 0.60000 -0.80000 0.00000\n"
                                           "f 1//1 2//2 3//3\n");
}

TEST_F(MeshgenFiles, writingReplacesAnOlderFileAndLeavesNothingElse)
{
    std::ofstream(folder / "a.obj") << "old";
    Mesh mesh = cube(1.0);
    computeSmoothNormals(mesh, 30.0);
    ASSERT_TRUE(writeOBJ((folder / "a.obj").string(), mesh, nullptr));
    EXPECT_EQ(contentOf(folder / "a.obj").substr(0, 2), "v ");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

TEST_F(MeshgenFiles, aFolderThatDoesNotExistIsNamedInTheError)
{
    Mesh mesh = cube(1.0);
    computeSmoothNormals(mesh, 30.0);
    const std::string path = (folder / "missing" / "a.obj").string();
    std::string error;
    EXPECT_FALSE(writeOBJ(path, mesh, &error));
    EXPECT_EQ(error, "Cannot write \"" + path + "\": No such file or directory");
    EXPECT_FALSE(writeOBJ(path, mesh, nullptr));
}

TEST_F(MeshgenFiles, aNameThatIsAFolderIsAnErrorAndLeavesNoUnfinishedFile)
{
    Mesh mesh = cube(1.0);
    computeSmoothNormals(mesh, 30.0);
    fs::create_directories(folder / "a.obj");
    const std::string path = (folder / "a.obj").string();
    std::string error;
    EXPECT_FALSE(writeOBJ(path, mesh, &error));
    EXPECT_EQ(error, "Cannot write \"" + path + "\": Is a directory");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

TEST_F(MeshgenFiles, aMeshWithoutNormalsIsNotWritten)
{
    const std::string path = (folder / "a.obj").string();
    std::string error;
    EXPECT_FALSE(writeOBJ(path, cube(1.0), &error));
    EXPECT_EQ(error, "Cannot write \"" + path + "\": a normal is missing");
    EXPECT_FALSE(fs::exists(path));
}

} // namespace
} // namespace kelo::meshgen
