#pragma once

#include "base/Export.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelo {

/// What observers are told: a name, and the object that it is about (compared by address only).
struct Notification
{
    std::string name;
    const void *object = nullptr;
};

/// Hands notifications, synchronously, to those who observe their name and sender. Main thread
/// only. Observers are told in the order in which they were added. They may add and remove
/// observers, themselves included, from inside a notification: one that is added is told from the
/// next notification on, one that is removed is not told any more.
class KELO_EXPORT NotificationCenter
{
public:
    using Handler = std::function<void(const Notification &)>;

    static NotificationCenter &defaultCenter();

    /// `observer` is an address that stands for the observing object in removeObserver; an empty
    /// `name` means every name, a null `object` every sender.
    void addObserver(const void *observer, Handler handler, const std::string &name,
                     const void *object = nullptr);
    /// Removes every observation of `observer`.
    void removeObserver(const void *observer);
    /// Removes the observations of `observer` for this name and sender (as given when added).
    void removeObserver(const void *observer, const std::string &name,
                        const void *object = nullptr);

    /// Returns when every observer was told.
    void postNotification(const Notification &notification);
    void postNotificationName(const std::string &name, const void *object = nullptr);

private:
    struct Observation;
    template<class Predicate>
    void removeIf(Predicate matches);
    std::vector<std::shared_ptr<Observation>> observations_;
};

} // namespace kelo
