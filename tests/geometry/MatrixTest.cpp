#include "geometry/Matrix.h"

#include "geometry/Quaternion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <vector>

namespace kelo {
namespace {

using Elements = std::array<double, 16>;

const double pi = std::acos(-1.0);

Elements elementsOf(const Matrix &m)
{
    Elements elements;
    std::copy(m.m, m.m + 16, elements.begin());
    return elements;
}

void expectElements(const Elements &expected, const Matrix &actual, double tolerance)
{
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(actual.m[i], expected[i], tolerance) << "element " << i;
}

bool sameBits(const Matrix &left, const Matrix &right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

/// The product as it is defined, in double precision.
Elements productOf(const Elements &left, const Elements &right)
{
    Elements product = {};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t k = 0; k < 4; ++k)
                product[column * 4 + row] += left[k * 4 + row] * right[column * 4 + k];
    return product;
}

/// The determinant of the leading size x size numbers, by expansion along the first row.
double determinantOf(const std::vector<std::vector<double>> &rows)
{
    if (rows.size() == 1) return rows[0][0];
    double sum = 0;
    for (std::size_t column = 0; column < rows.size(); ++column) {
        std::vector<std::vector<double>> minor(rows.begin() + 1, rows.end());
        for (auto &row : minor)
            row.erase(row.begin() + static_cast<std::ptrdiff_t>(column));
        sum += (column % 2 == 0 ? 1 : -1) * rows[0][column] * determinantOf(minor);
    }
    return sum;
}

std::vector<std::vector<double>> rowsOf(const Matrix &m)
{
    std::vector<std::vector<double>> rows(4, std::vector<double>(4));
    for (std::size_t i = 0; i < 16; ++i)
        rows[i % 4][i / 4] = m.m[i];
    return rows;
}

double minorOf(std::size_t elementIndex, const Matrix &m)
{
    auto rows = rowsOf(m);
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(elementIndex % 4));
    for (auto &row : rows)
        row.erase(row.begin() + static_cast<std::ptrdiff_t>(elementIndex / 4));
    return determinantOf(rows);
}

Matrix someMatrix(std::mt19937 &generator)
{
    std::uniform_real_distribution<float> coordinate(-2.0f, 2.0f);
    Matrix m;
    for (float &element : m.m)
        element = coordinate(generator);
    return m;
}

Matrix identity()
{
    Matrix m;
    Matrix_loadIdentity(&m);
    return m;
}

/// 1 to 16 in reading order.
const Matrix counting = Matrix_init(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);

/// No zero, no symmetry, and a determinant that is not small.
const Matrix general = Matrix_init(2, -1, 3, 0.5f, 1, 4, -2, 1.5f, -3, 2, 5, 1, 0.25f, -1, 2, 3);

TEST(Matrix, loadIdentitySetsTheIdentity)
{
    EXPECT_EQ(elementsOf(identity()), (Elements{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(Matrix, initWith1To16InOrderStores1And5And9And13InItsFirstColumn)
{
    EXPECT_EQ(elementsOf(counting),
              (Elements{1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16}));
}

TEST(Matrix, directionVectorsBecomeTheFirstThreeColumns)
{
    EXPECT_EQ(elementsOf(Matrix_fromDirectionVectors({1, 2, 3}, {4, 5, 6}, {7, 8, 9})),
              (Elements{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}));
}

TEST(Matrix, multiplyPutsTheSecondMatrixOnTheRight)
{
    std::mt19937 generator(1);
    for (int round = 0; round < 50; ++round) {
        const Matrix left = someMatrix(generator), right = someMatrix(generator);
        Matrix m = left;
        Matrix_multiply(&m, right);
        expectElements(productOf(elementsOf(left), elementsOf(right)), m, 4e-6);
        EXPECT_TRUE(sameBits(m, Matrix_multiplied(left, right)));
    }
    // A translation on the right of a scale is scaled.
    Matrix m = Matrix_scaled(identity(), 2, 2, 2);
    Matrix_multiply(&m, Matrix_translated(identity(), 1, 2, 3));
    EXPECT_EQ(elementsOf(m), (Elements{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 2, 4, 6, 1}));
}

TEST(Matrix, aMatrixMayBeMultipliedByItself)
{
    Matrix m = general;
    Matrix_multiply(&m, m);
    EXPECT_TRUE(sameBits(m, Matrix_multiplied(general, general)));
    expectElements(productOf(elementsOf(general), elementsOf(general)), m, 1e-5);
}

/// One elementary operation in both its forms, and the matrix it multiplies onto the right.
struct Operation
{
    const char *name;
    std::function<void(Matrix *)> inPlace;
    std::function<Matrix(const Matrix &)> copied;
    Elements factor;
};

/// The right-handed rotation about a unit axis by the sum of its projection, cross-product and
/// perpendicular parts.
Elements rotationOf(double x, double y, double z, double angle)
{
    const double c = std::cos(angle), s = std::sin(angle), k = 1 - c;
    return {x * x * k + c,
            y * x * k + z * s,
            z * x * k - y * s,
            0,
            x * y * k - z * s,
            y * y * k + c,
            z * y * k + x * s,
            0,
            x * z * k + y * s,
            y * z * k - x * s,
            z * z * k + c,
            0,
            0,
            0,
            0,
            1};
}

std::vector<Operation> elementaryOperations()
{
    const double cotangent = 1 / std::tan(25 * pi / 180);
    return {
        {"translate",
         [](Matrix *m) { Matrix_translate(m, 2, 3, 4); },
         [](const Matrix &m) { return Matrix_translated(m, 2, 3, 4); },
         {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 3, 4, 1}},
        {"scale",
         [](Matrix *m) { Matrix_scale(m, 2, 3, 4); },
         [](const Matrix &m) { return Matrix_scaled(m, 2, 3, 4); },
         {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1}},
        {"shearX",
         [](Matrix *m) { Matrix_shearX(m, 2, 3); },
         [](const Matrix &m) { return Matrix_shearedX(m, 2, 3); },
         {1, 2, 3, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}},
        {"shearY",
         [](Matrix *m) { Matrix_shearY(m, 2, 3); },
         [](const Matrix &m) { return Matrix_shearedY(m, 2, 3); },
         {1, 0, 0, 0, 2, 1, 3, 0, 0, 0, 1, 0, 0, 0, 0, 1}},
        {"shearZ",
         [](Matrix *m) { Matrix_shearZ(m, 2, 3); },
         [](const Matrix &m) { return Matrix_shearedZ(m, 2, 3); },
         {1, 0, 0, 0, 0, 1, 0, 0, 2, 3, 1, 0, 0, 0, 0, 1}},
        // The axis has the length 3.
        {"rotate",
         [](Matrix *m) {
             Matrix_rotate(m, {1, 2, -2}, 0.7f);
         },
         [](const Matrix &m) {
             return Matrix_rotated(m, {1, 2, -2}, 0.7f);
         },
         rotationOf(1.0 / 3, 2.0 / 3, -2.0 / 3, 0.7)},
        {"perspective",
         [](Matrix *m) { Matrix_applyPerspective(m, 50, 1.5f, 1, 10); },
         [](const Matrix &m) { return Matrix_perspective(m, 50, 1.5f, 1, 10); },
         {cotangent / 1.5, 0, 0, 0, 0, cotangent, 0, 0, 0, 0, -11.0 / 9, -1, 0, 0, -20.0 / 9, 0}},
        {"ortho",
         [](Matrix *m) { Matrix_applyOrtho(m, -1, 3, -2, 6, 1, 5); },
         [](const Matrix &m) { return Matrix_ortho(m, -1, 3, -2, 6, 1, 5); },
         {0.5, 0, 0, 0, 0, 0.25, 0, 0, 0, 0, -0.5, 0, -0.5, -0.5, -1.5, 1}},
    };
}

TEST(Matrix, eachElementaryOperationMultipliesItsMatrixOntoTheRight)
{
    for (const Operation &operation : elementaryOperations()) {
        SCOPED_TRACE(operation.name);
        Matrix fromIdentity = identity();
        operation.inPlace(&fromIdentity);
        expectElements(operation.factor, fromIdentity, 1e-6);

        Matrix m = general;
        operation.inPlace(&m);
        expectElements(productOf(elementsOf(general), operation.factor), m, 1e-5);
    }
}

TEST(Matrix, eachParticipleReturnsWhatItsVerbDoes)
{
    auto operations = elementaryOperations();
    operations.push_back({"transpose",
                          [](Matrix *m) { Matrix_transpose(m); },
                          [](const Matrix &m) { return Matrix_transposed(m); },
                          {}});
    operations.push_back({"invert",
                          [](Matrix *m) { Matrix_invert(m); },
                          [](const Matrix &m) { return Matrix_inverted(m); },
                          {}});
    operations.push_back({"interpolate",
                          [](Matrix *m) { Matrix_interpolate(m, counting, 0.3f); },
                          [](const Matrix &m) { return Matrix_interpolated(m, counting, 0.3f); },
                          {}});
    operations.push_back({"multiply",
                          [](Matrix *m) { Matrix_multiply(m, counting); },
                          [](const Matrix &m) { return Matrix_multiplied(m, counting); },
                          {}});
    for (const Operation &operation : operations) {
        SCOPED_TRACE(operation.name);
        Matrix changed = general;
        operation.inPlace(&changed);
        EXPECT_FALSE(sameBits(changed, general));
        const Matrix argument = general;
        EXPECT_TRUE(sameBits(operation.copied(argument), changed));
        EXPECT_TRUE(sameBits(argument, general));
    }
}

TEST(Matrix, rotateIsTheMatrixOfTheQuaternionOfTheAxisAndTheAngle)
{
    const Matrix rotation = Quaternion_toMatrix(Quaternion_fromAxisAngle({1, -2, 0.5f}, 1.1f));
    EXPECT_TRUE(sameBits(Matrix_rotated(general, {1, -2, 0.5f}, 1.1f),
                         Matrix_multiplied(general, rotation)));
}

TEST(Matrix, aQuarterTurnAboutZTakesXToY)
{
    const Matrix m = Matrix_rotated(identity(), {0, 0, 5}, static_cast<float>(pi / 2));
    const Vector3 turned = Matrix_multiplyVector3(m, {1, 0, 0});
    EXPECT_NEAR(turned.x, 0, 1e-6);
    EXPECT_NEAR(turned.y, 1, 1e-6);
    EXPECT_NEAR(turned.z, 0, 1e-6);
}

TEST(Matrix, aRotationAboutAZeroAxisIsNaNInItsFirstThreeColumns)
{
    const Matrix m = Matrix_rotated(identity(), {0, 0, 0}, 1);
    for (std::size_t i = 0; i < 16; ++i) {
        const bool inRotation = i < 12 && i % 4 < 3;
        if (inRotation) {
            EXPECT_TRUE(std::isnan(m.m[i])) << "element " << i;
        }
    }
    EXPECT_EQ(m.m[15], 1.0f);
}

TEST(Matrix, anEmptyPerspectiveLeavesTheMatrixAsItWas)
{
    struct Case
    {
        const char *name;
        float fovY, aspect, zNear, zFar;
    };
    for (const Case &c : {Case{"aspect 0", 50, 0, 1, 10}, Case{"fovY 0", 0, 1.5f, 1, 10},
                          Case{"zNear = zFar", 50, 1.5f, 4, 4}}) {
        SCOPED_TRACE(c.name);
        Matrix m = general;
        Matrix_applyPerspective(&m, c.fovY, c.aspect, c.zNear, c.zFar);
        EXPECT_TRUE(sameBits(m, general));
        EXPECT_TRUE(
            sameBits(Matrix_perspective(general, c.fovY, c.aspect, c.zNear, c.zFar), general));
    }
    // The same call with none of the three does something.
    EXPECT_FALSE(sameBits(Matrix_perspective(general, 50, 1.5f, 1, 10), general));
}

TEST(Matrix, thePerspectiveTakesTheNearPlaneToMinus1AndTheFarPlaneTo1)
{
    const Matrix m = Matrix_perspective(identity(), 90, 2, 1, 10);
    const Vector4 near = Matrix_multiplyVector4(m, {2, 1, -1, 1});
    EXPECT_NEAR(near.x / near.w, 1, 1e-6);
    EXPECT_NEAR(near.y / near.w, 1, 1e-6);
    EXPECT_NEAR(near.z / near.w, -1, 1e-6);
    const Vector4 far = Matrix_multiplyVector4(m, {-20, -10, -10, 1});
    EXPECT_NEAR(far.x / far.w, -1, 1e-6);
    EXPECT_NEAR(far.y / far.w, -1, 1e-6);
    EXPECT_NEAR(far.z / far.w, 1, 1e-6);
}

TEST(Matrix, thePiOfThePerspectiveIsAFloat)
{
    // With the exact pi the half angle of 360 degrees would have the sine 1.2e-16 in double
    // precision; the float 3.1415927 lies 8.74e-8 above pi, and that is the sine's size.
    const Matrix m = Matrix_perspective(identity(), 360, 1, 1, 2);
    EXPECT_NEAR(m.m[5], 1 / 8.742278e-8, 10);
}

TEST(Matrix, theOrthographicBoxBecomesTheUnitCube)
{
    const Matrix m = Matrix_ortho(identity(), -1, 3, -2, 6, 1, 5);
    const Vector3 nearCorner = Matrix_multiplyVector3(m, {-1, -2, -1});
    EXPECT_EQ(nearCorner.x, -1.0f);
    EXPECT_EQ(nearCorner.y, -1.0f);
    EXPECT_EQ(nearCorner.z, -1.0f);
    const Vector3 farCorner = Matrix_multiplyVector3(m, {3, 6, -5});
    EXPECT_EQ(farCorner.x, 1.0f);
    EXPECT_EQ(farCorner.y, 1.0f);
    EXPECT_EQ(farCorner.z, 1.0f);
}

TEST(Matrix, equalOrthographicBoundsAreNotCaught)
{
    EXPECT_FALSE(std::isfinite(Matrix_ortho(identity(), 1, 1, 0, 1, 0, 1).m[0]));
}

TEST(Matrix, transposeSwapsRowsAndColumns)
{
    EXPECT_EQ(elementsOf(Matrix_transposed(counting)),
              (Elements{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
}

TEST(Matrix, theDeterminantIsThatOfTheCofactorExpansion)
{
    EXPECT_EQ(Matrix_determinant(identity()), 1.0f);
    EXPECT_EQ(Matrix_determinant(Matrix_scaled(identity(), 2, 3, 4)), 24.0f);
    EXPECT_EQ(Matrix_determinant(counting), 0.0f);
    // Two columns exchanged.
    EXPECT_EQ(Matrix_determinant(Matrix_init(0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)),
              -1.0f);
    std::mt19937 generator(2);
    for (int round = 0; round < 100; ++round) {
        const Matrix m = someMatrix(generator);
        EXPECT_NEAR(Matrix_determinant(m), determinantOf(rowsOf(m)), 4e-5);
    }
}

TEST(Matrix, theSubdeterminantLeavesOutTheElementsRowAndColumn)
{
    std::mt19937 generator(3);
    for (int round = 0; round < 20; ++round) {
        const Matrix m = someMatrix(generator);
        for (std::size_t i = 0; i < 16; ++i)
            EXPECT_NEAR(Matrix_subdeterminant(i, m), minorOf(i, m), 1e-5) << "element " << i;
    }
    // Element 4 lies in column 1, row 0: what is left are the rows 5 7 8, 9 11 12 and 13 15 16 + 1.
    Matrix m = counting;
    m.m[15] = 17;
    EXPECT_EQ(Matrix_subdeterminant(4, m), -8.0f);
}

TEST(Matrix, theInverseIsTheAdjugateOverTheDeterminant)
{
    std::mt19937 generator(4);
    int tried = 0;
    while (tried < 100) {
        const Matrix m = someMatrix(generator);
        const float determinant = Matrix_determinant(m);
        if (std::abs(determinant) < 1.0f) continue; // so that the tolerance is one of rounding only
        ++tried;
        const Matrix inverse = Matrix_inverted(m);
        for (std::size_t i = 0; i < 16; ++i) {
            const std::size_t column = i / 4, row = i % 4;
            const float sign = (row + column) % 2 == 0 ? 1.0f : -1.0f;
            EXPECT_NEAR(inverse.m[row * 4 + column],
                        sign * Matrix_subdeterminant(i, m) / determinant, 1e-5)
                << "element " << i;
        }
    }
}

TEST(Matrix, theInverseTimesTheMatrixIsTheIdentity)
{
    const Elements unit = elementsOf(identity());
    std::vector<Matrix> matrices = {general, identity(), Matrix_scaled(identity(), 2, -3, 0.25f),
                                    Matrix_perspective(identity(), 50, 1.5f, 1, 10)};
    matrices.push_back(Matrix_rotated(Matrix_translated(identity(), 1, 2, 3), {1, 1, 0}, 2));
    for (const Matrix &m : matrices) {
        const Matrix inverse = Matrix_inverted(m);
        expectElements(unit, Matrix_multiplied(inverse, m), 2e-6);
        expectElements(unit, Matrix_multiplied(m, inverse), 2e-6);
    }
}

TEST(Matrix, aTinyDeterminantDoesNotOverflowTheInverse)
{
    // The determinant, 1e-39, is a denormal float, and its reciprocal is beyond the largest float.
    const Matrix m = Matrix_scaled(identity(), 1e-13f, 1e-13f, 1e-13f);
    const float determinant = Matrix_determinant(m);
    ASSERT_GT(determinant, 0.0f);
    ASSERT_TRUE(std::isinf(1.0f / determinant));
    EXPECT_NEAR(Matrix_inverted(m).m[0], 1e13, 1e8);
}

TEST(Matrix, aSingularMatrixInvertsToInfinitiesOrNaNs)
{
    ASSERT_EQ(Matrix_determinant(counting), 0.0f);
    for (const Matrix &singular : {counting, Matrix_scaled(identity(), 1, 0, 1)}) {
        for (const float element : Matrix_inverted(singular).m)
            EXPECT_FALSE(std::isfinite(element));
    }
}

TEST(Matrix, interpolationGoesElementByElementAndOrthogonalisesNothing)
{
    const Matrix half = Matrix_interpolated(identity(), counting, 0.5f);
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(half.m[i], 0.5f * identity().m[i] + 0.5f * counting.m[i]) << "element " << i;
    EXPECT_TRUE(sameBits(Matrix_interpolated(general, counting, 0), general));
    EXPECT_TRUE(sameBits(Matrix_interpolated(general, counting, 1), counting));
    // On beyond the right matrix.
    EXPECT_EQ(Matrix_interpolated(identity(), counting, 3).m[0], 1.0f);
    EXPECT_EQ(Matrix_interpolated(identity(), counting, 3).m[1], 15.0f);
    // Half way to a half turn, the columns of x and y have vanished.
    const Matrix halfTurn = Matrix_init(-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_EQ(Matrix_interpolated(identity(), halfTurn, 0.5f).m[0], 0.0f);
}

TEST(Matrix, vectorsGoThroughTheMatrixWithTheTranslation)
{
    // Rows of `counting`: 1 2 3 4, 5 6 7 8, 9 10 11 12, 13 14 15 16.
    const Vector2 v2 = Matrix_multiplyVector2(counting, {10, 100});
    EXPECT_EQ(v2.x, 214.0f);
    EXPECT_EQ(v2.y, 658.0f);
    const Vector3 v3 = Matrix_multiplyVector3(counting, {10, 100, 1000});
    EXPECT_EQ(v3.x, 3214.0f);
    EXPECT_EQ(v3.y, 7658.0f);
    EXPECT_EQ(v3.z, 12102.0f);
    const Vector4 v4 = Matrix_multiplyVector4(counting, {10, 100, 1000, 2});
    EXPECT_EQ(v4.x, 3218.0f);
    EXPECT_EQ(v4.y, 7666.0f);
    EXPECT_EQ(v4.z, 12114.0f);
    EXPECT_EQ(v4.w, 16562.0f);
}

TEST(Matrix, rotationOnlyLeavesTheTranslationOut)
{
    const Vector2 v2 = Matrix_multiplyVector2_rotationOnly(counting, {10, 100});
    EXPECT_EQ(v2.x, 210.0f);
    EXPECT_EQ(v2.y, 650.0f);
    const Vector3 v3 = Matrix_multiplyVector3_rotationOnly(counting, {10, 100, 1000});
    EXPECT_EQ(v3.x, 3210.0f);
    EXPECT_EQ(v3.y, 7650.0f);
    EXPECT_EQ(v3.z, 12090.0f);
}

TEST(Matrix, multiplyVector3DoesNotDivideByWAlsoAfterAPerspective)
{
    const Matrix m = Matrix_perspective(identity(), 90, 1, 1, 3);
    ASSERT_NEAR(Matrix_multiplyVector4(m, {4, 6, -2, 1}).w, 2, 1e-6);
    const Vector3 v = Matrix_multiplyVector3(m, {4, 6, -2});
    EXPECT_NEAR(v.x, 4, 1e-5);
    EXPECT_NEAR(v.y, 6, 1e-5);
    // -(1 + 3) / 2 * -2 - 2 * 1 * 3 / 2 = 1
    EXPECT_NEAR(v.z, 1, 1e-5);
}

} // namespace
} // namespace kelo
