#include "geometry/Vector.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace kelo {
namespace {

// The operations under one set of names, so that every test below runs for the three types.
#define VECTOR_OPERATIONS(TYPE, COUNT)                                                             \
    struct TYPE##Operations                                                                        \
    {                                                                                              \
        using Vector = TYPE;                                                                       \
        static constexpr std::size_t count = COUNT;                                                \
        static bool normalize(Vector *v) { return TYPE##_normalize(v); }                           \
        static Vector normalized(Vector v) { return TYPE##_normalized(v); }                        \
        static bool scaleTo(Vector *v, float to) { return TYPE##_scaleTo(v, to); }                 \
        static Vector scaledTo(Vector v, float to) { return TYPE##_scaledTo(v, to); }              \
        static float magnitude(Vector v) { return TYPE##_magnitude(v); }                           \
        static float magnitudeSquared(Vector v) { return TYPE##_magnitudeSquared(v); }             \
        static Vector add(Vector a, Vector b) { return TYPE##_add(a, b); }                         \
        static Vector subtract(Vector a, Vector b) { return TYPE##_subtract(a, b); }               \
        static Vector multiplyScalar(Vector v, float s) { return TYPE##_multiplyScalar(v, s); }    \
        static Vector divideScalar(Vector v, float s) { return TYPE##_divideScalar(v, s); }        \
        static Vector interpolate(Vector a, Vector b, float t)                                     \
        {                                                                                          \
            return TYPE##_interpolate(a, b, t);                                                    \
        }                                                                                          \
        static Vector reflect(Vector v, Vector normal) { return TYPE##_reflect(v, normal); }       \
        static float dot(Vector a, Vector b) { return TYPE##_dot(a, b); }                          \
    }

VECTOR_OPERATIONS(Vector2, 2);
VECTOR_OPERATIONS(Vector3, 3);
VECTOR_OPERATIONS(Vector4, 4);
#undef VECTOR_OPERATIONS

template<class Operations>
class Vectors : public testing::Test
{
protected:
    using Vector = typename Operations::Vector;
    static constexpr std::size_t count = Operations::count;
    using Components = std::array<float, count>;
    using Doubles = std::array<double, count>;

    static Components componentsOf(Vector v) { return std::bit_cast<Components>(v); }

    /// The first components of a longer list.
    static Vector vectorOf(const std::array<float, 4> &values)
    {
        Components components;
        for (std::size_t i = 0; i < count; ++i)
            components[i] = values[i];
        return std::bit_cast<Vector>(components);
    }

    static Doubles doublesOf(Vector v)
    {
        Doubles doubles;
        for (std::size_t i = 0; i < count; ++i)
            doubles[i] = componentsOf(v)[i];
        return doubles;
    }

    static double lengthOf(Vector v)
    {
        double sum = 0;
        for (double component : doublesOf(v))
            sum += component * component;
        return std::sqrt(sum);
    }

    static void expectNear(const Doubles &expected, Vector actual, double tolerance = 2e-6)
    {
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_NEAR(componentsOf(actual)[i], expected[i], tolerance) << "component " << i;
    }

    static const std::vector<std::array<float, 4>> &samples()
    {
        static const std::vector<std::array<float, 4>> list = {
            {1, 2, 3, 4},          {-0.5f, 0.25f, 8, -1},       {3, -4, 12, 84},
            {0.001f, -7, 0.3f, 2}, {1e-10f, 2e-10f, 0, 1e-11f}, {-1, 0, 0, 0}};
        return list;
    }
};

using AllVectors = testing::Types<Vector2Operations, Vector3Operations, Vector4Operations>;
TYPED_TEST_SUITE(Vectors, AllVectors);

TYPED_TEST(Vectors, magnitudesAreTheSumOfTheSquaresAndItsRoot)
{
    for (const auto &values : this->samples()) {
        const auto v = this->vectorOf(values);
        const double length = this->lengthOf(v);
        EXPECT_NEAR(TypeParam::magnitude(v), length, 1e-6 * length);
        EXPECT_NEAR(TypeParam::magnitudeSquared(v), length * length, 1e-6 * length * length);
        EXPECT_EQ(TypeParam::magnitudeSquared(v), TypeParam::dot(v, v));
    }
}

TYPED_TEST(Vectors, normalizeMakesTheLengthOneKeepsTheDirectionAndReturnsTrue)
{
    for (const auto &values : this->samples()) {
        auto v = this->vectorOf(values);
        auto expected = this->doublesOf(v);
        for (double &component : expected)
            component /= this->lengthOf(this->vectorOf(values));
        EXPECT_TRUE(TypeParam::normalize(&v));
        this->expectNear(expected, v);
        this->expectNear(expected, TypeParam::normalized(this->vectorOf(values)));
    }
}

TYPED_TEST(Vectors, normalizeOfAZeroVectorReturnsFalseAndLeavesIt)
{
    auto v = this->vectorOf({0, 0, 0, 0});
    EXPECT_FALSE(TypeParam::normalize(&v));
    EXPECT_EQ(this->componentsOf(v), this->componentsOf(this->vectorOf({0, 0, 0, 0})));
    EXPECT_EQ(this->componentsOf(TypeParam::normalized(v)), this->componentsOf(v));
}

TYPED_TEST(Vectors, aVectorWhoseSquaresUnderflowCountsAsZero)
{
    auto v = this->vectorOf({1e-30f, -1e-30f, 1e-30f, 1e-30f});
    const auto before = this->componentsOf(v);
    ASSERT_EQ(TypeParam::magnitude(v), 0.0f);
    EXPECT_FALSE(TypeParam::normalize(&v));
    EXPECT_EQ(this->componentsOf(v), before);
    EXPECT_FALSE(TypeParam::scaleTo(&v, 5.0f));
    EXPECT_EQ(this->componentsOf(v), before);
}

TYPED_TEST(Vectors, aNaNIsNotALengthGreaterThanZero)
{
    auto v = this->vectorOf({std::numeric_limits<float>::quiet_NaN(), 7, 7, 7});
    EXPECT_FALSE(TypeParam::normalize(&v));
    EXPECT_TRUE(std::isnan(this->componentsOf(v)[0]));
    EXPECT_EQ(this->componentsOf(v)[1], 7.0f);
}

TYPED_TEST(Vectors, scaleToGivesTheMagnitudeAskedForAlsoANegativeOne)
{
    for (const float magnitude : {1.0f, 2.5f, 0.0f, -3.0f}) {
        for (const auto &values : this->samples()) {
            auto v = this->vectorOf(values);
            auto expected = this->doublesOf(v);
            for (double &component : expected)
                component *= double{magnitude} / this->lengthOf(this->vectorOf(values));
            EXPECT_TRUE(TypeParam::scaleTo(&v, magnitude));
            this->expectNear(expected, v);
            this->expectNear(expected, TypeParam::scaledTo(this->vectorOf(values), magnitude));
        }
    }
}

TYPED_TEST(Vectors, scaleToOfAZeroVectorReturnsFalseAndLeavesIt)
{
    auto v = this->vectorOf({0, 0, 0, 0});
    EXPECT_FALSE(TypeParam::scaleTo(&v, 5.0f));
    EXPECT_EQ(this->componentsOf(v), this->componentsOf(this->vectorOf({0, 0, 0, 0})));
    EXPECT_EQ(this->componentsOf(TypeParam::scaledTo(v, 5.0f)), this->componentsOf(v));
}

TYPED_TEST(Vectors, theCopyFormsLeaveTheirArgumentAlone)
{
    const auto v = this->vectorOf({1, 2, 3, 4});
    const auto normalized = TypeParam::normalized(v);
    const auto scaled = TypeParam::scaledTo(v, 9.0f);
    EXPECT_NE(this->componentsOf(normalized), this->componentsOf(v));
    EXPECT_NE(this->componentsOf(scaled), this->componentsOf(v));
    EXPECT_EQ(this->componentsOf(v), this->componentsOf(this->vectorOf({1, 2, 3, 4})));
}

TYPED_TEST(Vectors, sumsDifferencesAndScalarsGoComponentByComponent)
{
    // Powers of two and small integers: every result is exact.
    const std::array<float, 4> left = {1, -2, 3, 0.5f}, right = {10, 20, -30, 0.25f};
    const auto a = this->vectorOf(left), b = this->vectorOf(right);
    EXPECT_EQ(this->componentsOf(TypeParam::add(a, b)),
              this->componentsOf(this->vectorOf({11, 18, -27, 0.75f})));
    EXPECT_EQ(this->componentsOf(TypeParam::subtract(a, b)),
              this->componentsOf(this->vectorOf({-9, -22, 33, 0.25f})));
    EXPECT_EQ(this->componentsOf(TypeParam::multiplyScalar(a, -4.0f)),
              this->componentsOf(this->vectorOf({-4, 8, -12, -2})));
    EXPECT_EQ(this->componentsOf(TypeParam::divideScalar(a, 0.25f)),
              this->componentsOf(this->vectorOf({4, -8, 12, 2})));
}

TYPED_TEST(Vectors, divisionByAScalarOfZeroIsNotCaught)
{
    const auto quotient =
        this->componentsOf(TypeParam::divideScalar(this->vectorOf({1, -1, 1, 1}), 0.0f));
    EXPECT_EQ(quotient[0], std::numeric_limits<float>::infinity());
    EXPECT_EQ(quotient[1], -std::numeric_limits<float>::infinity());
}

TYPED_TEST(Vectors, interpolationRunsFromLeftToRightAndOn)
{
    const auto left = this->vectorOf({0, 8, -4, 2}), right = this->vectorOf({4, 0, 4, 3});
    const auto at = [&](float t) {
        return this->componentsOf(TypeParam::interpolate(left, right, t));
    };
    EXPECT_EQ(at(0.0f), this->componentsOf(left));
    EXPECT_EQ(at(1.0f), this->componentsOf(right));
    EXPECT_EQ(at(0.25f), this->componentsOf(this->vectorOf({1, 6, -2, 2.25f})));
    EXPECT_EQ(at(2.0f), this->componentsOf(this->vectorOf({8, -8, 12, 4})));
    EXPECT_EQ(at(-1.0f), this->componentsOf(this->vectorOf({-4, 16, -12, 1})));
}

TYPED_TEST(Vectors, theDotProductIsTheSumOfTheProducts)
{
    const auto a = this->vectorOf({1, 2, 3, 4}), b = this->vectorOf({5, -6, 7, 8});
    const std::array<float, 5> sums = {0, 5, -7, 14, 46};
    EXPECT_EQ(TypeParam::dot(a, b), sums[TypeParam::count]);
    EXPECT_EQ(TypeParam::dot(b, a), sums[TypeParam::count]);
}

TYPED_TEST(Vectors, reflectionKeepsThePartAlongTheNormalAndTurnsTheRestRound)
{
    const auto normal = TypeParam::normalized(this->vectorOf({1, 2, -2, 4}));
    for (const auto &values : this->samples()) {
        const auto v = this->vectorOf(values);
        const auto n = this->doublesOf(normal), d = this->doublesOf(v);
        double along = 0;
        for (std::size_t i = 0; i < TypeParam::count; ++i)
            along += n[i] * d[i];
        auto expected = d;
        for (std::size_t i = 0; i < TypeParam::count; ++i)
            expected[i] = 2 * along * n[i] - d[i];
        this->expectNear(expected, TypeParam::reflect(v, normal), 4e-7 * this->lengthOf(v) + 1e-12);
    }
}

TEST(Vector, theInitFunctionsTakeTheComponentsInOrder)
{
    const Vector2 v2 = Vector2_init(1, 2);
    EXPECT_EQ(v2.x, 1.0f);
    EXPECT_EQ(v2.y, 2.0f);
    const Vector3 v3 = Vector3_init(3, 4, 5);
    EXPECT_EQ(v3.x, 3.0f);
    EXPECT_EQ(v3.y, 4.0f);
    EXPECT_EQ(v3.z, 5.0f);
    const Vector4 v4 = Vector4_init(6, 7, 8, 9);
    EXPECT_EQ(v4.x, 6.0f);
    EXPECT_EQ(v4.y, 7.0f);
    EXPECT_EQ(v4.z, 8.0f);
    EXPECT_EQ(v4.w, 9.0f);
}

TEST(Vector, theReflectionOf1And1AboutTheNormal1And0Is1AndMinus1)
{
    const Vector2 reflected = Vector2_reflect({1, 1}, {1, 0});
    EXPECT_EQ(reflected.x, 1.0f);
    EXPECT_EQ(reflected.y, -1.0f);
}

TEST(Vector, theReflectionDoesNotNormaliseItsNormal)
{
    // 2 * (3 * 2) * 2 - 3 = 21; with a unit normal it would be 3.
    EXPECT_EQ(Vector3_reflect({3, 0, 0}, {2, 0, 0}).x, 21.0f);
}

TEST(Vector, rotationIsCounterClockwiseInRadians)
{
    const Vector2 quarter = Vector2_rotate({1, 0}, static_cast<float>(std::acos(0.0)));
    EXPECT_NEAR(quarter.x, 0, 1e-7);
    EXPECT_NEAR(quarter.y, 1, 1e-7);
    for (const float angle : {-2.0f, -0.3f, 0.0f, 0.7f, 3.0f, 9.0f}) {
        const Vector2 turned = Vector2_rotate({3, -2}, angle);
        EXPECT_NEAR(turned.x, 3 * std::cos(double{angle}) + 2 * std::sin(double{angle}), 1e-6);
        EXPECT_NEAR(turned.y, 3 * std::sin(double{angle}) - 2 * std::cos(double{angle}), 1e-6);
    }
}

TEST(Vector, thePlaneCrossProductIsPositiveCounterClockwise)
{
    EXPECT_EQ(Vector2_cross({1, 0}, {0, 1}), 1.0f);
    EXPECT_EQ(Vector2_cross({0, 1}, {1, 0}), -1.0f);
    EXPECT_EQ(Vector2_cross({2, 3}, {5, 7}), -1.0f);
    EXPECT_EQ(Vector2_cross({2, 3}, {4, 6}), 0.0f);
}

TEST(Vector, theCrossProductIsRightHanded)
{
    struct Case
    {
        const char *name;
        Vector3 left, right, expected;
    };
    for (const Case &c : {Case{"x cross y is z", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                          Case{"y cross z is x", {0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
                          Case{"z cross x is y", {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
                          Case{"any two", {1, 2, 3}, {4, 5, 7}, {-1, 5, -3}},
                          Case{"parallel", {1, 2, 3}, {2, 4, 6}, {0, 0, 0}}}) {
        SCOPED_TRACE(c.name);
        const Vector3 product = Vector3_cross(c.left, c.right);
        EXPECT_EQ(product.x, c.expected.x);
        EXPECT_EQ(product.y, c.expected.y);
        EXPECT_EQ(product.z, c.expected.z);
    }
}

TEST(Vector, theArithmeticIsSinglePrecision)
{
    // 2^24 + 1 has no float; in double precision the sum would come out.
    EXPECT_EQ(Vector2_add({16777216.0f, 0}, {1.0f, 0}).x, 16777216.0f);
    // The square of 1e20 overflows a float, not a double.
    EXPECT_TRUE(std::isinf(Vector3_magnitude({1e20f, 0, 0})));
}

} // namespace
} // namespace kelo
