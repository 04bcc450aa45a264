#pragma once

#include "platform/view/ViewSurface.h"

namespace kelo {

/// Draws into a pixel buffer through EGL; needs no display server and no application object.
class SurfacelessSurface : public ViewSurface
{
public:
    using ViewSurface::ViewSurface;

    double scaleFactor() const override;
    PixelSize deviceSize() const override;
    bool isExposed() const override { return true; }
    Size possibleSize(const Size &size) const override { return size; }
    void viewDidResize() override;
    void requestRedraw() override;
    void showCursor(const QCursor &cursor) override;
    /// There is no screen to fill: a view without a display only knows that it is in full screen.
    bool isFullScreen() const override { return isFullScreen_; }
    bool enterFullScreen() override;
    void exitFullScreen() override;

protected:
    std::shared_ptr<OpenGLContext> makeContext() override;

private:
    std::weak_ptr<class SurfacelessContext> surfacelessContext_;
    bool isFullScreen_ = false;
};

} // namespace kelo
