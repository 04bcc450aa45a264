#pragma once

#include "document/DXDocumentModel.h"
#include "viewer/store/TreatmentStore.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {
class Timer;
} // namespace kelo

namespace viewer {

/// How long a change may wait to be stored, in seconds. The document reports brackets and buttons
/// once they have rested for as long; in steady work they never rest, and are stored all the same.
/// The user is promised that a crash loses no more than this.
inline constexpr double latestStoringInSeconds = 3.0;

/// Keeps a document and its treatment in the store together: shows a note in the document, and
/// stores every change that the document reports, each report in one transaction as it comes. What
/// the document has gathered and not reported yet is stored latestStoringInSeconds after the first
/// change of it; it stays gathered, and what the report then has in common with it is not stored
/// again.
///
/// Elastics are stored one by one: those that another program placed in the same note meanwhile
/// stay, and are shown when the note is opened again.
///
/// A report that cannot be stored is kept, in order, and tried again before the next one; the
/// document goes on meanwhile, and notes that are opened show what was kept. Main thread only.
class TreatmentSession
{
public:
    /// Becomes the document's delegate.
    TreatmentSession(std::shared_ptr<TreatmentStore> store, qint64 treatmentID,
                     std::shared_ptr<kelo::DXDocumentModel> document);
    /// Closes, if close() was not called, and calls no handler any more.
    ~TreatmentSession();
    TreatmentSession(const TreatmentSession &) = delete;
    TreatmentSession &operator=(const TreatmentSession &) = delete;

    /// Told one sentence for the user when storing begins to fail, or fails for another reason than
    /// before. May do anything but destroy the session.
    std::function<void(const QString &sentence)> failureHandler;
    /// Called with every report once it is in the database.
    std::function<void(const NoteReport &report)> storedHandler;

    /// Is told all that the document tells, after the session has stored it. Not owned; null for
    /// none.
    void setNextDelegate(kelo::DXDocumentModelDelegate *delegate) { nextDelegate_ = delegate; }

    /// Shows the note of this date, or where there is none what the last earlier one leads to, or
    /// an empty one. Such a new note is stored with its first change. Changes that the document has
    /// not reported yet are stored under the date before.
    ///
    /// Returns sentences about what could not be shown in full: elastics of a size or configuration
    /// that the document's catalogue does not have (shown without colour), and elastics with
    /// members that are not loaded (not shown). Both stay in the note. Of more than a hundred
    /// sentences the rest is counted. On failure the document and the date are as before.
    StoreResult<QStringList> openNote(const QDate &date);
    /// Of the note that is shown; invalid before the first one.
    const QDate &date() const { return date_; }

    /// The approval of the note that is shown.
    const std::optional<QDate> &approvedDate() const { return approvedDate_; }
    void setApprovedDate(const std::optional<QDate> &approvedDate);

    /// An elastic has a named configuration now, or no longer: the note says so from here
    /// on.
    void elasticWasNamed(const kelo::ElasticModel &elastic);
    /// The configuration of an elastic has another name now; told for the log.
    void elasticWasRenamed(const kelo::ElasticModel &elastic, const std::string &oldName);

    /// Tries again what could not be stored.
    StoreOutcome storeKeptReports();
    std::size_t keptReportCount() const { return keptReports_.size(); }

    /// Stores what the document has not reported yet and what was kept, and is its delegate no
    /// longer. A failure means that changes are lost when the program ends; close() may be called
    /// again to retry.
    StoreOutcome close();

private:
    void listen();
    void changesAreGathered();
    void storeGathered();
    void reportBrackets();
    void reportButtons();
    std::vector<kelo::SavedElastic> elasticsInDocument() const;
    void reportElastics(ElasticsEvent event, const std::string &key);
    /// Everything that the document has gathered, whether its timer runs or not.
    void takeOutstandingUpdates();
    NoteReport newReport() const;
    void report(NoteReport report);
    void tellFailure(const StoreFailure &failure);

    StoreResult<std::optional<NoteRecord>> noteToShow(const QDate &date);
    std::optional<QDate> lastKeptDateBefore(const QDate &date) const;
    QStringList show(const NoteRecord &note);

    std::shared_ptr<TreatmentStore> store_;
    qint64 treatmentID_;
    std::shared_ptr<kelo::DXDocumentModel> document_;
    kelo::DXDocumentModelDelegate delegate_;
    kelo::DXDocumentModelDelegate *nextDelegate_ = nullptr;
    QDate date_;
    std::optional<QDate> approvedDate_;
    std::vector<kelo::SavedElastic> elasticsNotShown_;
    std::vector<kelo::SavedElastic> elasticsTold_; ///< the elastics as they were reported last
    NoteReport storedEarly_;                       ///< what was stored and is still gathered
    std::shared_ptr<kelo::Timer> latestStoring_;
    std::deque<NoteReport> keptReports_;
    std::optional<StoreProblem> toldProblem_;
    bool storing_ = false;
};

} // namespace viewer
