#pragma once

#include <memory>
#include <utility>

namespace kelo {

/// An object that calls out to a host, which may do anything there: let go of the last reference to
/// that object, destroy or replace its delegate, change what the object works on.
struct Teller
{
    std::weak_ptr<const void> self; ///< empty for an object that no shared_ptr holds
    std::weak_ptr<const void> life; ///< expires when the object ends
};

/// Runs `call`, and keeps the teller alive until it has returned, where a shared_ptr holds the
/// teller. Returns whether the teller lives on; after false nothing of it may be touched.
template<class Call>
bool callOut(const Teller &teller, Call &&call)
{
    // Of its own: the teller may be a part of what ends.
    const std::weak_ptr<const void> life = teller.life;
    {
        const std::shared_ptr<const void> keepAlive = teller.self.lock();
        std::forward<Call>(call)();
    }
    return !life.expired();
}

/// Calls an operation of a delegate as callOut does, if there is a delegate and it has the
/// operation. The operation is copied first, because it may destroy the delegate that it is in.
/// Arguments are passed by reference: those that could change meanwhile are the caller's copies.
template<class Delegate, class Operation, class... Arguments>
bool tellDelegate(const Teller &teller, const Delegate *delegate, Operation Delegate::*operation,
                  Arguments &&...arguments)
{
    if (!delegate) return true;
    const Operation told = delegate->*operation;
    if (!told) return true;
    return callOut(teller, [&] { told(std::forward<Arguments>(arguments)...); });
}

} // namespace kelo
