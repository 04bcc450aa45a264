#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "platform/view/OpenGLContext.h"

#include <cstdint>
#include <memory>

namespace kelo {

/// A picture that nobody sees: a framebuffer object of the current context with a buffer for
/// colours and, where it is asked for, one for depth, one sample a pixel. It is made on first use,
/// kept, made anew for another size or other formats, and made again in a new context after its own
/// was lost. What a new one holds is undefined.
class KELO_EXPORT OffscreenTarget
{
public:
    OffscreenTarget() = default;
    ~OffscreenTarget();
    OffscreenTarget(const OffscreenTarget &) = delete;
    OffscreenTarget &operator=(const OffscreenTarget &) = delete;

    /// Internal formats of OpenGL, such as GL_RGBA8 and GL_DEPTH_COMPONENT24.
    struct Formats
    {
        std::uint32_t color = 0;
        std::uint32_t depth = 0; ///< 0 for no depth buffer
        bool operator==(const Formats &) const = default;
    };

    /// Whether the current context has framebuffer objects at all.
    static bool isAvailable();

    /// Sends drawing and reading to the target. False where there is nothing to draw on: a size
    /// without pixels or larger than the context allows binds and makes nothing; formats that the
    /// driver cannot draw into leave an incomplete framebuffer object bound, so that its status can
    /// be read, until it is dropped.
    bool bind(const PixelSize &size, const Formats &formats);

    /// Gives the buffers back. Where the target is bound, bind another framebuffer before.
    void drop();
    /// The name of the depth buffer, which is the caller's from then on; 0 where there is none.
    /// Drop the target next: until then the buffer is a part of it.
    std::uint32_t releaseDepthBuffer();

    /// The name of the framebuffer object in the current context; 0 until made there.
    std::uint32_t framebufferName() const;
    PixelSize size() const { return size_; }

    /// Binds a target for as long as it lives; afterwards drawing and reading go where they went
    /// before. The context that is current at its beginning must be so at its end.
    class Binding
    {
    public:
        Binding(OffscreenTarget &target, const PixelSize &size, const Formats &formats);
        ~Binding();
        Binding(const Binding &) = delete;
        Binding &operator=(const Binding &) = delete;

        /// False where the target cannot be had like this: drawing goes where it went before.
        bool isBound() const { return isBound_; }

    private:
        bool isBound_ = false;
        std::int32_t drawBinding_ = 0;
        std::int32_t readBinding_ = 0;
    };

private:
    void make(const PixelSize &size, const Formats &formats);

    std::weak_ptr<OpenGLContext> context_;
    PixelSize size_;
    Formats formats_;
    std::uint32_t framebuffer_ = 0;
    std::uint32_t color_ = 0;
    std::uint32_t depth_ = 0;
};

} // namespace kelo
