#include "platform/view/ViewPointer.h"

#include "platform/view/OpenGLView.h"

#include <algorithm>
#include <utility>

namespace kelo {

ViewPointer::ViewPointer(OpenGLView &view, std::weak_ptr<const void> life)
    : view_(view), life_(std::move(life))
{}

std::vector<int> ViewPointer::tagsOfCrossedRects() const
{
    std::vector<int> tags;
    for (const TrackingRect &tracking : trackingRects_) {
        const bool isInside =
            locationInWindow_ &&
            tracking.rect.contains(view_.convertPoint_fromView(*locationInWindow_, nullptr));
        if (isInside != tracking.isInside) tags.push_back(tracking.tag);
    }
    return tags;
}

void ViewPointer::move(const std::optional<Point> &locationInWindow, const Event &cause,
                       const std::function<void(const Event &)> &dispatch)
{
    const std::weak_ptr<const void> life = life_;
    locationInWindow_ = locationInWindow;
    for (int tag : tagsOfCrossedRects()) {
        // Handlers may add and remove rectangles.
        const auto found =
            std::find_if(trackingRects_.begin(), trackingRects_.end(),
                         [tag](const TrackingRect &tracking) { return tracking.tag == tag; });
        if (found == trackingRects_.end()) continue;
        found->isInside = !found->isInside;
        Event crossing = cause;
        crossing.type = found->isInside ? EventType::MouseEntered : EventType::MouseExited;
        crossing.clickCount = 0;
        dispatch(crossing);
        if (life.expired()) return;
    }
    updateCursor(false);
}

int ViewPointer::addTrackingRect(const Rect &rect, bool assumeInside)
{
    trackingRects_.push_back({++lastTrackingTag_, rect, assumeInside});
    return lastTrackingTag_;
}

void ViewPointer::removeTrackingRect(int tag)
{
    std::erase_if(trackingRects_,
                  [tag](const TrackingRect &tracking) { return tracking.tag == tag; });
}

void ViewPointer::addCursorRect(const Rect &rect, const QCursor &cursor)
{
    cursorRects_.push_back({rect, cursor});
}

std::optional<std::size_t> ViewPointer::cursorRectUnderPointer() const
{
    const Point point = view_.convertPoint_fromView(*locationInWindow_, nullptr);
    const auto found = std::find_if(
        cursorRects_.begin(), cursorRects_.end(),
        [&point](const CursorRect &candidate) { return candidate.rect.contains(point); });
    if (found == cursorRects_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - cursorRects_.begin());
}

void ViewPointer::updateCursor(bool evenIfInTheSameRect)
{
    if (!locationInWindow_ || !OpenGLView::cursorsAreAvailable()) {
        shownCursorRect_.reset();
        return;
    }
    const std::optional<std::size_t> index = cursorRectUnderPointer();
    if (index == shownCursorRect_ && !(evenIfInTheSameRect && index)) return;
    shownCursorRect_ = index;
    view_.setCursor(index ? cursorRects_[*index].cursor : QCursor(Qt::ArrowCursor));
}

} // namespace kelo
