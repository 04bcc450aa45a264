#pragma once

#include "base/Rect.h"
#include "platform/view/Event.h"

#include <QCursor>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelo {

class OpenGLView;

/// Where the pointer is over a view: the rectangles whose entering and leaving is reported, and
/// those that have a cursor of their own. Rectangles are in view coordinates.
class ViewPointer
{
public:
    /// `life` expires with the view, which handlers may end.
    ViewPointer(OpenGLView &view, std::weak_ptr<const void> life);

    /// Whether the pointer is over the view, as far as it was told.
    bool isOverView() const { return locationInWindow_.has_value(); }
    /// Reports the tracking rectangles that the pointer entered and left, as events like `cause`,
    /// and shows the cursor of its place. nullopt: the pointer is outside the view.
    void move(const std::optional<Point> &locationInWindow, const Event &cause,
              const std::function<void(const Event &)> &dispatch);

    int addTrackingRect(const Rect &rect, bool assumeInside);
    void removeTrackingRect(int tag);

    void discardCursorRects() { cursorRects_.clear(); }
    void addCursorRect(const Rect &rect, const QCursor &cursor);
    /// Shows the cursor of the pointer's place if that is another rectangle's than before, or if
    /// `evenIfInTheSameRect`.
    void updateCursor(bool evenIfInTheSameRect);

private:
    struct TrackingRect
    {
        int tag;
        Rect rect;
        bool isInside;
    };
    struct CursorRect
    {
        Rect rect;
        QCursor cursor;
    };
    std::vector<int> tagsOfCrossedRects() const;
    /// The first cursor rectangle that contains the pointer.
    std::optional<std::size_t> cursorRectUnderPointer() const;

    OpenGLView &view_;
    std::weak_ptr<const void> life_;
    std::optional<Point> locationInWindow_;
    std::vector<TrackingRect> trackingRects_;
    int lastTrackingTag_ = 0;
    std::vector<CursorRect> cursorRects_;
    std::optional<std::size_t> shownCursorRect_;
};

} // namespace kelo
