// The pictures of the menus' rows, pixel for pixel where their drawing fixes it.

#include "keloOpenGL/menus/MenuImages.h"

#include "models/BundleKey.h"
#include "platform/settings/ResourceBundle.h"
#include "platform/settings/SystemGeneration.h"
#include "platform/settings/VersionChecker.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
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
    setSystemGeneration(SystemGeneration::Lion);
    const auto image = placeAllMenuItemImage();
    setSystemGeneration(SystemGeneration::MountainLion);
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
    setSystemGeneration(SystemGeneration::Lion);
    EXPECT_EQ(*colorMenuItemImage(color), swatch);
    EXPECT_EQ(*doubleColorMenuItemImage(color), swatches);
    EXPECT_EQ(*addMenuItemImage(), plus);
    EXPECT_EQ(*removeMenuItemImage(), cross);
    EXPECT_EQ(*doubleRemoveMenuItemImage(), crosses);
    setSystemGeneration(SystemGeneration::MountainLion);
}

/// Draws into so many points with so many pixels each, the y axis up as the drawing expects it.
template<class Drawing>
QImage drawn(int points, int pixelsPerPoint, const Drawing &drawing)
{
    QImage picture(points * pixelsPerPoint, points * pixelsPerPoint,
                   QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixelsPerPoint, -pixelsPerPoint);
    painter.translate(0.0, -points);
    drawing(painter);
    painter.end();
    picture.setDevicePixelRatio(pixelsPerPoint);
    return picture;
}

TEST(MenuImages, theCrossGoesFromPaleToStrongOrange)
{
    const auto image = removeMenuItemImage();
    // The polygon fills 24 x 24 points, so that its gradient lies as a swatch's does.
    for (const auto &[x, y] : {std::pair{12.25, 12.25}, {5.25, 20.25}, {19.5, 4.5}, {4.5, 3.0}}) {
        const double p = swatchParameter(x, y);
        expectNear(at(*image, x, y), 0.875 + p * 0.125, 0.625 - p * 0.25, 0.25 - p * 0.25);
    }
}

TEST(MenuImages, theCrossHasABlackEdgeOfThreeQuartersOfAPoint)
{
    const QImage picture = drawn(24, 20, drawRemoveMenuItemImage);
    // The middle of the edge from 1.5 (3, 0) to 1.5 (9, 6), and the way out of the polygon there.
    const double outwards = 1.0 / std::sqrt(2.0);
    const auto beside = [&](double distance) {
        return at(picture, 9.0 + distance * outwards, 4.5 - distance * outwards);
    };
    for (const double distance : {-0.3, 0.0, 0.3})
        expectNear(beside(distance), 0.0, 0.0, 0.0);
    EXPECT_TRUE(isTransparent(beside(0.5)));
    EXPECT_GT(beside(-0.5).redF(), 0.8f);
}

TEST(MenuImages, theFirstOfTwoCrossesStandsFivePointsUpAndTheSecondFiveAside)
{
    const QImage picture = drawn(29, 20, drawDoubleRemoveMenuItemImage);
    // The middle of the edge from 1.5 (0, 3) to 1.5 (3, 0) is at (2.25, 2.25) of a cross.
    const double outwards = -1.0 / std::sqrt(2.0);
    for (const auto &[x, y] : {std::pair{2.25, 7.25}, {7.25, 2.25}}) {
        const auto beside = [&](double distance) {
            return at(picture, x + distance * outwards, y + distance * outwards);
        };
        for (const double distance : {-0.3, 0.0, 0.3})
            expectNear(beside(distance), 0.0, 0.0, 0.0);
        EXPECT_TRUE(isTransparent(beside(0.5))) << x;
        EXPECT_GT(beside(-0.5).redF(), 0.8f) << x;
    }
    // Each has a gradient of its own.
    const double p = swatchParameter(5.25, 20.25);
    for (const auto &[x, y] : {std::pair{5.25, 25.25}, {10.25, 20.25}})
        expectNear(at(picture, x, y), 0.875 + p * 0.125, 0.625 - p * 0.25, 0.25 - p * 0.25);
}

TEST(MenuImages, theTwoPlussesOfOlderDesktopsAreLitFromTwoPlaces)
{
    setSystemGeneration(SystemGeneration::Lion);
    const auto image = placeAllMenuItemImage();
    setSystemGeneration(SystemGeneration::MountainLion);
    const auto expectBetweenTheFirstTwoColors = [&image](double x, double y, double p) {
        ASSERT_LT(p, 0.5);
        const double part = p / 0.5;
        expectNear(at(*image, x, y), 0.625 - part * 0.25, 1.0 - part * 0.125,
                   0.75 - part * 0.34375);
    };
    // 23 points wide and high. The first from (0.5, 5.5): its centre a third of the way to its
    // upper left corner, at (8.167, 20.833), 15.333 points aside of and above the corner opposite.
    expectBetweenTheFirstTwoColors(
        2.25, 17.25, std::hypot(2.25 - 8.167, 17.25 - 20.833) / std::hypot(15.333, 15.333));
    // The second from (5.5, 0.5): three quarters of the way, at (8.375, 20.625).
    expectBetweenTheFirstTwoColors(
        17.25, 12.25, std::hypot(17.25 - 8.375, 12.25 - 20.625) / std::hypot(20.125, 20.125));
}

