#include "keloOpenGL/treatment/WindowProjection.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace kelo;

Matrix identity()
{
    Matrix matrix;
    Matrix_loadIdentity(&matrix);
    return matrix;
}

/// World units are pixels of a window of 100 by 80.
WindowProjection pixelProjection()
{
    return WindowProjection({0, 0, 100, 80},
                            Matrix_ortho(identity(), 0.0f, 100.0f, 0.0f, 80.0f, -100.0f, 100.0f),
                            identity());
}

Extents box(double xMin, double xMax, double yMin, double yMax)
{
    MutableExtents extents;
    extents.absorb(xMin, yMin, 0.0);
    extents.absorb(xMax, yMax, 0.0);
    return Extents(extents);
}

TEST(WindowProjection, aBoxCoversItsPixelsAndTheirNeighbours)
{
    // x 20.5 to 30.5 lies in the columns 20 to 30, y 40.5 to 50.5 in the rows 40 to 50.
    const auto pixels = pixelProjection().pixelsOf(box(20.5, 30.5, 40.5, 50.5), 0.0, identity());
    EXPECT_EQ(pixels, (PixelRect{19, 39, 13, 13}));
}

TEST(WindowProjection, aMarginAndATransformCount)
{
    const Matrix moved = Matrix_translated(identity(), 10.0f, -5.0f, 0.0f);
    const auto pixels = pixelProjection().pixelsOf(box(20.5, 30.5, 40.5, 50.5), 2.0, moved);
    EXPECT_EQ(pixels, (PixelRect{27, 32, 17, 17}));
}

TEST(WindowProjection, whatIsOutsideTheWindowIsToldToo)
{
    const auto pixels = pixelProjection().pixelsOf(box(-50.5, -40.5, 90.5, 95.5), 0.0, identity());
    EXPECT_EQ(pixels, (PixelRect{-52, 89, 13, 8}));
}

TEST(WindowProjection, perspectivesAndNoNumbersAreNotKnown)
{
    Matrix perspective = identity();
    perspective.m[11] = -1.0f;
    const Extents some = box(0.0, 1.0, 0.0, 1.0);
    EXPECT_EQ(pixelProjection().pixelsOf(some, 0.0, perspective), std::nullopt);
    EXPECT_FALSE(pixelProjection().spansOf(some, 0.0, perspective).has_value());
    Matrix noNumbers = identity();
    noNumbers.m[12] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(pixelProjection().pixelsOf(some, 0.0, noNumbers), std::nullopt);
}

TEST(WindowProjection, rectanglesAreUnited)
{
    const PixelRect a{10, 20, 5, 5};
    EXPECT_EQ(united(a, {12, 10, 10, 2}), (PixelRect{10, 10, 12, 15}));
    EXPECT_EQ(united(a, {}), a);
    EXPECT_EQ(united({}, a), a);
}

} // namespace
