#pragma once

#include "document/DXDocumentModelDelegate.h"
#include "keloOpenGL/treatment/DXOpenGLDelegate.h"

#include <QJsonArray>

namespace viewer {

/// Lists every call that a document and a view make to their delegates, in order, with its plain
/// arguments (models and documents are left out): ["bracket:visibilityDidChange:", "8", false].
class DelegateCallLog
{
public:
    DelegateCallLog();
    DelegateCallLog(const DelegateCallLog &) = delete;
    DelegateCallLog &operator=(const DelegateCallLog &) = delete;

    /// To be given to the document, or to the session as the next delegate.
    kelo::DXDocumentModelDelegate *delegate() { return &delegate_; }
    /// Lists the calls of a view's delegate too, before each is passed on to the operation that the
    /// delegate has; from then on the delegate has every operation. The log stays as long as it.
    void logCallsOf(kelo::DXOpenGLDelegate &delegate);
    const QJsonArray &calls() const { return calls_; }

private:
    void add(const char *selector, const QJsonArray &arguments = {});

    kelo::DXDocumentModelDelegate delegate_;
    QJsonArray calls_;
};

} // namespace viewer
