#pragma once

#include "platform/NotificationCenter.h"

#include <cstdint>
#include <vector>

namespace kelo {

/// When a queued notification is posted.
enum class PostingStyle {
    WhenIdle, ///< on a pass of the run loop on which nothing else was due
    Soon,     ///< on the next pass of the run loop
    Now,      ///< before the call returns
};

/// By what queued notifications count as the same; equal ones are posted once.
namespace Coalescing {
inline constexpr std::uint32_t None = 0;
inline constexpr std::uint32_t OnName = 1;
inline constexpr std::uint32_t OnSender = 2;
} // namespace Coalescing

/// Queues notifications for a notification centre and posts equal ones only once.
/// A queued notification's object must live until it is posted or dequeued.
class NotificationQueue
{
public:
    explicit NotificationQueue(NotificationCenter &center) : center_(center) {}
    /// The queue of the default notification centre.
    static NotificationQueue &defaultQueue();

    void enqueueNotification(const Notification &notification, PostingStyle style,
                             std::uint32_t coalescing = Coalescing::OnName | Coalescing::OnSender);
    /// Drops the queued notifications that equal this one by `coalescing`.
    void dequeueNotificationsMatching(const Notification &notification, std::uint32_t coalescing);

private:
    struct Entry
    {
        Notification notification;
        PostingStyle style;
    };
    void scheduleDelivery(PostingStyle style);
    void deliver(PostingStyle style);
    NotificationCenter &center_;
    std::vector<Entry> entries_;
    bool soonScheduled_ = false;
    bool idleScheduled_ = false;
};

} // namespace kelo
