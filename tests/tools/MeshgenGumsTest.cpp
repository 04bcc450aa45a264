// The gums: their level bases, the palate's forms and the papillae.

#include "tools/meshgen/Palate.h"
#include "tools/meshgen/PatientMeshes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace kelo::meshgen {
namespace {

const Patient &patientWithGums()
{
    static const Patient made = makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv");
    return made;
}

const Mesh &gumNamed(const std::string &name)
{
    for (const NamedMesh &named : patientWithGums().meshes)
        if (named.name == name) return named.mesh;
    throw std::runtime_error("no mesh " + name);
}

/// The area of the faces that lie level within a degree at the gum's end, and the spread of heights
/// there.
struct Base
{
    double area = 0.0, lowest = 1e9, highest = -1e9;
};

Base baseOf(const Mesh &gum, double sense)
{
    Base base;
    for (const auto &t : gum.triangles) {
        const Vec3 &a = gum.positions[t[0]];
        const Vec3 face = cross(gum.positions[t[1]] - a, gum.positions[t[2]] - a);
        if (sense * face.z < 0.9998 * length(face)) continue;
        if (sense * a.z < 15.0) continue;
        base.area += length(face) / 2.0;
        base.lowest = std::min(base.lowest, a.z);
        base.highest = std::max(base.highest, a.z);
    }
    return base;
}

TEST(MeshgenGums, bothJawsStandOnALevelBase)
{
    const Base upper = baseOf(gumNamed("_upper_gums"), 1.0);
    EXPECT_GT(upper.area, 1500.0);
    EXPECT_LT(upper.highest - upper.lowest, 0.1);
    // A horseshoe: the floor of the lower jaw is open.
    const Base lower = baseOf(gumNamed("_lower_gums"), -1.0);
    EXPECT_GT(lower.area, 500.0);
    EXPECT_LT(lower.area, upper.area);
    EXPECT_LT(lower.highest - lower.lowest, 0.1);
}

TEST(MeshgenGums, nothingOfTheUpperGumRisesAboveItsBase)
{
    const Mesh &gum = gumNamed("_upper_gums");
    const Base base = baseOf(gum, 1.0);
    for (const Vec3 &p : gum.positions)
        EXPECT_LE(p.z, base.highest + 0.01);
}

TEST(MeshgenGums, theFloorOfTheLowerJawIsOpen)
{
    // Between the molars a ray meets the upper gum, and nothing of the lower one.
    const Vec3 tongue{0.0, 10.0, -40.0};
    EXPECT_TRUE(raycast(gumNamed("_upper_gums"), tongue, {0.0, 0.0, 1.0}));
    EXPECT_FALSE(raycast(gumNamed("_lower_gums"), tongue, {0.0, 0.0, 1.0}));
}

TEST(MeshgenPalate, threeRugaeOrMoreRunAcrossOnEitherSide)
{
    for (const double aside : {-3.5, 3.5}) {
        int crests = 0;
        for (double behind = 4.0; behind < 22.0; behind += 0.05) {
            const double here = palateRelief(aside, behind);
            if (here > 0.25 && here > palateRelief(aside, behind - 0.05) &&
                here >= palateRelief(aside, behind + 0.05))
                ++crests;
        }
        EXPECT_GE(crests, 3) << aside;
    }
}

TEST(MeshgenPalate, theRapheIsARidgeAlongTheMiddle)
{
    for (const double behind : {8.0, 20.0, 35.0})
        EXPECT_GT(palateRelief(0.0, behind), palateRelief(1.3, behind) + 0.05) << behind;
    EXPECT_LT(palateRelief(5.0, 40.0), 0.01);
}

} // namespace
} // namespace kelo::meshgen
