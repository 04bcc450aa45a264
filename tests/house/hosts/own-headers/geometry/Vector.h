#pragma once

#include <cstddef>

/// A vector as this host knows it: so many equal numbers.
struct Vector
{
    double number;
    std::size_t count;
};

inline double sum(const Vector &vector)
{
    return vector.number * static_cast<double>(vector.count);
}
