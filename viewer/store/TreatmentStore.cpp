#include "viewer/store/TreatmentStore.h"

#include "viewer/store/TreatmentSchema.h"
#include "viewer/store/TreatmentStoreConnection.h"
#include "viewer/store/TreatmentStoreTables.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>

#include <type_traits>

namespace viewer {
namespace {

using Mode = TreatmentStoreConnection::Mode;
using Kind = StoreTransaction::Kind;

/// The action's value, or the failure that it threw.
template<class Action>
auto resultOf(Action &&action) -> StoreResult<std::invoke_result_t<Action>>
{
    try {
        return action();
    } catch (const StoreError &error) {
        return error.failure();
    }
}

/// The same inside one transaction.
template<class Action>
auto resultOf(TreatmentStoreConnection &connection, Kind kind, Action &&action)
{
    return resultOf([&] {
        StoreTransaction transaction(connection, kind);
        auto value = action();
        transaction.commit();
        return value;
    });
}

/// A look at a file that may be none of ours, before anything touches it.
void assertFileIsOurs(const QString &path)
{
    const QFileInfo file(path);
    if (path == QStringLiteral(":memory:") || !file.exists()) return;
    // A device or a pipe would be written to, or waited for.
    const bool isOther = !file.isFile() && !file.isDir();
    if (file.size() == 0 && !isOther) return;
    try {
        if (isOther)
            throw StoreError(
                {StoreProblem::NotADatabase,
                 QCoreApplication::translate("TreatmentStore", "%1: the file is not a database")
                     .arg(path)});
        TreatmentStoreConnection look(path, Mode::Untouched);
        look.pragma(QStringLiteral("trusted_schema = OFF"));
        // SQLite takes a file of one byte for an empty one and would write over it.
        if (file.size() == 1)
            throw look.error(
                StoreProblem::NotADatabase,
                QCoreApplication::translate("TreatmentStore", "the file is not a database"));
        assertSchemaIsReadable(look);
    } catch (const StoreError &error) {
        // Everything else (a lock, the remains of a killed program) is for the real opening.
        switch (error.failure().problem) {
        case StoreProblem::NewerVersion:
        case StoreProblem::Foreign:
        case StoreProblem::NotADatabase:
        case StoreProblem::Damaged:
            throw;
        default:
            break;
        }
    }
}

StoreError cannotBeWritten(const TreatmentStoreConnection &connection)
{
    return connection.error(
        StoreProblem::ReadOnly,
        QCoreApplication::translate("TreatmentStore", "the database cannot be written to"));
}

/// What the user is told where a database that cannot be written is read instead.
StoreFailure butOpenForReading(const StoreFailure &failure)
{
    return {failure.problem,
            QCoreApplication::translate("TreatmentStore", "%1; it is open for reading only")
                .arg(failure.sentence)};
}

/// Whether it was writing that failed, to a file that is there.
bool mayBeReadAllTheSame(const StoreFailure &failure, const QString &path)
{
    switch (failure.problem) {
    case StoreProblem::ReadOnly:
    case StoreProblem::DiskFull:
    case StoreProblem::NotReachable:
        return QFileInfo(path).isFile();
    default:
        return false;
    }
}

void prepare(TreatmentStoreConnection &connection)
{
    connection.pragma(QStringLiteral("trusted_schema = OFF"));
    connection.pragma(QStringLiteral("foreign_keys = ON"));
    // Damage is noticed where a page is read, instead of turning up as odd content.
    connection.pragma(QStringLiteral("cell_size_check = ON"));
    assertSchemaIsReadable(connection);
    try {
        connection.pragma(QStringLiteral("journal_mode = WAL"));
    } catch (const StoreError &error) {
        if (error.failure().problem != StoreProblem::ReadOnly) throw;
    }
    connection.pragma(QStringLiteral("synchronous = FULL"));
    bringSchemaUpToDate(connection);
}

} // namespace

TreatmentStore::TreatmentStore(std::unique_ptr<TreatmentStoreConnection> connection)
    : connection_(std::move(connection)), clock_(&QDateTime::currentMSecsSinceEpoch)
{}

TreatmentStore::~TreatmentStore() = default;

std::shared_ptr<TreatmentStore> TreatmentStore::openedForReading(const QString &path,
                                                                 const StoreFailure &reason)
{
    std::unique_ptr<TreatmentStoreConnection> connection;
    const auto openIn = [&](Mode mode) {
        connection = std::make_unique<TreatmentStoreConnection>(path, mode);
        connection->pragma(QStringLiteral("trusted_schema = OFF"));
        connection->pragma(QStringLiteral("cell_size_check = ON"));
        assertSchemaIsReadable(*connection);
        // Nothing reads the tables of older versions any more.
        if (!schemaIsUpToDate(*connection)) throw StoreError(reason);
    };
    try {
        openIn(Mode::ReadOnly);
    } catch (const StoreError &) {
        // Reading beside others needs a file next to the database, which the folder may refuse.
        openIn(Mode::Untouched);
    }
    std::shared_ptr<TreatmentStore> store(new TreatmentStore(std::move(connection)));
    store->readOnlyReason_ = reason;
    return store;
}

StoreResult<std::shared_ptr<TreatmentStore>> TreatmentStore::open(const QString &path,
                                                                  StoreAccess access)
{
    return resultOf([&] {
        assertFileIsOurs(path);
        if (access == StoreAccess::ReadOnly)
            return openedForReading(
                path, {StoreProblem::Locked, // closing the other window helps
                       QCoreApplication::translate("TreatmentStore",
                                                   "%1: another window of the program works with "
                                                   "the database; it is open for reading only")
                           .arg(path)});
        try {
            auto connection = std::make_unique<TreatmentStoreConnection>(path, Mode::ReadAndWrite);
            prepare(*connection);
            std::shared_ptr<TreatmentStore> store(new TreatmentStore(std::move(connection)));
            if (store->connection_->isReadOnly())
                store->readOnlyReason_ =
                    butOpenForReading(cannotBeWritten(*store->connection_).failure());
            return store;
        } catch (const StoreError &error) {
            if (!mayBeReadAllTheSame(error.failure(), path)) throw;
            try {
                return openedForReading(path, butOpenForReading(error.failure()));
            } catch (const StoreError &) {
                throw error;
            }
        }
    });
}

const QString &TreatmentStore::path() const
{
    return connection_->path();
}

const QString &TreatmentStore::connectionName() const
{
    return connection_->name();
}

StoreResult<qint64> TreatmentStore::createPatient(const PatientRecord &patient)
{
    return resultOf(*connection_, Kind::Writing,
                    [&] { return tables::insertPatient(*connection_, patient); });
}

StoreResult<std::vector<StoredPatient>> TreatmentStore::patients()
{
    return resultOf([&] { return tables::patients(*connection_); });
}

StoreResult<qint64> TreatmentStore::createTreatment(qint64 patientID,
                                                    const std::optional<QDate> &currentDate)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        return tables::insertTreatment(*connection_, patientID, currentDate, std::nullopt);
    });
}

