// What the bracket menu does to one tooth, or to all brackets, and its repetition by clicks.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/editing/RepeatAction.h"
#include "models/DXGLightweightModel.h"

#include <functional>
#include <vector>

namespace kelo {
namespace {

/// The colour type that a menu row stands for, or nothing for a row of another kind.
std::optional<long> bracketColorTypeID(const MenuItem &sender)
{
    const auto type = representedTypeOf<BracketColorType>(sender);
    return type ? std::optional(type->typeID) : std::nullopt;
}

HiddenFlags hiddenFlags(const DXDocumentModel::Models &models, const std::string &key)
{
    const auto found = models.find(key);
    if (found == models.end()) return {};
    return {found->second->hiddenPrimary(), found->second->hiddenSecondary()};
}

/// Calls `change` with the key of every bracket that the document has when its turn comes. The keys
/// are taken first: a host may change the document, or clear it, while it is told of a change.
void forEachBracket(const DXDocumentModel &document,
                    const std::function<void(const std::string &key)> &change)
{
    std::vector<std::string> keys;
    for (const auto &[key, model] : document.bracketModels())
        keys.push_back(key);
    for (const std::string &key : keys) {
        if (document.bracketModels().contains(key)) change(key);
    }
}

void clearColors(DXDocumentModel &document)
{
    forEachBracket(document, [&document](const std::string &key) {
        document.bracket_setColorWithBracketColorTypeID(key, noBracketColorTypeID);
    });
}

} // namespace

void DXOpenGL::singleActionDone(ActionType type)
{
    restartRepeatActionTimer();
    state_->lastActionType = static_cast<std::int64_t>(type);
    setTemporaryMouseMode(colorMode);
}

void DXOpenGL::colorLastClickedTooth(const MenuItem &sender, ActionType type)
{
    const auto typeID = bracketColorTypeID(sender);
    const auto document = documentModel();
    if (!typeID || !document || !state_->lastClickedToothName) return;
    state_->lastBracketColorTypeID = typeID;
    const std::string name = *state_->lastClickedToothName;
    const auto color = [&] {
        document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(name, typeID);
    };
    if (!survives(color)) return;
    singleActionDone(type);
    setNeedsDisplay(true);
}

void DXOpenGL::bracketColorMenuItemSelected(MenuItem &sender)
{
    colorLastClickedTooth(sender, ActionType::ColorBracket);
}

void DXOpenGL::placeBracketSelected(MenuItem &sender)
{
    colorLastClickedTooth(sender, ActionType::PlaceBracket);
}

void DXOpenGL::removeBracketSelected(MenuItem &)
{
    const auto document = documentModel();
    if (!document || !state_->lastClickedToothName) return;
    const std::string name = *state_->lastClickedToothName;
    const auto remove = [&] {
        document->toggleVisibilityOfBracket(name);
        document->bracket_setColorWithBracketColorTypeID(name, noBracketColorTypeID);
    };
    if (!survives(remove)) return;
    singleActionDone(ActionType::RemoveBracket);
    setNeedsDisplay(true);
}

void DXOpenGL::toggleButtonOfLastClickedTooth(ActionType type)
{
    const auto document = documentModel();
    if (!document || !state_->lastClickedToothName) return;
    const std::string button = TreatmentNote::buttonNameForToothName(*state_->lastClickedToothName);
    const auto toggle = [&] { document->toggleVisibilityOfButton(button); };
    if (survives(toggle)) singleActionDone(type);
}

void DXOpenGL::placeButtonSelected(MenuItem &)
{
    toggleButtonOfLastClickedTooth(ActionType::PlaceButton);
}

void DXOpenGL::removeButtonSelected(MenuItem &)
{
    toggleButtonOfLastClickedTooth(ActionType::RemoveButton);
}

void DXOpenGL::toggleLastClickedTooth(ActionType type)
{
    const auto document = documentModel();
    if (!document || !state_->lastClickedToothName) return;
    const std::string name = *state_->lastClickedToothName;
    const auto toggle = [&] { document->toggleVisibilityOfTooth(name); };
    if (survives(toggle)) singleActionDone(type);
}

void DXOpenGL::placeToothSelected(MenuItem &)
{
    toggleLastClickedTooth(ActionType::PlaceTooth);
}

void DXOpenGL::removeToothSelected(MenuItem &)
{
    toggleLastClickedTooth(ActionType::RemoveTooth);
}

void DXOpenGL::placeAllBracketsSelected(MenuItem &sender)
{
    const auto typeID = bracketColorTypeID(sender);
    const auto document = documentModel();
    if (!typeID || !document) return;
    const auto place = [&](const std::string &key) {
        const HiddenFlags hidden = hiddenFlags(document->bracketModels(), key);
        if (hidden.primary && !hidden.secondary)
            document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(key, typeID);
    };
    if (survives([&] { forEachBracket(*document, place); })) setNeedsDisplay(true);
}

void DXOpenGL::markAllBracketsSelected(MenuItem &sender)
{
    const auto typeID = bracketColorTypeID(sender);
    const auto document = documentModel();
    if (!typeID || !document) return;
    const auto mark = [&](const std::string &key) {
        document->bracket_setColorWithBracketColorTypeID(key, typeID);
    };
    if (survives([&] { forEachBracket(*document, mark); })) setNeedsDisplay(true);
}

void DXOpenGL::removeAllBracketsSelected(MenuItem &)
{
    const auto document = documentModel();
    const auto remove = [&](const std::string &key) {
        // The second reason to be hidden does not count here.
        if (!hiddenFlags(document->bracketModels(), key).primary)
            document->toggleVisibilityOfBracket(key);
    };
    const auto removeAll = [&] {
        if (!document) return;
        forEachBracket(*document, remove);
        clearColors(*document);
    };
    if (survives(removeAll)) setNeedsDisplay(true);
}

void DXOpenGL::clearAllBracketsSelected(MenuItem &)
{
    const auto document = documentModel();
    const auto clear = [&] {
        if (document) clearColors(*document);
    };
    if (survives(clear)) setNeedsDisplay(true);
}

void DXOpenGL::repeatLastActionOn(const std::string &name)
{
    const auto document = documentModel();
    const std::string button = TreatmentNote::buttonNameForToothName(name);
    const RepeatTarget target{
        hiddenFlags(document->bracketModels(), name), hiddenFlags(document->buttonModels(), button),
        hiddenFlags(document->toothModels(), name), state_->lastClickedToothName == name};
    switch (repeatOperation(state_->lastActionType, target)) {
    case RepeatOperation::None:
        break;
    case RepeatOperation::ShowAndColorBracket:
        document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(
            name, state_->lastBracketColorTypeID);
        break;
    case RepeatOperation::ColorAndToggleBracket:
        document->bracket_setColorWithBracketColorTypeID(name, state_->lastBracketColorTypeID);
        document->toggleVisibilityOfBracket(name);
        break;
    case RepeatOperation::RemoveColorAndToggleBracket:
        document->bracket_setColorWithBracketColorTypeID(name, noBracketColorTypeID);
        document->toggleVisibilityOfBracket(name);
        break;
    case RepeatOperation::ToggleButton:
        document->toggleVisibilityOfButton(button);
        break;
    case RepeatOperation::ToggleTooth:
        document->toggleVisibilityOfTooth(name);
        break;
    }
}

void DXOpenGL::colorMouseDown(const Event &event)
{
    bool isLingualButton = false;
    Name name = bracketNameAtPoint_includeTeeth_isLingualButton(backingPointForEvent(event), true,
                                                                &isLingualButton);
    if (name && isLingualButton) name = TreatmentNote::toothNameForButtonName(*name);
    state_->currentEventToothName = name;
    if (!name) {
        rotateMouseDown(event);
    } else if (!repeatActionTimerIsRunning()) {
        displayBracketMenuForEvent(event);
    } else {
        restartRepeatActionTimer();
        if (survives([&] { repeatLastActionOn(*name); })) setNeedsDisplay(true);
    }
}

} // namespace kelo
