#pragma once

#include "keloOpenGL/Export.h"
#include "platform/OpenGLContext.h"
#include "platform/Rect.h"

#include <cstdint>
#include <memory>

namespace kelo {

/// A picture that nobody sees: eight bits of red, green, blue and alpha and 24 bits of depth, one
/// sample a pixel, as a framebuffer object of the current context. It is made on first use, kept,
/// made anew for another size, and made again in a new context after its own was lost. What it
/// holds when a Binding begins is undefined.
class KELO_EXPORT PickTarget
{
public:
    PickTarget() = default;
    ~PickTarget();
    PickTarget(const PickTarget &) = delete;
    PickTarget &operator=(const PickTarget &) = delete;

    /// Whether the current context has framebuffer objects at all.
    static bool isAvailable();

    /// Sends drawing and reading to the target for as long as it lives; afterwards both go where
    /// they went before. The context that is current at its beginning must be so at its end.
    class Binding
    {
    public:
        Binding(PickTarget &target, const PixelSize &size);
        ~Binding();
        Binding(const Binding &) = delete;
        Binding &operator=(const Binding &) = delete;

        /// False where the target cannot be had in this size: drawing goes where it went before.
        bool isBound() const { return isBound_; }

    private:
        bool isBound_ = false;
        std::int32_t drawBinding_ = 0;
        std::int32_t readBinding_ = 0;
    };

    /// The name of the framebuffer object in the current context; 0 until made there.
    std::uint32_t framebufferName() const;
    PixelSize size() const { return size_; }

private:
    bool prepare(const PixelSize &size);
    void drop();

    std::weak_ptr<OpenGLContext> context_;
    PixelSize size_;
    std::uint32_t framebuffer_ = 0;
    std::uint32_t color_ = 0;
    std::uint32_t depth_ = 0;
};

} // namespace kelo
