// The pictures of the rows on screens of different fineness, in a program that at first has none.

#include "keloOpenGL/menus/MenuImages.h"

#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace kelo;

TEST(MenuImageScale, anotherFinenessOfTheScreensHasPicturesOfItsOwn)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    const Color red{1.0, 0.0, 0.0, 1.0};
    const auto coarse = colorMenuItemImage(red);
    EXPECT_EQ(coarse->size(), QSize(48, 48)) << "two pixels a point without screens";
    const auto coarsePlus = addMenuItemImage();

    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "2.5");
    int argumentCount = 1;
    char name[] = "menus";
    char *arguments[] = {name, nullptr};
    std::optional<QGuiApplication> application(std::in_place, argumentCount, arguments);
    ASSERT_EQ(qGuiApp->devicePixelRatio(), 2.5);
    const auto fine = colorMenuItemImage(red);
    EXPECT_EQ(fine->size(), QSize(72, 72)) << "three, rounded up";
    EXPECT_EQ(fine->devicePixelRatio(), 3.0);
    EXPECT_EQ(addMenuItemImage()->size(), QSize(72, 72));
    EXPECT_EQ(placeAllMenuItemImage()->size(), QSize(87, 87));
    EXPECT_EQ(colorMenuItemImage(red), fine) << "kept for the next menu";

    application.reset();
    EXPECT_EQ(colorMenuItemImage(red), coarse) << "both are kept";
    EXPECT_EQ(addMenuItemImage(), coarsePlus);
}

} // namespace
