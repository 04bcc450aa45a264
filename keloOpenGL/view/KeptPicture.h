#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "keloOpenGL/view/OffscreenTarget.h"

namespace kelo {

/// A copy of what was drawn, to go on drawing on after it was shown: what a window's back buffer
/// holds after a swap is undefined. The copy is in video memory, and is the very colours, pixel by
/// pixel.
class KELO_EXPORT KeptPicture
{
public:
    /// Copies the picture of this size from the buffer that is drawn into. False, and nothing is
    /// kept, where the current context cannot copy it exactly: without framebuffer objects that
    /// can be copied, with other than eight or ten bits a colour, or with several samples a pixel.
    bool keep(const PixelSize &size);
    /// Puts the picture back into the buffer that is drawn into; false where none is kept in the
    /// current context.
    bool restore() const;

private:
    OffscreenTarget target_;
};

} // namespace kelo
