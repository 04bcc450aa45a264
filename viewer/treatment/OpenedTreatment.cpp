#include "viewer/treatment/OpenedTreatment.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/files/InputFile.h"
#include "viewer/files/Limits.h"
#include "viewer/files/OutputFile.h"
#include "viewer/store/TreatmentFile.h"
#include "viewer/text/DateText.h"
#include "viewer/treatment/DocumentState.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace viewer {
namespace {

const QString inMemory = QStringLiteral(":memory:");

/// Seconds in which a click repeats the last action: long enough to go to the next tooth.
constexpr double repeatInterval = 3.0;

/// Identifiers of named elastics that clinicians make; the catalogue's are below.
constexpr long firstOwnTypeID = 1000;

/// The catalogue that comes with the library.
kelo::Catalogue defaultCatalogue()
{
    auto reading = kelo::standardCatalogue();
    if (!reading.catalogue) throw BadTreatment(reading.problems.front());
    return std::move(*reading.catalogue);
}

TreatmentFile readTreatmentFile(const QString &path, const kelo::Catalogue &defaults)
{
    const InputFile input = readInputFile(path, largestTreatmentFile);
    if (!input.problem.isEmpty()) throw BadTreatment(input.problem.toStdString());
    auto reading = treatmentFromJSON(input.content, defaults);
    if (reading.file) return std::move(*reading.file);
    QStringList lines;
    for (const QString &problem : reading.problems)
        lines << path + QStringLiteral(": ") + problem;
    throw BadTreatment(lines.join(QLatin1Char('\n')).toStdString());
}

/// The database of the user who runs the program; its folder is made where there is none.
QString ownDatabase()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(QStringLiteral("treatments.sqlite"));
}

/// What is stored beside a treatment that was read with a catalogue of its own; empty for the
/// library's.
QByteArray ownCatalogueIn(const TreatmentFile &file)
{
    const QByteArray text = kelo::catalogueAsJSON(file.catalogue);
    return text == kelo::catalogueAsJSON(defaultCatalogue()) ? QByteArray() : text;
}

} // namespace

QString databaseOf(const CommandLine &commandLine)
{
    if (!commandLine.database.isEmpty()) return commandLine.database;
    if (!commandLine.file.isEmpty() || commandLine.headless) return inMemory;
    return ownDatabase();
}

qint64 importTreatment(TreatmentStore &store, const QString &file)
{
    const TreatmentFile read = readTreatmentFile(file, defaultCatalogue());
    const auto added = store.addTreatment(read.treatment, ownCatalogueIn(read));
    if (!added) throw UnusableDatabase(added.failure());
    return added.value();
}

TreatmentRecord sampleTreatment(const QDate &date)
{
    using kelo::TreatmentNote;
    NoteRecord note;
    note.date = date;
    for (const auto &keys :
         {TreatmentNote::upperToothNameKeys(), TreatmentNote::lowerToothNameKeys()}) {
        for (const std::string &key : keys) {
            note.bracketVisibilities[key] = true;
            note.buttonVisibilities[TreatmentNote::buttonNameForToothName(key)] = true;
        }
    }
    // A Class II band, a triangle, a box, and a cross-bite band that starts on a lingual button;
    // the numbers are those of the catalogue that comes with the library.
    note.elastics = {{1, 10, {"6", "30"}},
                     {8, 7, {"11", "22", "21"}},
                     {std::nullopt, 11, {"13", "14", "19", "20"}},
                     {21, 8, {"3l", "30"}}};
    TreatmentRecord record;
    record.patient = {QStringLiteral("Sample Patient"), QStringLiteral("S-1"), QDate(2011, 4, 2)};
    record.notes.push_back(std::move(note));
    return record;
}

