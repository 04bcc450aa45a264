#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/TreatmentPage.h"

#include <QByteArray>
#include <QDateTime>
#include <QImage>
#include <QString>

namespace viewer {

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

/// The page of a request: with the patient's name and identifier, and the colours of the document's
/// brackets.
TreatmentPage treatmentPage(const PrintRequest &request, const kelo::DXDocumentModel &document,
                            const QString &patientName, const QString &patientIdentifier);

/// The three lists as JSON: {"date": "2026-11-20", "left": [{"color": [r, g, b, a], "name": "...",
/// "brackets": ["6", "30"]}], "front": [...], "right": [...]}.
QByteArray elasticsAsJSON(const PrintRequest &request);

/// Writes left.png, front.png, right.png and elastics.json into a folder, which is made where there
/// is none. Returns what went wrong, or an empty text.
QString writePrintImages(const PrintRequest &request, const QString &folder);

} // namespace viewer
