#pragma once

#include "viewer/text/ToothNotation.h"
#include "viewer/treatment/DocumentState.h"

#include <QUndoGroup>
#include <QUndoStack>

#include <functional>
#include <memory>

namespace viewer {

/// Undo and redo of everything that is changed in a document, each step with a readable name.
///
/// Steps are told apart by noticeChanges(): what differs from the time before is one step. Whoever
/// lets the user act calls it after every action.
class UndoHistory
{
public:
    UndoHistory();

    /// Begins anew with the document as it is now; null for none.
    void watch(std::shared_ptr<kelo::DXDocumentModel> document);
    /// What has changed since the last call becomes a step that can be undone.
    void noticeChanges();
    /// Adds a step that was taken just now and that states of the document do not hold; what was
    /// done before it must have been noticed.
    void addStep(const QString &text, std::function<void()> undo, std::function<void()> redo);
    /// Steps that are noticed from now on are named in this notation.
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

    std::shared_ptr<kelo::DXDocumentModel> document_;
    DocumentState known_;
    ToothNotation notation_ = ToothNotation::Universal;
    QUndoStack stack_;
    QUndoGroup offered_;
};

} // namespace viewer
