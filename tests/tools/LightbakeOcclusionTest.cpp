#include "tests/tools/LightbakeShapes.h"
#include "tools/lightbake/Bake.h"
#include "tools/lightbake/Occlusion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace kelo::lightbake {
namespace {

using test::mouthOf;
using test::plane;
using test::surface;
using test::vertexAt;

TEST(LightbakeRays, tellTheSideOfAFace)
{
    const Part floor = plane(Kind::gum, false, 0.0, true);
    RayScene scene;
    scene.add(floor.vertices, floor.indexes, 3);
    scene.finish();
    const auto fromAbove = scene.nearest({0.3, 0.2, 2.0}, {0.0, 0.0, -1.0}, 5.0);
    ASSERT_TRUE(fromAbove);
    EXPECT_NEAR(fromAbove->distance, 2.0, 1e-6);
    EXPECT_FALSE(fromAbove->isFromInside);
    const auto fromBelow = scene.nearest({0.3, 0.2, -1.5}, {0.0, 0.0, 1.0}, 5.0);
    ASSERT_TRUE(fromBelow);
    EXPECT_NEAR(fromBelow->distance, 1.5, 1e-6);
    EXPECT_TRUE(fromBelow->isFromInside);
    EXPECT_FALSE(scene.nearest({0.3, 0.2, 2.0}, {0.0, 0.0, -1.0}, 1.9)) << "too far";
    EXPECT_FALSE(scene.nearest({0.3, 0.2, 2.0}, {0.0, 0.0, -1.0}, 5.0, 3)) << "left out";
    EXPECT_TRUE(scene.nearest({0.3, 0.2, 2.0}, {0.0, 0.0, -1.0}, 5.0, 4));
}

TEST(LightbakeOcclusion, anOpenPlaneIsInFullLight)
{
    const Mouth mouth = mouthOf({plane(Kind::gum, false, 0.0, true)});
    for (const VertexLight &vertex : Surroundings(mouth).lightOf(mouth.parts[0])) {
        EXPECT_DOUBLE_EQ(vertex.closed, 1.0);
        EXPECT_DOUBLE_EQ(vertex.open, 1.0);
        EXPECT_FALSE(vertex.isBuried);
    }
}

TEST(LightbakeOcclusion, aCreviceIsDarkerThanACusp)
{
    // Ridges and grooves three millimetres apart.
    const auto height = [](double x, double) {
        return 2.0 * std::abs(std::remainder(x, 6.0)) - 3.0;
    };
    const Mouth mouth = mouthOf({surface(Kind::gum, false, height, true)});
    const auto light = Surroundings(mouth).lightOf(mouth.parts[0]);
    const double groove = light[vertexAt(0, 0)].closed;
    const double slope = light[vertexAt(1, 0)].closed;
    const double ridge = light[vertexAt(3, 0)].closed;
    EXPECT_LT(groove, 0.55);
    EXPECT_LT(groove, slope);
    EXPECT_LT(slope, ridge);
    EXPECT_GT(ridge, 0.75);
}

TEST(LightbakeOcclusion, theOtherJawDarkensTheClosedMouthOnly)
{
    // The jaws' hinge is behind the arches, and the front is where y is least.
    const Mouth mouth =
        mouthOf({plane(Kind::gum, false, 0.0, true), plane(Kind::gum, true, 2.0, false)});
    const Surroundings surroundings(mouth);
    for (const Part &jaw : mouth.parts) {
        const auto light = surroundings.lightOf(jaw);
        const VertexLight &front = light[vertexAt(0, -15)];
        EXPECT_NEAR(front.closed, 0.48, 0.03) << jaw.isUpper;
        EXPECT_GT(front.open, 0.9) << jaw.isUpper;
        EXPECT_GT(front.open, light[vertexAt(0, 15)].open) << "near the hinge";
    }
}

TEST(LightbakeOcclusion, whatIsFartherThanTheReachTakesNoLight)
{
    for (const double gap : {1.0, 4.0, 8.0, reachInMillimetres + 0.1}) {
        const Mouth mouth =
            mouthOf({plane(Kind::gum, false, 0.0, true), plane(Kind::gum, true, gap, false)});
        const double middle = Surroundings(mouth).lightOf(mouth.parts[0])[vertexAt(0, 0)].closed;
        // Rays within the cone of the reach meet the plane at gap / cos; what is taken falls with
        // the square of the rest of the reach, weighted by the cosine.
        const double share = std::min(gap / reachInMillimetres, 1.0);
        const double taken = 1.0 - share * share + 4.0 * share * (share - 1.0) -
                             2.0 * share * share * std::log(share);
        EXPECT_NEAR(middle, 1.0 - taken, 0.02) << gap;
    }
}

TEST(LightbakeOcclusion, bracketsTakeNoLightFromTeethButReceiveTheirs)
{
    const Part tooth = plane(Kind::tooth, true, 0.0, true);
    Part bracket = plane(Kind::attachment, true, 1.0, false); // looks at the tooth
    const Mouth bare = mouthOf({tooth});
    const Mouth bracketed = mouthOf({tooth, bracket});
    const auto without = Surroundings(bare).lightOf(bare.parts[0]);
    const auto with = Surroundings(bracketed).lightOf(bracketed.parts[0]);
    const auto ofBracket = Surroundings(bracketed).lightOf(bracketed.parts[1]);
    EXPECT_DOUBLE_EQ(without[vertexAt(0, 0)].closed, 1.0);
    EXPECT_DOUBLE_EQ(with[vertexAt(0, 0)].closed, 1.0);
    EXPECT_LT(ofBracket[vertexAt(0, 0)].closed, 0.35);
    EXPECT_LT(ofBracket[vertexAt(0, 0)].open, 0.35) << "it moves with its tooth";
}

TEST(LightbakeOcclusion, anotherFormOfAToothIsNotInItsOwnWay)
{
    const Part tooth = plane(Kind::tooth, false, 0.5, true);
    Part fine = plane(Kind::tooth, false, 0.0, true);
    fine.isVariant = true;
    const Part gum = plane(Kind::gum, false, -1.0, true);
    const Mouth mouth = mouthOf({tooth, fine, gum});
    const Surroundings surroundings(mouth);
    EXPECT_DOUBLE_EQ(surroundings.lightOf(mouth.parts[0])[vertexAt(0, 0)].closed, 1.0);
    EXPECT_DOUBLE_EQ(surroundings.lightOf(mouth.parts[1])[vertexAt(0, 0)].closed, 1.0);
    EXPECT_TRUE(surroundings.lightOf(mouth.parts[2])[vertexAt(0, 0)].isBuried)
        << "under the tooth's own form";
}

TEST(LightbakeOcclusion, aVertexWithoutANormalIsInFullLight)
{
    Part gum = plane(Kind::gum, false, 0.0, true);
    const Part roof = plane(Kind::gum, true, 1.0, false);
    for (OBJVertex &vertex : gum.vertices)
        for (float &component : vertex.normal)
            component = 0.0f;
    const Mouth mouth = mouthOf({gum, roof});
    EXPECT_DOUBLE_EQ(Surroundings(mouth).lightOf(mouth.parts[0])[vertexAt(0, 0)].closed, 1.0);
}

TEST(LightbakeOcclusion, buriedVerticesHaveTheLightOfTheirNeighbours)
{
    // A strip of five squares, of which the middle two columns of vertices are inside of something.
    std::vector<VertexLight> light(12);
    std::vector<std::uint32_t> indexes;
    for (std::uint32_t i = 0; i < 5; ++i) {
        const std::uint32_t a = 2 * i;
        indexes.insert(indexes.end(), {a, a + 2, a + 3, a, a + 3, a + 1});
    }
    for (std::size_t i = 0; i < light.size(); ++i)
        light[i] = {0.6, 0.8, false};
    for (const std::size_t i : {4, 5, 6, 7})
        light[i] = {0.0, 0.0, true};
    evenOut(light, indexes);
    for (const VertexLight &vertex : light) {
        EXPECT_NEAR(vertex.closed, 0.6, 1e-12);
        EXPECT_NEAR(vertex.open, 0.8, 1e-12);
    }
}

TEST(LightbakeOcclusion, aMeshThatIsAllBuriedIsLeftAsItIs)
{
    std::vector<VertexLight> light(3, {0.1, 0.2, true});
    const std::vector<std::uint32_t> indexes{0, 1, 2};
    evenOut(light, indexes);
    EXPECT_DOUBLE_EQ(light[1].closed, 0.1);
    EXPECT_DOUBLE_EQ(light[1].open, 0.2);
}

TEST(LightbakeOcclusion, aSpotIsDrawnHalfWayToItsNeighbours)
{
    std::vector<VertexLight> light(4);
    light[3].closed = 0.0;
    const std::vector<std::uint32_t> indexes{0, 1, 3, 1, 2, 3, 2, 0, 3};
    evenOut(light, indexes);
    EXPECT_DOUBLE_EQ(light[3].closed, 0.5);
    EXPECT_DOUBLE_EQ(light[3].open, 1.0);
    EXPECT_LT(light[0].closed, 1.0);
}

TEST(LightbakeOcclusion, theValuesAreThoseOfThisVersion)
{
    // Whoever changes these raises bakeVersion, or old files are taken for new ones.
    const auto height = [](double x, double y) { return 2.0 * std::cos(x) * std::cos(0.7 * y); };
    const Mouth mouth =
        mouthOf({surface(Kind::gum, false, height, true),
                 surface(
                     Kind::tooth, true, [](double x, double) { return 4.0 + 0.1 * x; }, false)});
    const std::vector<BakedLight> baked = bakedLightOf(mouth, 1);
    ASSERT_EQ(bakeVersion, 1u);
    const struct
    {
        std::size_t part;
        int x, y;
        int closed, open, tone;
    } kept[]{{0, 0, 0, 145, 243, 0},
             {0, 3, 0, 126, 145, 0},
             {0, 5, -11, 175, 221, 0},
             {1, 0, 0, 187, 255, 0},
             {1, -13, 7, 144, 247, 0}};
    for (const auto &each : kept) {
        const BakedVertex &vertex = baked[each.part][vertexAt(each.x, each.y)];
        // Other processors may round a ray that grazes an edge to its other side.
        EXPECT_NEAR(vertex.closed, each.closed, 1) << each.part << " " << each.x;
        EXPECT_NEAR(vertex.open, each.open, 1) << each.part << " " << each.x;
        EXPECT_NEAR(vertex.tone, each.tone, 1) << each.part << " " << each.x;
    }
}

} // namespace
} // namespace kelo::lightbake
