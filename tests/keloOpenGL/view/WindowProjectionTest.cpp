#include "keloOpenGL/view/WindowProjection.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace kelo;

Matrix identityMatrix()
{
    Matrix matrix;
    Matrix_loadIdentity(&matrix);
    return matrix;
}

/// World units are pixels of a window of 100 by 80.
WindowProjection pixelWindow()
{
    return WindowProjection(
        {0, 0, 100, 80}, Matrix_ortho(identityMatrix(), 0.0f, 100.0f, 0.0f, 80.0f, -100.0f, 100.0f),
        identityMatrix());
}

Extents flatBox(double xMin, double xMax, double yMin, double yMax)
{
    MutableExtents extents;
    extents.absorb(xMin, yMin, 0.0);
    extents.absorb(xMax, yMax, 0.0);
    return Extents(extents);
}

TEST(WindowProjection, aBoxCoversItsPixelsAndTheirNeighbours)
{
    // x 20.5 to 30.5 lies in the columns 20 to 30, y 40.5 to 50.5 in the rows 40 to 50.
    const auto pixels =
        pixelWindow().pixelsOf(flatBox(20.5, 30.5, 40.5, 50.5), 0.0, identityMatrix());
    EXPECT_EQ(pixels, (PixelRect{19, 39, 13, 13}));
}

TEST(WindowProjection, aMarginAndATransformCount)
{
    const Matrix moved = Matrix_translated(identityMatrix(), 10.0f, -5.0f, 0.0f);
    const auto pixels = pixelWindow().pixelsOf(flatBox(20.5, 30.5, 40.5, 50.5), 2.0, moved);
    EXPECT_EQ(pixels, (PixelRect{27, 32, 17, 17}));
}

TEST(WindowProjection, whatIsOutsideTheWindowIsToldToo)
{
    const auto pixels =
        pixelWindow().pixelsOf(flatBox(-50.5, -40.5, 90.5, 95.5), 0.0, identityMatrix());
    EXPECT_EQ(pixels, (PixelRect{-52, 89, 13, 8}));
}

TEST(WindowProjection, perspectivesAndNoNumbersAreNotKnown)
{
    Matrix perspective = identityMatrix();
    perspective.m[11] = -1.0f;
    const Extents some = flatBox(0.0, 1.0, 0.0, 1.0);
    EXPECT_EQ(pixelWindow().pixelsOf(some, 0.0, perspective), std::nullopt);
    EXPECT_FALSE(pixelWindow().spansOf(some, 0.0, perspective).has_value());
    Matrix noNumbers = identityMatrix();
    noNumbers.m[12] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(pixelWindow().pixelsOf(some, 0.0, noNumbers), std::nullopt);
}

TEST(WindowProjection, rectanglesAreUnited)
{
    const PixelRect a{10, 20, 5, 5};
    EXPECT_EQ(united(a, {12, 10, 10, 2}), (PixelRect{10, 10, 12, 15}));
    EXPECT_EQ(united(a, {}), a);
    EXPECT_EQ(united({}, a), a);
}

} // namespace
