#pragma once

#include "base/Export.h"

#include <stdexcept>

namespace kelo {

/// Thrown by the lists of models when one that they name is not loaded; the text says which.
class KELO_EXPORT ModelNotLoaded : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace kelo
