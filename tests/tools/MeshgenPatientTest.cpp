// The sample patient as a whole: which files there are, what they cost, how they are made and where
// everything stands.

#include "tools/meshcheck/MeshCheck.h"
#include "tools/meshgen/PatientMeshes.h"
#include "tools/meshgen/Report.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using namespace kelo::meshgen;

const Patient &patient()
{
    static const Patient made = makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv");
    return made;
}

std::string contents(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::map<std::string, std::string> filesOf(const std::filesystem::path &folder)
{
    std::map<std::string, std::string> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        files[entry.path().filename().string()] = contents(entry.path());
    return files;
}

/// An empty folder that is removed with its contents at the end of the test.
struct ScratchFolder
{
    explicit ScratchFolder(const std::string &name)
        : path(std::filesystem::temp_directory_path() /
               (name + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                std::to_string(reinterpret_cast<std::uintptr_t>(this))))
    {
        std::filesystem::create_directories(path);
    }
    ~ScratchFolder() { std::filesystem::remove_all(path); }
    std::filesystem::path path;
};

TEST(MeshgenPatient, theFilesOfTwoRunsHaveTheSameBytes)
{
    const ScratchFolder first("meshgen-first");
    const ScratchFolder second("meshgen-second");
    writeMeshes(makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv"), first.path.string());
    writeMeshes(makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv"), second.path.string());
    const auto files = filesOf(first.path);
    EXPECT_EQ(files.size(), 86U);
    EXPECT_EQ(files, filesOf(second.path));
}

TEST(MeshgenPatient, everyFileHasTheNameThatTheLoaderAsksForAndEndsWithALineBreak)
{
    const ScratchFolder folder("meshgen-names");
    writeMeshes(patient(), folder.path.string());
    std::set<std::string> expected = {"_upper_gums.obj", "_lower_gums.obj"};
    for (int number = 2; number <= 31; ++number) {
        if (number == 16 || number == 17) continue; // wisdom teeth
        const std::string key = std::to_string(number);
        expected.insert("_tooth_" + key + ".obj");
        expected.insert("bracket_" + key + ".obj");
        expected.insert("button_" + key + ".obj");
    }
    std::set<std::string> found;
    for (const auto &[name, text] : filesOf(folder.path)) {
        found.insert(name);
        ASSERT_FALSE(text.empty()) << name;
        EXPECT_EQ(text.back(), '\n') << name;
    }
    EXPECT_EQ(found, expected);
}

TEST(MeshgenPatient, allMeshesTogetherStayWithinTheTrianglesOfAFrame)
{
    std::size_t triangles = 0;
    for (const NamedMesh &named : patient().meshes)
        triangles += named.mesh.triangles.size();
    EXPECT_LE(triangles, 145000U);
}

TEST(MeshgenPatient, everyMeshIsClosedWoundOutwardsAndHasUnitNormals)
{
    for (const NamedMesh &named : patient().meshes) {
        EXPECT_FALSE(named.mesh.triangles.empty()) << named.name;
        for (const std::string &defect : meshDefects(named.mesh))
            ADD_FAILURE() << named.name << ": " << defect;
    }
}

TEST(MeshgenPatient, theStrictCheckFindsNothingInTheWrittenFiles)
{
    const ScratchFolder folder("meshgen-strict");
    writeMeshes(patient(), folder.path.string());
    const std::vector<std::string> files = kelo::meshFilesAt(folder.path.string());
    EXPECT_EQ(files.size(), 86U);
    for (const std::string &file : files)
        for (const kelo::MeshProblem &problem : kelo::checkMeshFile(file, kelo::Strictness::strict))
            ADD_FAILURE() << problem.file << ':' << problem.line << ": " << problem.reason;
}

TEST(MeshgenPatient, teethAndGumsAreSmoothWithOneNormalForEveryPoint)
{
    for (const NamedMesh &named : patient().meshes) {
        if (named.name[0] != '_') continue;
        std::set<std::array<double, 3>> points;
        for (const Vec3 &p : named.mesh.positions)
            points.insert({p.x, p.y, p.z});
        EXPECT_EQ(points.size(), named.mesh.positions.size()) << named.name;
    }
}

TEST(MeshgenPatient, neighboursTouchWithinTwoTenthsOfAMillimetre)
{
    const auto &teeth = patient().teeth;
    ASSERT_EQ(teeth.size(), 28U);
    for (std::size_t i = 0; i + 1 < teeth.size(); ++i) {
        if (i == 13) continue; // from the last upper to the first lower tooth
        EXPECT_LE(std::abs(contactGap(teeth[i], teeth[i + 1])), 0.2)
            << teeth[i].placement.number << " and " << teeth[i + 1].placement.number;
    }
}

TEST(MeshgenPatient, everyAnchorLiesOutsideTheTeethOfItsJaw)
{
    const auto anchors = measureAnchors(patient(), KELO_MESH_TABLES);
    ASSERT_EQ(anchors.size(), 103U);
    for (const AnchorMeasure &anchor : anchors)
        EXPECT_GT(anchor.toothDistance, 0.0)
            << "anchor " << anchor.index << " at tooth " << anchor.nearestTooth;
}

TEST(MeshgenPatient, everyAnchorIsWithinTwoMillimetresOfAToothOrBracketOfItsJaw)
{
    for (const AnchorMeasure &anchor : measureAnchors(patient(), KELO_MESH_TABLES))
        EXPECT_LE(anchor.surfaceDistance, 2.0)
            << "anchor " << anchor.index << " at tooth " << anchor.nearestTooth;
}

/// Whether a point lies inside a closed mesh: a ray from it leaves through an odd number of faces.
bool isInside(const Vec3 &point, const Mesh &mesh)
{
    // No axis and no symmetry of the scene, so that the ray meets no edge.
    const Vec3 direction = normalized({0.3717, 0.5311, 0.7613});
    int crossings = 0;
    Vec3 from = point;
    while (const auto hit = raycast(mesh, from, direction)) {
        ++crossings;
        from = hit->position + direction * 1e-7;
    }
    return crossings % 2 == 1;
}

TEST(MeshgenPatient, noRootShowsOutsideTheGum)
{
    std::map<std::string, const Mesh *> meshes;
    for (const NamedMesh &named : patient().meshes)
        meshes[named.name] = &named.mesh;
    for (const Tooth &tooth : patient().teeth) {
        const Mesh &gum = *meshes.at(tooth.placement.upper ? "_upper_gums" : "_lower_gums");
        const Mesh &mesh = *meshes.at("_tooth_" + std::to_string(tooth.placement.number));
        int outside = 0;
        int points = 0;
        for (const Vec3 &p : mesh.positions) {
            if (tooth.placement.toOwn(p).z > 0.0) continue; // crown
            ++points;
            if (!isInside(p, gum)) ++outside;
        }
        EXPECT_GT(points, 20) << tooth.placement.number;
        EXPECT_EQ(outside, 0) << tooth.placement.number;
    }
}

TEST(MeshgenPatient, crownsStandOutOfTheGumByMostOfTheirHeight)
{
    std::map<std::string, const Mesh *> meshes;
    for (const NamedMesh &named : patient().meshes)
        meshes[named.name] = &named.mesh;
    for (const Tooth &tooth : patient().teeth) {
        const ToothPlacement &placement = tooth.placement;
        const Mesh &gum = *meshes.at(placement.upper ? "_upper_gums" : "_lower_gums");
        // Down along the labial face: the first height at which the gum covers the crown.
        double margin = -1.0;
        for (double z = placement.crownHeight; z > 0.0; z -= 0.05) {
            const auto hit = raycast(tooth.ownMesh, {0.0, 30.0, z}, {0.0, -1.0, 0.0});
            if (hit && isInside(placement.toJaw(hit->position), gum)) {
                margin = z;
                break;
            }
        }
        // The free margin runs about one millimetre coronally to the cervical line.
        EXPECT_NEAR(margin, 1.0, 0.75) << placement.number;
    }
}

TEST(MeshgenPatient, noTriangleOfTeethAndGumsIsFoldedAgainstItsSurface)
{
    for (const NamedMesh &named : patient().meshes) {
        if (named.name[0] != '_') continue;
        int folded = 0;
        for (const auto &t : named.mesh.triangles) {
            const Vec3 &a = named.mesh.positions[t[0]];
            const Vec3 face = cross(named.mesh.positions[t[1]] - a, named.mesh.positions[t[2]] - a);
            const Vec3 normals =
                named.mesh.normals[t[0]] + named.mesh.normals[t[1]] + named.mesh.normals[t[2]];
            if (dot(face, normals) <= 0.0) ++folded;
        }
        EXPECT_EQ(folded, 0) << named.name;
    }
}

TEST(MeshgenPatient, upperTeethOverlapLowerFrontTeethByAboutTwoAndAHalf)
{
    const auto edge = [](int number) {
        double lowest = 1e9;
        double highest = -1e9;
        for (const NamedMesh &named : patient().meshes)
            if (named.name == "_tooth_" + std::to_string(number))
                for (const Vec3 &p : named.mesh.positions) {
                    lowest = std::min(lowest, p.z);
                    highest = std::max(highest, p.z);
                }
        return number <= 15 ? lowest : highest;
    };
    EXPECT_NEAR(edge(25) - edge(8), 2.5, 0.5);
    EXPECT_NEAR(edge(24) - edge(9), 2.5, 0.5);
}

TEST(MeshgenPatient, aMissingHookTableIsReportedWithItsPath)
{
    try {
        makePatient("/nowhere", KELO_PATIENTS "/sample.csv");
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(), "Cannot read \"/nowhere/hooks.csv\"");
    }
}

TEST(MeshgenPatient, aMalformedHookIsReportedWithItsLine)
{
    const ScratchFolder folder("meshgen-hooks");
    const std::string path = (folder.path / "hooks.csv").string();
    std::ofstream(path) << "key,px,py,pz,dx,dy,dz,radius\n2,1,2,3,0,0,1,0.2\n3,1,x,3,0,0,1,0.2\n";
    try {
        readHooks(path);
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error &error) {
        EXPECT_EQ(error.what(), "Malformed hook on line 3 of \"" + path + "\"");
    }
}

} // namespace