StoreResult<std::vector<StoredTreatment>> TreatmentStore::treatments(qint64 patientID)
{
    return resultOf([&] { return tables::treatments(*connection_, patientID); });
}

StoreResult<std::vector<TreatmentSummary>> TreatmentStore::allTreatments()
{
    return resultOf([&] { return tables::allTreatments(*connection_); });
}

StoreResult<qint64> TreatmentStore::addTreatment(const TreatmentRecord &record,
                                                 const QByteArray &catalogue)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        const qint64 patientID = tables::insertPatient(*connection_, record.patient);
        const qint64 treatmentID = tables::insertTreatment(*connection_, patientID,
                                                           record.currentDate, record.approvedDate);
        for (const NoteRecord &note : record.notes)
            tables::insertNote(*connection_, treatmentID, note);
        if (!catalogue.isEmpty()) tables::saveCatalogue(*connection_, treatmentID, catalogue);
        return treatmentID;
    });
}

StoreResult<TreatmentRecord> TreatmentStore::loadTreatment(qint64 treatmentID)
{
    return resultOf(*connection_, Kind::Reading,
                    [&] { return tables::treatment(*connection_, treatmentID); });
}

StoreResult<QByteArray> TreatmentStore::catalogue(qint64 treatmentID)
{
    return resultOf(*connection_, Kind::Reading, [&] {
        tables::assertTreatment(*connection_, treatmentID);
        return tables::catalogue(*connection_, treatmentID);
    });
}

StoreOutcome TreatmentStore::setCatalogue(qint64 treatmentID, const QByteArray &catalogue)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        tables::assertTreatment(*connection_, treatmentID);
        tables::saveCatalogue(*connection_, treatmentID, catalogue);
        return std::monostate();
    });
}

StoreOutcome TreatmentStore::setApprovedDate(qint64 treatmentID,
                                             const std::optional<QDate> &approvedDate)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        tables::setApprovedDate(*connection_, treatmentID, approvedDate, now());
        return std::monostate();
    });
}

StoreResult<std::vector<kelo::ElasticsConfigType>> TreatmentStore::namedElastics()
{
    return resultOf([&] { return tables::namedElastics(*connection_); });
}

StoreOutcome TreatmentStore::saveNamedElastic(const kelo::ElasticsConfigType &configuration)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        tables::saveNamedElastic(*connection_, configuration);
        return std::monostate();
    });
}

StoreOutcome TreatmentStore::removeNamedElastic(long typeID)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        tables::removeNamedElastic(*connection_, typeID);
        return std::monostate();
    });
}

StoreResult<std::optional<NoteRecord>> TreatmentStore::note(qint64 treatmentID, const QDate &date)
{
    return resultOf(*connection_, Kind::Reading, [&] {
        tables::assertTreatment(*connection_, treatmentID);
        return tables::note(*connection_, treatmentID, date);
    });
}

StoreResult<std::optional<NoteRecord>> TreatmentStore::lastNoteBefore(qint64 treatmentID,
                                                                      const QDate &date)
{
    return resultOf(*connection_, Kind::Reading, [&] {
        tables::assertTreatment(*connection_, treatmentID);
        const auto earlier = tables::lastDateBefore(*connection_, treatmentID, date);
        return earlier ? tables::note(*connection_, treatmentID, *earlier)
                       : std::optional<NoteRecord>();
    });
}

StoreResult<NoteRecord> TreatmentStore::startNote(qint64 treatmentID, const QDate &date)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        if (!tables::noteID(*connection_, treatmentID, date))
            tables::startNote(*connection_, treatmentID, date, now());
        return tables::givenNote(*connection_, treatmentID, date);
    });
}

StoreOutcome TreatmentStore::write(qint64 treatmentID, const NoteReport &report)
{
    return resultOf(*connection_, Kind::Writing, [&] {
        tables::applyReport(*connection_, treatmentID, report, report.changedAt.value_or(now()));
        return std::monostate();
    });
}

StoreResult<std::vector<StoredChange>> TreatmentStore::changes(qint64 treatmentID)
{
    return resultOf([&] { return tables::changes(*connection_, treatmentID); });
}

} // namespace viewer
