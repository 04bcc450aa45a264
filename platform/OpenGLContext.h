#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace kelo {

/// What a view asks of its OpenGL context. The default is what every view of this library uses:
/// double buffer and 24 bits of depth, nothing else.
struct PixelFormat
{
    bool doubleBuffer = true;
    int depthSize = 24;
    friend bool operator==(const PixelFormat &, const PixelFormat &) = default;
};

/// A legacy OpenGL context (2.1, fixed function) together with the surface that it draws on.
/// A view makes and owns it; it lives on when the view moves to another window or in and out of
/// full screen.
///
/// Names of buffers and textures live with the context that made them: whoever keeps a name keeps
/// a weak reference to the context beside it, and treats the name as gone when the context is.
/// Main thread only.
class OpenGLContext : public std::enable_shared_from_this<OpenGLContext>
{
public:
    virtual ~OpenGLContext();

    /// The context of this class that is current, or null.
    static std::shared_ptr<OpenGLContext> currentContext();

    /// Makes the context current and deletes the names that were waiting for that.
    /// False when there is nothing to draw on, as after the display was lost.
    bool makeCurrentContext();
    bool isCurrent() const;

    /// Shows what was drawn (swaps the buffers of a window; finishes the drawing of a surface
    /// without display).
    virtual void flushBuffer() = 0;
    /// Frames between two swaps: 1 keeps step with the display. Takes effect from the next flush,
    /// where the surface allows it.
    virtual void setSwapInterval(int interval) = 0;
    virtual int swapInterval() const = 0;

    /// Delete names that this context made: at once when it is current, otherwise when it is made
    /// current next; a destroyed context has taken its names with it. 0 is harmless.
    void deleteBuffer(std::uint32_t name);
    void deleteTexture(std::uint32_t name);
    void deleteFramebuffer(std::uint32_t name);
    void deleteRenderbuffer(std::uint32_t name);

protected:
    OpenGLContext();
    virtual bool makeSurfaceCurrent() = 0;
    virtual bool isSurfaceCurrent() const = 0;

private:
    enum class NameKind { Buffer, Texture, Framebuffer, Renderbuffer };
    struct Name
    {
        NameKind kind;
        std::uint32_t name;
    };
    void deleteName(Name name);
    static void deleteNow(Name name);
    std::vector<Name> waitingNames_;
};

} // namespace kelo
