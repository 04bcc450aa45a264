#include "platform/time/NotificationQueue.h"

#include "platform/time/RunLoop.h"

#include <algorithm>

namespace kelo {

NotificationQueue::NotificationQueue(NotificationCenter &center)
    : center_(center), life_(std::make_shared<char>())
{}

NotificationQueue::~NotificationQueue() = default;

NotificationQueue &NotificationQueue::defaultQueue()
{
    // Never destroyed, like the centre: objects that end at exit may still use it.
    static auto *queue = new NotificationQueue(NotificationCenter::defaultCenter());
    return *queue;
}

void NotificationQueue::enqueueNotification(const Notification &notification, PostingStyle style,
                                            std::uint32_t coalescing)
{
    dequeueNotificationsMatching(notification, coalescing);
    if (style == PostingStyle::Now) {
        center_.postNotification(notification);
        return;
    }
    entries_.push_back({notification, style, nextOrder_++});
    scheduleDelivery(style);
}

void NotificationQueue::dequeueNotificationsMatching(const Notification &notification,
                                                     std::uint32_t coalescing)
{
    if (coalescing == Coalescing::None) return;
    std::erase_if(entries_, [&](const Entry &entry) {
        const bool nameMatters = (coalescing & Coalescing::OnName) != 0;
        const bool senderMatters = (coalescing & Coalescing::OnSender) != 0;
        return (!nameMatters || entry.notification.name == notification.name) &&
               (!senderMatters || entry.notification.object == notification.object);
    });
}

void NotificationQueue::scheduleDelivery(PostingStyle style)
{
    Delivery &delivery = style == PostingStyle::Soon ? soon_ : whenIdle_;
    RunLoop &loop = RunLoop::main();
    // A main loop that was replaced may never run its task: ask the present one too.
    if (!delivery.ticket.expired() && delivery.loop == &loop) return;
    const std::shared_ptr<void> ticket = std::make_shared<char>();
    delivery = {&loop, ticket};
    auto task = [this, style, ticket, queueLife = std::weak_ptr<void>(life_)] {
        if (!queueLife.expired()) deliver(style);
    };
    if (style == PostingStyle::Soon)
        loop.performSoon(std::move(task));
    else
        loop.performWhenIdle(std::move(task));
}

void NotificationQueue::deliver(PostingStyle style)
{
    // What observers queue from now on needs a delivery of its own.
    (style == PostingStyle::Soon ? soon_ : whenIdle_) = {};
    const std::weak_ptr<void> alive = life_;
    const std::uint64_t limit = nextOrder_;
    while (!alive.expired()) {
        const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry &queued) {
            return queued.style == style && queued.order < limit;
        });
        if (entry == entries_.end()) return;
        const Notification notification = entry->notification;
        entries_.erase(entry);
        center_.postNotification(notification);
    }
}

} // namespace kelo
