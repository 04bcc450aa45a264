#pragma once

#include <string>

namespace kelo {

/// Shows a short help text beside the pointer, until hideToolTip, a key, or a time that the desktop
/// chooses. Without a QApplication nothing can be shown, and both do nothing.
void showToolTip(const std::string &text);
void hideToolTip();

} // namespace kelo
