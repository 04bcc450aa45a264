#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/treatment/ConfigurationsSeen.h"

#include <memory>

namespace viewer {

/// Whether both are the same configuration, by its identifier, or none.
bool isSameConfiguration(const std::shared_ptr<kelo::ElasticsConfigType> &one,
                         const std::shared_ptr<kelo::ElasticsConfigType> &other);

/// Brings the document there through the operations that a user's actions call, so that the host
/// hears of every change. Keys that the state does not have stay as they are.
/// Configurations and sizes are given as the document offers them now, and a configuration that it
/// offers no longer as an elastic had it last.
void applyState(kelo::DXDocumentModel &document, const kelo::SavedState &state,
                const ConfigurationsSeen &configurations = {});

} // namespace viewer
