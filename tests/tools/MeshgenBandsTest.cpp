// The sample patient with the bands that the library draws.

#include "tests/tools/BandDepthShapes.h"
#include "tools/banddepth/Bands.h"
#include "tools/banddepth/Measurement.h"
#include "tools/banddepth/Scene.h"
#include "tools/meshgen/PatientMeshes.h"

#include <gtest/gtest.h>

#include <vector>

namespace kelo::banddepth {
namespace {

TEST(MeshgenBands, noBandRunsDeeperThanHalfAMillimetreWithTheMouthClosed)
{
    const test::TemporaryFolder folder;
    meshgen::writeMeshes(meshgen::makePatient(KELO_MESH_TABLES, KELO_PATIENTS "/sample.csv"),
                         folder.path);
    const Scene scene = sceneOfFolder(folder.path);
    ASSERT_EQ(scene.obstacles.size(), 86U);
    const std::vector<Band> bands = bandsOfTables();
    ASSERT_EQ(bands.size(), 90U);
    int inside = 0;
    for (std::size_t band = 0; band < bands.size(); ++band)
        for (const Finding &finding : findingsOf(scene, bands, band, 0)) {
            const Obstacle &obstacle = scene.obstacles[finding.obstacle];
            if (obstacle.kind != Kind::tooth) continue;
            ++inside;
            const Vec3 &at = finding.immersion.deepest;
            EXPECT_LE(finding.immersion.depth, 0.5)
                << bands[band].name << " in " << obstacle.name << " at (" << at.x << ", " << at.y
                << ", " << at.z << ")";
        }
    // Bands lie against crowns; where none did, this would have measured nothing.
    EXPECT_GT(inside, 20);
}

} // namespace
} // namespace kelo::banddepth
