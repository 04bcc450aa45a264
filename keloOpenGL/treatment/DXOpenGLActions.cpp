// What the bracket menu does to one tooth, or to all brackets, and its repetition by clicks.

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/DXDocumentModel.h"
#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/treatment/RepeatAction.h"
#include "models/DXGLightweightModel.h"

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

/// The keys first: a host may change the document while it is told of a change.
std::vector<std::string> keysOf(const DXDocumentModel::Models &models)
{
    std::vector<std::string> keys;
    for (const auto &[key, model] : models)
        keys.push_back(key);
    return keys;
}

} // namespace

void DXOpenGL::singleActionDone(ActionType type)
{
    restartRepeatActionTimer();
    lastActionType_ = static_cast<std::int64_t>(type);
    setTemporaryMouseMode(colorMode);
}

void DXOpenGL::colorLastClickedTooth(const MenuItem &sender, ActionType type)
{
    const auto typeID = bracketColorTypeID(sender);
    const auto document = documentModel();
    if (!typeID || !document || !lastClickedToothName_) return;
    lastBracketColorTypeID_ = typeID;
    document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(*lastClickedToothName_, typeID);
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
    if (!document || !lastClickedToothName_) return;
    const std::string name = *lastClickedToothName_;
    document->toggleVisibilityOfBracket(name);
    document->bracket_setColorWithBracketColorTypeID(name, noBracketColorTypeID);
    singleActionDone(ActionType::RemoveBracket);
    setNeedsDisplay(true);
}

void DXOpenGL::toggleButtonOfLastClickedTooth(ActionType type)
{
    const auto document = documentModel();
    if (!document || !lastClickedToothName_) return;
    document->toggleVisibilityOfButton(
        TreatmentNote::buttonNameForToothName(*lastClickedToothName_));
    singleActionDone(type);
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
    if (!document || !lastClickedToothName_) return;
    document->toggleVisibilityOfTooth(*lastClickedToothName_);
    singleActionDone(type);
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
    for (const std::string &key : keysOf(document->bracketModels())) {
        const HiddenFlags hidden = hiddenFlags(document->bracketModels(), key);
        if (hidden.primary && !hidden.secondary)
            document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(key, typeID);
    }
    setNeedsDisplay(true);
}

void DXOpenGL::markAllBracketsSelected(MenuItem &sender)
{
    const auto typeID = bracketColorTypeID(sender);
    const auto document = documentModel();
    if (!typeID || !document) return;
    for (const std::string &key : keysOf(document->bracketModels()))
        document->bracket_setColorWithBracketColorTypeID(key, typeID);
    setNeedsDisplay(true);
}

void DXOpenGL::removeAllBracketsSelected(MenuItem &sender)
{
    if (const auto document = documentModel()) {
        // The second reason to be hidden does not count here.
        for (const std::string &key : keysOf(document->bracketModels())) {
            if (!hiddenFlags(document->bracketModels(), key).primary)
                document->toggleVisibilityOfBracket(key);
        }
    }
    clearAllBracketsSelected(sender);
}

void DXOpenGL::clearAllBracketsSelected(MenuItem &)
{
    if (const auto document = documentModel()) {
        for (const std::string &key : keysOf(document->bracketModels()))
            document->bracket_setColorWithBracketColorTypeID(key, noBracketColorTypeID);
    }
    setNeedsDisplay(true);
}

void DXOpenGL::repeatLastActionOn(const std::string &name)
{
    const auto document = documentModel();
    const std::string button = TreatmentNote::buttonNameForToothName(name);
    const RepeatTarget target{
        hiddenFlags(document->bracketModels(), name), hiddenFlags(document->buttonModels(), button),
        hiddenFlags(document->toothModels(), name), lastClickedToothName_ == name};
    switch (repeatOperation(lastActionType_, target)) {
    case RepeatOperation::None:
        break;
    case RepeatOperation::ShowAndColorBracket:
        document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(name,
                                                                       lastBracketColorTypeID_);
        break;
    case RepeatOperation::ColorAndToggleBracket:
        document->bracket_setColorWithBracketColorTypeID(name, lastBracketColorTypeID_);
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
    currentEventToothName_ = name;
    if (!name) {
        rotateMouseDown(event);
    } else if (!repeatActionTimerIsRunning()) {
        displayBracketMenuForEvent(event);
    } else {
        restartRepeatActionTimer();
        repeatLastActionOn(*name);
        setNeedsDisplay(true);
    }
}

} // namespace kelo
