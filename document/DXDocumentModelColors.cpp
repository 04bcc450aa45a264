#include "document/DXDocumentModelParts.h"

#include "platform/time/RunLoop.h"

#include <utility>

namespace kelo {

void DXDocumentModel::setBracketColorTypeIDs(const OptionalColorTypeIDs &typeIDs)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] { parts_->paint.restore(parts_->models.brackets, typeIDs); });
}

void DXDocumentModel::bracket_setColorWithBracketColorTypeID(const std::string &key,
                                                             const std::optional<long> &typeID)
{
    setColor(key, typeID);
}

/// Gets copies, because painting posts a notification, and who hears it may change what the given
/// values are in.
void DXDocumentModel::setColor(std::string bracketKey, std::optional<long> typeID)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] {
        parts_->paint.choose(parts_->models.brackets, bracketKey, typeID);
        accumulateUpdateForBracket_withBracketColorTypeID(bracketKey, typeID);
    });
}

void DXDocumentModel::bracket_makeVisibleAndSetColorWithBracketColorTypeID(
    const std::string &givenKey, const std::optional<long> &givenTypeID)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    const std::optional<long> typeID = givenTypeID;
    showWithTooth(key);
    setColor(key, typeID);
}

void DXDocumentModel::accumulateUpdateForBracket_withBracketColorTypeID(
    const std::string &key, const std::optional<long> &typeID)
{
    parts_->updates.note(parts_->updates.bracketColorTypeIDs, key,
                         typeID.value_or(noBracketColorTypeID));
}

void DXDocumentModel::accumulateUpdateForBracket_visibility(const std::string &key, bool visible)
{
    parts_->updates.note(parts_->updates.bracketVisibilities, key, visible);
}

void DXDocumentModel::accumulateUpdateForButton_visibility(const std::string &key, bool visible)
{
    parts_->updates.note(parts_->updates.buttonVisibilities, key, visible);
}

void DXDocumentModel::updateAccumulationTimer(Timer &)
{
    using Delegate = DXDocumentModelDelegate;
    const auto keepAlive = weak_from_this().lock();
    parts_->updates.timerHasFired();
    if (parts_->updates.hasBracketUpdates()) tell(&Delegate::bracketUpdatesAvailable, *this);
    if (parts_->updates.hasButtonUpdates()) tell(&Delegate::buttonUpdatesAvailable, *this);
}

void DXDocumentModel::flushOutstandingUpdates()
{
    const auto keepAlive = weak_from_this().lock();
    parts_->updates.flush();
}

DXDocumentModel::ColorTypeIDs DXDocumentModel::bracketColorTypeIDUpdates()
{
    return std::exchange(parts_->updates.bracketColorTypeIDs, {});
}

DXDocumentModel::Visibilities DXDocumentModel::bracketVisibilityUpdates()
{
    return std::exchange(parts_->updates.bracketVisibilities, {});
}

DXDocumentModel::Visibilities DXDocumentModel::buttonVisibilityUpdates()
{
    return std::exchange(parts_->updates.buttonVisibilities, {});
}

} // namespace kelo