TEST(MenuImages, everyImageShowsWhatItsDrawingDraws)
{
    const Color color(0.2, 0.6, 0.9, 1.0);
    const int scale = static_cast<int>(addMenuItemImage()->devicePixelRatio());
    EXPECT_EQ(*colorMenuItemImage(color), drawn(24, scale, [&color](QPainter &painter) {
        drawColorMenuItemImageWithColor(painter, color);
    }));
    EXPECT_EQ(*doubleColorMenuItemImage(color), drawn(29, scale, [&color](QPainter &painter) {
        drawDoubleColorMenuItemImageWithColor(painter, color);
    }));
    EXPECT_EQ(*addMenuItemImage(), drawn(24, scale, drawAddMenuItemImage));
    EXPECT_EQ(*placeAllMenuItemImage(), drawn(29, scale, drawAddMenuItemImage));
    EXPECT_EQ(*removeMenuItemImage(), drawn(24, scale, drawRemoveMenuItemImage));
    EXPECT_EQ(*doubleRemoveMenuItemImage(), drawn(29, scale, drawDoubleRemoveMenuItemImage));
    EXPECT_NE(*removeMenuItemImage(), drawn(24, scale, drawAddMenuItemImage));
}

/// The bundle's pencil, read without the library.
QImage pencilOfTheBundle()
{
    const auto bundle = ResourceBundle::bundleWithIdentifier(keloOpenGLBundleKey);
    const auto path = bundle ? bundle->pathForResource_ofType("pencil_edit", "png") : std::nullopt;
    return QImage(QString::fromStdString(path.value_or("")));
}

TEST(MenuImages, thePencilFillsItsImage)
{
    const QImage picture = pencilOfTheBundle();
    ASSERT_FALSE(picture.isNull());
    const auto image = pencilMenuItemImage();
    ASSERT_NE(image, nullptr);
    // The mean opacity of each of 4 x 4 parts is that of the same part of the picture.
    const auto meanAlpha = [](const QImage &of, int column, int row) {
        double sum = 0.0;
        const int width = of.width() / 4;
        const int height = of.height() / 4;
        for (int y = row * height; y < (row + 1) * height; ++y) {
            for (int x = column * width; x < (column + 1) * width; ++x)
                sum += of.pixelColor(x, y).alphaF();
        }
        return sum / (width * height);
    };
    double highest = 0.0;
    double lowest = 1.0;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double expected = meanAlpha(picture, column, row);
            EXPECT_NEAR(meanAlpha(*image, column, row), expected, 0.03) << column << ", " << row;
            highest = std::max(highest, expected);
            lowest = std::min(lowest, expected);
        }
    }
    EXPECT_GT(highest - lowest, 0.3) << "the parts can be told apart";
}

TEST(MenuImages, thePencilIsTheSameOnOlderDesktops)
{
    const QImage pencil = *pencilMenuItemImage();
    setSystemGeneration(SystemGeneration::Lion);
    const auto older = pencilMenuItemImage();
    setSystemGeneration(SystemGeneration::MountainLion);
    ASSERT_NE(older, nullptr);
    EXPECT_EQ(*older, pencil);
}

TEST(MenuImages, aPencilThatIsNoPictureGivesNone)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const auto write = [&folder](const char *name, const QByteArray &content) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    };
    ASSERT_TRUE(write("bundle-identifier", QByteArray::fromStdString(keloOpenGLBundleKey)));
    ASSERT_TRUE(write("pencil_edit.png", "not a picture"));
    ResourceBundle::setSearchFolder(folder.path().toStdString());
    const auto image = pencilMenuItemImage();
    const auto bundle = ResourceBundle::bundleWithIdentifier(keloOpenGLBundleKey);
    ResourceBundle::setSearchFolder("");
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->bundlePath(), folder.path().toStdString());
    EXPECT_EQ(image, nullptr);
}

TEST(MenuImages, anImageIsPaintedOnceForEachColourAndKeptForTheNextMenu)
{
    const Color red{1.0, 0.0, 0.0, 1.0};
    const Color paleRed{1.0, 0.0, 0.0, 0.5};
    EXPECT_EQ(colorMenuItemImage(red), colorMenuItemImage(red)) << "one image, not an equal one";
    EXPECT_EQ(doubleColorMenuItemImage(red), doubleColorMenuItemImage(red));
    EXPECT_NE(*colorMenuItemImage(red), *colorMenuItemImage(paleRed));
    EXPECT_NE(*colorMenuItemImage(red), *colorMenuItemImage(Color::blackColor()));
    EXPECT_NE(colorMenuItemImage(red)->size(), doubleColorMenuItemImage(red)->size());
    EXPECT_EQ(addMenuItemImage(), addMenuItemImage());
    EXPECT_EQ(placeAllMenuItemImage(), placeAllMenuItemImage());
    EXPECT_EQ(removeMenuItemImage(), removeMenuItemImage());
    EXPECT_EQ(doubleRemoveMenuItemImage(), doubleRemoveMenuItemImage());
    EXPECT_EQ(pencilMenuItemImage(), pencilMenuItemImage());

    // A host that never stops inventing colours fills no memory: the first one is painted anew.
    const std::weak_ptr<const QImage> first = colorMenuItemImage(red);
    ASSERT_FALSE(first.expired());
    for (int i = 0; i < 400; ++i)
        colorMenuItemImage(Color{0.0, i / 400.0, 1.0, 1.0});
    EXPECT_TRUE(first.expired());
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
