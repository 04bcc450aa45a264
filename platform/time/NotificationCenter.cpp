#include "platform/time/NotificationCenter.h"

#include <algorithm>
#include <utility>

namespace kelo {

struct NotificationCenter::Observation
{
    const void *observer;
    Handler handler;
    std::string name;
    const void *object;
    bool removed = false;

    bool concerns(const Notification &notification) const
    {
        return (name.empty() || name == notification.name) &&
               (!object || object == notification.object);
    }
};

NotificationCenter &NotificationCenter::defaultCenter()
{
    // Never destroyed: objects that end at exit still remove themselves from it.
    static auto *center = new NotificationCenter;
    return *center;
}

void NotificationCenter::addObserver(const void *observer, Handler handler, const std::string &name,
                                     const void *object)
{
    observations_.push_back(
        std::make_shared<Observation>(Observation{observer, std::move(handler), name, object}));
}

template<class Predicate>
void NotificationCenter::removeIf(Predicate matches)
{
    // The handlers may own what calls back into this centre as it ends: they go last.
    std::vector<std::shared_ptr<Observation>> removed;
    std::erase_if(observations_, [&](const std::shared_ptr<Observation> &observation) {
        if (!matches(*observation)) return false;
        observation->removed = true;
        removed.push_back(observation);
        return true;
    });
}

void NotificationCenter::removeObserver(const void *observer)
{
    removeIf([observer](const Observation &each) { return each.observer == observer; });
}

void NotificationCenter::removeObserver(const void *observer, const std::string &name,
                                        const void *object)
{
    removeIf([&](const Observation &each) {
        return each.observer == observer && each.name == name && each.object == object;
    });
}

void NotificationCenter::postNotification(const Notification &notification)
{
    // Only those who observe now are told, and of these nobody who is removed before their turn.
    std::vector<std::shared_ptr<Observation>> told;
    for (const auto &observation : observations_)
        if (observation->concerns(notification)) told.push_back(observation);
    // The caller's notification may belong to something that a handler destroys.
    const Notification kept = notification;
    for (const auto &observation : told)
        if (!observation->removed && observation->handler) observation->handler(kept);
}

void NotificationCenter::postNotificationName(const std::string &name, const void *object)
{
    postNotification({name, object});
}

} // namespace kelo
