#pragma once

#include "viewer/store/TreatmentStore.h"
#include "viewer/store/TreatmentStoreConnection.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QVariant>

#include <optional>
#include <string>
#include <vector>

/// How records are kept in the tables: the inner side of TreatmentStore. Every function throws
/// StoreError, and the writing ones are called inside a transaction.
namespace viewer::tables {

/// @name Values
/// @{
QVariant valueOf(const QString &text);
QVariant valueOf(const std::string &text);
QVariant valueOf(const std::optional<long> &number);
QVariant valueOf(const std::optional<QDate> &date);
QString textOf(const QDate &date);
/// All elastics as one JSON text, for the log.
QString textOf(const std::vector<kelo::SavedElastic> &elastics);
/// Throws for a date that cannot be stored.
void assertDate(TreatmentStoreConnection &connection, const std::optional<QDate> &date);
/// @}

/// @name Reading
/// @{
std::vector<StoredPatient> patients(TreatmentStoreConnection &connection);
std::vector<StoredTreatment> treatments(TreatmentStoreConnection &connection, qint64 patientID);
std::vector<TreatmentSummary> allTreatments(TreatmentStoreConnection &connection);
TreatmentRecord treatment(TreatmentStoreConnection &connection, qint64 treatmentID);
void assertTreatment(TreatmentStoreConnection &connection, qint64 treatmentID);
std::optional<qint64> noteID(TreatmentStoreConnection &connection, qint64 treatmentID,
                             const QDate &date);
/// The date of the last note before a date.
std::optional<QDate> lastDateBefore(TreatmentStoreConnection &connection, qint64 treatmentID,
                                    const QDate &date);
std::optional<NoteRecord> note(TreatmentStoreConnection &connection, qint64 treatmentID,
                               const QDate &date);
/// The same of a note that is known to be there: without it the database is damaged.
NoteRecord givenNote(TreatmentStoreConnection &connection, qint64 treatmentID, const QDate &date);
/// Empty for a treatment without one of its own.
QByteArray catalogue(TreatmentStoreConnection &connection, qint64 treatmentID);
std::vector<kelo::ElasticsConfigType> namedElastics(TreatmentStoreConnection &connection);
std::vector<StoredChange> changes(TreatmentStoreConnection &connection, qint64 treatmentID);
/// @}

/// @name Writing
/// @{
qint64 insertPatient(TreatmentStoreConnection &connection, const PatientRecord &patient);
qint64 insertTreatment(TreatmentStoreConnection &connection, qint64 patientID,
                       const std::optional<QDate> &currentDate,
                       const std::optional<QDate> &approvedDate);
qint64 insertNote(TreatmentStoreConnection &connection, qint64 treatmentID, const NoteRecord &note);
void insertChange(TreatmentStoreConnection &connection, qint64 treatmentID,
                  const StoredChange &change);
/// Starts the note of a date from the last earlier one, and logs it.
qint64 startNote(TreatmentStoreConnection &connection, qint64 treatmentID, const QDate &date,
                 qint64 changedAt);
void applyReport(TreatmentStoreConnection &connection, qint64 treatmentID, const NoteReport &report,
                 qint64 changedAt);
void saveCatalogue(TreatmentStoreConnection &connection, qint64 treatmentID,
                   const QByteArray &catalogue);
void saveNamedElastic(TreatmentStoreConnection &connection,
                      const kelo::ElasticsConfigType &configuration);
void removeNamedElastic(TreatmentStoreConnection &connection, long typeID);
void setApprovedDate(TreatmentStoreConnection &connection, qint64 treatmentID,
                     const std::optional<QDate> &approvedDate, qint64 changedAt);
/// @}

} // namespace viewer::tables