OpenedTreatment::OpenedTreatment(const CommandLine &commandLine, const LoadingProgress &progress,
                                 std::shared_ptr<kelo::DXDocumentModel> document,
                                 std::shared_ptr<TreatmentStore> store)
    : catalogue_(defaultCatalogue()),
      document_(document ? std::move(document) : std::make_shared<kelo::DXDocumentModel>()),
      store_(std::move(store)),
      takesGivenDay_(commandLine.headless || !commandLine.script.isEmpty())
{
    // A bad file is reported before the meshes are loaded.
    if (!store_) openStore(commandLine);
    if (isReadOnly()) sentences_ << store_->readOnlyReason()->sentence;
    openTreatmentInStore(commandLine);
    takeOwnCatalogue();
    takeNamedElastics();
    sentences_ << loadMeshes(*document_, commandLine.meshes, progress);
    kelo::setCatalogue(*document_, catalogue_);
    session_ = std::make_unique<TreatmentSession>(store_, treatmentID_, document_);
    session_->setNextDelegate(callLog_.delegate());
    noteOpenedOn_ = openedDate_;
    auto shown = session_->openNote(openedDate_);
    if (!shown)
        throw UnusableDatabase(shown.failure()); // an empty note would pass for what is stored
    sentences_ << shown.value();
    file_ = commandLine.file;
    if (const auto text = asJSON()) savedText_ = text.value();
}

void OpenedTreatment::openStore(const CommandLine &commandLine)
{
    auto opened = TreatmentStore::open(databaseOf(commandLine));
    if (!opened) throw UnusableDatabase(opened.failure());
    store_ = opened.value();
}

void OpenedTreatment::openTreatmentInStore(const CommandLine &commandLine)
{
    // Only a treatment that is not stored yet is read or made.
    if (commandLine.file.isEmpty() && openStoredTreatment(commandLine)) return;
    const TreatmentFile file = fileToOpen(commandLine);
    const TreatmentRecord &record = file.treatment;
    const QByteArray ownCatalogue = ownCatalogueIn(file);
    openDay(record.currentDate);
    patientName_ = record.patient.name;
    patientIdentifier_ = record.patient.identifier;
    approvedWithTreatment_ = record.approvedDate;
    const auto added = store_->addTreatment(record, ownCatalogue);
    if (!added) throw UnusableDatabase(added.failure());
    treatmentID_ = added.value();
}

bool OpenedTreatment::openStoredTreatment(const CommandLine &commandLine)
{
    const std::optional<qint64> treatmentID = commandLine.treatment;
    const auto all = store_->allTreatments();
    if (!all) throw UnusableDatabase(all.failure());
    auto found =
        std::find_if(all.value().begin(), all.value().end(), [&](const TreatmentSummary &one) {
            return !treatmentID || one.treatment.treatmentID == *treatmentID;
        });
    if (found != all.value().end() && !found->problem.isEmpty()) {
        const QString problem = found->problem;
        // In a window the others can be reached from the first that is well.
        const bool mayBeAnother = !treatmentID && !commandLine.headless;
        found = std::find_if(found, all.value().end(),
                             [](const TreatmentSummary &one) { return one.problem.isEmpty(); });
        if (!mayBeAnother || found == all.value().end())
            throw UnusableDatabase({StoreProblem::Damaged, problem});
        sentences_ << problem;
    }
    if (found == all.value().end()) {
        if (!treatmentID) {
            // Where nothing was ever stored the database is new.
            const auto patients = store_->patients();
            if (!patients) throw UnusableDatabase(patients.failure());
            if (patients.value().empty()) return false;
            throw BadTreatment(store_->path().toStdString() + ": there is no treatment");
        }
        throw BadTreatment(store_->path().toStdString() + ": there is no treatment " +
                           std::to_string(*treatmentID));
    }
    treatmentID_ = found->treatment.treatmentID;
    approvedWithTreatment_ = found->treatment.approvedDate;
    openDay(found->treatment.currentDate);
    patientName_ = found->patient.patient.name;
    patientIdentifier_ = found->patient.patient.identifier;
    return true;
}

