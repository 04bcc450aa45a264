#include "platform/gl.h"

#include "platform/view/SurfacelessSurface.h"

#include <QOpenGLContext>

#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace kelo {
namespace {

bool hasExtension(const char *list, const char *name)
{
    if (!list) return false;
    const std::size_t length = std::strlen(name);
    for (const char *found = std::strstr(list, name); found;
         found = std::strstr(found + length, name)) {
        const bool begins = found == list || found[-1] == ' ';
        const bool ends = found[length] == ' ' || found[length] == '\0';
        if (begins && ends) return true;
    }
    return false;
}

/// The displays to try, best first: one that needs no device, then graphics devices without a
/// display server, then whatever the system calls its default.
std::vector<EGLDisplay> candidateDisplays()
{
    std::vector<EGLDisplay> displays;
    const char *extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    const auto platformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        hasExtension(extensions, "EGL_EXT_platform_base")
            ? eglGetProcAddress("eglGetPlatformDisplayEXT")
            : nullptr);
    if (platformDisplay && hasExtension(extensions, "EGL_MESA_platform_surfaceless"))
        displays.push_back(
            platformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));
    if (platformDisplay && hasExtension(extensions, "EGL_EXT_platform_device")) {
        const auto queryDevices =
            reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
        EGLDeviceEXT devices[16];
        EGLint count = 0;
        if (queryDevices && queryDevices(16, devices, &count)) {
            for (EGLint i = 0; i < count; ++i)
                displays.push_back(platformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr));
        }
    }
    displays.push_back(eglGetDisplay(EGL_DEFAULT_DISPLAY));
    return displays;
}

/// The displays that could be opened. They stay open for the life of the process: opening one
/// loads the driver, which costs more than everything that a short-lived view does.
const std::vector<EGLDisplay> &openDisplays()
{
    static const std::vector<EGLDisplay> displays = [] {
        std::vector<EGLDisplay> opened;
        for (EGLDisplay display : candidateDisplays()) {
            if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) &&
                hasExtension(eglQueryString(display, EGL_CLIENT_APIS), "OpenGL"))
                opened.push_back(display);
        }
        return opened;
    }();
    return displays;
}

} // namespace

class SurfacelessContext : public OpenGLContext
{
public:
    SurfacelessContext(const PixelFormat &format, const PixelSize &size) : size_(size)
    {
        std::string problem = "no display for drawing without a screen could be opened";
        eglBindAPI(EGL_OPENGL_API);
        for (EGLDisplay display : openDisplays()) {
            display_ = display;
            if (makeNativeContext(format, problem)) return;
            destroyNativeContext();
        }
        throw OpenGLUnavailable("The 3D view cannot draw without a display: " + problem + ".");
    }

    ~SurfacelessContext() override { destroyNativeContext(); }

    void setSwapInterval(int interval) override { swapInterval_ = interval; }
    int swapInterval() const override { return swapInterval_; }

    /// Gives the buffer another size; what was drawn is lost, names live on.
    void resize(const PixelSize &size)
    {
        if (size == size_) return;
        size_ = size;
        bufferIsStale_ = true;
        if (isSurfaceCurrent()) makeSurfaceCurrent();
    }

    /// Throws OpenGLUnavailable when what came is not legacy OpenGL, or has no buffer of this size.
    void checkWhatCame()
    {
        const PixelSize wanted = size_;
        // Drivers take buffers larger than they can draw into without a word, so the limits are
        // asked for with one that every driver has.
        size_ = {std::min(size_.width, 4096), std::min(size_.height, 4096)};
        bool current = makeCurrentContext();
        if (current) {
            requireLegacyOpenGL();
            glGetIntegerv(GL_MAX_VIEWPORT_DIMS, largestSize_);
            resize(wanted);
            current = makeCurrentContext();
        }
        if (!current)
            throw OpenGLUnavailable(
                "The 3D view cannot draw without a display: a pixel buffer of " +
                std::to_string(wanted.width) + " by " + std::to_string(wanted.height) +
                " pixels cannot be had.");
    }

protected:
    bool makeSurfaceCurrent() override
    {
        if (context_ == EGL_NO_CONTEXT || size_.width > largestSize_[0] ||
            size_.height > largestSize_[1])
            return false;
        if (QOpenGLContext *foreign = QOpenGLContext::currentContext()) foreign->doneCurrent();
        eglBindAPI(EGL_OPENGL_API);
        EGLSurface old = EGL_NO_SURFACE;
        if (bufferIsStale_ || buffer_ == EGL_NO_SURFACE) {
            const EGLint attributes[] = {EGL_WIDTH, std::max(size_.width, 1), EGL_HEIGHT,
                                         std::max(size_.height, 1), EGL_NONE};
            const EGLSurface made = eglCreatePbufferSurface(display_, config_, attributes);
            if (made == EGL_NO_SURFACE) return false;
            old = std::exchange(buffer_, made);
            bufferIsStale_ = false;
        }
        const bool current = eglMakeCurrent(display_, buffer_, buffer_, context_);
        if (old != EGL_NO_SURFACE) eglDestroySurface(display_, old);
        return current;
    }

