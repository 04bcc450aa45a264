#pragma once

#include "base/Export.h"

#include <QObject>

#include <memory>
#include <string>

class QWidget;

namespace kelo {

class Document;

/// One window, loaded from an interface file when it is first asked for. The controller owns the
/// window; a document owns the controller. Subclasses find their outlets, by object name, in
/// awakeFromNib, and undo in windowWillClose what they did there.
class KELO_EXPORT WindowController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QObject *document READ documentObject NOTIFY documentChanged)

public:
    /// The name of the interface file, as in "SolidView"; empty for a controller whose window is
    /// set with setWindow.
    explicit WindowController(std::string windowNibName = {});
    ~WindowController() override;

    const std::string &windowNibName() const { return windowNibName_; }

    /// The window, loaded now if it was not yet; null without a file. Throws InterfaceFileProblem.
    QWidget *window();
    bool isWindowLoaded() const { return window_ != nullptr; }
    /// A window that was made in code, in place of a file's. awakeFromNib is called. Event filters
    /// that are installed on the window from now on hear of its closing, each time it is asked for,
    /// before the controller does; the controller takes the event out of the hands of earlier ones.
    void setWindow(std::unique_ptr<QWidget> window);

    /// Not owned; null for a controller of no document. The property of the same name is this one.
    Document *document() const { return document_; }
    void setDocument(Document *document);

    /// Whether the document closes when this window closes.
    bool shouldCloseDocument() const { return shouldCloseDocument_; }
    void setShouldCloseDocument(bool closes) { shouldCloseDocument_ = closes; }

    /// Shows the window and brings it to the front as the key window.
    virtual void showWindow(QObject *sender = nullptr);
    /// Closes the window as its user would; windowWillClose follows unless the window refuses.
    /// False where it refuses and stays on the screen, and while it is being asked already; true
    /// for one that is closed or about to be, and for a window that was never loaded.
    bool close();

    /// Called once, when the window is there.
    virtual void awakeFromNib() {}
    /// The window of `window` has agreed to close and is about to vanish. The base closes the
    /// document, if it should; the document's other windows have closed by then: one that refuses
    /// keeps this one open too.
    virtual void windowWillClose(QWidget *window);

signals:
    void documentChanged();

protected:
    /// Watches the window for Close, by which windowWillClose runs. Event filters that were
    /// installed before the window was handed over come after this one and do not hear of Close;
    /// later ones hear of every closing.
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    QObject *documentObject() const;

    std::string windowNibName_;
    std::unique_ptr<QWidget> window_;
    Document *document_ = nullptr;
    bool shouldCloseDocument_ = false;
    enum class Closing {
        No,
        Asked, ///< the window may still refuse
        Agreed ///< it is about to vanish
    };
    Closing closing_ = Closing::No;
    bool hasClosed_ = false; ///< since it was shown by showWindow
};

} // namespace kelo
