#pragma once

#include "base/Export.h"
#include "keloModel/QKType.h"

namespace kelo {

/// A named elastic: a size, and the members that the band runs through.
struct KELO_EXPORT ElasticsConfigType : QKType
{
    /// The typeID of its ElasticsSizeType; 0 or less when it names none.
    long elasticsSizeTypeID = 0;
    /// Name keys of brackets and lingual buttons in band order, joined by commas without blanks, as
    /// in "6,30" or "3l,30"; empty when the configuration has no particular place.
    std::string bracketSequence;

    /// Whether there is a sequence to place.
    bool hasAssociatedSequence() const { return !bracketSequence.empty(); }
};

} // namespace kelo
