#include "viewer/script/PickPoints.h"

#include <algorithm>
#include <vector>

namespace viewer {
namespace {

/// Distances to the outside in thirds of a pixel: 3 along a row or column, 4 along a diagonal,
/// which is within 8 % of the true one.
constexpr int straight = 3;
constexpr int diagonal = 4;

/// What no object's identifier is.
constexpr std::uint32_t tool = 0xFFFFFFFF;

/// A press on one of the overlay's tools never reaches what is drawn behind it.
void coverTools(std::vector<std::uint32_t> &identifiers, const kelo::PixelSize &size,
                const kelo::DXOpenGL &view)
{
    std::vector<kelo::Rect> rects = view.shownToolRects();
    for (kelo::Rect &rect : rects)
        rect = overlayRectInView(rect, view);
    const double scale = view.backingScaleFactor();
    for (int row = 0; row < size.height; ++row) {
        for (int column = 0; column < size.width; ++column) {
            const kelo::Point point{(column + 0.5) / scale, (row + 0.5) / scale};
            const auto contains = [&point](const kelo::Rect &rect) { return rect.contains(point); };
            if (std::any_of(rects.begin(), rects.end(), contains))
                identifiers[static_cast<std::size_t>(row) * size.width + column] = tool;
        }
    }
}

} // namespace

std::optional<PixelPosition> innermostPixel(std::span<const std::uint32_t> identifiers, int width,
                                            int height, std::uint32_t identifier)
{
    // A border of pixels outside saves looking whether a neighbour exists.
    const int stride = width + 2;
    std::vector<int> distances(static_cast<std::size_t>(stride) * (height + 2), 0);
    const auto at = [&](int column, int row) -> int & {
        return distances[static_cast<std::size_t>(row + 1) * stride + column + 1];
    };
    const int farAway = diagonal * (width + height);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const bool isInside =
                identifiers[static_cast<std::size_t>(row) * width + column] == identifier;
            if (isInside) at(column, row) = farAway;
        }
    }
    const auto shorten = [&](int column, int row, int sense) {
        int &distance = at(column, row);
        if (distance == 0) return;
        distance = std::min(
            {distance, at(column - sense, row) + straight, at(column, row - sense) + straight,
             at(column - 1, row - sense) + diagonal, at(column + 1, row - sense) + diagonal});
    };
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column)
            shorten(column, row, 1);
    }
    for (int row = height - 1; row >= 0; --row) {
        for (int column = width - 1; column >= 0; --column)
            shorten(column, row, -1);
    }
    std::optional<PixelPosition> best;
    int greatest = 0;
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            if (at(column, row) <= greatest) continue;
            greatest = at(column, row);
            best = PixelPosition{column, row};
        }
    }
    return best;
}

kelo::Rect overlayRectInView(const kelo::Rect &overlayRect, const kelo::DXOpenGL &view)
{
    // Overlay coordinates are halves of the view's height from its middle.
    const kelo::Size size = view.bounds().size;
    const double half = size.height / 2.0;
    return {{size.width / 2.0 + half * overlayRect.origin.x, half + half * overlayRect.origin.y},
            {half * overlayRect.size.width, half * overlayRect.size.height}};
}

std::optional<kelo::Point> clickablePoint(kelo::DXOpenGL &view, std::uint32_t identifier)
{
    std::vector<std::uint32_t> identifiers = view.pickIdentifiers();
    if (identifiers.empty()) return std::nullopt;
    const kelo::PixelSize size = view.deviceSize();
    coverTools(identifiers, size, view);
    const auto pixel = innermostPixel(identifiers, size.width, size.height, identifier);
    if (!pixel) return std::nullopt;
    const double scale = view.backingScaleFactor();
    return kelo::Point{(pixel->column + 0.5) / scale, (pixel->row + 0.5) / scale};
}

} // namespace viewer
