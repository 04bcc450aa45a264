// A second patient from another file: rotated lower incisors and a canine that stands high.

#include "tests/tools/MeshgenBracketMeasurements.h"
#include "tools/meshcheck/MeshCheck.h"
#include "tools/meshgen/Bite.h"
#include "tools/meshgen/MeshDistance.h"
#include "tools/meshgen/PatientMeshes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <numbers>
#include <stdexcept>
#include <string>

namespace kelo::meshgen {
namespace {

const Patient &crowded()
{
    static const Patient made = makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/crowded.csv");
    return made;
}

const Mesh &meshNamed(const std::string &name)
{
    for (const NamedMesh &named : crowded().meshes)
        if (named.name == name) return named.mesh;
    throw std::runtime_error("no mesh " + name);
}

/// How far the tooth's edge is turned against the row of its neighbours' middles, in degrees.
double turnOf(int number)
{
    const auto placementOf = [](int tooth) {
        for (const Tooth &t : crowded().teeth)
            if (t.placement.number == tooth) return t.placement;
        throw std::out_of_range("no tooth");
    };
    const Vec3 row =
        placementOf(number + 1).cervicalCenter - placementOf(number - 1).cervicalCenter;
    const Vec3 edge = placementOf(number).mesialDirection;
    const double cosine = std::abs(row.x * edge.x + row.y * edge.y) /
                          (std::hypot(row.x, row.y) * std::hypot(edge.x, edge.y));
    return std::acos(std::min(cosine, 1.0)) * 180.0 / std::numbers::pi;
}

TEST(MeshgenCrowdedPatient, theStrictCheckFindsNothingInItsFiles)
{
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "kelo-meshgen-crowded";
    std::filesystem::remove_all(folder);
    writeMeshes(crowded(), folder.string());
    const std::vector<std::string> files = meshFilesAt(folder.string());
    EXPECT_EQ(files.size(), 86U);
    for (const std::string &file : files)
        for (const MeshProblem &problem : checkMeshFile(file, Strictness::strict))
            ADD_FAILURE() << problem.file << ':' << problem.line << ": " << problem.reason;
    std::filesystem::remove_all(folder);
}

TEST(MeshgenCrowdedPatient, itsLowerIncisorsAreTurnedAgainstTheRow)
{
    int turned = 0;
    for (const int number : {23, 24, 25, 26})
        turned += turnOf(number) > 10.0 ? 1 : 0;
    EXPECT_GE(turned, 3);
}

TEST(MeshgenCrowdedPatient, itsRightCanineIsTwoMillimetresHigherThanTheLeft)
{
    const auto tip = [](const std::string &name) {
        double lowest = 1e9;
        for (const Vec3 &p : meshNamed(name).positions)
            lowest = std::min(lowest, p.z);
        return lowest;
    };
    EXPECT_GT(tip("_tooth_6"), tip("_tooth_11") + 2.0);
}

TEST(MeshgenCrowdedPatient, neighboursTouchAndTheBiteHolds)
{
    const auto &teeth = crowded().teeth;
    for (std::size_t i = 0; i + 1 < teeth.size(); ++i) {
        if (teeth[i].placement.upper != teeth[i + 1].placement.upper) continue;
        EXPECT_LE(std::abs(contactGap(teeth[i], teeth[i + 1])), 0.2) << teeth[i].placement.number;
    }
    for (const BiteMeasure &pair : biteOfTeeth(crowded()))
        EXPECT_LE(pair.overlap, 0.3) << pair.upper << " and " << pair.lower;
}

TEST(MeshgenCrowdedPatient, noRootShowsOutsideTheGum)
{
    const MeshDistance upperGum(meshNamed("_upper_gums"));
    const MeshDistance lowerGum(meshNamed("_lower_gums"));
    for (const Tooth &tooth : crowded().teeth) {
        const ToothPlacement &placement = tooth.placement;
        const MeshDistance &gum = placement.upper ? upperGum : lowerGum;
        int outside = 0;
        for (const Vec3 &p : meshNamed("_tooth_" + std::to_string(placement.number)).positions)
            if (placement.toOwn(p).z <= 0.0 && !gum.isInside(p)) ++outside;
        EXPECT_EQ(outside, 0) << placement.number;
    }
}

TEST(MeshgenCrowdedPatient, postsAndNecksStayWhereTheTableHasThem)
{
    const HookTable hooks = readHooks(KELO_MESH_TABLES "/hooks.csv");
    for (const Tooth &tooth : crowded().teeth) {
        const std::string key = std::to_string(tooth.placement.number);
        const Hook &neck = hooks.at(key + "l");
        test::expectRodAlongHook(meshNamed("bracket_" + key), hooks.at(key), key,
                                 test::placesOnPost);
        test::expectRodAlongHook(meshNamed("button_" + key), neck, key + "l",
                                 test::placesOnNeck(tooth.placement, neck));
    }
}

} // namespace
} // namespace kelo::meshgen
