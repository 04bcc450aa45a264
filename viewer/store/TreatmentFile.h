#pragma once

#include "keloModel/Catalogue.h"
#include "viewer/store/TreatmentRecord.h"

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace viewer {

/// A treatment file: a treatment, and the catalogue that its identifiers mean.
struct TreatmentFile
{
    TreatmentRecord treatment;
    kelo::Catalogue catalogue;
};

/// A file that was read, or everything that is wrong with it; never both.
struct TreatmentFileReading
{
    std::optional<TreatmentFile> file;
    /// One sentence a problem, the place in the text first: "notes[0].date: must be a date, ...".
    QStringList problems;
};

/// Reads the JSON form of a treatment (format "treatment", version 1). Catalogue lists that the
/// text leaves out are those of `defaults`. Notes are sorted by date. A newer version is refused,
/// and so is what goes beyond viewer/files/Limits.h. Takes time in proportion to the text.
TreatmentFileReading treatmentFromJSON(const QByteArray &text, const kelo::Catalogue &defaults);

/// The text that reads back as the same treatment and the same catalogue.
QByteArray treatmentAsJSON(const TreatmentFile &file);

} // namespace viewer
