#include "document/UpdateAccumulation.h"

#include "platform/time/RunLoop.h"

namespace kelo {

UpdateAccumulation::~UpdateAccumulation()
{
    if (const auto timer = timer_.lock()) timer->invalidate();
}

void UpdateAccumulation::restart()
{
    if (const auto waiting = timer_.lock()) waiting->invalidate();
    timer_ = RunLoop::main().scheduledTimer(restingTime, false,
                                            [this](Timer &timer) { rested_(timer); });
}

void UpdateAccumulation::flush()
{
    if (const auto waiting = timer_.lock()) waiting->fire();
}

} // namespace kelo
