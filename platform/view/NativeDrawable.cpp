#include "platform/gl.h"

#include "platform/view/NativeDrawable.h"

#include <QGuiApplication>
#include <QWindow>

#include <epoxy/egl.h>
// Last: the X headers that it brings define words such as None and Bool.
#include <epoxy/glx.h>

namespace kelo {
namespace {

/// The X11 display that Qt has opened, if it speaks GLX.
Display *glxDisplay()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    Display *display = x11 ? x11->display() : nullptr;
    return display && epoxy_has_glx(display) ? display : nullptr;
}

} // namespace

bool setSwapIntervalOfCurrentSurface(int interval)
{
    Display *display = glxDisplay();
    const GLXDrawable drawable = display ? glXGetCurrentDrawable() : 0;
    if (drawable) {
        const int screen = DefaultScreen(display);
        if (epoxy_has_glx_extension(display, screen, "GLX_EXT_swap_control")) {
            glXSwapIntervalEXT(display, drawable, interval);
            return true;
        }
        if (epoxy_has_glx_extension(display, screen, "GLX_MESA_swap_control"))
            return glXSwapIntervalMESA(static_cast<unsigned>(interval)) == 0;
        return false;
    }
    const EGLDisplay eglDisplay = eglGetCurrentDisplay();
    return eglDisplay != EGL_NO_DISPLAY && eglSwapInterval(eglDisplay, interval);
}

std::optional<PixelSize> nativeSizeOfWindow(const QWindow &window)
{
    Display *display = glxDisplay();
    if (!display || !window.handle()) return std::nullopt;
    unsigned width = 0;
    unsigned height = 0;
    glXQueryDrawable(display, window.winId(), GLX_WIDTH, &width);
    glXQueryDrawable(display, window.winId(), GLX_HEIGHT, &height);
    if (width == 0 || height == 0) return std::nullopt;
    return PixelSize{static_cast<int>(width), static_cast<int>(height)};
}

} // namespace kelo
