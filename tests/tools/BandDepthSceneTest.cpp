#include "keloOpenGL/bands/RubberBandTables.h"
#include "tests/tools/BandDepthShapes.h"
#include "tools/banddepth/Bands.h"
#include "tools/banddepth/Measurement.h"
#include "tools/banddepth/Scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelo::banddepth {
namespace {

using test::box;
using test::cubeAround;
using test::Surface;
using test::TemporaryFolder;

/// The open mouth needs a hinge: as far behind the arches as those of a jaw.
const Extents jawExtents(Vector3{-33.0f, -23.0f, -20.0f}, Vector3{66.0f, 52.0f, 40.0f});

Scene sceneOf(std::vector<Obstacle> obstacles)
{
    return {std::move(obstacles), jawExtents};
}

Obstacle tooth(const Surface &surface, bool isUpper)
{
    return {Kind::tooth, isUpper ? "tooth 8" : "tooth 25", isUpper, surface.mesh()};
}

Vec3 anchorPosition(std::size_t index)
{
    const auto &[x, y, z] = anchors()[index].position;
    return {double(x), double(y), double(z)};
}

/// What `action` throws, as text; nothing if it does not throw.
template<class Action>
std::string complaintOf(Action &&action)
{
    try {
        action();
    } catch (const std::runtime_error &failure) {
        return failure.what();
    }
    return {};
}

/// The one finding of a band at an angle, or nothing.
std::optional<Finding> findingOf(const Scene &scene, const Band &band, int angle)
{
    const auto findings = findingsOf(scene, {band}, 0, angle);
    EXPECT_LE(findings.size(), 1u);
    if (findings.empty()) return std::nullopt;
    EXPECT_EQ(findings[0].angle, angle);
    return findings[0];
}

const Band upperPair{"8-9", {"8", "9"}, false};
const Band crossing{"6-25", {"6", "25"}, true};

TEST(BandDepthBands, everyPairOfTheSequenceTablesIsABandOnce)
{
    const std::vector<Band> bands = bandsOfTables();
    std::set<std::string> names;
    for (const Band &band : bands) {
        ASSERT_EQ(band.keys.size(), 2u);
        EXPECT_EQ(band.name, band.keys[0] + "-" + band.keys[1]);
        EXPECT_TRUE(band.isOfTables);
        names.insert(band.name);
    }
    EXPECT_EQ(names.size(), bands.size());
    for (const auto table : {anchorSequences0(), anchorSequences1(), anchorSequences2()})
        for (const AnchorSequence &sequence : table)
            EXPECT_TRUE(names.contains(std::string(sequence.from) + "-" + std::string(sequence.to)))
                << sequence.from << '-' << sequence.to;
    // The closed mouth's table names 90, and the others no pair beyond them.
    EXPECT_EQ(bands.size(), 90u);
    EXPECT_EQ(bands.front().name, "6-25");
}

TEST(BandDepthBands, configurationsWithoutASequenceAreNotRead)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("catalogue.json", R"({"elasticsConfigTypes": [
        {"typeID": 1, "typeLabel": "Triangle", "bracketSequence": "6,27,28"},
        {"typeID": 2, "typeLabel": "Free", "bracketSequence": ""},
        {"typeID": 3, "typeLabel": "Lingual", "bracketSequence": "3,30l"}]})");
    const std::vector<Band> bands = bandsOfCatalogue(file);
    ASSERT_EQ(bands.size(), 2u);
    EXPECT_EQ(bands[0].name, "Triangle (6,27,28)");
    EXPECT_EQ(bands[0].keys, (std::vector<std::string>{"6", "27", "28"}));
    EXPECT_FALSE(bands[0].isOfTables);
    EXPECT_EQ(bands[1].name, "Lingual (3,30l)");
    EXPECT_EQ(bands[1].keys, (std::vector<std::string>{"3", "30l"}));
}

TEST(BandDepthBands, theSampleCatalogueIsReadWhole)
{
    const auto bands = bandsOfCatalogue(KELO_SOURCE_DIR "/resources/catalogue.json");
    EXPECT_GE(bands.size(), 12u);
}

TEST(BandDepthBands, aConfigurationOverAToothWithoutAHookIsRefused)
{
    const TemporaryFolder folder;
    const std::string file = folder.write(
        "c.json",
        R"({"elasticsConfigTypes": [{"typeLabel": "Long", "bracketSequence": "15,16"}]})");
    EXPECT_EQ(complaintOf([&] { (void)bandsOfCatalogue(file); }),
              file + ": Long (15,16): '16' has no hook");
}

TEST(BandDepthBands, aCatalogueThatCannotBeReadIsNamed)
{
    const TemporaryFolder folder;
    const std::string missing = folder.path + "/missing.json";
    EXPECT_EQ(complaintOf([&] { (void)bandsOfCatalogue(missing); }), missing + ": cannot be read");
    for (const char *text : {"", "[", "{}", R"({"elasticsConfigTypes": [{}]})"}) {
        const std::string file = folder.write("broken.json", text);
        EXPECT_TRUE(complaintOf([&] { (void)bandsOfCatalogue(file); }).starts_with(file + ": "))
            << text;
    }
}

