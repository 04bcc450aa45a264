#include "tests/tools/MeshgenBracketCrown.h"
#include "tests/tools/MeshgenBracketMeasurements.h"
#include "tools/meshgen/BracketParts.h"
#include "tools/meshgen/BracketShape.h"
#include "tools/meshgen/ButtonShape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

namespace kelo::meshgen {
namespace {

using Sentences = std::vector<std::string>;

const HookTable &hooks()
{
    static const HookTable table = readHooks(KELO_MESH_TABLES "/hooks.csv");
    return table;
}

const test::Crown &crown(int number)
{
    static std::map<int, test::Crown> crowns;
    const auto found = crowns.find(number);
    if (found != crowns.end()) return found->second;
    return crowns[number] = test::crownUnder(number, hooks().at(test::bracketKey(number)),
                                             hooks().at(test::buttonKey(number)));
}

const Mesh &bracket(int number)
{
    static std::map<int, Mesh> brackets;
    const auto found = brackets.find(number);
    if (found != brackets.end()) return found->second;
    return brackets[number] = makeBracket(crown(number).mesh, crown(number).placement,
                                          hooks().at(test::bracketKey(number)));
}

const Mesh &button(int number)
{
    static std::map<int, Mesh> buttons;
    const auto found = buttons.find(number);
    if (found != buttons.end()) return found->second;
    return buttons[number] = makeButton(crown(number).mesh, crown(number).placement,
                                        hooks().at(test::buttonKey(number)));
}

BracketSeat seatOf(int number)
{
    return bracketSeat(crown(number).mesh, crown(number).placement,
                       hooks().at(test::bracketKey(number)));
}

SurfaceFrame bracketFrame(int number)
{
    return seatOf(number).body;
}

TEST(MeshgenBracket, all28BracketsAreClosedOutwardShellsWithUnitNormals)
{
    for (const int number : test::toothNumbers()) {
        EXPECT_EQ(meshDefects(bracket(number)), Sentences{}) << number;
    }
}

TEST(MeshgenBracket, all28ButtonsAreClosedOutwardShellsWithUnitNormals)
{
    for (const int number : test::toothNumbers()) {
        EXPECT_EQ(meshDefects(button(number)), Sentences{}) << number;
    }
}

TEST(MeshgenBracket, aBracketHasNoMoreThan1500TrianglesAndAButtonNoMoreThan500)
{
    for (const int number : test::toothNumbers()) {
        EXPECT_LE(bracket(number).triangles.size(), 1500u) << number;
        EXPECT_LE(button(number).triangles.size(), 500u) << number;
    }
}

TEST(MeshgenBracket, everyHookPostHasThePositionDirectionAndRadiusOfTheTable)
{
    for (const int number : test::toothNumbers()) {
        const std::string key = test::bracketKey(number);
        test::expectRodAlongHook(bracket(number), hooks().at(key), key, test::placesOnPost);
    }
}

TEST(MeshgenBracket, everyButtonNeckHasThePositionDirectionAndRadiusOfTheTable)
{
    for (const int number : test::toothNumbers()) {
        const std::string key = test::buttonKey(number);
        test::expectRodAlongHook(button(number), hooks().at(key), key,
                                 test::placesOnNeck(crown(number).placement, hooks().at(key)));
    }
}

TEST(MeshgenBracket, everyHookEndsInABallThatIsThickerThanItsPost)
{
    for (const int number : test::toothNumbers()) {
        const Hook &hook = hooks().at(test::bracketKey(number));
        EXPECT_GT(test::endRadius(bracket(number), hook, 1.0), 1.2 * hook.radius) << number;
    }
}

TEST(MeshgenBracket, everyButtonEndsInACapOffTheToothThatIsThickerThanItsNeck)
{
    for (const int number : test::toothNumbers()) {
        const Hook &hook = hooks().at(test::buttonKey(number));
        const bool off = dot(hook.direction, crown(number).placement.labialNormal) < 0.0;
        EXPECT_NEAR(test::endRadius(button(number), hook, off ? 1.0 : -1.0), 0.99, 0.02) << number;
    }
}

TEST(MeshgenBracket, theSlotOfATwinBracketIs056WideAnd071Deep)
{
    for (const int number : test::toothNumbers()) {
        if (test::isMolar(number)) continue;
        const SurfaceFrame frame = bracketFrame(number);
        const BracketMeasures measures = bracketMeasures(number);
        for (const double side : {-1.0, 1.0}) {
            const double x = side * 0.25 * (measures.width + measures.split);
            const auto floor = raycast(bracket(number), frame.point(x, 0.0, 6.0), -frame.out);
            const auto wing = raycast(bracket(number), frame.point(x, 0.5, 6.0), -frame.out);
            ASSERT_TRUE(floor && wing) << number;
            EXPECT_NEAR(floor->distance - wing->distance, 0.71, 0.01) << number;
            const Vec3 middle = floor->position + frame.out * 0.35;
            const auto above = raycast(bracket(number), middle, frame.up);
            const auto below = raycast(bracket(number), middle, -frame.up);
            ASSERT_TRUE(above && below) << number;
            EXPECT_NEAR(above->distance + below->distance, 0.56, 0.002) << number;
        }
    }
}

TEST(MeshgenBracket, theSlotIsOpenFromTheMesialToTheDistalEnd)
{
    for (const int number : test::toothNumbers()) {
        if (test::isMolar(number)) continue;
        const SurfaceFrame frame = bracketFrame(number);
        const double x = 0.25 * (bracketMeasures(number).width + bracketMeasures(number).split);
        const auto floor = raycast(bracket(number), frame.point(x, 0.0, 6.0), -frame.out);
        ASSERT_TRUE(floor) << number;
        const Vec3 inSlot = floor->position + frame.out * 0.1;
        EXPECT_FALSE(raycast(bracket(number), inSlot, frame.along)) << number;
        EXPECT_FALSE(raycast(bracket(number), inSlot, -frame.along)) << number;
    }
}

TEST(MeshgenBracket, theWingsAreUndercutSoThatALigatureHolds)
{
    for (const int number : test::toothNumbers()) {
        if (test::isMolar(number)) continue;
        const SurfaceFrame frame = bracketFrame(number);
        const BracketMeasures measures = bracketMeasures(number);
        const double x = 0.25 * (measures.width + measures.split);
        // The occlusal side, which has no hook: the wing's tip juts out over an open space.
        const auto wing = raycast(bracket(number), frame.point(x, 1.15, 6.0), -frame.out);
        ASSERT_TRUE(wing) << number;
        const Vec3 tip = wing->position;
        const auto underside = raycast(bracket(number), tip - frame.out * 0.1, -frame.out);
        ASSERT_TRUE(underside) << number;
        const Vec3 below = underside->position - frame.out * 1e-6;
        const auto pad = raycast(bracket(number), below, -frame.out);
        ASSERT_TRUE(pad) << number;
        EXPECT_GT(pad->distance, 0.3) << number;
        EXPECT_FALSE(raycast(bracket(number), below - frame.out * 0.15, frame.up)) << number;
    }
}

TEST(MeshgenBracket, aMolarTubeHasAPassageOf056By071FromEndToEnd)
{
    for (const int number : test::toothNumbers()) {
        if (!test::isMolar(number)) continue;
        const SurfaceFrame frame = bracketFrame(number);
        const auto top = raycast(bracket(number), frame.point(0.4, 0.0, 6.0), -frame.out);
        ASSERT_TRUE(top) << number;
        const auto ceiling = raycast(bracket(number), top->position - frame.out * 1e-6, -frame.out);
        ASSERT_TRUE(ceiling) << number;
        const Vec3 inside = ceiling->position - frame.out * 0.3;
        const auto floor = raycast(bracket(number), inside, -frame.out);
        const auto above = raycast(bracket(number), inside, frame.up);
        const auto below = raycast(bracket(number), inside, -frame.up);
        ASSERT_TRUE(floor && above && below) << number;
        EXPECT_NEAR(floor->distance + 0.3, 0.71, 0.002) << number;
        EXPECT_NEAR(above->distance + below->distance, 0.56, 0.002) << number;
        EXPECT_FALSE(raycast(bracket(number), inside, frame.along)) << number;
        EXPECT_FALSE(raycast(bracket(number), inside, -frame.along)) << number;
    }
}

TEST(MeshgenBracket, noBaseStandsOffItsToothByMoreThan015)
{
    for (const int number : test::toothNumbers()) {
        const BracketMeasures measures = bracketMeasures(number);
        const test::Contact contact =
            test::contactOf(bracket(number), crown(number).mesh, seatOf(number).pad,
                            measures.pad.width, measures.pad.height);
        EXPECT_LE(contact.gap, 0.15) << number;
        EXPECT_GT(contact.covered, 0.95) << number;
    }
}

TEST(MeshgenBracket, aPadLiftedBy03IsNoticedByTheGapMeasurement)
{
    Mesh shifted = bracket(8);
    const SurfaceFrame frame = bracketFrame(8);
    for (Vec3 &p : shifted.positions)
        p += frame.out * 0.3;
    EXPECT_GT(test::contactOf(shifted, crown(8).mesh, frame, 3.0, 3.0).gap, 0.15);
}

TEST(MeshgenBracket, bracketsAreOfTheSizeOfRealOnes)
{
    for (const int number : test::toothNumbers()) {
        const SurfaceFrame frame = bracketFrame(number);
        double width = 0.0;
        double reach = 0.0;
        for (const Vec3 &p : bracket(number).positions) {
            const Vec3 own = frame.own(p);
            width = std::max(width, 2.0 * std::abs(own.x));
            if (own.y > 0.0) reach = std::max(reach, own.z);
        }
        if (test::isMolar(number)) {
            EXPECT_GE(width, 4.0) << number;
            EXPECT_LE(width, 5.3) << number;
        } else {
            EXPECT_GE(width, 2.4) << number;
            EXPECT_LE(width, 3.9) << number;
        }
        EXPECT_GE(reach, 1.5) << number;
        EXPECT_LE(reach, 2.25) << number;
    }
}

TEST(MeshgenBracket, theSameToothGivesTheSameBracketTwice)
{
    const Mesh once = makeBracket(crown(6).mesh, crown(6).placement, hooks().at("6"));
    const Mesh twice = makeBracket(crown(6).mesh, crown(6).placement, hooks().at("6"));
    EXPECT_TRUE(once.positions == twice.positions);
    EXPECT_TRUE(once.normals == twice.normals);
    EXPECT_TRUE(once.triangles == twice.triangles);
    const Mesh firstButton = makeButton(crown(6).mesh, crown(6).placement, hooks().at("6l"));
    const Mesh secondButton = makeButton(crown(6).mesh, crown(6).placement, hooks().at("6l"));
    EXPECT_TRUE(firstButton.positions == secondButton.positions);
    EXPECT_TRUE(firstButton.triangles == secondButton.triangles);
}

} // namespace
} // namespace kelo::meshgen
