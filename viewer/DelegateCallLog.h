#pragma once

#include "document/DXDocumentModelDelegate.h"

#include <QJsonArray>

namespace viewer {

/// Lists every call that a document makes to its delegate, in order, with its plain arguments
/// (models and documents are left out): ["bracket:visibilityDidChange:", "8", false].
class DelegateCallLog
{
public:
    DelegateCallLog();
    DelegateCallLog(const DelegateCallLog &) = delete;
    DelegateCallLog &operator=(const DelegateCallLog &) = delete;

    /// To be given to the document, or to the session as the next delegate.
    kelo::DXDocumentModelDelegate *delegate() { return &delegate_; }
    const QJsonArray &calls() const { return calls_; }

private:
    void add(const char *selector, const QJsonArray &arguments = {});

    kelo::DXDocumentModelDelegate delegate_;
    QJsonArray calls_;
};

} // namespace viewer
