#include "keloOpenGL/windows/SolidWindowController.h"

#include "base/Assertion.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/NotificationQueue.h"
#include "platform/widgets/Document.h"

#include <utility>

namespace kelo {
namespace {

/// Once, however often it is asked for, and in the size that the window has by then.
void zoomToFitSoon(DXOpenGL &view)
{
    NotificationCenter::defaultCenter().addObserver(
        &view, [&view](const Notification &) { view.zoomToFit(); }, zoomToFitNotification, &view);
    NotificationQueue::defaultQueue().enqueueNotification(
        {zoomToFitNotification, &view}, PostingStyle::Soon,
        Coalescing::OnName | Coalescing::OnSender);
}

void stopZoomingToFit(const DXOpenGL &view)
{
    NotificationQueue::defaultQueue().dequeueNotificationsMatching(
        {zoomToFitNotification, &view}, Coalescing::OnName | Coalescing::OnSender);
    // Only what is observed in the view's name: what it observes itself has another observer.
    NotificationCenter::defaultCenter().removeObserver(&view);
}

} // namespace

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
    bindView();
    if (const auto shown = view()) zoomToFitSoon(*shown);
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
    if (const auto shown = view()) stopZoomingToFit(*shown);
    documentModel_.reset();
}

} // namespace kelo
