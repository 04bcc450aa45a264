#pragma once

#include "platform/time/RunLoop.h"
#include "platform/view/OpenGLView.h"
#include "platform/view/ViewSurface.h"

#include <QCursor>

#include <memory>
#include <optional>
#include <vector>

namespace kelo {

/// What a view keeps beside its interface.
struct OpenGLView::Private
{
    struct CursorRect
    {
        Rect rect;
        QCursor cursor;
    };
    struct TrackingRect
    {
        int tag;
        Rect rect;
        bool isInside;
    };

    std::unique_ptr<ViewSurface> surface;
    PixelSize knownDeviceSize;
    /// Expires with the view: handlers may end the view that called them.
    std::shared_ptr<int> lifeToken = std::make_shared<int>();

    /// Held buttons in the order of their presses, each with the press that began it.
    std::vector<Event> presses;
    Event lastMouseEvent;
    std::optional<RunLoop::ModeScope> trackingMode;

    std::vector<TrackingRect> trackingRects;
    int lastTrackingTag = 0;
    std::vector<CursorRect> cursorRects;
    std::optional<std::size_t> cursorRectOfPointer;
    std::optional<Point> pointerInWindow; ///< while the pointer is over the view
    std::optional<QCursor> cursor;        ///< empty: the arrow
};

} // namespace kelo
