#pragma once

#include "keloOpenGL/Export.h"

#include <functional>
#include <string>

namespace kelo {

/// A message that the user has to answer with its one button.
struct Alert
{
    std::string messageText;     ///< the headline
    std::string informativeText; ///< what to do about it; may be empty
    std::string buttonTitle = "OK";
};

/// Shows alerts. The default presenter shows a modal box of the desktop. In a program without a
/// QApplication, or whose platform shows nothing ("offscreen", "minimal"), nobody could answer it:
/// there it writes one line to standard error, the headline and after a blank the rest (after ": "
/// when the headline does not end as a sentence). Tests and scripts put their own. Main thread
/// only.
class KELO_EXPORT AlertPresenter
{
public:
    using Presenter = std::function<void(const Alert &)>;

    /// Shows the alert and returns when it was answered. The run loop is in the ModalPanel mode
    /// while a presenter of any kind shows it.
    static void runModal(const Alert &alert);
    /// Replaces the presenter and returns the one before it (empty for the default); an empty
    /// function brings back the default.
    static Presenter setPresenter(Presenter presenter);
};

/// The default presenter of graphical applications (platform/widgets): a box in front of the active
/// window. Needs a QApplication.
KELO_EXPORT void runModalAlertBox(const Alert &alert);

} // namespace kelo
