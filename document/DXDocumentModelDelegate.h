#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelo {

class DXDocumentModel;
class ElasticModel;

/// What a host is told of changes to a treatment. An empty member is an operation that the delegate
/// does not have, and is skipped.
///
/// An operation may call the document model back in any way, give it another delegate, destroy this
/// one, or release the last reference to the document model.
struct DXDocumentModelDelegate
{
    /// The tooth of this key was switched on or off.
    std::function<void(const std::string &key, bool visible)> tooth_visibilityDidChange;
    /// The bracket of this key was placed or removed.
    std::function<void(const std::string &key, bool visible)> bracket_visibilityDidChange;
    /// The lingual button of this key was placed or removed.
    std::function<void(const std::string &key, bool visible)> button_visibilityDidChange;

    /// Bracket colours or visibilities are waiting to be fetched with bracketColorTypeIDUpdates and
    /// bracketVisibilityUpdates. What is not fetched is offered again after the next changes.
    std::function<void(DXDocumentModel &model)> bracketUpdatesAvailable;
    /// Button visibilities are waiting to be fetched with buttonVisibilityUpdates.
    std::function<void(DXDocumentModel &model)> buttonUpdatesAvailable;

    std::function<void(const std::shared_ptr<ElasticModel> &elastic)> elasticModelPlaced;
    std::function<void(const std::shared_ptr<ElasticModel> &elastic)> elasticModelRemoved;
    /// The elastic has another size, and with it another colour.
    std::function<void(const std::shared_ptr<ElasticModel> &elastic)> elasticModelColorDidChange;
    /// Elastics that ran through the hidden bracket or button of the one key in `keys` were
    /// shortened or removed; the removed ones are not reported one by one.
    std::function<void(const std::vector<std::string> &keys)> elasticModelsRefactoredAroundBrackets;
};

} // namespace kelo
