#pragma once

namespace kelo {

struct Alert;

/// Shows an alert as a modal box in front of the active window, and returns when it has been
/// answered. Needs a QApplication.
void runModalAlertBox(const Alert &alert);

} // namespace kelo
