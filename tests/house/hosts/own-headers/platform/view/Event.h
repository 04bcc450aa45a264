#pragma once

#include <string>

/// An event as this host knows it: an appointment.
struct Event
{
    std::string day;
};
