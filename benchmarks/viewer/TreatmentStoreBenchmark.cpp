// Opening treatments and writing reports in a database of 1,000 treatments of 20 notes, beside bare
// prepared statements that move the same rows. Every row is repeated; the spread is next to the
// median. Limits: 20 ms to open a treatment, 5 ms to write a report.

#include "keloModel/TreatmentNote.h"
#include "viewer/store/TreatmentStore.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using viewer::NoteRecord;
using viewer::NoteReport;
using viewer::TreatmentRecord;
using viewer::TreatmentStore;

constexpr int treatmentCount = 1000;
constexpr int noteCount = 20;
constexpr int elasticCount = 6;

[[noreturn]] void stop(const QString &sentence)
{
    std::fprintf(stderr, "%s\n", sentence.toUtf8().constData());
    std::exit(2);
}

template<class Value>
Value need(viewer::StoreResult<Value> result)
{
    if (!result) stop(result.sentence());
    return std::move(result).value();
}

std::vector<std::string> toothKeys()
{
    auto keys = kelo::TreatmentNote::upperToothNameKeys();
    const auto lower = kelo::TreatmentNote::lowerToothNameKeys();
    keys.insert(keys.end(), lower.begin(), lower.end());
    return keys;
}

/// Every tooth, bracket and button named in every note, so that no note is smaller than in use.
TreatmentRecord recordOfNumber(int number)
{
    TreatmentRecord record;
    record.patient.name = QStringLiteral("Patient %1").arg(number);
    const auto keys = toothKeys();
    for (int i = 0; i < noteCount; ++i) {
        NoteRecord note;
        note.date = QDate(2025, 1, 1).addDays(28 * i);
        for (const std::string &key : keys) {
            note.toothVisibilities[key] = true;
            note.bracketVisibilities[key] = i % 2 == 0;
            note.buttonVisibilities[key + "l"] = i % 3 == 0;
            note.bracketColorTypeIDs[key] = number % 29;
        }
        for (std::size_t elastic = 0; elastic < elasticCount; ++elastic)
            note.elastics.push_back(
                {1, 3, {keys[elastic], keys[elastic + 14], keys[elastic + 16]}});
        record.notes.push_back(std::move(note));
    }
    return record;
}

/// A burst of clicks: eight brackets shown or hidden and coloured; every number differs from the
/// one before in all of them.
NoteReport reportOfNumber(int number)
{
    NoteReport report;
    report.date = QDate(2025, 1, 1).addDays(28 * (noteCount - 1));
    for (const char *key : {"2", "3", "4", "5", "6", "7", "8", "9"}) {
        report.bracketVisibilities[key] = number % 2 == 0;
        report.bracketColorTypeIDs[key] = number % 29;
    }
    return report;
}

/// The database, made once.
class Clinic
{
public:
    static Clinic &shared()
    {
        static Clinic clinic;
        return clinic;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("clinic.db"));
    std::shared_ptr<TreatmentStore> store = need(TreatmentStore::open(path));
    std::vector<qint64> treatmentIDs;
    std::mt19937 random{20261120};

    qint64 anyTreatment() { return treatmentIDs[random() % treatmentIDs.size()]; }

private:
    Clinic()
    {
        for (int i = 0; i < treatmentCount; ++i)
            treatmentIDs.push_back(need(store->addTreatment(recordOfNumber(i))));
    }
};

void execute(QSqlQuery &query)
{
    if (!query.exec()) stop(query.lastError().text());
}

QSqlQuery prepared(const QSqlDatabase &database, const char *sql)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.prepare(QString::fromLatin1(sql))) stop(query.lastError().text());
    return query;
}

/// The slowest single run: means hide a checkpoint of the write-ahead log.
class Slowest
{
public:
    explicit Slowest(benchmark::State &state) : state_(state) {}
    ~Slowest() { state_.counters["slowest_ms"] = slowest_; }
    Slowest(const Slowest &) = delete;
    Slowest &operator=(const Slowest &) = delete;

    template<class Action>
    void time(Action &&action)
    {
        const auto start = std::chrono::steady_clock::now();
        action();
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        slowest_ = std::max(slowest_, taken.count());
    }

private:
    benchmark::State &state_;
    double slowest_ = 0.0;
};

void openTreatment(benchmark::State &state)
{
    Clinic &clinic = Clinic::shared();
    std::size_t notes = 0;
    Slowest slowest(state);
    for (auto _ : state)
        slowest.time([&] {
            notes += need(clinic.store->loadTreatment(clinic.anyTreatment())).notes.size();
        });
    if (notes != static_cast<std::size_t>(state.iterations()) * noteCount)
        state.SkipWithError("a treatment came back without all its notes");
}

void openDatabaseAndTreatment(benchmark::State &state)
{
    Clinic &clinic = Clinic::shared();
    Slowest slowest(state);
    std::size_t notes = 0;
    for (auto _ : state)
        slowest.time([&] {
            const auto store = need(TreatmentStore::open(clinic.path));
            notes += need(store->loadTreatment(clinic.anyTreatment())).notes.size();
        });
    if (notes != static_cast<std::size_t>(state.iterations()) * noteCount)
        state.SkipWithError("a treatment came back without all its notes");
}

