#include "document/DXDocumentModel.h"

#include "base/TellDelegate.h"
#include "document/ModelLookup.h"
#include "models/HVOGLMaterial.h"
#include "models/ToothModelLoader.h"
#include "platform/time/RunLoop.h"

#include <cstdio>
#include <utility>

namespace kelo {
namespace {

/// The colour of an available type; nothing when there is no such type or it has no colour.
std::optional<Color> colorOfType(const DXDocumentModel::BracketColorTypes &types, long typeID)
{
    const auto type = types.find(typeID);
    if (type == types.end() || !type->second) return std::nullopt;
    return Color::fromComponents(type->second->bracketColor);
}

void sayNotAvailable(const DXDocumentModel::BracketColorTypes &types, long typeID,
                     const std::string &key)
{
    std::string available;
    for (const auto &[availableID, type] : types) {
        if (!available.empty()) available += ", ";
        available += std::to_string(availableID);
    }
    std::fprintf(stderr,
                 "Error: Specified color \"%s\" for bracket %s is not in the list of available "
                 "colors (%s)\n",
                 std::to_string(typeID).c_str(), key.c_str(), available.c_str());
}

void paint(const std::shared_ptr<DXGLightweightModel> &bracket, const std::optional<Color> &color)
{
    if (bracket) bracket->setMaterial(ToothModelLoader::standardMaterialForColor(color));
}

} // namespace

void DXDocumentModel::setBracketColorTypeIDs(const OptionalColorTypeIDs &typeIDs)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] {
        _bracketColorTypeIDs.clear();
        for (const auto &[key, typeID] : typeIDs) {
            std::optional<Color> color = Color::whiteColor();
            if (typeID) {
                color = colorOfType(_availableBracketColorTypes, *typeID);
                if (!color) {
                    sayNotAvailable(_availableBracketColorTypes, *typeID, key);
                    continue;
                }
                _bracketColorTypeIDs.insert_or_assign(key, *typeID);
            }
            paint(modelUnderKey(_bracketModels, key), color);
        }
    });
}

void DXDocumentModel::bracket_setColorWithBracketColorTypeID(const std::string &givenKey,
                                                             const std::optional<long> &givenTypeID)
{
    const auto keepAlive = weak_from_this().lock();
    // Copies, because painting posts a notification, and who hears it may change what these are in.
    const std::string key = givenKey;
    const std::optional<long> typeID = givenTypeID;
    const auto bracket = modelUnderKey(_bracketModels, key);
    change([&] {
        if (typeID) {
            _bracketColorTypeIDs.insert_or_assign(key, *typeID);
            paint(bracket, colorOfType(_availableBracketColorTypes, *typeID));
        } else {
            _bracketColorTypeIDs.erase(key);
            paint(bracket, Color::whiteColor());
        }
        accumulateUpdateForBracket_withBracketColorTypeID(key, typeID);
    });
}

void DXDocumentModel::bracket_makeVisibleAndSetColorWithBracketColorTypeID(
    const std::string &givenKey, const std::optional<long> &givenTypeID)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    const std::optional<long> typeID = givenTypeID;
    if (isHiddenPrimary(modelUnderKey(_bracketModels, key))) toggleVisibilityOfBracket(key);
    if (isHiddenPrimary(modelUnderKey(_toothModels, key))) toggleVisibilityOfTooth(key);
    bracket_setColorWithBracketColorTypeID(key, typeID);
}

void DXDocumentModel::restartUpdateAccumulationTimer()
{
    if (const auto pending = updateAccumulationTimer_.lock()) pending->invalidate();
    // The destructor invalidates the timer, so that it never fires for a model that is gone.
    updateAccumulationTimer_ = RunLoop::main().scheduledTimer(
        updateAccumulationTime_, false, [this](Timer &timer) { updateAccumulationTimer(timer); });
}

void DXDocumentModel::accumulateUpdateForBracket_withBracketColorTypeID(
    const std::string &key, const std::optional<long> &typeID)
{
    bracketColorTypeIDUpdates_.insert_or_assign(key, typeID.value_or(noBracketColorTypeID));
    restartUpdateAccumulationTimer();
}

void DXDocumentModel::accumulateUpdateForBracket_visibility(const std::string &key, bool visible)
{
    bracketVisibilityUpdates_.insert_or_assign(key, visible);
    restartUpdateAccumulationTimer();
}

void DXDocumentModel::accumulateUpdateForButton_visibility(const std::string &key, bool visible)
{
    buttonVisibilityUpdates_.insert_or_assign(key, visible);
    restartUpdateAccumulationTimer();
}

void DXDocumentModel::updateAccumulationTimer(Timer &)
{
    const auto keepAlive = weak_from_this().lock();
    updateAccumulationTimer_.reset();
    if (!bracketVisibilityUpdates_.empty() || !bracketColorTypeIDUpdates_.empty())
        tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::bracketUpdatesAvailable, *this);
    if (!buttonVisibilityUpdates_.empty())
        tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::buttonUpdatesAvailable, *this);
}

void DXDocumentModel::flushOutstandingUpdates()
{
    const auto keepAlive = weak_from_this().lock();
    if (const auto pending = updateAccumulationTimer_.lock()) pending->fire();
}

DXDocumentModel::ColorTypeIDs DXDocumentModel::bracketColorTypeIDUpdates()
{
    return std::exchange(bracketColorTypeIDUpdates_, {});
}

DXDocumentModel::Visibilities DXDocumentModel::bracketVisibilityUpdates()
{
    return std::exchange(bracketVisibilityUpdates_, {});
}

DXDocumentModel::Visibilities DXDocumentModel::buttonVisibilityUpdates()
{
    return std::exchange(buttonVisibilityUpdates_, {});
}

} // namespace kelo