TreatmentFile OpenedTreatment::fileToOpen(const CommandLine &commandLine) const
{
    if (commandLine.file.isEmpty()) return {sampleTreatment(QDate::currentDate()), catalogue_};
    return readTreatmentFile(commandLine.file, catalogue_);
}

void OpenedTreatment::takeOwnCatalogue()
{
    const auto stored = store_->catalogue(treatmentID_);
    if (!stored) {
        sentences_ << stored.sentence();
        return;
    }
    if (stored.value().isEmpty()) return;
    auto reading = kelo::catalogueFromJSON(stored.value(), &catalogue_);
    if (!reading.catalogue) {
        sentences_ << QStringLiteral("%1: %2").arg(
            store_->path(), QString::fromStdString(reading.problems.front()));
        return;
    }
    catalogue_ = std::move(*reading.catalogue);
    hasOwnCatalogue_ = true;
}

void OpenedTreatment::bringCatalogueForward() const
{
    catalogue_.fill(kelo::QKTypeManager::typeManager());
}

void OpenedTreatment::showIn(kelo::DXOpenGL &view)
{
    // The date of the note that is edited is the present day as this treatment sees it.
    const QDateTime today = momentOf(openedDate_);
    const auto approved = approvedDate();
    // Without a present day every note is one to look at.
    if (!isReadOnly()) view.setCurrentDate(today);
    view.setApprovedDate(approved ? momentOf(*approved) : QDateTime());
    view.setRepeatActionTimerInterval(repeatInterval);
    view.setDocumentModel(document_);
    view.setDisplayedDate(today);
}

void OpenedTreatment::takeNamedElastics()
{
    const auto named = store_->namedElastics();
    if (!named) {
        sentences_ << named.sentence();
        return;
    }
    auto &types = catalogue_.elasticsConfigTypes;
    std::unordered_map<long, std::size_t> indexByID;
    for (std::size_t i = 0; i < types.size(); ++i)
        indexByID.emplace(types[i]->typeID, i);
    std::unordered_set<long> sizes;
    for (const auto &size : catalogue_.elasticsSizeTypes)
        sizes.insert(size->typeID);
    for (const kelo::ElasticsConfigType &configuration : named.value()) {
        const auto same = indexByID.find(configuration.typeID);
        // In a catalogue from elsewhere the identifier means something else.
        if (same != indexByID.end() && hasOwnCatalogue_) continue;
        const auto taken = std::make_shared<kelo::ElasticsConfigType>(configuration);
        if (!sizes.contains(taken->elasticsSizeTypeID)) taken->elasticsSizeTypeID = 0;
        if (same == indexByID.end()) {
            indexByID.emplace(taken->typeID, types.size());
            types.push_back(taken);
        } else {
            types[same->second] = taken;
        }
    }
}

QString OpenedTreatment::nameProblem(const QString &name, const kelo::ElasticsConfigType *own) const
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return QCoreApplication::translate("OpenedTreatment", "A name is needed.");
    for (const auto &type : document_->availableElasticsConfigTypes()) {
        if (type.get() != own &&
            QString::fromStdString(type->typeLabel).compare(trimmed, Qt::CaseInsensitive) == 0)
            return QCoreApplication::translate("OpenedTreatment",
                                               "Another elastic has this name already.");
    }
    return {};
}

