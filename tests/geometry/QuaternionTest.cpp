#include "geometry/Quaternion.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace kelo {
namespace {

using Components = std::array<double, 4>;
using Bits = std::array<std::uint32_t, 4>;

const double halfTurn = std::acos(-1.0);

Components componentsOf(Quaternion q)
{
    return {q.x, q.y, q.z, q.w};
}

Bits bitsOf(Quaternion q)
{
    return std::bit_cast<Bits>(q);
}

void expectComponents(const Components &expected, Quaternion actual, double tolerance = 2e-6)
{
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(componentsOf(actual)[i], expected[i], tolerance) << "component " << i;
}

double dotOf(Quaternion left, Quaternion right)
{
    double sum = 0;
    for (std::size_t i = 0; i < 4; ++i)
        sum += componentsOf(left)[i] * componentsOf(right)[i];
    return sum;
}

/// left * leftWeight + right * rightWeight, made the length 1, in double precision.
Components normalizedSumOf(Quaternion left, double leftWeight, Quaternion right, double rightWeight)
{
    Components sum;
    double squares = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        sum[i] = componentsOf(left)[i] * leftWeight + componentsOf(right)[i] * rightWeight;
        squares += sum[i] * sum[i];
    }
    for (double &component : sum)
        component /= std::sqrt(squares);
    return sum;
}

/// A unit quaternion about z whose dot product with the identity is the given one.
Quaternion withDotToIdentity(double dot)
{
    return {0, 0, static_cast<float>(std::sqrt(1 - dot * dot)), static_cast<float>(dot)};
}

/// v turned about a unit axis by the sum of its parts along, across and perpendicular to the axis.
Components turned(const Components &v, const Components &axis, double angle)
{
    const double c = std::cos(angle), s = std::sin(angle);
    const double along = v[0] * axis[0] + v[1] * axis[1] + v[2] * axis[2];
    const Components cross = {axis[1] * v[2] - axis[2] * v[1], axis[2] * v[0] - axis[0] * v[2],
                              axis[0] * v[1] - axis[1] * v[0], 0};
    Components result = {};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = v[i] * c + cross[i] * s + axis[i] * along * (1 - c);
    return result;
}

const Quaternion noRotation = {0, 0, 0, 1};

/// Neither has the length 1.
const Quaternion someQuaternion = {1, -2, 3, 0.5f};
const Quaternion anotherQuaternion = {-0.25f, 4, 1, 2};

TEST(Quaternion, loadIdentitySetsTheIdentity)
{
    Quaternion q = someQuaternion;
    Quaternion_loadIdentity(&q);
    EXPECT_EQ(componentsOf(q), (Components{0, 0, 0, 1}));
}

TEST(Quaternion, initTakesTheVectorPartFirstAndTheScalarPartLast)
{
    const Quaternion q = Quaternion_init(1, 2, 3, 4);
    EXPECT_EQ(q.x, 1.0f);
    EXPECT_EQ(q.y, 2.0f);
    EXPECT_EQ(q.z, 3.0f);
    EXPECT_EQ(q.w, 4.0f);
}

TEST(Quaternion, anAxisOfAnyLengthAndAnAngleGiveAUnitQuaternion)
{
    for (const float length : {1e-6f, 1.0f, 250.0f}) {
        for (const float angle : {-4.0f, -0.5f, 0.0f, 1.0f, 3.0f, 7.0f}) {
            const double s = std::sin(angle / 2.0), c = std::cos(angle / 2.0);
            expectComponents({s / 3, s * 2 / 3, s * -2 / 3, c},
                             Quaternion_fromAxisAngle({length, 2 * length, -2 * length}, angle));
        }
    }
}

TEST(Quaternion, aZeroAxisGivesThreeNaNsAnd1WhateverTheAngle)
{
    const Bits expected = {0x7FC00000, 0x7FC00000, 0x7FC00000, std::bit_cast<std::uint32_t>(1.0f)};
    for (const float angle : {0.0f, 1.0f, -3.0f, std::numeric_limits<float>::infinity()})
        EXPECT_EQ(bitsOf(Quaternion_fromAxisAngle({0, 0, 0}, angle)), expected) << angle;
    // An axis too short for its length to be told from 0.
    EXPECT_EQ(bitsOf(Quaternion_fromAxisAngle({1e-30f, 0, 0}, 1)), expected);
}

