#include "keloOpenGL/windows/WindowControllerWithDocumentController.h"

#include "base/Assertion.h"

#include <QWidget>

namespace kelo {

void WindowControllerWithDocumentController::awakeFromNib()
{
    WindowController::awakeFromNib();
    documentController_ = window()->findChild<QObject *>(QStringLiteral("documentController"));
    if (documentController_)
        content_ =
            std::make_unique<PropertyBinding>(documentController_, "content", this, "document");
}

void WindowControllerWithDocumentController::windowWillClose(QWidget *closing)
{
    assertThat(closing == window(), "The window that closes is not the controller's");
    content_.reset();
    WindowController::windowWillClose(closing);
}

} // namespace kelo
