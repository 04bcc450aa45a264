#pragma once

#include "base/Export.h"
#include "keloOpenGL/editing/ActionType.h"
#include "keloOpenGL/editing/RepeatAction.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kelo {

/// A change of one tooth, its bracket or its button, to be carried out in a document
/// (BracketChanges.h).
struct ToothChange
{
    ToothOperation operation = ToothOperation::None;
    std::string tooth;
    std::optional<long>
        colorTypeID; ///< of those operations that colour; nothing removes the colour
    bool operator==(const ToothChange &) const = default;
};

/// What the rows of the bracket menu do to one tooth, and what the clicks of the repeat period that
/// follows do to others. Changes nothing by itself: it returns what is to be done.
class KELO_EXPORT BracketEditor
{
public:
    /// The kind of the last action that was done: an ActionType; that of colouring before any.
    std::int64_t lastActionType() const { return lastActionType_; }
    /// The colour type of the last action that had one, until its repeat period ends.
    std::optional<long> lastColorTypeID() const { return lastColorTypeID_; }

    /// A row of the menu that was opened on this tooth was chosen. Nothing is to be done without a
    /// tooth, or where the action colours and the row has no colour type.
    std::optional<ToothChange> choose(ActionType action, const std::optional<std::string> &tooth,
                                      std::optional<long> colorTypeID = std::nullopt);
    /// What was chosen is done: clicks repeat it from now on.
    void noteDone(ActionType action) { lastActionType_ = static_cast<std::int64_t>(action); }

    /// A click in the repeat period hit this tooth, its bracket or its button.
    ToothChange repeatOn(const std::string &tooth, const RepeatTarget &target) const;
    void endRepeatPeriod() { lastColorTypeID_.reset(); }

private:
    std::int64_t lastActionType_ = 0;
    std::optional<long> lastColorTypeID_;
};

} // namespace kelo
