#pragma once

#include "base/Export.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>

namespace kelo {

/// Keeps a property of one object equal to a property of another, in Qt's property system: once at
/// the start, and again whenever the source's notify signal says so. The last value stays when the
/// binding ends. Neither object is owned; the binding ends with either of them.
class KELO_EXPORT PropertyBinding : public QObject
{
    Q_OBJECT

public:
    /// Both properties must exist, the source's readable and the target's writable; otherwise an
    /// AssertionFailure.
    PropertyBinding(QObject *target, const char *targetProperty, QObject *source,
                    const char *sourceProperty);

private slots:
    void carryOver();

private:
    QPointer<QObject> target_;
    QByteArray targetProperty_;
    QPointer<QObject> source_;
    QByteArray sourceProperty_;
};

} // namespace kelo
