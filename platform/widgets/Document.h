#pragma once

#include "keloOpenGL/Export.h"
#include "platform/Menu.h"

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

    /// Closes every window, and tells the host, once.
    void close();
    bool isClosed() const { return isClosed_; }

signals:
    /// The host may let go of the document now, but not inside of this signal.
    void closed();

private:
    std::vector<std::unique_ptr<WindowController>> controllers_;
    bool isClosed_ = false;
};

} // namespace kelo