    bool isSurfaceCurrent() const override
    {
        return context_ != EGL_NO_CONTEXT && !bufferIsStale_ &&
               eglGetCurrentContext() == context_ && eglGetCurrentSurface(EGL_DRAW) == buffer_;
    }

    void releaseSurface() override
    {
        if (context_ != EGL_NO_CONTEXT && eglGetCurrentContext() == context_)
            eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }

    void swapSurface() override
    {
        if (isSurfaceCurrent()) glFinish();
    }

private:
    void destroySurface() override { destroyNativeContext(); }

    bool makeNativeContext(const PixelFormat &format, std::string &problem)
    {
        const EGLint configAttributes[] = {EGL_SURFACE_TYPE,
                                           EGL_PBUFFER_BIT,
                                           EGL_RENDERABLE_TYPE,
                                           EGL_OPENGL_BIT,
                                           EGL_RED_SIZE,
                                           8,
                                           EGL_GREEN_SIZE,
                                           8,
                                           EGL_BLUE_SIZE,
                                           8,
                                           EGL_DEPTH_SIZE,
                                           format.depthSize,
                                           EGL_SAMPLE_BUFFERS,
                                           0,
                                           EGL_NONE};
        EGLint count = 0;
        if (!eglChooseConfig(display_, configAttributes, &config_, 1, &count) || count == 0) {
            problem = "no pixel buffer with " + std::to_string(format.depthSize) +
                      " bits of depth is offered";
            return false;
        }
        // No version is asked for: only so does every driver give its legacy context.
        context_ = eglCreateContext(display_, config_, EGL_NO_CONTEXT, nullptr);
        if (context_ == EGL_NO_CONTEXT) {
            problem = "the graphics driver makes no OpenGL context";
            return false;
        }
        return true;
    }

    void destroyNativeContext()
    {
        releaseSurface();
        if (buffer_ != EGL_NO_SURFACE)
            eglDestroySurface(display_, std::exchange(buffer_, EGL_NO_SURFACE));
        if (context_ != EGL_NO_CONTEXT)
            eglDestroyContext(display_, std::exchange(context_, EGL_NO_CONTEXT));
    }

    PixelSize size_;
    GLint largestSize_[2] = {4096, 4096};
    int swapInterval_ = 1;
    bool bufferIsStale_ = false;
    EGLDisplay display_ = EGL_NO_DISPLAY;
    EGLConfig config_ = nullptr;
    EGLContext context_ = EGL_NO_CONTEXT;
    EGLSurface buffer_ = EGL_NO_SURFACE;
};

double SurfacelessSurface::scaleFactor() const
{
    return view().surfacelessScaleFactor();
}

PixelSize SurfacelessSurface::deviceSize() const
{
    return scaledViewSize();
}

void SurfacelessSurface::viewDidResize()
{
    if (auto context = surfacelessContext_.lock()) context->resize(deviceSize());
}

void SurfacelessSurface::requestRedraw()
{
    if (host()) host()->repaintView();
}

void SurfacelessSurface::showCursor(const QCursor &cursor)
{
    if (host()) host()->showCursor(cursor);
}

bool SurfacelessSurface::enterFullScreen()
{
    isFullScreen_ = true;
    view().viewDidMoveToWindow();
    return true;
}

void SurfacelessSurface::exitFullScreen()
{
    isFullScreen_ = false;
    view().viewDidMoveToWindow();
}

std::shared_ptr<OpenGLContext> SurfacelessSurface::makeContext()
{
    auto context = std::make_shared<SurfacelessContext>(view().pixelFormat(), deviceSize());
    context->checkWhatCame();
    surfacelessContext_ = context;
    return context;
}

std::unique_ptr<ViewSurface> makeSurfacelessSurface(OpenGLView &view)
{
    return std::make_unique<SurfacelessSurface>(view);
}

} // namespace kelo
