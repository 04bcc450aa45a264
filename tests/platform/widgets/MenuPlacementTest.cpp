#include "platform/widgets/MenuPlacement.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

/// 1000 points wide, 800 high; a menu of 200 by 300.
const Rect screen{{0.0, 0.0}, {1000.0, 800.0}};
const Size menu{200.0, 300.0};

Rect place(const Point &pointer, const Size &size = menu, const Rect &area = screen)
{
    return placeOfMenu(pointer, size, area, false);
}

bool isInside(const Rect &inner, const Rect &outer)
{
    return inner.origin.x >= outer.origin.x && inner.origin.y >= outer.origin.y &&
           inner.origin.x + inner.size.width <= outer.origin.x + outer.size.width &&
           inner.origin.y + inner.size.height <= outer.origin.y + outer.size.height;
}

} // namespace

TEST(MenuPlacement, aMenuOpensToTheRightOfThePointerAndBelow)
{
    EXPECT_EQ(place({100.0, 200.0}), (Rect{{101.0, 201.0}, menu}));
    EXPECT_EQ(place({799.0, 499.0}), (Rect{{800.0, 500.0}, menu})) << "up to the corner";
}

TEST(MenuPlacement, atTheEdgesItOpensOnTheOtherSide)
{
    EXPECT_EQ(place({800.0, 200.0}), (Rect{{600.0, 201.0}, menu})) << "right";
    EXPECT_EQ(place({100.0, 500.0}), (Rect{{101.0, 200.0}, menu})) << "below";
    EXPECT_EQ(place({999.0, 799.0}), (Rect{{799.0, 499.0}, menu})) << "both";
    EXPECT_EQ(placeOfMenu({500.0, 200.0}, menu, screen, true), (Rect{{300.0, 201.0}, menu}));
    EXPECT_EQ(placeOfMenu({199.0, 200.0}, menu, screen, true), (Rect{{200.0, 201.0}, menu}));
}

TEST(MenuPlacement, aMenuTooHighForEitherSideOpensBesideThePointer)
{
    const Size high{200.0, 500.0};
    EXPECT_EQ(place({300.0, 400.0}, high), (Rect{{301.0, 300.0}, high}));
    const Size higherThanTheScreen{200.0, 900.0};
    EXPECT_EQ(place({300.0, 400.0}, higherThanTheScreen), (Rect{{301.0, 0.0}, {200.0, 800.0}}));
}

TEST(MenuPlacement, aMenuTooWideForEitherSideOpensBelowOrAbove)
{
    const Size wide{600.0, 300.0};
    EXPECT_EQ(place({500.0, 100.0}, wide), (Rect{{400.0, 101.0}, wide}));
    EXPECT_EQ(place({500.0, 700.0}, wide), (Rect{{400.0, 400.0}, wide}));
}

TEST(MenuPlacement, whereNoSideHasRoomTheMenuGetsLower)
{
    const Size large{600.0, 700.0};
    EXPECT_EQ(place({500.0, 300.0}, large), (Rect{{400.0, 301.0}, {600.0, 499.0}}));
    EXPECT_EQ(place({500.0, 500.0}, large), (Rect{{400.0, 0.0}, {600.0, 500.0}}));
}

TEST(MenuPlacement, aPointerOutsideOfTheAreaGetsItsMenuInside)
{
    const Rect area{{50.0, 40.0}, {900.0, 700.0}};
    for (const Point pointer : {Point{10.0, 10.0}, {990.0, 10.0}, {10.0, 790.0}, {990.0, 790.0}}) {
        const Rect found = place(pointer, menu, area);
        EXPECT_TRUE(isInside(found, area)) << pointer.x << ' ' << pointer.y;
        EXPECT_EQ(found.size, menu);
    }
}

TEST(MenuPlacement, noMenuIsOverThePointerOrOutsideOfTheArea)
{
    const Rect area{{20.0, 30.0}, {400.0, 300.0}};
    for (double width = 40.0; width <= 400.0; width += 60.0)
        for (double height = 20.0; height <= 500.0; height += 48.0)
            for (double x = 20.0; x < 420.0; x += 7.0)
                for (double y = 30.0; y < 330.0; y += 7.0) {
                    const Rect found = place({x, y}, {width, height}, area);
                    ASSERT_FALSE(found.contains({x, y}))
                        << width << ' ' << height << " at " << x << ' ' << y;
                    ASSERT_TRUE(isInside(found, area))
                        << width << ' ' << height << " at " << x << ' ' << y;
                }
}

TEST(MenuPlacement, aSubmenuIsBesideItsRow)
{
    const Rect row{{300.0, 250.0}, {150.0, 20.0}};
    EXPECT_EQ(placeOfSubmenu(row, menu, screen, false), (Rect{{450.0, 250.0}, menu}));
    EXPECT_EQ(placeOfSubmenu(row, menu, screen, true), (Rect{{100.0, 250.0}, menu}));
    const Rect lastRow{{850.0, 780.0}, {150.0, 20.0}};
    EXPECT_EQ(placeOfSubmenu(lastRow, menu, screen, false), (Rect{{650.0, 500.0}, menu}));
}

TEST(MenuPlacement, aSubmenuWithoutRoomBesideItsRowIsOverTheMenu)
{
    const Rect area{{0.0, 0.0}, {300.0, 200.0}};
    const Rect row{{80.0, 50.0}, {150.0, 20.0}};
    EXPECT_EQ(placeOfSubmenu(row, menu, area, false), (Rect{{100.0, 0.0}, {200.0, 200.0}}));
}
