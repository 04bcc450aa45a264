#include "keloOpenGL/overlay/OverlayTools.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace kelo;

constexpr OverlayLayout layoutOfTools{800.0f / 600.0f};
constexpr OverlayPictureSizes pictureSizes{{{128, 64}, {128, 64}, {192, 192}}};

Point middleOf(const OverlayTool &tool)
{
    const Rect rect = tool.rect(layoutOfTools, pictureSizes);
    return {rect.origin.x + rect.size.width / 2, rect.origin.y + rect.size.height / 2};
}

TEST(OverlayTools, everyRowIsAtItsNumber)
{
    ASSERT_EQ(overlayTools().size(), overlayToolCount);
    for (std::size_t i = 0; i < overlayToolCount; ++i) {
        EXPECT_EQ(overlayTools()[i].id, static_cast<OverlayToolID>(i));
        EXPECT_EQ(&overlayTool(static_cast<OverlayToolID>(i)), &overlayTools()[i]);
    }
}

TEST(OverlayTools, everyToolHasAPictureAModeAndAToolTipOfItsOwn)
{
    std::set<std::string> pictures;
    std::set<std::optional<long>> modes;
    std::set<std::string> toolTips;
    for (const OverlayTool &tool : overlayTools()) {
        pictures.insert(tool.picture);
        modes.insert(tool.mouseMode);
        toolTips.insert(tool.toolTip);
        EXPECT_EQ(tool.mouseMode.has_value(), tool.selectedPicture != nullptr)
            << "a button is never selected";
    }
    EXPECT_EQ(pictures.size(), overlayToolCount);
    EXPECT_EQ(modes.size(), overlayToolCount);
    EXPECT_EQ(toolTips.size(), overlayToolCount);
}

TEST(OverlayTools, aToolIsFoundByItsName)
{
    std::vector<std::string> names;
    for (const OverlayTool &tool : overlayTools()) {
        names.push_back(tool.name);
        EXPECT_EQ(overlayToolNamed(tool.name), &tool);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"elastics", "bracket", "print"}));
    EXPECT_EQ(overlayToolNamed("Print"), nullptr);
    EXPECT_EQ(overlayToolNamed(""), nullptr);
}

TEST(OverlayTools, aToolIsWhereTheLayoutHasIt)
{
    EXPECT_EQ(overlayTool(OverlayToolID::Elastics).rect(layoutOfTools, pictureSizes),
              layoutOfTools.elasticsToolRect({128, 64}));
    EXPECT_EQ(overlayTool(OverlayToolID::Brackets).rect(layoutOfTools, pictureSizes),
              layoutOfTools.bracketColorToolRect({128, 64}, {128, 64}));
    EXPECT_EQ(overlayTool(OverlayToolID::Print).rect(layoutOfTools, pictureSizes),
              layoutOfTools.printButtonRect({192, 192}));
}

TEST(OverlayTools, aToolIsFoundInItsMiddle)
{
    for (const OverlayTool &tool : overlayTools())
        EXPECT_EQ(overlayToolAt(middleOf(tool), layoutOfTools, pictureSizes, true), &tool);
    EXPECT_EQ(overlayToolAt({0.0, 0.0}, layoutOfTools, pictureSizes, true), nullptr);
}

TEST(OverlayTools, whatChangesTheTreatmentIsThereOnlyWhileThatIsAllowed)
{
    for (const OverlayTool &tool : overlayTools()) {
        const OverlayTool *found =
            overlayToolAt(middleOf(tool), layoutOfTools, pictureSizes, false);
        EXPECT_EQ(found, tool.id == OverlayToolID::Print ? &tool : nullptr);
    }
}

TEST(OverlayTools, theButtonDrawnLastIsTheOneThatIsPressed)
{
    // A print picture eight times as high as wide reaches over the tools above it.
    const OverlayPictureSizes tall{{{128, 64}, {128, 64}, {10, 80}}};
    const Point point = middleOf(overlayTool(OverlayToolID::Elastics));
    ASSERT_TRUE(overlayTool(OverlayToolID::Print).rect(layoutOfTools, tall).contains(point));
    EXPECT_EQ(overlayToolAt(point, layoutOfTools, tall, true), &overlayTool(OverlayToolID::Print));
}

TEST(OverlayTools, withoutPicturesThereAreNoTools)
{
    for (const OverlayTool &tool : overlayTools())
        EXPECT_EQ(overlayToolAt(middleOf(tool), layoutOfTools, {}, true), nullptr);
}

TEST(OverlayPoint, theMiddleIsTheOriginAndTheTopEdgeOne)
{
    EXPECT_EQ(overlayPoint({400.0, 300.0}, {800.0, 600.0}), (Point{0.0, 0.0}));
    EXPECT_EQ(overlayPoint({400.0, 600.0}, {800.0, 600.0}), (Point{0.0, 1.0}));
    EXPECT_EQ(overlayPoint({0.0, 0.0}, {600.0, 600.0}), (Point{-1.0, -1.0}));
}

} // namespace