TEST(BandDepthScene, meshesAreKnownByTheirNamesAndMoveWithTheirJaws)
{
    const TemporaryFolder folder;
    for (const char *name :
         {"_tooth_15", "_tooth_18", "bracket_2", "button_31", "_upper_gums", "_lower_gums"})
        folder.write(std::string(name) + ".obj", cubeAround({0, 0, 0}, 1.0).text());
    folder.write("_tooth_8.obj", box({-2, -7, 1}, {3, 5, 9}).text());
    folder.write("picture.png", "no mesh");

    const Scene scene = sceneOfFolder(folder.path);
    struct Expected
    {
        const char *name;
        Kind kind;
        bool isUpper;
    };
    const std::vector<Expected> expected{
        {"lower gum", Kind::gum, false},     {"tooth 15", Kind::tooth, true},
        {"tooth 18", Kind::tooth, false},    {"tooth 8", Kind::tooth, true},
        {"upper gum", Kind::gum, true},      {"bracket 2", Kind::bracket, true},
        {"button 31l", Kind::bracket, false}};
    ASSERT_EQ(scene.obstacles.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(scene.obstacles[i].name, expected[i].name);
        EXPECT_EQ(scene.obstacles[i].kind, expected[i].kind) << expected[i].name;
        EXPECT_EQ(scene.obstacles[i].isUpper, expected[i].isUpper) << expected[i].name;
        EXPECT_EQ(scene.obstacles[i].mesh.triangleCount(), 12u) << expected[i].name;
    }
    EXPECT_EQ(scene.extents.description(), "x(-2,3)y(-7,5)z(-1,9)");
    EXPECT_NEAR(scene.obstacles[3].mesh.depthOf({2, 0, 5}), 1.0, 1e-6);
}

TEST(BandDepthScene, aMeshOfAnotherNameIsRefused)
{
    for (const char *name : {"_tooth_16.obj", "_tooth_8l.obj", "tooth_8.obj", "bracket_.obj"}) {
        const TemporaryFolder folder;
        const std::string file = folder.write(name, cubeAround({0, 0, 0}, 1.0).text());
        EXPECT_EQ(complaintOf([&] { (void)sceneOfFolder(folder.path); }),
                  file + ": no tooth, bracket, button or gum by its name");
    }
}

TEST(BandDepthScene, anOpenMeshIsRefusedSinceItHasNoInside)
{
    const TemporaryFolder folder;
    Surface open = cubeAround({0, 0, 0}, 1.0);
    open.corners.resize(open.corners.size() - 3);
    const std::string file = folder.write("_tooth_8.obj", open.text());
    const std::string complaint = complaintOf([&] { (void)sceneOfFolder(folder.path); });
    EXPECT_TRUE(complaint.starts_with(file + ":")) << complaint;
    EXPECT_TRUE(complaint.ends_with(": hole: 3 open edges")) << complaint;
}

TEST(BandDepthScene, aFolderWithoutMeshesAndAMissingFolderAreNamed)
{
    const TemporaryFolder folder;
    EXPECT_EQ(complaintOf([&] { (void)sceneOfFolder(folder.path); }),
              folder.path + ": no mesh files in this folder");
    EXPECT_EQ(complaintOf([&] { (void)sceneOfFolder(folder.path + "/x"); }),
              folder.path + "/x: No such file or directory");
}

TEST(BandDepthMeasurement, aBandInsideABoxIsAsDeepAsTheBoxIsWide)
{
    // Hooks 8 and 9 stand left and right of the box's middle, within its width of 20; the other
    // sides are far away. All of the band is inside, and between the hooks it is 10 deep.
    const Scene scene = sceneOf({tooth(box({-10, -70, -50}, {10, 30, 50}), true)});
    const auto finding = findingOf(scene, upperPair, 0);
    ASSERT_TRUE(finding);
    EXPECT_NEAR(finding->immersion.depth, 10.0, sampleSpacing / 2.0);
    EXPECT_NEAR(finding->immersion.deepest.x, 0.0, sampleSpacing / 2.0);
    // Twice the way between the hooks, and at each end half the way round a hook of 0.1625 at a
    // distance of half a band: longer than its two chords, and shorter than half the circle.
    const double way = std::hypot(5.83 + 5.15243, 21.2192 - 20.9537, 0.588003 - 0.294675);
    const double radius = 0.1625 + 0.5;
    EXPECT_GT(finding->immersion.length, 2.0 * way + 4.0 * radius - 0.05);
    EXPECT_LT(finding->immersion.length, 2.0 * way + 2.0 * 3.14160 * radius);
    EXPECT_TRUE(finding->isStraight);
}

