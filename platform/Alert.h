#pragma once

#include <functional>
#include <string>

namespace kelo {

/// A message that the user has to answer with the one button "OK".
struct Alert
{
    std::string messageText;     ///< the headline
    std::string informativeText; ///< what to do about it
    std::string buttonTitle = "OK";
};

/// Shows alerts. The default presenter shows a modal box of the desktop, or, in a program without a
/// graphical application, writes one line to standard error. Tests and scripts put their own.
class AlertPresenter
{
public:
    using Presenter = std::function<void(const Alert &)>;

    /// Shows the alert and returns when it was answered.
    static void runModal(const Alert &alert);
    /// Replaces the presenter and returns the one before it; an empty function brings back the
    /// default.
    static Presenter setPresenter(Presenter presenter);
};

/// The default presenter of graphical applications (platform/widgets).
void runModalAlertBox(const Alert &alert);

} // namespace kelo
