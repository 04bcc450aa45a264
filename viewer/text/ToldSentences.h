#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace viewer {

/// Sentences for the user, each told once. The first hundred different ones are kept, as of
/// problems of a file: nobody reads more, and a database from elsewhere may lead to any number.
class ToldSentences
{
public:
    void add(const QString &sentence);
    /// The sentences in their order; behind a hundred of them "and N more", in the user's language.
    QStringList take();

private:
    QStringList sentences_;
    QSet<QString> told_;
};

} // namespace viewer
