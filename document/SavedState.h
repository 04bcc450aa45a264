#pragma once

#include "base/Export.h"
#include "keloModel/NameKey.h"
#include "keloModel/SavedElastic.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class DXDocumentModel;
class ElasticModel;
struct ElasticsConfigType;
struct ElasticsSizeType;

/// What a clinician can change in a document, as plain values that a host can store. Default
/// constructed: all teeth, and nothing else.
struct SavedState
{
    /// A tooth that is left out is visible; a bracket or button that is left out is not placed.
    NameKeyDictionary<bool> toothVisibilities;
    NameKeyDictionary<bool> bracketVisibilities;
    NameKeyDictionary<bool> buttonVisibilities;
    /// A bracket that is left out has no colour, like one with `nullopt` or 4999.
    NameKeyDictionary<std::optional<long>> bracketColorTypeIDs;
    std::vector<SavedElastic> elastics; ///< in placing order
    bool operator==(const SavedState &) const = default;
};

/// What of an elastic could not be restored.
struct KELO_EXPORT ElasticProblem
{
    enum class Kind {
        UnknownMember,       ///< no bracket or button of the document: the elastic is left out
        UnknownSize,         ///< not in the catalogue: the band has no colour
        UnknownConfiguration ///< not in the catalogue
    };
    Kind kind = Kind::UnknownMember;
    std::size_t elasticIndex = 0; ///< in SavedState::elastics
    std::string member;           ///< of UnknownMember
    long typeID = 0;              ///< of the two others

    /// In one line of English, for a log: "elastic 6,40 is left out: 40 is no bracket or button".
    std::string sentence(const SavedState &state) const;
    bool operator==(const ElasticProblem &) const = default;
};

/// @name One elastic
/// @{
KELO_EXPORT SavedElastic savedElasticOf(const ElasticModel &elastic);
/// An elastic of these values, which is not placed.
KELO_EXPORT std::shared_ptr<ElasticModel> elasticOf(const DXDocumentModel &document,
                                                    const SavedElastic &saved);
/// The records that the document offers for the values, or null where there is none. For a typeID
/// that it does not offer, a record of its own with this typeID, so that the value is not lost.
KELO_EXPORT std::shared_ptr<ElasticsConfigType> configTypeOf(const DXDocumentModel &document,
                                                             const SavedElastic &saved);
KELO_EXPORT std::shared_ptr<ElasticsSizeType> sizeTypeOf(const DXDocumentModel &document,
                                                         const SavedElastic &saved);
/// @}

/// The state as restoreState takes it.
KELO_EXPORT SavedState savedStateOf(const DXDocumentModel &document);

/// Replaces the document's whole state. Load its meshes and set its catalogue first. Posts
/// documentModelChangedNotification; the delegate hears nothing and no update is accumulated. Keys
/// without a model are passed over. Returns what is wrong with the elastics, in their order.
///
/// Elastics are made by elasticOf. What is wrong with colours is said on standard error:
/// DXDocumentModel::setBracketColorTypeIDs.
KELO_EXPORT std::vector<ElasticProblem> restoreState(DXDocumentModel &document,
                                                     const SavedState &state);

} // namespace kelo
