#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <map>
#include <memory>

namespace viewer {

/// The configurations that a document's elastics have had. A name that another window takes back is
/// no longer offered once no elastic has it; an elastic that undo places again has it all the same.
class ConfigurationsSeen
{
public:
    /// Remembers those of all placed elastics.
    void remember(const kelo::DXDocumentModel &document);

    /// As the document offers it now, under whatever name; else as an elastic had it last; else a
    /// record of its own (see kelo::configTypeOf). Null for an elastic without a configuration.
    std::shared_ptr<kelo::ElasticsConfigType> typeOf(const kelo::DXDocumentModel &document,
                                                     const kelo::SavedElastic &saved) const;

private:
    std::map<long, std::shared_ptr<kelo::ElasticsConfigType>> types_;
};

} // namespace viewer
