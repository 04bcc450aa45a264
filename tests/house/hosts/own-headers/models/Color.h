#pragma once

#include <string>

/// A colour as this host knows it: by its name.
struct Color
{
    std::string name;
};
