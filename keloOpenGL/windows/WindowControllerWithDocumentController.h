#pragma once

#include "base/Export.h"
#include "platform/widgets/PropertyBinding.h"
#include "platform/widgets/WindowController.h"

#include <QPointer>

#include <memory>

namespace kelo {

/// A window whose interface file may hold an object named "documentController" with a property
/// "content": while the window is open, that is the controller's document.
class KELO_EXPORT WindowControllerWithDocumentController : public WindowController
{
    Q_OBJECT

public:
    using WindowController::WindowController;

    /// The object of the interface file, or null.
    QObject *documentController() const { return documentController_; }

    void awakeFromNib() override;
    /// The window must be this controller's, or an AssertionFailure.
    void windowWillClose(QWidget *window) override;

private:
    QPointer<QObject> documentController_;
    std::unique_ptr<PropertyBinding> content_;
};

} // namespace kelo
