#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "keloOpenGL/view/OffscreenTarget.h"

#include <vector>

namespace kelo {

/// The off-screen framebuffer of one print request, bound for as long as it lives; the context's
/// own framebuffer is bound afterwards. The name of its depth buffer is left allocated when it
/// goes, as the design has it, and goes with the context; its storage is given back, but for a
/// single pixel, for requests can be many.
class KELO_EXPORT PrintTarget
{
public:
    explicit PrintTarget(const PixelSize &size);
    ~PrintTarget();
    PrintTarget(const PrintTarget &) = delete;
    PrintTarget &operator=(const PrintTarget &) = delete;

    /// False for a size that the context cannot have; then there is no framebuffer to be complete.
    bool isMade() const { return target_.framebufferName() != 0; }
    /// The depth buffer goes with the target, its name too.
    void dropDepthBuffer() { keepsDepthBufferName_ = false; }

private:
    OffscreenTarget target_;
    bool keepsDepthBufferName_ = true;
};

/// Pixels of the bound framebuffer, `size` of them from `column` of the lowest row on, rightwards
/// and up: three bytes a pixel (red, green, blue), rows without padding, top row first.
KELO_EXPORT std::vector<unsigned char> readPrintImage(int column, const PixelSize &size);

} // namespace kelo
