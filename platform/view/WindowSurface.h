#pragma once

#include "platform/view/ViewSurface.h"
#include "platform/view/ViewWindow.h"

#include <QPointer>
#include <QRect>

namespace kelo {

class WindowContext;

/// Draws into a native window of the view's own, which a widget or the whole screen shows.
class WindowSurface : public ViewSurface
{
public:
    /// Throws OpenGLUnavailable without a graphical application.
    explicit WindowSurface(OpenGLView &view);
    ~WindowSurface() override;

    double scaleFactor() const override;
    PixelSize deviceSize() const override;
    bool isExposed() const override;
    Size possibleSize(const Size &size) const override;
    void viewDidResize() override;
    void requestRedraw() override;
    void willDisplay() override;
    void showCursor(const QCursor &cursor) override;
    QWindow *window() const override;
    ViewInput *input() const override;
    bool isFullScreen() const override { return isFullScreen_; }
    bool enterFullScreen() override;
    void exitFullScreen() override;
    void setHost(ViewHost *host) override;
    void releaseContext() override;

protected:
    std::shared_ptr<OpenGLContext> makeContext() override;

private:
    QPointer<ViewWindow> window_;
    std::weak_ptr<WindowContext> windowContext_;
    bool isFullScreen_ = false;
    bool wasVisible_ = false;
    QRect geometryBefore_;
};

} // namespace kelo
