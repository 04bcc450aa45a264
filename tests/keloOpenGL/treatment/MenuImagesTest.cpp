// The pictures of the menus' rows, pixel for pixel where their drawing fixes it.

#include "keloOpenGL/treatment/MenuImages.h"

#include "platform/VersionChecker.h"

#include <QColor>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

using namespace kelo;

namespace {

/// The pixel at a point, counted in points from the bottom left.
QColor at(const QImage &image, double x, double y)
{
    const double scale = image.devicePixelRatio();
    const int column = static_cast<int>(std::floor(x * scale));
    const int row = image.height() - 1 - static_cast<int>(std::floor(y * scale));
    return image.pixelColor(column, row);
}

QSizeF pointsOf(const MenuImagePointer &image)
{
    return image->deviceIndependentSize();
}

void expectNear(const QColor &actual, double red, double green, double blue,
                double tolerance = 0.02)
{
    EXPECT_NEAR(actual.redF(), red, tolerance);
    EXPECT_NEAR(actual.greenF(), green, tolerance);
    EXPECT_NEAR(actual.blueF(), blue, tolerance);
    EXPECT_NEAR(actual.alphaF(), 1.0, 0.01);
}

bool isTransparent(const QColor &color)
{
    return color.alpha() == 0;
}

/// How far along the radial gradient of a 24 x 24 swatch at the origin a point lies: from the
/// centre (12 - 0.75 * 12, 12 + 0.75 * 12) to the corner that is furthest away, (24, 0).
double swatchParameter(double x, double y)
{
    return std::hypot(x - 3.0, y - 21.0) / std::hypot(21.0, 21.0);
}

TEST(MenuImages, theirSizes)
{
    const Color red(1.0, 0.0, 0.0, 1.0);
    EXPECT_EQ(pointsOf(colorMenuItemImage(red)), QSizeF(24, 24));
    EXPECT_EQ(pointsOf(doubleColorMenuItemImage(red)), QSizeF(29, 29));
    EXPECT_EQ(pointsOf(addMenuItemImage()), QSizeF(24, 24));
    EXPECT_EQ(pointsOf(placeAllMenuItemImage()), QSizeF(29, 29));
    EXPECT_EQ(pointsOf(removeMenuItemImage()), QSizeF(24, 24));
    EXPECT_EQ(pointsOf(doubleRemoveMenuItemImage()), QSizeF(29, 29));
    ASSERT_NE(pencilMenuItemImage(), nullptr);
    EXPECT_EQ(pointsOf(pencilMenuItemImage()), QSizeF(24, 24));
}

TEST(MenuImages, aSwatchGoesFromTheLightenedToTheDarkenedColour)
{
    const auto image = colorMenuItemImage(Color(0.8, 0.4, 0.0, 1.0));
    // Blended 0.625 with white, and 0.25 with black.
    const double light[] = {0.8 * 0.375 + 0.625, 0.4 * 0.375 + 0.625, 0.625};
    const double dark[] = {0.6, 0.3, 0.0};
    for (const auto &[x, y] :
         {std::pair{3.25, 21.25}, {12.25, 12.25}, {21.25, 3.25}, {3.25, 3.25}, {21.25, 21.25}}) {
        const double p = swatchParameter(x, y);
        expectNear(at(*image, x, y), light[0] + p * (dark[0] - light[0]),
                   light[1] + p * (dark[1] - light[1]), light[2] + p * (dark[2] - light[2]));
    }
}

TEST(MenuImages, aSwatchHasAFrameOfOnePointInsideItsRectangle)
{
    const auto image = colorMenuItemImage(Color(1.0, 1.0, 1.0, 1.0));
    for (const auto &[x, y] : {std::pair{0.25, 12.0},
                               {0.75, 12.0},
                               {23.25, 12.0},
                               {23.75, 12.0},
                               {12.0, 0.25},
                               {12.0, 23.75},
                               {0.25, 0.25},
                               {23.75, 23.75}})
        expectNear(at(*image, x, y), 0.125, 0.125, 0.125);
    EXPECT_GT(at(*image, 1.25, 12.0).redF(), 0.5) << "inside the frame";
}

TEST(MenuImages, theSecondSwatchOfADoubleOneLiesOverTheFirst)
{
    const auto image = doubleColorMenuItemImage(Color(1.0, 0.0, 0.0, 1.0));
    // The first at (0, 5), the second at (5, 0), 24 points each.
    expectNear(at(*image, 0.25, 17.0), 0.125, 0.125, 0.125);
    expectNear(at(*image, 12.0, 28.75), 0.125, 0.125, 0.125);
    expectNear(at(*image, 5.25, 12.0), 0.125, 0.125, 0.125);
    expectNear(at(*image, 28.75, 12.0), 0.125, 0.125, 0.125);
    expectNear(at(*image, 17.0, 23.75), 0.125, 0.125, 0.125);
    EXPECT_GT(at(*image, 23.25, 12.0).redF(), 0.5) << "the first one's right edge is covered";
    EXPECT_TRUE(isTransparent(at(*image, 1.0, 1.0)));
    EXPECT_TRUE(isTransparent(at(*image, 28.0, 28.0)));
}

TEST(MenuImages, thePlusIsGreenWithABlackEdgeAndNothingInItsCorners)
{
    const auto image = addMenuItemImage();
    // The gradient's centre, (12 - 0.3333 * 11.5, 12 + 0.3333 * 11.5), lies just outside the plus;
    // this point lies 2.24 of 21.7 points away from it, a fifth of the way to the middle colour.
    const double p = std::hypot(1.583, 1.583) / std::hypot(15.333, 15.333) / 0.5;
    expectNear(at(*image, 9.75, 14.25), 0.625 - p * 0.25, 1.0 - p * 0.125, 0.75 - p * 0.34375,
               0.02);
    const QColor middle = at(*image, 12.0, 12.0);
    EXPECT_GT(middle.greenF(), 0.85f);
    EXPECT_LT(middle.redF(), 0.65f);
    const QColor rim = at(*image, 22.5, 10.0);
    EXPECT_LT(rim.redF(), middle.redF());
    expectNear(at(*image, 0.75, 12.0), 0.0, 0.0, 0.0);
    expectNear(at(*image, 23.25, 12.0), 0.0, 0.0, 0.0);
    expectNear(at(*image, 12.0, 0.75), 0.0, 0.0, 0.0);
    for (const auto &[x, y] : {std::pair{4.0, 4.0}, {4.0, 20.0}, {20.0, 4.0}, {20.0, 20.0}})
        EXPECT_TRUE(isTransparent(at(*image, x, y))) << x << ", " << y;
}

TEST(MenuImages, theCrossIsOrangeAndStandsOnItsCorners)
{
    const auto image = removeMenuItemImage();
    // Inside the polygon, 1.5 times (8, 8), (3, 13) and (13, 3).
    for (const auto &[x, y] : {std::pair{12.0, 12.0}, {5.25, 20.25}, {19.5, 4.5}, {4.5, 3.0}}) {
        const QColor color = at(*image, x, y);
        EXPECT_GT(color.redF(), 0.8f) << x << ", " << y;
        EXPECT_LT(color.blueF(), 0.3f) << x << ", " << y;
        EXPECT_EQ(color.alpha(), 255) << x << ", " << y;
    }
    // Between the arms: 1.5 times (8, 1), (1, 9) and (15, 9).
    for (const auto &[x, y] : {std::pair{12.0, 1.5}, {1.5, 13.0}, {22.5, 13.5}, {12.0, 22.5}})
        EXPECT_TRUE(isTransparent(at(*image, x, y))) << x << ", " << y;
}

TEST(MenuImages, theSecondCrossLiesFivePointsToTheRightAndBelow)
{
    const auto image = doubleRemoveMenuItemImage();
    EXPECT_EQ(at(*image, 5.25, 25.25).alpha(), 255) << "an arm of the first";
    EXPECT_EQ(at(*image, 10.25, 20.25).alpha(), 255) << "the same arm of the second";
    EXPECT_EQ(at(*image, 17.0, 12.0).alpha(), 255) << "the middle of the second";
    EXPECT_TRUE(isTransparent(at(*image, 2.0, 2.0)));
    EXPECT_TRUE(isTransparent(at(*image, 27.0, 27.0)));
}

TEST(MenuImages, placingAllHasASinglePlusOnNewerDesktops)
{
    ASSERT_TRUE(VersionChecker::isMountainLionOrLater());
    const auto image = placeAllMenuItemImage();
    const auto plus = addMenuItemImage();
    for (double y = 0.25; y < 29.0; y += 0.5) {
        for (double x = 0.25; x < 29.0; x += 0.5) {
            const QColor expected = x < 24.0 && y < 24.0 ? at(*plus, x, y) : QColor(0, 0, 0, 0);
            ASSERT_EQ(at(*image, x, y), expected) << x << ", " << y;
        }
    }
}

TEST(MenuImages, placingAllHasTwoPlussesOnOlderDesktops)
{
    VersionChecker::setGeneration(VersionChecker::Generation::Lion);
    const auto image = placeAllMenuItemImage();
    VersionChecker::setGeneration(VersionChecker::Generation::MountainLion);
    EXPECT_EQ(pointsOf(image), QSizeF(29, 29));
    // The first moved up by 5, the second to the right by 5.
    EXPECT_EQ(at(*image, 2.0, 17.0).alpha(), 255);
    EXPECT_EQ(at(*image, 12.0, 27.0).alpha(), 255);
    EXPECT_EQ(at(*image, 27.0, 12.0).alpha(), 255);
    EXPECT_EQ(at(*image, 17.0, 2.0).alpha(), 255);
    expectNear(at(*image, 5.75, 12.0), 0.0, 0.0, 0.0);
    EXPECT_TRUE(isTransparent(at(*image, 2.0, 2.0)));
    EXPECT_TRUE(isTransparent(at(*image, 27.0, 27.0)));
}

TEST(MenuImages, theOtherImagesAreTheSameOnOlderDesktops)
{
    const Color color(0.2, 0.6, 0.9, 1.0);
    const QImage swatch = *colorMenuItemImage(color);
    const QImage swatches = *doubleColorMenuItemImage(color);
    const QImage plus = *addMenuItemImage();
    const QImage cross = *removeMenuItemImage();
    const QImage crosses = *doubleRemoveMenuItemImage();
    VersionChecker::setGeneration(VersionChecker::Generation::Lion);
    EXPECT_EQ(*colorMenuItemImage(color), swatch);
    EXPECT_EQ(*doubleColorMenuItemImage(color), swatches);
    EXPECT_EQ(*addMenuItemImage(), plus);
    EXPECT_EQ(*removeMenuItemImage(), cross);
    EXPECT_EQ(*doubleRemoveMenuItemImage(), crosses);
    VersionChecker::setGeneration(VersionChecker::Generation::MountainLion);
}

TEST(MenuImages, thePaintersDrawInPointsFromTheBottomLeft)
{
    QImage picture(24, 24, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.translate(0.0, 24.0);
    painter.scale(1.0, -1.0);
    drawRemoveMenuItemImage(painter);
    painter.end();
    // At one pixel a point: the long arm reaches (18, 0) from the bottom.
    EXPECT_EQ(at(picture, 4.5, 3.5).alpha(), 255);
    EXPECT_TRUE(isTransparent(at(picture, 12.0, 22.5)));
}

} // namespace
