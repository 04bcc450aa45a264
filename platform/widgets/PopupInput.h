#pragma once

class QEvent;
class QWindow;

namespace kelo {

/// Hands an event of the pointer or the keyboard that came to a window which is no widget's to the
/// menu, or other popup, that is open. Widgets do so already; and where a menu can hold the
/// pointer and the keyboard for itself (X11) no event comes to other windows. On Wayland a menu has
/// them against other programs only, so that the windows of the same program go on hearing of them.
/// Whether it was such an event and a popup is open; the window has nothing to do with it then.
bool passToOpenPopup(QEvent &event, const QWindow &window);

} // namespace kelo
