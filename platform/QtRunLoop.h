#pragma once

#include "platform/RunLoop.h"

#include <QObject>
#include <QTimer>

namespace kelo {

/// The run loop of a real application, driven by Qt's event loop and the system's clock.
class QtRunLoop : public QObject, public RunLoop
{
public:
    QtRunLoop();
    double currentTime() const override;

protected:
    void scheduleChanged() override;

private:
    void wakeUp();
    QTimer wakeUpTimer_;
};

} // namespace kelo
