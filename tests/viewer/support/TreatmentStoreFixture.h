#pragma once

#include "viewer/store/TreatmentStore.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

#include <memory>
#include <string>
#include <vector>

namespace viewer::test {

inline QDate day(int dayOfNovember)
{
    return {2026, 11, dayOfNovember};
}

/// Another program's connection to the same file, outside the store.
class OtherConnection
{
public:
    explicit OtherConnection(const QString &path)
    {
        static int count = 0;
        name_ = QStringLiteral("other connection %1").arg(count++);
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        database.setDatabaseName(path);
        EXPECT_TRUE(database.open()) << database.lastError().text().toStdString();
    }
    ~OtherConnection() { QSqlDatabase::removeDatabase(name_); }
    OtherConnection(const OtherConnection &) = delete;
    OtherConnection &operator=(const OtherConnection &) = delete;

    void run(const QString &sql) const { rows(sql); }

    /// All rows, their values joined by "|"; nothing in the place of NULL.
    std::vector<std::string> rows(const QString &sql) const
    {
        return rowsIn(QSqlDatabase::database(name_), sql);
    }

    static std::vector<std::string> rowsIn(const QSqlDatabase &database, const QString &sql)
    {
        std::vector<std::string> found;
        QSqlQuery query(database);
        EXPECT_TRUE(query.exec(sql)) << query.lastError().text().toStdString();
        while (query.next()) {
            QStringList values;
            for (int column = 0; column < query.record().count(); ++column)
                values.append(query.value(column).toString());
            found.push_back(values.join(QLatin1Char('|')).toStdString());
        }
        return found;
    }

private:
    QString name_;
};

inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

inline void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// A treatment with everything in it that a record can hold.
inline TreatmentRecord fullRecord()
{
    NoteRecord first;
    first.date = day(2);
    first.toothVisibilities = {{"5", false}, {"12", true}};
    first.bracketVisibilities = {{"8", true}, {"9", true}, {"7", false}};
    first.buttonVisibilities = {{"8l", true}, {"30l", false}};
    first.bracketColorTypeIDs = {{"8", 4}, {"9", std::nullopt}};
    first.elastics = {{std::nullopt, 3, {"6", "30"}},
                      {1, std::nullopt, {"3l", "14", "3l", "19"}},
                      {std::nullopt, std::nullopt, {}}};
    NoteRecord second;
    second.date = day(20);
    second.approvedDate = day(21);
    TreatmentRecord record;
    record.patient = {QString::fromUtf8("Zoë \"Sample\" O'Patient; --"), QStringLiteral("S-1"),
                      QDate(2011, 4, 2)};
    record.currentDate = day(20);
    record.approvedDate = day(22);
    record.notes = {first, second};
    return record;
}

/// A folder of its own, and a store in it.
class TreatmentStoreFixture : public testing::Test
{
protected:
    TreatmentStoreFixture() : path(folder.filePath(QStringLiteral("treatments.db"))) {}

    /// A store that must open.
    std::shared_ptr<TreatmentStore> opened()
    {
        auto result = TreatmentStore::open(path);
        EXPECT_TRUE(result) << result.sentence().toStdString();
        return result ? result.value() : nullptr;
    }

    /// Opens `store` and gives it one treatment without notes.
    void startTreatment()
    {
        store = opened();
        ASSERT_TRUE(store);
        store->setClock([this] { return time; });
        treatmentID = store->addTreatment({}).value();
    }

    NoteRecord noteOf(const QDate &date) const
    {
        const auto note = store->note(treatmentID, date);
        EXPECT_TRUE(note) << note.sentence().toStdString();
        if (note && note.value()) return *note.value();
        ADD_FAILURE() << "no note of " << date.toString(Qt::ISODate).toStdString();
        return {};
    }

    /// The log, one line a change: "what key: old -> new".
    std::vector<std::string> log() const
    {
        std::vector<std::string> lines;
        const auto changes = store->changes(treatmentID);
        EXPECT_TRUE(changes) << changes.sentence().toStdString();
        if (!changes) return lines;
        for (const StoredChange &change : changes.value())
            lines.push_back(change.what.toStdString() + ' ' + change.key + ": " +
                            change.oldValue.value_or(QStringLiteral("(none)")).toStdString() +
                            " -> " +
                            change.newValue.value_or(QStringLiteral("(none)")).toStdString());
        return lines;
    }

    QTemporaryDir folder;
    QString path;
    qint64 time = 1000;
    std::shared_ptr<TreatmentStore> store;
    qint64 treatmentID = 0;
};

} // namespace viewer::test
