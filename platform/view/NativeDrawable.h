#pragma once

#include "base/Rect.h"

#include <optional>

class QWindow;

namespace kelo {

/// Sets the swap interval of the current context's surface by the window system's own call, which
/// unlike Qt's format can be changed while the surface lives. False where there is no such call.
bool setSwapIntervalOfCurrentSurface(int interval);

/// The size in pixels that the window system keeps for a native window, where it can be asked.
std::optional<PixelSize> nativeSizeOfWindow(const QWindow &window);

} // namespace kelo
