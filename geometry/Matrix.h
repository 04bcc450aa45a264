// 4x4 single-precision matrices in OpenGL's layout, as plain values and free functions.
//
// A point is a column to the right of its matrix, and composition multiplies onto the right, as on
// OpenGL's matrix stack: after `Matrix_translate(&m, ...); Matrix_rotate(&m, ...);` a point is
// first rotated, then translated, then sent through what m was before.
//
// Naming: a plain verb (`Matrix_translate`) takes a pointer and changes that matrix; the participle
// (`Matrix_translated`), and `Matrix_perspective` and `Matrix_ortho`, take the value and return the
// changed copy. Both forms of a pair give the same bits. A function never minds that its arguments
// are the same object: `Matrix_multiply(&m, m)` squares m.
//
// Angles are radians, except the field of view of the perspective, which is in degrees. Pointers
// must not be null. Nothing here allocates, throws or keeps state.
#pragma once

#include "base/Export.h"
#include "geometry/Vector.h"

#include <cstddef>
#include <type_traits>

namespace kelo {

/// Column-major: element index = column * 4 + row, the translation lies in elements 12, 13, 14. `m`
/// may be handed to glMultMatrixf and glLoadMatrixf as it is. Not initialised by its declaration
/// alone.
struct Matrix
{
    float m[16];
};

static_assert(sizeof(Matrix) == 16 * sizeof(float) && std::is_standard_layout_v<Matrix> &&
              std::is_trivially_copyable_v<Matrix>);

// Making matrices

KELO_EXPORT void Matrix_loadIdentity(Matrix *m);

/// The sixteen elements in reading order, row 0 from left to right, then row 1 and so on; the
/// argument of row r and column c goes to element c * 4 + r.
[[nodiscard]] constexpr Matrix Matrix_init(float row0Column0, float row0Column1, float row0Column2,
                                           float row0Column3, float row1Column0, float row1Column1,
                                           float row1Column2, float row1Column3, float row2Column0,
                                           float row2Column1, float row2Column2, float row2Column3,
                                           float row3Column0, float row3Column1, float row3Column2,
                                           float row3Column3)
{
    return {{row0Column0, row1Column0, row2Column0, row3Column0, row0Column1, row1Column1,
             row2Column1, row3Column1, row0Column2, row1Column2, row2Column2, row3Column2,
             row0Column3, row1Column3, row2Column3, row3Column3}};
}

/// The matrix that takes the x axis to right, the y axis to up and the z axis to front: they are
/// its columns 0, 1 and 2, taken as they are. No translation.
[[nodiscard]] KELO_EXPORT Matrix Matrix_fromDirectionVectors(Vector3 right, Vector3 up,
                                                             Vector3 front);

// Composition: m becomes m * (the matrix described)

inline void Matrix_multiply(Matrix *m, const Matrix &n);
[[nodiscard]] inline Matrix Matrix_multiplied(const Matrix &m, const Matrix &n);

/// The identity with (x, y, z) in elements 12, 13, 14.
KELO_EXPORT void Matrix_translate(Matrix *m, float x, float y, float z);
[[nodiscard]] KELO_EXPORT Matrix Matrix_translated(Matrix m, float x, float y, float z);

/// The diagonal (x, y, z, 1).
KELO_EXPORT void Matrix_scale(Matrix *m, float x, float y, float z);
[[nodiscard]] KELO_EXPORT Matrix Matrix_scaled(Matrix m, float x, float y, float z);

/// The rotation by angleInRadians, counter-clockwise seen against the axis, which may have any
/// length: Quaternion_toMatrix of Quaternion_fromAxisAngle. An axis of length 0 fills the first
/// three columns of the product with NaN, as the fallback of Quaternion_fromAxisAngle has it.
KELO_EXPORT void Matrix_rotate(Matrix *m, Vector3 axis, float angleInRadians);
[[nodiscard]] KELO_EXPORT Matrix Matrix_rotated(Matrix m, Vector3 axis, float angleInRadians);

/// Shears: the axis of the name feeds the other two, each by its factor. The identity with elements
/// 1 = y and 2 = z (X), 4 = x and 6 = z (Y), 8 = x and 9 = y (Z).
KELO_EXPORT void Matrix_shearX(Matrix *m, float y, float z);
[[nodiscard]] KELO_EXPORT Matrix Matrix_shearedX(Matrix m, float y, float z);
KELO_EXPORT void Matrix_shearY(Matrix *m, float x, float z);
[[nodiscard]] KELO_EXPORT Matrix Matrix_shearedY(Matrix m, float x, float z);
KELO_EXPORT void Matrix_shearZ(Matrix *m, float x, float y);
[[nodiscard]] KELO_EXPORT Matrix Matrix_shearedZ(Matrix m, float x, float y);

/// The perspective of a camera at the origin looking down -z: fovYInDegrees is the whole vertical
/// field of view, aspect is width / height, zNear and zFar are the positive distances of the
/// clipping planes. With half the field of view h and c = cos h / sin h, the matrix is all zeros
/// except elements 0 = c / aspect, 5 = c, 10 = -(zNear + zFar) / (zFar - zNear), 11 = -1, 14 = -2
/// zNear zFar / (zFar - zNear), as gluPerspective defines it. Where aspect, sin h or zFar - zNear
/// is 0, m is left as it was.
KELO_EXPORT void Matrix_applyPerspective(Matrix *m, float fovYInDegrees, float aspect, float zNear,
                                         float zFar);
[[nodiscard]] KELO_EXPORT Matrix Matrix_perspective(Matrix m, float fovYInDegrees, float aspect,
                                                    float zNear, float zFar);

/// The orthographic projection of the box of these bounds, as glOrtho defines it. Equal bounds are
/// not checked: they divide by 0 and yield infinities or NaNs.
KELO_EXPORT void Matrix_applyOrtho(Matrix *m, float left, float right, float bottom, float top,
                                   float zNear, float zFar);
[[nodiscard]] KELO_EXPORT Matrix Matrix_ortho(Matrix m, float left, float right, float bottom,
                                              float top, float zNear, float zFar);

// Transpose, determinant, inverse

KELO_EXPORT void Matrix_transpose(Matrix *m);
[[nodiscard]] KELO_EXPORT Matrix Matrix_transposed(Matrix m);

/// The determinant, by cofactor expansion.
[[nodiscard]] KELO_EXPORT float Matrix_determinant(const Matrix &m);

/// The determinant of the 3x3 matrix that is left when the row and the column of one element are
/// left out, without the cofactor's sign. elementIndex is 0 ... 15.
[[nodiscard]] KELO_EXPORT float Matrix_subdeterminant(std::size_t elementIndex, const Matrix &m);

/// The inverse, as the adjugate divided by the determinant: the element at row c, column r is
/// (-1)^(r + c) * Matrix_subdeterminant of the element at row r, column c, divided by
/// Matrix_determinant. A singular matrix is not refused: it yields infinities or NaNs.
KELO_EXPORT void Matrix_invert(Matrix *m);
[[nodiscard]] KELO_EXPORT Matrix Matrix_inverted(const Matrix &m);

/// Element-wise m * (1 - t) + right * t. What lies between two rotations is not a rotation: nothing
/// is made orthogonal again. t is not limited to 0 ... 1.
KELO_EXPORT void Matrix_interpolate(Matrix *m, const Matrix &right, float t);
[[nodiscard]] KELO_EXPORT Matrix Matrix_interpolated(Matrix m, const Matrix &right, float t);

// Sending vectors through a matrix

/// (x, y, 0, 1) through m, the first two components of the result. No division by w.
[[nodiscard]] KELO_EXPORT Vector2 Matrix_multiplyVector2(const Matrix &m, Vector2 v);
/// (x, y, z, 1) through m, the first three components of the result. No division by w, also where m
/// holds a perspective.
[[nodiscard]] KELO_EXPORT Vector3 Matrix_multiplyVector3(const Matrix &m, Vector3 v);
[[nodiscard]] KELO_EXPORT Vector4 Matrix_multiplyVector4(const Matrix &m, Vector4 v);

/// The same with w = 0: the translation does not count. Scaling and shears do.
[[nodiscard]] KELO_EXPORT Vector2 Matrix_multiplyVector2_rotationOnly(const Matrix &m, Vector2 v);
[[nodiscard]] KELO_EXPORT Vector3 Matrix_multiplyVector3_rotationOnly(const Matrix &m, Vector3 v);

// Inline for speed

inline Matrix Matrix_multiplied(const Matrix &m, const Matrix &n)
{
    // Whole columns at a time, so that compilers keep each of them in one vector register.
    Matrix product;
    const auto multiplyColumn = [&](std::size_t first) {
        const float *factors = n.m + first;
        for (std::size_t row = 0; row < 4; ++row)
            product.m[first + row] = m.m[row] * factors[0] + m.m[4 + row] * factors[1] +
                                     m.m[8 + row] * factors[2] + m.m[12 + row] * factors[3];
    };
    multiplyColumn(0);
    multiplyColumn(4);
    multiplyColumn(8);
    multiplyColumn(12);
    return product;
}

inline void Matrix_multiply(Matrix *m, const Matrix &n)
{
    *m = Matrix_multiplied(*m, n);
}

} // namespace kelo