TEST(Quaternion, theAxisAndAngleComeBack)
{
    for (const float angle : {0.01f, 0.5f, 2.0f, 3.14f, 5.0f}) {
        Vector3 axis;
        float back;
        Quaternion_toAxisAngle(Quaternion_fromAxisAngle({2, 4, -4}, angle), &axis, &back);
        // Near 0 the angle comes out of a cosine that has only steps of 6e-8 there.
        const double tolerance = angle < 0.1f ? 4e-5 : 2e-6;
        EXPECT_NEAR(back, angle, tolerance);
        EXPECT_NEAR(axis.x, 1.0 / 3, tolerance * 100);
        EXPECT_NEAR(axis.y, 2.0 / 3, tolerance * 100);
        EXPECT_NEAR(axis.z, -2.0 / 3, tolerance * 100);
    }
}

TEST(Quaternion, theLengthOfAQuaternionDoesNotChangeItsAxisAndAngle)
{
    Vector3 axis;
    float angle;
    Quaternion_toAxisAngle({0, 0, 30, 40}, &axis, &angle);
    EXPECT_NEAR(angle, 2 * std::acos(0.8), 1e-6);
    EXPECT_NEAR(axis.x, 0, 1e-6);
    EXPECT_NEAR(axis.y, 0, 1e-6);
    EXPECT_NEAR(axis.z, 1, 1e-6);
}

TEST(Quaternion, theIdentityHasTheAngle0AndTheAxis0)
{
    Vector3 axis = {7, 7, 7};
    float angle = 7;
    Quaternion_toAxisAngle(noRotation, &axis, &angle);
    EXPECT_EQ(angle, 0.0f);
    EXPECT_EQ(axis.x, 0.0f);
    EXPECT_EQ(axis.y, 0.0f);
    EXPECT_EQ(axis.z, 0.0f);
}

TEST(Quaternion, belowASineOf0Point0005TheAxisIsTheVectorPartAsItIs)
{
    // Just under 1 the floats are 2^-24 apart; a w of so many steps under 1 has the sine below.
    struct Case
    {
        int steps;
        double sine;
        bool hasAxis;
    };
    for (const Case &c : {Case{1, 0.000345, false}, Case{2, 0.000488, false},
                          Case{3, 0.000598, true}, Case{8, 0.000977, true}}) {
        SCOPED_TRACE(c.steps);
        const float w = 1.0f - static_cast<float>(c.steps) * std::ldexp(1.0f, -24);
        ASSERT_NEAR(std::sqrt(1.0f - w * w), c.sine, 1e-6) << "the branch";
        ASSERT_EQ(c.sine >= 0.0005, c.hasAxis);
        const float x = static_cast<float>(c.sine);
        ASSERT_EQ(std::sqrt(x * x + w * w), 1.0f) << "w is the cosine as it is";
        Vector3 axis;
        Quaternion_toAxisAngle({x, 0, 0, w}, &axis, nullptr);
        EXPECT_NEAR(axis.x, c.hasAxis ? 1 : c.sine, 0.002 * (c.hasAxis ? 1 : c.sine));
    }
}

TEST(Quaternion, theAxisOrTheAngleMayBeLeftOut)
{
    const Quaternion q = Quaternion_fromAxisAngle({0, 1, 0}, 1);
    Vector3 axis = {7, 7, 7};
    Quaternion_toAxisAngle(q, &axis, nullptr);
    EXPECT_NEAR(axis.y, 1, 1e-6);
    float angle = 7;
    Quaternion_toAxisAngle(q, nullptr, &angle);
    EXPECT_NEAR(angle, 1, 1e-6);
    Quaternion_toAxisAngle(q, nullptr, nullptr);
}

TEST(Quaternion, theMatrixTakesTheAxesWhereTheRotationTakesThem)
{
    const Components axis = {1.0 / 3, 2.0 / 3, -2.0 / 3, 0};
    for (const float angle : {-2.0f, 0.3f, 1.0f, 3.0f}) {
        const Matrix m = Quaternion_toMatrix(Quaternion_fromAxisAngle({1, 2, -2}, angle));
        for (std::size_t column = 0; column < 3; ++column) {
            Components unit = {};
            unit[column] = 1;
            const Components expected = turned(unit, axis, angle);
            for (std::size_t row = 0; row < 3; ++row)
                EXPECT_NEAR(m.m[column * 4 + row], expected[row], 1e-6);
        }
        for (const std::size_t zero : {3u, 7u, 11u, 12u, 13u, 14u})
            EXPECT_EQ(m.m[zero], 0.0f) << "element " << zero;
        EXPECT_EQ(m.m[15], 1.0f);
    }
}