OpenedTreatment::Naming OpenedTreatment::namingOf(const kelo::ElasticModel &elastic,
                                                  const QString &name) const
{
    const auto &offered = catalogue_.elasticsConfigTypes;
    const auto own = std::find(offered.begin(), offered.end(), elastic.elasticsConfigType());
    auto configuration = std::make_shared<kelo::ElasticsConfigType>();
    if (own != offered.end()) {
        *configuration = **own;
        configuration->typeLabel = name.trimmed().toStdString();
        return {*own, configuration};
    }
    configuration->typeLabel = name.trimmed().toStdString();
    configuration->typeID = firstOwnTypeID;
    const auto goBehind = [&configuration](const kelo::ElasticsConfigType &type) {
        configuration->typeID = std::max(configuration->typeID, type.typeID + 1);
        configuration->displayOrder = std::max(configuration->displayOrder, type.displayOrder + 1);
    };
    for (const auto &type : offered)
        goBehind(*type);
    // Other windows and programs name elastics too.
    if (const auto named = store_->namedElastics()) {
        for (const auto &type : named.value())
            goBehind(type);
    }
    if (elastic.elasticsSizeType())
        configuration->elasticsSizeTypeID = elastic.elasticsSizeType()->typeID;
    for (const std::string &key : elastic.bracketSequence())
        configuration->bracketSequence += (configuration->bracketSequence.empty() ? "" : ",") + key;
    return {nullptr, configuration};
}

QString OpenedTreatment::applyNaming(const Naming &naming, std::size_t elasticIndex)
{
    const auto &[before, after] = naming;
    auto &types = catalogue_.elasticsConfigTypes;
    const auto isIt = [&present = before ? before : after](const auto &type) {
        return isSameConfiguration(type, present);
    };
    const auto old = std::find_if(types.begin(), types.end(), isIt);
    if (old == types.end())
        types.push_back(after);
    else if (after)
        *old = after;
    else
        types.erase(old);
    const auto elastic = document_->elasticModels().at(elasticIndex);
    if (!before) document_->elasticModel_setElasticsConfigType(elastic, after);
    offerCatalogue();
    // The name is there before the note that refers to it, and goes after.
    QString problem = after ? storeNaming(naming).sentence() : QString();
    if (before && after)
        session_->elasticWasRenamed(*elastic, before->typeLabel);
    else
        session_->elasticWasNamed(*elastic);
    if (!after) problem = storeNaming(naming).sentence();
    return problem;
}

StoreOutcome OpenedTreatment::storeNaming(const Naming &naming)
{
    if (hasOwnCatalogue_)
        return store_->setCatalogue(treatmentID_, kelo::catalogueAsJSON(catalogue_));
    return naming.after ? store_->saveNamedElastic(*naming.after)
                        : store_->removeNamedElastic(naming.before->typeID);
}

void OpenedTreatment::offerCatalogue()
{
    kelo::offerCatalogue(*document_, catalogue_);
    // A copy: who hears of a change may change the list.
    const kelo::DXDocumentModel::ElasticModels elastics = document_->elasticModels();
    for (const auto &elastic : elastics) {
        const auto type = elastic->elasticsConfigType();
        const auto offered = type ? catalogue_.elasticsConfigType(type->typeID) : nullptr;
        if (offered != type) document_->elasticModel_setElasticsConfigType(elastic, offered);
    }
}

void OpenedTreatment::takeNewNames()
{
    const auto named = store_->namedElastics();
    if (!named) return; // told when something is stored
    std::unordered_set<long> namedIDs;
    for (const auto &other : named.value())
        namedIDs.insert(other.typeID);
    // A name that was withdrawn elsewhere stays where an elastic has it.
    const auto isGone = [&](const auto &type) {
        const auto &elastics = document_->elasticModels();
        return type->typeID >= firstOwnTypeID && !namedIDs.contains(type->typeID) &&
               std::none_of(elastics.begin(), elastics.end(), [&](const auto &elastic) {
                   return isSameConfiguration(elastic->elasticsConfigType(), type);
               });
    };
    if (!hasOwnCatalogue_) std::erase_if(catalogue_.elasticsConfigTypes, isGone);
    takeNamedElastics();
    offerCatalogue();
}

std::vector<QDate> OpenedTreatment::dates()
{
    std::vector<QDate> dates;
    if (const auto record = store_->loadTreatment(treatmentID_)) {
        for (const NoteRecord &note : record.value().notes) {
            if (note.date < openedDate_) dates.push_back(note.date);
        }
    }
    dates.push_back(openedDate_);
    return dates;
}

