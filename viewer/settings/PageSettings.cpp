#include "viewer/settings/PageSettings.h"

#include <QLocale>
#include <QMarginsF>
#include <QPageSize>

namespace viewer {

QPageLayout defaultPageLayout()
{
    const bool usesLetter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    constexpr double margin = 15.0;
    return QPageLayout(QPageSize(usesLetter ? QPageSize::Letter : QPageSize::A4),
                       QPageLayout::Landscape, QMarginsF(margin, margin, margin, margin),
                       QPageLayout::Millimeter);
}

} // namespace viewer
