#include "geometry/Matrix.h"

#include "base/Angles.h"

#include "geometry/Quaternion.h"

#include <utility>

namespace kelo {

namespace {

constexpr Matrix identityMatrix = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

/// Four numbers that go through the same arithmetic; compilers make one vector register of them.
struct Lanes
{
    float at[4];
};

Lanes operator*(const Lanes &left, const Lanes &right)
{
    Lanes product;
    for (std::size_t i = 0; i < 4; ++i)
        product.at[i] = left.at[i] * right.at[i];
    return product;
}

Lanes operator/(const Lanes &left, const Lanes &right)
{
    Lanes quotient;
    for (std::size_t i = 0; i < 4; ++i)
        quotient.at[i] = left.at[i] / right.at[i];
    return quotient;
}

Lanes operator+(const Lanes &left, const Lanes &right)
{
    Lanes sum;
    for (std::size_t i = 0; i < 4; ++i)
        sum.at[i] = left.at[i] + right.at[i];
    return sum;
}

Lanes operator-(const Lanes &left, const Lanes &right)
{
    Lanes difference;
    for (std::size_t i = 0; i < 4; ++i)
        difference.at[i] = left.at[i] - right.at[i];
    return difference;
}

/// The sixteen 3x3 minors of a matrix: lane c of leavingOutRow[r] leaves out row r and column c, as
/// Matrix_subdeterminant(c * 4 + r, m) does.
struct Minors
{
    Lanes leavingOutRow[4];
};

/// Built from the 2x2 minors that the 3x3 minors share: those of columns 2 and 3 serve where column
/// 0 or 1 is left out, those of columns 0 and 1 serve where 2 or 3 is. That is half the
/// multiplications of sixteen separate determinants; the values differ from theirs by float
/// rounding at most.
Minors minorsOf(const Matrix &m)
{
    const float *column0 = m.m, *column1 = m.m + 4, *column2 = m.m + 8, *column3 = m.m + 12;
    // By row; in each lane c, `other` is the column that is left beside the pair `first`, `second`.
    Lanes other[4], first[4], second[4];
    for (std::size_t row = 0; row < 4; ++row) {
        other[row] = {{column1[row], column0[row], column3[row], column2[row]}};
        first[row] = {{column2[row], column2[row], column0[row], column0[row]}};
        second[row] = {{column3[row], column3[row], column1[row], column1[row]}};
    }
    const auto minorOfRows = [&](std::size_t upper, std::size_t lower) {
        return first[upper] * second[lower] - first[lower] * second[upper];
    };
    const Lanes rows01 = minorOfRows(0, 1), rows02 = minorOfRows(0, 2), rows03 = minorOfRows(0, 3);
    const Lanes rows12 = minorOfRows(1, 2), rows13 = minorOfRows(1, 3), rows23 = minorOfRows(2, 3);
    return {{other[1] * rows23 - other[2] * rows13 + other[3] * rows12,
             other[0] * rows23 - other[2] * rows03 + other[3] * rows02,
             other[0] * rows13 - other[1] * rows03 + other[3] * rows01,
             other[0] * rows12 - other[1] * rows02 + other[2] * rows01}};
}

/// Along the first column.
float determinantOf(const Matrix &m, const Minors &minors)
{
    return m.m[0] * minors.leavingOutRow[0].at[0] - m.m[1] * minors.leavingOutRow[1].at[0] +
           m.m[2] * minors.leavingOutRow[2].at[0] - m.m[3] * minors.leavingOutRow[3].at[0];
}

} // namespace

void Matrix_loadIdentity(Matrix *m)
{
    *m = identityMatrix;
}

Matrix Matrix_fromDirectionVectors(Vector3 right, Vector3 up, Vector3 front)
{
    return {{right.x, right.y, right.z, 0, up.x, up.y, up.z, 0, front.x, front.y, front.z, 0, 0, 0,
             0, 1}};
}

void Matrix_translate(Matrix *m, float x, float y, float z)
{
    Matrix translation = identityMatrix;
    translation.m[12] = x;
    translation.m[13] = y;
    translation.m[14] = z;
    Matrix_multiply(m, translation);
}

Matrix Matrix_translated(Matrix m, float x, float y, float z)
{
    Matrix_translate(&m, x, y, z);
    return m;
}

void Matrix_scale(Matrix *m, float x, float y, float z)
{
    Matrix_multiply(m, {{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1}});
}

Matrix Matrix_scaled(Matrix m, float x, float y, float z)
{
    Matrix_scale(&m, x, y, z);
    return m;
}

void Matrix_rotate(Matrix *m, Vector3 axis, float angleInRadians)
{
    Matrix_multiply(m, Quaternion_toMatrix(Quaternion_fromAxisAngle(axis, angleInRadians)));
}

Matrix Matrix_rotated(Matrix m, Vector3 axis, float angleInRadians)
{
    Matrix_rotate(&m, axis, angleInRadians);
    return m;
}

void Matrix_shearX(Matrix *m, float y, float z)
{
    Matrix shear = identityMatrix;
    shear.m[1] = y;
    shear.m[2] = z;
    Matrix_multiply(m, shear);
}

Matrix Matrix_shearedX(Matrix m, float y, float z)
{
    Matrix_shearX(&m, y, z);
    return m;
}

void Matrix_shearY(Matrix *m, float x, float z)
{
    Matrix shear = identityMatrix;
    shear.m[4] = x;
    shear.m[6] = z;
    Matrix_multiply(m, shear);
}

Matrix Matrix_shearedY(Matrix m, float x, float z)
{
    Matrix_shearY(&m, x, z);
    return m;
}

void Matrix_shearZ(Matrix *m, float x, float y)
{
    Matrix shear = identityMatrix;
    shear.m[8] = x;
    shear.m[9] = y;
    Matrix_multiply(m, shear);
}

Matrix Matrix_shearedZ(Matrix m, float x, float y)
{
    Matrix_shearZ(&m, x, y);
    return m;
}

void Matrix_applyPerspective(Matrix *m, float fovYInDegrees, float aspect, float zNear, float zFar)
{
    const float halfFovY = fovYInDegrees * pi / 360.0f;
    const float sine = std::sin(halfFovY);
    const float depth = zFar - zNear;
    if (aspect == 0.0f || sine == 0.0f || depth == 0.0f) return;

    const float cotangent = std::cos(halfFovY) / sine;
    Matrix perspective = {};
    perspective.m[0] = cotangent / aspect;
    perspective.m[5] = cotangent;
    perspective.m[10] = -(zNear + zFar) / depth;
    perspective.m[11] = -1.0f;
    perspective.m[14] = -2.0f * zNear * zFar / depth;
    Matrix_multiply(m, perspective);
}

Matrix Matrix_perspective(Matrix m, float fovYInDegrees, float aspect, float zNear, float zFar)
{
    Matrix_applyPerspective(&m, fovYInDegrees, aspect, zNear, zFar);
    return m;
}

void Matrix_applyOrtho(Matrix *m, float left, float right, float bottom, float top, float zNear,
                       float zFar)
{
    Matrix ortho = {};
    ortho.m[0] = 2.0f / (right - left);
    ortho.m[5] = 2.0f / (top - bottom);
    ortho.m[10] = -2.0f / (zFar - zNear);
    ortho.m[12] = -(right + left) / (right - left);
    ortho.m[13] = -(top + bottom) / (top - bottom);
    ortho.m[14] = -(zFar + zNear) / (zFar - zNear);
    ortho.m[15] = 1.0f;
    Matrix_multiply(m, ortho);
}

Matrix Matrix_ortho(Matrix m, float left, float right, float bottom, float top, float zNear,
                    float zFar)
{
    Matrix_applyOrtho(&m, left, right, bottom, top, zNear, zFar);
    return m;
}

void Matrix_transpose(Matrix *m)
{
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t row = column + 1; row < 4; ++row)
            std::swap(m->m[column * 4 + row], m->m[row * 4 + column]);
}

