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
    friend bool operator==(const ElasticState &, const ElasticState &) = default;
};

/// What a clinician can change in a document, as plain values: what undo goes back to.
struct DocumentState
{
    kelo::DXDocumentModel::Visibilities teeth, brackets, buttons;
    kelo::DXDocumentModel::ColorTypeIDs bracketColors;
    std::vector<ElasticState> elastics; ///< in placing order
    friend bool operator==(const DocumentState &, const DocumentState &) = default;
};

DocumentState stateOf(const kelo::DXDocumentModel &document);

/// Brings the document there through the operations that a user's actions call, so that the host
/// hears of every change. Keys that the state does not have stay as they are.
void applyState(kelo::DXDocumentModel &document, const DocumentState &state);

} // namespace viewer
