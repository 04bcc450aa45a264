#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/page/TreatmentPage.h"

#include <QByteArray>
#include <QDateTime>
#include <QImage>
#include <QString>

#include <functional>
#include <optional>

namespace viewer {

class OpenedTreatment;

/// What the treatment view hands over for printing, copied: its images borrow pixels that are freed
/// when the call returns.
struct PrintRequest
{
    QImage left, front, right;
    QDateTime date;
    kelo::ElasticDescriptions elasticsLeft, elasticsFront, elasticsRight;
};

/// Fills in the request when the view's delegate is called for printing.
void takePrintRequests(kelo::DXOpenGLDelegate &delegate,
                       std::function<void(const PrintRequest &)> handler);

/// Asks the view for a print request and returns what it hands over; nothing where it cannot print
/// (the view has told why). The view's own delegate hears nothing of it.
std::optional<PrintRequest> printRequestOf(kelo::DXOpenGL &view);

/// The page of a request, with the colours of the document's brackets. The pictures are the
/// request's own.
TreatmentPage treatmentPage(const PrintRequest &request, const OpenedTreatment &treatment,
                            const PageSettings &settings);

/// The same with pictures at a printer's resolution, drawn by the view anew; with the request's own
/// where the view cannot.
TreatmentPage sharpTreatmentPage(const PrintRequest &request, kelo::DXOpenGL &view,
                                 const OpenedTreatment &treatment, const PageSettings &settings);

/// The three lists as elasticsAsJSON has each: {"date": "2026-11-20", "left": [...], "front":
/// [...], "right": [...]}.
QByteArray elasticsAsJSON(const PrintRequest &request);

/// Writes left.png, front.png, right.png and elastics.json into a folder, which is made where there
/// is none. Returns what went wrong, or an empty string.
QString writePrintImages(const PrintRequest &request, const QString &folder);

} // namespace viewer
