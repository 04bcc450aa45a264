#include "keloOpenGL/overlay/OverlayLayout.h"

namespace kelo {
namespace {

constexpr float buttonWidth = 0.25f;
constexpr float edgeMargin = 0.0625f;
/// The bracket tool's picture is the simpler one and looks as large when it is smaller.
constexpr float bracketToolWidth = 0.75f;
constexpr double labelTop = 0.875;
constexpr double labelHeight = 0.125;

} // namespace

Rect OverlayLayout::toolRectWithRatio_width_height_yOffset_relativeWidth(float aspect, float width,
                                                                         float height,
                                                                         float yOffset,
                                                                         float relativeWidth)
{
    if (width <= 0.0f || height <= 0.0f) return {};
    const float shownWidth = buttonWidth * relativeWidth;
    const float shownHeight = height * shownWidth / width;
    const float x =
        (1.0f - relativeWidth) * buttonWidth * 0.5f + (aspect - edgeMargin - buttonWidth);
    const float y = 1.0f - edgeMargin - shownHeight - yOffset;
    return {{x, y}, {shownWidth, shownHeight}};
}

Rect OverlayLayout::elasticsToolRect(TextureSize elasticsTool) const
{
    return toolRectWithRatio_width_height_yOffset_relativeWidth(
        aspect, static_cast<float>(elasticsTool.width), static_cast<float>(elasticsTool.height),
        0.0f, 1.0f);
}

Rect OverlayLayout::bracketColorToolRect(TextureSize bracketTool, TextureSize elasticsTool) const
{
    const auto above = static_cast<float>(elasticsToolRect(elasticsTool).size.height);
    return toolRectWithRatio_width_height_yOffset_relativeWidth(
        aspect, static_cast<float>(bracketTool.width), static_cast<float>(bracketTool.height),
        above + edgeMargin, bracketToolWidth);
}

Rect OverlayLayout::printButtonRect(TextureSize printButton) const
{
    if (printButton.width == 0) return {};
    const auto width = static_cast<float>(printButton.width);
    const auto height = static_cast<float>(printButton.height);
    // The bottom edge is to lie a margin above the view's, whatever the proportions are.
    const float yOffset = 2.0f - 2.0f * edgeMargin - buttonWidth * height / width;
    return toolRectWithRatio_width_height_yOffset_relativeWidth(aspect, width, height, yOffset,
                                                                1.0f);
}

Rect OverlayLayout::dateLabelRect(Size textureSize)
{
    const double ratio = textureSize.width / textureSize.height;
    return {{-0.5 * labelHeight * ratio, labelTop}, {labelHeight * ratio, -labelHeight}};
}

} // namespace kelo
