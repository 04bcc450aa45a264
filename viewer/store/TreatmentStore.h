#pragma once

#include "keloModel/ElasticsConfigType.h"
#include "viewer/store/TreatmentRecord.h"
#include "viewer/store/TreatmentStoreReport.h"
#include "viewer/store/TreatmentStoreResult.h"

#include <QByteArray>
#include <QDate>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace viewer {

class TreatmentStoreConnection;

struct StoredPatient
{
    qint64 patientID = 0;
    PatientRecord patient;
    bool operator==(const StoredPatient &) const = default;
};

struct StoredTreatment
{
    qint64 treatmentID = 0;
    qint64 patientID = 0;
    std::optional<QDate> currentDate;
    std::optional<QDate> approvedDate;
    bool operator==(const StoredTreatment &) const = default;
};

/// A treatment as a list of all of them shows it.
struct TreatmentSummary
{
    StoredPatient patient;
    StoredTreatment treatment;
    int noteCount = 0;
    std::optional<QDate> lastNoteDate;
    /// Why the treatment cannot be opened, for the user; its dates may be missing then. Empty when
    /// nothing is wrong with what is listed here.
    QString problem;
    bool operator==(const TreatmentSummary &) const = default;
};

/// One line of a treatment's log of changes.
struct StoredChange
{
    qint64 changedAt = 0; ///< UTC milliseconds since 1970
    std::optional<QDate> noteDate;
    /// "note started", "tooth visibility", "bracket visibility", "button visibility",
    /// "bracket color", "elastic placed", "elastic removed", "elastic color", "elastic named",
    /// "elastic renamed", "elastics refactored", "note approval", "treatment approval".
    QString what;
    /// The name key; of elastics see ElasticsReport::key; of a started note the date of the note
    /// that it started from, or empty.
    std::string key;
    /// As texts: "visible" or "hidden"; a colour type, 4999 for none; all elastics as JSON; of a
    /// renamed one the names; a date.
    /// Absent where there was or is nothing.
    std::optional<QString> oldValue;
    std::optional<QString> newValue;
    bool operator==(const StoredChange &) const = default;
};

enum class StoreAccess {
    ReadAndWrite,
    /// Beside another program that works with the database: nothing is written, not even a newer
    /// version of the tables.
    ReadOnly,
};

/// Patients, treatments and their notes by date, in an SQLite database.
///
/// Every operation that writes is one transaction: it is in the database as a whole, and on the
/// disk, when it returns good, and otherwise not at all. The journal is a write-ahead log, so that
/// other programs read while one writes, and `synchronous` is FULL: a report that was confirmed
/// outlives a power cut, not only the program's end. A report comes after seconds of quiet or with
/// a click, so the one flush to the disk that this costs is not felt.
///
/// A locked database fails after a tenth of a second. Main thread only.
class TreatmentStore
{
public:
    /// Opens the database, or makes it where there is no file or an empty one; ":memory:" keeps
    /// nothing. Older databases are brought to the present version. A file of a newer version, of
    /// another program, with tables that another program changed, or that is no database is refused
    /// and left as it is, byte for byte. A file that may only be read, and one in a folder that may
    /// not be written or on a full disk, opens for reading; see readOnlyReason().
    static StoreResult<std::shared_ptr<TreatmentStore>>
    open(const QString &path, StoreAccess access = StoreAccess::ReadAndWrite);
    ~TreatmentStore();
    TreatmentStore(const TreatmentStore &) = delete;
    TreatmentStore &operator=(const TreatmentStore &) = delete;

    const QString &path() const;
    /// Why nothing can be stored, in a sentence for the user; nothing where all is well. Operations
    /// that write fail then.
    const std::optional<StoreFailure> &readOnlyReason() const { return readOnlyReason_; }
    /// What QSqlDatabase::database finds the connection by, for looking into the database.
    const QString &connectionName() const;

    /// UTC milliseconds since 1970, for the log of changes; the system's clock unless replaced.
    qint64 now() const { return clock_(); }
    void setClock(std::function<qint64()> clock) { clock_ = std::move(clock); }

    /// @name Patients and treatments
    /// @{
    StoreResult<qint64> createPatient(const PatientRecord &patient);
    /// In the order of their creation.
    StoreResult<std::vector<StoredPatient>> patients();
    StoreResult<qint64> createTreatment(qint64 patientID,
                                        const std::optional<QDate> &currentDate = std::nullopt);
    /// In the order of their creation.
    StoreResult<std::vector<StoredTreatment>> treatments(qint64 patientID);
    /// Every treatment of every patient, the patients and the treatments of each in the order of
    /// their creation.
    StoreResult<std::vector<TreatmentSummary>> allTreatments();
    /// Stores a whole treatment with its patient, and the catalogue's text if it has one of its
    /// own, and returns the treatment's identifier. A colour type of 4999 is no colour.
    StoreResult<qint64> addTreatment(const TreatmentRecord &record,
                                     const QByteArray &catalogue = {});
    /// All of it, the notes oldest first.
    StoreResult<TreatmentRecord> loadTreatment(qint64 treatmentID);
    /// The text of the treatment's own catalogue, as it was stored; empty for the library's.
    StoreResult<QByteArray> catalogue(qint64 treatmentID);
    /// Stores it as the treatment's own in place of the one before.
    StoreOutcome setCatalogue(qint64 treatmentID, const QByteArray &catalogue);
    /// Of the treatment as a whole; `nullopt` removes the approval.
    StoreOutcome setApprovedDate(qint64 treatmentID, const std::optional<QDate> &approvedDate);
    /// @}

    /// @name The clinic's named elastics
    /// What clinicians named themselves, beside the catalogue or in place of its entries.
    /// @{
    /// In the order of their identifiers.
    StoreResult<std::vector<kelo::ElasticsConfigType>> namedElastics();
    /// Adds it, or replaces the one of the same identifier.
    StoreOutcome saveNamedElastic(const kelo::ElasticsConfigType &configuration);
    /// One that an elastic of any note has stays. Good too where there is none of this identifier.
    StoreOutcome removeNamedElastic(long typeID);
    /// @}

    /// @name Notes
    /// @{
    /// The note of this very date, if there is one.
    StoreResult<std::optional<NoteRecord>> note(qint64 treatmentID, const QDate &date);
    /// The last note before this date, if there is one.
    StoreResult<std::optional<NoteRecord>> lastNoteBefore(qint64 treatmentID, const QDate &date);
    /// The note of this date; where there is none, a new one is stored that starts from the last
    /// earlier one (see noteStartedFrom), or empty.
    StoreResult<NoteRecord> startNote(qint64 treatmentID, const QDate &date);
    /// Stores the changes to the note of the report's date, which is started first where there is
    /// none. Only what differs from what is stored is written and logged.
    StoreOutcome write(qint64 treatmentID, const NoteReport &report);
    /// The log of changes, oldest first.
    StoreResult<std::vector<StoredChange>> changes(qint64 treatmentID);
    /// @}

private:
    explicit TreatmentStore(std::unique_ptr<TreatmentStoreConnection> connection);

    static std::shared_ptr<TreatmentStore> openedForReading(const QString &path,
                                                            const StoreFailure &reason);

    std::unique_ptr<TreatmentStoreConnection> connection_;
    std::optional<StoreFailure> readOnlyReason_;
    std::function<qint64()> clock_;
};

} // namespace viewer
