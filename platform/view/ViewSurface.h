#pragma once

#include "platform/view/OpenGLContext.h"
#include "platform/view/OpenGLView.h"

#include <memory>

namespace kelo {

class ViewInput;

/// The widget that shows a view, as the view's surface sees it.
class ViewHost
{
public:
    virtual ~ViewHost() = default;
    /// Lets go of the view's native window, without destroying it, and stays empty.
    virtual void giveUpWindow() = 0;
    /// Shows the view's native window (again).
    virtual void takeWindow() = 0;
    /// The view ends, or goes to another host: forget it.
    virtual void forgetView() = 0;
    /// Shows the view's picture anew; for views without a native window.
    virtual void repaintView() = 0;
    /// The cursor of a view without a native window.
    virtual void showCursor(const QCursor &cursor) = 0;
    /// The native window was clicked: the host takes the keyboard, and passes it on.
    virtual void takeKeyboard() = 0;
    /// Resizes the host so that the view gets this size.
    virtual void resizeForView(const Size &size) = 0;
    /// Where the input of a view without a native window comes in; null for others.
    virtual ViewInput *input() const = 0;
};

/// What a view draws on: a native window or a pixel buffer. Owned by its view, made when the view
/// first needs it.
class ViewSurface
{
public:
    explicit ViewSurface(OpenGLView &view) : view_(view) {}
    virtual ~ViewSurface();
    ViewSurface(const ViewSurface &) = delete;
    ViewSurface &operator=(const ViewSurface &) = delete;

    /// The context, made on first use. Throws OpenGLUnavailable.
    const std::shared_ptr<OpenGLContext> &context();
    bool hasContext() const { return context_ != nullptr; }
    /// Destroys the context, even if somebody else still holds it.
    void destroyContext();

    /// Leaves no context current if it is this surface's; the native window is about to go.
    virtual void releaseContext() {}

    virtual double scaleFactor() const = 0;
    /// The number of pixels that there are really.
    virtual PixelSize deviceSize() const = 0;
    virtual bool isExposed() const = 0;
    /// The size that the surface can have next to the one asked for.
    virtual Size possibleSize(const Size &size) const = 0;
    /// The view's frame was given another size.
    virtual void viewDidResize() = 0;
    /// Lets the view be drawn soon.
    virtual void requestRedraw() = 0;
    /// Called before a frame is drawn.
    virtual void willDisplay() {}
    /// Called after a frame was drawn for showing.
    virtual void didDisplay() {}
    virtual void showCursor(const QCursor &cursor) = 0;
    virtual QWindow *window() const { return nullptr; }
    /// Where the view's input comes in; null for a view that nothing shows.
    virtual ViewInput *input() const { return host_ ? host_->input() : nullptr; }
    virtual bool isFullScreen() const { return false; }
    virtual bool enterFullScreen() { return false; }
    virtual void exitFullScreen() {}

    ViewHost *host() const { return host_; }
    /// The host that shows the view from now on, or null; the one before forgets the view.
    virtual void setHost(ViewHost *host);

protected:
    virtual std::shared_ptr<OpenGLContext> makeContext() = 0;
    OpenGLView &view() const { return view_; }
    /// Pixels of the view's size in points.
    PixelSize scaledViewSize() const;

private:
    OpenGLView &view_;
    ViewHost *host_ = nullptr;
    std::shared_ptr<OpenGLContext> context_;
};

std::unique_ptr<ViewSurface> makeSurfacelessSurface(OpenGLView &view);
std::unique_ptr<ViewSurface> makeUndrawnSurface(OpenGLView &view);
std::unique_ptr<ViewSurface> makeWindowSurface(OpenGLView &view);

} // namespace kelo
