// What the bracket menu does to one tooth, or to all brackets, and its repetition by clicks.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/editing/BracketChanges.h"

namespace kelo {
namespace {

/// The colour type that a menu row stands for, or nothing for a row of another kind.
std::optional<long> bracketColorTypeID(const MenuItem &sender)
{
    const auto type = representedTypeOf<BracketColorType>(sender);
    return type ? std::optional(type->typeID) : std::nullopt;
}

} // namespace

bool DXOpenGL::changeDocument(const std::function<void(DXDocumentModel &)> &change)
{
    const auto document = documentModel();
    if (document && !survives([&] { change(*document); })) return false;
    setNeedsDisplay(true);
    return true;
}

void DXOpenGL::chooseForLastClickedTooth(ActionType action, std::optional<long> colorTypeID)
{
    if (!documentModel()) return;
    const auto change =
        state_->brackets.choose(action, state_->events.lastClickedToothName, colorTypeID);
    const auto carryItOut = [&](DXDocumentModel &document) { kelo::carryOut(*change, document); };
    if (change && changeDocument(carryItOut)) noteActionDone(action);
}

void DXOpenGL::noteActionDone(ActionType action)
{
    restartRepeatActionTimer();
    state_->brackets.noteDone(action);
    setTemporaryMouseMode(colorMode);
}

void DXOpenGL::bracketColorMenuItemSelected(MenuItem &sender)
{
    chooseForLastClickedTooth(ActionType::ColorBracket, bracketColorTypeID(sender));
}

void DXOpenGL::placeBracketSelected(MenuItem &sender)
{
    chooseForLastClickedTooth(ActionType::PlaceBracket, bracketColorTypeID(sender));
}

void DXOpenGL::removeBracketSelected(MenuItem &)
{
    chooseForLastClickedTooth(ActionType::RemoveBracket);
}

void DXOpenGL::placeButtonSelected(MenuItem &)
{
    chooseForLastClickedTooth(ActionType::PlaceButton);
}

void DXOpenGL::removeButtonSelected(MenuItem &)
{
    chooseForLastClickedTooth(ActionType::RemoveButton);
}

void DXOpenGL::placeToothSelected(MenuItem &)
{
    chooseForLastClickedTooth(ActionType::PlaceTooth);
}

void DXOpenGL::removeToothSelected(MenuItem &)
{
    chooseForLastClickedTooth(ActionType::RemoveTooth);
}

void DXOpenGL::placeAllBracketsSelected(MenuItem &sender)
{
    const auto typeID = bracketColorTypeID(sender);
    if (typeID) changeDocument([&](DXDocumentModel &all) { placeAllBrackets(all, *typeID); });
}

void DXOpenGL::markAllBracketsSelected(MenuItem &sender)
{
    const auto typeID = bracketColorTypeID(sender);
    if (typeID) changeDocument([&](DXDocumentModel &all) { colorAllBrackets(all, *typeID); });
}

void DXOpenGL::removeAllBracketsSelected(MenuItem &)
{
    changeDocument(removeAllBrackets);
}

void DXOpenGL::clearAllBracketsSelected(MenuItem &)
{
    changeDocument(removeAllBracketColors);
}

void DXOpenGL::repeatLastActionOn(const std::string &name)
{
    restartRepeatActionTimer();
    RepeatTarget target = repeatTarget(*documentModel(), name);
    target.isLastClickedTooth = state_->events.lastClickedToothName == name;
    const ToothChange change = state_->brackets.repeatOn(name, target);
    changeDocument([&change](DXDocumentModel &document) { kelo::carryOut(change, document); });
}

// The repeat period.

void DXOpenGL::setRepeatActionTimerInterval(double seconds)
{
    // A negative interval is a host that means "the usual".
    constexpr double usualInterval = 3.0;
    state_->repeatPeriod.interval = seconds < 0.0 ? usualInterval : seconds;
}

double DXOpenGL::repeatActionTimerInterval() const
{
    return state_->repeatPeriod.interval;
}

void DXOpenGL::restartRepeatActionTimer()
{
    state_->repeatPeriod.end.schedule(state_->repeatPeriod.interval,
                                      [this] { repeatPeriodEnded(); });
}

bool DXOpenGL::repeatActionTimerIsRunning() const
{
    return state_->repeatPeriod.end.isPending();
}

void DXOpenGL::repeatPeriodEnded()
{
    state_->brackets.endRepeatPeriod();
    restorePermanentMouseMode();
}

std::optional<long> DXOpenGL::lastBracketColorTypeID() const
{
    return state_->brackets.lastColorTypeID();
}

std::int64_t DXOpenGL::lastActionType() const
{
    return state_->brackets.lastActionType();
}

} // namespace kelo
