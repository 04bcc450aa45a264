#pragma once

#include "keloModel/Catalogue.h"
#include "viewer/output/DelegateCallLog.h"
#include "viewer/settings/CommandLine.h"
#include "viewer/store/TreatmentFile.h"
#include "viewer/store/TreatmentStore.h"
#include "viewer/treatment/TreatmentLoader.h"
#include "viewer/treatment/TreatmentSession.h"

#include <QDate>
#include <QStringList>

#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

namespace kelo {
class DXOpenGL;
} // namespace kelo

namespace viewer {

/// Thrown for input that cannot be opened; the text names the file and the place, one line a
/// problem.
class BadTreatment : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Thrown for a database that cannot be used, or does not take what is to be stored in it.
class UnusableDatabase : public BadTreatment
{
public:
    explicit UnusableDatabase(const StoreFailure &failure)
        : BadTreatment(failure.sentence.toStdString()), problem_(failure.problem)
    {}
    StoreProblem problem() const { return problem_; }

private:
    StoreProblem problem_;
};

/// One treatment, opened: the document with its meshes and catalogue, and the session that stores
/// what changes.
///
/// What is opened, from the command line:
/// - `FILE`: that treatment, kept in memory; with --database too, stored there as a new treatment.
/// - `--database FILE` alone: the first treatment of the database; a database that is really new,
///   in which nothing was ever stored, gets the sample patient.
/// - neither: the sample patient; in a window from the user's own database, which is made on first
///   start, in headless runs in memory.
/// A database that may only be read is opened for that. One that cannot be used is an error, never
/// an empty database: what the user takes for a record would be gone with the program.
class OpenedTreatment
{
public:
    /// Loads it into a document, a new one for null. A store that is given is the database in place
    /// of the command line's. Throws BadTreatment for a bad FILE and for a treatment that the
    /// database does not have, and UnusableDatabase. Meshes that cannot be loaded are among
    /// sentences().
    explicit OpenedTreatment(const CommandLine &commandLine, const LoadingProgress &progress = {},
                             std::shared_ptr<kelo::DXDocumentModel> document = nullptr,
                             std::shared_ptr<TreatmentStore> store = nullptr);
    OpenedTreatment(const OpenedTreatment &) = delete;
    OpenedTreatment &operator=(const OpenedTreatment &) = delete;

    const std::shared_ptr<kelo::DXDocumentModel> &document() const { return document_; }
    const std::shared_ptr<TreatmentStore> &store() const { return store_; }
    qint64 treatmentID() const { return treatmentID_; } ///< in the store
    /// Whether the store takes no changes; then every note is read-only.
    bool isReadOnly() const { return store_->readOnlyReason().has_value(); }
    TreatmentSession &session() { return *session_; }
    /// Makes the catalogue the one that type managers look things up in; for a program with several
    /// treatments whenever the user goes on with this one.
    void bringCatalogueForward() const;
    /// Gives a view the document and the dates of the treatment.
    void showIn(kelo::DXOpenGL &view);

    /// @name Work by date
    /// @{
    /// The day that is edited: its note may be changed unless the treatment is read-only;
    /// earlier notes are read-only. In a window it is the present day. In headless runs and
    /// scripts, which are to give the same on every day, it is the treatment's own current date, if
    /// it has one.
    const QDate &today() const { return openedDate_; }
    /// Whether midnight has passed since by the store's clock. Never where the treatment says which
    /// day it is.
    bool todayIsOver() const;
    /// Works on the present day's note from now on, which begins as the last one stands; sentences
    /// as of showDate.
    QStringList goOnToPresentDay(kelo::DXOpenGL &view);
    /// The dates that have notes, and today, in ascending order; later ones than today are left
    /// out. Returns only today where the store cannot tell.
    std::vector<QDate> dates();
    /// Shows the note of a date in the view: a placement that is open is finished first. Returns
    /// sentences for the user; on failure view and document are as before.
    QStringList showDate(kelo::DXOpenGL &view, const QDate &date);
    /// The approval of the note that is shown: its own; where it has none and is the one that the
    /// treatment was opened on, that of the treatment.
    std::optional<QDate> approvedDate() const;
    /// Approves the note that is shown, as of today, or withdraws its approval. An approved note is
    /// read-only. Returns what went wrong, or an empty string.
    QString setApproved(kelo::DXOpenGL &view, bool isApproved);
    /// The log of changes, oldest first, with what the document has not reported yet stored first.
    StoreResult<std::vector<StoredChange>> changes();
    /// Stores everything and ends the session, without a word to a window: for a program that has
    /// lost its display. Returns what went wrong, or an empty string.
    QString storeWithoutAsking();
    /// @}

