#pragma once

#include "platform/view/OpenGLView.h"
#include "platform/view/ViewEvents.h"
#include "platform/view/ViewPointer.h"
#include "platform/view/ViewSurface.h"

#include <QCursor>

#include <memory>
#include <optional>

class QImage;

namespace kelo {

/// What a view is put together from, and what its surfaces, windows and containers ask of it beyond
/// its interface.
struct OpenGLView::Private
{
    explicit Private(OpenGLView &view);
    static Private &of(OpenGLView &view) { return *view.d; }

    /// The surface, created on first use.
    ViewSurface &madeSurface();
    /// Takes over a new size in points, or a new number of pixels for the same size.
    void frameDidResize(const Size &size);
    /// Takes over the number of pixels; whether that or the size (newSize) is another than before.
    bool noteSize(bool newSize);
    /// Draws a frame and shows it.
    void drawFrame();
    /// Draws a frame into the current buffer, which nobody sees, and reads it.
    QImage drawnPicture();
    /// The scale before there is a surface: what the surface will have.
    double expectedScaleFactor() const;

    OpenGLView &view;
    /// Expires with the view: handlers may end the view that called them.
    std::shared_ptr<int> lifeToken = std::make_shared<int>();
    std::unique_ptr<ViewSurface> surface;
    PixelSize knownDeviceSize;
    ViewPointer pointer;
    ViewEvents events;
    std::optional<QCursor> cursor; ///< empty: the arrow
};

} // namespace kelo
