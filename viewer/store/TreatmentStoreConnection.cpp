#include "viewer/store/TreatmentStoreConnection.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QUrl>

#include <sqlite3.h>

#include <atomic>
#include <cstring>

namespace viewer {
namespace {

/// The sentences' context for translators.
struct StoreText
{
    Q_DECLARE_TR_FUNCTIONS(TreatmentStore)
};

/// How long a statement waits for a lock. The user's click waits with it, and what could not be
/// written is tried again with the next change: no reason to hold the window up.
constexpr int busyTimeoutInMilliseconds = 100;

/// How many steps of SQLite's machine lie between two looks at the clock: a millisecond or less of
/// work, and so few looks that they cost nothing.
constexpr int stepsBetweenLooks = 10000;

/// The longest text or row. The largest that the program writes is the log's list of all elastics,
/// a few megabytes for tens of thousands of them.
constexpr int longestValueInBytes = 64 * 1024 * 1024;

struct Meaning
{
    StoreProblem problem;
    QString reason;
};

Meaning meaningOf(int code, const QString &databaseText)
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {StoreProblem::Locked, StoreText::tr("the database is locked by another program")};
    case SQLITE_READONLY:
        return {StoreProblem::ReadOnly, StoreText::tr("the database cannot be written to")};
    case SQLITE_FULL:
        return {StoreProblem::DiskFull, StoreText::tr("the disk is full")};
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
        return {StoreProblem::NotReachable, StoreText::tr("the database could not be opened")};
    case SQLITE_IOERR:
        return {StoreProblem::NotReachable,
                StoreText::tr("the database could not be read or written (%1)").arg(databaseText)};
    case SQLITE_CORRUPT:
    case SQLITE_TOOBIG: // nothing so long was ever written
        return {StoreProblem::Damaged, StoreText::tr("the database is damaged")};
    case SQLITE_NOTADB:
        return {StoreProblem::NotADatabase, StoreText::tr("the file is not a database")};
    case SQLITE_INTERRUPT:
        return {StoreProblem::Other, StoreText::tr("the database takes too long to answer")};
    default:
        return {StoreProblem::Other, databaseText};
    }
}

QString nextConnectionName()
{
    static std::atomic<unsigned> count{0};
    return QStringLiteral("treatment store %1").arg(count++);
}

/// The driver's own handle of the database; null for a driver that was built with another SQLite
/// than this program, whose handles are not to be touched.
sqlite3 *handleOf(const QSqlDatabase &database)
{
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("SELECT sqlite_source_id()")) || !query.next() ||
        query.value(0).toByteArray() != sqlite3_sourceid())
        return nullptr;
    const QVariant handle = database.driver()->handle();
    if (std::strcmp(handle.typeName(), "sqlite3*") != 0) return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

/// Where changes that are not yet in the file itself stand.
bool hasWriteAheadLog(const QString &path)
{
    return QFileInfo(path + QStringLiteral("-wal")).size() > 0;
}

} // namespace

TreatmentStoreConnection::TreatmentStoreConnection(const QString &path, Mode mode,
                                                   std::chrono::milliseconds statementLimit)
    : path_(path),
      name_(nextConnectionName()),
      database_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_)),
      statementLimit_(statementLimit)
{
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutInMilliseconds);
    // Absolute, because SQLite reads a path that begins with "file:" as a URI with options.
    QString fileName = path == QStringLiteral(":memory:") || path.isEmpty()
                           ? path
                           : QFileInfo(path).absoluteFilePath();
    if (mode != Mode::ReadAndWrite) options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    if (mode == Mode::Untouched) {
        // "Immutable" leaves no trace, but is blind to the write-ahead log.
        if (!hasWriteAheadLog(path)) {
            options += QStringLiteral(";QSQLITE_OPEN_URI");
            const QUrl url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
            fileName = QString::fromUtf8(url.toEncoded()) + QStringLiteral("?immutable=1");
        }
    }
    database_.setDatabaseName(fileName);
    database_.setConnectOptions(options);
    if (!database_.open()) {
        const StoreError failure = error(database_.lastError());
        database_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(name_);
        throw failure;
    }
    distrustContent();
}

