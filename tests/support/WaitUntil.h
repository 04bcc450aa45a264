#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <functional>

namespace kelo::test {

/// Handles events until `condition` holds or the time is over; says whether it holds. Tests ask for
/// it in an assertion, whose failure then shows the condition:
///
///     ASSERT_TRUE(waitUntil([&] { return view->isExposed(); }));
///
/// The time is only the end of patience: a condition that holds is noticed within a millisecond.
inline bool waitUntil(const std::function<bool()> &condition, int milliseconds = 5000)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > milliseconds) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(1); // leaves the processor to whoever is waited for
    }
    return true;
}

/// Handles events for a while, to see that something does not happen. Every call says on its line
/// why there is nothing to wait for; a test of the house looks for it.
inline void letPass(int milliseconds)
{
    waitUntil([] { return false; }, milliseconds);
}

} // namespace kelo::test
