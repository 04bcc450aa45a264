#pragma once

#include "viewer/text/ToothNotation.h"
#include "viewer/treatment/ConfigurationsSeen.h"
#include "viewer/treatment/DocumentChanges.h"

#include <QUndoGroup>
#include <QUndoStack>

#include <functional>
#include <memory>

namespace viewer {

/// Undo and redo of everything that is changed in a document, each step with a readable name.
///
/// The document's announcements feed it: all that changes in the document while one event is
/// handled is one step, whoever changes it, so that a gesture or a row of a menu is one.
class UndoHistory
{
public:
    UndoHistory();

    /// Begins anew with the document as it is now; null for none.
    void watch(std::shared_ptr<kelo::DXDocumentModel> document);
    /// Makes what has changed since the last step a step now, before the event has been handled:
    /// for who goes on with something that belongs to another step, or to none.
    void endStep();
    /// Adds a step that was taken just now and that states of the document do not hold; call
    /// endStep() before it is taken.
    void addStep(const QString &text, std::function<void()> undo, std::function<void()> redo);
    /// Steps that end from now on are named in this notation.
    void setNotation(ToothNotation notation) { notation_ = notation; }

    /// The steps. Their commands change the document through its own operations.
    QUndoStack &stack() { return stack_; }
    /// For actions and menus: offers the steps, or nothing while they are kept back.
    QUndoGroup &offered() { return offered_; }
    /// Steps that are kept back are not lost. They are offered at first.
    void setOffersSteps(bool offers) { offered_.setActiveStack(offers ? &stack_ : nullptr); }

private:
    class Step;
    class OutsideStep;

    /// What steps are made from is the document as it is now.
    void takeKnown();

    std::shared_ptr<kelo::DXDocumentModel> document_;
    kelo::SavedState known_;
    ConfigurationsSeen configurations_; ///< for steps whose elastics had another one
    ToothNotation notation_ = ToothNotation::Universal;
    QUndoStack stack_;
    QUndoGroup offered_;
    DocumentChanges changes_; ///< last: it calls for the others
};

} // namespace viewer
