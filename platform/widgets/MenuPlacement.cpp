#include "platform/widgets/MenuPlacement.h"

#include <algorithm>
#include <optional>

namespace kelo {
namespace {

/// One direction of a rectangle.
struct Span
{
    double start;
    double length;
    double end() const { return start + length; }
};

/// As near to a place as the area allows; from the area's start where it is too small.
Span movedInto(const Span &area, double start, double length)
{
    const double inside = std::min(length, area.length);
    return {std::max(area.start, std::min(start, area.end() - inside)), inside};
}

/// Wholly behind or before what is in the way, on the preferred side if it can be; nullopt:
/// neither.
std::optional<Span> besideOf(const Span &obstacle, double length, const Span &area,
                             bool prefersBefore)
{
    const Span behind{std::max(obstacle.end(), area.start), length};
    const Span before{std::min(obstacle.start, area.end()) - length, length};
    const bool fitsBehind = behind.end() <= area.end();
    const bool fitsBefore = before.start >= area.start;
    if (fitsBefore && (prefersBefore || !fitsBehind)) return before;
    if (fitsBehind) return behind;
    return std::nullopt;
}

/// The larger of the two pieces of the area that the obstacle leaves.
Span largerRest(const Span &obstacle, const Span &area)
{
    const Span before{area.start, std::min(obstacle.start, area.end()) - area.start};
    const double start = std::max(obstacle.end(), area.start);
    const Span behind{start, area.end() - start};
    return before.length > behind.length ? before : behind;
}

Span across(const Rect &rect)
{
    return {rect.origin.x, rect.size.width};
}

Span down(const Rect &rect)
{
    return {rect.origin.y, rect.size.height};
}

Rect rectOf(const Span &x, const Span &y)
{
    return {{x.start, y.start}, {x.length, y.length}};
}

} // namespace

Rect placeOfMenu(const Point &pointer, const Size &menu, const Rect &area, bool fromRightToLeft)
{
    const Rect pixel{pointer, {1.0, 1.0}};
    const auto x = besideOf(across(pixel), menu.width, across(area), fromRightToLeft);
    const auto y = besideOf(down(pixel), menu.height, down(area), false);
    const Span slidX = movedInto(across(area), pointer.x + 1.0, menu.width);
    if (!x && !y) return rectOf(slidX, largerRest(down(pixel), down(area)));
    return rectOf(x.value_or(slidX),
                  y.value_or(movedInto(down(area), pointer.y + 1.0, menu.height)));
}

Rect placeOfSubmenu(const Rect &row, const Size &menu, const Rect &area, bool fromRightToLeft)
{
    const auto x = besideOf(across(row), menu.width, across(area), fromRightToLeft);
    return rectOf(x.value_or(movedInto(across(area), area.origin.x + area.size.width, menu.width)),
                  movedInto(down(area), row.origin.y, menu.height));
}

} // namespace kelo
