#include "geometry/Extents.h"

#include "tests/support/CommaLocale.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <type_traits>

namespace kelo {
namespace {

using Bounds = std::array<double, 6>;

Bounds boundsOf(const Extents &box)
{
    return {box.xMin(), box.xMax(), box.yMin(), box.yMax(), box.zMin(), box.zMax()};
}

MutableExtents boxOf(const Bounds &bounds)
{
    MutableExtents box;
    box.setXMin(bounds[0]);
    box.setXMax(bounds[1]);
    box.setYMin(bounds[2]);
    box.setYMax(bounds[3]);
    box.setZMin(bounds[4]);
    box.setZMax(bounds[5]);
    return box;
}

const Bounds noBounds = {0, 0, 0, 0, 0, 0};

TEST(Extents, aFreshBoxIsAllZerosAndNotActive)
{
    EXPECT_EQ(boundsOf(Extents()), noBounds);
    EXPECT_FALSE(Extents().active());
    EXPECT_EQ(boundsOf(MutableExtents()), noBounds);
    EXPECT_FALSE(MutableExtents().active());
}

TEST(Extents, theFactoriesAnswerTheClassTheyAreCalledOn)
{
    static_assert(std::is_same_v<decltype(Extents::extents()), std::shared_ptr<Extents>>);
    static_assert(
        std::is_same_v<decltype(MutableExtents::extents()), std::shared_ptr<MutableExtents>>);
    EXPECT_EQ(boundsOf(*Extents::extents()), noBounds);
    EXPECT_FALSE(Extents::extents()->active());
    EXPECT_FALSE(MutableExtents::extents()->active());

    const Bounds around = {-1, 3, 0, 4, 1, 5};
    EXPECT_EQ(boundsOf(*Extents::extentsWithCenter_inscribedRadius({1, 2, 3}, 2)), around);
    const auto mutableBox = MutableExtents::extentsWithCenter_inscribedRadius({1, 2, 3}, 2);
    EXPECT_EQ(boundsOf(*mutableBox), around);
    mutableBox->setXMin(-7);
    EXPECT_EQ(mutableBox->xMin(), -7);

    const Bounds fromCorner = {1, 11, 2, 22, 3, 33};
    EXPECT_EQ(boundsOf(*Extents::extentsWithCorner_size({1, 2, 3}, {10, 20, 30})), fromCorner);
    EXPECT_EQ(boundsOf(*MutableExtents::extentsWithCorner_size({1, 2, 3}, {10, 20, 30})),
              fromCorner);
    EXPECT_TRUE(Extents::extentsWithCorner_size({1, 2, 3}, {10, 20, 30})->active());
    EXPECT_NE(Extents::extents(), Extents::extents());
}

TEST(Extents, aBoxAroundACentreIsActiveAndComputedInDoublePrecision)
{
    const Extents box(Vector3{0.1f, -0.2f, 3}, 0.3);
    EXPECT_TRUE(box.active());
    EXPECT_EQ(box.xMin(), double{0.1f} - 0.3);
    EXPECT_EQ(box.xMax(), double{0.1f} + 0.3);
    EXPECT_EQ(box.yMin(), double{-0.2f} - 0.3);
    EXPECT_EQ(box.yMax(), double{-0.2f} + 0.3);
    EXPECT_EQ(box.zMin(), 3 - 0.3);
    EXPECT_EQ(box.zMax(), 3 + 0.3);
}

TEST(Extents, aBoxFromACornerIsActiveAndMayBeTheWrongWayRound)
{
    const Extents box(Vector3{1, 2, 3}, Vector3{4, -5, 0});
    EXPECT_TRUE(box.active());
    EXPECT_EQ(boundsOf(box), (Bounds{1, 5, 2, -3, 3, 3}));
}

TEST(Extents, aBoxMadeFromAnotherTakesItsBoundsAndItsFlag)
{
    const MutableExtents active = boxOf({1, 2, 3, 4, 5, 6});
    const Extents copy(active);
    EXPECT_EQ(boundsOf(copy), boundsOf(active));
    EXPECT_TRUE(copy.active());
    const MutableExtents emptyCopy{Extents()};
    EXPECT_FALSE(emptyCopy.active());
    const MutableExtents grown{Extents(Vector3{0, 0, 0}, 1.0)};
    EXPECT_EQ(boundsOf(grown), (Bounds{-1, 1, -1, 1, -1, 1}));
    EXPECT_TRUE(grown.active());
}

TEST(Extents, aCopyIsOfTheSameClassAndAMutableCopyIsAlwaysMutable)
{
    const Extents fixed(Vector3{1, 2, 3}, 1.0);
    const std::shared_ptr<Extents> fixedCopy = fixed.copy();
    EXPECT_EQ(dynamic_cast<MutableExtents *>(fixedCopy.get()), nullptr);
    EXPECT_EQ(boundsOf(*fixedCopy), boundsOf(fixed));
    EXPECT_TRUE(fixedCopy->active());

    MutableExtents growing = boxOf({1, 2, 3, 4, 5, 6});
    const std::shared_ptr<Extents> copy = static_cast<const Extents &>(growing).copy();
    auto *mutableCopy = dynamic_cast<MutableExtents *>(copy.get());
    ASSERT_NE(mutableCopy, nullptr);
    mutableCopy->setXMin(-9);
    EXPECT_EQ(growing.xMin(), 1);

    const std::shared_ptr<MutableExtents> ofFixed = fixed.mutableCopy();
    EXPECT_EQ(boundsOf(*ofFixed), boundsOf(fixed));
    const std::shared_ptr<MutableExtents> ofGrowing = growing.mutableCopy();
    growing.setZMax(100);
    EXPECT_EQ(boundsOf(*ofGrowing), (Bounds{1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(Extents().mutableCopy()->active());
}

TEST(Extents, aChangedBoundChangesTheRangeOfItsAxis)
{
    EXPECT_EQ(Extents::keyPathsForValuesAffectingXRange(), (std::set<std::string>{"xMin", "xMax"}));
    EXPECT_EQ(Extents::keyPathsForValuesAffectingYRange(), (std::set<std::string>{"yMin", "yMax"}));
    EXPECT_EQ(Extents::keyPathsForValuesAffectingZRange(), (std::set<std::string>{"zMin", "zMax"}));
}

TEST(Extents, theMeasuresComeFromTheRanges)
{
    const MutableExtents box = boxOf({-1, 2, 10, 14, -6, 6});
    EXPECT_EQ(box.xRange(), 3);
    EXPECT_EQ(box.yRange(), 4);
    EXPECT_EQ(box.zRange(), 12);
    EXPECT_EQ(box.radius(), 6);
    // The diagonal of 3, 4, 12 is 13.
    EXPECT_EQ(box.circumscribedRadius(), 6.5);
    EXPECT_EQ(box.volume(), 144);
    EXPECT_EQ(boxOf({0, 9, 0, 1, 0, 1}).radius(), 4.5);
    EXPECT_EQ(boxOf({0, 1, 0, 8, 0, 1}).radius(), 4);
}

TEST(Extents, aBoxTheWrongWayRoundHasANegativeRange)
{
    const MutableExtents box = boxOf({5, 1, 0, 2, 0, 3});
    EXPECT_EQ(box.xRange(), -4);
    EXPECT_EQ(box.volume(), -24);
    EXPECT_EQ(box.radius(), 1.5);
    // All ranges negative: half the largest is still negative.
    EXPECT_EQ(boxOf({5, 1, 5, 2, 5, 3}).radius(), -1);
}

TEST(Extents, theCentreIsSummedInDoubleNarrowedAndHalvedInFloat)
{
    const Vector3 center = boxOf({-1, 2, 10, 14, -6, 6}).center();
    EXPECT_EQ(center.x, 0.5f);
    EXPECT_EQ(center.y, 12.0f);
    EXPECT_EQ(center.z, 0.0f);
    // Summed in float, 2^24 + 1 would lose the 1 and the difference below would be 0.
    EXPECT_EQ(boxOf({-16777216, 16777217, 0, 0, 0, 0}).center().x, 0.5f);
    // Narrowed before it is halved: the sum is beyond the largest float, its half is not.
    EXPECT_TRUE(std::isinf(boxOf({3e38, 3e38, 0, 0, 0, 0}).center().x));
}

TEST(Extents, theMeasuresDoNotLookAtTheActiveFlag)
{
    const Extents empty;
    ASSERT_FALSE(empty.active());
    EXPECT_EQ(empty.radius(), 0);
    EXPECT_EQ(empty.volume(), 0);
    EXPECT_EQ(empty.center().y, 0.0f);
    EXPECT_TRUE(empty.containsPoint({0, 0, 0}));
    EXPECT_TRUE(empty.containsPoint_fuzz({0, 0, 0}, 0.1));
    EXPECT_EQ(empty.description(), "x(0,0)y(0,0)z(0,0)");
}

/// One point just outside each of the six faces of the box from -1 to 1.
const std::array<Vector3, 6> outsidePoints = {Vector3{-1.5f, 0, 0}, {1.5f, 0, 0},  {0, -1.5f, 0},
                                              {0, 1.5f, 0},         {0, 0, -1.5f}, {0, 0, 1.5f}};
const std::array<Vector3, 6> facePoints = {Vector3{-1, 0, 0}, {1, 0, 0},  {0, -1, 0},
                                           {0, 1, 0},         {0, 0, -1}, {0, 0, 1}};

TEST(Extents, aPointOnAFaceIsInside)
{
    const Extents box(Vector3{0, 0, 0}, 1.0);
    for (const Vector3 &point : facePoints)
        EXPECT_TRUE(box.containsPoint(point)) << point.x << " " << point.y << " " << point.z;
    EXPECT_TRUE(box.containsPoint({1, 1, 1}));
    EXPECT_TRUE(box.containsPoint({0, 0, 0}));
}

TEST(Extents, aPointOnAFaceIsOutsideWithAFuzzOfZero)
{
    const Extents box(Vector3{0, 0, 0}, 1.0);
    for (const Vector3 &point : facePoints) {
        ASSERT_TRUE(box.containsPoint(point));
        EXPECT_FALSE(box.containsPoint_fuzz(point, 0))
            << point.x << " " << point.y << " " << point.z;
        EXPECT_TRUE(box.containsPoint_fuzz(point, 1e-9));
    }
    EXPECT_TRUE(box.containsPoint_fuzz({0, 0, 0}, 0));
}

TEST(Extents, aPointBeyondAnyFaceIsOutside)
{
    const Extents box(Vector3{0, 0, 0}, 1.0);
    for (const Vector3 &point : outsidePoints) {
        EXPECT_FALSE(box.containsPoint(point)) << point.x << " " << point.y << " " << point.z;
        EXPECT_FALSE(box.containsPoint_fuzz(point, 0));
        EXPECT_FALSE(box.containsPoint_fuzz(point, 0.5)) << "exactly the fuzz away";
        EXPECT_TRUE(box.containsPoint_fuzz(point, 0.75));
    }
}

TEST(Extents, aNegativeFuzzShrinksTheBox)
{
    const Extents box(Vector3{0, 0, 0}, 1.0);
    EXPECT_TRUE(box.containsPoint_fuzz({0.25f, 0, 0}, -0.5));
    EXPECT_FALSE(box.containsPoint_fuzz({0.75f, 0, 0}, -0.5));
}

TEST(Extents, aFloatCoordinateIsWidenedBeforeItIsCompared)
{
    // 0.1f is a little more than 0.1.
    ASSERT_GT(double{0.1f}, 0.1);
    EXPECT_FALSE(boxOf({0, 0.1, 0, 1, 0, 1}).containsPoint({0.1f, 0, 0}));
    EXPECT_TRUE(boxOf({0, 0.1, 0, 1, 0, 1}).containsPoint_fuzz({0.1f, 0.5f, 0.5f}, 1e-8));
}

TEST(Extents, theDescriptionOfAFreshBoxPrintsSixZeros)
{
    EXPECT_EQ(Extents().description(), "x(0,0)y(0,0)z(0,0)");
    EXPECT_EQ(MutableExtents().description(), "x(0,0)y(0,0)z(0,0)");
}

TEST(Extents, theDescriptionPrintsEachNumberAsTheCLibraryDoes)
{
    EXPECT_EQ(boxOf({-1.5, 2, 0.1, 1234567, 1e-5, 123456}).description(),
              "x(-1.5,2)y(0.1,1.23457e+06)z(1e-05,123456)");
    for (const double value :
         {0.0, -0.0, 1.0 / 3, -2e-300, 1e300, 99999.95, 999999.5, 0.0001,
          std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        char printed[64];
        std::snprintf(printed, sizeof printed, "x(%g,%g)y(%g,%g)z(%g,%g)", value, 1.0, 2.0, 3.0,
                      4.0, value);
        EXPECT_EQ(boxOf({value, 1, 2, 3, 4, value}).description(), printed);
    }
}

TEST(Extents, theDescriptionDoesNotDependOnTheLocale)
{
    const test::CommaLocale locale;
    ASSERT_TRUE(locale.set);
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(boxOf({-1.5, 2, 0, 0, 0, 0}).description(), "x(-1.5,2)y(0,0)z(0,0)");
}

TEST(MutableExtents, eachSetterStoresItsBoundAndMakesTheBoxActive)
{
    struct Case
    {
        const char *name;
        void (MutableExtents::*set)(double);
        Bounds expected;
    };
    for (const Case &c : {Case{"xMin", &MutableExtents::setXMin, {7, 0, 0, 0, 0, 0}},
                          Case{"xMax", &MutableExtents::setXMax, {0, 7, 0, 0, 0, 0}},
                          Case{"yMin", &MutableExtents::setYMin, {0, 0, 7, 0, 0, 0}},
                          Case{"yMax", &MutableExtents::setYMax, {0, 0, 0, 7, 0, 0}},
                          Case{"zMin", &MutableExtents::setZMin, {0, 0, 0, 0, 7, 0}},
                          Case{"zMax", &MutableExtents::setZMax, {0, 0, 0, 0, 0, 7}}}) {
        SCOPED_TRACE(c.name);
        MutableExtents box;
        ASSERT_FALSE(box.active());
        (box.*c.set)(7);
        EXPECT_EQ(boundsOf(box), c.expected);
        EXPECT_TRUE(box.active());
    }
}

TEST(MutableExtents, theFirstPointMakesABoxOfZeroSizeAtThatPointAndActive)
{
    const double doubles[] = {1, -2, 3};
    const float floats[] = {1, -2, 3};
    MutableExtents boxes[4];
    boxes[0].absorb(1, -2, 3);
    boxes[1].absorbPoint({1, -2, 3});
    boxes[2].absorbDoubles(doubles);
    boxes[3].absorbFloats(floats);
    for (const MutableExtents &box : boxes) {
        EXPECT_EQ(boundsOf(box), (Bounds{1, 1, -2, -2, 3, 3}));
        EXPECT_TRUE(box.active());
        EXPECT_EQ(box.volume(), 0);
        EXPECT_EQ(box.circumscribedRadius(), 0);
    }
}

TEST(MutableExtents, furtherPointsGrowTheBoxOnEachAxisByItself)
{
    const double doubles[] = {0, 9, 0.1};
    const float floats[] = {0.1f, -9, 0};
    MutableExtents box;
    box.absorb(1, 2, 3);
    box.absorb(-1, 2.5, 4);
    EXPECT_EQ(boundsOf(box), (Bounds{-1, 1, 2, 2.5, 3, 4}));
    box.absorbPoint({5, 2.25f, 3.5f});
    EXPECT_EQ(boundsOf(box), (Bounds{-1, 5, 2, 2.5, 3, 4}));
    box.absorbDoubles(doubles);
    EXPECT_EQ(boundsOf(box), (Bounds{-1, 5, 2, 9, 0.1, 4}));
    box.absorbFloats(floats);
    EXPECT_EQ(boundsOf(box), (Bounds{-1, 5, -9, 9, 0, 4}));
    box.absorb(0, 0, 1);
    EXPECT_EQ(boundsOf(box), (Bounds{-1, 5, -9, 9, 0, 4})) << "a point inside changes nothing";
}

TEST(MutableExtents, floatsAreWidenedToDouble)
{
    const float floats[] = {0.1f, 0.2f, 0.3f};
    MutableExtents box;
    box.absorbFloats(floats);
    EXPECT_EQ(boundsOf(box), (Bounds{double{0.1f}, double{0.1f}, double{0.2f}, double{0.2f},
                                     double{0.3f}, double{0.3f}}));
}

TEST(MutableExtents, aValueThatLowersTheMinimumIsNotTestedAgainstTheMaximum)
{
    MutableExtents box = boxOf({5, 1, 5, 1, 5, 1});
    // 3 lies under the minimum and above the maximum of the box that is the wrong way round.
    box.absorb(3, 3, 3);
    EXPECT_EQ(boundsOf(box), (Bounds{3, 1, 3, 1, 3, 1}));
}

TEST(MutableExtents, aNaNLeavesTheBoundsOfAnActiveBox)
{
    MutableExtents box = boxOf({1, 2, 3, 4, 5, 6});
    box.absorb(std::nan(""), 0, std::nan(""));
    EXPECT_EQ(boundsOf(box), (Bounds{1, 2, 0, 4, 5, 6}));
}

TEST(MutableExtents, anEmptyBoxTakesOverAnotherAndBecomesActive)
{
    MutableExtents box;
    box.absorbExtents(boxOf({1, 2, 3, 4, 6, 5}));
    EXPECT_EQ(boundsOf(box), (Bounds{1, 2, 3, 4, 6, 5}));
    EXPECT_TRUE(box.active());

    MutableExtents fromEmpty;
    fromEmpty.absorbExtents(Extents());
    EXPECT_EQ(boundsOf(fromEmpty), noBounds);
    EXPECT_TRUE(fromEmpty.active());
}

TEST(MutableExtents, absorbingABoxGrowsEachBoundByItself)
{
    MutableExtents box = boxOf({0, 10, 0, 10, 0, 10});
    box.absorbExtents(boxOf({-1, 5, 5, 11, 2, 3}));
    EXPECT_EQ(boundsOf(box), (Bounds{-1, 10, 0, 11, 0, 10}));
    box.absorbExtents(boxOf({-2, 20, -3, 30, -4, 40}));
    EXPECT_EQ(boundsOf(box), (Bounds{-2, 20, -3, 30, -4, 40}));
    box.absorbExtents(box);
    EXPECT_EQ(boundsOf(box), (Bounds{-2, 20, -3, 30, -4, 40}));
}

TEST(MutableExtents, aFreshEmptyBoxPullsAnActiveBoxOutToTheOrigin)
{
    MutableExtents box = boxOf({5, 6, -8, -7, 1, 2});
    const Extents empty;
    ASSERT_FALSE(empty.active());
    box.absorbExtents(empty);
    EXPECT_EQ(boundsOf(box), (Bounds{0, 6, -8, 0, 0, 2}));
}

TEST(MutableExtents, orientTurnsABoxFrom5To1IntoOneFrom1To5)
{
    MutableExtents box;
    box.setXMin(5);
    box.setXMax(1);
    box.orient();
    EXPECT_EQ(box.xMin(), 1);
    EXPECT_EQ(box.xMax(), 5);
}

TEST(MutableExtents, orientSwapsOnlyTheAxesThatAreTheWrongWayRound)
{
    MutableExtents box = boxOf({1, 2, 4, 3, 6, 5});
    box.orient();
    EXPECT_EQ(boundsOf(box), (Bounds{1, 2, 3, 4, 5, 6}));
    box.orient();
    EXPECT_EQ(boundsOf(box), (Bounds{1, 2, 3, 4, 5, 6}));
}

TEST(MutableExtents, orientLeavesAnEmptyBoxEmpty)
{
    MutableExtents box;
    box.orient();
    EXPECT_FALSE(box.active());
}

} // namespace
} // namespace kelo
