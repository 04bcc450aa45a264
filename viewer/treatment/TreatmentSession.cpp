#include "viewer/treatment/TreatmentSession.h"

#include "document/SavedState.h"
#include "models/DXGLightweightModel.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/RunLoop.h"
#include "viewer/store/TreatmentSchema.h"
#include "viewer/text/ToldSentences.h"

#include <QCoreApplication>

#include <utility>

namespace viewer {
namespace {

/// The sentences' context for translators.
struct SessionText
{
    Q_DECLARE_TR_FUNCTIONS(TreatmentSession)
};

std::string joined(const std::vector<std::string> &members)
{
    std::string text;
    for (const std::string &member : members)
        text += (text.empty() ? "" : ",") + member;
    return text;
}

/// The values that were not stored already.
template<class Value>
kelo::NameKeyDictionary<Value> difference(kelo::NameKeyDictionary<Value> values,
                                          const kelo::NameKeyDictionary<Value> &stored)
{
    std::erase_if(values, [&stored](const auto &entry) {
        const auto known = stored.find(entry.first);
        return known != stored.end() && known->second == entry.second;
    });
    return values;
}

kelo::NameKeyDictionary<std::optional<long>>
storedColors(const kelo::DXDocumentModel::ColorTypeIDs &typeIDs)
{
    kelo::NameKeyDictionary<std::optional<long>> colors;
    for (const auto &[key, typeID] : typeIDs)
        colors.emplace(key, typeID == kelo::noBracketColorTypeID ? std::nullopt
                                                                 : std::optional<long>(typeID));
    return colors;
}

/// What is wrong with an elastic of a note, for the user.
QString sentenceOf(const kelo::ElasticProblem &problem, const kelo::SavedElastic &record)
{
    using Kind = kelo::ElasticProblem::Kind;
    switch (problem.kind) {
    case Kind::UnknownMember:
        return SessionText::tr("The elastic %1 is not shown: %2 is no bracket or button "
                               "of this document")
            .arg(QString::fromStdString(joined(record.bracketSequence)),
                 QString::fromStdString(problem.member));
    case Kind::UnknownSize:
        return SessionText::tr("The elastic size %1 is not in the catalogue; elastics of "
                               "this size are shown without colour")
            .arg(problem.typeID);
    case Kind::UnknownConfiguration:
        break;
    }
    return SessionText::tr("The elastic configuration %1 is not in the catalogue")
        .arg(problem.typeID);
}

} // namespace

TreatmentSession::TreatmentSession(std::shared_ptr<TreatmentStore> store, qint64 treatmentID,
                                   std::shared_ptr<kelo::DXDocumentModel> document)
    : store_(std::move(store)), treatmentID_(treatmentID), document_(std::move(document))
{
    listen();
    document_->setDelegate(&delegate_);
    // A change of a bracket or a button is announced long before the document reports it.
    kelo::NotificationCenter::defaultCenter().addObserver(
        this, [this](const kelo::Notification &) { changesAreGathered(); },
        kelo::documentModelChangedNotification, document_.get());
}

TreatmentSession::~TreatmentSession()
{
    kelo::NotificationCenter::defaultCenter().removeObserver(this);
    // What the handlers refer to may be gone already.
    failureHandler = nullptr;
    storedHandler = nullptr;
    nextDelegate_ = nullptr;
    close();
}

void TreatmentSession::listen()
{
    // Each operation: store first, then pass on.
    const auto passOn = [this](auto operation, auto &&...arguments) {
        if (!nextDelegate_) return;
        if (const auto called = nextDelegate_->*operation)
            called(std::forward<decltype(arguments)>(arguments)...);
    };
    using Delegate = kelo::DXDocumentModelDelegate;
    delegate_.tooth_visibilityDidChange = [this, passOn](const std::string &key, bool visible) {
        NoteReport tooth = newReport();
        tooth.toothVisibilities.emplace(key, visible);
        report(std::move(tooth));
        passOn(&Delegate::tooth_visibilityDidChange, key, visible);
    };
    // Brackets and buttons come again, gathered.
    delegate_.bracket_visibilityDidChange = [passOn](const std::string &key, bool visible) {
        passOn(&Delegate::bracket_visibilityDidChange, key, visible);
    };
    delegate_.button_visibilityDidChange = [passOn](const std::string &key, bool visible) {
        passOn(&Delegate::button_visibilityDidChange, key, visible);
    };
    delegate_.bracketUpdatesAvailable = [this, passOn](kelo::DXDocumentModel &model) {
        reportBrackets();
        passOn(&Delegate::bracketUpdatesAvailable, model);
    };
    delegate_.buttonUpdatesAvailable = [this, passOn](kelo::DXDocumentModel &model) {
        reportButtons();
        passOn(&Delegate::buttonUpdatesAvailable, model);
    };
    const auto aboutElastic = [this, passOn](auto operation, ElasticsEvent event) {
        return
            [this, passOn, operation, event](const std::shared_ptr<kelo::ElasticModel> &elastic) {
                reportElastics(event, joined(elastic->bracketSequence()));
                passOn(operation, elastic);
            };
    };
    delegate_.elasticModelPlaced =
        aboutElastic(&Delegate::elasticModelPlaced, ElasticsEvent::Placed);
    delegate_.elasticModelRemoved =
        aboutElastic(&Delegate::elasticModelRemoved, ElasticsEvent::Removed);
    delegate_.elasticModelColorDidChange =
        aboutElastic(&Delegate::elasticModelColorDidChange, ElasticsEvent::Recolored);
    delegate_.elasticModelsRefactoredAroundBrackets =
        [this, passOn](const std::vector<std::string> &keys) {
            reportElastics(ElasticsEvent::Refactored, joined(keys));
            passOn(&Delegate::elasticModelsRefactoredAroundBrackets, keys);
        };
}

NoteReport TreatmentSession::newReport() const
{
    NoteReport made;
    made.date = date_;
    made.changedAt = store_->now();
    return made;
}

void TreatmentSession::changesAreGathered()
{
    if (document_->delegate() != &delegate_) return; // closed
    if (latestStoring_ && latestStoring_->isValid()) return;
    latestStoring_ = std::make_shared<kelo::Timer>(latestStoringInSeconds, false,
                                                   [this](kelo::Timer &) { storeGathered(); });
    // A menu or a sheet may be open for longer than a change may wait.
    using kelo::RunLoopMode;
    kelo::RunLoop::main().addTimer(latestStoring_,
                                   (RunLoopMode::Default | RunLoopMode::EventTracking) |
                                       static_cast<kelo::RunLoopModes>(RunLoopMode::ModalPanel));
}

void TreatmentSession::storeGathered()
{
    if (!date_.isValid()) return;
    if (!keptReports_.empty() && !storeKeptReports()) changesAreGathered();
    NoteReport gathered;
    gathered.bracketVisibilities = document_->pendingBracketVisibilityUpdates();
    gathered.bracketColorTypeIDs = storedColors(document_->pendingBracketColorTypeIDUpdates());
    gathered.buttonVisibilities = document_->pendingButtonVisibilityUpdates();
    NoteReport fresh = newReport();
    fresh.bracketVisibilities =
        difference(gathered.bracketVisibilities, storedEarly_.bracketVisibilities);
    fresh.bracketColorTypeIDs =
        difference(gathered.bracketColorTypeIDs, storedEarly_.bracketColorTypeIDs);
    fresh.buttonVisibilities =
        difference(gathered.buttonVisibilities, storedEarly_.buttonVisibilities);
    storedEarly_ = std::move(gathered);
    if (!fresh.bracketVisibilities.empty() || !fresh.bracketColorTypeIDs.empty() ||
        !fresh.buttonVisibilities.empty())
        report(std::move(fresh));
}

void TreatmentSession::reportBrackets()
{
    NoteReport brackets = newReport();
    brackets.bracketVisibilities = difference(document_->bracketVisibilityUpdates(),
                                              std::exchange(storedEarly_.bracketVisibilities, {}));
    brackets.bracketColorTypeIDs = difference(storedColors(document_->bracketColorTypeIDUpdates()),
                                              std::exchange(storedEarly_.bracketColorTypeIDs, {}));
    if (!brackets.bracketVisibilities.empty() || !brackets.bracketColorTypeIDs.empty())
        report(std::move(brackets));
}

void TreatmentSession::reportButtons()
{
    NoteReport buttons = newReport();
    buttons.buttonVisibilities = difference(document_->buttonVisibilityUpdates(),
                                            std::exchange(storedEarly_.buttonVisibilities, {}));
    if (!buttons.buttonVisibilities.empty()) report(std::move(buttons));
}

std::vector<kelo::SavedElastic> TreatmentSession::elasticsInDocument() const
{
    std::vector<kelo::SavedElastic> elastics;
    for (const auto &elastic : document_->elasticModels()) {
        if (elastic) elastics.push_back(kelo::savedElasticOf(*elastic));
    }
    elastics.insert(elastics.end(), elasticsNotShown_.begin(), elasticsNotShown_.end());
    return elastics;
}

void TreatmentSession::reportElastics(ElasticsEvent event, const std::string &key)
{
    NoteReport changed = newReport();
    auto present = elasticsInDocument();
    auto before = std::exchange(elasticsTold_, present);
    changed.elastics = ElasticsReport{event, key, std::move(present), std::move(before)};
    report(std::move(changed));
}

void TreatmentSession::elasticWasNamed(const kelo::ElasticModel &elastic)
{
    reportElastics(ElasticsEvent::Named, joined(elastic.bracketSequence()));
}

void TreatmentSession::elasticWasRenamed(const kelo::ElasticModel &elastic,
                                         const std::string &oldName)
{
    NoteReport renamed = newReport();
    renamed.rename = RenameReport{joined(elastic.bracketSequence()), oldName,
                                  elastic.elasticsConfigType()->typeLabel};
    report(std::move(renamed));
}

void TreatmentSession::setApprovedDate(const std::optional<QDate> &approvedDate)
{
    approvedDate_ = approvedDate;
    NoteReport approval = newReport();
    approval.approval = ApprovalReport{approvedDate};
    report(std::move(approval));
}

void TreatmentSession::takeOutstandingUpdates()
{
    document_->flushOutstandingUpdates();
    // What was gathered before this session listened has no timer any more.
    reportBrackets();
    reportButtons();
}

void TreatmentSession::report(NoteReport report)
{
    // Before the first note is opened there is no date to store a change under: what is in the
    // document then is no note's.
    if (!date_.isValid()) return;
    keptReports_.push_back(std::move(report));
    const StoreOutcome outcome = storeKeptReports();
    if (outcome) return;
    tellFailure(outcome.failure());
    // Tried again without a further change too: the user may have made the last one.
    changesAreGathered();
}

StoreOutcome TreatmentSession::storeKeptReports()
{
    // A handler may bring the next report: it waits for its turn in the loop below.
    if (storing_) return std::monostate();
    storing_ = true;
    StoreOutcome outcome = std::monostate();
    while (!keptReports_.empty() && outcome) {
        outcome = store_->write(treatmentID_, keptReports_.front());
        if (!outcome) break;
        const NoteReport stored = std::move(keptReports_.front());
        keptReports_.pop_front();
        toldProblem_.reset();
        if (const auto handler = storedHandler) handler(stored);
    }
    storing_ = false;
    return outcome;
}

void TreatmentSession::tellFailure(const StoreFailure &failure)
{
    if (toldProblem_ == failure.problem) return;
    toldProblem_ = failure.problem;
    if (const auto handler = failureHandler)
        handler(SessionText::tr("The changes could not be stored and are kept in memory for the "
                                "next try: %1")
                    .arg(failure.sentence));
}

StoreOutcome TreatmentSession::close()
{
    if (document_->delegate() == &delegate_) {
        takeOutstandingUpdates();
        document_->setDelegate(nullptr);
    }
    if (latestStoring_) latestStoring_->invalidate();
    return storeKeptReports();
}

std::optional<QDate> TreatmentSession::lastKeptDateBefore(const QDate &date) const
{
    std::optional<QDate> last;
    for (const NoteReport &kept : keptReports_) {
        if (kept.date < date && (!last || *last < kept.date)) last = kept.date;
    }
    return last;
}

/// The note as it will be in the database once the kept reports are stored.
StoreResult<std::optional<NoteRecord>> TreatmentSession::noteToShow(const QDate &date)
{
    auto found = store_->note(treatmentID_, date);
    if (!found) return found;
    std::optional<NoteRecord> note = found.value();
    if (!note) {
        auto earlier = store_->lastNoteBefore(treatmentID_, date);
        if (!earlier) return earlier;
        std::optional<QDate> earlierDate = lastKeptDateBefore(date);
        if (earlier.value() && (!earlierDate || *earlierDate < earlier.value()->date))
            earlierDate = earlier.value()->date;
        note = NoteRecord();
        if (earlierDate) {
            earlier = noteToShow(*earlierDate);
            if (!earlier) return earlier;
            note = earlier.value().value_or(NoteRecord());
        }
        note = noteStartedFrom(std::move(*note), date);
    }
    for (const NoteReport &kept : keptReports_) {
        if (kept.date == date) note = noteAfterReport(std::move(*note), kept);
    }
    return note;
}

StoreResult<QStringList> TreatmentSession::openNote(const QDate &date)
{
    takeOutstandingUpdates();
    const auto note = noteToShow(date);
    if (!note) return note.failure();
    date_ = date;
    return show(note.value().value_or(NoteRecord()));
}

QStringList TreatmentSession::show(const NoteRecord &note)
{
    approvedDate_ = note.approvedDate;
    const auto problems = kelo::restoreState(
        *document_, {note.toothVisibilities, note.bracketVisibilities, note.buttonVisibilities,
                     note.bracketColorTypeIDs, note.elastics});
    ToldSentences told;
    elasticsNotShown_.clear();
    for (const kelo::ElasticProblem &problem : problems) {
        const kelo::SavedElastic &record = note.elastics[problem.elasticIndex];
        told.add(sentenceOf(problem, record));
        if (problem.kind == kelo::ElasticProblem::Kind::UnknownMember)
            elasticsNotShown_.push_back(record);
    }
    elasticsTold_ = elasticsInDocument();
    return told.take();
}

} // namespace viewer
