#pragma once

#include "base/Export.h"
#include "platform/time/NotificationCenter.h"

#include <cstdint>
#include <deque>
#include <memory>

namespace kelo {

class RunLoop;

/// When a queued notification is posted.
enum class PostingStyle {
    WhenIdle, ///< on a pass of the run loop on which nothing else was due
    Soon,     ///< on the next pass of the run loop
    Now,      ///< before the call returns
};

/// By what queued notifications count as the same; equal ones are posted once. With None every one
/// is posted.
namespace Coalescing {
inline constexpr std::uint32_t None = 0;
inline constexpr std::uint32_t OnName = 1;
inline constexpr std::uint32_t OnSender = 2;
} // namespace Coalescing

/// Queues notifications for a notification centre and posts equal ones only once.
/// Notifications of one style are posted in the order in which they were queued; what an observer
/// queues meanwhile waits for a later pass.
/// A queued notification's object must live until it is posted or dequeued. Main thread only.
class KELO_EXPORT NotificationQueue
{
public:
    /// The centre must outlive the queue. What is queued when a queue ends is not posted.
    explicit NotificationQueue(NotificationCenter &center);
    ~NotificationQueue();
    NotificationQueue(const NotificationQueue &) = delete;
    NotificationQueue &operator=(const NotificationQueue &) = delete;

    /// The queue of the default notification centre.
    static NotificationQueue &defaultQueue();

    /// Takes equal notifications (by `coalescing`, of any style) out of the queue, then queues this
    /// one, or posts it at once in style Now. So of equal ones the last decides style and place.
    void enqueueNotification(const Notification &notification, PostingStyle style,
                             std::uint32_t coalescing = Coalescing::OnName | Coalescing::OnSender);
    /// Drops the queued notifications that equal this one by `coalescing`; with None nothing.
    void dequeueNotificationsMatching(const Notification &notification, std::uint32_t coalescing);

private:
    struct Entry
    {
        Notification notification;
        PostingStyle style;
        std::uint64_t order;
    };
    /// A delivery that a run loop has been asked for; the ticket lives as long as the loop's task.
    struct Delivery
    {
        RunLoop *loop = nullptr;
        std::weak_ptr<void> ticket;
    };
    void scheduleDelivery(PostingStyle style);
    void deliver(PostingStyle style);

    NotificationCenter &center_;
    std::deque<Entry> entries_;
    std::uint64_t nextOrder_ = 0;
    Delivery soon_;
    Delivery whenIdle_;
    std::shared_ptr<void> life_;
};

} // namespace kelo