void TreatmentStoreConnection::distrustContent()
{
    sqlite3 *const handle = handleOf(database_);
    if (!handle) return;
    startClock();
    sqlite3_progress_handler(handle, stepsBetweenLooks, &isOverTime, this);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, longestValueInBytes);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

bool TreatmentStoreConnection::isReadOnly() const
{
    if (sqlite3 *const handle = handleOf(database_)) return sqlite3_db_readonly(handle, "main") > 0;
    return path_ != QStringLiteral(":memory:") && !QFileInfo(path_).isWritable();
}

int TreatmentStoreConnection::isOverTime(void *connection)
{
    const auto &self = *static_cast<const TreatmentStoreConnection *>(connection);
    return std::chrono::steady_clock::now() - self.statementStart_ > self.statementLimit_ ? 1 : 0;
}

TreatmentStoreConnection::~TreatmentStoreConnection()
{
    statements_.clear();
    database_.close();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

StoreError TreatmentStoreConnection::error(StoreProblem problem, const QString &reason) const
{
    return StoreError({problem, QStringLiteral("%1: %2").arg(path_, reason)});
}

StoreError TreatmentStoreConnection::error(const QSqlError &sqlError) const
{
    const Meaning meaning = meaningOf(sqlError.nativeErrorCode().toInt(), sqlError.databaseText());
    return error(meaning.problem, meaning.reason);
}

StoreError TreatmentStoreConnection::error(const QSqlQuery &query) const
{
    return error(query.lastError());
}

void TreatmentStoreConnection::execute(const QString &sql)
{
    QSqlQuery query(database_);
    startClock();
    if (!query.exec(sql)) throw error(query);
}

QVariant TreatmentStoreConnection::pragma(const QString &pragma)
{
    QSqlQuery query(database_);
    query.setForwardOnly(true);
    startClock();
    if (!query.exec(QStringLiteral("PRAGMA ") + pragma)) throw error(query);
    if (!query.next()) {
        if (query.lastError().isValid()) throw error(query);
        return {};
    }
    return query.value(0);
}

QSqlQuery &TreatmentStoreConnection::prepared(std::string_view sql)
{
    const auto known = statements_.find(sql);
    if (known != statements_.end()) return known->second;
    QSqlQuery query(database_);
    query.setForwardOnly(true);
    if (!query.prepare(QString::fromUtf8(sql.data(), static_cast<qsizetype>(sql.size()))))
        throw error(query);
    return statements_.emplace(sql, std::move(query)).first->second;
}

TreatmentStoreConnection::Statement::Statement(TreatmentStoreConnection &connection,
                                               std::string_view sql, const QVariantList &values)
    : connection_(connection), query_(connection.prepared(sql))
{
    int position = 0;
    for (const QVariant &value : values)
        query_.bindValue(position++, value);
    connection_.startClock();
    if (!query_.exec()) {
        const StoreError failure = connection_.error(query_);
        query_.finish();
        throw failure;
    }
    if (!query_.isSelect()) connection_.lastInsertedID_ = query_.lastInsertId().toLongLong();
}

TreatmentStoreConnection::Statement::~Statement()
{
    query_.finish();
}

bool TreatmentStoreConnection::Statement::next()
{
    if (query_.next()) return true;
    if (query_.lastError().isValid()) throw connection_.error(query_);
    return false;
}

StoreTransaction::StoreTransaction(TreatmentStoreConnection &connection, Kind kind)
    : connection_(connection)
{
    StoreStatement(connection_, kind == Kind::Writing ? "BEGIN IMMEDIATE" : "BEGIN");
}

StoreTransaction::~StoreTransaction()
{
    if (!open_) return;
    try {
        StoreStatement(connection_, "ROLLBACK");
    } catch (const StoreError &) {
        // After a full disk, SQLite has rolled back automatically.
    }
}

void StoreTransaction::commit()
{
    StoreStatement(connection_, "COMMIT");
    open_ = false;
}

} // namespace viewer
