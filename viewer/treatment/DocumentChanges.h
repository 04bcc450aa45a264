#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <QObject>

#include <functional>
#include <memory>

namespace viewer {

/// Hears of every change that a document announces and tells of those that belong together once:
/// of all that are made while one event is handled, as soon as it has been. What a gesture or a row
/// of a menu does is done in one event, however many operations of the document it takes.
class DocumentChanges
{
public:
    /// `changed` is called from the event loop, of dialogs too. It may change the document; then it
    /// is called again.
    explicit DocumentChanges(std::function<void()> changed) : changed_(std::move(changed)) {}
    ~DocumentChanges();
    DocumentChanges(const DocumentChanges &) = delete;
    DocumentChanges &operator=(const DocumentChanges &) = delete;

    /// Whose changes; null for nobody's. What was not told of the document before is dropped.
    void watch(std::shared_ptr<const kelo::DXDocumentModel> document);
    /// Tells now what would be told after the event; nothing if there is nothing.
    void flush();

private:
    void documentChanged();

    std::function<void()> changed_;
    std::shared_ptr<const kelo::DXDocumentModel> document_;
    bool isPending_ = false;
    QObject afterEvent_; ///< what is queued ends with it
};

} // namespace viewer
