#pragma once

#include "base/Export.h"

#include <string>

namespace kelo {

/// A record of one of the host's catalogues. Held by shared_ptr wherever it is retained.
struct KELO_EXPORT QKType
{
    virtual ~QKType() = default;

    long typeID = 0;       ///< identifies the record among those of its kind
    std::string typeLabel; ///< what the user reads
    long displayOrder = 0; ///< catalogues are listed by this, ascending
    std::string name;      ///< the host's own name for it; the library never reads it
};

} // namespace kelo
