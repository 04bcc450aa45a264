#pragma once

#include "viewer/store/TreatmentStoreResult.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>

#include <chrono>
#include <exception>
#include <memory>
#include <string_view>
#include <unordered_map>

namespace viewer {

/// What the inner parts of the store throw; the store's operations turn it into a StoreResult.
class StoreError : public std::exception
{
public:
    explicit StoreError(StoreFailure failure) : failure_(std::move(failure)) {}
    const StoreFailure &failure() const { return failure_; }
    const char *what() const noexcept override { return "the treatment store failed"; }

private:
    StoreFailure failure_;
};

/// How long one statement may work. The largest treatment takes a fraction of a second; what takes
/// longer is no database that this program wrote, and the window waits with it.
inline constexpr std::chrono::milliseconds longestStatement{10000};

/// One connection to an SQLite database, with its prepared statements. Every operation throws
/// StoreError when the database refuses.
///
/// Nothing in the file is trusted: functions in its definitions cannot reach outside the database,
/// its tables cannot be used to rewrite its own definitions, a text longer than 64 MiB is an error,
/// and a statement that works for longer than it may is broken off.
class TreatmentStoreConnection
{
public:
    enum class Mode {
        ReadAndWrite, ///< the file is made if there is none
        ReadOnly,     ///< as others write it; fails where there is no file
        /// Looks at the file as it stands, without locks and without files beside it; for a first
        /// look at a file that nobody is to change.
        Untouched,
    };

    TreatmentStoreConnection(const QString &path, Mode mode,
                             std::chrono::milliseconds statementLimit = longestStatement);
    ~TreatmentStoreConnection();
    TreatmentStoreConnection(const TreatmentStoreConnection &) = delete;
    TreatmentStoreConnection &operator=(const TreatmentStoreConnection &) = delete;

    const QString &path() const { return path_; }
    const QString &name() const { return name_; }

    /// Whether the file refuses to be written, however it was opened.
    bool isReadOnly() const;

    /// Runs one SQL text that gives nothing back, such as a table's definition.
    void execute(const QString &sql);
    /// The first value of the first row.
    QVariant pragma(const QString &pragma);
    qint64 lastInsertedID() const { return lastInsertedID_; }

    /// A sentence about this database.
    StoreError error(StoreProblem problem, const QString &reason) const;

    class Statement;

private:
    StoreError error(const QSqlQuery &query) const;
    StoreError error(const QSqlError &sqlError) const;
    QSqlQuery &prepared(std::string_view sql);
    /// Sets what protects against a hostile file.
    void distrustContent();
    /// From here on counts the time of the statement that runs.
    void startClock() { statementStart_ = std::chrono::steady_clock::now(); }
    static int isOverTime(void *connection);

    QString path_;
    QString name_;
    QSqlDatabase database_;
    std::unordered_map<std::string_view, QSqlQuery> statements_;
    qint64 lastInsertedID_ = 0;
    std::chrono::milliseconds statementLimit_;
    std::chrono::steady_clock::time_point statementStart_;
};

/// One run of a prepared statement. Its rows are read with next() and value(); when it ends, the
/// statement is reset, so that it holds no lock.
class TreatmentStoreConnection::Statement
{
public:
    /// Runs `sql` at once. The text must live as long as the connection: it is what the prepared
    /// statement is found by. No two runs of one text at a time.
    Statement(TreatmentStoreConnection &connection, std::string_view sql,
              const QVariantList &values = {});
    ~Statement();
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    bool next();
    QVariant value(int column) const { return query_.value(column); }

private:
    TreatmentStoreConnection &connection_;
    QSqlQuery &query_;
};

using StoreStatement = TreatmentStoreConnection::Statement;

/// All that is written between its beginning and commit() is in the database, or nothing of it.
class StoreTransaction
{
public:
    enum class Kind {
        Reading, ///< several reads of one state of the database
        Writing, ///< takes the write lock at once, so that a locked database fails here
    };

    StoreTransaction(TreatmentStoreConnection &connection, Kind kind);
    /// Takes everything back, unless it was committed.
    ~StoreTransaction();
    StoreTransaction(const StoreTransaction &) = delete;
    StoreTransaction &operator=(const StoreTransaction &) = delete;

    void commit();

private:
    TreatmentStoreConnection &connection_;
    bool open_ = true;
};

} // namespace viewer