TEST(Quaternion, theMatrixIsMadeOfTheComponentsAsTheyAreNotNormalised)
{
    // x, y, z, w = 1, 2, 3, 4: small integers, so every element is exact.
    const Matrix m = Quaternion_toMatrix({1, 2, 3, 4});
    const std::array<float, 16> expected = {-25, 28, -10, 0, -20, -19, 20, 0,
                                            22,  4,  -9,  0, 0,   0,   0,  1};
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(m.m[i], expected[i]) << "element " << i;
}

TEST(Quaternion, normalizeDividesByTheLength)
{
    Quaternion q = {1, -2, 2, 4};
    Quaternion_normalize(&q);
    expectComponents({0.2, -0.4, 0.4, 0.8}, q, 1e-7);
    EXPECT_EQ(bitsOf(Quaternion_normalized({1, -2, 2, 4})), bitsOf(q));
}

TEST(Quaternion, normalizeOfAZeroQuaternionIsNotCaught)
{
    for (const double component : componentsOf(Quaternion_normalized({0, 0, 0, 0})))
        EXPECT_TRUE(std::isnan(component));
}

TEST(Quaternion, multiplyIsTheHamiltonProductWithTheReceiverOnTheLeft)
{
    const Quaternion i = {1, 0, 0, 0}, j = {0, 1, 0, 0}, k = {0, 0, 1, 0};
    EXPECT_EQ(componentsOf(Quaternion_multiplied(i, j)), componentsOf(k));
    EXPECT_EQ(componentsOf(Quaternion_multiplied(j, k)), componentsOf(i));
    EXPECT_EQ(componentsOf(Quaternion_multiplied(k, i)), componentsOf(j));
    EXPECT_EQ(componentsOf(Quaternion_multiplied(j, i)), (Components{0, 0, -1, 0}));
    for (const Quaternion &unit : {i, j, k})
        EXPECT_EQ(componentsOf(Quaternion_multiplied(unit, unit)), (Components{0, 0, 0, -1}));
    // (1, 2, 3, 4) (5, 6, 7, 8), by hand.
    Quaternion q = {1, 2, 3, 4};
    Quaternion_multiply(&q, {5, 6, 7, 8});
    EXPECT_EQ(componentsOf(q), (Components{24, 48, 48, -6}));
}

TEST(Quaternion, aQuaternionMayBeMultipliedByItself)
{
    Quaternion q = {1, 2, 3, 4};
    Quaternion_multiply(&q, q);
    // The scalar part 16 - 14, the vector part 2 * 4 times (1, 2, 3).
    EXPECT_EQ(componentsOf(q), (Components{8, 16, 24, 2}));
}

TEST(Quaternion, rotateMultipliesTheRotationOntoTheRight)
{
    const Quaternion rotation = Quaternion_fromAxisAngle({1, 2, 3}, 0.8f);
    EXPECT_EQ(bitsOf(Quaternion_rotated(someQuaternion, {1, 2, 3}, 0.8f)),
              bitsOf(Quaternion_multiplied(someQuaternion, rotation)));
    EXPECT_NE(bitsOf(Quaternion_rotated(someQuaternion, {1, 2, 3}, 0.8f)),
              bitsOf(Quaternion_multiplied(rotation, someQuaternion)));
    EXPECT_TRUE(std::isnan(Quaternion_rotated(someQuaternion, {0, 0, 0}, 0.8f).x));
}

TEST(Quaternion, theInverseUndoesAlsoAQuaternionOfAnotherLength)
{
    // 1 + 4 + 9 + 0.25 = 14.25
    expectComponents({-1 / 14.25, 2 / 14.25, -3 / 14.25, 0.5 / 14.25},
                     Quaternion_inverted(someQuaternion), 1e-7);
    const Quaternion inverse = Quaternion_inverted(someQuaternion);
    expectComponents({0, 0, 0, 1}, Quaternion_multiplied(someQuaternion, inverse), 1e-6);
    expectComponents({0, 0, 0, 1}, Quaternion_multiplied(inverse, someQuaternion), 1e-6);
}

