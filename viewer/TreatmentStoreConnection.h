#pragma once

#include "viewer/TreatmentStoreResult.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <exception>
#include <initializer_list>
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

/// One connection to an SQLite database, with its prepared statements. Every operation throws
/// StoreError when the database refuses.
class TreatmentStoreConnection
{
public:
    enum class Mode {
        ReadAndWrite, ///< the file is made if there is none
        /// Looks at the file as it stands, without locks and without files beside it; for a first
        /// look at a file that nobody is to change.
        Untouched,
    };

    TreatmentStoreConnection(const QString &path, Mode mode);
    ~TreatmentStoreConnection();
    TreatmentStoreConnection(const TreatmentStoreConnection &) = delete;
    TreatmentStoreConnection &operator=(const TreatmentStoreConnection &) = delete;

    const QString &path() const { return path_; }
    const QString &name() const { return name_; }

    /// Runs one SQL text that gives nothing back, such as a table's definition.
    void execute(const QString &sql);
    /// The first value of the first row.
    QVariant pragma(const QString &pragma);
    qint64 lastInsertedID() const { return lastInsertedID_; }

    /// A sentence about this database.
    StoreError error(StoreProblem problem, const QString &reason) const;

private:
    friend class StoreStatement;
    StoreError error(const QSqlQuery &query) const;
    StoreError error(const QSqlError &sqlError) const;
    QSqlQuery &prepared(std::string_view sql);

    QString path_;
    QString name_;
    QSqlDatabase database_;
    std::unordered_map<std::string_view, QSqlQuery> statements_;
    qint64 lastInsertedID_ = 0;
};

/// One run of a prepared statement. Its rows are read with next() and value(); when it ends, the
/// statement is reset, so that it holds no lock.
class StoreStatement
{
public:
    /// Runs `sql` at once. The text must live as long as the connection: it is what the prepared
    /// statement is found by. No two runs of one text at a time.
    StoreStatement(TreatmentStoreConnection &connection, std::string_view sql,
                   std::initializer_list<QVariant> values = {});
    ~StoreStatement();
    StoreStatement(const StoreStatement &) = delete;
    StoreStatement &operator=(const StoreStatement &) = delete;

    bool next();
    QVariant value(int column) const { return query_.value(column); }

private:
    TreatmentStoreConnection &connection_;
    QSqlQuery &query_;
};

/// All that is written between its beginning and commit() stands in the database, or nothing of it.
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
