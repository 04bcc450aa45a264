#include "viewer/script/PickPoints.h"

#include "tests/viewer/support/ScriptFixture.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

using viewer::innermostPixel;

namespace {

class ClickablePoints : public viewer::test::ScriptFixture
{};

/// The tools are at the top right: there are the front teeth then, smaller than a tool.
constexpr const char *zoomsToTheTools[] = {"zoom -64 0 -48 0\n", "zoom -60 4 -46 2\n",
                                           "zoom -56 8 -44 4\n", "zoom -56 8 -46 2\n"};

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

TEST_F(ClickablePoints, aToolCoversWhatIsBehindItsWholeRectangleAsLongAsItIsThere)
{
    const kelo::Rect tool = viewer::overlayRectInView(view->elasticsToolRect(), *view);
    const auto pointOn = [this](const kelo::DXGLightweightModel &tooth) {
        return viewer::clickablePoint(*view, tooth.uniqueID());
    };
    std::set<std::string> behindTheTool;
    for (const char *zoom : zoomsToTheTools) {
        play(zoom);
        for (const auto &[key, tooth] : document().toothModels()) {
            play("date 2026-01-01\n"); // only the print button is there then
            const auto uncovered = pointOn(*tooth);
            if (!uncovered || !tool.contains(*uncovered)) continue;
            behindTheTool.insert(key);
            play("date today\n");
            const auto covered = pointOn(*tooth);
            EXPECT_FALSE(covered && tool.contains(*covered)) << key << " at " << zoom;
        }
    }
    EXPECT_FALSE(behindTheTool.empty());
    EXPECT_NO_GL_ERROR();
}

TEST(OverlayRects, aRectangleOfTheOverlayIsScaledByHalfTheHeightFromTheMiddle)
{
    const kelo::test::TestSurface surface(kelo::SurfaceKind::Surfaceless);
    const auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {200.0, 100.0}});
    EXPECT_EQ(viewer::overlayRectInView({{-2.0, -1.0}, {4.0, 2.0}}, *view),
              (kelo::Rect{{0.0, 0.0}, {200.0, 100.0}}));
    EXPECT_EQ(viewer::overlayRectInView({{0.5, 0.25}, {0.5, 0.25}}, *view),
              (kelo::Rect{{125.0, 62.5}, {25.0, 12.5}}));
}

} // namespace