TEST(BandDepthMeasurement, aMeshMovesWithItsOwnJaw)
{
    const Surface around = cubeAround({0.3, -21.1, -0.4}, 3.0);
    const Scene upper = sceneOf({tooth(around, true)});
    const Scene lower = sceneOf({tooth(around, false)});
    const auto closedUpper = findingOf(upper, upperPair, 0);
    const auto closedLower = findingOf(lower, upperPair, 0);
    ASSERT_TRUE(closedUpper && closedLower);
    EXPECT_NEAR(closedUpper->immersion.depth, closedLower->immersion.depth, 1e-5);
    for (const int angle : {25, -25, 45, -45}) {
        // The upper band goes with the upper mesh, and leaves the lower one.
        const auto opened = findingOf(upper, upperPair, angle);
        ASSERT_TRUE(opened) << angle;
        EXPECT_NEAR(opened->immersion.depth, closedUpper->immersion.depth, 1e-3) << angle;
        EXPECT_NEAR(opened->immersion.length, closedUpper->immersion.length, 0.2) << angle;
        EXPECT_FALSE(findingOf(lower, upperPair, angle)) << angle;
    }
}

TEST(BandDepthMeasurement, aBandIsLedThroughTheAnchorsOfItsMouthOpening)
{
    struct Case
    {
        int angle;
        std::set<std::size_t> through; ///< of these five
    };
    // "6-25": 2 when closed, 0 and 15 from 5 degrees on, 16 from 20 degrees on.
    for (const Case &c :
         {Case{0, {2}}, Case{8, {0, 15}}, Case{-15, {0, 15}}, Case{25, {16}}, Case{-45, {16}}}) {
        for (const std::size_t anchor : {0u, 2u, 15u, 16u, 17u}) {
            const Scene scene = sceneOf(
                {tooth(cubeAround(anchorPosition(anchor), 0.3), anchors()[anchor].isUpperJaw)});
            const auto finding = findingOf(scene, crossing, c.angle);
            ASSERT_EQ(finding.has_value(), c.through.contains(anchor))
                << "anchor " << anchor << " at " << c.angle;
            if (!finding) continue;
            // It passes 1/32 beside the anchor.
            EXPECT_GT(finding->immersion.depth, 0.3 - 1.0 / 32.0 - 1e-3);
            EXPECT_LE(finding->immersion.depth, 0.3);
            EXPECT_FALSE(finding->isStraight);
        }
    }
}

TEST(BandDepthMeasurement, aPairThatAnOpeningsTableLeavesOutRunsStraight)
{
    // "8-26" has anchor 3 when closed and 4 when open, and none in between.
    const Band pair{"8-26", {"8", "26"}, true};
    const Scene scene = sceneOf({tooth(box({-60, -90, -90}, {60, 90, 90}), true)});
    for (const int angle : measuredAngles) {
        const auto finding = findingOf(scene, pair, angle);
        ASSERT_TRUE(finding) << angle;
        EXPECT_EQ(finding->isStraight, std::abs(angle) == 8 || std::abs(angle) == 15) << angle;
    }
}

TEST(BandDepthMeasurement, allFindingsAreThoseOfEveryBandAtEveryAngleInOrder)
{
    const Scene scene = sceneOf({tooth(cubeAround({0.3, -21.1, -0.4}, 3.0), true),
                                 tooth(cubeAround(anchorPosition(16), 1.0), false)});
    const std::vector<Band> bands{crossing, upperPair};
    std::vector<Finding> expected;
    for (const int angle : measuredAngles)
        for (std::size_t band = 0; band < bands.size(); ++band)
            for (const Finding &finding : findingsOf(scene, bands, band, angle))
                expected.push_back(finding);
    const std::vector<Finding> all = allFindings(scene, bands);
    ASSERT_GT(all.size(), 11u);
    ASSERT_EQ(all.size(), expected.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i].band, expected[i].band);
        EXPECT_EQ(all[i].obstacle, expected[i].obstacle);
        EXPECT_EQ(all[i].angle, expected[i].angle);
        EXPECT_EQ(all[i].immersion.depth, expected[i].immersion.depth);
        EXPECT_EQ(all[i].immersion.length, expected[i].immersion.length);
    }
}

TEST(BandDepthMeasurement, aBandOverAKeyWithoutAHookIsRefused)
{
    EXPECT_THROW((void)findingsOf(sceneOf({}), {Band{"15-16", {"15", "16"}, false}}, 0, 0),
                 std::invalid_argument);
}

TEST(BandDepthMeasurement, anchorsInsideTeethAreListedDeepestFirst)
{
    const Scene scene =
        sceneOf({tooth(cubeAround(anchorPosition(2), 0.5), true),
                 tooth(cubeAround(anchorPosition(47), 1.0), true),
                 {Kind::gum, "lower gum", false, cubeAround(anchorPosition(9), 1.0).mesh()}});
    const auto findings = anchorsInTeeth(scene);
    ASSERT_EQ(findings.size(), 2u);
    // 47 belongs to the lower jaw: it is found in an upper tooth too.
    EXPECT_FALSE(anchors()[47].isUpperJaw);
    EXPECT_EQ(findings[0].anchor, 47u);
    EXPECT_EQ(findings[0].obstacle, 1u);
    EXPECT_NEAR(findings[0].depth, 1.0, 1e-9);
    EXPECT_EQ(findings[1].anchor, 2u);
    EXPECT_EQ(findings[1].obstacle, 0u);
    EXPECT_NEAR(findings[1].depth, 0.5, 1e-9);
}

} // namespace
} // namespace kelo::banddepth
