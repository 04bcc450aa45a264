#include "keloOpenGL/view/RotateDrag.h"

#include <algorithm>

namespace kelo {

bool RotateDrag::belongsToAnother(std::optional<MouseButton> button) const
{
    return isGoingOn_ && button && button_ && button != button_;
}

void RotateDrag::begin(const Point &point, std::optional<MouseButton> button)
{
    if (belongsToAnother(button)) return;
    button_ = button;
    last_ = point;
    isGoingOn_ = true;
}

std::optional<RotateDrag::Turn>
RotateDrag::moveTo(const Point &point, std::optional<MouseButton> button, const Size &viewSize)
{
    if (belongsToAnother(button)) return std::nullopt;
    const auto shorterSide = static_cast<float>(std::min(viewSize.width, viewSize.height));
    const float degreesPerPoint = shorterSide > 0.0f ? 180.0f / shorterSide : 0.0f;
    const Turn turn{degreesPerPoint * static_cast<float>(point.x - last_.x),
                    degreesPerPoint * static_cast<float>(point.y - last_.y)};
    last_ = point;
    return turn;
}

bool RotateDrag::end(std::optional<MouseButton> button)
{
    if (belongsToAnother(button)) return false;
    isGoingOn_ = false;
    return true;
}

} // namespace kelo
