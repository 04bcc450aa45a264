#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace kelo::test {

/// A language in which the texts of one context are written in capitals ("%@" stays), while the
/// object lives. Needs an application.
class ShoutingTranslator : public QTranslator
{
public:
    explicit ShoutingTranslator(const char *context) : context_(context)
    {
        QCoreApplication::installTranslator(this);
    }
    ~ShoutingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return context_ == context ? QString::fromUtf8(text).toUpper() : QString();
    }

private:
    QByteArray context_;
};

} // namespace kelo::test
