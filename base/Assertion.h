#pragma once

#include "base/Export.h"

#include <stdexcept>
#include <string>

namespace kelo {

/// A programming error, such as a buffer of the wrong length.
class KELO_EXPORT AssertionFailure : public std::logic_error
{
public:
    using std::logic_error::logic_error;
};

/// Throws AssertionFailure with `message` when `condition` does not hold, in every kind of build.
inline void assertThat(bool condition, const char *message)
{
    if (!condition) throw AssertionFailure(message);
}

} // namespace kelo
