#pragma once

#include "base/Export.h"
#include "platform/time/RunLoop.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace kelo {

/// The run loop of a real application, driven by Qt's event loop (nested ones, as of menus and
/// modal boxes, included) and the system's clock. Nothing fires early; how late depends on the
/// event loop, about a millisecond at best. Waits for an application object: what is scheduled
/// before there is one fires once something is scheduled after.
class KELO_EXPORT QtRunLoop : public QObject, public RunLoop
{
public:
    /// Where the loop has its time from, in seconds.
    struct Clocks
    {
        std::function<double()> wall;   ///< since 1970; may be set by the user, jumps over sleep
        std::function<double()> steady; ///< never set; any origin
    };

    /// Runs by the system's clocks.
    QtRunLoop();
    explicit QtRunLoop(Clocks clocks);

    /// The wall clock. When it is set, or jumps because the machine slept, the timers keep the time
    /// that they have still to wait.
    double currentTime() const override;
    double steadyTime() const override;

protected:
    void scheduleChanged() override;

private:
    void wakeUp();
    Clocks clocks_;
    QTimer wakeUpTimer_;
};

} // namespace kelo
