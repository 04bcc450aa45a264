#include "viewer/TreatmentStoreConnection.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSqlError>
#include <QUrl>

#include <atomic>

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

/// SQLite's primary result codes (the low byte of what the driver reports).
enum ResultCode {
    Permission = 3,
    Busy = 5,
    LockedTable = 6,
    ReadOnly = 8,
    InputOutput = 10,
    Corrupt = 11,
    Full = 13,
    CannotOpen = 14,
    NotADatabase = 26,
};

struct Meaning
{
    StoreProblem problem;
    QString reason;
};

Meaning meaningOf(int code, const QString &databaseText)
{
    switch (code & 0xff) {
    case Busy:
    case LockedTable:
        return {StoreProblem::Locked, StoreText::tr("the database is locked by another program")};
    case ReadOnly:
        return {StoreProblem::ReadOnly, StoreText::tr("the database cannot be written to")};
    case Full:
        return {StoreProblem::DiskFull, StoreText::tr("the disk is full")};
    case Permission:
    case CannotOpen:
        return {StoreProblem::NotReachable, StoreText::tr("the database could not be opened")};
    case InputOutput:
        return {StoreProblem::NotReachable,
                StoreText::tr("the database could not be read or written (%1)").arg(databaseText)};
    case Corrupt:
        return {StoreProblem::Damaged, StoreText::tr("the database is damaged")};
    case NotADatabase:
        return {StoreProblem::NotADatabase, StoreText::tr("the file is not a database")};
    default:
        return {StoreProblem::Other, databaseText};
    }
}

QString nextConnectionName()
{
    static std::atomic<unsigned> count{0};
    return QStringLiteral("treatment store %1").arg(count++);
}

/// Where changes that are not yet in the file itself stand.
bool hasWriteAheadLog(const QString &path)
{
    return QFileInfo(path + QStringLiteral("-wal")).size() > 0;
}

} // namespace

TreatmentStoreConnection::TreatmentStoreConnection(const QString &path, Mode mode)
    : path_(path),
      name_(nextConnectionName()),
      database_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_))
{
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutInMilliseconds);
    QString fileName = path;
    if (mode == Mode::Untouched) {
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
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
    if (!query.exec(sql)) throw error(query);
}

QVariant TreatmentStoreConnection::pragma(const QString &pragma)
{
    QSqlQuery query(database_);
    query.setForwardOnly(true);
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

StoreStatement::StoreStatement(TreatmentStoreConnection &connection, std::string_view sql,
                               std::initializer_list<QVariant> values)
    : connection_(connection), query_(connection.prepared(sql))
{
    int position = 0;
    for (const QVariant &value : values)
        query_.bindValue(position++, value);
    if (!query_.exec()) {
        const StoreError failure = connection_.error(query_);
        query_.finish();
        throw failure;
    }
    if (!query_.isSelect()) connection_.lastInsertedID_ = query_.lastInsertId().toLongLong();
}

StoreStatement::~StoreStatement()
{
    query_.finish();
}

bool StoreStatement::next()
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
        // After a full disk, SQLite has rolled back by itself already.
    }
}

void StoreTransaction::commit()
{
    StoreStatement(connection_, "COMMIT");
    open_ = false;
}

} // namespace viewer
