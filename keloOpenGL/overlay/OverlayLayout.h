#pragma once

#include "base/Rect.h"

namespace kelo {

/// A picture's size in pixels, as the overlay measures it.
struct TextureSize
{
    unsigned width = 0;
    unsigned height = 0;
};

/// Where the flat overlay of the treatment view has its pieces. Overlay coordinates: x runs from
/// -aspect to +aspect and y from -1 (bottom) to +1 (top), where aspect is the view's width divided
/// by its height; a rectangle's origin is its lower left corner. Single precision throughout, as
/// the picture is drawn.
struct OverlayLayout
{
    float aspect = 1.0f;

    /// A button of 0.25 x relativeWidth in the texture's proportions, centred in the column at the
    /// right edge, its top edge yOffset below the topmost button's. Without an area in the texture
    /// there is no button: all zero.
    static Rect toolRectWithRatio_width_height_yOffset_relativeWidth(float aspect, float width,
                                                                     float height, float yOffset,
                                                                     float relativeWidth);

    /// Top right.
    Rect elasticsToolRect(TextureSize elasticsTool) const;
    /// Under the elastics tool, three quarters as wide.
    Rect bracketColorToolRect(TextureSize bracketTool, TextureSize elasticsTool) const;
    /// Bottom right.
    Rect printButtonRect(TextureSize printButton) const;

    /// The date label, centred at the top. Its height is negative: the texture's first row, the
    /// text's top edge, belongs to the upper edge.
    static Rect dateLabelRect(Size textureSize);
};

} // namespace kelo
