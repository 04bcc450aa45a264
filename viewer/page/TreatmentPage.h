#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/settings/PageSettings.h"

#include <QDate>
#include <QImage>
#include <QPagedPaintDevice>
#include <QString>

#include <array>
#include <string>
#include <vector>

namespace viewer {

/// One side of the printed page.
struct PrintedSide
{
    QImage picture;
    kelo::ElasticDescriptions elastics;
};

/// A bracket colour that is in use.
struct PrintedColor
{
    QString label;
    kelo::Color color;
    std::vector<std::string> teeth; ///< whose brackets have it, from the upper right round
};

/// What a printed treatment page says. The pictures print brackets white, so their colours are in
/// a legend.
struct TreatmentPage
{
    QString patientName;
    QString patientIdentifier;
    QDate date;
    PrintedSide right, front, left; ///< the patient's
    std::vector<PrintedColor> bracketColors;
    ToothNotation notation = ToothNotation::Universal;
    bool greyscale = false; ///< pictures and swatches by their brightness
};

/// The colours of the brackets that are shown, in the catalogue's order.
std::vector<PrintedColor> bracketColorsInUse(const kelo::DXDocumentModel &document);

/// Paints the page on a printer, a preview or a PDF writer, in the device's page size and
/// orientation: the patient and the date, the three pictures side by side as a clinician reads them
/// (right, front, left), under each its elastics, and the legend. What does not fit continues on
/// further pages, which are then numbered. Returns the number of pages, 0 when the device could not
/// be painted on.
int paintTreatmentPage(const TreatmentPage &page, QPagedPaintDevice &device);

/// The page as a PDF document; empty when it could not be made.
QByteArray treatmentPageAsPDF(const TreatmentPage &page, const QPageLayout &layout);

/// Writes that document, which appears whole or not at all. Returns what went wrong, as a sentence
/// that names the file, or an empty string.
QString writeTreatmentPage(const TreatmentPage &page, const QPageLayout &layout,
                           const QString &path);

} // namespace viewer
