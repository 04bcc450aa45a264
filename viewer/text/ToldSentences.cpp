#include "viewer/text/ToldSentences.h"

#include "keloModel/JSONProblems.h"

#include <QCoreApplication>

#include <utility>

namespace viewer {

void ToldSentences::add(const QString &sentence)
{
    if (told_.contains(sentence)) return;
    told_.insert(sentence);
    if (told_.size() <= static_cast<qsizetype>(kelo::JSONProblems::mostProblems))
        sentences_.append(sentence);
}

QStringList ToldSentences::take()
{
    const qsizetype furtherCount = told_.size() - sentences_.size();
    if (furtherCount > 0)
        sentences_.append(
            QCoreApplication::translate("TreatmentSession", "and %1 more").arg(furtherCount));
    told_.clear();
    return std::exchange(sentences_, {});
}

} // namespace viewer
