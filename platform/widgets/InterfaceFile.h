#pragma once

#include "base/Export.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

class QWidget;

namespace kelo {

/// Thrown for an interface file that is not there or cannot be read; the text names the file, and
/// for one that cannot be read the place and the reason.
class KELO_EXPORT InterfaceFileProblem : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Windows that are drawn in Qt Designer and loaded while the program runs: "SolidView" stands for
// the file SolidView.ui. A host that wants another window than the library's puts a file of the
// same name into a folder of its own. Main thread only.

/// A folder in which files are looked for before all others; the one that was added last comes
/// first. After these come the library's resources.
KELO_EXPORT void addInterfaceFileFolder(const std::string &folder);
/// No folders of the host any more.
KELO_EXPORT void removeInterfaceFileFolders();

/// Makes a widget class of the library or the host known to interface files, under the name that
/// they have for it.
KELO_EXPORT void registerInterfaceFileClass(const std::string &className,
                                            std::function<QWidget *(QWidget *parent)> make);

/// Where the file of this name lies; empty when it is nowhere.
KELO_EXPORT std::string interfaceFilePath(const std::string &name);

/// The window or widget of a file. Throws InterfaceFileProblem.
KELO_EXPORT std::unique_ptr<QWidget> loadInterfaceFile(const std::string &name);

} // namespace kelo