bool OpenedTreatment::todayIsOver() const
{
    return !isDayGiven_ && !isReadOnly() && presentDay() > openedDate_;
}

QStringList OpenedTreatment::goOnToPresentDay(kelo::DXOpenGL &view)
{
    openedDate_ = presentDay();
    view.finishOperations(); // still a part of the day before
    view.setCurrentDate(momentOf(openedDate_));
    return showDate(view, openedDate_);
}

void OpenedTreatment::openDay(const std::optional<QDate> &given)
{
    isDayGiven_ = takesGivenDay_ && given;
    openedDate_ = isDayGiven_ ? *given : presentDay();
}

QDate OpenedTreatment::presentDay() const
{
    return QDateTime::fromMSecsSinceEpoch(store_->now()).date();
}

QStringList OpenedTreatment::showDate(kelo::DXOpenGL &view, const QDate &date)
{
    view.finishOperations();
    const auto shown = session_->openNote(date);
    if (!shown) return {shown.sentence()};
    const auto approved = approvedDate();
    view.setApprovedDate(approved ? momentOf(*approved) : QDateTime());
    view.setDisplayedDate(momentOf(date));
    if (approved) view.setMouseMode(kelo::DXOpenGL::rotateMode);
    return shown.value();
}

std::optional<QDate> OpenedTreatment::approvedDate() const
{
    const auto &ofNote = session_->approvedDate();
    return ofNote || session_->date() != noteOpenedOn_ ? ofNote : approvedWithTreatment_;
}

QString OpenedTreatment::setApproved(kelo::DXOpenGL &view, bool isApproved)
{
    view.finishOperations();
    document_->flushOutstandingUpdates(); // what was done before comes before it in the log
    if (isApproved || session_->approvedDate())
        session_->setApprovedDate(isApproved ? std::optional(openedDate_) : std::nullopt);
    QString problem;
    if (!isApproved && approvedDate()) {
        // It is the treatment's own that is withdrawn.
        problem = store_->setApprovedDate(treatmentID_, std::nullopt).sentence();
        approvedWithTreatment_.reset();
    }
    view.setApprovedDate(isApproved ? momentOf(openedDate_) : QDateTime());
    view.setMouseMode(view.mayEdit() ? kelo::DXOpenGL::elasticsMode : kelo::DXOpenGL::rotateMode);
    return problem;
}

QString OpenedTreatment::storeWithoutAsking()
{
    session_->failureHandler = nullptr;
    session_->storedHandler = nullptr;
    session_->setNextDelegate(nullptr);
    return session_->close().sentence();
}

StoreResult<std::vector<StoredChange>> OpenedTreatment::changes()
{
    document_->flushOutstandingUpdates();
    if (auto stored = session_->storeKeptReports(); !stored) return stored.failure();
    return store_->changes(treatmentID_);
}

StoreResult<QByteArray> OpenedTreatment::asJSON()
{
    document_->flushOutstandingUpdates();
    if (auto stored = session_->storeKeptReports(); !stored) return stored.failure();
    auto record = store_->loadTreatment(treatmentID_);
    if (!record) return record.failure();
    return treatmentAsJSON({record.value(), catalogue_});
}

QString OpenedTreatment::exportTo(const QString &path)
{
    const auto text = asJSON();
    return text ? writeWholeFile(path, text.value()) : text.sentence();
}

QString OpenedTreatment::save()
{
    const auto text = asJSON();
    if (!text) return text.sentence();
    const QString failure = writeWholeFile(file_, text.value());
    if (failure.isEmpty()) savedText_ = text.value();
    return failure;
}

bool OpenedTreatment::hasUnsavedChanges()
{
    if (file_.isEmpty()) return false;
    const auto text = asJSON();
    return !text || text.value() != savedText_;
}

} // namespace viewer