    /// @name Named elastics
    /// @{
    /// Why an elastic cannot have this name, in a sentence; empty when it can. `own` is the
    /// configuration that is renamed, whose own name does not count as taken; null for a new one.
    QString nameProblem(const QString &name, const kelo::ElasticsConfigType *own) const;
    /// A change of the configurations that are offered.
    struct Naming
    {
        std::shared_ptr<kelo::ElasticsConfigType> before; ///< null: a new one is offered
        std::shared_ptr<kelo::ElasticsConfigType> after;  ///< null: it is offered no longer
    };
    /// The elastic's configuration with another name, or, where it has none that is offered, a new
    /// one of its size and members. Nothing changes yet.
    Naming namingOf(const kelo::ElasticModel &elastic, const QString &name) const;
    /// Offers the configuration after the naming in place of the one before and gives it to the
    /// elastics that had that; a new one to the elastic that is named, of this index. The catalogue
    /// has it from then on: the treatment's own, if it came with one, else the clinic's for all
    /// treatments. Returns what went wrong, or an empty string; then the name is kept until the
    /// program ends.
    QString applyNaming(const Naming &naming, std::size_t elasticIndex);
    /// Takes over the names that were given elsewhere in the clinic since.
    void takeNewNames();
    /// @}

    const DelegateCallLog &callLog() const { return callLog_; }
    DelegateCallLog &callLog() { return callLog_; }
    /// What the user should know about the opening, a sentence each.
    const QStringList &sentences() const { return sentences_; }
    const QString &patientName() const { return patientName_; }
    const QString &patientIdentifier() const { return patientIdentifier_; }

    /// The treatment as a file has it, with what the document has not reported yet stored first.
    StoreResult<QByteArray> asJSON();
    /// Writes the treatment to a file; returns what went wrong, or an empty string.
    QString exportTo(const QString &path);

    /// @name The treatment file that was opened
    /// Changes are kept in memory (or the database) and come into the file only by saving.
    /// @{
    const QString &file() const { return file_; } ///< empty: none was opened
    /// Writes the treatment back to its file; returns what went wrong, or an empty string.
    QString save();
    /// Whether the treatment differs from what was opened or saved last; false without a file.
    bool hasUnsavedChanges();
    /// @}

private:
    /// The one that the command line names, else the first one; false when the store has none.
    bool openStoredTreatment(const CommandLine &commandLine);
    TreatmentFile fileToOpen(const CommandLine &commandLine) const;
    QDate presentDay() const;
    /// The day to work on, for the one that the treatment gives.
    void openDay(const std::optional<QDate> &given);
    StoreOutcome storeNaming(const Naming &naming);
    /// Makes the catalogue the document's, and gives its elastics their configurations anew.
    void offerCatalogue();
    void openStore(const CommandLine &commandLine);
    /// Makes the catalogue that the treatment was stored with the present one, if it has one.
    void takeOwnCatalogue();
    /// Adds the clinic's to the catalogue.
    void takeNamedElastics();
    void openTreatmentInStore(const CommandLine &commandLine);

    DelegateCallLog callLog_;
    kelo::Catalogue catalogue_;
    bool hasOwnCatalogue_ = false; ///< the treatment came with it; names go into it
    std::shared_ptr<kelo::DXDocumentModel> document_;
    std::shared_ptr<TreatmentStore> store_;
    qint64 treatmentID_ = 0;
    QDate openedDate_;
    bool takesGivenDay_;      ///< in headless runs and scripts; a person works on the present day
    bool isDayGiven_ = false; ///< by the treatment
    QDate noteOpenedOn_;
    std::optional<QDate> approvedWithTreatment_;
    QString patientName_;
    QString patientIdentifier_;
    QString file_;
    QByteArray savedText_; ///< the treatment as the file has it
    QStringList sentences_;
    std::unique_ptr<TreatmentSession> session_; ///< last: it releases the others first
};

/// The database that the command line means: a file, or ":memory:". The folder of the user's own
/// one is made where there is none.
QString databaseOf(const CommandLine &commandLine);

/// Stores the treatment of a file as a new one, and returns its identifier. Throws BadTreatment for
/// a file that cannot be read, or a store that does not take it.
qint64 importTreatment(TreatmentStore &store, const QString &file);

/// The sample patient: every bracket and every lingual button placed, no colours, four elastics,
/// one note of `date`.
TreatmentRecord sampleTreatment(const QDate &date);

} // namespace viewer
