#include "viewer/PickPoints.h"

#include <gtest/gtest.h>

#include <vector>

using viewer::innermostPixel;

namespace {

/// A picture of identifiers from rows of digits, the bottom row first.
std::vector<std::uint32_t> picture(const std::vector<std::string> &rows)
{
    std::vector<std::uint32_t> identifiers;
    for (const std::string &row : rows) {
        for (const char digit : row)
            identifiers.push_back(static_cast<std::uint32_t>(digit - '0'));
    }
    return identifiers;
}

TEST(PickPoints, theInnermostPixelOfASquareIsItsMiddle)
{
    const auto pixel = innermostPixel(picture({"0000000",   //
                                               "0111110",   //
                                               "0111110",   //
                                               "0111110",   //
                                               "0111110",   //
                                               "0111110",   //
                                               "0000000"}), //
                                      7, 7, 1);
    ASSERT_TRUE(pixel);
    EXPECT_EQ(pixel->column, 3);
    EXPECT_EQ(pixel->row, 3);
}

TEST(PickPoints, theWiderPartOfAnAreaCounts)
{
    const auto pixel = innermostPixel(picture({"2220000000",   //
                                               "2220000000",   //
                                               "2222222222",   //
                                               "0000000000"}), //
                                      10, 4, 2);
    ASSERT_TRUE(pixel);
    EXPECT_EQ(pixel->column, 1);
    EXPECT_EQ(pixel->row, 1);
}

TEST(PickPoints, theEdgeOfThePictureCountsAsOutside)
{
    const auto pixel = innermostPixel(picture({"111", "111", "111"}), 3, 3, 1);
    ASSERT_TRUE(pixel);
    EXPECT_EQ(pixel->column, 1);
    EXPECT_EQ(pixel->row, 1);
}

TEST(PickPoints, aSinglePixelIsFound)
{
    const auto pixel = innermostPixel(picture({"000", "003", "000"}), 3, 3, 3);
    ASSERT_TRUE(pixel);
    EXPECT_EQ(pixel->column, 2);
    EXPECT_EQ(pixel->row, 1);
}

TEST(PickPoints, whatIsNotThereHasNoPixel)
{
    EXPECT_FALSE(innermostPixel(picture({"00", "00"}), 2, 2, 7));
}

} // namespace
