#pragma once

#include "base/Export.h"

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <vector>

namespace kelo {

/// What a view asks of its OpenGL context. The default is what every view of this library uses:
/// double buffer and 24 bits of depth, nothing else.
struct PixelFormat
{
    bool doubleBuffer = true;
    int depthSize = 24;
    bool operator==(const PixelFormat &) const = default;
};

/// Thrown when legacy OpenGL is not to be had; the text is one sentence for the user.
class KELO_EXPORT OpenGLUnavailable : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A legacy OpenGL context (2.1, fixed function) together with the surface that it draws on.
/// A view makes and owns it; it lives on when the view moves to another window or in and out of
/// full screen.
///
/// Names of buffers and textures live with the context that made them: whoever keeps a name keeps
/// a weak reference to the context beside it, and treats the name as gone when the context is.
/// Keep no strong reference for longer than a call: the context ends with its view, and whoever
/// still holds it then holds one that cannot be made current any more.
/// Main thread only.
class KELO_EXPORT OpenGLContext : public std::enable_shared_from_this<OpenGLContext>
{
public:
    virtual ~OpenGLContext();
    OpenGLContext(const OpenGLContext &) = delete;
    OpenGLContext &operator=(const OpenGLContext &) = delete;

    /// The context of this class that is current, or null.
    static std::shared_ptr<OpenGLContext> currentContext();

    /// Makes the context current and deletes the names that were waiting for that.
    /// False when there is nothing to draw on, as after the display was lost.
    bool makeCurrentContext();
    bool isCurrent() const;

    /// Shows what was drawn (swaps the buffers of a window; finishes the drawing of a surface
    /// without display). Does nothing while a FlushSuppression lives.
    void flushBuffer();
    /// Whether flushBuffer does nothing now.
    bool isFlushSuppressed() const { return flushSuppressions_ > 0; }
    /// Keeps a context from showing what is drawn for as long as it lives, so that the picture can
    /// be read back from the buffer that it was drawn into; nests.
    class FlushSuppression
    {
    public:
        explicit FlushSuppression(OpenGLContext &context);
        ~FlushSuppression();
        FlushSuppression(const FlushSuppression &) = delete;
        FlushSuppression &operator=(const FlushSuppression &) = delete;

    private:
        OpenGLContext &context_;
    };
    /// Frames between two swaps: 1 keeps step with the display. Takes effect from the next flush,
    /// where the surface allows it.
    virtual void setSwapInterval(int interval) = 0;
    virtual int swapInterval() const = 0;

    /// Frees the native context, current or not; from then on it cannot be made current. For the
    /// view that owns it: OpenGLView::loseContext.
    virtual void destroySurface() = 0;

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
    /// Leaves no context current, if this one is.
    virtual void releaseSurface() = 0;
    virtual void swapSurface() = 0;

    /// Looks at the current context and throws OpenGLUnavailable unless it has the fixed-function
    /// calls of OpenGL 2.1.
    static void requireLegacyOpenGL();

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
    int flushSuppressions_ = 0;
};

} // namespace kelo
