#pragma once

#include "base/Export.h"
#include "platform/presenters/Menu.h"

#include <QObject>

#include <memory>
#include <string>
#include <vector>

namespace kelo {

class WindowController;

/// What a host opens and closes as a whole, with the windows that show it. Subclasses hold the
/// content and make the windows. Main thread only.
class KELO_EXPORT Document : public QObject
{
    Q_OBJECT

public:
    Document();
    /// Lets go of its windows, without asking them.
    ~Document() override;

    /// Makes the controllers of the windows that a document has from the beginning; overriders add
    /// them with addWindowController. Nothing in the base.
    virtual void makeWindowControllers() {}
    /// Told by makeWindowControllers of each controller that it made.
    virtual void windowControllerDidLoadNib(WindowController &) {}

    /// The document owns the controller from now on, and is its document.
    WindowController &addWindowController(std::unique_ptr<WindowController> controller);
    /// In the order in which they were added.
    const std::vector<std::unique_ptr<WindowController>> &windowControllers() const
    {
        return controllers_;
    }
    /// Shows every window; makes the controllers first where there are none.
    void showWindows();

    /// Whether the document carries out a standard command, by its selector. The base has
    /// "saveDocument:", "saveDocumentAs:", "closeDocument:" and "showWindows".
    virtual bool respondsToSelector(const std::string &selector) const;
    /// Whether a row of the host's menus that acts on the document can be chosen.
    virtual bool validateMenuItem(MenuItem &item) const;

    /// Closes every window, also those that are added meanwhile, and tells the host, once. False
    /// where a window refuses: the windows after it, and the document, stay open. True for a
    /// document that is closed.
    bool close();
    /// Closes every window but this one, as far as close() does; the document stays open. What a
    /// window whose closing closes the document asks for before it agrees to close.
    bool closeOtherWindows(const WindowController &remaining);
    bool isClosed() const { return isClosed_; }

signals:
    /// The host may let go of the document now, but not inside of this signal.
    void closed();

private:
    bool closeWindowsExcept(const WindowController *remaining);

    std::vector<std::unique_ptr<WindowController>> controllers_;
    bool isClosed_ = false;
};

} // namespace kelo
