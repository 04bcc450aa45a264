#include "platform/view/ViewSurface.h"

namespace kelo {

ViewSurface::~ViewSurface()
{
    destroyContext();
}

const std::shared_ptr<OpenGLContext> &ViewSurface::context()
{
    if (!context_) {
        const std::shared_ptr<OpenGLContext> before = OpenGLContext::currentContext();
        context_ = makeContext();
        // Making a context makes it current; whoever is drawing with another goes on undisturbed.
        if (before) before->makeCurrentContext();
    }
    return context_;
}

void ViewSurface::destroyContext()
{
    if (!context_) return;
    context_->destroySurface();
    context_.reset();
}

PixelSize ViewSurface::scaledViewSize() const
{
    return pixelSizeOf(view_.frame().size, view_.backingScaleFactor());
}

void ViewSurface::setHost(ViewHost *host)
{
    if (host_ && host_ != host) host_->forgetView();
    host_ = host;
}

} // namespace kelo
