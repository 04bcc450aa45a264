#pragma once

#include "base/Export.h"
#include "document/DXDocumentModel.h"
#include "platform/widgets/Document.h"
#include "platform/widgets/WindowController.h"

#include <functional>
#include <memory>
#include <string>

namespace kelo {

/// A treatment as a host's document architecture sees it: the document model, and the windows that
/// show it. Hosts store changes as they are reported; there is no Save and no Save As.
class KELO_EXPORT DXDocument : public Document
{
    Q_OBJECT
    Q_PROPERTY(std::shared_ptr<kelo::DXDocumentModel> model READ model CONSTANT)

public:
    /// With a new document model.
    DXDocument();
    ~DXDocument() override;

    const std::shared_ptr<DXDocumentModel> &model() const { return model_; }

    /// Makes the main window: a SolidWindowController of the interface file "SolidView", whose
    /// closing closes the document.
    void makeWindowControllers() override;

    /// The first of the document's controllers with this interface file, or null.
    WindowController *existingWindowControllerForWindowNibName(const std::string &name) const;

    /// What makes a controller of some class for an interface file.
    using ControllerClass =
        std::function<std::unique_ptr<WindowController>(const std::string &windowNibName)>;
    /// Shows the window of this interface file in front, and makes it with the class if the
    /// document has none yet: there is at most one for each file.
    WindowController &showUniqueWindowWithNibName_controllerClass(const std::string &name,
                                                                  const ControllerClass &make);
    /// The same with a plain window controller.
    WindowController &showUniqueWindowWithNibName(const std::string &name);

    /// Not "saveDocument:" and not "saveDocumentAs:".
    bool respondsToSelector(const std::string &selector) const override;
    /// Always true.
    bool validateMenuItem(MenuItem &item) const override;

private:
    std::shared_ptr<DXDocumentModel> model_;
};

/// A controller class as showUniqueWindowWithNibName_controllerClass takes it.
template<class Controller>
DXDocument::ControllerClass controllerClass()
{
    return [](const std::string &windowNibName) {
        return std::make_unique<Controller>(windowNibName);
    };
}

} // namespace kelo
