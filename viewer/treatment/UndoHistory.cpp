#include "viewer/treatment/UndoHistory.h"

#include "viewer/treatment/ChangeText.h"
#include "viewer/treatment/DocumentState.h"

#include <QUndoCommand>

#include <utility>

namespace viewer {

class UndoHistory::Step : public QUndoCommand
{
public:
    Step(UndoHistory &history, kelo::SavedState before, kelo::SavedState after, const QString &text)
        : QUndoCommand(text),
          history_(history),
          before_(std::move(before)),
          after_(std::move(after))
    {}
    void undo() override { go(before_); }
    /// Called when the step is pushed too; then the document is there already.
    void redo() override { go(after_); }

private:
    void go(const kelo::SavedState &state)
    {
        applyState(*history_.document_, state, history_.configurations_);
        history_.takeKnown();
    }

    UndoHistory &history_;
    kelo::SavedState before_;
    kelo::SavedState after_;
};

class UndoHistory::OutsideStep : public QUndoCommand
{
public:
    OutsideStep(UndoHistory &history, const QString &text, std::function<void()> undo,
                std::function<void()> redo)
        : QUndoCommand(text), history_(history), undo_(std::move(undo)), redo_(std::move(redo))
    {}
    void undo() override { go(undo_); }
    void redo() override
    {
        // Called when the step is pushed too, and it was taken then.
        if (std::exchange(isNew_, false)) return;
        go(redo_);
    }

private:
    void go(const std::function<void()> &action)
    {
        action();
        history_.takeKnown();
    }

    UndoHistory &history_;
    std::function<void()> undo_;
    std::function<void()> redo_;
    bool isNew_ = true;
};

UndoHistory::UndoHistory() : changes_([this] { endStep(); })
{
    offered_.addStack(&stack_);
    setOffersSteps(true);
}

void UndoHistory::watch(std::shared_ptr<kelo::DXDocumentModel> document)
{
    stack_.clear();
    document_ = std::move(document);
    known_ = {};
    configurations_ = {};
    if (document_) takeKnown();
    changes_.watch(document_);
}

void UndoHistory::takeKnown()
{
    known_ = kelo::savedStateOf(*document_);
    configurations_.remember(*document_);
}

void UndoHistory::endStep()
{
    if (!document_) return;
    kelo::SavedState present = kelo::savedStateOf(*document_);
    // A configuration with another name is no step, but what undo places again has the new name.
    configurations_.remember(*document_);
    if (present == known_) return;
    const QString text = changeText(known_, present, *document_, configurations_, notation_);
    kelo::SavedState before = std::exchange(known_, present);
    // What has no name is no step of its own.
    if (!text.isEmpty()) stack_.push(new Step(*this, std::move(before), std::move(present), text));
}

void UndoHistory::addStep(const QString &text, std::function<void()> undo,
                          std::function<void()> redo)
{
    if (!document_) return;
    takeKnown();
    stack_.push(new OutsideStep(*this, text, std::move(undo), std::move(redo)));
}

} // namespace viewer