TEST(Quaternion, eachParticipleReturnsWhatItsVerbDoes)
{
    struct Case
    {
        const char *name;
        void (*inPlace)(Quaternion *);
        Quaternion (*copied)(Quaternion);
    };
    for (const Case &c : {
             Case{"normalize", Quaternion_normalize, Quaternion_normalized},
             Case{"invert", Quaternion_invert, Quaternion_inverted},
             Case{"multiply", [](Quaternion *q) { Quaternion_multiply(q, anotherQuaternion); },
                  [](Quaternion q) { return Quaternion_multiplied(q, anotherQuaternion); }},
             Case{"rotate",
                  [](Quaternion *q) {
                      Quaternion_rotate(q, {1, 2, 3}, 2);
                  },
                  [](Quaternion q) {
                      return Quaternion_rotated(q, {1, 2, 3}, 2);
                  }},
         }) {
        SCOPED_TRACE(c.name);
        Quaternion changed = someQuaternion;
        c.inPlace(&changed);
        EXPECT_NE(bitsOf(changed), bitsOf(someQuaternion));
        const Quaternion argument = someQuaternion;
        EXPECT_EQ(bitsOf(c.copied(argument)), bitsOf(changed));
        EXPECT_EQ(bitsOf(argument), bitsOf(someQuaternion));
    }
}

TEST(QuaternionSlerp, betweenDistantQuaternionsTheWeightsAreSpherical)
{
    for (const double dot : {0.0, 0.3, 0.9, 0.98}) {
        const Quaternion left = noRotation, right = withDotToIdentity(dot);
        ASSERT_GT(1 - std::abs(dotOf(left, right)), 0.011) << "the spherical branch";
        const double angle = std::acos(dot);
        for (const float t : {0.0f, 0.1f, 0.5f, 0.75f, 1.0f}) {
            SCOPED_TRACE(testing::Message() << "dot " << dot << ", t " << t);
            const double leftWeight = std::sin((1 - t) * angle), rightWeight = std::sin(t * angle);
            const Quaternion q = Quaternion_slerp(left, right, t);
            expectComponents(normalizedSumOf(left, leftWeight, right, rightWeight), q);
            // About one axis the angle grows evenly: half the angle from the identity is t * angle.
            EXPECT_NEAR(std::atan2(q.z, q.w), t * angle, 2e-6);
        }
    }
}

TEST(QuaternionSlerp, theSphericalWeightsAreNotTheLinearOnes)
{
    const Quaternion right = withDotToIdentity(0.0);
    const Quaternion q = Quaternion_slerp(noRotation, right, 0.25f);
    EXPECT_NEAR(q.w, std::cos(halfTurn / 8), 1e-6);
    EXPECT_GT(std::abs(q.w - normalizedSumOf(noRotation, 0.75, right, 0.25)[3]), 0.02);
}

TEST(QuaternionSlerp, aDotProductOfMinus0Point9IsSphericalWithTheLeftNegated)
{
    const Quaternion left = noRotation, right = withDotToIdentity(-0.9);
    const double dot = dotOf(left, right);
    ASSERT_NEAR(dot, -0.9, 1e-6);
    ASSERT_GT(1 - std::abs(dot), 0.011) << "the spherical branch";
    const double angle = std::acos(0.9);
    for (const float t : {0.0f, 0.25f, 0.5f, 1.0f}) {
        SCOPED_TRACE(t);
        expectComponents(
            normalizedSumOf(left, -std::sin((1 - t) * angle), right, std::sin(t * angle)),
            Quaternion_slerp(left, right, t));
    }
    // So the path starts at the left quaternion turned round and ends at the right one itself.
    expectComponents({0, 0, 0, -1}, Quaternion_slerp(left, right, 0));
    expectComponents(componentsOf(right), Quaternion_slerp(left, right, 1));
}

TEST(QuaternionSlerp, aDotProductOfMinus0Point995IsLinearWithoutSignCorrection)
{
    const Quaternion left = noRotation, right = withDotToIdentity(-0.995);
    const double dot = dotOf(left, right);
    ASSERT_NEAR(dot, -0.995, 1e-6);
    ASSERT_LT(1 - std::abs(dot), 0.009) << "the linear branch";
    for (const float t : {0.0f, 0.25f, 0.5f, 0.9f, 1.0f}) {
        SCOPED_TRACE(t);
        expectComponents(normalizedSumOf(left, 1 - t, right, t), Quaternion_slerp(left, right, t),
                         2e-5);
    }
    EXPECT_GT(Quaternion_slerp(left, right, 0).w, 0) << "the left quaternion is not turned round";
}

