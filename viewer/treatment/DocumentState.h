#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <memory>
#include <string>
#include <vector>

namespace viewer {

struct ElasticState
{
    std::shared_ptr<kelo::ElasticsConfigType> configType;
    std::shared_ptr<kelo::ElasticsSizeType> sizeType;
    std::vector<std::string> bracketSequence;
    /// A configuration that was renamed is the same one.
    bool operator==(const ElasticState &other) const;
};

/// What a clinician can change in a document, as plain values: what undo goes back to.
struct DocumentState
{
    kelo::DXDocumentModel::Visibilities teeth, brackets, buttons;
    kelo::DXDocumentModel::ColorTypeIDs bracketColors;
    std::vector<ElasticState> elastics; ///< in placing order
    bool operator==(const DocumentState &) const = default;
};

DocumentState stateOf(const kelo::DXDocumentModel &document);

/// Whether both are the same configuration, by its identifier, or none.
bool isSameConfiguration(const std::shared_ptr<kelo::ElasticsConfigType> &one,
                         const std::shared_ptr<kelo::ElasticsConfigType> &other);

/// Brings the document there through the operations that a user's actions call, so that the host
/// hears of every change. Keys that the state does not have stay as they are.
/// Configurations are given as the document offers them now.
void applyState(kelo::DXDocumentModel &document, const DocumentState &state);

} // namespace viewer
