#include "keloOpenGL/windows/SolidWindowController.h"

#include "base/Assertion.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/NotificationQueue.h"
#include "platform/widgets/Document.h"

#include <utility>

namespace kelo {

SolidWindowController::SolidWindowController(std::string windowNibName)
    : WindowControllerWithDocumentController(std::move(windowNibName))
{
    registerTreatmentView();
    connect(this, &WindowController::documentChanged, this, &SolidWindowController::bindView);
}

SolidWindowController::~SolidWindowController()
{
    forgetView();
}

std::shared_ptr<DXOpenGL> SolidWindowController::view() const
{
    const TreatmentView *const shown = treatmentView_.data();
    if (!shown) return nullptr;
    return shown->view();
}

void SolidWindowController::bindView()
{
    documentModel_.reset();
    if (treatmentView_ && document())
        documentModel_ =
            std::make_unique<PropertyBinding>(treatmentView_, "documentModel", document(), "model");
}

void SolidWindowController::awakeFromNib()
{
    WindowControllerWithDocumentController::awakeFromNib();
    treatmentView_ = window()->findChild<TreatmentView *>(QStringLiteral("view"));
    mouseModeView_ = window()->findChild<QWidget *>(QStringLiteral("mouseModeView"));
    if (!treatmentView_) return;
    bindView();
    DXOpenGL *const shown = view().get();
    NotificationCenter::defaultCenter().addObserver(
        shown, [shown](const Notification &) { shown->zoomToFit(); }, zoomToFitNotification, shown);
    NotificationQueue::defaultQueue().enqueueNotification(
        {zoomToFitNotification, shown}, PostingStyle::Soon,
        Coalescing::OnName | Coalescing::OnSender);
}

void SolidWindowController::windowWillClose(QWidget *closing)
{
    assertThat(closing == window(), "The window that closes is not the controller's");
    disconnect(this, &WindowController::documentChanged, this, &SolidWindowController::bindView);
    forgetView();
    WindowControllerWithDocumentController::windowWillClose(closing);
}

void SolidWindowController::forgetView()
{
    if (const auto shown = view()) {
        NotificationQueue::defaultQueue().dequeueNotificationsMatching(
            {zoomToFitNotification, shown.get()}, Coalescing::OnName | Coalescing::OnSender);
        // What is observed in the view's name; what the view hears for itself it goes on hearing.
        NotificationCenter::defaultCenter().removeObserver(shown.get());
    }
    documentModel_.reset();
}

} // namespace kelo
