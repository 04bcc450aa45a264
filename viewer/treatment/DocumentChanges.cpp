#include "viewer/treatment/DocumentChanges.h"

#include <utility>

namespace viewer {

DocumentChanges::~DocumentChanges()
{
    kelo::NotificationCenter::defaultCenter().removeObserver(this);
}

void DocumentChanges::watch(std::shared_ptr<const kelo::DXDocumentModel> document)
{
    auto &center = kelo::NotificationCenter::defaultCenter();
    center.removeObserver(this);
    isPending_ = false;
    document_ = std::move(document);
    if (document_)
        center.addObserver(
            this, [this](const kelo::Notification &) { documentChanged(); },
            kelo::documentModelChangedNotification, document_.get());
}

void DocumentChanges::documentChanged()
{
    if (std::exchange(isPending_, true)) return;
    // Queued events come before those of the user that wait.
    QMetaObject::invokeMethod(
        &afterEvent_, [this] { flush(); }, Qt::QueuedConnection);
}

void DocumentChanges::flush()
{
    if (std::exchange(isPending_, false)) changed_();
}

} // namespace viewer