Matrix Matrix_transposed(Matrix m)
{
    Matrix_transpose(&m);
    return m;
}

float Matrix_determinant(const Matrix &m)
{
    return determinantOf(m, minorsOf(m));
}

float Matrix_subdeterminant(std::size_t elementIndex, const Matrix &m)
{
    // The remaining columns, and the remaining rows of each of them.
    float remaining[9];
    std::size_t count = 0;
    for (std::size_t column = 0; column < 4; ++column) {
        if (column == elementIndex / 4) continue;
        for (std::size_t row = 0; row < 4; ++row) {
            if (row != elementIndex % 4) remaining[count++] = m.m[column * 4 + row];
        }
    }
    return remaining[0] * (remaining[4] * remaining[8] - remaining[5] * remaining[7]) -
           remaining[1] * (remaining[3] * remaining[8] - remaining[5] * remaining[6]) +
           remaining[2] * (remaining[3] * remaining[7] - remaining[4] * remaining[6]);
}

void Matrix_invert(Matrix *m)
{
    *m = Matrix_inverted(*m);
}

Matrix Matrix_inverted(const Matrix &m)
{
    const Minors minors = minorsOf(m);
    const float determinant = determinantOf(m, minors);
    // The cofactors' signs go into the divisor. Divided one by one: the reciprocal of a determinant
    // near the smallest float would overflow where the quotients do not.
    const Lanes fromPlus = {{determinant, -determinant, determinant, -determinant}};
    const Lanes fromMinus = {{-determinant, determinant, -determinant, determinant}};
    Matrix inverse;
    for (std::size_t row = 0; row < 4; ++row) {
        const Lanes column = minors.leavingOutRow[row] / (row % 2 == 0 ? fromPlus : fromMinus);
        for (std::size_t i = 0; i < 4; ++i)
            inverse.m[row * 4 + i] = column.at[i];
    }
    return inverse;
}

