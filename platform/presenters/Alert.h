#pragma once

#include "base/Export.h"

#include <functional>
#include <string>

namespace kelo {

/// A message that the user has to answer with its one button.
struct Alert
{
    std::string messageText;     ///< the headline
    std::string informativeText; ///< what to do about it; may be empty
    std::string buttonTitle = "OK";
    std::string detailText = {}; ///< what it is about, below the rest; may be empty
};

/// Shows alerts. The default presenter shows a modal box of the desktop. In a program without a
/// QApplication, or whose platform shows nothing ("offscreen", "minimal"), nobody could answer it:
/// there it writes linesOf() to standard error. Tests and scripts put their own. Main thread only.
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
    /// The alert for a terminal, each line with its end: one of the headline and after a blank the
    /// rest (after ": " when the headline does not end as a sentence), and one of the details if
    /// there are any.
    static std::string linesOf(const Alert &alert);
};

} // namespace kelo