TEST(QuaternionSlerp, betweenCloseQuaternionsTheWeightsAreLinear)
{
    const Quaternion left = noRotation, right = withDotToIdentity(0.995);
    ASSERT_LT(1 - std::abs(dotOf(left, right)), 0.009) << "the linear branch";
    for (const float t : {0.0f, 0.25f, 0.5f, 1.0f})
        expectComponents(normalizedSumOf(left, 1 - t, right, t), Quaternion_slerp(left, right, t));
    EXPECT_EQ(componentsOf(Quaternion_slerp(left, left, 0.5f)), componentsOf(left));
}

TEST(QuaternionSlerp, theBranchesPartAtTheSinglePrecision0Point01)
{
    // The floats around 0.99 are 6e-8 apart. For a dot product d, 1 - d is exact in double
    // precision.
    const float linearDot = 0.99f;
    const float sphericalDot = std::nextafter(0.99f, 0.0f);
    ASSERT_LE(1.0 - double{linearDot}, double{0.01f}) << "the linear branch";
    ASSERT_GT(1.0 - double{sphericalDot}, double{0.01f}) << "the spherical branch";
    // A left quaternion of (0, 0, 0, 1) makes the right one's w the dot product. With the negative
    // sign the branches differ in the sign of the left weight.
    const auto atTheStart = [](float dot) {
        return Quaternion_slerp(noRotation, {0.14f, 0, 0, -dot}, 0).w;
    };
    EXPECT_EQ(atTheStart(linearDot), 1.0f);
    EXPECT_EQ(atTheStart(sphericalDot), -1.0f);
}

TEST(QuaternionSlerp, theResultHasTheLength1InBothBranches)
{
    for (const double dot : {-0.999, -0.9, -0.2, 0.0, 0.5, 0.97, 0.999}) {
        for (const float t : {-0.5f, 0.1f, 0.5f, 0.8f, 1.5f}) {
            const Quaternion q = Quaternion_slerp(noRotation, withDotToIdentity(dot), t);
            EXPECT_NEAR(dotOf(q, q), 1, 1e-6) << "dot " << dot << ", t " << t;
        }
    }
    const Quaternion longer = Quaternion_slerp({0, 0, 0, 5}, {0, 0, 5, 0}, 0.5f);
    EXPECT_NEAR(dotOf(longer, longer), 1, 1e-6);
}

TEST(Quaternion, vectorsAreTurnedAboutTheAxis)
{
    const Components axis = {1.0 / 3, 2.0 / 3, -2.0 / 3, 0};
    for (const float angle : {-2.0f, 0.0f, 0.3f, 3.0f}) {
        const Quaternion q = Quaternion_fromAxisAngle({1, 2, -2}, angle);
        const Components expected = turned({4, -5, 6, 0}, axis, angle);
        const Vector3 v3 = Quaternion_multiplyVector3(q, {4, -5, 6});
        expectComponents({expected[0], expected[1], expected[2], 0}, {v3.x, v3.y, v3.z, 0}, 4e-6);
        const Vector4 v4 = Quaternion_multiplyVector4(q, {4, -5, 6, 7});
        expectComponents({expected[0], expected[1], expected[2], 7}, {v4.x, v4.y, v4.z, v4.w},
                         4e-6);
    }
}

TEST(Quaternion, aQuaternionOfAnotherLengthTurnsWithoutScaling)
{
    // A quarter turn about z, of the length 10.
    const float component = static_cast<float>(10 * std::sqrt(0.5));
    const Quaternion q = {0, 0, component, component};
    const Vector3 v3 = Quaternion_multiplyVector3(q, {3, 0, 2});
    expectComponents({0, 3, 2, 0}, {v3.x, v3.y, v3.z, 0});
    const Vector4 v4 = Quaternion_multiplyVector4(q, {3, 0, 2, -8});
    expectComponents({0, 3, 2, -8}, {v4.x, v4.y, v4.z, v4.w});
}

TEST(Quaternion, theProductOfQuaternionsAndTheProductOfTheirMatricesAgree)
{
    const Quaternion left = Quaternion_fromAxisAngle({1, 2, 3}, 0.7f);
    const Quaternion right = Quaternion_fromAxisAngle({-2, 0, 1}, 1.9f);
    const Matrix expected =
        Matrix_multiplied(Quaternion_toMatrix(left), Quaternion_toMatrix(right));
    const Matrix product = Quaternion_toMatrix(Quaternion_multiplied(left, right));
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(product.m[i], expected.m[i], 1e-6) << "element " << i;
}

} // namespace
} // namespace kelo