void Matrix_interpolate(Matrix *m, const Matrix &right, float t)
{
    for (std::size_t i = 0; i < 16; ++i)
        m->m[i] = m->m[i] * (1.0f - t) + right.m[i] * t;
}

Matrix Matrix_interpolated(Matrix m, const Matrix &right, float t)
{
    Matrix_interpolate(&m, right, t);
    return m;
}

Vector2 Matrix_multiplyVector2(const Matrix &m, Vector2 v)
{
    const Vector4 product = Matrix_multiplyVector4(m, {v.x, v.y, 0.0f, 1.0f});
    return {product.x, product.y};
}

Vector3 Matrix_multiplyVector3(const Matrix &m, Vector3 v)
{
    const Vector4 product = Matrix_multiplyVector4(m, {v.x, v.y, v.z, 1.0f});
    return {product.x, product.y, product.z};
}

Vector4 Matrix_multiplyVector4(const Matrix &m, Vector4 v)
{
    return {m.m[0] * v.x + m.m[4] * v.y + m.m[8] * v.z + m.m[12] * v.w,
            m.m[1] * v.x + m.m[5] * v.y + m.m[9] * v.z + m.m[13] * v.w,
            m.m[2] * v.x + m.m[6] * v.y + m.m[10] * v.z + m.m[14] * v.w,
            m.m[3] * v.x + m.m[7] * v.y + m.m[11] * v.z + m.m[15] * v.w};
}

Vector2 Matrix_multiplyVector2_rotationOnly(const Matrix &m, Vector2 v)
{
    const Vector4 product = Matrix_multiplyVector4(m, {v.x, v.y, 0.0f, 0.0f});
    return {product.x, product.y};
}

Vector3 Matrix_multiplyVector3_rotationOnly(const Matrix &m, Vector3 v)
{
    const Vector4 product = Matrix_multiplyVector4(m, {v.x, v.y, v.z, 0.0f});
    return {product.x, product.y, product.z};
}

} // namespace kelo