/// The same rows of one treatment, read and dropped.
void readBareRows(benchmark::State &state)
{
    Clinic &clinic = Clinic::shared();
    const auto database = QSqlDatabase::database(clinic.store->connectionName());
    std::vector<QSqlQuery> queries;
    for (const char *sql : {"SELECT note_id, kind, name_key, visible FROM visibilities"
                            " WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)",
                            "SELECT note_id, name_key, color_type_id FROM bracket_colors"
                            " WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)",
                            "SELECT note_id, position, config_type_id, size_type_id FROM elastics"
                            " WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)",
                            "SELECT note_id, elastic_position, name_key FROM elastic_members"
                            " WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)"})
        queries.push_back(prepared(database, sql));
    std::size_t rows = 0;
    for (auto _ : state) {
        const qint64 treatmentID = clinic.anyTreatment();
        for (QSqlQuery &query : queries) {
            query.bindValue(0, treatmentID);
            execute(query);
            while (query.next()) {
                benchmark::DoNotOptimize(query.value(2).toString());
                ++rows;
            }
            query.finish();
        }
    }
    constexpr std::size_t rowsOfNote = 4 * 28 + elasticCount * (1 + 3);
    if (rows != static_cast<std::size_t>(state.iterations()) * noteCount * rowsOfNote)
        state.SkipWithError("not all rows came back");
}

void writeReport(benchmark::State &state)
{
    Clinic &clinic = Clinic::shared();
    const qint64 treatmentID = clinic.anyTreatment();
    int number = 0;
    Slowest slowest(state);
    for (auto _ : state)
        slowest.time([&] { need(clinic.store->write(treatmentID, reportOfNumber(++number))); });
    const auto note = need(clinic.store->note(treatmentID, reportOfNumber(number).date));
    if (!note || note->bracketColorTypeIDs.at("9") != number % 29)
        state.SkipWithError("the last report is not what is stored");
}

/// The same rows inserted into tables of the same form, in one transaction.
void insertBareRows(benchmark::State &state)
{
    Clinic &clinic = Clinic::shared();
    const auto database = QSqlDatabase::database(clinic.store->connectionName());
    for (const char *sql : {"CREATE TABLE IF NOT EXISTS bare_visibilities (note_id INTEGER,"
                            " kind TEXT, name_key TEXT, visible INTEGER,"
                            " PRIMARY KEY (note_id, kind, name_key)) WITHOUT ROWID",
                            "CREATE TABLE IF NOT EXISTS bare_colors (note_id INTEGER,"
                            " name_key TEXT, color_type_id INTEGER,"
                            " PRIMARY KEY (note_id, name_key)) WITHOUT ROWID",
                            "CREATE TABLE IF NOT EXISTS bare_changes (id INTEGER PRIMARY KEY,"
                            " treatment_id INTEGER, note_date TEXT, at_milliseconds INTEGER,"
                            " what TEXT, name_key TEXT, old_value TEXT, new_value TEXT)"}) {
        QSqlQuery table = prepared(database, sql);
        execute(table);
    }
    QSqlQuery begin = prepared(database, "BEGIN IMMEDIATE");
    QSqlQuery commit = prepared(database, "COMMIT");
    QSqlQuery visibility =
        prepared(database, "INSERT OR REPLACE INTO bare_visibilities VALUES (?, 'bracket', ?, ?)");
    QSqlQuery color = prepared(database, "INSERT OR REPLACE INTO bare_colors VALUES (?, ?, ?)");
    QSqlQuery change = prepared(
        database, "INSERT INTO bare_changes VALUES (NULL, 1, '2025-01-01', 0, ?, ?, ?, ?)");
    const auto log = [&change](const char *what, const QString &key, int number) {
        change.bindValue(0, QString::fromLatin1(what));
        change.bindValue(1, key);
        change.bindValue(2, QString::number(number - 1));
        change.bindValue(3, QString::number(number));
        execute(change);
    };
    int number = 0;
    for (auto _ : state) {
        ++number;
        execute(begin);
        for (const char *text : {"2", "3", "4", "5", "6", "7", "8", "9"}) {
            const QString key = QString::fromLatin1(text);
            visibility.bindValue(0, 1);
            visibility.bindValue(1, key);
            visibility.bindValue(2, number % 2);
            execute(visibility);
            log("bracket visibility", key, number);
            color.bindValue(0, 1);
            color.bindValue(1, key);
            color.bindValue(2, number % 29);
            execute(color);
            log("bracket color", key, number);
        }
        execute(commit);
    }
}

/// The longest of the repetitions, since a limit is one for all of them.
double longest(const std::vector<double> &times)
{
    return *std::max_element(times.begin(), times.end());
}

void withSpread(benchmark::internal::Benchmark *row)
{
    row->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Repetitions(10)
        ->ReportAggregatesOnly()
        ->ComputeStatistics("max", longest);
}

BENCHMARK(openTreatment)->Apply(withSpread);
BENCHMARK(openDatabaseAndTreatment)->Apply(withSpread);
BENCHMARK(readBareRows)->Apply(withSpread);
BENCHMARK(writeReport)->Apply(withSpread);
BENCHMARK(insertBareRows)->Apply(withSpread);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    Clinic::shared();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
