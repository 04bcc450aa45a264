#include "tests/tools/MeshgenBracketCrown.h"
#include "tests/tools/MeshgenBracketMeasurements.h"
#include "tools/meshgen/BracketParts.h"
#include "tools/meshgen/ButtonParts.h"
#include "tools/meshgen/PatientMeshes.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace kelo::meshgen {
namespace {

using Sentences = std::vector<std::string>;

/// One tooth of the sample patient with what is bonded to it.
struct Bonded
{
    ToothPlacement placement;
    Hook hook;
    Hook neck;
    Mesh tooth;
    Mesh bracket;
    Mesh button;
};

/// The patient as the program writes it: simplified teeth, meshes in the renderer's order.
const std::vector<Bonded> &bondedTeeth()
{
    static const std::vector<Bonded> all = [] {
        const HookTable hooks = readHooks(KELO_MESH_TABLES "/hooks.csv");
        const Patient sample = makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv");
        std::map<std::string, const Mesh *> meshes;
        for (const NamedMesh &named : sample.meshes)
            meshes[named.name] = &named.mesh;
        std::vector<Bonded> result;
        for (const Tooth &tooth : sample.teeth) {
            const std::string key = test::bracketKey(tooth.placement.number);
            result.push_back({tooth.placement, hooks.at(key), hooks.at(key + "l"),
                              *meshes.at("_tooth_" + key), *meshes.at("bracket_" + key),
                              *meshes.at("button_" + key)});
        }
        return result;
    }();
    return all;
}

TEST(MeshgenPatientBrackets, all56MeshesAreClosedOutwardShellsWithUnitNormals)
{
    ASSERT_EQ(bondedTeeth().size(), 28u);
    for (const Bonded &b : bondedTeeth()) {
        EXPECT_EQ(meshDefects(b.bracket), Sentences{}) << b.placement.number;
        EXPECT_EQ(meshDefects(b.button), Sentences{}) << b.placement.number;
    }
}

TEST(MeshgenPatientBrackets, allPostsAndNecksAreWhereTheTableHasThem)
{
    for (const Bonded &b : bondedTeeth()) {
        const int number = b.placement.number;
        test::expectRodAlongHook(b.bracket, b.hook, test::bracketKey(number), test::placesOnPost);
        test::expectRodAlongHook(b.button, b.neck, test::buttonKey(number),
                                 test::placesOnNeck(b.placement, b.neck));
    }
}

TEST(MeshgenPatientBrackets, noBaseStandsOffItsToothByMoreThan015)
{
    for (const Bonded &b : bondedTeeth()) {
        const BracketMeasures measures = bracketMeasures(b.placement.number);
        const BracketSeat seat = bracketSeat(b.tooth, b.placement, b.hook);
        const test::Contact contact =
            test::contactOf(b.bracket, b.tooth, seat.pad, measures.pad.width, measures.pad.height);
        EXPECT_LE(contact.gap, 0.15) << b.placement.number;
        EXPECT_GT(contact.covered, 0.9) << b.placement.number;
    }
}

TEST(MeshgenPatientBrackets, noButtonBaseStandsOffItsToothByMoreThan015)
{
    for (const Bonded &b : bondedTeeth()) {
        const SurfaceFrame seat = buttonSeat(b.tooth, b.placement, b.neck);
        const test::Contact contact = test::contactOf(b.button, b.tooth, seat, 1.9, 1.7);
        EXPECT_LE(contact.gap, 0.15) << b.placement.number;
        EXPECT_GT(contact.covered, 0.9) << b.placement.number;
    }
}

TEST(MeshgenPatientBrackets, noBracketIsMovedByMoreThanAMillimetreFromTheFacialAxisPoint)
{
    for (const Bonded &b : bondedTeeth()) {
        const BracketSeat seat = bracketSeat(b.tooth, b.placement, b.hook);
        const Vec3 moved = seat.pad.origin - b.placement.facialAxisPoint;
        EXPECT_LE(std::abs(dot(moved, b.placement.occlusalDirection)), 0.75) << b.placement.number;
        EXPECT_LE(std::abs(dot(moved, b.placement.mesialDirection)), 0.95) << b.placement.number;
    }
}

TEST(MeshgenPatientBrackets, all28BracketsTogetherHaveNoMoreThan42000Triangles)
{
    std::size_t count = 0;
    for (const Bonded &b : bondedTeeth())
        count += b.bracket.triangles.size();
    EXPECT_LE(count, 42000u);
}

} // namespace
} // namespace kelo::meshgen
