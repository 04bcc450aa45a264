#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <cstdint>
#include <optional>
#include <span>

namespace viewer {

/// The pixel furthest inside the area of an identifier: of all its pixels the one whose surrounding
/// pixels carry the identifier to the greatest distance. Identifiers stand row by row; a pixel at
/// the picture's edge lies next to what is outside. Of several the first. Nothing when the
/// identifier is not there.
struct PixelPosition
{
    int column = 0;
    int row = 0;
};
std::optional<PixelPosition> innermostPixel(std::span<const std::uint32_t> identifiers, int width,
                                            int height, std::uint32_t identifier);

/// A rectangle of overlay coordinates in points of the view.
kelo::Rect overlayRectInView(const kelo::Rect &overlayRect, const kelo::DXOpenGL &view);

/// A point of the view, in points, at which a click hits what has this identifier, as far inside
/// its picked area as there is one; nothing when it cannot be hit. The tools of the overlay, whole
/// rectangles, are in front of everything.
std::optional<kelo::Point> clickablePoint(kelo::DXOpenGL &view, std::uint32_t identifier);

} // namespace viewer
