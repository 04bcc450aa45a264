#pragma once

#include "viewer/text/ToothNotation.h"

#include <QPageLayout>

namespace viewer {

/// A4, or Letter where the locale has it, landscape, margins of 15 mm.
QPageLayout defaultPageLayout();

/// How the treatment page is printed.
struct PageSettings
{
    QPageLayout layout = defaultPageLayout();
    ToothNotation notation = ToothNotation::Universal;
    bool isNotationGiven = false; ///< otherwise a window has the one that its user prefers
    bool greyscale = false;
};

} // namespace viewer
